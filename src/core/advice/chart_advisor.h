#pragma once

// The advice of the checkout chart: in 301/501 double 20 until the player
// has doubled in, then the first dart of the chart's route from the score
// left (treble 20 where the chart has none); in Cricket the first number not
// yet closed, bull first, or a closed number to score on while behind.

#include "core/games/advisor.h"
#include "core/games/checkout_chart.h"

namespace tavrix {

class ChartAdvisor : public Advisor {
public:
    explicit ChartAdvisor(const CheckoutChart &chart)
        : chart_(chart)
    {
    }

    DartRoute bestOut(int remaining, bool doubleOut) const override;
    DartScore x01Target(const X01Standing &standing) const override;
    std::optional<BoardPoint> cricketTarget(const CricketStanding &standing) const override;

private:
    const CheckoutChart &chart_;
};

} // namespace tavrix
