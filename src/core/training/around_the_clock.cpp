#include "core/training/around_the_clock.h"

namespace tavrix {

DrillTarget AroundTheClock::target() const
{
    return step_ == bullStep ? areaTarget(25, 1) : areaTarget(step_, multiplier_);
}

QString AroundTheClock::progressText() const
{
    const QString used = dartsUsed_ == 1 ? QStringLiteral("1 dart used") : QStringLiteral("%1 darts used").arg(dartsUsed_);
    if (over_)
        return QStringLiteral("Done · ") + used;
    return QStringLiteral("Target %1 · %2").arg(target().text, used);
}

DrillDartOutcome AroundTheClock::applyDart(const DartScore &dart)
{
    if (over_ || !darts_.accepts())
        return {};
    darts_.count();
    ++dartsUsed_;
    DrillDartOutcome outcome;
    const DrillTarget now = target();
    if (hitsArea(dart, now.number, now.multiplier)) {
        outcome.event = DrillEvent::Hit;
        if (step_ == bullStep) {
            over_ = true;
            darts_.close();
            outcome.event = DrillEvent::Over;
        } else {
            ++step_;
        }
    }
    outcome.setEnds = !darts_.accepts();
    return outcome;
}

void AroundTheClock::endSet()
{
    if (over_)
        return;
    darts_.reset();
    ++set_;
}

} // namespace tavrix
