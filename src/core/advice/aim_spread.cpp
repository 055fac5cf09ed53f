#include "core/advice/aim_spread.h"

#include <algorithm>
#include <cmath>

namespace tavrix {

namespace {

// Running sums of one group of offsets; double keeps a million squares of
// offsets of some tens of millimetres exact enough for the covariance.
struct Sums {
    qint64 n = 0;
    double x = 0;
    double y = 0;
    double xx = 0;
    double xy = 0;
    double yy = 0;

    void add(double dx, double dy)
    {
        ++n;
        x += dx;
        y += dy;
        xx += dx * dx;
        xy += dx * dy;
        yy += dy * dy;
    }
    Sums &operator+=(const Sums &other)
    {
        n += other.n;
        x += other.x;
        y += other.y;
        xx += other.xx;
        xy += other.xy;
        yy += other.yy;
        return *this;
    }
    Spread spread() const
    {
        Spread s;
        if (n == 0)
            return s;
        s.biasX = x / double(n);
        s.biasY = y / double(n);
        if (n < 2)
            return s;
        const double m = double(n - 1);
        s.varX = std::max(0.0, (xx - x * s.biasX) / m);
        s.covXY = (xy - x * s.biasY) / m;
        s.varY = std::max(0.0, (yy - y * s.biasY) / m);
        return s;
    }
};

float offsetLength(const DartOffset &d)
{
    return std::sqrt(d.dx * d.dx + d.dy * d.dy);
}

// The median of the values; they are reordered.
float median(std::vector<float> &values)
{
    const std::size_t n = values.size();
    const auto middle = values.begin() + std::ptrdiff_t(n / 2);
    std::nth_element(values.begin(), middle, values.end());
    if (n % 2 == 1)
        return *middle;
    // For an even count the lower middle value is the largest of the lower half.
    const float lower = *std::max_element(values.begin(), middle);
    return (lower + *middle) / 2;
}

} // namespace

std::optional<std::pair<BoardPoint, AimClass>> aimOfTarget(int value, int ring)
{
    if (value == 25 || value == 50)
        return std::pair{BoardPoint{0, 0}, AimClass::Bull};
    if (value < 1 || value > 20)
        return std::nullopt;
    switch (ring) {
    case RingSingle:
        return std::pair{aimPoint(RingSingle, value), AimClass::Single};
    case RingDouble:
        return std::pair{aimPoint(RingDouble, value), AimClass::Double};
    case RingTriple:
        return std::pair{aimPoint(RingTriple, value), AimClass::Treble};
    default:
        return std::nullopt;
    }
}

std::optional<DartOffset> dartOffset(int targetValue, int targetRing, BoardPoint landed)
{
    const auto aim = aimOfTarget(targetValue, targetRing);
    if (!aim)
        return std::nullopt;
    return dartOffset(aim->first, aim->second, landed);
}

DartOffset dartOffset(BoardPoint aim, AimClass aimClass, BoardPoint landed)
{
    return {float((landed.x - aim.x) * mmPerUnit), float((landed.y - aim.y) * mmPerUnit), aimClass};
}

AimClass aimClassAt(BoardPoint aim)
{
    const DartScore score = scoreFromXY(aim.x, aim.y);
    if (score.number == 25)
        return AimClass::Bull;
    // A wire between two numbers of the treble ring scores nothing: no bed.
    if (score.number < 1 || score.number > 20)
        return AimClass::Single;
    if (score.multiplier == RingTriple)
        return AimClass::Treble;
    if (score.multiplier == RingDouble)
        return AimClass::Double;
    return AimClass::Single;
}

SpreadFit fitSpread(const std::vector<DartOffset> &darts)
{
    SpreadFit fit;
    if (darts.empty())
        return fit;
    std::vector<float> lengths(darts.size());
    std::transform(darts.begin(), darts.end(), lengths.begin(),
                   offsetLength);
    const float limit = 4 * median(lengths);

    std::array<Sums, aimClassCount> sums{};
    for (const DartOffset &d : darts) {
        if (offsetLength(d) > limit) {
            ++fit.wild;
            continue;
        }
        sums[static_cast<int>(d.aimClass)].add(d.dx, d.dy);
    }
    Sums all;
    for (int c = 0; c < aimClassCount; ++c) {
        all += sums[c];
        if (sums[c].n >= minFittedDarts)
            fit.byClass[c] = sums[c].spread();
    }
    fit.pooled = all.spread();
    fit.fitted = all.n;
    return fit;
}

} // namespace tavrix
