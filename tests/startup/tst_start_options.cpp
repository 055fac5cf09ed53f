// The command line: which options the program knows, where its database lies
// for the way it was started, and what the printing options say.

#include "startup/start_options.h"
#include "stats/stats_store.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrix;

Q_DECLARE_METATYPE(tavrix::StartAction)

namespace {

// Sets an environment variable for one scope and puts the old value back.
class ScopedVariable {
public:
    ScopedVariable(const char *name, const QString &value)
        : name_(name)
        , had_(qEnvironmentVariableIsSet(name))
        , old_(qgetenv(name))
    {
        if (value.isNull())
            qunsetenv(name);
        else
            qputenv(name, value.toLocal8Bit());
    }
    ~ScopedVariable()
    {
        if (had_)
            qputenv(name_, old_);
        else
            qunsetenv(name_);
    }

private:
    const char *name_;
    bool had_;
    QByteArray old_;
};

bool makeFolders(const QDir &root, const QStringList &folders)
{
    for (const QString &folder : folders) {
        if (!root.mkpath(folder))
            return false;
    }
    return true;
}

} // namespace

class TestStartOptions : public QObject {
    Q_OBJECT

private slots:
    void optionsAreRead_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<StartAction>("action");
        QTest::addColumn<bool>("fromMenu");
        QTest::addColumn<QString>("problem");

