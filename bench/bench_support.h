#pragma once

// What the benchmarks share: timing, the full read of the player's darts
// that reads are measured against, and the file they measure.

#include "fill_darts.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <optional>

namespace tavrix::bench {

// Milliseconds since the timer last started, starting it again.
inline double millisecondsOf(QElapsedTimer &timer)
{
    const double ms = timer.nsecsElapsed() / 1e6;
    timer.restart();
    return ms;
}

// The best of a few runs, in milliseconds (the machine is shared and
// noisy); -1 when a run fails.
inline double bestOf(int runs, const std::function<bool()> &run)
{
    double best = -1;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        if (!run())
            return -1;
        const double ms = millisecondsOf(timer);
        best = best < 0 ? ms : std::min(best, ms);
    }
    return best;
}

// One full read of the player's darts (their distances) on a connection
// of its own: the unit every read of darts is measured in. Milliseconds,
// or -1 with the error printed.
inline double fullReadMs(const QString &path, qint64 player, qint64 *darts = nullptr)
{
    StatsStore store(QStringLiteral("full-read"));
    if (!store.open(path)) {
        failed(store);
        return -1;
    }
    QElapsedTimer timer;
    timer.start();
    const std::optional<PlayerDistances> distances = store.playerDistances(player);
    const double ms = millisecondsOf(timer);
    if (!distances) {
        failed(store);
        return -1;
    }
    if (darts)
        *darts = qint64(distances->values.size());
    return ms;
}

// The best of a few full reads.
inline double bestFullReadMs(int runs, const QString &path, qint64 player, qint64 *darts = nullptr)
{
    double best = -1;
    for (int i = 0; i < runs; ++i) {
        const double ms = fullReadMs(path, player, darts);
        if (ms < 0)
            return -1;
        best = best < 0 ? ms : std::min(best, ms);
    }
    return best;
}

struct BenchFile {
    QString path;
    qint64 player = 0;
};

// The file at `given` when one is there (it must hold exactly one player);
// otherwise a new one there, or at `fresh` when no file is given, with
// `darts` darts drawn from `seed`. Nothing (with the error printed) when
// neither works.
inline std::optional<BenchFile> openOrFill(const QString &given, const QString &fresh, int darts, quint32 seed)
{
    if (!given.isEmpty() && QFileInfo::exists(given)) {
        StatsStore store(QStringLiteral("look"));
        const auto players = store.open(given) ? store.players() : std::nullopt;
        if (!players || players->size() != 1) {
            std::fprintf(stderr, "%s must hold exactly one player\n", qPrintable(given));
            return std::nullopt;
        }
        return BenchFile{given, players->first().id};
    }
    const QString path = given.isEmpty() ? fresh : given;
    const std::optional<qint64> player = fillNewFile(path, darts, seed);
    if (!player)
        return std::nullopt;
    return BenchFile{path, *player};
}

// The file of a benchmark run as "bench [database file] [darts]" (a new
// file of 1,000,000 darts in `dir` when none is given).
inline std::optional<BenchFile> benchFile(int argc, char *argv[], const QTemporaryDir &dir, quint32 seed)
{
    return openOrFill(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString(), dir.filePath(QStringLiteral("bench.db")),
                      argc > 2 ? QString::fromLocal8Bit(argv[2]).toInt() : 1000000, seed);
}

// A new file of `darts` darts in `dir`, for a benchmark that changes it.
inline std::optional<BenchFile> freshBenchFile(const QTemporaryDir &dir, int darts, quint32 seed)
{
    return openOrFill(QString(), dir.filePath(QStringLiteral("bench.db")), darts, seed);
}

// Widgets drawn off screen where there is no display to draw on.
inline void offscreenWithoutDisplay()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

// "what   123.4 ms   1.23 x scan", against the full read.
inline void ratioLine(const char *what, double ms, double scanMs)
{
    std::printf("%-34s %9.1f ms  %6.2f x scan\n", what, ms, ms / scanMs);
}

} // namespace tavrix::bench
