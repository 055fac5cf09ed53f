#include "core/advice/checkout_policy.h"
#include "core/games/checkout_chart.h"

#include <QTest>

#include <cmath>
#include <memory>

using namespace tavrix;

namespace {

std::array<DartScore, maxCheckout + 1> chartFirstDarts()
{
    CheckoutChart chart;
    chart.load(bundledChartRows());
    std::array<DartScore, maxCheckout + 1> first{};
    for (int r = 2; r <= maxCheckout; ++r)
        first[r] = chart.checkoutDarts(r, true).first();
    return first;
}

// The table of one spread for every class of aim.
std::unique_ptr<CheckoutTable> tableFor(const Spread &spread)
{
    ScoreMaps maps;
    return std::make_unique<CheckoutTable>(maps.regionChances(spread), chartFirstDarts());
}

// The darts of a route ("T20 T20 D25") as the chart reads dart codes.
DartRoute dartsOf(const QString &route)
{
    return parseDartCodes(QString(route).replace(QLatin1Char(' '), QLatin1Char(','))).value_or(DartRoute{});
}

} // namespace

class TestCheckoutPolicy : public QObject {
    Q_OBJECT

private slots:
    // Finishes every darts player knows, and the scores no set of darts
    // can finish.
    void finishableScores()
    {
        for (int r = 2; r <= 40; ++r)
            QCOMPARE(canFinish(r, 1), r % 2 == 0);
        QVERIFY(canFinish(50, 1));
        QVERIFY(!canFinish(41, 1));
        QVERIFY(!canFinish(1, 3));
        QVERIFY(!canFinish(0, 3));
        QVERIFY(canFinish(3, 2));
        QVERIFY(canFinish(110, 2));
        QVERIFY(!canFinish(111, 2));
        for (const int r : {99, 102, 103, 105, 106, 108, 109})
            QVERIFY2(!canFinish(r, 2) && canFinish(r, 3), qPrintable(QString::number(r)));
        QVERIFY(canFinish(101, 2));
        QVERIFY(canFinish(170, 3));
        for (const int r : {159, 162, 163, 165, 166, 168, 169, 171})
            QVERIFY2(!canFinish(r, 3), qPrintable(QString::number(r)));
        QVERIFY(canFinish(2, 3)); // fewer darts than the set has
        QVERIFY(!canFinish(40, 0));
    }

    // Each grid point takes the chances of its own area's class.
    void chancesFollowTheClassOfTheAim()
    {
        std::array<std::vector<AimMap>, aimClassCount> byClass;
        for (int c = 0; c < aimClassCount; ++c)
            for (int region = 0; region < regionCount; ++region)
                byClass[c].push_back(AimMap{std::vector<float>(aimGridSide * aimGridSide, float(c * 100 + region))});
        const std::vector<AimMap> joined = chancesByAimClass(byClass);
        QCOMPARE(int(joined.size()), regionCount);
        const std::pair<BoardPoint, AimClass> cases[] = {
            {aimPoint(3, 20), AimClass::Treble}, {aimPoint(2, 3), AimClass::Double},
            {{0, 0}, AimClass::Bull},             {{0, -14}, AimClass::Bull},
            {aimPoint(1, 8), AimClass::Single},   {{0, 230}, AimClass::Single},
        };
        for (const auto &[point, aimClass] : cases) {
            const auto [column, row] = boardToGridPoint(point);
            for (const int region : {0, 33, bullRegion})
                QCOMPARE(joined[region].at(column, row), float(int(aimClass) * 100 + region));
        }
    }

