#pragma once

// Halve-It: from 0, rounds at 20, 19, any double, 18, any treble, 17, 16,
// 15 and the bull area, three darts each; hits add their points, a round
// without one halves the total (rounded down).

#include "core/training/round_drill.h"

namespace tavrix {

class HalveIt : public RoundDrill {
public:
    HalveIt() : RoundDrill(9, 0) {}

    DrillKind kind() const override { return DrillKind::HalveIt; }
    DrillTarget target() const override;

protected:
    DrillDartOutcome scoreDart(const DartScore &dart) override;
    RoundEnd closeRound() override;
};

} // namespace tavrix
