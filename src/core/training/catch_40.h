#pragma once

// Catch 40: each checkout from 61 to 100 once, six darts each, double out.
// A finish in two darts scores 3, in three 2, in four to six 1; 99, which
// no two darts finish, scores 3 in three.

#include "core/training/checkout_drill.h"

namespace tavrix {

class Catch40 : public CheckoutDrill {
public:
    Catch40() : CheckoutDrill(first, 2) {}

    DrillKind kind() const override { return DrillKind::Catch40; }
    int round() const override { return attemptTarget() - first + 1; }
    int rounds() const override { return last - first + 1; }
    // "Target 63 · 4 darts left".
    QString progressText() const override;
    int score() const override { return points_; }

protected:
    void attemptEnded(bool finished, int darts) override;

private:
    static constexpr int first = 61;
    static constexpr int last = 100;

    int points_ = 0;
};

// The points of one Catch 40 target finished with `darts` darts (0 for
// none).
int catch40Points(int target, int darts);

} // namespace tavrix
