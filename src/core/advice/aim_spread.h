#pragma once

// How a player's darts scatter round the point they were aimed at: the mean
// offset (the player's bias) and the 2 x 2 covariance of the offsets, in
// millimetres, fitted from every recorded dart that has an aiming point.
// Darts farther from their aim than four times the median distance are
// wild: counted, not fitted. Trebles, doubles, the bull area and singles
// each get their own fit once 30 darts of that class are fitted; until then
// the class takes the fit of all the darts together.

#include "core/board/board_geometry.h"

#include <QtGlobal>

#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace tavrix {

// Millimetres per board unit: the 202 units to the double's outer wire are
// 165.1 mm on a regulation board.
inline constexpr double mmPerUnit = 165.1 / 202.0;

// The class of an aiming point, by the area it lies in.
enum class AimClass { Treble, Double, Bull, Single };
inline constexpr int aimClassCount = 4;

// Fewer fitted darts than this give no advice, and no fit of a class.
inline constexpr qint64 minFittedDarts = 30;

// A dart's landing point less its aiming point, in millimetres, and the
// class of its aim.
struct DartOffset {
    float dx = 0;
    float dy = 0;
    AimClass aimClass = AimClass::Single;
};

struct Spread {
    double biasX = 0; // mm, mean of the offsets
    double biasY = 0;
    double varX = 0;  // mm², sample covariance (divided by n - 1)
    double covXY = 0;
    double varY = 0;
    friend bool operator==(const Spread &, const Spread &) = default;
};

struct SpreadFit {
    Spread pooled;
    std::array<std::optional<Spread>, aimClassCount> byClass{};
    qint64 fitted = 0; // darts fitted, all classes
    qint64 wild = 0;   // darts left out as wild
    bool enough() const { return fitted >= minFittedDarts; }
    // The class's own fit where it has one, else the pooled fit.
    const Spread &forClass(AimClass aimClass) const
    {
        const auto &own = byClass[static_cast<int>(aimClass)];
        return own ? *own : pooled;
    }
};

// The aiming point and class of a recorded target (a practice target's value
// and ring, or a game dart's target score and ring), by the rule the review
// uses for areas: the bull area (25, or 50) is aimed at its centre, a number
// 1 to 20 at the aiming point of its ring (1 any, 2 double, 3 treble).
// Nothing for a target that names no area (no target was set).
std::optional<std::pair<BoardPoint, AimClass>> aimOfTarget(int value, int ring);

// The offset of a dart landed at `landed` (board units) aimed by target,
// or aimed at a known point of a class.
std::optional<DartOffset> dartOffset(int targetValue, int targetRing, BoardPoint landed);
DartOffset dartOffset(BoardPoint aim, AimClass aimClass, BoardPoint landed);

// The class of the area an aiming point (board units) lies in: a treble or
// double bed, the bull or outer bull, anything else (a single bed, a wire,
// off the board) counts as a single.
AimClass aimClassAt(BoardPoint aim);

// Fits the spread of the darts (their order does not matter).
SpreadFit fitSpread(const std::vector<DartOffset> &darts);

} // namespace tavrix
