// The running totals of practice against a real file: the sums kept set by
// set equal, to the last bit, the totals counted afresh dart by dart, whoever
// changes the darts.

#include "../support/sql_rows.h"
#include "practice/practice_rules.h"
#include "practice/practice_totals.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

using namespace tavrix;

namespace {

// The totals counted the slow way, in one join independent of the kept sums:
// each dart measured to the aiming point of its target, in the order of the
// targets' ids and then the darts'; hits as the running totals count them.
struct Reference {
    qint64 count = 0, countThis = 0, throws = 0, hits = 0;
    double sum = 0, sumThis = 0;
};

Reference countAfresh(const QSqlDatabase &db, qint64 player, int value, int ring)
{
    Reference ref;
    const QList<QVariantList> darts = sqlRows(
        db, QStringLiteral("SELECT ta.targetValue, ta.targetRing, th.x, th.y, th.score, th.ring, th.players_id"
                           " FROM statstargets ta JOIN statsthrows th ON th.statstargets_id = ta.id"
                           " WHERE ta.players_id = %1 ORDER BY ta.id, th.id").arg(player));
    for (const QVariantList &dart : darts) {
        const int v = dart[0].toInt();
        const int r = dart[1].toInt();
        const BoardPoint aim = aimPoint(r, v);
        const double dx = dart[2].toDouble() - aim.x;
        const double dy = dart[3].toDouble() - aim.y;
        const double d = std::sqrt(dx * dx + dy * dy);
        ref.count += 1;
        ref.sum += d;
        if (v == value && r == ring) {
            ref.countThis += 1;
            ref.sumThis += d;
            if (dart[6].toLongLong() == player) {
                ref.throws += 1;
                ref.hits += dart[4].toInt() == v && (ring == 1 || dart[5].toInt() == r);
            }
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
    std::array<BoardPoint, 3> scatter(QRandomGenerator &random, int value, int ring)
    {
        const BoardPoint aim = aimPoint(ring, value);
        std::array<BoardPoint, 3> darts;
        for (BoardPoint &dart : darts)
            dart = {aim.x + random.bounded(50.0) - 25, aim.y + random.bounded(50.0) - 25};
        return darts;
    }
    // The kept or rebuilt sums agree with the totals counted afresh.
    void expectAsCountedAfresh(qint64 player, int value, int ring)
    {
        const std::optional<PracticeSums> sums = practiceSums(store_, player);
        QVERIFY2(sums, qPrintable(store_.lastError()));
        const Reference ref = countAfresh(store_.connection(), player, value, ring);
        QCOMPARE(sums->distCount, ref.count);
        QCOMPARE(sums->distSum, ref.sum);
        const auto found = sums->targets.find({value, ring});
        const TargetTally tally = found == sums->targets.end() ? TargetTally{} : found->second;
        QCOMPARE(tally.distCount, ref.countThis);
        QCOMPARE(tally.distSum, ref.sumThis);
        QCOMPARE(tally.throws, ref.throws);
        QCOMPARE(tally.hits, ref.hits);
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

    // Figures worked out by hand: an Any 7 hit by a treble 7 where a Double 7
    // is not, and the bull target hit by the outer bull but not by the bull.
    void runningTotalsByHand()
    {
        const qint64 any7 = openTarget(ann_, 7, 1);
        const qint64 double7 = openTarget(ann_, 7, 2);
        const BoardPoint treble7 = aimPoint(3, 7);
        QVERIFY(confirm(ann_, any7, 7, 1, {treble7, treble7, BoardPoint{0, 240}}));
        QVERIFY(confirm(ann_, double7, 7, 2, {treble7, treble7, treble7}));
        const RunningTotalsTexts texts = runningTotalsTexts(*practiceSums(store_, ann_), 7, 1, false);
        QCOMPARE(texts.pctThis, QStringLiteral("66.66"));
        QCOMPARE(texts.pctAnys, QStringLiteral("66.66%"));
        QCOMPARE(texts.pctDoubles, QStringLiteral("0%"));
        QCOMPARE(texts.pctAll, QStringLiteral("33.33%"));
        QCOMPARE(runningTotalsTexts(*practiceSums(store_, ann_), 7, 2, false).pctThis, QStringLiteral("0"));

        const qint64 bull = openTarget(bob_, 25, 1);
        QVERIFY(confirm(bob_, bull, 25, 1, {BoardPoint{0, 13}, BoardPoint{0, 13}, BoardPoint{0, 2}}));
        QCOMPARE(runningTotalsTexts(*practiceSums(store_, bob_), 25, 1, false).pctThis, QStringLiteral("66.66"));
    }

    // Sets over many targets, for two players, some never confirmed: the
    // kept sums equal the totals counted afresh; so do sums rebuilt after
    // another program adds, moves or removes darts, after a set confirmed
    // out of turn, and after a reset.
    void keptSumsEqualTheTotalsCountedAfresh()
    {
        QRandomGenerator random(42);
        QVERIFY(practiceSums(store_, ann_) && practiceSums(store_, bob_));
        for (int set = 0; set < 60; ++set) {
            const int value = set % 7 == 6 ? 25 : 14 + set % 7;
            const int ring = value == 25 ? 1 : 1 + set % 3;
            const qint64 player = set % 5 == 4 ? bob_ : ann_;
            const qint64 target = openTarget(player, value, ring);
            if (set % 11 == 10)
                continue;
            QVERIFY2(confirm(player, target, value, ring, scatter(random, value, ring)), qPrintable(store_.lastError()));
            QVERIFY2(store_.keptPracticeSums(ann_), qPrintable(QString::number(set)));
        }
        expectAsCountedAfresh(ann_, 16, 3);
        expectAsCountedAfresh(ann_, 25, 1);
        expectAsCountedAfresh(bob_, 18, 2);

        OtherConnection other(path_);
        QVERIFY(other.exec({QStringLiteral("INSERT INTO statsthrows (players_id, statstargets_id, seq, x, y, dist,"
                                           " score, ring) VALUES (%1, 1, 3, 10, 20, 0, 20, 1)").arg(ann_)}));
        QVERIFY(!store_.keptPracticeSums(ann_));
        QVERIFY(store_.keptPracticeSums(bob_));
        expectAsCountedAfresh(ann_, 14, 1);
        QVERIFY(other.exec({QStringLiteral("UPDATE statsthrows SET x = x + 1 WHERE id = 5")}));
        expectAsCountedAfresh(ann_, 14, 1);
        QVERIFY(other.exec({QStringLiteral("DELETE FROM statstargets WHERE id = 3")}));
        expectAsCountedAfresh(ann_, 16, 3);

        const qint64 older = openTarget(ann_, 20, 3);
        const qint64 newer = openTarget(ann_, 20, 3);
        QVERIFY(confirm(ann_, newer, 20, 3, scatter(random, 20, 3)));
        QVERIFY(confirm(ann_, older, 20, 3, scatter(random, 20, 3)));
        QVERIFY(!store_.keptPracticeSums(ann_));
        expectAsCountedAfresh(ann_, 20, 3);

        QVERIFY(store_.resetPlayerStats(ann_));
        const QString na = QStringLiteral("N/A");
        QCOMPARE(runningTotalsTexts(*practiceSums(store_, ann_), 20, 3, false),
                 (RunningTotalsTexts{na, na, na, na, na, na, na}));
        expectAsCountedAfresh(bob_, 25, 1);
    }
};

QTEST_GUILESS_MAIN(TestPracticeTotals)
#include "tst_practice_totals.moc"
