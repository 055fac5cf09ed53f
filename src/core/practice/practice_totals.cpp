#include "core/practice/practice_totals.h"

#include "core/practice/practice_rules.h"

#include <cmath>

namespace tavrix {

void addPracticeDart(PracticeSums &sums, qint64 playerId, int targetValue, int targetRing,
                     const PracticeDart &dart)
{
    const BoardPoint aim = aimPoint(targetRing, targetValue);
    const double dx = dart.x - aim.x;
    const double dy = dart.y - aim.y;
    const double distance = std::sqrt(dx * dx + dy * dy);
    sums.distCount += 1;
    sums.distSum += distance;
    sums.lastTarget = std::max(sums.lastTarget, dart.targetId);
    TargetTally &tally = sums.targets[{targetValue, targetRing}];
    tally.distCount += 1;
    tally.distSum += distance;
    // Hit rates count only the darts the player threw at the player's targets.
    if (dart.playerId == playerId) {
        tally.throws += 1;
        if (practiceHit(targetValue, targetRing, dart.score, dart.ring))
            tally.hits += 1;
    }
}

std::optional<PracticeSums> practiceSums(PracticeLog &store, qint64 playerId)
{
    if (std::optional<PracticeSums> kept = store.keptPracticeSums(playerId))
        return kept;
    // Read and kept in one transaction, so that sums kept are those of the
    // darts read even when another program writes darts meanwhile.
    PracticeLog::Batch batch(store);
    PracticeSums sums;
    if (!store.readPracticeDarts(playerId, [&](int targetValue, int targetRing, const PracticeDart &dart) {
            addPracticeDart(sums, playerId, targetValue, targetRing, dart);
        }))
        return std::nullopt;
    // Sums that cannot be kept (a read-only file) are built again next time.
    if (batch.isActive() && store.keepPracticeSums(playerId, sums))
        batch.commit();
    return sums;
}

bool recordPracticeSet(PracticeLog &store, const PracticeSet &set)
{
    PracticeLog::Batch batch(store);
    if (!batch.isActive())
        return false;
    // Sums are carried forward only when they were kept before these darts
    // and the darts come after every dart already summed.
    std::optional<PracticeSums> sums = store.keptPracticeSums(set.playerId);
    if (sums && set.targetId < sums->lastTarget)
        sums.reset();
    for (const PracticeDart &dart : set.darts) {
        if (!store.insertStatThrow(dart))
            return false;
        if (sums) {
            PracticeDart stored = dart;
            stored.x = storedCoordinate(dart.x);
            stored.y = storedCoordinate(dart.y);
            addPracticeDart(*sums, set.playerId, set.targetValue, set.targetRing, stored);
        }
    }
    if (sums && !store.keepPracticeSums(set.playerId, *sums, {set.targetValue, set.targetRing}))
        return false;
    return batch.commit();
}

} // namespace tavrix
