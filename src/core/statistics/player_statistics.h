#pragma once

// The figures and chart data of the statistics window, worked out from the
// rows the store keeps (core/stats/statistics_rows.h) for one period.
//
// What the rows can tell: a `games` row alone gives a game's result, its
// darts and its points (busts and darts before doubling in score nothing
// there), so the games, wins, average, best leg and highest out count every
// finished game. Set by set figures (First 9, checkouts, 100+/140+/180,
// Cricket marks) need the game's darts, which are kept only when "Keep
// Target Stats" was on; they count only the games whose kept darts add up
// to the game's row.

#include "core/statistics/match_statistics.h"
#include "core/stats/statistics_rows.h"

#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace tavrix {

enum class StatsPeriod { AllTime, Last365Days, Last30Days, Last7Days };

// The first second (inclusive) of the period that ends at `now`, both in
// local seconds; nothing for all time. Rows with no readable time count in
// all time only.
std::optional<qint64> periodStart(StatsPeriod period, qint64 now);

struct X01Statistics {
    int games = 0;
    int won = 0;
    // From the games' rows, every finished game.
    qint64 points = 0;
    qint64 darts = 0;
    std::optional<int> bestLeg;
    std::optional<int> highOut;
    // From the games with kept darts only.
    int gamesWithoutDarts = 0;
    qint64 firstNinePoints = 0;
    qint64 firstNineDarts = 0;
    int checkouts = 0;       // finishing darts thrown at a one-dart finish
    qint64 finishDarts = 0;  // darts thrown while one dart could finish
    int tons = 0;            // sets of 100 to 139
    int tons140 = 0;         // 140 to 179
    int tons180 = 0;
};

struct CricketStatistics {
    int games = 0;
    int gamesWithoutDarts = 0;
    qint64 marks = 0;
    qint64 darts = 0;
};

// One finished 301/501 game on the chart of averages.
struct GameAveragePoint {
    qint64 playedAt = 0;
    double average = 0;
    double movingAverage = 0; // of this game and up to nine before it
};

struct DoubleRate {
    qint64 aimed = 0;
    qint64 hit = 0;
};

// Index 0..19 the doubles 1 to 20, index 20 the bull (a hit is the inner bull).
inline constexpr int doubleTargets = 21;

struct WeekRate {
    qint64 weekStart = 0; // local seconds of the Monday's midnight
    qint64 darts = 0;
    qint64 hits = 0;
};

struct DrillScorePoint {
    qint64 endedAt = 0; // local seconds
    int score = 0;
};

// The player's drills of one kind (and, for 99 darts, one target) in the period.
struct DrillHistory {
    int kind = 0;          // DrillKind code
    int targetNumber = 0;  // 99 darts' target, else 0
    int count = 0;         // drills ended in the period, finished or quit
    std::optional<int> best;               // best completed score (the lowest where lower is better)
    std::optional<double> lastTenAverage;  // mean of the last 10 completed scores
    std::vector<DrillScorePoint> scores;   // completed drills, oldest first
};

struct PlayerStatistics {
    X01Statistics x01;
    CricketStatistics cricket;
    std::vector<GameAveragePoint> averages; // by time
    // Game, practice and drill darts aimed at each double.
    std::array<DoubleRate, doubleTargets> doubles{};
    std::vector<WeekRate> practiceWeeks;    // by week
    std::vector<DrillHistory> drills; // by kind, then target; only those with at least one drill in the period
    MatchStatistics matches;
};

// Whether a remainder can be finished with one dart: a double (2 to 40,
// even) or the bull.
bool oneDartFinish(int remaining);

// The statistics of the rows for the period starting at `since` (none: all
// time). The rows are taken over, to be put in order in place. A drill is in
// the period by its end, a drill dart by when it was thrown.
PlayerStatistics playerStatistics(StatisticsRows rows, std::optional<qint64> since);

// The window's texts of the figures: "N/A" where nothing counts; `note` the
// one line that says which games had no kept darts ("" when all had). The
// matches' "Won / lost" reads "2 / 1", their averages are the player's and
// the opponents' over the 301/501 matches played.
struct StatisticsTexts {
    QString games;
    QString won;
    QString average;
    QString firstNine;
    QString checkout;
    QString tons;
    QString tons140;
    QString tons180;
    QString bestLeg;
    QString highOut;
    QString marksPerRound;
    QString note;
    QString matchesPlayed;
    QString matchesWonLost;
    QString matchesAbandoned;
    QString matchAverage;
    QString matchOpponentAverage;
};
StatisticsTexts statisticsTexts(const PlayerStatistics &statistics);

} // namespace tavrix
