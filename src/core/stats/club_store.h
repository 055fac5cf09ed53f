#pragma once

// The club page's reads and the player's choice to stay off it. Only a
// club's server keeps them: on a file every call fails with lastError().

#include "core/stats/stats_access.h"
#include "core/stats/statistics_rows.h"

#include <QString>

#include <optional>
#include <vector>

namespace tavrix {

// One listed player's rows: the games, their kept darts and the ended
// drills, as the statistics window reads them for the player alone.
struct ClubPlayerRows {
    qint64 playerId = 0;
    QString name;
    StatisticsRows rows;
};

// What a copy of a player's statistics into the club's database wrote.
struct CopiedRows {
    qint64 games = 0;
    qint64 gameDarts = 0;
    qint64 targets = 0;
    qint64 practiceDarts = 0;
    qint64 drills = 0;
    qint64 drillDarts = 0;
    qint64 matches = 0;
    // Games, targets, drills and matches left out as copied before.
    qint64 copiedBefore = 0;
    bool any() const { return games + targets + drills + matches > 0; }
};

class ClubStore : public virtual StatsAccess {
public:
    // Every player not hidden from the club page, with their rows.
    virtual std::optional<std::vector<ClubPlayerRows>> clubRows() = 0;
    virtual std::optional<bool> isHiddenFromClub(qint64 playerId) = 0;
    virtual bool setHiddenFromClub(qint64 playerId, bool hidden) = 0;

protected:
    ~ClubStore() = default;
};

} // namespace tavrix
