#pragma once

// The rows the statistics store reads and writes, as plain values: what the
// rules hand to the store and get back from it, whatever keeps them.

#include "core/stats/game_codes.h"

#include <QString>
#include <QtGlobal>

#include <array>
#include <vector>

namespace tavrix {

// One dart of the local player in a game (the cork has set 0, dart 1).
struct GameDart {
    qint64 gameId = 0;
    qint64 playerId = 0;
    int setSeq = 0;
    int dartSeq = 0;
    double x = 0;
    double y = 0;
    double dist = 0;
    int score = 0;
    int ring = 0;
    int targetScore = 0;
    int targetRing = 0;
};

// One practice dart, scored with the practice score pair.
struct PracticeDart {
    qint64 playerId = 0;
    qint64 targetId = 0;
    int seq = 0;
    double x = 0;
    double y = 0;
    double dist = 0;
    int score = 0;
    int ring = 0;
};

// How a game ended, for its row in `games`.
struct GameResult {
    QString result; // "W" or "L"
    int throws = 0;
    int points = 0;
    int bestSet = 0;
    int outSet = 0;
};

struct NewGame {
    qint64 playerId = 0;
    GameType gameType = GameType::None;
    SkillLevel skill = SkillLevel::None;
    QString opponent;
};

struct PlayerRow {
    qint64 id = 0;
    QString name;
    friend bool operator==(const PlayerRow &, const PlayerRow &) = default;
};

// Figures of the player's recorded distances (games and practice together,
// each distinct distance once), from which the "You" profile is cut. Empty
// quarters read as 0.
struct DistanceQuarters {
    qint64 sampleCount = 0;
    double average = 0;
    double tightestMax = 0;              // upper bound of the closest quarter
    double secondMin = 0, secondMax = 0; // the next quarter outwards
    double thirdMin = 0, thirdMax = 0;
    double widestMin = 0, widestMax = 0; // the farthest quarter
    qint64 wildCount = 0;                // distances beyond three times the average
};

// Every distance the player has recorded, in games and in practice, as read:
// unsorted and with repeats; whether an empty one was among them.
struct PlayerDistances {
    std::vector<double> values;
    bool hasNull = false;
};

// Darts aimed at each scoring area: [ring - 1][target], target 0 the bull,
// target i = 1..20 the number 21 - i.
using TargetCounts = std::array<std::array<qint64, 21>, 3>;

// The player's record in the games of one type at one skill level.
struct GameRecordFigures {
    static constexpr int noBestLeg = 99;

    int wins = 0;
    int losses = 0;
    int bestLeg = noBestLeg; // fewest darts in a won game
    int bestOut = 0;         // highest finishing set
    friend bool operator==(const GameRecordFigures &, const GameRecordFigures &) = default;
};

// A recorded dart as review plots it.
struct AreaDart {
    double x = 0;
    double y = 0;
    int score = 0;
    int ring = 0;
    friend bool operator==(const AreaDart &, const AreaDart &) = default;
};

// The darts aimed at one scoring area: in practice sets and in games.
struct AreaDarts {
    std::vector<AreaDart> practice;
    std::vector<AreaDart> game;
};

// A dart's x or y as the store keeps it: a single-precision value, so what a
// reader gets back is what a single-precision column holds.
double storedCoordinate(double value);

} // namespace tavrix
