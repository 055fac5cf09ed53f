#pragma once

// The rules of play around the scoring itself, as pure functions: who wins
// the cork, which sounds a dart or a set earns, what is recorded with a dart
// and with a finished game, and the texts a game shows.

#include "core/board/board_geometry.h"
#include "core/games/checkout_chart.h"
#include "core/games/cricket_rules.h"
#include "core/sound/sound_cue.h"
#include "core/stats/game_codes.h"
#include "core/stats/local_tallies.h"
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

// The sound of a dart landing: a boing off a wire, a splat anywhere else.
SoundCue landingCue(BoardPoint at);

// The extra sound of a dart marked in 301/501: on the target it was aimed at,
// a fanfare for a treble, a harp for anything else.
std::optional<SoundCue> x01HitCue(DartScore score, DartScore target);

// The extra sound of a dart marked in Cricket: a double or treble on a number
// the other player has not closed.
std::optional<SoundCue> cricketHitCue(DartScore score, const CricketRow &otherPlayer);

// The applause a set earns: 60, 100 or 140 and more points in 301/501; 3, 6
// or 8 and more marks in Cricket.
std::optional<SoundCue> applauseCue(GameType type, int turnPoints, int turnMarks);

// How a dart's target is recorded: the bull as number 25 in ring 1, aimed at
// the bull's centre; any other area as its own number and ring, aimed at its
// aiming point.
struct RecordedTarget {
    int number = 0;
    int ring = 0;
    BoardPoint aim;
};
RecordedTarget recordedTarget(DartScore target);

// The line added to a 301/501 score column after a set: the new score on a
// line of its own, or "*" when the score did not change.
QString scoreColumnLine(int remaining, int previous);

// --- Turns ---------------------------------------------------------------------

// "Name: Throw your darts, ..." for a Cricket turn at this board.
QString turnPrompt(const QString &name);

// The same for 301/501, with the best out from `remaining` when there is one,
// else the advice of T20 once doubled in, and a reminder while not doubled in.
QString x01TurnPrompt(const QString &name, int remaining, bool doubledIn, bool doubleOut,
                      const CheckoutChart &chart);

// Cricket's live text for the darts marked so far.
QString cricketLiveText(const QString &name, const std::array<std::optional<BoardPoint>, 3> &darts,
                        int marked);

// --- Alerts --------------------------------------------------------------------

enum class AlertKind { DoubledIn, NotDoubledIn, Bust };

// One of the titles of an alert, drawn from the generator.
QString alertTitle(AlertKind kind, QRandomGenerator &random);

// --- The end of a game ------------------------------------------------------------

struct GameEnd {
    int winner = 0;          // 1 the opponent, 2 the local player
    GameType type = GameType::None;
    bool simpleCricket = false;
    int localCricketPoints = 0;
    int startScore = 0;
    int localRemaining = 0;  // the local player's score before the last set
    int localThrows = 0;     // the local player's darts of the game
    int lastSetPoints = 0;   // the winning set's points
    int bestSet = 0;         // the local player's best set
};

// The `games` row of a finished game.
GameResult gameResultRow(const GameEnd &end);

// "Name won that one. ..." shown after a game.
QString gameOverText(const QString &winner);

// --- The score at a glance --------------------------------------------------

// A player's standing in large figures, with a line under it.
struct GlanceFigures {
    QString figure;
    QString detail;
};

// 301/501: the score left and the three-dart average so far.
GlanceFigures x01Glance(int left, std::optional<double> average);
// Cricket: the points under Standard rules (as the totals show them),
// else the numbers closed.
GlanceFigures cricketGlance(const CricketRow &row, bool simple, int points);
// The slots (bull, 20 down to 15) both players have closed.
std::array<bool, 7> closedByBoth(const CricketMarks &marks);

} // namespace tavrix
