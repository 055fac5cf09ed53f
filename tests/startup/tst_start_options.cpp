// The command line: which options the program knows, where its database lies
// for the way it was started, and what the printing options say.

#include "core/startup/start_options.h"
#include "core/stats/stats_store.h"

#include "../support/data_table.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrix;

namespace {

// Sets an environment variable for one scope and puts the old value back.
// A null value unsets it.
struct ScopedVariable {
    const char *name;
    bool had = qEnvironmentVariableIsSet(name);
    QByteArray old = qgetenv(name);
    ScopedVariable(const char *n, const QString &value) : name(n)
    {
        value.isNull() ? qunsetenv(name) : qputenv(name, value.toLocal8Bit());
    }
    ~ScopedVariable() { had ? qputenv(name, old) : qunsetenv(name); }
};

} // namespace

class TestStartOptions : public QObject {
    Q_OBJECT

private slots:
    // Options in either order, the first printing one winning; an unknown
    // word refuses the line even after a known option.
    void optionsAreRead_data()
    {
        using A = StartAction;
        addTable<QStringList, StartAction, bool, QString>({"arguments", "action", "fromMenu", "problem"},
            {{"none", {}, A::Run, false, ""}, {"from the menu", {"--from-menu"}, A::Run, true, ""},
             {"paths from the menu", {"--paths", "--from-menu"}, A::ShowPaths, true, ""},
             {"help", {"--help"}, A::ShowUsage, false, ""},
             {"version before paths", {"--version", "--paths"}, A::ShowVersion, false, ""},
             {"unknown after paths", {"--paths", "--bogus"}, A::Refuse, false, "unknown option --bogus"},
             {"from the menu with a value", {"--from-menu=yes"}, A::Refuse, false, "unknown option --from-menu=yes"},
             {"a file", {"games.db"}, A::Refuse, false, "unexpected argument games.db"}});
    }
    void optionsAreRead()
    {
        QFETCH(QStringList, arguments);
        QFETCH(StartAction, action);
        const StartOptions options = parseStartOptions(arguments);
        QCOMPARE(options.action, action);
        QTEST(options.problem, "problem");
        if (action != StartAction::Refuse)
            QTEST(options.fromMenu, "fromMenu");
    }

    // The line is read before Qt starts: Qt's own options, with their
    // values, are no concern of the program's; anything else stays.
    void toolkitOptionsAreLeftToQt()
    {
        QCOMPARE(withoutToolkitOptions(
                     {"-platform", "offscreen", "--paths", "-style=fusion", "-reverse", "--style", "fusion"}),
                 QStringList{"--paths"});
        // A value that looks like an option is still the value.
        QCOMPARE(withoutToolkitOptions({"-display", "--paths"}), QStringList{});
        // Near misses are not Qt's, and the program refuses them.
        QCOMPARE(withoutToolkitOptions({"-platforms", "-reverse=1", "style", "-"}),
                 (QStringList{"-platforms", "-reverse=1", "style", "-"}));
    }

    // TAVRIX_DB wins both ways; from the menu the file lies in the user's
    // data folder, from a terminal in the working folder as it always has.
    void databasePathFollowsHowTheProgramStarted_data()
    {
        addTable<bool, QString, QString>({"fromMenu", "variable", "path"},
            {{"TAVRIX_DB from the menu", true, "/x/mine.db", "/x/mine.db"},
             {"TAVRIX_DB from a terminal", false, "/x/mine.db", "/x/mine.db"},
             {"from the menu", true, "", "/home/a/.local/share/tavrix/tavrix.db"},
             {"from a terminal", false, "", "/work/tavrix.db"}});
    }
    void databasePathFollowsHowTheProgramStarted()
    {
        QFETCH(bool, fromMenu);
        QFETCH(QString, variable);
        QTEST(chooseDatabasePath(fromMenu, variable, "/home/a/.local/share", "/work"), "path");
    }

    // A data folder that cannot be made is named by the store; a folder of
    // TAVRIX_DB is never made. (scripts/package.sh starts the installed
    // program all three ways and finds the database where it belongs.)
    void onlyTheDataFolderIsMade()
    {
        QTemporaryDir home;
        const ScopedVariable unset(StatsStore::pathVariable, QString());
        {
            QVERIFY(QFile(home.filePath("plain-file")).open(QIODevice::WriteOnly));
            const ScopedVariable data("XDG_DATA_HOME", home.filePath("plain-file"));
            StatsStore store(QStringLiteral("blocked-store"));
            QVERIFY(!store.open(startDatabasePath(true, true)));
            QVERIFY2(store.lastError().contains("does not exist")
                         && store.lastError().contains(home.filePath("plain-file/tavrix")),
                     qPrintable(store.lastError()));
        }
        {
            const ScopedVariable data("XDG_DATA_HOME", home.filePath("data2"));
            const ScopedVariable set(StatsStore::pathVariable, home.filePath("missing/mine.db"));
            QCOMPARE(startDatabasePath(true, true), home.filePath("missing/mine.db"));
            QVERIFY(!QFileInfo::exists(home.filePath("missing")) && !QFileInfo::exists(home.filePath("data2")));
        }
    }

    // The version, a refusal, and the paths: in a build folder the files lie
    // beside the program, and anything missing is named with where it was
    // sought. (The installed layout is checked by scripts/package.sh.)
    void printingOptionsSayWhatTheyShould()
    {
        const OptionOutput version = printedOption(parseStartOptions({"--version"}), "/nowhere");
        QVERIFY(version.text == "Tavrix " TAVRIX_EXPECTED_VERSION "\n" && version.exitCode == 0);

        const OptionOutput refused = printedOption(parseStartOptions({"--bogus"}), "/nowhere");
        QVERIFY(refused.toErrorStream && refused.exitCode == 2);
        QVERIFY(refused.text.startsWith("tavrix: unknown option --bogus\n"));

        QTemporaryDir root;
        const ScopedVariable set(StatsStore::pathVariable, root.filePath("stats.db"));
        QVERIFY(QDir(root.path()).mkpath("build/resources"));

        const OptionOutput build = printedOption(parseStartOptions({"--paths"}), root.filePath("build"));
        QCOMPARE(build.exitCode, 1);
        QVERIFY2(build.text.contains(QString("Help:     not found (looked in %1 and %2)\n")
                                         .arg(root.filePath("build/help"), root.filePath("share/tavrix/help"))),
                 qPrintable(build.text));
        QVERIFY(build.text.startsWith("Sounds:   " + root.filePath("build/resources") + "\n"));
        QVERIFY(build.text.endsWith("Database: " + root.filePath("stats.db") + "\n"));
    }
};

QTEST_GUILESS_MAIN(TestStartOptions)
#include "tst_start_options.moc"
