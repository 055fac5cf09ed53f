#pragma once

#include "core/stats/records.h"
#include "core/stats/statistics_rows.h"
#include "core/stats/stats_access.h"

#include <functional>
#include <optional>

namespace tavrix {

// What has changed in the store: commits of other connections and rows
// changed through this one. Equal versions mean nothing was written between.
struct StoreVersion {
    qint64 otherConnections = 0;
    qint64 thisConnection = 0;
    friend bool operator==(const StoreVersion &, const StoreVersion &) = default;
};

// What the player's recorded darts and games add up to. Each gives nothing
// when the store cannot be read (lastError() says why).
class DartHistory : public virtual StatsAccess {
public:
    // The player's distances in quarters; the quarters are filled in only
    // when there are at least minSamples distinct distances.
    virtual std::optional<DistanceQuarters> distanceQuarters(qint64 playerId, qint64 minSamples) = 0;
    // Practice and game darts aimed at each scoring area (drill darts do
    // not count here).
    virtual std::optional<TargetCounts> targetCounts(qint64 playerId) = 0;
    // Review of one area: the player's practice darts aimed at the target
    // (value, ring), by practice set and then dart, and the game darts aimed
    // at the same number and multiplier, in the order they were recorded.
    virtual std::optional<AreaDarts> areaDarts(qint64 playerId, int targetValue, int targetRing) = 0;
    // Won and lost games of one type and skill level (the skill is stored
    // whatever the opponent, so it filters games against people too). Best
    // leg and best out are read for 301 and 501 only.
    virtual std::optional<GameRecordFigures> gameRecord(qint64 playerId, GameType gameType,
                                                        SkillLevel skill) = 0;
    // Every recorded dart of the player with the target it was thrown at:
    // the target's value and ring (a practice target, or a game or drill
    // dart's target score and ring) and where the dart landed, in board
    // units. Practice darts first, then game darts, then the drill darts
    // that name an area; one read of the player's darts.
    using AimedDartTaker = std::function<void(int targetValue, int targetRing, double x, double y)>;
    virtual bool readAimedDarts(qint64 playerId, const AimedDartTaker &take) = 0;
    // What the statistics window counts: the player's games, kept game
    // darts, practice sets and their darts (of the player's own sets,
    // whoever threw them), each in the order stored; the player's ended
    // drills, oldest end first, drill darts aimed at a double, and the
    // ended matches. One read of the player's darts.
    virtual std::optional<StatisticsRows> statisticsRows(qint64 playerId) = 0;
    // The store's version now; nothing when it cannot be read.
    virtual std::optional<StoreVersion> storeVersion() = 0;

protected:
    ~DartHistory() = default;
};

} // namespace tavrix
