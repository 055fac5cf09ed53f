#pragma once

// Shanghai: round n at the number n, 1 to 20, three darts; single, double
// and treble of n score. A single, a double and a treble in one round is a
// Shanghai, counted; the drill goes on.

#include "core/training/round_drill.h"

namespace tavrix {

class ShanghaiDrill : public RoundDrill {
public:
    ShanghaiDrill() : RoundDrill(20, 0), marks_(1) {}

    DrillKind kind() const override { return DrillKind::Shanghai; }
    DrillTarget target() const override { return areaTarget(round(), 0); }
    int shanghais() const override { return shanghais_; }

protected:
    DrillDartOutcome scoreDart(const DartScore &dart) override;
    void startRound() override { marks_ = ShanghaiRound(round()); }

private:
    ShanghaiRound marks_;
    int shanghais_ = 0;
};

} // namespace tavrix
