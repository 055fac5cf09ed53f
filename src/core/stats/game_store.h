#pragma once

#include "core/stats/dart_history.h"
#include "core/stats/play_log.h"

namespace tavrix {

// What a game in play needs of the store: it writes the game (and the match
// it is a leg of) and reads the player's record and darts (for the record
// beside the board and the "You" profile).
class GameStore : public PlayLog, public DartHistory {
protected:
    ~GameStore() = default;
};

} // namespace tavrix
