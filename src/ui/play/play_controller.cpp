#include "ui/play/play_controller.h"

#include "ui/advice/aim_advice_service.h"
#include "ui/board/board_picture.h"
#include "ui/dialogs/messages.h"
#include "ui/dialogs/stats_rescue.h"
#include "core/games/match_play.h"
#include "core/net/net_game_rules.h"
#include "core/net/network_peer.h"
#include "core/opponent/dart_by_dart_opponent.h"
#include "ui/net/network_game.h"
#include "ui/play/game_frame.h"
#include "ui/play/score_glance.h"
#include "core/session/session.h"
#include "ui/sound/sounds.h"
#include "core/stats/game_journal.h"
#include "core/stats/game_store.h"

#include <QLabel>
#include <QPushButton>
#include <QShortcut>

namespace tavrix {

PlayController::PlayController(const Context &context, QObject *parent)
    : QObject(parent)
    , c_(context)
    , game_(context.advisor, context.session)
    , form_(context.frame)
    , x01Board_(context.frame)
    , cricketBoard_(context.frame)
    , journal_(new GameJournal(context.store, this))
{
    c_.rescue.setJournal(journal_);
    connect(journal_, &GameJournal::firstFailure, this, [this] {
        // A file that is gone is said by record(), whenever it is found.
        if (c_.rescue.fileLost())
            return;
        c_.messages.error(c_.window, QString::fromLatin1(applicationTitle),
                          QStringLiteral("Tavrix could not save your darts yet: ") + c_.store.lastError()
                              + QStringLiteral(".\r\n\r\nThey are kept and will be saved as soon as %1.")
                                    .arg(c_.store.whenWritableAgain()));
    });
    computer_ = new ComputerOpponent(c_.sounds, c_.session.random, c_.skill.profile, this);
    peer_ = new NetworkPeer(c_.sounds, game_, [this](const NetMessage &message) { return net_->send(message); }, this);
    connectNetwork();
    // Fresh advice shows at once in the turn it was awaited in.
    connect(&c_.aims, &AimAdviceService::adviceReady, this, [this](qint64 playerId) {
        if (playerId == c_.session.currentPlayerId)
            showYourOut();
    });

    GameFrame &f = c_.frame;
    connect(f.btnStartGame, &QPushButton::clicked, this, &PlayController::btnStartGameClicked);
    connect(f.btnQuitGame, &QPushButton::clicked, this, &PlayController::btnQuitGameClicked);
    connect(f.btnUndoDart, &QPushButton::clicked, this, &PlayController::undoDart);
    // Owned by the frame, the keys act only while it is shown and enabled,
    // that is in play mode, and not while a dialog has the keyboard.
    auto *undoKeys = new QShortcut(&f);
    undoKeys->setObjectName(QStringLiteral("undoDartShortcut"));
    undoKeys->setContext(Qt::WindowShortcut);
    undoKeys->setKeys(QKeySequence::keyBindings(QKeySequence::Undo) << QKeySequence(Qt::Key_Backspace));
    connect(undoKeys, &QShortcut::activated, this, &PlayController::undoDart);
    for (const auto &[button, type] : form_.gameButtons()) {
        connect(button, &QAbstractButton::clicked, this, [this, type = type] {
            c_.frame.btnStartGame->setText(QStringLiteral("Start Game"));
            setGameOptFrames(type);
        });
    }
    for (const auto &[button, kind] : form_.opponentButtons())
        connect(button, &QAbstractButton::clicked, this, [this, kind = kind] { opOpponentClicked(kind); });
    for (const auto &[button, level] : form_.skillButtons())
        connect(button, &QAbstractButton::clicked, this, [this, level = level] { opSkillClicked(level); });

    connect(&game_, &GameSession::corkAwaited, this, &PlayController::corkAwaited);
    connect(&game_, &GameSession::corkDecided, this, &PlayController::corkDecided);
    connect(&game_, &GameSession::dartPlaced, this, &PlayController::dartPlaced);
    connect(&game_, &GameSession::turnStarted, this, &PlayController::turnStarted);
    connect(&game_, &GameSession::turnReported, this, &PlayController::turnReported);

    form_.chooseGame(GameType::X01_501);
    form_.chooseOpponent(OpponentKind::Computer);
    opOpponentClicked(OpponentKind::Computer);
    setGameOptFrames(GameType::X01_501);
}

PlayController::~PlayController() = default;

bool PlayController::gameInProgress() const
{
    return (game_.phase() != GamePhase::Idle && game_.phase() != GamePhase::GameOver) || matchContinues();
}

void PlayController::databaseFailed()
{
    c_.rescue.reportFailure(c_.window, c_.store.lastError());
}

void PlayController::record(const QList<GameDart> &rows, std::optional<std::pair<qint64, GameResult>> finished)
{
    // Darts kept for a file that is gone are saved only into another one,
    // so that is said (once) also when the writes were failing before.
    if (!journal_->record(rows, finished) && c_.rescue.fileLost())
        c_.rescue.tellFileLost(c_.window, c_.store.lastError());
}

bool PlayController::saveBeforeClosing()
{
    // A match left with the program ends here, unfinished.
    abandonMatch();
    enum Choice { TryAgain, AnotherFile, QuitWithout };
    while (!journal_->flushForGood()) {
        const int choice = c_.messages.choose(
            c_.window, QString::fromLatin1(applicationTitle),
            QStringLiteral("Tavrix could not save %1 darts of your games: ").arg(journal_->pendingRows())
                + c_.store.lastError()
                + QStringLiteral(".\r\n\r\nTry again, save them into another file, or quit without them?"),
            {QStringLiteral("Try Again"), QStringLiteral("Save to Another File..."),
             QStringLiteral("Quit Without Them")},
            TryAgain);
        if (choice == QuitWithout)
            return false;
        if (choice == AnotherFile && c_.rescue.saveIntoAnotherFile(c_.window))
            return true;
    }
    return true;
}

// --- The main button -------------------------------------------------------

// The button says what clicking it does now, and is enabled when that can be done.
void PlayController::refreshButton()
{
    // Between the legs of a match the button starts the next one.
    c_.frame.btnStartGame->setText(game_.phase() == GamePhase::GameOver && matchContinues()
                                       ? QStringLiteral("Next Leg")
                                       : mainButtonCaption(game_.phase(),
                                                           game_.throwerMarksHere() || game_.overNetwork()));
    const bool waiting = peerLeft_ || peer_->awaitingFirstTurn() || (game_.overNetwork() && peer_->awaitingPlayAgain());
    c_.frame.btnStartGame->setEnabled(game_.canConfirm() && !waiting);
    c_.frame.btnUndoDart->setEnabled(game_.canUndoDart());
}

void PlayController::btnStartGameClicked()
{
    c_.board.hideHover();
    switch (game_.phase()) {
    case GamePhase::Idle:
    case GamePhase::GameOver:
        startGame(game_.phase() == GamePhase::GameOver);
        break;
    case GamePhase::CorkPlaced:
        c_.frame.btnStartGame->setEnabled(false);
        if (game_.overNetwork()) {
            peer_->corkConfirmed();
            // A match proposed after this cork dart would come too late.
            matchOfferOpen_ = false;
        }
        game_.confirmCork();
        break;
    case GamePhase::CorkResult:
    case GamePhase::Turn:
        okClicked();
        break;
    case GamePhase::CorkAwaited:
        break;
    }
}

void PlayController::showGlance()
{
    GameFrame &f = c_.frame;
    for (int player : {1, 2}) {
        f.scoreGlance->showName(player, game_.options().names[player - 1]);
        f.scoreGlance->showFigures(player, game_.glance(player));
    }
    scoreBoard_->showStanding(game_);
    const bool throwing = game_.phase() == GamePhase::Turn;
    f.scoreGlance->markThrower(throwing ? game_.currentThrower() : 0);
    showMatchGlance();
    showYourOut();
}

void PlayController::showYourOut()
{
    QString text;
    bool needsDarts = false;
    // Player 2 is the player at this board whose darts are recorded.
    constexpr int local = 2;
    const int darts = 3 - game_.dartsPlaced();
    const std::optional<int> left = game_.glance(local).checkoutLeft;
    if (game_.phase() == GamePhase::Turn && game_.currentThrower() == local && game_.throwerMarksHere() && left
        && canFinish(*left, darts)) {
        const std::shared_ptr<const PersonalAdvice> advice = c_.aims.advice(c_.session.currentPlayerId);
        if (!advice) {
            text = QStringLiteral("Working out your checkouts...");
        } else if (advice->checkouts) {
            text = yourOutText(*advice->checkouts, *left, darts);
        } else if (yourOutNeeds_ != YourOutNeeds::Said) {
            text = needMoreDartsText(advice->fit.fitted);
            needsDarts = true;
        }
    }
    // That more darts are needed is said while one checkout lasts, and not
    // again in the game.
    if (needsDarts)
        yourOutNeeds_ = YourOutNeeds::Saying;
    else if (yourOutNeeds_ == YourOutNeeds::Saying)
        yourOutNeeds_ = YourOutNeeds::Said;
    c_.frame.scoreGlance->showYourOut(text);
}

// --- The cork --------------------------------------------------------------------

void PlayController::corkAwaited(int player)
{
    syncBoard();
    if (!game_.throwerMarksHere()) {
        if (game_.overNetwork())
            c_.frame.gameText->setText(corkWaitText(opponentName_));
        refreshButton();
        return;
    }
    if (game_.options().keepStats)
        moveTarget(0, {0, 0});
    c_.frame.gameText->setText(corkPrompt(game_.options().names[player - 1]));
    c_.board.picture()->setEnabled(true);
    refreshButton();
}

void PlayController::corkDecided()
{
    c_.frame.gameText->setText(game_.corkResultText());
    refreshButton();
    record(game_.corkRows());
    startMatch();
}

// --- Turns ------------------------------------------------------------------------------

void PlayController::okClicked()
{
    if (game_.phase() == GamePhase::CorkResult) {
        if (game_.overNetwork() && !peer_->agreeToFirstTurn()) {
            awaitPeerOk();
            return;
        }
        nextTurn();
        return;
    }
    const SetOutcome outcome = game_.scoreSet();
    // The other copy shows and scores this side's sets as they are confirmed.
    if (game_.overNetwork() && outcome.player == 2)
        peer_->setConfirmed();
    c_.frame.btnUndoDart->setEnabled(false);
    showOutcome(outcome);
    showGlance();
    if (!outcome.won)
        nextTurn();
}

void PlayController::nextTurn()
{
    c_.frame.btnStartGame->setEnabled(false);
    c_.board.hidePips();
    game_.nextTurn();
}

void PlayController::turnStarted(int player)
{
    setGameStats();
    syncBoard();
    c_.frame.colourThrower(player);
    showGlance();
    refreshButton();
    if (!game_.throwerMarksHere()) {
        c_.board.picture()->setEnabled(false);
        c_.board.hideHover();
        c_.board.hideMarkersFrom(markerSet(player), 0);
        if (game_.overNetwork())
            c_.frame.gameText->setText(turnWaitText(game_.options().names[player - 1]));
        return;
    }
    c_.frame.gameText->setText(game_.turnPromptText());
    if (game_.advisesFirstDart())
        showAdvice();
    c_.board.picture()->setEnabled(true);
}

void PlayController::turnReported(const QString &report)
{
    c_.frame.gameText->setText(report);
    refreshButton();
}

void PlayController::showOutcome(const SetOutcome &outcome)
{
    const int p = outcome.player;
    const QString name = game_.messageName(p);
    QRandomGenerator &random = c_.session.random;
    if (outcome.doubleIn == SetOutcome::DoubleIn::DoubledIn)
        c_.messages.alert(game_.alertName(p) + QStringLiteral(" doubled in!"),
                          alertTitle(AlertKind::DoubledIn, random));
    else if (outcome.doubleIn == SetOutcome::DoubleIn::Missed)
        c_.messages.alert(game_.alertName(p) + QStringLiteral(" didn't double in."),
                          alertTitle(AlertKind::NotDoubledIn, random));
    // The winning set is written with the end of the game.
    if (!outcome.won)
        record(outcome.rows);
    scoreBoard_->showDarts(outcome);
    if (outcome.bust) {
        c_.sounds.play(SoundCue::Awwww, false);
        c_.messages.alert(name + QStringLiteral(" busted."), alertTitle(AlertKind::Bust, random));
    }
    if (outcome.won) {
        endGame(outcome);
        return;
    }
    // Applause waits when the thrower stands at this board.
    if (outcome.applause)
        c_.sounds.play(*outcome.applause,
                       p == 2 || (game_.options().opponent == OpponentKind::Human && !game_.overNetwork()));
    scoreBoard_->showSetEnd(outcome);
}

void PlayController::endGame(const SetOutcome &outcome)
{
    const int p = outcome.player;
    c_.sounds.play(SoundCue::ApplauseWin, false);
    // A leg of a match has its own alert. A game's is not shown when the
    // other side has already asked to play again.
    if (!matchLegWon(p) && !(game_.overNetwork() && peer_->playAgainAsked()))
        c_.messages.alert(game_.alertName(p) + QStringLiteral(" won!"), QStringLiteral("Good Game!"));
    x01Board_.markWinner(p);
    if (p == 2)
        record_.bestLeg = std::min(record_.bestLeg, outcome.result.throws);
    record(outcome.rows, std::pair{game_.gameId(), outcome.result});
    setGameStats();
    GameOver();
}

void PlayController::GameOver()
{
    const bool asked = game_.overNetwork() && peer_->playAgainAsked();
    if (matchContinues())
        c_.frame.gameText->setText(asked ? nextLegConsentText(opponentName_)
                                         : nextLegText(game_.messageName(game_.legWinner())));
    else
        c_.frame.gameText->setText(asked ? playAgainConsentText(opponentName_) : game_.gameOverText());
    showGlance();
    refreshButton();
    c_.frame.btnQuitGame->setEnabled(true);
}

} // namespace tavrix
