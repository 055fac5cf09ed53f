#pragma once

#include "core/stats/records.h"

namespace tavrix {

// The quarters of the distinct distances: the closest quarter and the
// farthest quarter (a quarter rounded up), the rest of each half beyond them,
// the average and the distances beyond three times it. Below `minSamples`
// distinct distances only the count and the average are filled in.
DistanceQuarters distanceQuartersOf(PlayerDistances distances, qint64 minSamples);

} // namespace tavrix
