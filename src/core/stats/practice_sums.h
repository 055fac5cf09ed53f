#pragma once

// The running sums behind the practice totals, kept in the database beside the
// darts they sum so that the totals of a player with a million darts are read,
// not recomputed, whenever a set opens or is confirmed.

#include <QtGlobal>

#include <limits>
#include <map>
#include <utility>

namespace tavrix {

// A value read from the database that is empty or no whole number: it equals
// no score and no target value.
inline constexpr int unreadableValue = std::numeric_limits<int>::min();

// The darts of one kind of practice target (a number, or the bull, with a ring).
struct TargetTally {
    // Darts thrown at it by the player, and the hits among them.
    qint64 throws = 0;
    qint64 hits = 0;
    // Darts whose distance to the aiming point is summed, in the order of
    // their targets' ids and then their own.
    qint64 distCount = 0;
    double distSum = 0;
    friend bool operator==(const TargetTally &, const TargetTally &) = default;
};

struct PracticeSums {
    // The newest target whose darts are summed: darts of an older target
    // cannot be added at the end without changing the order of the sums.
    qint64 lastTarget = 0;
    // Every dart of the player's targets.
    qint64 distCount = 0;
    double distSum = 0;
    // By (target value, target ring).
    std::map<std::pair<int, int>, TargetTally> targets;
    friend bool operator==(const PracticeSums &, const PracticeSums &) = default;
};

} // namespace tavrix
