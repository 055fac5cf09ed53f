#pragma once

#include "core/stats/records.h"
#include "core/stats/stats_access.h"

#include <QList>

#include <optional>

namespace tavrix {

// The players and what belongs to each. Reads give nothing, writes false,
// when the store fails (lastError() says why).
class PlayerStore : public virtual StatsAccess {
public:
    // Players, in the order the store keeps them. Names are compared exactly
    // as stored: case, blanks and quotes all count.
    virtual std::optional<int> playerCount() = 0;
    virtual std::optional<QList<PlayerRow>> players() = 0;
    virtual std::optional<qint64> playerIdByName(const QString &name) = 0;
    virtual std::optional<QString> playerName(qint64 playerId) = 0;
    virtual std::optional<qint64> insertPlayer(const QString &name) = 0;
    virtual bool renamePlayer(qint64 playerId, const QString &name) = 0;
    // Removes the player with its practice targets and throws; its games and
    // game darts stay.
    virtual bool deletePlayer(qint64 playerId) = 0;
    // Removes every practice set, practice dart, game dart and game of the
    // player; the player stays.
    virtual bool resetPlayerStats(qint64 playerId) = 0;

protected:
    ~PlayerStore() = default;
};

} // namespace tavrix
