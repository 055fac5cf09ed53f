#pragma once

// A drill of checkout attempts (121, Catch 40): each attempt is a number of
// sets at one target, double out, busts as in 501. An attempt ends with its
// finish or its last dart; the next attempt starts with the next set.

#include "core/training/drill_parts.h"

namespace tavrix {

class CheckoutDrill : public Drill {
public:
    // Once over, the last target stands.
    DrillTarget target() const override { return checkoutTarget(over_ ? target_ : count_.remaining()); }
    int dartsLeftInSet() const override { return over_ ? 0 : set_.left(); }
    DrillDartOutcome applyDart(const DartScore &dart) final;
    void endSet() final;
    bool over() const override { return over_; }
    bool completed() const override { return over_; }

protected:
    CheckoutDrill(int firstTarget, int sets) : target_(firstTarget), sets_(sets), count_(firstTarget) {}

    // The attempt at attemptTarget() has ended, finished with `darts` darts
    // (counting those a bust or a short set gave up) or not finished; the
    // drill starts the next attempt or ends.
    virtual void attemptEnded(bool finished, int darts) = 0;
    void startAttempt(int target);
    void endDrill() { over_ = true; }
    int attemptTarget() const { return target_; }
    int dartsLeftInAttempt() const;

private:
    int target_;
    int sets_;
    int setsDone_ = 0;
    bool over_ = false;
    // The attempt ended within the set being marked; the next one waits for
    // the set to be confirmed.
    bool attemptEndedInSet_ = false;
    SetDarts set_;
    CheckoutCount count_;
};

} // namespace tavrix
