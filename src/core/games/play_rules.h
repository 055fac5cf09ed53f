#pragma once

// The rules of play around the scoring itself, the same for every type of
// game, as pure functions: who wins the cork, what is recorded with a dart
// and with a finished game, and the texts of the cork, the alerts and the
// end of a game.

#include "core/board/board_geometry.h"
#include "core/games/game_rules.h"
#include "core/stats/records.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

class QRandomGenerator;

namespace tavrix {

// --- The cork ---------------------------------------------------------------

// The player (1 or 2) who throws first: the one whose cork dart is nearer
// the bull as the distances are shown (truncated in the chosen unit); on
// equal shown distances `tieWinner`.
int corkFirstThrower(double distance1, double distance2, bool useCms, int tieWinner);
// The same between two copies of the program over the network, which must
// name the same player whatever unit each shows: the nearer dart at full
// precision (the same verdict as the shown distances whenever those differ),
// and on an exact tie `clientPlayer`, the player of the copy that called.
int networkCorkFirstThrower(double distance1, double distance2, int clientPlayer);

// "Name: Throw the cork. ..." for the player marking a cork dart.
QString corkPrompt(const QString &name);

// The result of the cork. Against the computer it speaks as "My dart" and
// "Your dart"; otherwise it names both players by `names` (player 1, 2).
QString corkResultText(bool vsComputer, const std::array<QString, 2> &names, double distance1,
                       double distance2, bool useCms, int first);

// --- Darts and sets -----------------------------------------------------------

// How a dart's target is recorded: the bull as number 25 in ring 1, aimed at
// the bull's centre; any other area as its own number and ring, aimed at its
// aiming point.
struct RecordedTarget {
    int number = 0;
    int ring = 0;
    BoardPoint aim;
};
RecordedTarget recordedTarget(DartScore target);

// --- Alerts --------------------------------------------------------------------

enum class AlertKind { DoubledIn, NotDoubledIn, Bust };

// One of the titles of an alert, drawn from the generator.
QString alertTitle(AlertKind kind, QRandomGenerator &random);

// --- The end of a game ------------------------------------------------------------

// The `games` row of a finished game: won or lost by the local player, the
// winning set's points, the local player's darts of the game, and what the
// game's rules record of the local player.
GameResult gameResultRow(bool localWon, int lastSetPoints, int localThrows, const LocalFigures &figures);

// "Name won that one. ..." shown after a game.
QString gameOverText(const QString &winner);

} // namespace tavrix
