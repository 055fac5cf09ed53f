// The simulated dart and the computer's 301/501 turn, without widgets.

#include "core/advice/chart_advisor.h"
#include "core/opponent/computer_turn_rules.h"
#include "core/opponent/throw_model.h"

#include "../support/data_table.h"

#include <QTest>

#include <cmath>

using namespace tavrix;

namespace {

using BandEnds = std::array<double, 4>; // inches

CheckoutChart bundledChart()
{
    CheckoutChart chart;
    chart.load(bundledChartRows());
    return chart;
}

} // namespace

class TestThrowModel : public QObject {
    Q_OBJECT

private slots:
    // At each fixed level the darts land round the aim as its inch table says:
    // a quarter of the normal darts in each band, the median at the second
    // band's end, none beyond the widest band but the wild ones, which spread
    // evenly out to one board radius (6.5").
    // The same seed repeats the darts.
    void dartsSpreadAsEachLevelSays_data()
    {
        addTable<SkillLevel, BandEnds, double>({"level", "bandEnds", "wildness"},
            {{"B-Player", SkillLevel::BPlayer, {1.0, 1.5, 2.0, 3.0}, 0.1},
             {"A-Player", SkillLevel::APlayer, {0.75, 1.0, 1.5, 2.0}, 0.02},
             {"Master", SkillLevel::Master, {0.25, 0.5, 0.75, 1.5}, 0.005}});
    }
    void dartsSpreadAsEachLevelSays()
    {
        QFETCH(SkillLevel, level);
        QFETCH(BandEnds, bandEnds);
        QFETCH(double, wildness);
        constexpr int darts = 8000;
        constexpr double unitsPerInch = 202 / 6.5;
        const SkillProfile profile = fixedSkillProfile(level);
        QRandomGenerator random(1234);
        QRandomGenerator again(1234);
        std::array<int, 4> within{};
        for (int i = 0; i < darts; ++i) {
            const SimulatedDart dart = simulateThrow(profile, random, 10, -20);
            QCOMPARE(simulateThrow(profile, again, 10, -20).x, dart.x);
            QCOMPARE(dart.description, dartDescriptionFromXY(dart.x, dart.y));
            const double inches = std::hypot(dart.x - 10, dart.y + 20) / unitsPerInch;
            for (int k = 0; k < 4; ++k)
                within[k] += inches <= bandEnds[k] + 1e-9;
        }
        for (int k = 0; k < 4; ++k) {
            const double expected = (1 - wildness) * (k + 1) / 4 + wildness * bandEnds[k] / 6.5;
            QVERIFY2(std::abs(double(within[k]) / darts - expected) < 0.02,
                     qPrintable(QStringLiteral("band %1: %2").arg(k).arg(within[k])));
        }
    }

    // The computer aims where the chart's advisor says: double 20 until it
    // has doubled in, then the chart's first dart, treble 20 where the chart
    // has no finish.
    void computerAimsAsTheChartSays()
    {
        const CheckoutChart chart = bundledChart();
        const ChartAdvisor advisor(chart);
        QCOMPARE(advisor.x01Target({40, false, true}), (DartScore{2, 20}));
        QCOMPARE(advisor.x01Target({40, true, true}), (DartScore{2, 20}));
        QCOMPARE(advisor.x01Target({501, true, true}), (DartScore{3, 20}));
        QCOMPARE(advisor.x01Target({159, true, true}), (DartScore{3, 20}));
        QCOMPARE(advisor.x01Target({50, true, true}).number, 25);
    }

    // (The report with points and a withheld dart is pinned in tst_opponents.)
    void theReportListsTheDarts()
    {
        QCOMPARE(computerTurnReport(QStringLiteral("I"),
                                    {"Triple 20", "Single 5", "Double 1"}, 67),
                 QStringLiteral("\nI threw: Triple 20, Single 5, and Double 1 for 67 points."
                                "\n\n(Click \"Ok\" to continue)"));
        QCOMPARE(computerTurnReport(QStringLiteral("Bob"), {"Bull", "Bounce-out"}, std::nullopt),
                 QStringLiteral("\nBob threw: Bull, and Bounce-out (dart(s) withheld)"
                                "\n\n(Click \"Ok\" to continue)"));
    }
};

QTEST_GUILESS_MAIN(TestThrowModel)
#include "tst_throw_model.moc"
