// Fills a statistics database with recorded darts for one player, half game
// darts and half practice darts spread over many targets, written the way the
// program writes them (one transaction per confirmed set of three), and reports
// how long the writes and a later open take.
//
// Usage: bench_stats_store [darts] [database file]
// (default 1000000 darts in a temporary folder)

#include "core/games/checkout_chart.h"
#include "fill_darts.h"
#include "core/stats/stats_store.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

using namespace tavrix;

namespace {

using namespace tavrix::bench;

void report(const char *what, int darts, double seconds, const std::vector<double> &setMicros)
{
    std::printf("%-16s %9d darts %8.2f s %10.0f darts/s   per set: median %.0f us, p99 %.0f us\n",
                what, darts, seconds, darts / seconds, percentile(setMicros, 0.5),
                percentile(setMicros, 0.99));
}

} // namespace

// The record beside the board is read at the start of every turn: time the
// read over a player with many finished games of every type and skill.
bool benchGameRecord(StatsStore &store, qint64 player, QRandomGenerator &random)
{
    constexpr int games = 100000;
    constexpr int reads = 2000;
    {
        StatsStore::Batch batch(store);
        for (int i = 0; i < games; ++i) {
            const auto id = store.insertGame({player, GameType(1 + i % 3), SkillLevel(1 + (i / 3) % 4), QStringLiteral("Computer")});
            if (!id
                || !store.finishGame(*id, {i % 2 ? QStringLiteral("W") : QStringLiteral("L"),
                                           15 + int(random.bounded(40)), 0, 0,
                                           int(random.bounded(171))}))
                return failed(store);
        }
        if (!batch.commit())
            return failed(store);
    }
    std::vector<double> micros;
    QElapsedTimer timer;
    for (int i = 0; i < reads; ++i) {
        timer.start();
        if (!store.gameRecord(player, GameType(1 + i % 3), SkillLevel(1 + (i / 3) % 4)))
            return failed(store);
        micros.push_back(timer.nsecsElapsed() / 1000.0);
    }
    std::sort(micros.begin(), micros.end());
    std::printf("game record       %d games: read median %.0f us, p99 %.0f us\n", games,
                micros[micros.size() / 2], micros[micros.size() * 99 / 100]);
    return true;
}

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const int darts = argc > 1 ? std::max(6, QString::fromLocal8Bit(argv[1]).toInt()) : 1000000;
    QTemporaryDir dir;
    const QString path = argc > 2 ? QString::fromLocal8Bit(argv[2])
                                  : dir.filePath(QStringLiteral("bench.db"));
    const int sets = darts / dartsPerSet;
    const int gameSets = sets / 2;
    const int practiceSets = sets - gameSets;
    QRandomGenerator random(20261122);

    QElapsedTimer timer;
    qint64 player = 0;
    {
        StatsStore store;
        timer.start();
        if (!store.open(path))
            return failed(store) ? 0 : 1;
        std::printf("create database   %8.1f ms  (%s)\n", timer.nsecsElapsed() / 1e6,
                    qPrintable(path));
        player = store.insertPlayer(QStringLiteral("Bench O'Mark")).value_or(0);

        std::vector<double> setMicros;
        setMicros.reserve(std::max(gameSets, practiceSets));
        timer.start();
        if (!writeGameDarts(store, player, gameSets, random, setMicros))
            return 1;
        report("game darts", gameSets * dartsPerSet, timer.nsecsElapsed() / 1e9, setMicros);

        setMicros.clear();
        timer.start();
        if (!writePracticeDarts(store, player, practiceSets, random, setMicros))
            return 1;
        report("practice darts", practiceSets * dartsPerSet, timer.nsecsElapsed() / 1e9,
               setMicros);

        // Every write, and every transaction, first checks that the file is
        // still the one opened: a stat and a read of the file's first bytes.
        constexpr int checks = 100000;
        timer.start();
        for (int i = 0; i < checks; ++i) {
            if (store.fileProblem())
                return failed(store) ? 0 : 1;
        }
        std::printf("file check        %8.2f us before each write or transaction\n",
                    timer.nsecsElapsed() / 1e3 / checks);
    }
    std::printf("database file     %8.1f MB\n", QFileInfo(path).size() / 1e6);

    StatsStore store;
    timer.start();
    if (!store.open(path))
        return failed(store) ? 0 : 1;
    const double openMs = timer.nsecsElapsed() / 1e6;
    CheckoutChart chart;
    timer.start();
    if (!loadCheckoutChart(store, chart))
        return failed(store) ? 0 : 1;
    std::printf("open afterwards   %8.1f ms, checkout chart read in %.1f ms\n", openMs,
                timer.nsecsElapsed() / 1e6);
    return benchGameRecord(store, player, random) ? 0 : 1;
}
