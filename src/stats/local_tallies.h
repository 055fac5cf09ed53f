#pragma once

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
};

} // namespace tavrix
