#pragma once

#include "core/stats/dart_history.h"
#include "core/stats/game_log.h"

namespace tavrix {

// What a game in play needs of the store: it writes the game and reads the
// player's record and darts (for the record beside the board and the "You"
// profile).
class GameStore : public GameLog, public DartHistory {
protected:
    ~GameStore() = default;
};

} // namespace tavrix
