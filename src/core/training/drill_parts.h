#pragma once

// Pieces the drills share: the target of one area or of a checkout, the
// darts of the set being marked, a checkout's count with its busts, and the
// marks of a Shanghai round.

#include "core/training/drill.h"

namespace tavrix {

// One area as DrillTarget describes it: number 1 to 20 with multiplier 0
// (any ring) or 1 to 3, or 25 for the bull area with 1 (25 or 50) or 2
// (only 50).
DrillTarget areaTarget(int number, int multiplier);
bool hitsArea(const DartScore &dart, int number, int multiplier);
// A checkout of `remaining`, double out, aimed at the first dart of a plain
// way out.
DrillTarget checkoutTarget(int remaining);
// "1 dart left", "2 darts left".
QString dartsLeftText(int darts);

// The darts of the set being marked: three at most, fewer when something
// (a bust, a finish, the end of the drill) closes the set early.
class SetDarts {
public:
    bool accepts() const { return !closed_ && thrown_ < 3; }
    int thrown() const { return thrown_; }
    int left() const { return closed_ ? 0 : 3 - thrown_; }
    void count() { ++thrown_; }
    void close() { closed_ = true; }
    void reset() { *this = {}; }

private:
    int thrown_ = 0;
    bool closed_ = false;
};

// The count of a checkout, double out, with busts as in 501: below 0, 1
// left, or 0 without a double (the bull counts as one) puts the count back
// to where the set started.
class CheckoutCount {
public:
    explicit CheckoutCount(int target) : remaining_(target), setStart_(target) {}
    struct Step {
        DrillEvent event = DrillEvent::None; // Hit, Bust, Finished or None (no points)
        int points = 0;                      // what came off the count
    };
    Step apply(const DartScore &dart);
    void startSet() { setStart_ = remaining_; }
    int remaining() const { return remaining_; }

private:
    int remaining_;
    int setStart_;
};

// One Shanghai round at `number`: single, double or treble score, anything
// else nothing; the dart that completes single, double and treble is the
// Shanghai (once a round).
class ShanghaiRound {
public:
    explicit ShanghaiRound(int number = 0) : number_(number) {}
    struct Step {
        int points = 0;
        bool shanghai = false;
    };
    Step apply(const DartScore &dart);
    int number() const { return number_; }

private:
    int number_;
    bool rings_[3] = {false, false, false};
};
// One dart of a Shanghai round as a drill's outcome, with `bonus` added to
// a Shanghai: Shanghai, Hit or None.
DrillDartOutcome shanghaiOutcome(const ShanghaiRound::Step &step, int bonus = 0);

} // namespace tavrix
