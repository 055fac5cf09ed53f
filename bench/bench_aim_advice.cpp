// The personal advice for circular spreads of 5, 15 and 30 mm: the time of
// one expected-score map, of the 62 region maps, and of a whole checkout
// table from a cold start (the region maps of four classes of aim, joined,
// and the table); the best aim with its expected points; and the five
// scores where the best aims gain most on the chart's route.
//
// Then the spread fit at 1,000,000 darts (or as many as the argument says),
// as a ratio to one full read of the player's darts in the same run.
//
//   bench_aim_advice [darts]

#include "core/advice/aim_advice.h"
#include "core/advice/checkout_policy.h"
#include "core/games/checkout_chart.h"
#include "bench_support.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

using namespace tavrix;
using bench::millisecondsOf;

namespace {

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

    // The spread fit at 1,000,000 darts (the read of every aimed dart and
    // the fit), against one full read of the player's distances, best of
    // three each, in turns.
    QTemporaryDir dir;
    const std::optional<bench::BenchFile> file =
        bench::freshBenchFile(dir, argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 1000000, 20261126);
    if (!file)
        return 1;
    const QString path = file->path;
    const qint64 player = file->player;
    double scanMs = -1;
    double fitMs = -1;
    SpreadFit fit;
    for (int run = 0; run < 3; ++run) {
        const double read = bench::fullReadMs(path, player);
        StatsStore scan(QStringLiteral("fit"));
        if (read < 0 || !scan.open(path))
            return 1;
        timer.restart();
        const std::optional<SpreadFit> fitted = readSpreadFit(scan, player);
        const double fitted_ms = millisecondsOf(timer);
        if (!fitted)
            return bench::failed(scan) ? 0 : 1;
        fit = *fitted;
        scanMs = run == 0 ? read : std::min(scanMs, read);
        fitMs = run == 0 ? fitted_ms : std::min(fitMs, fitted_ms);
    }
    std::printf("full read of the player's distances %9.1f ms\n", scanMs);
    std::printf("read and fit of the aimed darts     %9.1f ms  %5.2f x the full read\n", fitMs, fitMs / scanMs);
    std::printf("  %lld darts fitted, %lld wild; pooled bias (%.2f, %.2f) mm, sd (%.2f, %.2f) mm\n",
                fit.fitted, fit.wild, fit.pooled.biasX, fit.pooled.biasY, std::sqrt(fit.pooled.varX),
                std::sqrt(fit.pooled.varY));
    return 0;
}
