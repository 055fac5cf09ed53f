#include "core/training/shanghai.h"

namespace tavrix {

DrillDartOutcome ShanghaiDrill::scoreDart(const DartScore &dart)
{
    const ShanghaiRound::Step step = marks_.apply(dart);
    if (step.shanghai)
        ++shanghais_;
    return shanghaiOutcome(step);
}

} // namespace tavrix
