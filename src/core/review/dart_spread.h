#pragma once

// Where a player's darts at one area cluster: their mean point of impact and
// an ellipse that holds about two thirds of them, so a drift low or to one side
// shows at a glance.

#include "core/board/board_geometry.h"

#include <optional>
#include <vector>

namespace tavrix {

// For a two-dimensional normal spread the share of darts within Mahalanobis
// radius k is 1 - exp(-k^2 / 2); k = sqrt(2 ln 3) makes that two thirds.
inline constexpr double twoThirdsRadius = 1.482303807367511;

struct SpreadEllipse {
    BoardPoint centre;
    double semiMajor = 0; // board units; 0 when every dart is on one spot
    double semiMinor = 0; // 0 when the darts lie on one line
    double angle = 0;     // degrees of the major axis, 0 <= angle < 180, counter-clockwise
    // Whether a point lies inside or on the ellipse; a flat ellipse holds only
    // its axis, an ellipse of no size only its centre.
    bool contains(BoardPoint point) const;
};

struct DartSpread {
    std::optional<BoardPoint> mean;         // none without darts
    std::optional<SpreadEllipse> ellipse;   // none below two darts
};

// The mean and the two-thirds ellipse of the darts' sample covariance:
// semi-axes twoThirdsRadius x sqrt(eigenvalue), along the eigenvectors.
DartSpread dartSpread(const std::vector<BoardPoint> &darts);

} // namespace tavrix
