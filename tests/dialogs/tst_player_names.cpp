// The check of new and changed player names, against a real database: blanks
// at the ends never make a name new, and what would break the greeting or a
// network message is refused.

#include "core/players/player_names.h"
#include "core/stats/sqlite_store.h"

#include <QTemporaryDir>
#include <QTest>

using namespace tavrix;

namespace {

const QString empty = QStringLiteral("Please enter at least one letter in the \"Name\" field");
const QString inUse = QStringLiteral("Sorry.  That name is already in use.");
const QString control = QStringLiteral("A name cannot contain line breaks, control characters or \"|\".");
const QString tooLong = QStringLiteral("Please keep the name to 30 characters or fewer.");

} // namespace

class TestPlayerNames : public QObject {
    Q_OBJECT

private slots:
    // Ann is stored as typed, Cy with blanks around; each typed name against
    // the problem it has (empty: the name can be used).
    void namesAreJudgedTrimmedAndRefusedWhenTheyWouldBreakALine()
    {
        QTemporaryDir dir;
        SqliteStore store;
        QVERIFY(store.open(dir.filePath(QStringLiteral("t.db"))));
        QVERIFY(store.insertPlayer(QStringLiteral("Ann")) && store.insertPlayer(QStringLiteral("  Cy ")));
        const auto x = [](int n, const char *piece) { return QString::fromUtf8(piece).repeated(n); };
        const std::pair<QString, QString> rows[] = {
            {QStringLiteral(" Ann  "), inUse}, {QStringLiteral("Cy"), inUse}, {QStringLiteral(" Cy"), inUse},
            {QStringLiteral("ann"), {}}, {QStringLiteral("A nn"), {}}, {QStringLiteral(" \t "), empty},
            // Checked as typed: trimming would hide a break at either end.
            {QStringLiteral("Ann\nBo"), control}, {QStringLiteral("Bo\r\n"), control}, {QStringLiteral("\tBo"), control},
            {QStringLiteral("B\x03o"), control}, {QStringLiteral("Bo\x7f"), control},
            {QStringLiteral("Bo\u2028x"), control}, {QStringLiteral("Bo|1"), control}, {QStringLiteral("Ann|"), control},
            // The length counts characters, not bytes nor 16-bit units.
            {x(30, "x"), {}}, {x(31, "x"), tooLong}, {"  " + x(30, "x") + " ", {}},
            {x(30, "é"), {}}, {x(31, "é"), tooLong}, {x(30, "🎯"), {}},
            {QStringLiteral("Zoë \"Z\" O'Neil-Ström"), {}},
        };
        for (const auto &[typed, problem] : rows)
            QVERIFY2(playerNameProblem(store, typed).value_or(QString()) == problem, qPrintable(typed));
    }
};

QTEST_GUILESS_MAIN(TestPlayerNames)
#include "tst_player_names.moc"
