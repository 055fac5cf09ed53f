#include "core/review/dart_spread.h"

#include <algorithm>
#include <cmath>

namespace tavrix {

namespace {

// Below this a length counts as none: far under a thousandth of a pixel.
constexpr double negligible = 1e-9;

} // namespace

bool SpreadEllipse::contains(BoardPoint point) const
{
    // The point in the ellipse's own axes.
    const double a = angle * radPerDeg;
    const double dx = point.x - centre.x;
    const double dy = point.y - centre.y;
    const double u = dx * std::cos(a) + dy * std::sin(a);
    const double v = -dx * std::sin(a) + dy * std::cos(a);
    if (semiMinor > negligible) {
        const double su = u / semiMajor;
        const double sv = v / semiMinor;
        return su * su + sv * sv <= 1;
    }
    if (semiMajor > negligible)
        return std::abs(v) <= negligible && std::abs(u) <= semiMajor;
    return std::abs(u) <= negligible && std::abs(v) <= negligible;
}

DartSpread dartSpread(const std::vector<BoardPoint> &darts)
{
    DartSpread spread;
    if (darts.empty())
        return spread;
    const double n = double(darts.size());
    double sumX = 0;
    double sumY = 0;
    for (const BoardPoint &dart : darts) {
        sumX += dart.x;
        sumY += dart.y;
    }
    const BoardPoint mean{sumX / n, sumY / n};
    spread.mean = mean;
    if (darts.size() < 2)
        return spread;

    // The covariance about the mean, found first: no cancellation of large sums.
    double xx = 0;
    double xy = 0;
    double yy = 0;
    for (const BoardPoint &dart : darts) {
        const double dx = dart.x - mean.x;
        const double dy = dart.y - mean.y;
        xx += dx * dx;
        xy += dx * dy;
        yy += dy * dy;
    }
    xx /= n - 1;
    xy /= n - 1;
    yy /= n - 1;

    // Eigenvalues of [[xx, xy], [xy, yy]] and the direction of the larger
    // one; atan2 needs no division and gives 0 for a round spread.
    const double middle = (xx + yy) / 2;
    const double reach = std::sqrt((xx - yy) * (xx - yy) / 4 + xy * xy);
    const double larger = middle + reach;
    // Darts on one line leave a rounding error for a width: none, exactly.
    double smaller = middle - reach;
    if (smaller <= larger * 1e-12)
        smaller = 0;
    double angle = std::atan2(2 * xy, xx - yy) / 2 * degPerRad;
    if (angle < 0)
        angle += 180;
    if (angle >= 180)
        angle -= 180;
    spread.ellipse = SpreadEllipse{mean, twoThirdsRadius * std::sqrt(std::max(0.0, larger)),
                                   twoThirdsRadius * std::sqrt(smaller), angle};
    return spread;
}

} // namespace tavrix
