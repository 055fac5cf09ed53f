#pragma once

// How well the three darts of a practice set were thrown at one aiming
// point: how far they landed from it on average, how far their centre lies
// from it, and how tightly they sit around their own centre.

#include "core/board/board_geometry.h"

#include <array>

namespace tavrix {

struct SetGrouping {
    double averageDistance = 0;  // mean distance of the darts to the aiming point
    double centreDistance = 0;   // distance of the darts' centre to the aiming point
    double groupingDistance = 0; // mean distance of the darts to their centre
};

// In board units. The centre's distance is never larger than the average
// distance; the grouping is 0 when the darts share one spot.
SetGrouping setGrouping(const std::array<BoardPoint, 3> &darts, BoardPoint aim);

} // namespace tavrix
