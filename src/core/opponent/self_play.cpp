#include "core/opponent/self_play.h"

#include "core/games/x01_rules.h"
#include "core/opponent/throw_model.h"

#include <array>

namespace tavrix {

SelfPlayLeg playSelfPlayLeg(const SkillProfile &profile, const Advisor &advisor,
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
        // Darts until three are thrown, or the score left is a finish or a bust.
        SetDarts darts{};
        int thrown = 0;
        for (; thrown < 3; ++thrown) {
            const X01Count sofar = countX01Set(darts, side.remaining, true, X01Reading::AsThrown);
            if (sofar.remaining < 2)
                break;
            const DartScore target = advisor.x01Target({sofar.remaining, true, true});
            const BoardPoint aim = aimPoint(target.multiplier, target.number);
            const SimulatedDart dart = simulateThrow(profile, random, aim.x, aim.y);
            darts[thrown] = BoardPoint{dart.x, dart.y};
        }
        const X01Count set = countX01Set(darts, side.remaining, true, X01Reading::Scored);
        side.darts += thrown;
        leg.thrown += thrown;
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
