// The journal of a game's rows: what cannot be written is kept and written
// later in order, and the first failure after a success is announced once.

#include "core/stats/game_journal.h"

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace tavrix;

namespace {

// A game log that refuses every write while it is held.
struct HeldLog : GameLog {
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
    std::optional<qint64> insertGame(const NewGame &) override { return 1; }
    bool insertGameDart(const GameDart &dart) override
    {
        pending.append(dart.dartSeq);
        return true;
    }
    bool finishGame(qint64, const GameResult &) override { return true; }
    bool restoreGame(qint64, const NewGame &, const QString &) override { return true; }
};

GameDart dart(int number)
{
    GameDart row;
    row.dartSeq = number;
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
};

QTEST_GUILESS_MAIN(TestGameJournal)
#include "tst_game_journal.moc"