    // Over every score and count of darts, for a player of middling skill:
    // the best aims never do worse than the chart's under the same darts, no
    // chance passes 1, and only finishable scores have any chance.
    void bestAimsNeverLoseToTheChart()
    {
        ScoreMaps maps;
        std::array<std::vector<AimMap>, aimClassCount> byClass;
        byClass[int(AimClass::Treble)] = maps.regionChances({1, -2, 144, 20, 100});
        byClass[int(AimClass::Double)] = maps.regionChances({0, 3, 100, -10, 196});
        byClass[int(AimClass::Bull)] = maps.regionChances({0, 0, 121, 0, 121});
        byClass[int(AimClass::Single)] = maps.regionChances({-2, 0, 225, 0, 225});
        const std::vector<AimMap> chances = chancesByAimClass(byClass);
        const CheckoutTable table(chances, chartFirstDarts());
        int gains = 0;
        for (int r = 2; r <= maxCheckout; ++r) {
            for (int d = 1; d <= 3; ++d) {
                const QString where = QStringLiteral("%1 with %2").arg(r).arg(d);
                const double best = table.chance(r, d);
                const double chart = table.chartChance(r, d);
                if (!canFinish(r, d)) {
                    QVERIFY2(best == 0 && chart == 0, qPrintable(where));
                    continue;
                }
                QVERIFY2(best > 0 && best <= 1 + 1e-6, qPrintable(where));
                QVERIFY2(chart >= 0 && chart <= best + 1e-6, qPrintable(where));
                gains += best > chart + 1e-3;
                // More darts never lower the chance.
                if (d > 1)
                    QVERIFY2(best >= table.chance(r, d - 1) - 1e-6, qPrintable(where));
            }
        }
        // The chart's doubles are not this player's: some scores gain.
        QVERIFY(gains > 0);

        // One dart finishes only on the double (or bull) it needs: the best
        // chance is that region's largest chance over the scoring area.
        for (const auto &[r, region] : std::initializer_list<std::pair<int, int>>{{40, 39}, {32, 35}, {2, 20}, {50, bullRegion}}) {
            float most = 0;
            for (int row = 0; row < aimGridSide; ++row)
                for (int column = 0; column < aimGridSide; ++column)
                    if (regionAt(gridPointToBoard(column, row)) >= 0)
                        most = std::max(most, chances[region].at(column, row));
            QCOMPARE(table.chance(r, 1), double(most));
            const auto [column, row] = table.aim(r, 1);
            QCOMPARE(chances[region].at(column, row), most);
        }
        QCOMPARE(table.chance(1, 3), 0.0);
        QCOMPARE(table.chance(171, 3), 0.0);
        QCOMPARE(table.chance(40, 4), 0.0);
    }

    // A dart that lands where it is aimed finishes every finishable score
    // with the fewest darts, along a route that adds up and ends on a double.
    void aPerfectPlayerFinishesWithTheFewestDarts()
    {
        const std::unique_ptr<CheckoutTable> table = tableFor({});
        for (int r = 2; r <= maxCheckout; ++r) {
            int fewest = 1;
            while (fewest <= 3 && !canFinish(r, fewest))
                ++fewest;
            if (fewest > 3) {
                QCOMPARE(table->route(r, 3), QString());
                continue;
            }
            const QString where = QString::number(r);
            QVERIFY2(std::fabs(table->chance(r, fewest) - 1) < 1e-6, qPrintable(where));
            if (fewest > 1)
                QCOMPARE(table->chance(r, fewest - 1), 0.0);
            const DartRoute darts = dartsOf(table->route(r, fewest));
            QVERIFY2(!darts.isEmpty() && darts.size() <= fewest, qPrintable(where + table->route(r, fewest)));
            int sum = 0;
            for (const DartScore &dart : darts)
                sum += dart.points();
            QVERIFY2(sum == r && darts.last().isDouble(), qPrintable(where + table->route(r, fewest)));
        }
        QCOMPARE(table->route(40, 1), QStringLiteral("D20"));
        QCOMPARE(table->route(50, 1), QStringLiteral("D25"));
        QCOMPARE(table->route(170, 3), QStringLiteral("T20 T20 D25"));
        // The first of the best aims in row order, from the top: treble 20
        // lies above the bull.
        QCOMPARE(table->route(100, 2), QStringLiteral("T20 D20"));
        QCOMPARE(table->route(41, 1), QString());
    }
};

QTEST_GUILESS_MAIN(TestCheckoutPolicy)
#include "tst_checkout_policy.moc"
