// The simulated dart and the computer's 301/501 turn, without widgets.

#include "core/opponent/computer_turn_rules.h"
#include "core/opponent/throw_model.h"

#include <QTest>

#include <cmath>

using namespace tavrix;

namespace {

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
    void dartsSpreadAsEachLevelSays()
    {
        const struct {
            SkillLevel level;
            std::array<double, 4> bandEnds; // inches
            double wildness;
        } levels[] = {{SkillLevel::BPlayer, {1.0, 1.5, 2.0, 3.0}, 0.1},
                      {SkillLevel::APlayer, {0.75, 1.0, 1.5, 2.0}, 0.02},
                      {SkillLevel::Master, {0.25, 0.5, 0.75, 1.5}, 0.005}};
        constexpr int darts = 8000;
        constexpr double unitsPerInch = 202 / 6.5;
        for (const auto &level : levels) {
            const SkillProfile profile = fixedSkillProfile(level.level);
            QRandomGenerator random(1234);
            QRandomGenerator again(1234);
            std::array<int, 4> within{};
            for (int i = 0; i < darts; ++i) {
                const SimulatedDart dart = simulateThrow(profile, random, 10, -20);
                QCOMPARE(simulateThrow(profile, again, 10, -20).x, dart.x);
                QCOMPARE(dart.description, dartDescriptionFromXY(dart.x, dart.y));
                const double inches = std::hypot(dart.x - 10, dart.y + 20) / unitsPerInch;
                for (int k = 0; k < 4; ++k)
                    within[k] += inches <= level.bandEnds[k] + 1e-9;
            }
            for (int k = 0; k < 4; ++k) {
                const double expected = (1 - level.wildness) * (k + 1) / 4 + level.wildness * level.bandEnds[k] / 6.5;
                QVERIFY2(std::abs(double(within[k]) / darts - expected) < 0.02,
                         qPrintable(QStringLiteral("level %1 band %2: %3").arg(code(level.level)).arg(k).arg(within[k])));
            }
        }
    }

    void computerAimsAsTheChartSays()
    {
        const CheckoutChart chart = bundledChart();
        QCOMPARE(computerX01Target(false, 40, true, chart), (DartScore{2, 20}));
        QCOMPARE(computerX01Target(true, 40, true, chart), (DartScore{2, 20}));
        QCOMPARE(computerX01Target(true, 501, true, chart), (DartScore{3, 20}));
        // No double-out finish from 159: treble 20.
        QCOMPARE(computerX01Target(true, 159, true, chart), (DartScore{3, 20}));
        QCOMPARE(computerX01Target(true, 50, true, chart).number, 25);
        QCOMPARE(scoreFromXY(targetPoint({3, 19}).x, targetPoint({3, 19}).y), (DartScore{3, 19}));
    }

    // Every dart lowers the live score (which only steers the aim and the
    // early end); the turn's points count from the doubling dart on. The
    // turn ends early at 1 or less; wires and misses score nothing.
    void aTurnCountsItsDarts()
    {
        const BoardPoint t20 = targetPoint({3, 20});
        const BoardPoint d16 = targetPoint({2, 16});
        ComputerX01Turn notIn(301, false);
        notIn.count(t20.x, t20.y, QStringLiteral("Triple 20"));
        notIn.count(d16.x, d16.y, QStringLiteral("Double 16"));
        notIn.count(t20.x, t20.y, QStringLiteral("Triple 20"));
        QCOMPARE(notIn.remaining, 241 - 32 - 60);
        QCOMPARE(notIn.turnPoints, 92);
        QVERIFY(notIn.over());

        ComputerX01Turn finish(32, true);
        finish.count(d16.x, d16.y, QStringLiteral("Double 16"));
        QVERIFY(finish.over());
        QCOMPARE(finish.dartCount(), 1);

        ComputerX01Turn misses(60, true);
        misses.count(300, 0, QStringLiteral("Missed board"));
        // On the wire between the single and the treble ring of the 20.
        misses.count(0, 113.5, QStringLiteral("Bounce-out"));
        QCOMPARE(misses.remaining, 60);
        QVERIFY(!misses.over());
        ComputerX01Turn bust(3, true);
        bust.count(t20.x, t20.y, QStringLiteral("Triple 20"));
        QVERIFY(bust.over());
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
