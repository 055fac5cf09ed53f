#include "core/practice/practice_rules.h"

#include "../support/data_table.h"

#include <QTest>

#include <cmath>

using namespace tavrix;

Q_DECLARE_METATYPE(tavrix::PracticeSums)

namespace {

TargetTally tally(qint64 throws, qint64 hits)
{
    return {throws, hits, 0, 0};
}

} // namespace

class TestPracticeRules : public QObject {
    Q_OBJECT

private slots:
    // The bull area keeps its ring code as the score; everything else keeps
    // ring and segment; off the board and the gaps of the ring table are
    // ring -999 with no score. (The bull, single and double 20 and a miss
    // are written through the program in tst_practice.)
    void practiceScorePairs_data()
    {
        addTable<double, double, int, int>({"x", "y", "ring", "score"},
            {{"outer bull", 0, 13, 1, 25}, {"outer bull at the bull area's edge", 0, 19, 1, 25},
             {"wire inside the bull area", 0, 7.5, 1, 0}, {"wire just outside it", 0, 19.5, 0, 20},
             {"single 20 from its edge", 0, 20, 1, 20}, {"treble 20", 0, 118, 3, 20},
             {"gap of the ring table", 0, 7.000005, -999, 0}, {"off the board", 0, 240, -999, 0}});
    }
    void practiceScorePairs()
    {
        QFETCH(double, x);
        QFETCH(double, y);
        QFETCH(int, ring);
        QFETCH(int, score);
        QCOMPARE(practiceScore(std::hypot(x, y), angleFromXY(x, y)), (PracticeScore{ring, score}));
    }

    // The seven running totals from the player's sums: each ring's hit rate
    // and all of them together with a percent sign, this target's without,
    // cut (not rounded) to two decimals; "N/A" where no dart counts.
    void runningTotals_data()
    {
        const QString na = QStringLiteral("N/A");
        PracticeSums mixed;
        mixed.targets[{20, 1}] = tally(4, 1);
        mixed.targets[{20, 2}] = tally(2, 0);
        mixed.targets[{19, 3}] = tally(4, 3);
        mixed.distCount = 10;
        mixed.distSum = 400.0;
        mixed.targets[{19, 3}].distCount = 4;
        mixed.targets[{19, 3}].distSum = 60.0;
        PracticeSums thirds;
        thirds.targets[{25, 1}] = tally(3, 2);
        thirds.distCount = 3;
        addTable<PracticeSums, int, int, QStringList>({"sums", "value", "ring", "texts"},
            {{"no darts", {}, 20, 2, QStringList(7, na)},
             {"every ring, at treble 19", mixed, 19, 3, {"40%", "75", "1.287\"", "0.482\"", "25%", "0%", "75%"}},
             {"a target not thrown at yet", mixed, 7, 2, {"40%", na, "1.287\"", na, "25%", "0%", "75%"}},
             {"two thirds cut, not rounded", thirds, 25, 1, {"66.66%", "66.66", "0\"", na, "66.66%", na, na}}});
    }
    void runningTotals()
    {
        QFETCH(PracticeSums, sums);
        QFETCH(int, value);
        QFETCH(int, ring);
        const RunningTotalsTexts t = runningTotalsTexts(sums, value, ring, false);
        QTEST((QStringList{t.pctAll, t.pctThis, t.avgDistAny, t.avgDistThis, t.pctAnys, t.pctDoubles, t.pctTriples}),
              "texts");
    }
};

QTEST_APPLESS_MAIN(TestPracticeRules)
#include "tst_practice_rules.moc"
