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
