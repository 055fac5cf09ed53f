#include "core/training/one_twenty_one.h"

#include <algorithm>

namespace tavrix {

QString OneTwentyOne::progressText() const
{
    if (over())
        return QStringLiteral("Over · best %1").arg(best_);
    return QStringLiteral("Target %1 · attempt %2 of %3 · %4")
        .arg(attemptTarget())
        .arg(attempt_)
        .arg(attempts)
        .arg(dartsLeftText(dartsLeftInAttempt()));
}

void OneTwentyOne::attemptEnded(bool finished, int)
{
    if (finished)
        best_ = std::max(best_, attemptTarget());
    if (attempt_ == attempts) {
        endDrill();
        return;
    }
    ++attempt_;
    startAttempt(finished ? attemptTarget() + 1 : start);
}

} // namespace tavrix
