#pragma once

// Play mode: reads the game options, starts games, and shows what the game
// model says: the prompts, the cork, the darts as markers, the score boards,
// the records beside the board, the alerts and the sounds. Board clicks and
// drops become darts of the person at this board; the computer's darts come
// through the same model. Confirmed sets and finished games go to the store.

#include "ui/board/board_input.h"
#include "core/games/game_session.h"
#include "core/games/match_rules.h"
#include "core/net/message_codec.h"
#include "core/stats/match_log.h"
#include "core/opponent/local_player.h"
#include "ui/play/game_setup_form.h"
#include "ui/play/record_labels.h"
#include "ui/play/score_boards.h"

#include <QObject>

#include <memory>

class QAction;
class QLabel;
class QTimer;
class QWidget;

namespace tavrix {

class Advisor;
class AimAdviceService;
class ComputerOpponent;
class NetworkGame;
class NetworkPeer;
class GameFrame;
class GameJournal;
class Messages;
class OpponentNameDialog;
class Sounds;
class GameStore;
class StatsRescue;
struct Session;
struct SkillProfileState;

class PlayController : public QObject, public BoardController {
    Q_OBJECT

public:
    struct Context {
        Session &session;
        GameStore &store;
        Sounds &sounds;
        Messages &messages;
        const Advisor &advisor;
        SkillProfileState &skill;
        BoardInput &board;
        GameFrame &frame;
        // The records beside the game, on the board.
        const RecordLabels &records;
        QWidget *window;
        // Says failed writes, and saves into another file a file lost.
        StatsRescue &rescue;
        // The checkouts worked out from the player's own darts.
        AimAdviceService &aims;
    };
    explicit PlayController(const Context &context, QObject *parent = nullptr);
    ~PlayController() override;

    GameSession &game() { return game_; }
    const GameSession &game() const { return game_; }
    // A game has started and is not over, or a match goes on between its
    // legs: leaving it needs a question.
    bool gameInProgress() const;
    // The question before a game or match in progress is left: its title
    // and text.
    std::pair<QString, QString> quitQuestion() const;
    // The match being played, if any (none in a single game).
    const std::optional<Match> &match() const { return match_; }

    void resetGame();
    void setGameOptFrames(GameType type);
    // The connection to another copy of the program, its chat and its
    // indicators.
    NetworkGame *network() const { return net_; }
    // "Network Connection Active" is on the frame; the two menu entries of
    // the connection are the window's.
    void setNetIndicators(QAction *closeNet, QAction *showChat);
    // Play mode is left with the game in it ended: the other copy is told.
    void leavePlay();
    // Writes what could not be written so far. For the end of the program:
    // while it cannot be written, asks whether to try again, to save into
    // another file, or to quit without those darts; false after the last.
    bool saveBeforeClosing();

    // The board, in play mode.
    void pointerOver(const PointerSpot &spot) override;
    void pointerLeft() override;
    void boardClicked(BoardPoint at, int flight) override;
    bool mayDrag(MarkerSet set, bool rightButton) const override;
    void markerDropped(MarkerSet set, int index, BoardPoint at, QPointF pixel) override;

private:
    void btnStartGameClicked();
    void btnQuitGameClicked();
    void opOpponentClicked(OpponentKind kind);
    void opSkillClicked(SkillLevel level);

    void startGame(bool playAgain);
    // The options chosen at "Start Game" with those read when the game
    // starts: the game's own options, keeping statistics, the network end.
    GameOptions optionsOnFrame() const;
    void continueStartGame(int firstCorkThrower);
    // The large figures and the closed numbers, as the model stands: the
    // thrower's figures with the darts marked so far.
    void showGlance();
    // The checkout from the local player's own darts, during his turn in a
    // double-out game while the darts left can finish.
    void showYourOut();
    void okClicked();
    void nextTurn();

    // What the model reports.
    void corkAwaited(int player);
    void corkDecided();
    void dartPlaced(int player, int index);
    void turnStarted(int player);
    void turnReported(const QString &report);
    void showOutcome(const SetOutcome &outcome);
    void endGame(const SetOutcome &outcome);
    void GameOver();

