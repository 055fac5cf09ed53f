// The journal of a game's rows: what cannot be written is kept and written
// later in order, and the first failure after a success is announced once.

#include "core/stats/game_journal.h"

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace tavrix;

namespace {

// A game log that refuses every write while it is held; matches are written
// as they come.
struct HeldLog : PlayLog {
    bool held = false;
    QList<int> written; // dart numbers, in the order written
    QList<int> pending;
    QString lastError() const override { return QStringLiteral("in use"); }
    bool beginTransaction() override { return !held; }
    bool commitTransaction() override
    {
        written += pending;
        pending.clear();
        return true;
    }
    void rollbackTransaction() override { pending.clear(); }
    QList<qint64> restored; // game ids written again into a new file
    qint64 lastGame = 0;
    std::optional<qint64> insertGame(const NewGame &) override { return ++lastGame; }
    bool insertGameDart(const GameDart &dart) override
    {
        pending.append(dart.dartSeq);
        return true;
    }
    bool finishGame(qint64, const GameResult &) override { return true; }
    bool restoreGame(qint64 gameId, const NewGame &, const QString &) override
    {
        restored.append(gameId);
        return !held;
    }
    std::optional<qint64> insertMatch(const NewMatch &) override { return 1; }
    bool insertMatchLeg(const MatchLeg &) override { return true; }
    bool finishMatch(qint64, const MatchEnd &) override { return true; }
    bool restoreMatch(qint64, const NewMatch &) override { return true; }
};

GameDart dart(int number, qint64 gameId = 0)
{
    GameDart row;
    row.dartSeq = number;
    row.gameId = gameId;
    return row;
}

} // namespace

class TestGameJournal : public QObject {
    Q_OBJECT

private slots:
    void heldRowsAreKeptAndTheFailureSaidOnceASpell()
    {
        HeldLog log;
        GameJournal journal(log);
        QSignalSpy failures(&journal, &GameJournal::firstFailure);
        log.held = true;
        QVERIFY(!journal.record({dart(1)}));
        QVERIFY(!journal.record({dart(2)}));
        QCOMPARE(failures.count(), 1);
        QCOMPARE(journal.pendingRows(), 2);
        QVERIFY(journal.retryTimer()->isActive());

        log.held = false;
        QVERIFY(journal.flush());
        QCOMPARE(log.written, (QList<int>{1, 2}));
        QVERIFY(!journal.retryTimer()->isActive());

        // A new spell of failures is said again.
        log.held = true;
        QVERIFY(!journal.record({dart(3)}));
        QCOMPARE(failures.count(), 2);
        QVERIFY(!journal.flushForGood());
        QVERIFY(!journal.retryTimer()->isActive());
    }

    // Into a new file go the rows of the games whose darts are kept, and of
    // the game started last, which may still record darts; not those of
    // games written whole.
    void aNewFileGetsTheGamesOfTheKeptDarts()
    {
        HeldLog log;
        GameJournal journal(log);
        const qint64 written = *journal.startGame({}, QStringLiteral("Ann"));
        QVERIFY(journal.record({dart(1, written)}));
        const qint64 kept = *journal.startGame({}, QStringLiteral("Ann"));
        log.held = true;
        QVERIFY(!journal.record({dart(2, kept)}));
        const qint64 last = *journal.startGame({}, QStringLiteral("Ann"));
        log.held = false;
        QVERIFY(journal.flushIntoNewFile());
        QCOMPARE(log.restored, (QList<qint64>{kept, last}));
        QCOMPARE(log.written, (QList<int>{1, 2}));
    }
};

QTEST_GUILESS_MAIN(TestGameJournal)
#include "tst_game_journal.moc"
