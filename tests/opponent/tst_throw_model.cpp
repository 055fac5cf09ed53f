// The simulated dart and the computer's 301/501 turn, without widgets.

#include "opponent/computer_turn_rules.h"
#include "opponent/self_play.h"
#include "opponent/throw_model.h"

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
    // The four draws come in a fixed order from the one generator: a seed
    // repeats the darts, and a wild dart (three draws) keeps the next dart
    // in step with the same sequence of numbers. The band, the distance in it
    // and the direction follow from the draws, so the bands are taken equally
    // often and the directions are uniform.
    void drawsInOrderFromTheGenerator()
    {
        SkillProfile profile = fixedSkillProfile(SkillLevel::BPlayer);
        profile.wildness = 0.5;
        QRandomGenerator thrower(1234);
        QRandomGenerator mirror(1234);
        int wild = 0;
        for (int i = 0; i < 200; ++i) {
            const SimulatedDart dart = simulateThrow(profile, thrower, 10, -20);
            double distance = 0;
            if (mirror.generateDouble() > profile.wildness) {
                const DistanceBand band = profile.skillRadii[int(4 * mirror.generateDouble())];
                distance = band.low + (band.high - band.low) * mirror.generateDouble();
            } else {
                ++wild;
                distance = 202 * mirror.generateDouble();
            }
            const double theta = mirror.generateDouble() * 2 * Pi;
            QCOMPARE(dart.x, 10 + distance * std::cos(theta));
            QCOMPARE(dart.y, -20 + distance * std::sin(theta));
            QCOMPARE(dart.description, dartDescriptionFromXY(dart.x, dart.y));
        }
        QVERIFY(wild > 50 && wild < 150);
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
        QCOMPARE(targetPoint({2, 25}), (BoardPoint{0, 0}));
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
        QCOMPARE(notIn.remaining, 241);
        QCOMPARE(notIn.turnPoints, 0);
        notIn.count(d16.x, d16.y, QStringLiteral("Double 16"));
        QVERIFY(notIn.doubledIn);
        notIn.count(t20.x, t20.y, QStringLiteral("Triple 20"));
        QCOMPARE(notIn.remaining, 241 - 32 - 60);
        QCOMPARE(notIn.turnPoints, 92);
        QVERIFY(notIn.over());

        ComputerX01Turn finish(32, true);
        finish.count(d16.x, d16.y, QStringLiteral("Double 16"));
        QCOMPARE(finish.remaining, 0);
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

    // Self-play 501 legs at the Master's level end within 100 darts a side
    // when aiming by the chart (by treble 20 alone the Master hardly ever
    // finishes).
    void masterFinishesLegsByTheChart()
    {
        const CheckoutChart chart = bundledChart();
        const SkillProfile master = fixedSkillProfile(SkillLevel::Master);
        QRandomGenerator random(20261123);
        for (int leg = 0; leg < 40; ++leg) {
            const SelfPlayLeg played = playSelfPlayLeg(master, chart, random, leg % 2, 100);
            QVERIFY(played.finished && played.winnerDarts <= 100);
        }
    }

    void theReportListsTheDarts()
    {
        QCOMPARE(computerTurnReport(QStringLiteral("I"),
                                    {"Triple 20", "Single 5", "Double 1"}, 67),
                 QStringLiteral("\nI threw: Triple 20, Single 5, and Double 1 for 67 points."
                                "\n\n(Click \"Ok\" to continue)"));
        QCOMPARE(computerTurnReport(QStringLiteral("I"), {"Double 20"}, 40),
                 QStringLiteral("\nI threw: Double 20 for 40 points. (dart(s) withheld)"
                                "\n\n(Click \"Ok\" to continue)"));
        QCOMPARE(computerTurnReport(QStringLiteral("Bob"), {"Bull", "Bounce-out"}, std::nullopt),
                 QStringLiteral("\nBob threw: Bull, and Bounce-out (dart(s) withheld)"
                                "\n\n(Click \"Ok\" to continue)"));
    }
};

QTEST_GUILESS_MAIN(TestThrowModel)
#include "tst_throw_model.moc"
