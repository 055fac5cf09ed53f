#pragma once

// The club page's figures: for each listed player, what the statistics
// window shows for that player alone over the same period (games, 3-dart
// average and checkout rate of 301/501, the best score of each drill),
// worked out by the same code (player_statistics.h).

#include "core/statistics/player_statistics.h"
#include "core/stats/club_store.h"

#include <QString>

#include <optional>
#include <vector>

namespace tavrix {

struct ClubLine {
    qint64 playerId = 0;
    QString name;
    int games = 0;
    // Nothing where nothing counts, as "N/A" in the window.
    std::optional<double> average;
    std::optional<double> checkoutRate; // percent
    StatisticsTexts texts;
    // Only the drills with a best score in the period.
    std::vector<DrillHistory> drills;
};

// A drill of the club page's columns: a kind, and for 99 darts its target.
struct ClubDrill {
    int kind = 0;
    int targetNumber = 0;
    friend auto operator<=>(const ClubDrill &, const ClubDrill &) = default;
};

std::vector<ClubLine> clubLines(std::vector<ClubPlayerRows> players, std::optional<qint64> since);
// The drills any line has a best score of, by kind and then target.
std::vector<ClubDrill> clubDrills(const std::vector<ClubLine> &lines);
// The line's best score of the drill, if it has one.
std::optional<int> clubBest(const ClubLine &line, const ClubDrill &drill);

} // namespace tavrix
