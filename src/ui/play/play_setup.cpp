// Play mode before and between games: the options on the frame, starting a
// game (against the computer, a person at this board or another copy of the
// program), quitting back to the options, and the records beside the game.

#include "ui/play/play_controller.h"

#include "ui/board/board_picture.h"
#include "ui/dialogs/messages.h"
#include "core/net/net_game_rules.h"
#include "core/net/network_peer.h"
#include "ui/net/network_game.h"
#include "ui/net/opponent_name_dialog.h"
#include "ui/opponent/skill_options.h"
#include "ui/play/game_frame.h"
#include "ui/play/score_glance.h"
#include "core/session/session.h"
#include "core/stats/game_journal.h"
#include "core/stats/game_record.h"
#include "core/stats/game_store.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSlider>

namespace tavrix {

// --- Options -------------------------------------------------------------

void PlayController::setGameOptFrames(GameType type)
{
    GameFrame &f = c_.frame;
    if (type == GameType::Cricket) {
        f.fraCricketOptions->show();
        f.fraCricketOptions->setEnabled(true);
        f.fra01Options->hide();
        return;
    }
    f.fra01Options->show();
    f.fra01Options->setEnabled(true);
    f.fraCricketOptions->hide();
    f.fraCricketOptions->setEnabled(false);
    const bool is301 = type == GameType::X01_301;
    f.chkDoubleIn->setChecked(is301);
    f.chkDoubleOut->setChecked(true);
    const QString start = is301 ? QStringLiteral("301") : QStringLiteral("501");
    f.fra01Score->setTitle(start + QStringLiteral(" Score"));
    f.p1ScoreText->setText(start);
    f.p2scoretext->setText(start);
}

void PlayController::opSkillClicked(SkillLevel level)
{
    // The mood factor shapes only the player's own level.
    const bool you = level == SkillLevel::You;
    c_.frame.btnStartGame->setText(QStringLiteral("Start Game"));
    c_.frame.fraMoodFactor->setVisible(you);
    c_.frame.fraMoodFactor->setEnabled(you);
}

void PlayController::opOpponentClicked(OpponentKind kind)
{
    GameFrame &f = c_.frame;
    f.btnStartGame->setText(QStringLiteral("Start Game"));
    const bool computer = kind == OpponentKind::Computer;
    f.fraSkill->setEnabled(computer);
    for (const auto &[button, level] : form_.skillButtons())
        button->setEnabled(computer);
    const bool mood = computer && form_.skill() == SkillLevel::You;
    f.fraMoodFactor->setVisible(mood);
    f.fraMoodFactor->setEnabled(mood);
    if (computer)
        f.fraSkill->showYouAvailability(c_.skill.youSampleCount);
    else
        f.fraSkill->hideYouAvailability();
}

// --- Starting a game ------------------------------------------------------

void PlayController::startGame(bool playAgain)
{
    GameFrame &f = c_.frame;
    yourOutNeeds_ = YourOutNeeds::NotYet;
    c_.board.hidePips();
    f.btnStartGame->setEnabled(false);
    // Between the legs of a match the main button starts the next leg; any
    // other start is a new match (or single game) with a cork.
    nextLeg_ = playAgain && matchContinues();
    if (!playAgain && !net_->established())
        chooseMatchFormat();
    const bool networkAgain = playAgain && game_.overNetwork();
    GameOptions options = form_.choices();
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
                // Connected already: the other side restarts with these
                // options, and the match format follows them.
                net_->send(gameMessageOf(optionsOnFrame()));
                proposeMatch();
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
    GameOptions options = form_.gameOptions(game_.options());
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
                                                            f.fraOpponent, f.fraSkill, f.fraMatch}) {
        frame->hide();
        frame->setEnabled(false);
    }
    f.gameText->show();
    const bool nextLeg = nextLeg_ && matchContinues();
    nextLeg_ = false;
    // A game still running (the other copy chose new options) ends here,
    // and so does the match it belonged to.
    if (!nextLeg) {
        abandonMatch();
        match_.reset();
        matchId_ = 0;
    }
    game_.reset();
    peerLeft_ = false;
    peer_->newGame();
    game_.prepare();
    setGameStats();
    f.btnQuitGame->setEnabled(true);

    // What an earlier game could not write goes first.
    journal_->flush();
    const std::optional<qint64> id = journal_->startGame(
        {c_.session.currentPlayerId, options.type, options.skill, f.player1Text->text()},
        c_.session.currentPlayerName);
    if (!id) {
        // Without its row the game could not be recorded: back to the options.
        databaseFailed();
        resetGame();
        return;
    }
    options = optionsOnFrame();
    options.names = {f.player1Text->text(), f.player2Text->text()};
    scoreBoard_ = options.type == GameType::Cricket ? static_cast<ScoreBoard *>(&cricketBoard_) : &x01Board_;
    // The large figures show again only with the new game's lines: showing a
    // widget lays the window out at once, and the last game's lines beside
    // the new board could make it taller than the screen.
    f.scoreGlance->hide();
    scoreBoard_->start(options);
    if (nextLeg)
        startNextLeg(options, *id);
    else
        game_.start(options, *id, firstCorkThrower);
    showGlance();
    f.scoreGlance->show();
    f.scoreGlance->setEnabled(true);
}

