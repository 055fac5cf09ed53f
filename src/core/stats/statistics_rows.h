#pragma once

// What the statistics window reads of a player, as plain rows: the games with
// what their rows say, every kept game dart, the practice sets and their
// darts, the ended drills, the drill darts aimed at a double and the ended
// matches. Times are the stored texts turned into seconds (localSeconds).

#include "core/stats/drill_log.h"
#include "core/stats/game_codes.h"

#include <QtGlobal>

#include <optional>
#include <string_view>
#include <vector>

namespace tavrix {

// A stored date and time ("2026-11-22 21:05:09", the writer's local time) as
// seconds since 1970-01-01 00:00:00 on the same clock, with no time zone: two
// stored times compare and subtract as the texts say. A date alone is its
// midnight. Nothing for any other text.
std::optional<qint64> localSeconds(std::string_view text);
// The day (days since 1970-01-01) of a time in local seconds.
qint64 localDay(qint64 seconds);
// Whether a time is in the period that starts at `since` (none: all time);
// a row with no readable time counts in all time only.
inline bool inPeriod(const std::optional<qint64> &at, const std::optional<qint64> &since)
{
    return !since || (at && *at >= *since);
}

enum class GameEnd { Unfinished, Won, Lost };

// A `games` row. `throws` counts the local player's darts the rules dealt
// with (busts included, none after the finishing dart); `points` is the
// start score less what was left (all of it when won); `outSet` the points
// of the finishing set. An unfinished game keeps 0 in all three.
struct StatsGame {
    qint64 id = 0;
    std::optional<qint64> playedAt;
    GameType type = GameType::None;
    GameEnd end = GameEnd::Unfinished;
    int throws = 0;
    int points = 0;
    int outSet = 0;
};

// A kept game dart: score is the number hit, ring its multiplier (0 on a
// wire); the target as recorded (any bull as 25 in ring 1). Set 0 is the cork.
struct StatsGameDart {
    qint64 gameId = 0;
    int setSeq = 0;
    int dartSeq = 0;
    int score = 0;
    int ring = 0;
    int targetScore = 0;
    int targetRing = 0;
};

struct StatsPracticeSet {
    qint64 id = 0;
    std::optional<qint64> openedAt;
    int targetValue = 0;
    int targetRing = 0;
};

// A practice dart, stored with the practice score pair (practice_rules.h).
struct StatsPracticeDart {
    qint64 setId = 0;
    int score = 0;
    int ring = 0;
};

// A drill dart aimed at a double, the bull as 25 in ring 2 (the bull area,
// 25 in ring 1, is no double in a drill); thrownAt its own time.
struct StatsDrillDart {
    std::optional<qint64> thrownAt;
    int score = 0;
    int ring = 0;
    int targetScore = 0;
    int targetRing = 0;
};

enum class MatchResult { Won, Lost, Abandoned, Other };

// An ended `matches` row: its game type, when it ended and how, and the
// points and darts of the player and of the opponent over its legs.
struct StatsMatch {
    qint64 id = 0;
    GameType type = GameType::None;
    std::optional<qint64> endedAt;
    MatchResult result = MatchResult::Other;
    qint64 playerPoints = 0;
    qint64 playerDarts = 0;
    qint64 opponentPoints = 0;
    qint64 opponentDarts = 0;
};

struct StatisticsRows {
    std::vector<StatsGame> games;
    std::vector<StatsGameDart> gameDarts;
    std::vector<StatsPracticeSet> practiceSets;
    std::vector<StatsPracticeDart> practiceDarts;
    std::vector<DrillRow> drills; // ended, finished or quit
    std::vector<StatsDrillDart> drillDoubleDarts;
    std::vector<StatsMatch> matches; // ended, played or abandoned
};

} // namespace tavrix
