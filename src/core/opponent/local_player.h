#pragma once

// The person at this board. Its darts are the clicks on the board picture,
// which the play controller hands to the game model, so it has nothing to
// throw by itself.

#include "core/games/thrower.h"

namespace tavrix {

class LocalPlayer : public Thrower {
public:
    bool marksAtThisBoard() const override { return true; }
    void throwCork(GameSession &, int) override {}
    void takeTurn(GameSession &, int) override {}
    void stop() override {}
};

} // namespace tavrix
