#pragma once

#include <algorithm>

namespace tavrix {

// The record against the present opponent since it was last cleared; kept in
// memory only.
struct LocalTallies {
    // No leg won yet.
    static constexpr int noBestLeg = 99;

    int localWins = 0;
    int localLosses = 0;
    int localBestOut = 0;
    int localBestLeg = noBestLeg;

    void clearLocalStats() { *this = LocalTallies{}; }

    // A finished game: a win counts its last set as an out and its darts as
    // a leg.
    void countGame(bool won, int lastSetPoints, int darts)
    {
        if (!won) {
            ++localLosses;
            return;
        }
        ++localWins;
        localBestOut = std::max(localBestOut, lastSetPoints);
        localBestLeg = std::min(localBestLeg, darts);
    }
};

} // namespace tavrix
