#pragma once

// 121: ten attempts of nine darts at a checkout, double out. A finish
// raises the next target by one, an attempt without one sends it back to
// 121. The score is the highest target finished.

#include "core/training/checkout_drill.h"

namespace tavrix {

class OneTwentyOne : public CheckoutDrill {
public:
    OneTwentyOne() : CheckoutDrill(start, 3) {}

    DrillKind kind() const override { return DrillKind::OneTwentyOne; }
    int round() const override { return attempt_; }
    int rounds() const override { return attempts; }
    // "Target 63 · attempt 2 of 10 · 4 darts left".
    QString progressText() const override;
    int score() const override { return best_; }

protected:
    void attemptEnded(bool finished, int darts) override;

private:
    static constexpr int start = 121;
    static constexpr int attempts = 10;

    int attempt_ = 1;
    int best_ = 0;
};

} // namespace tavrix
