// The running totals of practice against a real file: the sums kept set by
// set equal, to the last bit, the totals counted afresh dart by dart, whoever
// changes the darts.

#include "../support/data_table.h"
#include "../support/sql_rows.h"
#include "core/practice/practice_rules.h"
#include "core/practice/practice_totals.h"
#include "core/stats/stats_store.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

using namespace tavrix;

namespace {

// The sums counted the slow way, in one join independent of the kept sums:
// each dart measured to the aiming point of its target, in the order of the
// targets' ids and then the darts'; hits as the running totals count them.
PracticeSums countAfresh(const QSqlDatabase &db, qint64 player)
{
    PracticeSums ref;
    const QList<QVariantList> darts = sqlRows(
        db, QStringLiteral("SELECT ta.id, ta.targetValue, ta.targetRing, th.x, th.y, th.score, th.ring, th.players_id"
                           " FROM statstargets ta JOIN statsthrows th ON th.statstargets_id = ta.id"
                           " WHERE ta.players_id = %1 ORDER BY ta.id, th.id").arg(player));
    for (const QVariantList &dart : darts) {
        const int v = dart[1].toInt();
        const int r = dart[2].toInt();
        const BoardPoint aim = aimPoint(r, v);
        const double dx = dart[3].toDouble() - aim.x;
        const double dy = dart[4].toDouble() - aim.y;
        const double d = std::sqrt(dx * dx + dy * dy);
        ref.lastTarget = dart[0].toLongLong();
        ref.distCount += 1;
        ref.distSum += d;
        TargetTally &tally = ref.targets[{v, r}];
        tally.distCount += 1;
        tally.distSum += d;
        if (dart[7].toLongLong() == player) {
            tally.throws += 1;
            tally.hits += dart[5].toInt() == v && (r == 1 || dart[6].toInt() == r);
        }
    }
    return ref;
}

} // namespace

class TestPracticeTotals : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> dir_;
    QString path_;
    StatsStore store_;
    qint64 ann_ = 0;
    qint64 bob_ = 0;

    qint64 openTarget(qint64 player, int value, int ring) { return store_.insertStatTarget(player, value, ring).value(); }
    // Three darts at the target, scored as practice scores them.
    bool confirm(qint64 player, qint64 target, int value, int ring, const std::array<BoardPoint, 3> &at)
    {
        PracticeSet set{player, target, value, ring, {}};
        for (int i = 0; i < 3; ++i) {
            const PracticeScore score = practiceScore(std::hypot(at[i].x, at[i].y), angleFromXY(at[i].x, at[i].y));
            set.darts[i] = {player, target, i, at[i].x, at[i].y, 0, score.score, score.ring};
        }
        return recordPracticeSet(store_, set);
    }
    // Up to 60 units off the aim: an Any target's darts reach its treble,
    // double and the wires, and the bull's its outer bull.
    std::array<BoardPoint, 3> scatter(QRandomGenerator &random, int value, int ring)
    {
        const BoardPoint aim = aimPoint(ring, value);
        std::array<BoardPoint, 3> darts;
        for (BoardPoint &dart : darts)
            dart = {aim.x + random.bounded(120.0) - 60, aim.y + random.bounded(120.0) - 60};
        return darts;
    }
    // The kept or rebuilt sums agree, to the last bit, with the sums counted
    // afresh, target by target.
    void expectAsCountedAfresh(qint64 player)
    {
        const std::optional<PracticeSums> sums = practiceSums(store_, player);
        QVERIFY2(sums, qPrintable(store_.lastError()));
        QVERIFY(*sums == countAfresh(store_.connection(), player));
    }

private slots:
    void init()
    {
        dir_ = std::make_unique<QTemporaryDir>();
        path_ = dir_->filePath(QStringLiteral("tavrix.db"));
        QVERIFY2(store_.open(path_), qPrintable(store_.lastError()));
        ann_ = *store_.insertPlayer(QStringLiteral("Ann"));
        bob_ = *store_.insertPlayer(QStringLiteral("Bob"));
    }
    void cleanup() { store_.close(); }

    // Hit rates count the darts the player threw at the player's own
    // targets; a dart of another player recorded at such a target counts
    // only in the distances.
    void aDartCountsForItsThrower_data()
    {
        addTable<qint64, int, int, qint64, qint64>({"thrower", "score", "ring", "throws", "hits"},
            {{"own hit", 1, 20, 2, 1, 1}, {"own miss", 1, 20, 1, 1, 0}, {"another's hit", 2, 20, 2, 0, 0}});
    }
    void aDartCountsForItsThrower()
    {
        QFETCH(qint64, thrower);
        QFETCH(int, score);
        QFETCH(int, ring);
        PracticeSums sums;
        addPracticeDart(sums, 1, 20, 2, {thrower, 5, 0, 0, 190, 0, score, ring});
        const TargetTally &tally = sums.targets[{20, 2}];
        QTEST(tally.throws, "throws");
        QTEST(tally.hits, "hits");
        QCOMPARE(tally.distCount, 1);
        QCOMPARE(sums.distSum, 6.0);
    }

    // Sets over many targets, for two players, some never confirmed: the
    // kept sums equal the sums counted afresh; so do sums rebuilt after
    // another program adds, moves or removes darts, after a set confirmed
    // out of turn, and after a reset.
    void keptSumsEqualTheTotalsCountedAfresh()
    {
        QRandomGenerator random(42);
        // Sums kept from the start are carried set by set, never rebuilt.
        QVERIFY(practiceSums(store_, ann_) && practiceSums(store_, bob_));
        for (int set = 0; set < 60; ++set) {
            const int value = set % 7 == 6 ? 25 : 14 + set % 7;
            const int ring = value == 25 ? 1 : 1 + set % 3;
            const qint64 player = set % 5 == 4 ? bob_ : ann_;
            const qint64 target = openTarget(player, value, ring);
            if (set % 11 == 10)
                continue;
            QVERIFY2(confirm(player, target, value, ring, scatter(random, value, ring)), qPrintable(store_.lastError()));
        }
        QVERIFY(store_.keptPracticeSums(ann_) && store_.keptPracticeSums(bob_));
        expectAsCountedAfresh(ann_);
        expectAsCountedAfresh(bob_);

        OtherConnection other(path_);
        QVERIFY(other.exec({QStringLiteral("INSERT INTO statsthrows (players_id, statstargets_id, seq, x, y, dist,"
                                           " score, ring) VALUES (%1, 1, 3, 10, 20, 0, 20, 1)").arg(ann_)}));
        expectAsCountedAfresh(ann_);
        QVERIFY(other.exec({QStringLiteral("UPDATE statsthrows SET x = x + 1 WHERE id = 5")}));
        expectAsCountedAfresh(ann_);
        QVERIFY(other.exec({QStringLiteral("DELETE FROM statstargets WHERE id = 3")}));
        expectAsCountedAfresh(ann_);

        // Darts of an older set cannot be added after a newer set's: the
        // sums are counted again in order.
        const qint64 older = openTarget(ann_, 20, 3);
        const qint64 newer = openTarget(ann_, 20, 3);
        QVERIFY(confirm(ann_, newer, 20, 3, scatter(random, 20, 3)));
        QVERIFY(confirm(ann_, older, 20, 3, scatter(random, 20, 3)));
        QVERIFY(!store_.keptPracticeSums(ann_));
        expectAsCountedAfresh(ann_);

        QVERIFY(store_.resetPlayerStats(ann_));
        expectAsCountedAfresh(ann_);
    }
};

QTEST_GUILESS_MAIN(TestPracticeTotals)
#include "tst_practice_totals.moc"
