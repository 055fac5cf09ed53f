// The quarters of the player's distances from which the "You" profile is cut.

#include "core/stats/distance_quarters.h"

#include <QTest>

using namespace tavrix;

class TestDistanceQuarters : public QObject {
    Q_OBJECT

private slots:
    void quartersOfDistances_data()
    {
        QTest::addColumn<QList<double>>("distances"); // in any order
        QTest::addColumn<bool>("hasNull");
        // count, average, the eight bounds, the wild darts
        QTest::addColumn<QList<double>>("expected");
        QTest::newRow("five") << QList<double>{5, 1, 4, 2, 3} << false
                              << QList<double>{5, 3, 2, 3, 3, 3, 3, 4, 5, 0};
        // An empty distance sorts first and takes a place among the closest.
        QTest::newRow("five and an empty one") << QList<double>{5, 1, 4, 2, 3} << true
                                               << QList<double>{5, 3, 1, 2, 2, 3, 3, 4, 5, 0};
        // Repeats count once; quarters that hold nothing read 0.
        QTest::newRow("a repeat") << QList<double>{1, 2, 1} << false << QList<double>{2, 1.5, 1, 0, 0, 0, 0, 2, 2, 0};
        QTest::newRow("one wild dart") << QList<double>{1, 2, 3, 4, 5, 6, 7, 100} << false
                                       << QList<double>{8, 16, 2, 3, 4, 5, 6, 7, 100, 1};
        // Wild is strictly beyond three times the average: 15 is exactly
        // three times 5, and no wild dart.
        QTest::newRow("exactly three times the average") << QList<double>{15, 1, 2, 3, 4} << false
                                                         << QList<double>{5, 5, 2, 3, 3, 3, 3, 4, 15, 0};
    }

    void quartersOfDistances()
    {
        QFETCH(QList<double>, distances);
        QFETCH(bool, hasNull);
        QFETCH(QList<double>, expected);
        const DistanceQuarters q = distanceQuartersOf({{distances.begin(), distances.end()}, hasNull}, 1);
        QCOMPARE((QList<double>{double(q.sampleCount), q.average, q.tightestMax, q.secondMin, q.secondMax, q.thirdMin,
                                q.thirdMax, q.widestMin, q.widestMax, double(q.wildCount)}),
                 expected);
    }
};

QTEST_GUILESS_MAIN(TestDistanceQuarters)
#include "tst_distance_quarters.moc"