        QTest::newRow("none") << QStringList{} << StartAction::Run << false << QString();
        QTest::newRow("menu") << QStringList{"--from-menu"} << StartAction::Run << true << QString();
        QTest::newRow("version") << QStringList{"--version"} << StartAction::ShowVersion << false << QString();
        QTest::newRow("paths from the menu, either order")
            << QStringList{"--paths", "--from-menu"} << StartAction::ShowPaths << true << QString();
        QTest::newRow("help") << QStringList{"--help"} << StartAction::ShowUsage << false << QString();
        QTest::newRow("first printing option wins")
            << QStringList{"--version", "--paths"} << StartAction::ShowVersion << false << QString();
        // An unknown word refuses the line even after a known option.
        QTest::newRow("unknown option") << QStringList{"--paths", "--bogus"} << StartAction::Refuse << false
                                        << QString("unknown option --bogus");
        QTest::newRow("option with a value") << QStringList{"--from-menu=yes"} << StartAction::Refuse << false
                                             << QString("unknown option --from-menu=yes");
        QTest::newRow("a file name") << QStringList{"games.db"} << StartAction::Refuse << false
                                     << QString("unexpected argument games.db");
    }
    void optionsAreRead()
    {
        QFETCH(QStringList, arguments);
        QFETCH(StartAction, action);
        QFETCH(bool, fromMenu);
        QFETCH(QString, problem);
        const StartOptions options = parseStartOptions(arguments);
        QCOMPARE(options.action, action);
        if (action != StartAction::Refuse)
            QCOMPARE(options.fromMenu, fromMenu);
        QCOMPARE(options.problem, problem);
    }

    // The line is read before Qt starts: Qt's own options, with their
    // values, are no concern of the program's; anything else stays.
    void toolkitOptionsAreLeftToQt()
    {
        QCOMPARE(withoutToolkitOptions({"-platform", "offscreen", "--paths", "-style=fusion", "-reverse"}),
                 QStringList{"--paths"});
        QCOMPARE(withoutToolkitOptions({"--from-menu", "--style", "fusion", "-qwindowtitle", "Darts", "--version"}),
                 (QStringList{"--from-menu", "--version"}));
        // A value that looks like an option is still the value.
        QCOMPARE(withoutToolkitOptions({"-display", "--paths"}), QStringList{});
        // Near misses are not Qt's, and the program refuses them.
        QCOMPARE(withoutToolkitOptions({"-platforms", "-reverse=1", "style", "-"}),
                 (QStringList{"-platforms", "-reverse=1", "style", "-"}));
    }

    // TAVRIX_DB wins both ways; from the menu the file lies in the user's
    // data folder, from a terminal in the working folder as it always has.
    void databasePathFollowsHowTheProgramStarted()
    {
        QCOMPARE(chooseDatabasePath(true, "/x/mine.db", "/home/a/.local/share", "/work"), QString("/x/mine.db"));
        QCOMPARE(chooseDatabasePath(false, "/x/mine.db", "/home/a/.local/share", "/work"), QString("/x/mine.db"));
        QCOMPARE(chooseDatabasePath(true, "", "/home/a/.local/share", "/work"),
                 QString("/home/a/.local/share/tavrix/tavrix.db"));
        QCOMPARE(chooseDatabasePath(false, "", "/home/a/.local/share", "/work"), QString("/work/tavrix.db"));

        // From a terminal the program keeps the store's own default.
        QTemporaryDir work;
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(work.path()));
        {
            const ScopedVariable unset(StatsStore::pathVariable, QString());
            QCOMPARE(startDatabasePath(false, true), StatsStore::defaultDatabasePath());
            QCOMPARE(QFileInfo(startDatabasePath(false, true)).absolutePath(), QDir::currentPath());
        }
        {
            const ScopedVariable set(StatsStore::pathVariable, work.filePath("other.db"));
            QCOMPARE(startDatabasePath(false, true), StatsStore::defaultDatabasePath());
        }
        QVERIFY(QDir::setCurrent(before));
    }

    // The folder in the user's data folder is made at start; one that cannot
    // be made is named by the store; a folder of TAVRIX_DB is never made.
    void menuDatabaseFolderIsMadeOrNamed()
    {
        QTemporaryDir home;
        const ScopedVariable unset(StatsStore::pathVariable, QString());
        {
            const ScopedVariable data("XDG_DATA_HOME", home.filePath("data"));
            const QString path = startDatabasePath(true, false);
            QCOMPARE(path, home.filePath("data/tavrix/tavrix.db"));
            QVERIFY(!QFileInfo::exists(home.filePath("data/tavrix")));
            QCOMPARE(startDatabasePath(true, true), path);
            QVERIFY(QFileInfo(home.filePath("data/tavrix")).isDir());
            StatsStore store(QStringLiteral("menu-store"));
            QVERIFY2(store.open(path), qPrintable(store.lastError()));
        }
        {
            QFile blocker(home.filePath("plain-file"));
            QVERIFY(blocker.open(QIODevice::WriteOnly));
            blocker.close();
            const ScopedVariable data("XDG_DATA_HOME", blocker.fileName());
            const QString path = startDatabasePath(true, true);
            QCOMPARE(path, home.filePath("plain-file/tavrix/tavrix.db"));
            StatsStore store(QStringLiteral("blocked-store"));
            QVERIFY(!store.open(path));
            QVERIFY2(store.lastError().contains("does not exist")
                         && store.lastError().contains(home.filePath("plain-file/tavrix")),
                     qPrintable(store.lastError()));
        }
        {
            const ScopedVariable data("XDG_DATA_HOME", home.filePath("data2"));
            const ScopedVariable set(StatsStore::pathVariable, home.filePath("missing/mine.db"));
            QCOMPARE(startDatabasePath(true, true), home.filePath("missing/mine.db"));
            QVERIFY(!QFileInfo::exists(home.filePath("missing")));
            QVERIFY(!QFileInfo::exists(home.filePath("data2")));
        }
    }

    void printingOptionsSayWhatTheyShould()
    {
        const OptionOutput version = printedOption(parseStartOptions({"--version"}), "/nowhere");
        QCOMPARE(version.text, QString("Tavrix " TAVRIX_EXPECTED_VERSION "\n"));
        QCOMPARE(version.exitCode, 0);

        const OptionOutput refused = printedOption(parseStartOptions({"--bogus"}), "/nowhere");
        QVERIFY(refused.toErrorStream);
        QCOMPARE(refused.exitCode, 2);
        QVERIFY(refused.text.startsWith("tavrix: unknown option --bogus\n"));

        const OptionOutput usage = printedOption(parseStartOptions({"-h"}), "/nowhere");
        QCOMPARE(usage.exitCode, 0);
        for (const char *option : {fromMenuOption, "--paths", "--version", "--help"})
            QVERIFY2(usage.text.contains(QLatin1String(option)), option);
    }

    // Installed, the files lie in share/tavrix beside bin/; in a build folder
    // beside the program. Anything missing is named with where it was sought.
    void pathsReportFindsTheProgramFiles()
    {
        QTemporaryDir root;
        const QDir top(root.path());
        const ScopedVariable set(StatsStore::pathVariable, root.filePath("stats.db"));

        QVERIFY(makeFolders(top, {"usr/bin", "usr/share/tavrix/sounds", "usr/share/tavrix/help"}));
        const OptionOutput installed = printedOption(parseStartOptions({"--paths"}), root.filePath("usr/bin"));
        QCOMPARE(installed.exitCode, 0);
        QVERIFY(!installed.toErrorStream);
        QCOMPARE(installed.text, QString("Sounds:   %1\nHelp:     %2\nDatabase: %3\n")
                                     .arg(root.filePath("usr/share/tavrix/sounds"),
                                          root.filePath("usr/share/tavrix/help"), root.filePath("stats.db")));

        // The folder beside the program comes first.
        QVERIFY(makeFolders(top, {"usr/bin/resources", "build/resources"}));
        QVERIFY(printedOption(parseStartOptions({"--paths"}), root.filePath("usr/bin"))
                    .text.startsWith("Sounds:   " + root.filePath("usr/bin/resources") + "\n"));

        const OptionOutput build = printedOption(parseStartOptions({"--paths"}), root.filePath("build"));
        QCOMPARE(build.exitCode, 1);
        QVERIFY2(build.text.contains(QString("Help:     not found (looked in %1 and %2)\n")
                                         .arg(root.filePath("build/help"), root.filePath("share/tavrix/help"))),
                 qPrintable(build.text));
        QVERIFY(build.text.startsWith("Sounds:   " + root.filePath("build/resources") + "\n"));
    }

    // The desktop entry starts the program with the option it knows.
    void desktopEntryStartsFromTheMenu()
    {
        QFile entry(QStringLiteral(TAVRIX_DESKTOP_ENTRY));
        QVERIFY(entry.open(QIODevice::ReadOnly | QIODevice::Text));
        const QString text = QString::fromUtf8(entry.readAll());
        QVERIFY2(text.contains(QString("\nExec=tavrix %1\n").arg(QLatin1String(fromMenuOption))), qPrintable(text));
    }
};

QTEST_GUILESS_MAIN(TestStartOptions)
#include "tst_start_options.moc"
