#pragma once

// Around the Clock: 1 to 20 in order, then the bull area, each hit in the
// variant's ring (any, double or treble; the bull area takes 25 or 50 in
// every variant). The score is the darts thrown, fewer is better.

#include "core/training/drill_parts.h"

namespace tavrix {

class AroundTheClock : public Drill {
public:
    // `multiplier`: 0 any ring, 2 doubles, 3 trebles.
    AroundTheClock(DrillKind kind, int multiplier) : kind_(kind), multiplier_(multiplier) {}

    DrillKind kind() const override { return kind_; }
    int round() const override { return set_; }
    int rounds() const override { return 0; }
    DrillTarget target() const override;
    int dartsLeftInSet() const override { return over_ ? 0 : darts_.left(); }
    // "Target 7 · 12 darts used".
    QString progressText() const override;
    DrillDartOutcome applyDart(const DartScore &dart) override;
    void endSet() override;
    bool over() const override { return over_; }
    // Darts actually thrown: those a confirmed set gave up do not count.
    int score() const override { return dartsUsed_; }
    bool completed() const override { return over_; }

private:
    static constexpr int bullStep = 21;

    DrillKind kind_;
    int multiplier_;
    int step_ = 1; // 1 to 20, then bullStep
    int set_ = 1;
    int dartsUsed_ = 0;
    bool over_ = false;
    SetDarts darts_;
};

} // namespace tavrix
