#pragma once

// The figures of the player's matches of legs in a period, from the ended
// `matches` rows (core/stats/statistics_rows.h).

#include "core/stats/statistics_rows.h"

#include <optional>
#include <vector>

namespace tavrix {

// A match is played when it ended with a winner, abandoned when it was given
// up; in the period by its end. The averages are over the 301/501 matches
// played: the points of a Cricket leg are marks, which make no three-dart
// average.
struct MatchStatistics {
    bool anyEver = false; // any match played or abandoned, in any period
    int won = 0;
    int lost = 0;
    int abandoned = 0;
    qint64 playerPoints = 0;
    qint64 playerDarts = 0;
    qint64 opponentPoints = 0;
    qint64 opponentDarts = 0;

    int played() const { return won + lost; }
};

MatchStatistics matchStatistics(const std::vector<StatsMatch> &matches, std::optional<qint64> since);

} // namespace tavrix
