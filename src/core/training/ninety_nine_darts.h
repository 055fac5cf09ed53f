#pragma once

// 99 darts at one target: 33 sets of three at a chosen number or the bull
// area; a single of it is 1 mark, a double 2, a treble 3 (the outer bull 1,
// the bull 2).

#include "core/training/round_drill.h"

namespace tavrix {

class NinetyNineDarts : public RoundDrill {
public:
    explicit NinetyNineDarts(int number) : RoundDrill(33, 0), number_(number) {}

    DrillKind kind() const override { return DrillKind::NinetyNineDarts; }
    DrillTarget target() const override { return areaTarget(number_, number_ == 25 ? 1 : 0); }

protected:
    DrillDartOutcome scoreDart(const DartScore &dart) override;

private:
    int number_;
};

} // namespace tavrix
