#pragma once

// The rules of one type of game behind one interface: how a confirmed set
// scores and whether it wins, what the players are told and advised, the
// figures at a glance, where the computer aims and which sound a dart
// earns. The game model keeps the phase, the cork and whose turn it is, and
// asks its rules object for the rest; a new type of game is a new class.

#include "core/board/board_geometry.h"
#include "core/games/cricket_marks.h"
#include "core/games/game_options.h"
#include "core/sound/sound_cue.h"
#include "core/stats/game_codes.h"

#include <QList>
#include <QString>

#include <array>
#include <memory>
#include <optional>

namespace tavrix {

class Advisor;

// The darts of a set in order, each where it landed; a dart not on the
// board (its marker hidden) is empty.
using SetDarts = std::array<std::optional<BoardPoint>, 3>;

// A player's standing in large figures, with a line under it.
struct GlanceFigures {
    QString figure;
    QString detail;
    // 301/501: the finish the chart advises from the figure ("T20 · T19 ·
    // D12"), "" when it advises none; nothing in a game without finishes.
    std::optional<QString> finish;
    // The darts marked so far bust the turn: the figure says so.
    bool bust = false;
    // 301/501 double out, doubled in, not bust: the score left to finish.
    std::optional<int> checkoutLeft;
};

// What a confirmed set did under the rules of its game.
struct ScoredSet {
    enum class DoubleIn { NotAsked, DoubledIn, Missed };

    DoubleIn doubleIn = DoubleIn::NotAsked;
    // The darts of the set that were dealt with, in order: scored, recorded
    // and counted (301/501 leaves out the darts after the score reached 1 or
    // less).
    QList<int> darts;
    // Cricket: the marks the set added, dart by dart; and the thrower's marks
    // and points once the set is scored.
    QList<CricketMark> marks;
    CricketRow marksAfter{};
    int pointsAfter = 0;
    bool bust = false;
    bool won = false;
    // 301/501: the points of the counted darts; and the line the score
    // column gains ("" when the game was won).
    int turnPoints = 0;
    QString columnLine;
    // Neither set when the game was won.
    std::optional<SoundCue> applause;
};

// What the `games` row of a finished game records of the local player
// beside the result: the points made and the best set.
struct LocalFigures {
    int points = 0;
    int bestSet = 0;
};

// Where the computer aims its next dart: the point, and the area when it
// aimed at one (the hit sounds go by it).
struct ComputerAim {
    BoardPoint point;
    std::optional<DartScore> area;
};

class GameRules {
public:
    virtual ~GameRules() = default;

    virtual GameType type() const = 0;

    // A new game between two players, neither of whom has thrown.
    virtual void start(const GameOptions &options) = 0;
    // Scores a confirmed set of `player` (1 or 2).
    virtual ScoredSet scoreSet(int player, const SetDarts &darts) = 0;
    // The local player's figures for the `games` row of a finished game.
    virtual LocalFigures localFigures(bool localWon) const = 0;

    // The large figures beside the score board: as the player's confirmed
    // sets leave him, and with `turn`, the darts of his turn marked so far,
    // counted as confirming them would count them. Nothing is booked.
    virtual GlanceFigures glance(int player, const SetDarts &turn) const = 0;
    GlanceFigures glance(int player) const { return glance(player, SetDarts{}); }
    // The numbers (bull, 20 down to 15) both players have closed.
    virtual std::array<bool, 7> closedNumbers() const { return {}; }

    // "Name: Throw your darts..." when a turn at this board starts.
    virtual QString turnPrompt(const QString &name, int player) const = 0;
    // The text of the turn so far, for darts marked at this board.
    virtual QString liveText(const QString &name, int player, const SetDarts &darts, int placed) const = 0;
    // Where the player at this board is advised to aim the next dart.
    virtual std::optional<BoardPoint> advice(int player, const SetDarts &darts) const = 0;
    // Whether the first dart of a turn at this board is advised.
    virtual bool advisesFirstDart(int player) const = 0;

    // The computer's next dart; nothing when it throws no more this turn.
    virtual std::optional<ComputerAim> computerAim(int player, const SetDarts &darts) const = 0;
    // Whether a turn thrown dart by dart is decided after its darts so far
    // (a finish or a bust in 301/501).
    virtual bool turnDecided(int player, const SetDarts &darts) const = 0;
    // Whether a side that sends fewer than three darts ends its turn with
    // its last dart (301/501); in Cricket it is asked for one more dart at
    // the next tick and ends there.
    virtual bool turnEndsWithLastSentDart() const = 0;
    // The points a turn thrown dart by dart reports (301/501 only).
    virtual std::optional<int> reportedPoints(int player, const SetDarts &darts) const = 0;

    // The sound a dart earns beyond its landing: `aimedAt` is the area its
    // thrower aimed at, `atThisBoard` whether it was marked here.
    virtual std::optional<SoundCue> hitCue(int player, DartScore scored, std::optional<DartScore> aimedAt,
                                           bool atThisBoard) const = 0;
};

// The rules of a game type, advised by `advisor`.
std::unique_ptr<GameRules> makeGameRules(GameType type, const Advisor &advisor);

// The sound of a dart landing: a boing off a wire, a splat anywhere else.
SoundCue landingCue(BoardPoint at);

// Joins dart descriptions as every list of a set shows them:
// "a", "a, and b", "a, b, and c".
QString joinDartTexts(const QStringList &texts);
// The descriptions of the darts on the board, joined as above.
QString dartListText(const SetDarts &darts);
// "Name: Throw your darts, ..." for a turn at this board.
QString turnPrompt(const QString &name);
// "Adjust darts ..." once three darts are marked.
QString adjustDartsText();

} // namespace tavrix
