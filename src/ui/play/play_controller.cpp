#include "ui/play/play_controller.h"

#include "ui/board/board_picture.h"
#include "ui/dialogs/messages.h"
#include "core/net/net_game_rules.h"
#include "ui/net/network_game.h"
#include "ui/net/opponent_name_dialog.h"
#include "core/net/network_peer.h"
#include "core/opponent/dart_by_dart_opponent.h"
#include "ui/opponent/skill_options.h"
#include "core/opponent/skill_profile.h"
#include "ui/play/game_frame.h"
#include "ui/play/score_glance.h"
#include "core/session/session.h"
#include "ui/sound/sounds.h"
#include "core/stats/game_record.h"
#include "core/stats/game_store.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QSlider>
#include <QTimer>

namespace tavrix {

namespace {

int selected(const QList<QAbstractButton *> &group)
{
    for (int i = 0; i < group.size(); ++i) {
        if (group[i]->isChecked())
            return i + 1;
    }
    return 0;
}

} // namespace

PlayController::PlayController(const Context &context, QObject *parent)
    : QObject(parent)
    , c_(context)
    , game_(context.advisor, context.session)
    , recorder_(context.store)
    , saveRetryTimer_(new QTimer(this))
{
    saveRetryTimer_->setObjectName(QStringLiteral("saveRetryTimer"));
    saveRetryTimer_->setInterval(5000);
    connect(saveRetryTimer_, &QTimer::timeout, this, &PlayController::retrySaving);
    computer_ = new ComputerOpponent(c_.sounds, c_.session.random, c_.skill.profile, this);
    peer_ = new NetworkPeer(c_.sounds, game_, [this](const NetMessage &message) { return net_->send(message); }, this);
    connectNetwork();

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
    for (int i = 0; i < f.opGame.size(); ++i) {
        connect(f.opGame[i], &QAbstractButton::clicked, this, [this, i] {
            c_.frame.btnStartGame->setText(QStringLiteral("Start Game"));
            setGameOptFrames(i);
        });
    }
    for (int i = 0; i < f.opOpponent.size(); ++i)
        connect(f.opOpponent[i], &QAbstractButton::clicked, this, [this, i] { opOpponentClicked(i); });
    const QList<QAbstractButton *> skills = f.fraSkill->options();
    for (int i = 0; i < skills.size(); ++i)
        connect(skills[i], &QAbstractButton::clicked, this, [this, i] { opSkillClicked(i); });

    connect(&game_, &GameSession::corkAwaited, this, &PlayController::corkAwaited);
    connect(&game_, &GameSession::corkDecided, this, &PlayController::corkDecided);
    connect(&game_, &GameSession::dartPlaced, this, &PlayController::dartPlaced);
    connect(&game_, &GameSession::turnStarted, this, &PlayController::turnStarted);
    connect(&game_, &GameSession::turnReported, this, &PlayController::turnReported);

    f.opGame[2]->setChecked(true);
    f.opOpponent[0]->setChecked(true);
    opOpponentClicked(0);
    setGameOptFrames(2);
}

PlayController::~PlayController() = default;

bool PlayController::gameInProgress() const
{
    return game_.phase() != GamePhase::Idle && game_.phase() != GamePhase::GameOver;
}

void PlayController::databaseFailed()
{
    c_.messages.error(c_.window, QString::fromLatin1(applicationTitle), c_.store.lastError());
}

void PlayController::record(const QList<GameDart> &rows, std::optional<std::pair<qint64, GameResult>> finished)
{
    if (recorder_.record(rows, finished)) {
        saveRetryTimer_->stop();
        saveFailureShown_ = false;
        return;
    }
    saveRetryTimer_->start();
    if (saveFailureShown_)
        return;
    saveFailureShown_ = true;
    c_.messages.error(c_.window, QString::fromLatin1(applicationTitle),
                      QStringLiteral("Tavrix could not save your darts yet: ") + c_.store.lastError()
                          + QStringLiteral(".\r\n\r\nThey are kept and will be saved as soon as the "
                                           "statistics file can be written again."));
}

void PlayController::retrySaving()
{
    if (!recorder_.hasPending() || recorder_.flush()) {
        saveRetryTimer_->stop();
        saveFailureShown_ = false;
    }
}

bool PlayController::saveBeforeClosing()
{
    saveRetryTimer_->stop();
    if (recorder_.flush())
        return true;
    c_.messages.error(c_.window, QString::fromLatin1(applicationTitle),
                      QStringLiteral("Tavrix could not save %1 darts of your games: ").arg(recorder_.pendingRows())
                          + c_.store.lastError() + QStringLiteral("."));
    return false;
}

// --- Options -------------------------------------------------------------

void PlayController::setGameOptFrames(int index)
{
    GameFrame &f = c_.frame;
    if (index == 0) {
        f.fraCricketOptions->show();
        f.fraCricketOptions->setEnabled(true);
        f.fra01Options->hide();
        return;
    }
    f.fra01Options->show();
    f.fra01Options->setEnabled(true);
    f.fraCricketOptions->hide();
    f.fraCricketOptions->setEnabled(false);
    const bool is301 = index == 1;
    f.chkDoubleIn->setChecked(is301);
    f.chkDoubleOut->setChecked(true);
    const QString start = is301 ? QStringLiteral("301") : QStringLiteral("501");
    f.fra01Score->setTitle(start + QStringLiteral(" Score"));
    f.p1ScoreText->setText(start);
    f.p2scoretext->setText(start);
}

void PlayController::opSkillClicked(int index)
{
    c_.frame.btnStartGame->setText(QStringLiteral("Start Game"));
    c_.frame.fraMoodFactor->setVisible(index == 3);
    c_.frame.fraMoodFactor->setEnabled(index == 3);
}

void PlayController::opOpponentClicked(int index)
{
    GameFrame &f = c_.frame;
    f.btnStartGame->setText(QStringLiteral("Start Game"));
    const QList<QAbstractButton *> skills = f.fraSkill->options();
    const bool computer = index == 0;
    f.fraSkill->setEnabled(computer);
    for (QAbstractButton *skill : skills)
        skill->setEnabled(computer);
    const bool mood = computer && skills[3]->isChecked();
    f.fraMoodFactor->setVisible(mood);
    f.fraMoodFactor->setEnabled(mood);
    if (computer)
        f.fraSkill->showYouAvailability(c_.skill.youSampleCount);
    else
        f.fraSkill->findChild<QWidget *>(QStringLiteral("fraYouNeedSamples"))->hide();
}

// --- The main button -------------------------------------------------------

// The button says what clicking it does now, and is enabled when that can be done.
void PlayController::refreshButton()
{
    c_.frame.btnStartGame->setText(
        mainButtonCaption(game_.phase(), game_.throwerMarksHere() || game_.overNetwork()));
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
        if (game_.overNetwork())
            peer_->corkConfirmed();
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

void PlayController::startGame(bool playAgain)
{
    GameFrame &f = c_.frame;
    c_.board.hidePips();
    f.btnStartGame->setEnabled(false);
    const bool networkAgain = playAgain && game_.overNetwork();
    GameOptions options;
    options.type = static_cast<GameType>(selected(f.opGame));
    options.skill = static_cast<SkillLevel>(selected(f.fraSkill->options()));
    options.opponent = static_cast<OpponentKind>(selected(f.opOpponent));
    // Playing again over the network stays a game over the network while
    // this side waits for the other's consent.
    if (networkAgain)
        options.netRole = game_.options().netRole;
    game_.chooseOptions(options);

    if (options.opponent == OpponentKind::Computer) {
        f.player1Text->setText(QStringLiteral("Computer"));
        f.player1Text01->setText(f.player1Text->text());
        game_.setThrowers(computer_, &localPlayer_);
        continueStartGame(2);
        return;
    }
    if (networkAgain) {
        if (!peer_->agreeToPlayAgain()) {
            // Asked first: the game starts when the other side agrees.
            f.gameText->setText(standByText());
            return;
        }
    } else if (!playAgain) {
        if (!opponentDialog_)
            opponentDialog_ = new OpponentNameDialog(c_.window);
        opponentDialog_->exec();
        if (opponentDialog_->cancelled()) {
            opponentName_.clear();
        } else {
            const bool network = opponentDialog_->getChkNetworkPlay() == 1;
            net_->choose(network, opponentDialog_->getOpBeServer() ? NetRole::Server : NetRole::Client);
            if (!network) {
                opponentName_ = opponentDialog_->opponentName();
            } else if (net_->established()) {
                // Connected already: the other side restarts with these options.
                net_->send(gameMessageOf(optionsOnFrame()));
            } else {
                startNetworkConnection();
                return;
            }
        }
    }
    if (opponentName_.trimmed().isEmpty()) {
        resetGame();
        return;
    }
    startHumanGame();
}

void PlayController::startHumanGame()
{
    GameFrame &f = c_.frame;
    f.player1Text->setText(opponentName_);
    f.player1Text01->setText(f.player1Text->text());
    const bool network = net_->networkPlay();
    game_.setThrowers(network ? static_cast<Thrower *>(peer_) : &personAtBoard_, &localPlayer_);
    // Over the network the client's cork comes first on both copies.
    continueStartGame(network && net_->role() == NetRole::Client ? 2 : 1);
}

GameOptions PlayController::optionsOnFrame() const
{
    const GameFrame &f = c_.frame;
    GameOptions options = game_.options();
    if (options.type == GameType::Cricket) {
        options.keepStats = f.chkKeepCricketStats->isChecked();
        options.simpleCricket = f.opCricketOptions[0]->isChecked();
    } else {
        options.keepStats = f.chkKeep01stats->isChecked();
        options.doubleIn = f.chkDoubleIn->isChecked();
        options.doubleOut = f.chkDoubleOut->isChecked();
    }
    options.netRole = options.opponent == OpponentKind::Human && net_->networkPlay() ? net_->role() : NetRole::None;
    return options;
}

void PlayController::continueStartGame(int firstCorkThrower)
{
    GameFrame &f = c_.frame;
    f.btnStartGame->setText(QStringLiteral("Confirm Dart"));
    const double moodFactor = -(f.slider1->value() / 100.0);
    GameOptions options = game_.options();
    if (!buildSkillProfile(c_.skill, options.skill, moodFactor, c_.store, c_.session.currentPlayerId))
        databaseFailed();
    for (QWidget *frame : std::initializer_list<QWidget *>{f.fraGame, f.fraCricketOptions, f.fra01Options,
                                                            f.fraOpponent, f.fraSkill}) {
        frame->hide();
        frame->setEnabled(false);
    }
    f.gameText->show();
    // A game still running (the other copy chose new options) ends here.
    game_.reset();
    peerLeft_ = false;
    peer_->newGame();
    game_.prepare();
    setGameStats();
    f.btnQuitGame->setEnabled(true);

    // What an earlier game could not write goes first.
    retrySaving();
    const std::optional<qint64> id = c_.store.insertGame(
        {c_.session.currentPlayerId, options.type, options.skill, f.player1Text->text()});
    if (!id) {
        // Without its row the game could not be recorded: back to the options.
        databaseFailed();
        resetGame();
        return;
    }
    options = optionsOnFrame();
    options.names = {f.player1Text->text(), f.player2Text->text()};
    if (options.type == GameType::Cricket)
        showCricketBoard();
    else
        showX01Board(options.type == GameType::X01_301 ? 301 : 501);
    f.scoreGlance->show();
    f.scoreGlance->setEnabled(true);
    game_.start(options, *id, firstCorkThrower);
    showGlance();
}

void PlayController::showX01Board(int startScore)
{
    GameFrame &f = c_.frame;
    f.fraCricketScore->hide();
    f.fraCricketScore->setEnabled(false);
    f.lblGameStartup->hide();
    f.lblGameStartup->setEnabled(false);
    f.fra01Score->show();
    f.fra01Score->setEnabled(true);
    f.p1ScoreText->setText(QString::number(startScore));
    f.p2scoretext->setText(QString::number(startScore));
}

void PlayController::showGlance()
{
    GameFrame &f = c_.frame;
    for (int player : {1, 2})
        f.scoreGlance->showFigures(player, game_.glance(player));
    if (game_.options().type == GameType::Cricket)
        f.showClosedNumbers(game_.closedNumbers());
    const bool throwing = game_.phase() == GamePhase::Turn;
    f.scoreGlance->markThrower(throwing ? game_.currentThrower() : 0);
}

void PlayController::showCricketBoard()
{
    GameFrame &f = c_.frame;
    const bool simple = f.opCricketOptions[0]->isChecked();
    f.fraCricketScore->show();
    f.fraCricketScore->setEnabled(true);
    f.lblGameStartup->hide();
    f.lblGameStartup->setEnabled(false);
    f.fra01Score->hide();
    f.fra01Score->setEnabled(false);
    for (int slot = 0; slot < 7; ++slot) {
        for (int player : {1, 2})
            f.showMarks(player, slot, 0);
        for (QLabel *points : {f.lblP1Points[slot], f.lblP2Points[slot]}) {
            points->clear();
            points->setVisible(!simple);
            points->setEnabled(!simple);
        }
    }
    for (QLabel *total : {f.lblP1TotalPts, f.lblP2TotalPts, f.lblTotalPts}) {
        total->setVisible(!simple);
        total->setEnabled(!simple);
    }
    f.lblP1TotalPts->setText(QStringLiteral("0"));
    f.lblP2TotalPts->setText(QStringLiteral("0"));
    f.colourThrower(0);
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

void PlayController::showCricketMark(const SetOutcome &outcome, const CricketMark &mark)
{
    GameFrame &f = c_.frame;
    const int player = outcome.player;
    f.showMarks(player, mark.slot, outcome.marksAfter[mark.slot]);
    if (mark.slotPoints) {
        (player == 1 ? f.lblP1Points : f.lblP2Points)[mark.slot]->setText(QString::number(*mark.slotPoints));
        (player == 1 ? f.lblP1TotalPts : f.lblP2TotalPts)->setText(QString::number(outcome.pointsAfter));
    }
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
    for (const CricketMark &mark : outcome.marks)
        showCricketMark(outcome, mark);
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
    if (!outcome.columnLine.isEmpty()) {
        QLabel *column = p == 1 ? c_.frame.p1ScoreText : c_.frame.p2scoretext;
        column->setText(column->text() + outcome.columnLine);
    }
}

void PlayController::endGame(const SetOutcome &outcome)
{
    const int p = outcome.player;
    GameFrame &f = c_.frame;
    c_.sounds.play(SoundCue::ApplauseWin, false);
    // Not when the other side has already asked to play again.
    if (!(game_.overNetwork() && peer_->playAgainAsked()))
        c_.messages.alert(game_.alertName(p) + QStringLiteral(" won!"), QStringLiteral("Good Game!"));
    QLabel *column = p == 1 ? f.p1ScoreText : f.p2scoretext;
    column->setText(column->text() + QStringLiteral("\nWinner!"));
    if (p == 2)
        record_.bestLeg = std::min(record_.bestLeg, outcome.result.throws);
    record(outcome.rows, std::pair{game_.gameId(), outcome.result});
    setGameStats();
    GameOver();
}

void PlayController::GameOver()
{
    c_.frame.gameText->setText(game_.overNetwork() && peer_->playAgainAsked()
                                   ? playAgainConsentText(opponentName_)
                                   : game_.gameOverText());
    showGlance();
    refreshButton();
    c_.frame.btnQuitGame->setEnabled(true);
}

// --- Quitting and the idle screen -------------------------------------------

void PlayController::btnQuitGameClicked()
{
    if (gameInProgress()
        && !c_.messages.askYesNo(c_.window, QStringLiteral("Quit Game?"), QStringLiteral("Quit game in progress?")))
        return;
    if (net_->established())
        peer_->quit();
    resetGame();
    c_.board.picture()->setEnabled(false);
}

void PlayController::resetGame()
{
    GameFrame &f = c_.frame;
    f.gameText->hide();
    for (QWidget *frame : std::initializer_list<QWidget *>{f.fraGame, f.fraOpponent, f.fraSkill}) {
        frame->show();
        frame->setEnabled(true);
    }
    f.btnQuitGame->setEnabled(false);
    for (QWidget *score : std::initializer_list<QWidget *>{f.fraCricketScore, f.fra01Score, f.scoreGlance}) {
        score->hide();
        score->setEnabled(false);
    }
    f.lblGameStartup->setText(QStringLiteral("\nHey, ") + c_.session.currentPlayerName
                              + QStringLiteral("!\nThrow a game of darts!\n\nSelect your options "
                                               "above, and click \"Start Game\"."));
    f.lblGameStartup->show();
    f.lblGameStartup->setEnabled(true);
    const bool cricket = f.opGame[0]->isChecked();
    f.fraCricketOptions->setVisible(cricket);
    f.fraCricketOptions->setEnabled(cricket);
    f.fra01Options->setVisible(!cricket);
    f.fra01Options->setEnabled(!cricket);
    game_.reset();
    peer_->forgetGames();
    peerLeft_ = false;
    refreshButton();
    c_.board.hidePips();
    syncBoard();
    c_.board.hideHover();
    hideGameStats();
    // The skill options follow the opponent chosen.
    opOpponentClicked(f.opOpponent[0]->isChecked() ? 0 : 1);
}

// --- The records beside the game ---------------------------------------------

void PlayController::setGameStats()
{
    const GameOptions &options = game_.options();
    if (const std::optional<GameRecordFigures> figures =
            c_.store.gameRecord(c_.session.currentPlayerId, options.type, options.skill))
        record_ = *figures;
    else
        databaseFailed();
    // Before the game starts its options do not yet say it is played over the network.
    const bool network = options.opponent == OpponentKind::Human && net_->networkPlay();
    const QString opponent = recordOpponentName(options.opponent, options.skill, network,
                                                opponentName_, c_.session.currentPlayerName);
    const RecordTexts texts = gameRecordTexts(opponent, options.type, game_.tallies(), record_);
    c_.statsLabels[1]->setText(texts.thisRound);
    c_.statsLabels[3]->setText(texts.overall);
    for (QLabel *label : std::as_const(c_.statsLabels)) {
        label->show();
        label->setEnabled(true);
    }
}

void PlayController::hideGameStats()
{
    for (QLabel *label : std::as_const(c_.statsLabels)) {
        label->hide();
        label->setEnabled(false);
    }
}

} // namespace tavrix
