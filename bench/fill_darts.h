#pragma once

// Fills a statistics database with recorded darts for one player the way the
// program writes them: half game darts in sets of three, half practice darts
// spread over every target, one transaction per confirmed set.

#include "core/board/board_geometry.h"
#include "core/stats/stats_store.h"

#include <QElapsedTimer>
#include <QRandomGenerator>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>
#include <vector>

namespace tavrix::bench {

inline constexpr int dartsPerSet = 3;
inline constexpr int setsPerGame = 20;

struct Dart {
    double x;
    double y;
    double dist;
    DartScore score;
};

inline Dart throwAt(QRandomGenerator &random, const BoardPoint &aim)
{
    const double radius = 60.0 * std::sqrt(random.generateDouble());
    const double angle = random.bounded(360.0) * radPerDeg;
    const double x = aim.x + radius * std::cos(angle);
    const double y = aim.y + radius * std::sin(angle);
    return {x, y, radius, scoreFromXY(x, y)};
}

inline double percentile(std::vector<double> values, double p)
{
    if (values.empty())
        return 0;
    const auto index = static_cast<std::size_t>(p * double(values.size() - 1));
    std::nth_element(values.begin(), values.begin() + index, values.end());
    return values[index];
}

inline bool failed(const StatsStore &store)
{
    std::fprintf(stderr, "failed: %s\n", qPrintable(store.lastError()));
    return false;
}

inline bool writeGameDarts(StatsStore &store, qint64 player, int sets, QRandomGenerator &random,
                    std::vector<double> &setMicros)
{
    QElapsedTimer timer;
    qint64 game = 0;
    for (int set = 0; set < sets; ++set) {
        if (set % setsPerGame == 0) {
            const auto id = store.insertGame({player, GameType::X01_501, SkillLevel(1 + set % 4), QStringLiteral("Computer")});
            if (!id)
                return failed(store);
            game = *id;
        }
        const int number = set % 3 == 0 ? 19 : 20;
        const BoardPoint aim = aimPoint(3, number);
        timer.start();
        StatsStore::Batch batch(store);
        for (int seq = 0; seq < dartsPerSet; ++seq) {
            const Dart d = throwAt(random, aim);
            if (!store.insertGameDart({game, player, set % setsPerGame + 1, seq, d.x, d.y, d.dist,
                                       d.score.number, d.score.multiplier, number, 3}))
                return failed(store);
        }
        if (!batch.commit())
            return failed(store);
        setMicros.push_back(timer.nsecsElapsed() / 1000.0);
    }
    return true;
}

inline bool writePracticeDarts(StatsStore &store, qint64 player, int sets, QRandomGenerator &random,
                        std::vector<double> &setMicros)
{
    QElapsedTimer timer;
    for (int set = 0; set < sets; ++set) {
        // Every number and ring in turn, with the bull among them.
        const int value = set % 21 == 20 ? 25 : set % 21 + 1;
        const int ring = value == 25 ? 1 : 1 + (set / 21) % 3;
        const BoardPoint aim = aimPoint(ring, value);
        timer.start();
        // The target is written when the set opens, its darts when it is confirmed.
        const auto target = store.insertStatTarget(player, value, ring);
        if (!target)
            return failed(store);
        StatsStore::Batch batch(store);
        for (int seq = 0; seq < dartsPerSet; ++seq) {
            const Dart d = throwAt(random, aim);
            if (!store.insertStatThrow({player, *target, seq, d.x, d.y, d.dist, d.score.number,
                                        d.score.multiplier}))
                return failed(store);
        }
        if (!batch.commit())
            return failed(store);
        setMicros.push_back(timer.nsecsElapsed() / 1000.0);
    }
    return true;
}

// Both halves for `darts` darts in all; false (with the store's error
// printed) when a write fails.
inline bool fillDarts(StatsStore &store, qint64 player, int darts, QRandomGenerator &random)
{
    std::vector<double> setMicros;
    const int sets = darts / dartsPerSet;
    return writeGameDarts(store, player, sets / 2, random, setMicros)
           && writePracticeDarts(store, player, sets - sets / 2, random, setMicros);
}

// A new statistics file at `path` with one player and `darts` darts drawn
// from `seed`: the player's id, or nothing (with the error printed).
inline std::optional<qint64> fillNewFile(const QString &path, int darts, quint32 seed)
{
    StatsStore store(QStringLiteral("fill"));
    QRandomGenerator random(seed);
    std::printf("filling %s with %d darts...\n", qPrintable(path), darts);
    if (!store.open(path)) {
        failed(store);
        return std::nullopt;
    }
    const std::optional<qint64> player = store.insertPlayer(QStringLiteral("Bench O'Mark"));
    if (!player) {
        failed(store);
        return std::nullopt;
    }
    if (!fillDarts(store, *player, darts, random))
        return std::nullopt;
    return player;
}

} // namespace tavrix::bench
