// Play mode against another copy of the program: starting the connection,
// what this side sends as its player throws, and what the other side's
// messages do to the game. Each copy scores both players' sets itself; the
// other player's darts arrive as marker positions and are revealed like the
// computer's.

#include "ui/play/play_controller.h"

#include "ui/board/board_picture.h"
#include "ui/dialogs/messages.h"
#include "ui/net/chat_dialog.h"
#include "core/games/match_play.h"
#include "core/net/net_game_rules.h"
#include "core/net/network_peer.h"
#include "ui/net/network_game.h"
#include "ui/net/opponent_name_dialog.h"
#include "ui/play/game_frame.h"
#include "core/session/session.h"

#include <QLabel>
#include <QPushButton>

namespace tavrix {

void PlayController::connectNetwork()
{
    net_ = new NetworkGame(
        c_.messages, c_.window,
        [this] {
            if (!opponentDialog_)
                return std::pair<QString, QString>();
            return std::pair{opponentDialog_->getTxtClientHost(), opponentDialog_->getTxtClientPort()};
        },
        [this] { return c_.session.currentPlayerName; }, this);
    connect(net_, &NetworkGame::startAllowed, this, [this] { c_.frame.btnStartGame->setEnabled(true); });
    connect(net_, &NetworkGame::greeted, this, &PlayController::greeted);
    connect(net_, &NetworkGame::gameChosen, this, &PlayController::gameChosen);
    connect(net_, &NetworkGame::peerGone, this, &PlayController::peerGone);
    connect(net_, &NetworkGame::matchProposed, this, &PlayController::matchProposed);
    connect(net_, &NetworkGame::matchAccepted, this, &PlayController::matchAccepted);
    net_->setPeer(peer_);
    // This side clicked "Ok" first and waited: the first turn starts.
    connect(peer_, &NetworkPeer::firstTurnAgreed, this, &PlayController::nextTurn);
    // This side asked to play again first and stood by.
    connect(peer_, &NetworkPeer::playAgainAgreed, this, &PlayController::startHumanGame);
    connect(peer_, &NetworkPeer::playAgainRequested, this, &PlayController::playAgainAsked);
    connect(peer_, &NetworkPeer::peerQuit, this, &PlayController::peerQuit);
}

void PlayController::setNetIndicators(QAction *closeNet, QAction *showChat)
{
    net_->setIndicators(c_.frame.lblNetworkActive, closeNet, showChat);
    connect(closeNet, &QAction::triggered, this, &PlayController::closeNetClicked);
    c_.board.setChatWindow(net_->chat());
    net_->chat()->setKeepClear(c_.board.picture());
}

void PlayController::startNetworkConnection()
{
    if (net_->role() == NetRole::Server)
        net_->waitForConnect(opponentName_, opponentDialog_->getTxtServerPort());
    else
        net_->connectToServer(opponentName_, opponentDialog_->getTxtClientHost(),
                              opponentDialog_->getTxtClientPort());
}

void PlayController::leavePlay()
{
    if (net_->established() && game_.overNetwork() && gameInProgress())
        peer_->quit();
}

void PlayController::closeNetClicked()
{
    // Closing ends the game on this side as well: during one, ask first.
    if (gameInProgress()
        && !c_.messages.askYesNo(c_.window, QStringLiteral("Close Net Connection?"),
                                 QStringLiteral("Close the connection and quit the game in progress?")))
        return;
    net_->closeConnection();
    resetGame();
    c_.board.picture()->setEnabled(false);
}

// --- Waiting for the other side ---------------------------------------------

void PlayController::awaitPeerOk()
{
    GameFrame &f = c_.frame;
    f.btnStartGame->setEnabled(false);
    c_.board.hidePips();
    f.colourThrower(game_.currentThrower());
    f.gameText->setText(okWaitText(f.player1Text->text()));
}

// --- What the other side's messages do ---------------------------------------

void PlayController::greeted(const QString &name)
{
    opponentName_ = name;
    c_.frame.player1Text->setText(name);
    c_.frame.player1Text01->setText(name);
    // A new connection: the other copy may know matches.
    peerSinglesOnly_ = false;
    proposal_ = Proposal::None;
    acceptedHere_ = false;
    matchOfferOpen_ = false;
    matchFormat_ = MatchFormat::singleGame();
    // The server answers the greeting with the game it set up, and proposes
    // the match format of its set-up.
    if (net_->role() == NetRole::Server) {
        net_->send(gameMessageOf(optionsOnFrame()));
        proposeMatch();
    }
    serverGameAwaited_ = net_->role() == NetRole::Client;
    startHumanGame();
}

void PlayController::gameChosen(const GameMessage &message)
{
    if (!net_->established())
        return;
    // A game in progress here is not restarted by the other side, except
    // with the options the server sends right after its greeting.
    if (gameInProgress() && !serverGameAwaited_)
        return;
    serverGameAwaited_ = false;
    if (message.game != NetGame::Other) {
        const GameOptions chosen = optionsAfter(GameOptions{}, message);
        form_.chooseGame(chosen.type);
        setGameOptFrames(chosen.type);
        form_.showGameOptions(chosen);
    }
    // A game over the network is always against the other copy's player.
    form_.chooseOpponent(OpponentKind::Human);
    GameOptions options = optionsAfter(game_.options(), message);
    options.opponent = OpponentKind::Human;
    game_.reviseOptions(options);
    // A single game unless the match format the other copy may propose
    // next comes before this side's cork dart.
    nextLeg_ = false;
    proposal_ = Proposal::None;
    acceptedHere_ = false;
    matchOfferOpen_ = true;
    matchFormat_ = MatchFormat::singleGame();
    net_->choose(true, net_->role());
    c_.board.hidePips();
    startHumanGame();
}

void PlayController::playAgainAsked()
{
    c_.messages.hideAlert();
    // Before this side has seen the game end, the request waits for it.
    if (game_.phase() == GamePhase::GameOver) {
        refreshButton();
        c_.frame.gameText->setText(matchContinues() ? nextLegConsentText(opponentName_)
                                                    : playAgainConsentText(opponentName_));
    }
}

void PlayController::peerQuit()
{
    // Only a game with the other copy, running or over, is quit: a game at
    // this board goes on, and once this side is back at its options there
    // is nothing left to quit.
    if (game_.phase() == GamePhase::Idle || !game_.overNetwork())
        return;
    const NetRole role = net_->role();
    resetGame();
    c_.board.picture()->setEnabled(false);
    c_.messages.notice(c_.window, quitTitle(opponentName_), quitText(opponentName_, role));
}

void PlayController::peerGone()
{
    // A game at this board, not with the other copy, goes on.
    if (gameInProgress() && !game_.overNetwork())
        return;
    peerLeft_ = true;
    peer_->stop();
    // A match with the copy that left ends unfinished.
    abandonMatch();
    GameFrame &f = c_.frame;
    f.btnStartGame->setEnabled(false);
    f.btnQuitGame->setEnabled(true);
    f.btnUndoDart->setEnabled(false);
    c_.board.picture()->setEnabled(false);
    f.lblGameStartup->hide();
    f.gameText->show();
    f.gameText->setText(disconnectedText(opponentName_));
}

} // namespace tavrix