    // A game over the network.
    void connectNetwork();
    void startNetworkConnection();
    void startHumanGame();
    // This side clicked "Ok" after the cork; the other has not yet.
    void awaitPeerOk();
    void greeted(const QString &name);
    void gameChosen(const GameMessage &message);
    void playAgainAsked();
    void peerQuit();
    void peerGone();
    void closeNetClicked();

    // A match of legs (play_match.cpp).
    bool matchContinues() const;
    // The format of the next match from the set-up, for a game at this board
    // or proposed by this side as server.
    void chooseMatchFormat();
    // The first thrower of a match's first leg is known: the match starts.
    void startMatch();
    // Starts the next leg of the match without a cork.
    void startNextLeg(const GameOptions &options, qint64 gameId);
    // A leg was won: the match's score moves on, with its alert; false when
    // the leg was a single game.
    bool matchLegWon(int winner);
    // The match ends unfinished (quit, the other copy left or changed the
    // game); recorded as abandoned.
    void abandonMatch();
    void showMatchGlance();
    void recordMatch(std::optional<MatchLeg> leg, std::optional<MatchEnd> end = {});
    MatchEnd matchEnd() const;
    // Over the network: the server's proposal and the client's answer.
    void proposeMatch();
    void matchProposed(int sets, int legs);
    void matchAccepted();

    void refreshButton();
    // The last dart marked in the set goes, as though never thrown.
    void undoDart();
    void syncBoard();
    ThrowPhase throwPhase() const;
    MarkerSet markerSet(int player) const;
    void showLiveText();
    void showAdvice();
    void moveTarget(int index, BoardPoint at);
    void showCricketMark(const SetOutcome &outcome, const CricketMark &mark);
    // Writes the rows (and the end of the game) in one transaction; a failure
    // is said once, and the rows are written later.
    void record(const QList<GameDart> &rows, std::optional<std::pair<qint64, GameResult>> finished = {});
    void setGameStats();
    void hideGameStats();
    void playHover(const PointerSpot &spot);
    void databaseFailed();

    Context c_;
    GameSession game_;
    LocalPlayer localPlayer_;
    // A second person at this board plays player 1 the same way.
    LocalPlayer personAtBoard_;
    ComputerOpponent *computer_ = nullptr;
    // The player at the other copy, over the network.
    NetworkPeer *peer_ = nullptr;
    NetworkGame *net_ = nullptr;
    // The other copy left in the middle: only "Quit Game" goes on.
    bool peerLeft_ = false;
    // The client has greeted the server and started a game with its own
    // options; the server's options follow in the next game message.
    bool serverGameAwaited_ = false;
    OpponentNameDialog *opponentDialog_ = nullptr;
    QString opponentName_;
    GameRecordFigures record_;
    // Whether the game has said that the player's own checkouts need more
    // darts.
    enum class YourOutNeeds { NotYet, Saying, Said };
    YourOutNeeds yourOutNeeds_ = YourOutNeeds::NotYet;
    GameSetupForm form_;
    X01ScoreBoard x01Board_;
    CricketScoreBoard cricketBoard_;
    // The board of the game being played.
    ScoreBoard *scoreBoard_ = &x01Board_;
    // What a game records; what cannot be written yet is tried again.
    GameJournal *journal_ = nullptr;

    // The format of the match being played, or of the next one; a single
    // game unless a match was chosen (and, over the network, agreed).
    MatchFormat matchFormat_;
    // The match once its first thrower is known, and its row.
    std::optional<Match> match_;
    qint64 matchId_ = 0;
    // "Next Leg" was pressed: the next start is the match's next leg.
    bool nextLeg_ = false;
    // Over the network. This side chose the game and proposed a match: it
    // waits for the answer, or has it; the other copy is known to play
    // single games only.
    enum class Proposal { None, Awaiting, Accepted };
    Proposal proposal_ = Proposal::None;
    bool peerSinglesOnly_ = false;
    // The other copy chose the game: this side may still take its format
    // (the game has started here and this side's cork dart has not gone
    // out), or took it.
    bool matchOfferOpen_ = false;
    bool acceptedHere_ = false;
};

} // namespace tavrix
