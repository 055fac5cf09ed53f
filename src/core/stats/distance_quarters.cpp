#include "core/stats/distance_quarters.h"

#include <algorithm>

namespace tavrix {

DistanceQuarters distanceQuartersOf(PlayerDistances distances, qint64 minSamples)
{
    // The profile counts each distinct distance once, in increasing order.
    std::vector<double> &v = distances.values;
    std::sort(v.begin(), v.end());
    v.erase(std::unique(v.begin(), v.end()), v.end());
    const qint64 n = static_cast<qint64>(v.size());

    DistanceQuarters quarters;
    quarters.sampleCount = n;
    double sum = 0;
    for (double d : v)
        sum += d;
    quarters.average = n > 0 ? sum / double(n) : 0.0;
    if (n < minSamples || n == 0)
        return quarters;

    // A quarter and a half of the ordered distances, rounded up. An empty
    // distance sorts first and takes a place among the closest ones.
    const qint64 quarter = (n + 3) / 4;
    const qint64 half = (n + 1) / 2;
    const qint64 gap = distances.hasNull ? 1 : 0;
    const qint64 closestQuarter = std::max<qint64>(0, quarter - gap);
    const qint64 closestHalf = std::max<qint64>(0, half - gap);

    quarters.tightestMax = closestQuarter > 0 ? v[closestQuarter - 1] : 0.0;
    // The rest of the closest half, beyond the tightest quarter.
    const auto secondBegin = std::upper_bound(v.begin(), v.begin() + closestHalf, quarters.tightestMax);
    if (secondBegin != v.begin() + closestHalf) {
        quarters.secondMin = *secondBegin;
        quarters.secondMax = v[closestHalf - 1];
    }
    quarters.widestMin = v[n - quarter];
    quarters.widestMax = v[n - 1];
    // The rest of the farthest half, short of the widest quarter.
    const auto farHalf = v.begin() + (n - half);
    const auto thirdEnd = std::lower_bound(farHalf, v.end(), quarters.widestMin);
    if (thirdEnd != farHalf) {
        quarters.thirdMin = *farHalf;
        quarters.thirdMax = *(thirdEnd - 1);
    }
    const double wildLimit = 3 * quarters.average;
    quarters.wildCount = v.end() - std::upper_bound(v.begin(), v.end(), wildLimit);
    return quarters;
}

} // namespace tavrix
