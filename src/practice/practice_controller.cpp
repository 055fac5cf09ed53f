#include "practice/practice_controller.h"

#include "games/play_rules.h"
#include "practice/practice_frame.h"
#include "session/session.h"
#include "sound/sound_cue.h"

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include <cmath>

namespace tavrix {

PracticeController::PracticeController(Session &session, SoundOut &sounds, BoardInput &board,
                                       PracticeFrame &frame, QObject *parent)
    : QObject(parent)
    , session_(session)
    , sounds_(sounds)
    , board_(board)
    , frame_(frame)
{
}

void PracticeController::enter()
{
    const BoardPoint target = state_.target;
    state_ = PracticeState{};
    state_.target = target;
    board_.setMarking(MarkerSet::Local, 0);
    board_.setTargetsMovable(false);
}

// Distance and angle are measured from the practice target, the description
// from the bull.
void PracticeController::readout(int row, BoardPoint pointer)
{
    if (row < 0 || row > 2)
        return;
    const double dx = pointer.x - state_.target.x;
    const double dy = pointer.y - state_.target.y;
    frame_.rdisttext[row]->setText(distanceText(std::hypot(dx, dy), session_.useCms));
    frame_.angleText[row]->setText(degreesText(angleFromXY(dx, dy)));
    frame_.scoreText[row]->setText(dartDescriptionFromXY(pointer.x, pointer.y));
}

void PracticeController::pointerOver(const PointerSpot &spot)
{
    const int placed = board_.placed();
    switch (spot.over) {
    case PointerSpot::Over::Target:
        board_.showMarkerHover(2, spot.pixel, session_.useCms);
        return;
    case PointerSpot::Over::Label:
        if (placed < 3)
            board_.showMarkerHover(0, spot.pixel, session_.useCms);
        return;
    case PointerSpot::Over::Dart:
        // Over a marked dart the read-outs go on while the set is open.
        if (placed >= 3)
            return;
        break;
    case PointerSpot::Over::Board:
        if (placed >= 3)
            return;
        break;
    }
    readout(placed, spot.at);
    board_.showHover(dartDescriptionFromXY(spot.at.x, spot.at.y), spot.pixel);
}

void PracticeController::pointerLeft()
{
    // After the last dart of a set the last text stays.
    if (board_.placed() == 3)
        return;
    board_.hideHover();
}

void PracticeController::boardClicked(BoardPoint at, int flight)
{
    const int placed = board_.placed();
    if (placed >= 3)
        return;
    board_.showMarker(MarkerSet::Local, placed, at, flight);
    sounds_.play(landingCue(at), true);
    board_.setMarking(MarkerSet::Local, placed + 1);
    if (placed + 1 < 3)
        return;
    frame_.goButton()->setText(QStringLiteral("Confirm Darts"));
    frame_.goButton()->setEnabled(true);
    frame_.targetChoice()->setEnabled(true);
    frame_.generalText()->setText(QStringLiteral("Adjust Darts and \"Confirm\""));
    emit setMarked();
}

bool PracticeController::mayDrag(MarkerSet set, bool rightButton) const
{
    const MarkerKind kind = set == MarkerSet::Target ? MarkerKind::Target : MarkerKind::Dart;
    return dragAllowed(kind, false, board_.placed(), ThrowPhase::None, rightButton);
}

void PracticeController::markerDropped(MarkerSet, int, BoardPoint, QPointF pixel)
{
    const int k = board_.closestIndex(MarkerSet::Local, pixel);
    dragPipIndex_ = k;
    if (k != noMarker)
        readout(k, boardFromPicture(pixel.x(), pixel.y()));
    emit setMarked();
}

} // namespace tavrix
