#include "review/review_controller.h"

#include <cmath>

namespace tavrix {

ReviewController::ReviewController(BoardInput &board, QObject *parent)
    : QObject(parent)
    , board_(board)
{
}

void ReviewController::pointerOver(const PointerSpot &spot)
{
    if (spot.over != PointerSpot::Over::Board)
        return;
    const std::optional<QString> caption =
        reviewHoverCaption(std::hypot(spot.at.x, spot.at.y), angleFromXY(spot.at.x, spot.at.y), counts_);
    if (caption)
        board_.showHover(*caption, spot.pixel);
    else
        board_.hideHover();
}

void ReviewController::pointerLeft()
{
    board_.hideHover();
}

void ReviewController::boardClicked(BoardPoint at, int)
{
    const double radius = std::hypot(at.x, at.y);
    const int ring = ringFromRadius(radius);
    const int segment = segmentFromAngle(angleFromXY(at.x, at.y));
    board_.hideHover();
    if (ring > 0)
        emit areaChosen(ring, segment);
}

} // namespace tavrix
