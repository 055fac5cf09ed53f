#include "core/stats/records.h"

namespace tavrix {

// Out of line on purpose: inlined into the practice totals, GCC 12's SLP
// vectorizer at -O2 dropped the round trip through float, and the sums kept
// set by set no longer matched the darts read back.
double storedCoordinate(double value)
{
    return static_cast<double>(static_cast<float>(value));
}

} // namespace tavrix
