#pragma once

// The computer playing a 501 leg (double out) against itself through the
// rules alone: the same aim, throw model, turn and set scoring the game uses,
// without widgets or timers.

#include "core/games/advisor.h"
#include "core/opponent/skill_profile.h"

#include <QRandomGenerator>

#include <limits>

namespace tavrix {

struct SelfPlayLeg {
    bool finished = false;
    int winnerDarts = 0; // darts of the side that checked out
    int thrown = 0;      // darts of both sides
    int scored = 0;      // points that stayed on the board (busts score 0)
};

// Plays one leg, `first` (0 or 1) throwing first, aiming where `advisor`
// says. A leg in which either side has thrown `dartLimit` darts without
// finishing stops unfinished.
SelfPlayLeg playSelfPlayLeg(const SkillProfile &profile, const Advisor &advisor,
                            QRandomGenerator &random, int first,
                            int dartLimit = std::numeric_limits<int>::max());

} // namespace tavrix
