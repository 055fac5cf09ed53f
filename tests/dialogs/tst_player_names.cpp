// The check of new and changed player names, against a real database: blanks
// at the ends never make a name new, and what would break the greeting or a
// network message is refused.

#include "core/players/player_names.h"
#include "core/stats/stats_store.h"

#include "../support/data_table.h"

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

    QTemporaryDir dir_;
    StatsStore store_;

private slots:
    // Ann is stored as typed, Cy with blanks around.
    void initTestCase()
    {
        QVERIFY(store_.open(dir_.filePath(QStringLiteral("t.db"))));
        QVERIFY(store_.insertPlayer(QStringLiteral("Ann")) && store_.insertPlayer(QStringLiteral("  Cy ")));
    }

    // Each typed name against the problem it has (empty: the name can be used).
    void namesAreJudgedTrimmedAndRefusedWhenTheyWouldBreakALine_data()
    {
        const auto x = [](int n, const char *piece) { return QString::fromUtf8(piece).repeated(n); };
        addTable<QString, QString>({"typed", "problem"},
            {{"Ann with blanks", " Ann  ", inUse}, {"Cy", "Cy", inUse}, {"Cy after a blank", " Cy", inUse},
             {"ann", "ann", {}}, {"A nn", "A nn", {}}, {"blanks", " \t ", empty},
             // Checked as typed: trimming would hide a break at either end.
             {"line feed", "Ann\nBo", control}, {"CR LF at the end", "Bo\r\n", control}, {"tab first", "\tBo", control},
             {"control character", "B\x03o", control}, {"delete", "Bo\x7f", control},
             {"line separator", "Bo\u2028x", control}, {"bar", "Bo|1", control}, {"bar at the end", "Ann|", control},
             // The length counts characters, not bytes nor 16-bit units.
             {"30 letters", x(30, "x"), {}}, {"31 letters", x(31, "x"), tooLong}, {"30 with blanks", "  " + x(30, "x") + " ", {}},
             {"30 accented", x(30, "é"), {}}, {"31 accented", x(31, "é"), tooLong}, {"30 darts", x(30, "🎯"), {}},
             {"quotes and accents", "Zoë \"Z\" O'Neil-Ström", {}}});
    }
    void namesAreJudgedTrimmedAndRefusedWhenTheyWouldBreakALine()
    {
        QFETCH(QString, typed);
        QTEST(playerNameProblem(store_, typed).value_or(QString()), "problem");
    }
};

QTEST_GUILESS_MAIN(TestPlayerNames)
#include "tst_player_names.moc"
