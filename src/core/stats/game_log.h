#pragma once

#include "core/stats/records.h"
#include "core/stats/stats_access.h"

#include <optional>

namespace tavrix {

// What a game writes: its row, the local player's darts, and how it ended.
// Each gives nothing, or false, when the store refuses (lastError() says why).
class GameLog : public virtual StatsAccess {
public:
    // A new game's row, unfinished; its id.
    virtual std::optional<qint64> insertGame(const NewGame &game) = 0;
    virtual bool insertGameDart(const GameDart &dart) = 0;
    virtual bool finishGame(qint64 gameId, const GameResult &result) = 0;
    // Writes the game's row with this id, and its player's row, where they
    // are missing: a file made anew must hold what kept darts refer to.
    virtual bool restoreGame(qint64 gameId, const NewGame &game, const QString &playerName) = 0;

protected:
    ~GameLog() = default;
};

} // namespace tavrix
