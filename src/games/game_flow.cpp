#include "games/game_flow.h"

#include "board/board_picture.h"
#include "board/dart_marker.h"
#include "dialogs/messages.h"
#include "games/checkout_chart.h"
#include "games/game_frame.h"
#include "net/opponent_name_dialog.h"
#include "opponent/computer_turns.h"
#include "opponent/skill_options.h"
#include "opponent/skill_profile.h"
#include "startup/shared_state.h"
#include "startup/sounds.h"
#include "stats/game_record.h"
#include "stats/stats_store.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSlider>

#include <cmath>

namespace tavrix {

namespace {

const QString startCaption = QStringLiteral("Start Game");
const QString confirmCaption = QStringLiteral("Confirm Dart");
const QString okCaption = QStringLiteral("Ok");
const QString againCaption = QStringLiteral("Play Again");

int selected(const QList<QAbstractButton *> &group)
{
    for (int i = 0; i < group.size(); ++i) {
        if (group[i]->isChecked())
            return i + 1;
    }
    return 0;
}

} // namespace

GameFlow::GameFlow(const Context &context, QObject *parent)
    : QObject(parent)
    , c_(context)
{
    GameFrame &f = c_.frame;
    connect(f.btnStartGame, &QPushButton::clicked, this, &GameFlow::btnStartGameClicked);
    connect(f.btnQuitGame, &QPushButton::clicked, this, &GameFlow::btnQuitGameClicked);
    for (int i = 0; i < f.opGame.size(); ++i) {
        connect(f.opGame[i], &QAbstractButton::clicked, this, [this, i] {
            c_.frame.btnStartGame->setText(startCaption);
            setGameOptFrames(i);
        });
    }
    for (int i = 0; i < f.opOpponent.size(); ++i)
        connect(f.opOpponent[i], &QAbstractButton::clicked, this, [this, i] { opOpponentClicked(i); });
    const QList<QAbstractButton *> skills = f.fraSkill->options();
    for (int i = 0; i < skills.size(); ++i)
        connect(skills[i], &QAbstractButton::clicked, this, [this, i] { opSkillClicked(i); });

    computerTurns_ = new ComputerTurns(
        {c_.state, c_.sounds, c_.chart, c_.board, c_.frame,
         [this] {
             const int remaining = scoreHistory_[0].isEmpty() ? startScore_ : scoreHistory_[0].last();
             return ComputerTurns::X01Standing{remaining, doubledIn_[0]};
         },
         [this] { return simpleCricket_; }},
        this);

    f.opGame[2]->setChecked(true);
    f.opOpponent[0]->setChecked(true);
    opOpponentClicked(0);
    setGameOptFrames(2);
}

bool GameFlow::doubleOut() const
{
    return c_.frame.chkDoubleOut->isChecked();
}

void GameFlow::databaseFailed()
{
    c_.messages.error(c_.window, QString::fromLatin1(applicationTitle), c_.store.lastError());
}

QString GameFlow::randomChoice(const QStringList &list)
{
    return list[static_cast<int>(c_.state.random.generateDouble() * list.size())];
}

QString GameFlow::playerCaption(int player) const
{
    return (player == 1 ? c_.frame.player1Text : c_.frame.player2Text)->text();
}

QString GameFlow::messageName(int player, bool) const
{
    if (playingComputer())
        return c_.state.vsComputerNames[player - 1];
    return (player == 1 ? c_.frame.player1Text01 : c_.frame.player2Text01)->text();
}

SetDarts GameFlow::visibleDarts(const MarkerArray &markers) const
{
    SetDarts darts{};
    for (int i = 0; i < 3; ++i) {
        if (!markers[i]->isHidden())
            darts[i] = BoardPoint{BoardInput::pipX(markers[i]), BoardInput::pipY(markers[i])};
    }
    return darts;
}

QList<DartScore> GameFlow::placedScores(const MarkerArray &markers, int count) const
{
    QList<DartScore> scores;
    for (int i = 0; i < count && i < 3; ++i) {
        if (!markers[i]->isHidden())
            scores.append(BoardInput::pipScore(markers[i]));
    }
    return scores;
}

void GameFlow::placeTarget(BoardPoint aim)
{
    if (c_.state.pipCount > 2)
        return;
    DartMarker *target = c_.board.targetPips()[c_.state.pipCount];
    target->centreOn(BoardPicture::pictureFromBoard(aim));
    if (c_.state.keepStats) {
        target->show();
        target->setEnabled(true);
        target->raise();
    }
}

// --- Options -------------------------------------------------------------

void GameFlow::setGameOptFrames(int index)
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

void GameFlow::opSkillClicked(int index)
{
    c_.frame.btnStartGame->setText(startCaption);
    c_.frame.fraMoodFactor->setVisible(index == 3);
    c_.frame.fraMoodFactor->setEnabled(index == 3);
}

void GameFlow::opOpponentClicked(int index)
{
    GameFrame &f = c_.frame;
    f.btnStartGame->setText(startCaption);
    const QList<QAbstractButton *> skills = f.fraSkill->options();
    const bool computer = index == 0;
    f.fraSkill->setEnabled(computer);
    for (QAbstractButton *skill : skills)
        skill->setEnabled(computer);
    const bool mood = computer && skills[3]->isChecked();
    f.fraMoodFactor->setVisible(mood);
    f.fraMoodFactor->setEnabled(mood);
    if (computer)
        f.fraSkill->showYouAvailability(c_.state.skill.youSampleCount);
    else
        f.fraSkill->findChild<QWidget *>(QStringLiteral("fraYouNeedSamples"))->hide();
}

// --- The button ------------------------------------------------------------

void GameFlow::btnStartGameClicked()
{
    c_.scoreHoverText->hide();
    const QString caption = c_.frame.btnStartGame->text();
    if (caption == startCaption || caption == againCaption)
        startGame(caption == againCaption);
    else if (caption == confirmCaption)
        confirmDart();
    else if (caption == okCaption)
        okClicked();
}

void GameFlow::startGame(bool playAgain)
{
    GameFrame &f = c_.frame;
    c_.board.hidePips();
    f.btnStartGame->setEnabled(false);
    previousOptions_ = {gameType_, skillLevel_, opponentKind_};
    gameType_ = selected(f.opGame);
    skillLevel_ = selected(f.fraSkill->options());
    opponentKind_ = selected(f.opOpponent);
    c_.state.gameType = gameType_;

    if (playingComputer()) {
        f.player1Text->setText(QStringLiteral("Computer"));
        f.player1Text01->setText(f.player1Text->text());
        c_.state.currentThrower = 2;
        continueStartGame();
        return;
    }
    if (!playAgain) {
        if (!opponentDialog_)
            opponentDialog_ = new OpponentNameDialog(c_.state, c_.window);
        opponentDialog_->exec();
        if (opponentDialog_->cancelled()) {
            c_.state.opponentName.clear();
        } else if (opponentDialog_->getChkNetworkPlay() == 1) {
            c_.messages.notice(c_.window, QString::fromLatin1(applicationTitle),
                               QStringLiteral("Games over the network are not available yet. "
                                              "Untick \"Network Play\" to play at this board."));
            c_.state.opponentName.clear();
        }
    }
    if (c_.state.opponentName.trimmed().isEmpty()) {
        resetGame();
        return;
    }
    c_.state.lastOpponentName = c_.state.opponentName;
    f.player1Text->setText(c_.state.opponentName);
    f.player1Text01->setText(f.player1Text->text());
    c_.state.currentThrower = 1;
    continueStartGame();
}

void GameFlow::continueStartGame()
{
    GameFrame &f = c_.frame;
    f.btnStartGame->setText(confirmCaption);
    const double moodFactor = -(f.slider1->value() / 100.0);
    if (!buildSkillProfile(c_.state.skill, skillLevel_, moodFactor, c_.store,
                           c_.state.currentPlayerId))
        databaseFailed();
    for (QWidget *options : std::initializer_list<QWidget *>{f.fraGame, f.fraCricketOptions,
                                                              f.fra01Options, f.fraOpponent, f.fraSkill}) {
        options->hide();
        options->setEnabled(false);
    }
    f.gameText->show();
    turnNumber_ = 0;
    setSeq_ = 0;
    localThrows_ = 0;
    if (previousOptions_ != std::array<int, 3>{gameType_, skillLevel_, opponentKind_})
        c_.state.tallies.clearLocalStats();
    gameBestSet_ = 0;
    setGameStats();
    f.btnQuitGame->setEnabled(true);

    const std::optional<qint64> id = c_.store.insertGame(
        {c_.state.currentPlayerId, gameType_, skillLevel_, f.player1Text->text()});
    if (!id) {
        // Without its row the game could not be recorded: back to the options.
        databaseFailed();
        resetGame();
        return;
    }
    currentGameId_ = *id;
    if (gameType_ == 1) {
        c_.state.keepStats = f.chkKeepCricketStats->isChecked();
        startCricket();
    } else {
        c_.state.keepStats = f.chkKeep01stats->isChecked();
        start01(gameType_ == 2 ? 301 : 501);
    }
}

void GameFlow::start01(int startScore)
{
    GameFrame &f = c_.frame;
    startScore_ = startScore;
    scoreHistory_ = {QList<int>{startScore}, QList<int>{startScore}};
    doubledIn_ = {false, false};
    f.fraCricketScore->hide();
    f.fraCricketScore->setEnabled(false);
    f.lblGameStartup->hide();
    f.lblGameStartup->setEnabled(false);
    f.fra01Score->show();
    f.fra01Score->setEnabled(true);
    if (!f.chkDoubleIn->isChecked())
        doubledIn_ = {true, true};
    f.p1ScoreText->setText(QString::number(startScore));
    f.p2scoretext->setText(QString::number(startScore));
    closestToBull();
}

void GameFlow::startCricket()
{
    GameFrame &f = c_.frame;
    simpleCricket_ = f.opCricketOptions[0]->isChecked();
    f.fraCricketScore->show();
    f.fraCricketScore->setEnabled(true);
    f.lblGameStartup->hide();
    f.lblGameStartup->setEnabled(false);
    f.fra01Score->hide();
    f.fra01Score->setEnabled(false);
    c_.state.cricketMarks = {};
    for (int slot = 0; slot < 7; ++slot) {
        for (int player : {1, 2})
            f.showMarks(player, slot, 0);
        for (QLabel *points : {f.lblP1Points[slot], f.lblP2Points[slot]}) {
            points->clear();
            points->setVisible(!simpleCricket_);
            points->setEnabled(!simpleCricket_);
        }
    }
    for (QLabel *total : {f.lblP1TotalPts, f.lblP2TotalPts, f.lblTotalPts}) {
        total->setVisible(!simpleCricket_);
        total->setEnabled(!simpleCricket_);
    }
    f.lblP1TotalPts->setText(QStringLiteral("0"));
    f.lblP2TotalPts->setText(QStringLiteral("0"));
    turnNumber_ = 0;
    f.colourThrower(0);
    closestToBull();
}

// --- Turns -----------------------------------------------------------------

void GameFlow::okClicked()
{
    if (turnNumber_ <= 0) {
        nextTurn();
        return;
    }
    if (!scoreSet())
        nextTurn();
}

void GameFlow::nextTurn()
{
    c_.frame.btnStartGame->setEnabled(false);
    c_.state.throwPhase = 3;
    c_.board.hidePips();
    GameTurn();
}

void GameFlow::GameTurn()
{
    setGameStats();
    ++turnNumber_;
    const int p = c_.state.currentThrower;
    c_.frame.colourThrower(p);
    const QString name = playerCaption(p);
    if (playingComputer() && p == 1) {
        c_.board.picture()->setEnabled(false);
        c_.scoreHoverText->hide();
        if (gameType_ == 1)
            computerTurns_->computerCricketTurn();
        else
            computerTurns_->computer01Turn();
    } else if (gameType_ == 1) {
        goHuman(name);
    } else {
        goHuman01(name);
    }
}

void GameFlow::goHuman01(const QString &name)
{
    ++setSeq_;
    const int p = c_.state.currentThrower;
    const int remaining = scoreHistory_[p - 1].last();
    const QString bestOut = remaining <= 180 ? c_.chart.routeText(remaining, doubleOut()) : QString();
    QString text = QStringLiteral("\n") + name
                   + QStringLiteral(": Throw your darts, mark the board, adjust if necessary, and "
                                    "click \"Ok\"");
    if (!bestOut.isEmpty())
        text += QStringLiteral("\n\nBest Out: ") + bestOut;
    else if (doubledIn_[p - 1])
        text += QStringLiteral("\n\nRecommend T20 next.");
    if (!doubledIn_[p - 1])
        text += QStringLiteral("\n\nYou have not yet doubled in.");
    c_.frame.gameText->setText(text);
    c_.frame.btnStartGame->setEnabled(false);
    c_.state.pipCount = 0;
    showNext01Target();
    c_.board.picture()->setEnabled(true);
}

void GameFlow::goHuman(const QString &name)
{
    ++setSeq_;
    c_.frame.gameText->setText(QStringLiteral("\n") + name
                               + QStringLiteral(": Throw your darts, mark the board, adjust if "
                                                "necessary, and click \"Ok\""));
    c_.state.pipCount = 0;
    c_.board.picture()->setEnabled(true);
    if (c_.state.currentThrower == 2)
        showNextCricketTarget();
    c_.frame.btnStartGame->setEnabled(false);
}

void GameFlow::show301Scores(const MarkerArray &markers)
{
    const int p = c_.state.currentThrower;
    const QString text = x01LiveText(playerCaption(p), visibleDarts(markers), c_.state.pipCount,
                                     scoreHistory_[p - 1].last(), doubledIn_[p - 1], doubleOut(),
                                     c_.chart);
    if (!text.isEmpty())
        c_.frame.gameText->setText(text);
}

void GameFlow::showNext01Target()
{
    const int p = c_.state.currentThrower;
    const DartScore aim =
        nextX01Aim(placedScores(c_.board.throwerPips(), c_.state.pipCount), scoreHistory_[p - 1].last(),
                   doubledIn_[p - 1], doubleOut(), c_.chart);
    placeTarget(aimPoint(aim.multiplier, aim.number));
}

void GameFlow::showCricketScores(const MarkerArray &markers)
{
    const SetDarts darts = visibleDarts(markers);
    if (!darts[0] && !darts[1] && !darts[2])
        return;
    QString text = QStringLiteral("\n") + playerCaption(c_.state.currentThrower)
                   + QStringLiteral(" threw: ") + dartListText(darts);
    if (c_.state.pipCount >= 3)
        text += QStringLiteral("\n\nAdjust darts if necessary and click \"Ok\" to continue.");
    c_.frame.gameText->setText(text);
}

void GameFlow::showNextCricketTarget()
{
    const std::optional<BoardPoint> target =
        nextCricketTarget(c_.state.cricketMarks, c_.state.currentThrower,
                          placedScores(c_.board.throwerPips(), 3), simpleCricket_);
    if (target)
        placeTarget(*target);
}

// --- Scoring a confirmed set -------------------------------------------------

void GameFlow::recordDart(int index, DartScore score, BoardPoint at)
{
    const DartScore target = BoardInput::pipScore(c_.board.targetPips()[index]);
    // A bull target is recorded as 25 in ring 1, aimed at the bull's centre.
    const int targetRing = target.number == 25 ? 1 : target.multiplier;
    const BoardPoint aim = target.number == 25 ? BoardPoint{0, 0}
                                               : aimPoint(target.multiplier, target.number);
    const double dist = std::hypot(at.x - aim.x, at.y - aim.y);
    if (!c_.store.insertGameDart({currentGameId_, c_.state.currentPlayerId, setSeq_, index, at.x,
                                  at.y, dist, score.number, score.multiplier, target.number,
                                  targetRing}))
        databaseFailed();
}

void GameFlow::showCricketMark(int player, const CricketMark &mark)
{
    GameFrame &f = c_.frame;
    const int marks = c_.state.cricketMarks[player - 1][mark.slot];
    f.showMarks(player, mark.slot, marks);
    if (mark.slotPoints) {
        (player == 1 ? f.lblP1Points : f.lblP2Points)[mark.slot]->setText(QString::number(*mark.slotPoints));
        (player == 1 ? f.lblP1TotalPts : f.lblP2TotalPts)
            ->setText(QString::number(cricketPointsOf(c_.state.cricketMarks[player - 1])));
    }
}

bool GameFlow::scoreSet()
{
    GameFrame &f = c_.frame;
    const int p = c_.state.currentThrower;
    const MarkerArray &markers = p == 1 ? c_.board.cpips() : c_.board.pips();
    const SetDarts darts = visibleDarts(markers);
    const bool x01 = gameType_ != 1;
    const QString name = messageName(p, true);

    X01Set set;
    if (x01) {
        set = scoreX01Set(darts, scoreHistory_[p - 1].last(), doubledIn_[p - 1]);
        if (!doubledIn_[p - 1]) {
            if (set.doubledIn) {
                c_.messages.alert(name + QStringLiteral(" doubled in!"),
                                  randomChoice({"Hooray!", "Great!", "Faaan-tastic!", "Game on!", "Yes!"}));
                doubledIn_[p - 1] = true;
            } else {
                c_.messages.alert(name + QStringLiteral(" didn't double in."),
                                  randomChoice({"Too bad...", "Nuts!", "Doh!", "Oh well...", "Ha-ha!"}));
            }
        }
    } else {
        for (int i = 0; i < 3; ++i) {
            if (darts[i])
                set.darts.append(i);
        }
    }
    turnPoints_ = x01 ? set.turnPoints : 0;
    turnMarks_ = 0;
    for (int i : std::as_const(set.darts)) {
        const DartScore score = scoreFromXY(darts[i]->x, darts[i]->y);
        if (p == 2 && c_.state.keepStats)
            recordDart(i, score, *darts[i]);
        if (p == 2)
            ++localThrows_;
        if (!x01 && score.number > 0 && score.multiplier > 0) {
            const CricketMark mark =
                markCricketScore(c_.state.cricketMarks, p, score.multiplier, score.number, simpleCricket_);
            if (mark.slot >= 0) {
                turnMarks_ += mark.marks;
                showCricketMark(p, mark);
            }
        }
    }
    int remaining = set.remaining;
    if (x01 && p == 2 && countsForBestSet(remaining, doubleOut()))
        gameBestSet_ = std::max(gameBestSet_, turnPoints_);

    bool over = false;
    if (x01) {
        const X01Outcome outcome = x01Outcome(remaining, doubleOut(), set.lastMultiplier);
        if (outcome == X01Outcome::Bust) {
            c_.sounds.playAwwww(false);
            c_.messages.alert(messageName(p, false) + QStringLiteral(" busted."),
                              randomChoice({"Too bad", "Rats!", "NOOO!!!", "Oh well...", "Ugh."}));
            remaining = scoreHistory_[p - 1].last();
        }
        over = outcome == X01Outcome::Win;
    } else {
        over = cricketWon(c_.state.cricketMarks, p, simpleCricket_);
    }
    if (over) {
        endGame(p);
        return true;
    }

    // Applause waits when the thrower stands at this board.
    const bool wait = p == 2 || (p == 1 && c_.frame.opOpponent[1]->isChecked());
    const int size = x01 ? (turnPoints_ >= 140 ? 3 : turnPoints_ >= 100 ? 2 : turnPoints_ >= 60 ? 1 : 0)
                         : (turnMarks_ >= 8 ? 3 : turnMarks_ >= 6 ? 2 : turnMarks_ >= 3 ? 1 : 0);
    if (size == 1)
        c_.sounds.playApplause60(wait);
    else if (size == 2)
        c_.sounds.playApplause100(wait);
    else if (size == 3)
        c_.sounds.playApplause140(wait);
    if (x01) {
        QList<int> &history = scoreHistory_[p - 1];
        QLabel *column = p == 1 ? f.p1ScoreText : f.p2scoretext;
        column->setText(column->text()
                        + (remaining != history.last() ? QStringLiteral("\n") + QString::number(remaining)
                                                       : QStringLiteral("*")));
        history.append(remaining);
    }
    c_.state.currentThrower = 3 - p;
    return false;
}

void GameFlow::endGame(int p)
{
    GameFrame &f = c_.frame;
    LocalTallies &tallies = c_.state.tallies;
    const QString winner = playingComputer() ? c_.state.vsComputerNames[p - 1] : playerCaption(p);
    c_.sounds.playApplauseWin(false);
    c_.messages.alert(winner + QStringLiteral(" won!"), QStringLiteral("Good Game!"));
    GameResult result;
    if (p == 1) {
        ++tallies.localLosses;
        f.p1ScoreText->setText(f.p1ScoreText->text() + QStringLiteral("\nWinner!"));
        result.result = QStringLiteral("L");
    } else {
        ++tallies.localWins;
        f.p2scoretext->setText(f.p2scoretext->text() + QStringLiteral("\nWinner!"));
        tallies.localBestOut = std::max(tallies.localBestOut, turnPoints_);
        tallies.localBestLeg = std::min(tallies.localBestLeg, localThrows_);
        record_.bestLeg = std::min(record_.bestLeg, localThrows_);
        result.result = QStringLiteral("W");
        result.outSet = turnPoints_;
    }
    if (gameType_ == 1) {
        result.points = simpleCricket_ ? 0 : cricketPointsOf(c_.state.cricketMarks[1]);
        gameBestSet_ = 0;
    } else {
        result.points = startScore_ - (p == 2 ? 0 : scoreHistory_[1].last());
    }
    result.throws = localThrows_;
    result.bestSet = gameBestSet_;
    if (!c_.store.finishGame(currentGameId_, result))
        databaseFailed();
    setGameStats();
    GameOver();
}

void GameFlow::GameOver()
{
    c_.state.throwPhase = 0;
    const int p = c_.state.currentThrower;
    const QString winner = playingComputer() ? c_.state.vsComputerNames[p - 1] : playerCaption(p);
    c_.frame.gameText->setText(QStringLiteral("\n") + winner
                               + QStringLiteral(" won that one.\n\nClick \"Play Again\" to play the "
                                                "same game, or \"Quit Game\" to change options."));
    c_.frame.btnStartGame->setText(againCaption);
    c_.frame.btnStartGame->setEnabled(true);
    c_.frame.btnQuitGame->setEnabled(true);
}

// --- Quitting and the idle screen -------------------------------------------

void GameFlow::btnQuitGameClicked()
{
    if (c_.state.throwPhase != 0
        && !c_.messages.askYesNo(c_.window, QStringLiteral("Quit Game?"),
                                 QStringLiteral("Quit game in progress?")))
        return;
    resetGame();
    c_.board.picture()->setEnabled(false);
}

void GameFlow::resetGame()
{
    GameFrame &f = c_.frame;
    f.gameText->hide();
    for (QWidget *options : std::initializer_list<QWidget *>{f.fraGame, f.fraOpponent, f.fraSkill}) {
        options->show();
        options->setEnabled(true);
    }
    f.btnStartGame->setEnabled(true);
    f.btnQuitGame->setEnabled(false);
    for (QWidget *score : std::initializer_list<QWidget *>{f.fraCricketScore, f.fra01Score}) {
        score->hide();
        score->setEnabled(false);
    }
    f.lblGameStartup->setText(QStringLiteral("\nHey, ") + c_.state.currentPlayerName
                              + QStringLiteral("!\nThrow a game of darts!\n\nSelect your options "
                                               "above, and click \"Start Game\"."));
    f.lblGameStartup->show();
    f.lblGameStartup->setEnabled(true);
    const bool cricket = f.opGame[0]->isChecked();
    f.fraCricketOptions->setVisible(cricket);
    f.fraCricketOptions->setEnabled(cricket);
    f.fra01Options->setVisible(!cricket);
    f.fra01Options->setEnabled(!cricket);
    f.btnStartGame->setText(startCaption);
    c_.state.throwPhase = 0;
    c_.board.hidePips();
    c_.state.pipCount = 0;
    computerTurns_->stop();
    c_.scoreHoverText->hide();
    hideGameStats();
    // The skill options follow the opponent chosen.
    opOpponentClicked(f.opOpponent[0]->isChecked() ? 0 : 1);
}

// --- The records beside the game ---------------------------------------------

void GameFlow::setGameStats()
{
    if (const std::optional<GameRecordFigures> figures =
            c_.store.gameRecord(c_.state.currentPlayerId, gameType_, skillLevel_))
        record_ = *figures;
    else
        databaseFailed();
    const QString opponent = recordOpponentName(opponentKind_, skillLevel_, false,
                                                c_.state.opponentName, c_.state.currentPlayerName);
    const RecordTexts texts = gameRecordTexts(opponent, gameType_, c_.state.tallies, record_);
    c_.statsLabels[1]->setText(texts.thisRound);
    c_.statsLabels[3]->setText(texts.overall);
    for (QLabel *label : std::as_const(c_.statsLabels)) {
        label->show();
        label->setEnabled(true);
    }
}

void GameFlow::hideGameStats()
{
    for (QLabel *label : std::as_const(c_.statsLabels)) {
        label->hide();
        label->setEnabled(false);
    }
}

} // namespace tavrix
