#include "core/practice/set_grouping.h"

#include <QTest>

using namespace tavrix;

class TestSetGrouping : public QObject {
    Q_OBJECT

private slots:
    // Darts 50, 50 and 80 units from the aim with their centre on it: 60
    // units from the aim on average, the centre 0 away, and 60 units from
    // the centre. (Darts on the aim and an uneven set are measured through
    // the program in tst_practice.)
    void threeMeasures()
    {
        const SetGrouping g = setGrouping({BoardPoint{40, 60}, BoardPoint{-20, 60}, BoardPoint{10, -60}}, {10, 20});
        QCOMPARE(g.averageDistance, 60.0);
        QCOMPARE(g.centreDistance, 0.0);
        QCOMPARE(g.groupingDistance, 60.0);
    }
};

QTEST_GUILESS_MAIN(TestSetGrouping)
#include "tst_set_grouping.moc"
