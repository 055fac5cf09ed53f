#include "core/training/ninety_nine_darts.h"

namespace tavrix {

DrillDartOutcome NinetyNineDarts::scoreDart(const DartScore &dart)
{
    if (!hitsArea(dart, number_, number_ == 25 ? 1 : 0))
        return {};
    // The multiplier is the marks: the bull area's 25 is 1, its 50 is 2.
    return {DrillEvent::Hit, dart.multiplier, false};
}

} // namespace tavrix
