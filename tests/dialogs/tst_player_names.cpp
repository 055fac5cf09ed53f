// The check of new and changed player names, against a real database: blanks
// at the ends never make a name new, and what would break the greeting or a
// network message is refused.

#include "dialogs/player_names.h"
#include "stats/stats_store.h"

#include <QTemporaryDir>
#include <QTest>

using namespace tavrix;

namespace {

const QString empty = QStringLiteral("Please enter at least one letter in the \"Name\" field");
const QString inUse = QStringLiteral("Sorry.  That name is already in use.");
const QString control = QStringLiteral("A name cannot contain line breaks, control characters or \"|\".");
const QString tooLong = QStringLiteral("Please keep the name to 30 characters or fewer.");

QString times(int n, const QString &piece)
{
    return piece.repeated(n);
}

} // namespace

class TestPlayerNames : public QObject {
    Q_OBJECT

private slots:
    void namesAreJudgedTrimmedAndRefusedWhenTheyWouldBreakALine_data()
    {
        QTest::addColumn<QStringList>("stored");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("problem"); // empty: the name can be used

        const QStringList ann{QStringLiteral("Ann")};
        QTest::newRow("typed with blanks") << ann << QStringLiteral(" Ann  ") << inUse;
        QTest::newRow("stored with blanks") << QStringList{QStringLiteral("  Ann ")} << QStringLiteral("Ann") << inUse;
        QTest::newRow("both with blanks") << QStringList{QStringLiteral("Ann ")} << QStringLiteral(" Ann") << inUse;
        QTest::newRow("case counts") << ann << QStringLiteral("ann") << QString();
        QTest::newRow("inner blanks count") << ann << QStringLiteral("A nn") << QString();
        QTest::newRow("only blanks") << ann << QStringLiteral(" \t ") << empty;

        QTest::newRow("line break") << ann << QStringLiteral("Ann\nBo") << control;
        QTest::newRow("line break at the end") << ann << QStringLiteral("Bo\r\n") << control;
        QTest::newRow("tab at the start") << ann << QStringLiteral("\tBo") << control;
        QTest::newRow("code 3") << ann << QStringLiteral("B") + QChar(3) + QStringLiteral("o") << control;
        QTest::newRow("delete") << ann << QStringLiteral("Bo") + QChar(0x7f) << control;
        QTest::newRow("line separator") << ann << QStringLiteral("Bo") + QChar(0x2028) + QStringLiteral("x") << control;
        QTest::newRow("bar") << ann << QStringLiteral("Bo|1") << control;
        QTest::newRow("bar in a name in use") << ann << QStringLiteral("Ann|") << control;

        QTest::newRow("30 characters") << ann << times(30, QStringLiteral("x")) << QString();
        QTest::newRow("31 characters") << ann << times(31, QStringLiteral("x")) << tooLong;
        QTest::newRow("30 within blanks") << ann << QStringLiteral("  ") + times(30, QStringLiteral("x")) + QStringLiteral(" ") << QString();
        QTest::newRow("30 accented") << ann << times(30, QStringLiteral("é")) << QString();
        QTest::newRow("31 accented") << ann << times(31, QStringLiteral("é")) << tooLong;
        QTest::newRow("30 beyond 16 bits") << ann << times(30, QStringLiteral("🎯")) << QString();
        QTest::newRow("quotes and letters") << ann << QStringLiteral("Zoë \"Z\" O'Neil-Ström") << QString();
    }
    void namesAreJudgedTrimmedAndRefusedWhenTheyWouldBreakALine()
    {
        QFETCH(QStringList, stored);
        QFETCH(QString, typed);
        QTemporaryDir dir;
        StatsStore store;
        QVERIFY(store.open(dir.filePath(QStringLiteral("t.db"))));
        for (const QString &name : stored)
            QVERIFY(store.insertPlayer(name));
        QTEST(playerNameProblem(store, typed).value_or(QString()), "problem");
    }
};

QTEST_GUILESS_MAIN(TestPlayerNames)
#include "tst_player_names.moc"
