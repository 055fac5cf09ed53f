// The personal advice for circular spreads of 5, 15 and 30 mm: the time of
// one expected-score map, of the 62 region maps, and of a whole checkout
// table from a cold start (the region maps of four classes of aim, joined,
// and the table); the best aim with its expected points; and the five
// scores where the best aims gain most on the chart's route.
//
//   bench_aim_advice

#include "core/advice/checkout_policy.h"
#include "core/games/checkout_chart.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>

using namespace tavrix;

namespace {

double millisecondsOf(QElapsedTimer &timer)
{
    const double ms = timer.nsecsElapsed() / 1e6;
    timer.restart();
    return ms;
}

Spread circular(double sd)
{
    return {0, 0, sd * sd, 0, sd * sd};
}

QString areaCode(int column, int row)
{
    return dartCodesText({regionScore(regionAt(gridPointToBoard(column, row)))});
}

struct Gain {
    int left = 0;
    int darts = 0;
    double chance = 0;
    double chart = 0;
};

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    CheckoutChart chart;
    chart.load(bundledChartRows());
    std::array<DartScore, maxCheckout + 1> chartFirst{};
    for (int r = 2; r <= maxCheckout; ++r)
        chartFirst[r] = chart.checkoutDarts(r, true).first();

    QElapsedTimer timer;
    timer.start();
    {
        // The board is sampled once per program, on the first map.
        ScoreMaps maps;
        maps.expectedScore({});
    }
    std::printf("board sampled into 1 mm cells: %.0f ms (once per program)\n\n", millisecondsOf(timer));

    for (const double sd : {5.0, 15.0, 30.0}) {
        std::printf("circular spread, standard deviation %.0f mm\n", sd);
        ScoreMaps maps;
        const Spread spread = circular(sd);
        timer.restart();
        maps.expectedScore(spread);
        const double firstMap = millisecondsOf(timer);
        const AimMap expected = maps.expectedScore(spread);
        const double map = millisecondsOf(timer);
        std::printf("  expected-score map: %.1f ms (first at this transform size, with its plans: %.1f ms)\n",
                    map, firstMap);
        maps.regionChances(spread);
        const double firstRegions = millisecondsOf(timer);
        maps.regionChances(spread);
        std::printf("  62 region maps: %.0f ms (first at this transform size, with the board's transforms: %.0f ms)\n",
                    millisecondsOf(timer), firstRegions);

        // A cold start, each class its own spread and so, mostly, its own
        // transform size.
        const std::array<double, aimClassCount> classScale{1.0, 1.15, 0.9, 1.3};
        ScoreMaps cold;
        timer.restart();
        std::array<std::vector<AimMap>, aimClassCount> byClass;
        for (int c = 0; c < aimClassCount; ++c)
            byClass[c] = cold.regionChances(circular(sd * classScale[c]));
        const double classMaps = millisecondsOf(timer);
        const std::vector<AimMap> chances = chancesByAimClass(byClass);
        const double joining = millisecondsOf(timer);
        const CheckoutTable table(chances, chartFirst);
        const double dynamic = millisecondsOf(timer);
        std::printf("  checkout table from cold (treble x1, double x1.15, bull x0.9, single x1.3): %.0f ms "
                    "= region maps %.0f + joining %.0f + table %.0f\n",
                    classMaps + joining + dynamic, classMaps, joining, dynamic);

        const BestAim best = bestAim(expected);
        const BoardPoint at = gridPointToBoard(best.column, best.row);
        std::printf("  best aim: grid (%d, %d), %s, board (%.1f, %.1f) units: %.2f points per dart\n",
                    best.column, best.row, qPrintable(areaCode(best.column, best.row)), at.x, at.y,
                    best.value);

        std::vector<Gain> gains;
        for (int r = 2; r <= maxCheckout; ++r)
            for (int d = 1; d <= 3; ++d)
                if (canFinish(r, d))
                    gains.push_back({r, d, table.chance(r, d), table.chartChance(r, d)});
        std::partial_sort(gains.begin(), gains.begin() + 5, gains.end(), [](const Gain &a, const Gain &b) {
            return a.chance - a.chart > b.chance - b.chart;
        });
        std::printf("  largest gains over the chart's route (same spread per class as above):\n");
        std::printf("  %5s %5s %8s %8s  %-14s %s\n", "left", "darts", "best", "chart", "chart's route",
                    "best route");
        for (int i = 0; i < 5; ++i) {
            const Gain &g = gains[i];
            std::printf("  %5d %5d %8.4f %8.4f  %-14s %s\n", g.left, g.darts, g.chance, g.chart,
                        qPrintable(dartCodesText(chart.route(g.left, true), QStringLiteral(" "))),
                        qPrintable(table.route(g.left, g.darts)));
        }
        std::printf("\n");
    }

    // The spread fit at 1,000,000 darts, against one full read of a player's
    // darts from the store, is timed here.

    return 0;
}
