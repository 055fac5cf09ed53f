#pragma once

// Which checkout to go for, from a player's own spread: for every score left
// from 2 to 170 and one to three darts left in the set, in a double-out game,
// the aiming points that give the best chance of finishing within the set,
// and the chance of finishing when every dart is aimed where the checkout
// chart's first dart for the score then left is aimed (as the computer
// plays). A dart lands in one of the 62 scoring regions or misses; a bust
// (more than the score, a score left of 1, or 0 not on a double or the bull)
// ends the set without a finish.

#include "core/advice/score_maps.h"

#include <QString>

#include <array>

namespace tavrix {

inline constexpr int maxCheckout = 170;

// Whether some darts, each hitting what it is aimed at, finish `left` with
// at most `darts` darts on a double or the bull.
bool canFinish(int left, int darts);

// The chance of each region for an aim at each grid point: the maps of the
// spread of the class of the area each point lies in (regionChances of
// ScoreMaps, per class), joined into one set of regionCount maps.
std::vector<AimMap> chancesByAimClass(const std::array<std::vector<AimMap>, aimClassCount> &byClass);

class CheckoutTable {
public:
    // `chances`: as chancesByAimClass gives them; `chartFirst[r]`: the
    // chart's first dart for a score of r left (2 to 170).
    CheckoutTable(const std::vector<AimMap> &chances, const std::array<DartScore, maxCheckout + 1> &chartFirst);

    // The best chance of finishing `left` with `darts` darts (1 to 3); 0
    // outside 2..170.
    double chance(int left, int darts) const;
    // The same with every dart aimed at the chart's first dart.
    double chartChance(int left, int darts) const;
    // The best grid point to aim at.
    std::pair<int, int> aim(int left, int darts) const;
    // The areas the best aims lie in, each dart hitting what it is aimed at,
    // until the set finishes, busts or runs out of darts: "T19 T12 D12".
    QString route(int left, int darts) const;

private:
    struct Entry {
        float chance = 0;
        float chart = 0;
        int column = 0;
        int row = 0;
    };
    std::array<std::array<Entry, 4>, maxCheckout + 1> entries_{};
};

} // namespace tavrix
