#include "core/advice/chart_advisor.h"

namespace tavrix {

DartRoute ChartAdvisor::bestOut(int remaining, bool doubleOut) const
{
    return chart_.route(remaining, doubleOut);
}

DartScore ChartAdvisor::x01Target(const X01Standing &standing) const
{
    if (!standing.doubledIn)
        return {2, 20};
    const DartRoute route = chart_.checkoutDarts(standing.remaining, standing.doubleOut);
    return route.isEmpty() ? DartScore{} : route.first();
}

std::optional<BoardPoint> ChartAdvisor::cricketTarget(const CricketStanding &standing) const
{
    const CricketRow &mine = standing.mine;
    const CricketRow &theirs = standing.theirs;
    const bool behind = cricketPointsOf(mine) <= cricketPointsOf(theirs);
    // Behind under Standard rules: score on a number the opponent still has open.
    if (!standing.simple && behind) {
        for (int slot = 1; slot <= 6; ++slot) {
            if (mine[slot] >= 3 && theirs[slot] < 3)
                return aimPoint(1, cricketSlotNumber(slot));
        }
    }
    for (int slot = 0; slot <= 6; ++slot) {
        if (mine[slot] >= 3)
            continue;
        if (slot == 0)
            return BoardPoint{0, 0};
        return aimPoint(mine[slot] == 0 ? 3 : 1, cricketSlotNumber(slot));
    }
    if (behind)
        return BoardPoint{0, 0};
    return std::nullopt;
}

} // namespace tavrix
