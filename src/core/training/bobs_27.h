#pragma once

// Bob's 27: from 27, a round of three darts at each double D1 to D20 and
// then the bull (only 50); each hit adds the double's value, a round
// without one takes it off. Over when the total falls to 0 or below.

#include "core/training/round_drill.h"

namespace tavrix {

class Bobs27 : public RoundDrill {
public:
    Bobs27() : RoundDrill(21, 27) {}

    DrillKind kind() const override { return DrillKind::Bobs27; }
    DrillTarget target() const override;
    // Shown as 0 once below it.
    int score() const override { return total() > 0 ? total() : 0; }
    bool completed() const override { return over() && total() > 0; }

protected:
    DrillDartOutcome scoreDart(const DartScore &dart) override;
    RoundEnd closeRound() override;
    bool endsEarly() const override { return total() <= 0; }

private:
    int value() const { return round() == 21 ? 50 : 2 * round(); }
};

} // namespace tavrix
