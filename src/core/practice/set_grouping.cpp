#include "core/practice/set_grouping.h"

#include <cmath>

namespace tavrix {

namespace {

double distance(BoardPoint a, BoardPoint b)
{
    return std::hypot(a.x - b.x, a.y - b.y);
}

} // namespace

SetGrouping setGrouping(const std::array<BoardPoint, 3> &darts, BoardPoint aim)
{
    SetGrouping grouping;
    BoardPoint centre;
    for (const BoardPoint &dart : darts) {
        grouping.averageDistance += distance(dart, aim);
        centre.x += dart.x;
        centre.y += dart.y;
    }
    grouping.averageDistance /= 3;
    centre.x /= 3;
    centre.y /= 3;
    grouping.centreDistance = distance(centre, aim);
    for (const BoardPoint &dart : darts)
        grouping.groupingDistance += distance(dart, centre);
    grouping.groupingDistance /= 3;
    return grouping;
}

} // namespace tavrix
