// The statistics window's work at 1,000,000 darts (or as many as the
// argument says): the read of the player's rows and the counting of the
// figures and charts, as a ratio to one full read of the player's
// distances, best of three each, in turns. The filled games are finished
// as lost with no points, so every game's darts are replayed under both
// readings of double in before one matches: the most work a game can take.
// Then the time to fill the charts with 10,000 games and to draw them once.
//
//   bench_statistics [darts]

#include "core/statistics/player_statistics.h"
#include "bench_support.h"
#include "ui/statistics/statistics_charts.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

using namespace tavrix;
using bench::millisecondsOf;

namespace {

// Every filled game finished: lost, its darts as its throws, no points.
bool finishGames(const QString &path)
{
    StatsStore store(QStringLiteral("finish"));
    if (!store.open(path))
        return bench::failed(store);
    QList<std::pair<qint64, int>> games;
    QSqlQuery query(store.connection());
    if (!query.exec(QStringLiteral("SELECT games_id, count(*) FROM gamesdarts WHERE setseq > 0 GROUP BY games_id")))
        return false;
    while (query.next())
        games.append({query.value(0).toLongLong(), query.value(1).toInt()});
    query.finish();
    StatsStore::Batch batch(store);
    for (const auto &[id, darts] : games) {
        if (!store.finishGame(id, {QStringLiteral("L"), darts, 0, 0, 0}))
            return bench::failed(store);
    }
    return batch.commit() || bench::failed(store);
}

// 10,000 games over three years, a practice week for each of them.
PlayerStatistics chartedGames()
{
    PlayerStatistics statistics;
    const qint64 start = *localSeconds("2023-01-02 18:00:00");
    double window = 0;
    for (int i = 0; i < 10000; ++i) {
        const double average = 40 + (i * 7919 % 600) / 10.0;
        window += average - (i >= 10 ? statistics.averages[std::size_t(i - 10)].average : 0);
        statistics.averages.push_back({start + qint64(i) * 9000, average, window / std::min(i + 1, 10)});
    }
    for (int i = 0; i < doubleTargets; ++i)
        statistics.doubles[std::size_t(i)] = {100 + i, 10 + i};
    for (int week = 0; week < 156; ++week)
        statistics.practiceWeeks.push_back({start + qint64(week) * 7 * 86400, 300, 60 + week % 50});
    return statistics;
}

} // namespace

int main(int argc, char *argv[])
{
    bench::offscreenWithoutDisplay();
    QApplication app(argc, argv);
    QTemporaryDir dir;
    const std::optional<bench::BenchFile> file =
        bench::freshBenchFile(dir, argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 1000000, 20261126);
    if (!file || !finishGames(file->path))
        return 1;
    const QString path = file->path;
    const qint64 player = file->player;

    QElapsedTimer timer;
    timer.start();
    double scanMs = -1;
    double readMs = -1;
    double countMs = -1;
    PlayerStatistics statistics;
    for (int run = 0; run < 3; ++run) {
        const double scanned = bench::fullReadMs(path, player);
        StatsStore scan(QStringLiteral("statistics"));
        if (scanned < 0 || !scan.open(path))
            return 1;
        timer.restart();
        std::optional<StatisticsRows> rows = scan.statisticsRows(player);
        if (!rows)
            return bench::failed(scan) ? 0 : 1;
        const double read = millisecondsOf(timer);
        statistics = playerStatistics(std::move(*rows), std::nullopt);
        const double counted = millisecondsOf(timer);
        scanMs = run == 0 ? scanned : std::min(scanMs, scanned);
        if (run == 0 || read + counted < readMs + countMs) {
            readMs = read;
            countMs = counted;
        }
    }
    const StatisticsTexts texts = statisticsTexts(statistics);
    std::printf("full read of the player's distances    %9.1f ms\n", scanMs);
    std::printf("statistics: read %.1f ms + count %.1f ms = %9.1f ms  %5.2f x the full read\n", readMs, countMs,
                readMs + countMs, (readMs + countMs) / scanMs);
    std::printf("  %s games, average %s, first 9 %s, checkout %s, D20 aimed %lld\n", qPrintable(texts.games),
                qPrintable(texts.average), qPrintable(texts.firstNine), qPrintable(texts.checkout),
                statistics.doubles[19].aimed);

    StatisticsCharts charts;
    charts.resize(800, 560);
    charts.show();
    QCoreApplication::processEvents();
    const PlayerStatistics games = chartedGames();
    double fillMs = -1;
    double drawMs = -1;
    for (int run = 0; run < 3; ++run) {
        timer.restart();
        charts.showStatistics(games);
        const double fill = millisecondsOf(timer);
        // The averages' tab drawn once, with its 10,000 points.
        charts.currentWidget()->grab();
        const double draw = millisecondsOf(timer);
        fillMs = run == 0 ? fill : std::min(fillMs, fill);
        drawMs = run == 0 ? draw : std::min(drawMs, draw);
    }
    std::printf("charts with 10,000 games: fill %.1f ms, first tab drawn %.1f ms\n", fillMs, drawMs);
    return 0;
}
