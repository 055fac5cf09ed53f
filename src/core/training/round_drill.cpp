#include "core/training/round_drill.h"

#include <algorithm>

namespace tavrix {

QString RoundDrill::progressText() const
{
    if (over_)
        return QStringLiteral("Over after %1 rounds").arg(round_);
    return QStringLiteral("Round %1 of %2 · %3").arg(round_).arg(rounds_).arg(dartsLeftText(set_.left()));
}

DrillDartOutcome RoundDrill::applyDart(const DartScore &dart)
{
    if (over_ || !set_.accepts())
        return {};
    DrillDartOutcome outcome = scoreDart(dart);
    set_.count();
    roundHit_ = roundHit_ || outcome.event != DrillEvent::None;
    total_ += outcome.points;
    if (!set_.accepts()) {
        outcome.setEnds = true;
        const RoundEnd end = finishRound();
        outcome.points += end.change;
        if (end.failed)
            outcome.event = DrillEvent::RoundFailed;
        if (over_)
            outcome.event = DrillEvent::Over;
    }
    return outcome;
}

void RoundDrill::endSet()
{
    if (over_)
        return;
    // The third dart has ended the round already; a shorter set gives up
    // the rest of its round.
    if (set_.accepts())
        finishRound();
    set_.reset();
}

RoundDrill::RoundEnd RoundDrill::finishRound()
{
    const RoundEnd end = closeRound();
    total_ += end.change;
    if (round_ == rounds_ || endsEarly())
        over_ = true;
    else {
        ++round_;
        roundHit_ = false;
        startRound();
    }
    return end;
}

} // namespace tavrix
