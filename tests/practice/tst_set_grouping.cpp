#include "practice/set_grouping.h"

#include <QTest>

#include <cmath>

using namespace tavrix;

class TestSetGrouping : public QObject {
    Q_OBJECT

    static void expect(const SetGrouping &g, double average, double centre, double grouping)
    {
        QVERIFY2(std::abs(g.averageDistance - average) < 1e-9, qPrintable(QString::number(g.averageDistance)));
        QVERIFY2(std::abs(g.centreDistance - centre) < 1e-9, qPrintable(QString::number(g.centreDistance)));
        QVERIFY2(std::abs(g.groupingDistance - grouping) < 1e-4, qPrintable(QString::number(g.groupingDistance)));
    }

private slots:
    // Values worked out by hand: darts on the aim, a tight cluster an inch
    // off, three darts 120 degrees apart round the aim, and an uneven set.
    void threeMeasures()
    {
        const BoardPoint aim{10, 20};
        expect(setGrouping({aim, aim, aim}, aim), 0, 0, 0);
        const BoardPoint inchAbove{10, 20 + 31.08};
        expect(setGrouping({inchAbove, inchAbove, inchAbove}, aim), 31.08, 31.08, 0);

        std::array<BoardPoint, 3> spread;
        for (int i = 0; i < 3; ++i) {
            const double angle = (90 + 120 * i) * M_PI / 180;
            spread[i] = {aim.x + 50 * std::cos(angle), aim.y + 50 * std::sin(angle)};
        }
        expect(setGrouping(spread, aim), 50, 0, 50);

        // Distances 30, 40 and 0; centre (10, 40/3) lies 50/3 from the aim;
        // from the centre: sqrt(5200/9), sqrt(7300/9) and 50/3.
        expect(setGrouping({BoardPoint{30, 0}, BoardPoint{0, 40}, BoardPoint{0, 0}}, {0, 0}), 70.0 / 3,
               50.0 / 3, 23.0612);
    }
};

QTEST_GUILESS_MAIN(TestSetGrouping)
#include "tst_set_grouping.moc"
