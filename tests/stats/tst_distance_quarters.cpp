// The quarters of the player's distances from which the "You" profile is cut.

#include "core/stats/distance_quarters.h"

#include "../support/data_table.h"

#include <QTest>

using namespace tavrix;

class TestDistanceQuarters : public QObject {
    Q_OBJECT

private slots:
    // Each row: the distances, in any order, and whether an empty one is
    // among them; then the count, the average, the eight bounds, the wild darts.
    void quartersOfDistances_data()
    {
        using L = QList<double>;
        addTable<L, bool, L>({"distances", "hasNull", "expected"},
            {{"five", {5, 1, 4, 2, 3}, false, {5, 3, 2, 3, 3, 3, 3, 4, 5, 0}},
             // An empty distance sorts first and takes a place among the closest.
             {"five and an empty one", {5, 1, 4, 2, 3}, true, {5, 3, 1, 2, 2, 3, 3, 4, 5, 0}},
             // Repeats count once; quarters that hold nothing read 0.
             {"a repeat", {1, 2, 1}, false, {2, 1.5, 1, 0, 0, 0, 0, 2, 2, 0}},
             {"one wild dart", {1, 2, 3, 4, 5, 6, 7, 100}, false, {8, 16, 2, 3, 4, 5, 6, 7, 100, 1}},
             // Wild is strictly beyond three times the average: 15 is exactly
             // three times 5, and no wild dart.
             {"exactly three times the average", {15, 1, 2, 3, 4}, false, {5, 5, 2, 3, 3, 3, 3, 4, 15, 0}}});
    }

    void quartersOfDistances()
    {
        QFETCH(QList<double>, distances);
        QFETCH(bool, hasNull);
        const DistanceQuarters q = distanceQuartersOf({{distances.begin(), distances.end()}, hasNull}, 1);
        QTEST((QList<double>{double(q.sampleCount), q.average, q.tightestMax, q.secondMin, q.secondMax, q.thirdMin,
                             q.thirdMax, q.widestMin, q.widestMax, double(q.wildCount)}),
              "expected");
    }
};

QTEST_GUILESS_MAIN(TestDistanceQuarters)
#include "tst_distance_quarters.moc"
