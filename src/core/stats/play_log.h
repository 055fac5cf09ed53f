#pragma once

#include "core/stats/game_log.h"
#include "core/stats/match_log.h"

namespace tavrix {

// What play writes: the games, and the matches whose legs those games are.
class PlayLog : public GameLog, public MatchLog {
protected:
    ~PlayLog() = default;
};

} // namespace tavrix
