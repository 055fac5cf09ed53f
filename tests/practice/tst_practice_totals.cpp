// The running totals of practice against a real file: the sums kept set by
// set equal, to the last bit, the totals counted afresh dart by dart with one
// query per target, whoever changes the darts.

#include "../support/sql_rows.h"
#include "practice/practice_rules.h"
#include "practice/practice_totals.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

using namespace tavrix;

namespace {

// The totals counted the slow way: every target of the player, then every
// dart of each target, measured to the aiming point worked out from the
// board's tables here; hits and throws counted with joins.
struct Reference {
    qint64 count = 0;
    double sum = 0;
    qint64 countThis = 0;
    double sumThis = 0;
};

Reference countAfresh(const QSqlDatabase &db, qint64 player, int value, int ring)
{
    Reference ref;
    const QList<QVariantList> targets =
        sqlRows(db, QStringLiteral("SELECT id, targetValue, targetRing FROM statstargets"
                                   " WHERE players_id = %1 ORDER BY id").arg(player));
    for (const QVariantList &target : targets) {
        const int v = target[1].toInt();
        const int r = target[2].toInt();
        const double angle = (v == 25 ? 0.0 : std::array<double, 21>{0, 72, 306, 270, 36, 108, 0, 234, 198, 144, 342,
                                                                     180, 126, 18, 162, 324, 216, 288, 54, 252, 90}[v]);
        const double radius = v == 25 ? 0.0 : std::array<double, 3>{150, 196, 118}[r - 1];
        const double ax = radius * std::cos(angle * radPerDeg);
        const double ay = radius * std::sin(angle * radPerDeg);
        const QList<QVariantList> darts = sqlRows(
            db, QStringLiteral("SELECT x, y FROM statsthrows WHERE statstargets_id = %1 ORDER BY id")
                    .arg(target[0].toLongLong()));
        for (const QVariantList &dart : darts) {
            const double dx = dart[0].toDouble() - ax;
            const double dy = dart[1].toDouble() - ay;
            const double d = std::sqrt(dx * dx + dy * dy);
            ref.count += 1;
            ref.sum += d;
            if (v == value && r == ring) {
                ref.countThis += 1;
                ref.sumThis += d;
            }
        }
    }
    return ref;
}

qint64 countOf(const QSqlDatabase &db, qint64 player, const QString &where)
{
    return sqlValue(db, QStringLiteral("SELECT count(th.id) FROM statsthrows th, statstargets ta"
                                       " WHERE th.players_id = %1 AND ta.players_id = th.players_id"
                                       " AND th.statstargets_id = ta.id AND %2")
                            .arg(player)
                            .arg(where))
        .toLongLong();
}

} // namespace

class TestPracticeTotals : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> dir_;
    QString path_;
    StatsStore store_;
    qint64 ann_ = 0;
    qint64 bob_ = 0;

    qint64 openTarget(qint64 player, int value, int ring)
    {
        const std::optional<qint64> id = store_.insertStatTarget(player, value, ring);
        if (!id)
            qFatal("%s", qPrintable(store_.lastError()));
        return *id;
    }
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
        const QSqlDatabase db = store_.connection();
        const Reference ref = countAfresh(db, player, value, ring);
        QCOMPARE(sums->distCount, ref.count);
        QCOMPARE(sums->distSum, ref.sum);
        const auto found = sums->targets.find({value, ring});
        const TargetTally tally = found == sums->targets.end() ? TargetTally{} : found->second;
        QCOMPARE(tally.distCount, ref.countThis);
        QCOMPARE(tally.distSum, ref.sumThis);
        const QString hit = ring == 1 ? QStringLiteral(" AND th.score = ta.targetValue")
                                      : QStringLiteral(" AND th.score = ta.targetValue AND th.ring = ta.targetRing");
        const QString target = QStringLiteral("ta.targetRing = %1 AND ta.targetValue = %2").arg(ring).arg(value);
        QCOMPARE(tally.throws, countOf(db, player, target));
        QCOMPARE(tally.hits, countOf(db, player, target + hit));
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
        RunningTotalsTexts texts = runningTotalsTexts(*practiceSums(store_, ann_), 7, 1, false);
        QCOMPARE(texts.pctThis, QStringLiteral("66.66"));
        QCOMPARE(texts.pctAnys, QStringLiteral("66.66%"));
        QCOMPARE(texts.pctDoubles, QStringLiteral("0%"));
        QCOMPARE(texts.pctAll, QStringLiteral("33.33%"));
        QCOMPARE(runningTotalsTexts(*practiceSums(store_, ann_), 7, 2, false).pctThis, QStringLiteral("0"));

        const qint64 bull = openTarget(bob_, 25, 1);
        QVERIFY(confirm(bob_, bull, 25, 1, {BoardPoint{0, 13}, BoardPoint{0, 2}, BoardPoint{0, 60}}));
        texts = runningTotalsTexts(*practiceSums(store_, bob_), 25, 1, false);
        QCOMPARE(texts.pctThis, QStringLiteral("33.33"));
        QCOMPARE(texts.pctTriples, QStringLiteral("N/A"));
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
        QVERIFY(store_.keptPracticeSums(ann_));
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
