// The cork: each side throws one dart at the bull, and the nearer one throws
// first. Two people at the board mark theirs; the computer throws its own.

#include "games/game_flow.h"

#include "board/board_picture.h"
#include "board/dart_marker.h"
#include "dialogs/messages.h"
#include "games/game_frame.h"
#include "opponent/throw_model.h"
#include "startup/shared_state.h"
#include "startup/sounds.h"

#include <QLabel>
#include <QPushButton>

#include <cmath>

namespace tavrix {

namespace {

double distanceFromBull(const DartMarker *marker)
{
    return std::hypot(BoardInput::pipX(marker), BoardInput::pipY(marker));
}

} // namespace

void GameFlow::closestToBull()
{
    QString name = c_.state.currentPlayerName;
    if (c_.state.currentThrower == 1)
        name = c_.state.opponentName;
    if (c_.state.keepStats) {
        DartMarker *target = c_.board.targetPips()[0];
        target->centreOn(QPointF(boardCenter, boardCenter));
        target->show();
        target->setEnabled(true);
    }
    c_.frame.gameText->setText(QStringLiteral("\n") + name
                               + QStringLiteral(": Throw the cork.  Mark where your dart went on the "
                                                "board, adjust if necessary, and click \"Confirm Dart\""));
    c_.state.throwPhase = 1;
    c_.board.picture()->setEnabled(true);
}

void GameFlow::confirmDart()
{
    if (playingComputer()) {
        c_.frame.btnStartGame->setEnabled(false);
        c_.frame.btnStartGame->setText(QStringLiteral("Ok"));
        throwForBull();
        return;
    }
    if (c_.state.currentThrower >= 2) {
        setFirstPlayer();
        return;
    }
    c_.frame.btnStartGame->setEnabled(false);
    ++c_.state.currentThrower;
    closestToBull();
}

void GameFlow::setFirstPlayer()
{
    const bool cms = c_.state.useCms;
    const DartMarker *a = c_.board.cpips()[0];
    const DartMarker *b = c_.board.pips()[0];
    const double dA = distanceFromBull(a);
    const double dB = distanceFromBull(b);
    // Compared as shown: equal texts give the local player the first turn.
    c_.state.currentThrower = shownDistance(dA, cms) < shownDistance(dB, cms) ? 1 : 2;
    const QString first = playerCaption(c_.state.currentThrower);
    c_.frame.gameText->setText(QStringLiteral("\n") + playerCaption(1) + QStringLiteral("'s dart: ")
                               + distanceText(dA, cms) + QStringLiteral("\n") + playerCaption(2)
                               + QStringLiteral("'s dart: ") + distanceText(dB, cms)
                               + QStringLiteral("\n\n") + first
                               + QStringLiteral(" goes first.\n(Click \"Ok\")"));
    c_.frame.btnStartGame->setEnabled(true);
    c_.frame.btnStartGame->setText(QStringLiteral("Ok"));
    recordCorkDart(b, dB);
}

void GameFlow::throwForBull()
{
    const SimulatedDart dart = simulateThrow(c_.state.skill.profile, c_.state.random, 0, 0);
    const int flight = static_cast<int>(c_.state.random.generateDouble() * 12);
    // The dart shows as its sound plays.
    c_.board.showMarkerAt(c_.board.cpips()[0], {dart.x, dart.y}, flight);
    c_.board.cpips()[0]->repaint();
    c_.sounds.playDefaultSound(true);

    const bool cms = c_.state.useCms;
    const double dC = std::hypot(dart.x, dart.y);
    const DartMarker *mine = c_.board.pips()[0];
    const double dU = distanceFromBull(mine);
    // Compared as shown: equal texts give the computer the first turn.
    const bool youFirst = shownDistance(dU, cms) < shownDistance(dC, cms);
    c_.state.currentThrower = youFirst ? 2 : 1;
    c_.frame.gameText->setText(QStringLiteral("\nMy dart: ") + distanceText(dC, cms)
                               + QStringLiteral("\nYour dart: ") + distanceText(dU, cms)
                               + QStringLiteral("\n\n")
                               + (youFirst ? QStringLiteral("You go first.") : QStringLiteral("I go first"))
                               + QStringLiteral("\n(Click \"Ok\")"));
    c_.frame.btnStartGame->setEnabled(true);
    recordCorkDart(mine, dU);
}

// The local player's cork dart, aimed at the bull, recorded as set 0, dart 1.
void GameFlow::recordCorkDart(const DartMarker *cork, double distance)
{
    if (!c_.state.keepStats)
        return;
    const DartScore score = BoardInput::pipScore(cork);
    if (!c_.store.insertGameDart({currentGameId_, c_.state.currentPlayerId, setSeq_, 1,
                                  BoardInput::pipX(cork), BoardInput::pipY(cork), distance,
                                  score.number, score.multiplier, 25, 1}))
        databaseFailed();
}

} // namespace tavrix