// --- Quitting and the idle screen -------------------------------------------

void PlayController::btnQuitGameClicked()
{
    if (gameInProgress()) {
        const auto [title, text] = quitQuestion();
        if (!c_.messages.askYesNo(c_.window, title, text))
            return;
    }
    if (net_->established())
        peer_->quit();
    resetGame();
    c_.board.picture()->setEnabled(false);
}

void PlayController::resetGame()
{
    GameFrame &f = c_.frame;
    // The game's widgets go before the options show: showing a widget lays
    // the window out at once, and both together are taller than the screen.
    f.gameText->hide();
    for (QWidget *score : std::initializer_list<QWidget *>{f.fraCricketScore, f.fra01Score, f.scoreGlance}) {
        score->hide();
        score->setEnabled(false);
    }
    for (QWidget *frame : std::initializer_list<QWidget *>{f.fraGame, f.fraOpponent, f.fraSkill, f.fraMatch}) {
        frame->show();
        frame->setEnabled(true);
    }
    f.btnQuitGame->setEnabled(false);
    // A match left for the options ends unfinished.
    abandonMatch();
    match_.reset();
    matchId_ = 0;
    f.lblGameStartup->setText(QStringLiteral("\nHey, ") + c_.session.currentPlayerName
                              + QStringLiteral("!\nThrow a game of darts!\n\nSelect your options "
                                               "above, and click \"Start Game\"."));
    f.lblGameStartup->show();
    f.lblGameStartup->setEnabled(true);
    const bool cricket = form_.gameType() == GameType::Cricket;
    f.fraCricketOptions->setVisible(cricket);
    f.fraCricketOptions->setEnabled(cricket);
    f.fra01Options->setVisible(!cricket);
    f.fra01Options->setEnabled(!cricket);
    game_.reset();
    peer_->forgetGames();
    peerLeft_ = false;
    serverGameAwaited_ = false;
    refreshButton();
    c_.board.hidePips();
    syncBoard();
    c_.board.hideHover();
    hideGameStats();
    // The skill options follow the opponent chosen.
    opOpponentClicked(form_.opponent() == OpponentKind::Computer ? OpponentKind::Computer : OpponentKind::Human);
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
    c_.records.rstatsText->setText(texts.thisRound);
    c_.records.ostatsText->setText(texts.overall);
    for (QLabel *label : c_.records.all()) {
        label->show();
        label->setEnabled(true);
    }
}

void PlayController::hideGameStats()
{
    for (QLabel *label : c_.records.all()) {
        label->hide();
        label->setEnabled(false);
    }
}

} // namespace tavrix
