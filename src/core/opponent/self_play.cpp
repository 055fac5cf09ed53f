#include "core/opponent/self_play.h"

#include "core/games/x01_rules.h"
#include "core/opponent/computer_turn_rules.h"
#include "core/opponent/throw_model.h"

#include <array>

namespace tavrix {

SelfPlayLeg playSelfPlayLeg(const SkillProfile &profile, const CheckoutChart &chart,
                            QRandomGenerator &random, int first, int dartLimit)
{
    struct Side {
        int remaining = 501;
        int darts = 0;
    };
    std::array<Side, 2> sides{};
    SelfPlayLeg leg;
    for (int p = first;; p = 1 - p) {
        Side &side = sides[p];
        if (side.darts >= dartLimit)
            return leg;
        ComputerX01Turn turn(side.remaining, true);
        SetDarts darts{};
        while (!turn.over()) {
            const DartScore target = computerX01Target(turn.doubledIn, turn.remaining, true, chart);
            const BoardPoint aim = targetPoint(target);
            const SimulatedDart dart = simulateThrow(profile, random, aim.x, aim.y);
            darts[turn.dartCount()] = BoardPoint{dart.x, dart.y};
            turn.count(dart.x, dart.y, dart.description);
        }
        const X01Set set = scoreX01Set(darts, side.remaining, true);
        side.darts += turn.dartCount();
        leg.thrown += turn.dartCount();
        const X01Outcome outcome = x01Outcome(set.remaining, true, set.lastMultiplier);
        if (outcome == X01Outcome::Bust)
            continue;
        leg.scored += side.remaining - set.remaining;
        side.remaining = set.remaining;
        if (outcome == X01Outcome::Win) {
            leg.finished = true;
            leg.winnerDarts = side.darts;
            return leg;
        }
    }
}

} // namespace tavrix
