#include "core/training/bobs_27.h"

namespace tavrix {

DrillTarget Bobs27::target() const
{
    return round() == 21 ? areaTarget(25, 2) : areaTarget(round(), 2);
}

DrillDartOutcome Bobs27::scoreDart(const DartScore &dart)
{
    const DrillTarget now = target();
    if (!hitsArea(dart, now.number, now.multiplier))
        return {};
    return {DrillEvent::Hit, value(), false};
}

Bobs27::RoundEnd Bobs27::closeRound()
{
    if (roundHit())
        return {};
    return {true, -value()};
}

} // namespace tavrix
