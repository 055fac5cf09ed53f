// The check of new and changed player names, against a real database: blanks
// at the ends never make a name new.

#include "dialogs/player_names.h"
#include "stats/stats_store.h"

#include <QTemporaryDir>
#include <QTest>

using namespace tavrix;

namespace {

const QString empty = QStringLiteral("Please enter at least one letter in the \"Name\" field");
const QString inUse = QStringLiteral("Sorry.  That name is already in use.");

} // namespace

class TestPlayerNames : public QObject {
    Q_OBJECT

private slots:
    void namesAreJudgedWithoutBlanksAtTheirEnds_data()
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
        QTest::newRow("quotes and letters") << ann << QStringLiteral("Zoë \"Z\" O'Neil-Ström") << QString();
    }
    void namesAreJudgedWithoutBlanksAtTheirEnds()
    {
        QFETCH(QStringList, stored);
        QFETCH(QString, typed);
        QFETCH(QString, problem);
        QTemporaryDir dir;
        StatsStore store;
        QVERIFY(store.open(dir.filePath(QStringLiteral("t.db"))));
        for (const QString &name : stored)
            QVERIFY(store.insertPlayer(name));
        QCOMPARE(playerNameProblem(store, typed).value_or(QString()), problem);
    }
};

QTEST_GUILESS_MAIN(TestPlayerNames)
#include "tst_player_names.moc"
