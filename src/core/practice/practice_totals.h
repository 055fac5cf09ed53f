#pragma once

// The sums behind the running totals of practice, kept up to date set by set.
// Each distance is measured from the stored position of a dart to the aiming
// point of its target, and the distances are added in the order of the
// targets' ids and then the darts' own, so kept sums and sums built afresh
// agree to the last bit.

#include "core/board/board_geometry.h"
#include "core/stats/practice_log.h"

#include <array>

namespace tavrix {

// Adds one dart of one of the player's targets, as the database keeps it.
void addPracticeDart(PracticeSums &sums, qint64 playerId, int targetValue, int targetRing,
                     const PracticeDart &dart);

// The player's sums: the kept ones, or built from every practice dart (one
// read) and kept for next time. None when the darts cannot be read
// (store.lastError() says why).
std::optional<PracticeSums> practiceSums(PracticeLog &store, qint64 playerId);

// A confirmed set: its three darts, and the kept sums brought up to date, in
// one transaction. False (with store.lastError()) when nothing was written.
struct PracticeSet {
    qint64 playerId = 0;
    qint64 targetId = 0;
    int targetValue = 0;
    int targetRing = 0;
    // Per dart: where it landed, its distance to the aiming point, its
    // practice score.
    std::array<PracticeDart, 3> darts;
};
bool recordPracticeSet(PracticeLog &store, const PracticeSet &set);

} // namespace tavrix
