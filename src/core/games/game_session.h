#pragma once

// One game between player 1 (the opponent) and player 2 (the local player),
// without any widget: its phase, whose turn it is, the cork, the darts of the
// set being thrown, and what a confirmed set did. The scores, marks, texts
// and advice belong to the rules of the game's type (GameRules), which it
// asks. The window shows what this model says; the two sides feed it darts
// through the Thrower interface and never tell it who they are.

#include "core/board/board_geometry.h"
#include "core/games/game_options.h"
#include "core/games/game_rules.h"
#include "core/games/match_rules.h"
#include "core/games/play_rules.h"
#include "core/stats/local_tallies.h"
#include "core/stats/records.h"

#include <QObject>

#include <array>
#include <memory>
#include <optional>

namespace tavrix {

class Advisor;
class Thrower;
struct Session;

enum class GamePhase {
    Idle,        // no game: the options are shown
    CorkAwaited, // a side is to throw its cork dart
    CorkPlaced,  // the cork dart is on the board, to be confirmed
    CorkResult,  // both cork darts are in and the first thrower named
    Turn,        // a side throws the darts of a turn
    GameOver,
};

// What the main button of play says in `phase`. While a cork is awaited it
// says "Confirm Dart" when `corkConfirmedHere` (the cork is marked at this
// board, or the game is over the network, where the button waits for the
// other side's cork), and "Ok" otherwise.
QString mainButtonCaption(GamePhase phase, bool corkConfirmedHere);

// What a confirmed set did, in the order it is to be shown: what the rules
// made of it, the local player's darts to record, and the `games` row when
// it won.
struct SetOutcome : ScoredSet {
    int player = 0;
    QList<GameDart> rows;
    GameResult result;
};

// The sounds of a dart: its landing, which the thrower waits for, and the
// sound of a hit, which only the computer's darts wait for.
struct DartSounds {
    SoundCue landing = SoundCue::Splat;
    std::optional<SoundCue> hit;
    bool hitWaits = false;
};

class GameSession : public QObject {
    Q_OBJECT

public:
    GameSession(const Advisor &advisor, const Session &session, QObject *parent = nullptr);

    // Player 1's side and player 2's; kept until changed.
    void setThrowers(Thrower *player1, Thrower *player2);

    // The options of a game about to start, chosen on "Start Game" whether
    // or not the game then starts.
    void chooseOptions(const GameOptions &options);
    // Other options for the game about to start without a new "Start Game"
    // (a network peer chose them): the options compared for clearing the
    // tallies stay those before the last "Start Game".
    void reviseOptions(const GameOptions &options);
    // The game goes ahead: the tallies of the present opponent are cleared
    // when its type, skill or opponent differ from the options chosen before.
    void prepare();
    // Starts the game with its options complete, recorded under `gameId`:
    // the cork of `firstCorkThrower` is awaited first.
    void start(const GameOptions &options, qint64 gameId, int firstCorkThrower);
    // Starts a leg of a match after the first, recorded under `gameId`:
    // there is no cork, and `firstThrower` (1 or 2) throws first as soon as
    // nextTurn() is called.
    void startLeg(const GameOptions &options, qint64 gameId, int firstThrower);
    // Back to no game; a side throwing stops.
    void reset();

    // A dart of the side whose cork or turn it is, where it landed: it is
    // described, scored and recorded at that very point, where its marker
    // stands. Returns the dart's index in its set, or -1 when no dart is
    // awaited.
    int placeDart(BoardPoint at);
    // Takes back the last dart marked at this board in the set being thrown,
    // as though it had never been placed. Returns its index, or -1 when there
    // is no such dart (no turn, a side that does not mark here, a cork).
    int undoDart();
    bool canUndoDart() const;
    // A marked dart of the current set (or the cork dart, index 0) moved.
    void moveDart(int index, BoardPoint at);
    // Where the local player aims dart `index` of a set, as shown on the board.
    void setTarget(int index, BoardPoint at);
    // The cork dart placed is final: the other side's cork is awaited, or the
    // first thrower is named.
    void confirmCork();
    // The side whose turn it is has thrown; `report` says what.
    void reportTurn(const QString &report);
    // Scores the set thrown and hands the turn on (or ends the game).
    SetOutcome scoreSet();
    // The next turn starts.
    void nextTurn();

