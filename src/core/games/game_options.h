#pragma once

// The options of a game, as chosen at "Start Game" (or sent by the other copy
// of the program in a game over the network).

#include "core/stats/game_codes.h"

#include <QString>

#include <array>

namespace tavrix {

// Which end of a network connection this copy is, in a game over the network.
enum class NetRole { None, Server, Client };

struct GameOptions {
    GameType type = GameType::X01_501;
    OpponentKind opponent = OpponentKind::Computer;
    SkillLevel skill = SkillLevel::BPlayer;
    bool doubleIn = false;
    bool doubleOut = true;
    bool simpleCricket = false;
    // The local player's darts are recorded with their targets.
    bool keepStats = false;
    // Player 1 and player 2 as the score boards name them.
    std::array<QString, 2> names;
    // Played against another copy of the program: player 1 is its player.
    NetRole netRole = NetRole::None;
};

} // namespace tavrix
