#pragma once

// Where to aim the next dart: the one place a game asks, for the player at
// this board and for the computer alike. The chart's advisor answers from
// the checkout chart and the usual order of the Cricket numbers; another
// advisor may answer from the player's own darts.

#include "core/board/board_geometry.h"
#include "core/games/cricket_marks.h"

#include <QList>

#include <optional>

namespace tavrix {

using DartRoute = QList<DartScore>;

// A 301/501 player as the next dart finds him: the score left after the
// darts already thrown in the turn, and whether he has doubled in.
struct X01Standing {
    int remaining = 0;
    bool doubledIn = true;
    bool doubleOut = true;
};

// A Cricket player's marks with the darts already thrown in the turn, and
// the other player's.
struct CricketStanding {
    CricketRow mine{};
    CricketRow theirs{};
    bool simple = false;
};

class Advisor {
public:
    virtual ~Advisor() = default;

    // The darts that finish from `remaining` ("Best Out"); empty when none
    // is advised.
    virtual DartRoute bestOut(int remaining, bool doubleOut) const = 0;
    // The area to aim the next 301/501 dart at; multiplier 0 when no dart is
    // advised (nothing is left to throw for).
    virtual DartScore x01Target(const X01Standing &standing) const = 0;
    // The point to aim the next Cricket dart at; nothing when no dart is
    // advised.
    virtual std::optional<BoardPoint> cricketTarget(const CricketStanding &standing) const = 0;
};

} // namespace tavrix