    GamePhase phase() const { return phase_; }
    const GameOptions &options() const { return options_; }
    qint64 gameId() const { return gameId_; }
    // Whose cork or turn it is: 1 or 2.
    int currentThrower() const { return thrower_; }
    bool throwerMarksHere() const;
    bool vsComputer() const { return options_.opponent == OpponentKind::Computer; }
    bool overNetwork() const { return options_.netRole != NetRole::None; }
    // How messages name a player: "I" and "You" against the computer.
    QString messageName(int player) const;
    // How the alerts of doubling in and winning name a player: as messages
    // do, but the local player is "You" over the network too.
    QString alertName(int player) const;
    // Whether the main button may be clicked now.
    bool canConfirm() const;

    // The rules of the game being played (or last set up).
    const GameRules &rules() const { return *rules_; }

    // The darts of the set being thrown, and how many were placed.
    const SetDarts &setDarts() const { return set_; }
    int dartsPlaced() const { return placed_; }
    std::optional<BoardPoint> corkDart(int player) const { return cork_[player - 1]; }
    // The area the target of dart `index` stands on.
    DartScore targetScore(int index) const;
    // Player 1's distance and player 2's, and the cork rows to record.
    QString corkResultText() const;
    QList<GameDart> corkRows() const;

    // The player's standing for the large figures beside the score board,
    // the thrower's with the darts of the set marked so far; and the numbers
    // both players have closed (Cricket).
    GlanceFigures glance(int player) const;
    std::array<bool, 7> closedNumbers() const { return rules_->closedNumbers(); }

    // Each player's points and darts in the game so far (player 1's first):
    // 301/501 the points scored, a bust scoring none; Cricket the marks.
    LegFigures legFigures() const { return legFigures_; }

    // The record against the present opponent since it was last cleared.
    const LocalTallies &tallies() const { return tallies_; }

    // Where the thrower at this board is advised to aim the next dart.
    std::optional<BoardPoint> advice() const;
    // Whether the first dart of the turn that starts is advised.
    bool advisesFirstDart() const { return rules_->advisesFirstDart(thrower_); }
    // The text of the turn so far for the thrower marking at this board; the
    // turn's prompt while no dart is marked.
    QString liveText() const;
    // "Name: Throw your darts..." when a turn at this board starts.
    QString turnPromptText() const;
    QString gameOverText() const;
    // Who won the game that is over (1 or 2); 0 before.
    int legWinner() const { return winner_; }

    // The sounds of dart `index` of the set: a dart marked at this board was
    // aimed at its target, a dart of another side at `aimedAt`.
    DartSounds dartSounds(int index, std::optional<DartScore> aimedAt = std::nullopt) const;

    // A side throwing dart by dart: where the computer aims next, whether the
    // turn is decided, and the points its report names.
    std::optional<ComputerAim> computerAim() const { return rules_->computerAim(thrower_, set_); }
    bool turnDecided() const { return rules_->turnDecided(thrower_, set_); }
    std::optional<int> reportedPoints() const { return rules_->reportedPoints(thrower_, set_); }

signals:
    // The cork of `player` is awaited.
    void corkAwaited(int player);
    // The first thrower is named (corkResultText, corkRows).
    void corkDecided();
    // A dart was placed for `player`, index `index` of the set (0 for a cork).
    void dartPlaced(int player, int index);
    // The turn of `player` starts.
    void turnStarted(int player);
    // The side throwing reported its turn.
    void turnReported(const QString &report);

private:
    void begin(const GameOptions &options, qint64 gameId);
    void awaitCork(int player);
    void countLegFigures(int player, const ScoredSet &set);
    GameDart dartRow(int index, DartScore score, BoardPoint at) const;

    const Advisor &advisor_;
    const Session &session_;
    std::unique_ptr<GameRules> rules_;
    std::array<Thrower *, 2> throwers_{};

    GameOptions options_;
    // Type, skill and opponent of the options chosen now and before.
    std::array<int, 3> codes_{};
    std::array<int, 3> previousCodes_{};
    GamePhase phase_ = GamePhase::Idle;
    qint64 gameId_ = 0;
    int thrower_ = 2;
    int firstCorkThrower_ = 2;
    std::array<std::optional<BoardPoint>, 2> cork_;
    SetDarts set_{};
    int placed_ = 0;
    bool reported_ = false;
    // The set was scored; it stays on the board until the next turn.
    bool scored_ = false;
    // Targets stay where they were last put, also from one set to the next.
    std::array<BoardPoint, 3> targets_;

    int setSeq_ = 0;
    int localThrows_ = 0;
    LocalTallies tallies_;
    int winner_ = 0;
    LegFigures legFigures_;
};

} // namespace tavrix
