#pragma once

// What a training drill writes, and what is read back of the drills: one
// row per drill, finished or quit, and the darts of each confirmed set.
// Each write gives nothing, or false, when the store refuses (lastError()
// says why); the caller keeps the set on the board to be confirmed again.

#include "core/stats/stats_access.h"

#include <QList>
#include <QtGlobal>

#include <optional>
#include <vector>

namespace tavrix {

// A drill as it starts. `kind` is the drill's code (DrillKind in
// core/training); `targetNumber` the chosen target of the drills that have
// one (99 darts: 1 to 20, 25 for the bull area), else 0.
struct NewDrill {
    qint64 playerId = 0;
    int kind = 0;
    int targetNumber = 0;
};

// One dart of a drill. setSeq counts the drill's confirmed sets from 1,
// dartSeq 0 to 2 within the set. The aimed area in the games' convention
// (number, multiplier; the bull area as 25 with multiplier 1, the bull as
// 25 with 2), 0 and 0 when the round named no single area (any double, a
// checkout above a finish); aimX, aimY the point aimed at; dist the
// distance from it. score is the number hit, ring its multiplier (0 on a
// wire or off the board), as for game darts.
struct DrillDart {
    qint64 drillId = 0;
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
    double aimX = 0;
    double aimY = 0;
};

// How a drill ended: its score, whether it ran to its end (Bob's 27 below
// zero did not), or whether the player quit it.
struct DrillEnd {
    int score = 0;
    bool completed = false;
    bool quit = false;
};

// A drill of the player's that has ended, as the history reads it. Times
// are local seconds since 1970 (localSeconds in statistics_rows.h).
struct DrillRow {
    qint64 id = 0;
    int kind = 0;
    int targetNumber = 0;
    std::optional<qint64> startedAt;
    std::optional<qint64> endedAt;
    int score = 0;
    bool completed = false;
    bool quit = false;
};

class DrillLog : public virtual StatsAccess {
public:
    // A new drill's row, not ended; its id, the one its darts carry.
    virtual std::optional<qint64> insertDrill(const NewDrill &drill) = 0;
    // A confirmed set's darts, all in one transaction or none.
    virtual bool insertDrillSet(const QList<DrillDart> &darts) = 0;
    virtual bool finishDrill(qint64 drillId, const DrillEnd &end) = 0;
    // The player's ended drills (finished or quit), oldest first.
    virtual std::optional<std::vector<DrillRow>> drillRows(qint64 playerId) = 0;
    // The best score of the player's completed drills of this kind and
    // target (the lowest where lower is better); none before the first.
    virtual std::optional<std::optional<int>> bestDrillScore(qint64 playerId, int kind, int targetNumber,
                                                             bool lowerIsBetter) = 0;

protected:
    ~DrillLog() = default;
};

} // namespace tavrix
