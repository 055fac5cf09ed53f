#pragma once

// JDC Challenge: Shanghai rounds 10 to 15 (a Shanghai earns 100 more),
// then one dart at each double D1 to D20 and the bull, three to a set, 50
// points a hit, then Shanghai rounds 15 to 20.

#include "core/training/round_drill.h"

namespace tavrix {

class JdcChallenge : public RoundDrill {
public:
    JdcChallenge() : RoundDrill(19, 0), shanghai_(10) {}

    DrillKind kind() const override { return DrillKind::JdcChallenge; }
    DrillTarget target() const override;
    int shanghais() const override { return shanghais_; }

protected:
    DrillDartOutcome scoreDart(const DartScore &dart) override;
    void startRound() override;

private:
    // The number of a Shanghai round, 0 in the doubles rounds.
    int shanghaiNumber() const;
    // The double that dart `dart` (0 to 2) of a doubles round aims at, 25
    // for the bull.
    int doubleNumber(int dart) const;

    ShanghaiRound shanghai_;
    int shanghais_ = 0;
};

} // namespace tavrix
