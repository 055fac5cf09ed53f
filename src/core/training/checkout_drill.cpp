#include "core/training/checkout_drill.h"

namespace tavrix {

DrillDartOutcome CheckoutDrill::applyDart(const DartScore &dart)
{
    if (over_ || !set_.accepts())
        return {};
    set_.count();
    const CheckoutCount::Step step = count_.apply(dart);
    DrillDartOutcome outcome{step.event, step.points, false};
    const bool finished = step.event == DrillEvent::Finished;
    if (finished || step.event == DrillEvent::Bust)
        set_.close();
    if (finished || (setsDone_ == sets_ - 1 && !set_.accepts())) {
        if (step.event != DrillEvent::Bust && !finished)
            outcome.event = DrillEvent::RoundFailed;
        const int darts = setsDone_ * 3 + set_.thrown();
        set_.close();
        attemptEndedInSet_ = true;
        attemptEnded(finished, darts);
        if (over_)
            outcome.event = DrillEvent::Over;
    }
    outcome.setEnds = !set_.accepts();
    return outcome;
}

void CheckoutDrill::endSet()
{
    if (over_)
        return;
    if (!attemptEndedInSet_) {
        ++setsDone_;
        if (setsDone_ == sets_)
            attemptEnded(false, sets_ * 3);
        else
            count_.startSet();
    }
    attemptEndedInSet_ = false;
    set_.reset();
}

void CheckoutDrill::startAttempt(int target)
{
    target_ = target;
    setsDone_ = 0;
    count_ = CheckoutCount(target);
}

int CheckoutDrill::dartsLeftInAttempt() const
{
    if (over_)
        return 0;
    if (attemptEndedInSet_)
        return sets_ * 3;
    return set_.left() + (sets_ - setsDone_ - 1) * 3;
}

} // namespace tavrix
