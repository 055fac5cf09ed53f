#pragma once

#include "core/stats/practice_sums.h"
#include "core/stats/records.h"
#include "core/stats/stats_access.h"

#include <functional>
#include <optional>
#include <utility>

namespace tavrix {

// Practice sets and their darts, and the sums kept of them. Writes give false
// (or no id) when the store refuses them (lastError() says why).
class PracticeLog : public virtual StatsAccess {
public:
    // A new practice set of the player; its id, the one its darts carry.
    virtual std::optional<qint64> insertStatTarget(qint64 playerId, int targetValue, int targetRing) = 0;
    virtual bool insertStatThrow(const PracticeDart &dart) = 0;
    // Writes the practice set's row with this id, where it is missing: a
    // file made anew must hold the set that darts still to be written name.
    virtual bool restoreStatTarget(qint64 targetId, qint64 playerId, int targetValue, int targetRing) = 0;

    // The practice sums kept for the player; none when none are kept (never
    // built, or dropped because darts or targets changed since) or they
    // cannot be read.
    virtual std::optional<PracticeSums> keptPracticeSums(qint64 playerId) = 0;
    // Keeps the player's sums in place of the old ones, inside the caller's
    // transaction: all of them, or the player's figures and those of one
    // target only.
    virtual bool keepPracticeSums(qint64 playerId, const PracticeSums &sums) = 0;
    virtual bool keepPracticeSums(qint64 playerId, const PracticeSums &sums, std::pair<int, int> target) = 0;

    // Every dart of the player's practice targets (whoever threw it) with
    // its target's value and ring, by target id and then by dart id: one
    // read of the player's practice darts. Only the target, thrower,
    // position, score and ring of a dart are read.
    using PracticeDartTaker = std::function<void(int targetValue, int targetRing, const PracticeDart &)>;
    virtual bool readPracticeDarts(qint64 playerId, const PracticeDartTaker &take) = 0;

protected:
    ~PracticeLog() = default;
};

} // namespace tavrix
