#include "core/training/catch_40.h"

namespace tavrix {

int catch40Points(int target, int darts)
{
    if (darts < 1 || darts > 6)
        return 0;
    if (darts <= 2 || (darts == 3 && target == 99))
        return 3;
    return darts == 3 ? 2 : 1;
}

QString Catch40::progressText() const
{
    if (over())
        return QStringLiteral("Over · %1 points").arg(points_);
    return QStringLiteral("Target %1 · %2").arg(attemptTarget()).arg(dartsLeftText(dartsLeftInAttempt()));
}

void Catch40::attemptEnded(bool finished, int darts)
{
    if (finished)
        points_ += catch40Points(attemptTarget(), darts);
    if (attemptTarget() == last)
        endDrill();
    else
        startAttempt(attemptTarget() + 1);
}

} // namespace tavrix
