// Play mode on the board: clicks become darts of the side marking at this
// board, drops correct them or move their targets, and the pointer shows
// what a dart would score; darts of the other sides are shown as they come.

#include "ui/play/play_controller.h"

#include "ui/board/board_picture.h"
#include "ui/board/dart_marker.h"
#include "ui/play/game_frame.h"
#include "core/session/session.h"
#include "ui/sound/sounds.h"

#include <QLabel>
#include <QPushButton>

#include <cmath>

namespace tavrix {

// --- Darts --------------------------------------------------------------------------

MarkerSet PlayController::markerSet(int player) const
{
    // Both copies of a network game show the client's cork dart as an
    // opponent's marker and the server's as a local one, so on the client
    // the two swap until the first turn.
    const GamePhase phase = game_.phase();
    const bool cork = phase == GamePhase::CorkAwaited || phase == GamePhase::CorkPlaced || phase == GamePhase::CorkResult;
    const bool swapped = cork && game_.options().netRole == NetRole::Client;
    return (player == 1) != swapped ? MarkerSet::Opponent : MarkerSet::Local;
}

ThrowPhase PlayController::throwPhase() const
{
    switch (game_.phase()) {
    case GamePhase::CorkAwaited:
        return ThrowPhase::CorkAwaited;
    case GamePhase::CorkPlaced:
    case GamePhase::CorkResult:
        return ThrowPhase::CorkPlaced;
    case GamePhase::Turn:
        return ThrowPhase::TurnDarts;
    case GamePhase::Idle:
    case GamePhase::GameOver:
        break;
    }
    return ThrowPhase::None;
}

void PlayController::syncBoard()
{
    c_.board.setMarking(markerSet(game_.currentThrower()), game_.dartsPlaced());
    // Targets move only when they will be recorded with the local player's darts.
    c_.board.setTargetsMovable(game_.options().keepStats && game_.currentThrower() == 2);
}

void PlayController::moveTarget(int index, BoardPoint at)
{
    game_.setTarget(index, at);
    c_.board.placeTarget(index, at, game_.options().keepStats);
}

void PlayController::boardClicked(BoardPoint at, int flight)
{
    if (!game_.throwerMarksHere())
        return;
    const MarkerSet set = markerSet(game_.currentThrower());
    auto mark = [&](int index) {
        c_.board.showMarker(set, index, at, flight);
        game_.placeDart(at);
    };
    if (game_.phase() == GamePhase::CorkAwaited) {
        mark(0);
        syncBoard();
        c_.sounds.play(SoundCue::Splat, true);
        refreshButton();
        return;
    }
    if (game_.phase() != GamePhase::Turn || game_.dartsPlaced() >= 3)
        return;
    const int index = game_.dartsPlaced();
    mark(index);
    syncBoard();
    const DartSounds sounds = game_.dartSounds(index);
    c_.sounds.play(sounds.landing, true);
    c_.frame.btnStartGame->setEnabled(true);
    c_.frame.btnUndoDart->setEnabled(game_.canUndoDart());
    if (sounds.hit)
        c_.sounds.play(*sounds.hit, sounds.hitWaits);
    showLiveText();
    if (game_.dartsPlaced() < 3)
        showAdvice();
}

void PlayController::undoDart()
{
    const int index = game_.undoDart();
    if (index < 0)
        return;
    const int player = game_.currentThrower();
    // The dart's marker goes, and the target shown after it for the next dart.
    c_.board.hideMarkersFrom(markerSet(player), index);
    c_.board.hideMarkersFrom(MarkerSet::Target, index + 1);
    c_.board.hideHover();
    syncBoard();
    showLiveText();
    showGlance();
    // The first dart is advised as at the start of a turn.
    if (index > 0 || game_.advisesFirstDart())
        showAdvice();
    refreshButton();
}

// A dart from a side that does not mark at this board shows with a flight
// drawn for it, before its sound plays.
void PlayController::dartPlaced(int player, int index)
{
    syncBoard();
    if (game_.phase() == GamePhase::Turn)
        showGlance();
    if (game_.throwerMarksHere())
        return;
    const std::optional<BoardPoint> at =
        game_.phase() == GamePhase::Turn ? game_.setDarts()[index] : game_.corkDart(player);
    if (!at)
        return;
    c_.board.showMarker(markerSet(player), index, *at, c_.session.randomIndex(12));
    c_.board.markers(markerSet(player))[index]->repaint();
}

void PlayController::showLiveText()
{
    const QString text = game_.liveText();
    if (!text.isEmpty())
        c_.frame.gameText->setText(text);
}

void PlayController::showAdvice()
{
    if (game_.dartsPlaced() > 2)
        return;
    if (const std::optional<BoardPoint> aim = game_.advice())
        moveTarget(game_.dartsPlaced(), *aim);
}

void PlayController::markerDropped(MarkerSet set, int index, BoardPoint at, QPointF pixel)
{
    if (set == MarkerSet::Target) {
        // A target snaps to the aiming point of the area it was dropped on,
        // and to the bull's centre off the board or on a wire.
        const DartScore area = scoreFromXY(at.x, at.y);
        const BoardPoint aim = aimPoint(area.multiplier, area.number);
        game_.setTarget(index, aim);
        c_.board.placeTarget(index, aim, false);
        return;
    }
    game_.moveDart(index, at);
    const BoardPoint pointer = boardFromPicture(pixel.x(), pixel.y());
    c_.board.showHover(playHoverCaption(std::hypot(pointer.x, pointer.y), angleFromXY(pointer.x, pointer.y),
                                        game_.phase() == GamePhase::CorkAwaited, c_.session.useCms),
                       pixel);
    if (game_.phase() == GamePhase::Turn) {
        showLiveText();
        showGlance();
    }
}

bool PlayController::mayDrag(MarkerSet set, bool rightButton) const
{
    const MarkerKind kind = set == MarkerSet::Target ? MarkerKind::Target : MarkerKind::Dart;
    return dragAllowed(kind, true, c_.board.placed(), throwPhase(), rightButton);
}

// --- The pointer --------------------------------------------------------------------

void PlayController::pointerOver(const PointerSpot &spot)
{
    const bool cms = c_.session.useCms;
    switch (spot.over) {
    case PointerSpot::Over::Target:
        c_.board.showMarkerHover({HoverKind::Target}, spot.pixel, cms);
        return;
    case PointerSpot::Over::Dart:
        if (spot.index != noMarker) {
            c_.board.showMarkerHover({HoverKind::Dart, spot.index + 1}, spot.pixel, cms);
            return;
        }
        break;
    case PointerSpot::Over::Label:
        if (c_.board.placed() < 3)
            c_.board.showMarkerHover({labelHoverKind(throwPhase())}, spot.pixel, cms);
        return;
    case PointerSpot::Over::Board:
        break;
    }
    playHover(spot);
}

void PlayController::playHover(const PointerSpot &spot)
{
    const ThrowPhase phase = throwPhase();
    if (phase == ThrowPhase::CorkPlaced || c_.board.placed() >= 3) {
        c_.board.hideHover();
        return;
    }
    c_.board.showHover(playHoverCaption(std::hypot(spot.at.x, spot.at.y), angleFromXY(spot.at.x, spot.at.y),
                                        phase == ThrowPhase::CorkAwaited, c_.session.useCms),
                       spot.pixel);
}

void PlayController::pointerLeft()
{
    // After the last dart of a set, or the cork dart, the last text stays.
    if (c_.board.placed() == 3 || throwPhase() == ThrowPhase::CorkPlaced)
        return;
    c_.board.hideHover();
}

} // namespace tavrix
