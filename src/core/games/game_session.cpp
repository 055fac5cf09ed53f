#include "core/games/game_session.h"

#include "core/games/thrower.h"
#include "core/session/session.h"

#include <cmath>

namespace tavrix {

QString mainButtonCaption(GamePhase phase, bool corkConfirmedHere)
{
    switch (phase) {
    case GamePhase::Idle:
        return QStringLiteral("Start Game");
    case GamePhase::CorkAwaited:
        return corkConfirmedHere ? QStringLiteral("Confirm Dart") : QStringLiteral("Ok");
    case GamePhase::CorkPlaced:
        return QStringLiteral("Confirm Dart");
    case GamePhase::CorkResult:
    case GamePhase::Turn:
        break;
    case GamePhase::GameOver:
        return QStringLiteral("Play Again");
    }
    return QStringLiteral("Ok");
}

GameSession::GameSession(const Advisor &advisor, const Session &session, QObject *parent)
    : QObject(parent)
    , advisor_(advisor)
    , session_(session)
    , rules_(makeGameRules(GameType::X01_501, advisor))
{
    // A target never placed stands where a new marker does: in the picture's
    // top-left corner, off the board.
    targets_.fill(boardFromPicture(targetMarkerSide / 2.0, targetMarkerSide / 2.0));
}

void GameSession::setThrowers(Thrower *player1, Thrower *player2)
{
    throwers_ = {player1, player2};
}

void GameSession::chooseOptions(const GameOptions &options)
{
    previousCodes_ = codes_;
    reviseOptions(options);
}

void GameSession::reviseOptions(const GameOptions &options)
{
    options_ = options;
    codes_ = {code(options.type), code(options.skill), code(options.opponent)};
}

void GameSession::prepare()
{
    if (previousCodes_ != codes_)
        tallies_.clearLocalStats();
    setSeq_ = 0;
    localThrows_ = 0;
    winner_ = 0;
}

void GameSession::start(const GameOptions &options, qint64 gameId, int firstCorkThrower)
{
    begin(options, gameId);
    awaitCork(firstCorkThrower);
}

void GameSession::startLeg(const GameOptions &options, qint64 gameId, int firstThrower)
{
    begin(options, gameId);
    // As after a cork: the first thrower is known and the first turn is next.
    thrower_ = firstThrower;
    phase_ = GamePhase::CorkResult;
}

void GameSession::begin(const GameOptions &options, qint64 gameId)
{
    options_ = options;
    gameId_ = gameId;
    cork_ = {};
    set_ = {};
    placed_ = 0;
    legFigures_ = {};
    if (rules_->type() != options_.type)
        rules_ = makeGameRules(options_.type, advisor_);
    rules_->start(options_);
}

void GameSession::reset()
{
    phase_ = GamePhase::Idle;
    placed_ = 0;
    for (Thrower *thrower : throwers_) {
        if (thrower)
            thrower->stop();
    }
}

void GameSession::awaitCork(int player)
{
    thrower_ = player;
    phase_ = GamePhase::CorkAwaited;
    placed_ = 0;
    emit corkAwaited(player);
    if (phase_ == GamePhase::CorkAwaited && thrower_ == player && throwers_[player - 1])
        throwers_[player - 1]->throwCork(*this, player);
}

bool GameSession::throwerMarksHere() const
{
    const Thrower *thrower = throwers_[thrower_ - 1];
    return thrower && thrower->marksAtThisBoard();
}

QString GameSession::messageName(int player) const
{
    if (vsComputer())
        return player == 1 ? QStringLiteral("I") : QStringLiteral("You");
    return options_.names[player - 1];
}

QString GameSession::alertName(int player) const
{
    if (overNetwork() && player == 2)
        return QStringLiteral("You");
    return messageName(player);
}

bool GameSession::canConfirm() const
{
    switch (phase_) {
    case GamePhase::Idle:
    case GamePhase::CorkPlaced:
    case GamePhase::CorkResult:
    case GamePhase::GameOver:
        return true;
    case GamePhase::CorkAwaited:
        return false;
    case GamePhase::Turn:
        return throwerMarksHere() ? placed_ > 0 : reported_;
    }
    return false;
}

int GameSession::placeDart(BoardPoint at)
{
    if (phase_ == GamePhase::CorkAwaited) {
        cork_[thrower_ - 1] = at;
        placed_ = 1;
        phase_ = GamePhase::CorkPlaced;
        emit dartPlaced(thrower_, 0);
        return 0;
    }
    if (phase_ != GamePhase::Turn || placed_ >= 3 || reported_)
        return -1;
    const int index = placed_++;
    set_[index] = at;
    emit dartPlaced(thrower_, index);
    return index;
}

bool GameSession::canUndoDart() const
{
    return phase_ == GamePhase::Turn && placed_ > 0 && !reported_ && !scored_ && throwerMarksHere();
}

int GameSession::undoDart()
{
    if (!canUndoDart())
        return -1;
    // Only the darts kept are scored and recorded when the set is confirmed.
    const int index = --placed_;
    set_[index].reset();
    return index;
}

void GameSession::moveDart(int index, BoardPoint at)
{
    if (phase_ == GamePhase::CorkPlaced) {
        if (index == 0)
            cork_[thrower_ - 1] = at;
        return;
    }
    if (phase_ == GamePhase::Turn && index >= 0 && index < placed_)
        set_[index] = at;
}

void GameSession::setTarget(int index, BoardPoint at)
{
    if (index >= 0 && index < 3)
        targets_[index] = onMarkerGrid(at, targetMarkerSide);
}

void GameSession::confirmCork()
{
    if (phase_ != GamePhase::CorkPlaced)
        return;
    const int other = 3 - thrower_;
    if (!cork_[other - 1]) {
        awaitCork(other);
        return;
    }
    const double d1 = std::hypot(cork_[0]->x, cork_[0]->y);
    const double d2 = std::hypot(cork_[1]->x, cork_[1]->y);
    // Equal shown distances: the computer throws first against the local
    // player, the local player against a person at this board.
    if (overNetwork())
        thrower_ = networkCorkFirstThrower(d1, d2, options_.netRole == NetRole::Client ? 2 : 1);
    else
        thrower_ = corkFirstThrower(d1, d2, session_.useCms, vsComputer() ? 1 : 2);
    phase_ = GamePhase::CorkResult;
    emit corkDecided();
}

QString GameSession::corkResultText() const
{
    if (!cork_[0] || !cork_[1])
        return {};
    return tavrix::corkResultText(vsComputer(), options_.names, std::hypot(cork_[0]->x, cork_[0]->y),
                                  std::hypot(cork_[1]->x, cork_[1]->y), session_.useCms, thrower_);
}

QList<GameDart> GameSession::corkRows() const
{
    if (!options_.keepStats || !cork_[1])
        return {};
    // The local player's cork dart is set 0, dart 1, aimed at the bull.
    const BoardPoint at = *cork_[1];
    const DartScore score = scoreFromXY(at.x, at.y);
    const RecordedTarget bull = recordedTarget({2, 25});
    return {GameDart{gameId_, session_.currentPlayerId, setSeq_, 1, at.x, at.y, std::hypot(at.x, at.y),
                     score.number, score.multiplier, bull.number, bull.ring}};
}

void GameSession::reportTurn(const QString &report)
{
    if (phase_ != GamePhase::Turn)
        return;
    reported_ = true;
    emit turnReported(report);
}

void GameSession::nextTurn()
{
    phase_ = GamePhase::Turn;
    set_ = {};
    placed_ = 0;
    reported_ = false;
    scored_ = false;
    // The sets marked at this board are numbered; the cork is set 0.
    if (throwerMarksHere())
        ++setSeq_;
    const int player = thrower_;
    emit turnStarted(player);
    if (phase_ == GamePhase::Turn && thrower_ == player && throwers_[player - 1])
        throwers_[player - 1]->takeTurn(*this, player);
}

DartScore GameSession::targetScore(int index) const
{
    return scoreFromXY(targets_[index].x, targets_[index].y);
}

GameDart GameSession::dartRow(int index, DartScore score, BoardPoint at) const
{
    const RecordedTarget target = recordedTarget(targetScore(index));
    return {gameId_, session_.currentPlayerId, setSeq_, index, at.x, at.y,
            std::hypot(at.x - target.aim.x, at.y - target.aim.y), score.number, score.multiplier,
            target.number, target.ring};
}

SetOutcome GameSession::scoreSet()
{
    SetOutcome out;
    const int p = thrower_;
    out.player = p;
    if (phase_ != GamePhase::Turn)
        return out;
    scored_ = true;
    static_cast<ScoredSet &>(out) = rules_->scoreSet(p, set_);
    countLegFigures(p, out);
    // The local player's darts the rules dealt with are counted and recorded.
    if (p == 2) {
        for (int i : std::as_const(out.darts)) {
            const BoardPoint at = *set_[i];
            if (options_.keepStats)
                out.rows.append(dartRow(i, scoreFromXY(at.x, at.y), at));
            ++localThrows_;
        }
    }
    if (out.won) {
        winner_ = p;
        tallies_.countGame(p == 2, out.turnPoints, localThrows_);
        out.result = gameResultRow(p == 2, out.turnPoints, localThrows_, rules_->localFigures(p == 2));
        phase_ = GamePhase::GameOver;
        return out;
    }
    thrower_ = 3 - p;
    return out;
}

void GameSession::countLegFigures(int player, const ScoredSet &set)
{
    int points = 0;
    if (options_.type == GameType::Cricket) {
        for (const CricketMark &mark : set.marks)
            points += mark.marks;
    } else if (!set.bust) {
        points = set.turnPoints;
    }
    legFigures_.points[player - 1] += points;
    legFigures_.darts[player - 1] += int(set.darts.size());
}

GlanceFigures GameSession::glance(int player) const
{
    // Once the set is scored its darts are in the rules' own standing.
    const bool marking = phase_ == GamePhase::Turn && !scored_ && player == thrower_;
    return rules_->glance(player, marking ? set_ : SetDarts{});
}

std::optional<BoardPoint> GameSession::advice() const
{
    return rules_->advice(thrower_, set_);
}

QString GameSession::liveText() const
{
    if (placed_ == 0)
        return turnPromptText();
    return rules_->liveText(options_.names[thrower_ - 1], thrower_, set_, placed_);
}

QString GameSession::turnPromptText() const
{
    return rules_->turnPrompt(options_.names[thrower_ - 1], thrower_);
}

QString GameSession::gameOverText() const
{
    return tavrix::gameOverText(messageName(winner_));
}

DartSounds GameSession::dartSounds(int index, std::optional<DartScore> aimedAt) const
{
    DartSounds sounds;
    if (index < 0 || index > 2 || !set_[index])
        return sounds;
    const BoardPoint at = *set_[index];
    const bool here = throwerMarksHere();
    sounds.landing = landingCue(at);
    sounds.hit = rules_->hitCue(thrower_, scoreFromXY(at.x, at.y), here ? targetScore(index) : aimedAt, here);
    sounds.hitWaits = !here;
    return sounds;
}

} // namespace tavrix
