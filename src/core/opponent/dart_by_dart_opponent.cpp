#include "core/opponent/dart_by_dart_opponent.h"

#include "core/games/cricket_rules.h"
#include "core/games/game_session.h"
#include "core/sound/sound_cue.h"

#include <QTimer>

namespace tavrix {

DartByDartOpponent::DartByDartOpponent(SoundOut &sounds, QObject *parent)
    : QObject(parent)
    , sounds_(sounds)
    , throwTimer_(new QTimer(this))
{
    throwTimer_->setObjectName(QStringLiteral("ThrowTimer"));
    throwTimer_->setInterval(throwIntervalMs);
    connect(throwTimer_, &QTimer::timeout, this, &DartByDartOpponent::ThrowTimer_Timer);
}

void DartByDartOpponent::takeTurn(GameSession &game, int player)
{
    game_ = &game;
    player_ = player;
    dartCount_ = 0;
    cricketTexts_.clear();
    x01_.reset();
    if (isX01(game.options().type))
        x01_.emplace(game.remaining(player), game.doubledIn(player));
    throwTimer_->start();
}

void DartByDartOpponent::stop()
{
    throwTimer_->stop();
    x01_.reset();
    game_ = nullptr;
}

void DartByDartOpponent::ThrowTimer_Timer()
{
    // Stopped first: a sound that waits runs the event loop, and the next
    // tick must not come while this dart is still landing.
    throwTimer_->stop();
    if (!game_ || game_->phase() != GamePhase::Turn)
        return;
    if (x01_)
        x01Tick();
    else
        cricketTick();
}

void DartByDartOpponent::landingSounds(const NextDart &dart, DartScore scored)
{
    if (landingCue({dart.landed.x, dart.landed.y}) == SoundCue::Boing) {
        sounds_.play(SoundCue::Boing, true);
        return;
    }
    sounds_.play(SoundCue::Splat, true);
    const bool hit = dart.aimedAt && scored == *dart.aimedAt;
    if (hit && scored.multiplier == 3)
        sounds_.play(SoundCue::Fanfare, true);
    else if (hit && scored.multiplier == 2)
        sounds_.play(SoundCue::Harp, true);
}

void DartByDartOpponent::x01Tick()
{
    if (x01_->dartCount() < 3) {
        if (const std::optional<NextDart> dart = nextDart(*game_, player_, dartCount_, &*x01_)) {
            const SimulatedDart &landed = dart->landed;
            const DartScore scored = x01_->count(landed.x, landed.y, landed.description);
            game_->placeDart({landed.x, landed.y});
            landingSounds(*dart, scored);
            ++dartCount_;
            if (!game_ || !x01_)
                return; // the game was quit while the dart landed
            if (!x01_->over() && hasDart(dartCount_)) {
                throwTimer_->start();
                return;
            }
        }
    }
    report(x01_->dartTexts, x01_->turnPoints);
}

void DartByDartOpponent::cricketTick()
{
    bool noDart = dartCount_ >= 3;
    if (!noDart) {
        const std::optional<NextDart> dart = nextDart(*game_, player_, dartCount_, nullptr);
        noDart = !dart;
        if (dart) {
            const SimulatedDart &landed = dart->landed;
            game_->placeDart({landed.x, landed.y});
            cricketTexts_.append(landed.description);
            landingSounds(*dart, scoreFromXY(landed.x, landed.y));
            ++dartCount_;
            if (!game_)
                return;
        }
    }
    if (dartCount_ < 3 && !noDart) {
        throwTimer_->start();
        return;
    }
    report(cricketTexts_, std::nullopt);
}

void DartByDartOpponent::report(const QStringList &texts, std::optional<int> turnPoints)
{
    const QString text = computerTurnReport(game_->messageName(player_), texts, turnPoints);
    GameSession *game = game_;
    x01_.reset();
    game_ = nullptr;
    game->reportTurn(text);
}

// --- The computer -------------------------------------------------------------

ComputerOpponent::ComputerOpponent(SoundOut &sounds, const CheckoutChart &chart, QRandomGenerator &random,
                                   const SkillProfile &profile, QObject *parent)
    : DartByDartOpponent(sounds, parent)
    , chart_(chart)
    , random_(random)
    , profile_(profile)
{
}

void ComputerOpponent::throwCork(GameSession &game, int)
{
    const SimulatedDart dart = simulateThrow(profile_, random_, 0, 0);
    // The dart shows as its sound plays.
    game.placeDart({dart.x, dart.y});
    sounds_.play(SoundCue::Splat, true);
    game.confirmCork();
}

std::optional<DartByDartOpponent::NextDart>
ComputerOpponent::nextDart(const GameSession &game, int player, int, const ComputerX01Turn *live)
{
    if (live) {
        const DartScore target =
            computerX01Target(live->doubledIn, live->remaining, game.options().doubleOut, chart_);
        const BoardPoint aim = targetPoint(target);
        return NextDart{simulateThrow(profile_, random_, aim.x, aim.y), target};
    }
    const std::optional<BoardPoint> aim =
        nextCricketTarget(game.cricketMarks(), player, game.placedScores(), game.options().simpleCricket);
    if (!aim)
        return std::nullopt;
    return NextDart{simulateThrow(profile_, random_, aim->x, aim->y), std::nullopt};
}

// --- A player whose darts arrive placed -------------------------------------------

void PlacedDartsOpponent::placeCork(BoardPoint at)
{
    cork_ = at;
    deliverCork();
}

void PlacedDartsOpponent::setDarts(const QList<BoardPoint> &darts)
{
    darts_ = darts.mid(0, 3);
    dartsWaiting_ = true;
    if (GameSession *game = turnGame_) {
        turnGame_ = nullptr;
        takeTurn(*game, turnPlayer_);
    }
}

void PlacedDartsOpponent::takeTurn(GameSession &game, int player)
{
    if (!dartsWaiting_) {
        turnGame_ = &game;
        turnPlayer_ = player;
        return;
    }
    dartsWaiting_ = false;
    DartByDartOpponent::takeTurn(game, player);
}

void PlacedDartsOpponent::throwCork(GameSession &game, int)
{
    corkGame_ = &game;
    deliverCork();
}

void PlacedDartsOpponent::stop()
{
    DartByDartOpponent::stop();
    corkGame_ = nullptr;
    cork_.reset();
    turnGame_ = nullptr;
    dartsWaiting_ = false;
    darts_.clear();
}

void PlacedDartsOpponent::deliverCork()
{
    if (!cork_ || !corkGame_ || corkGame_->phase() != GamePhase::CorkAwaited)
        return;
    GameSession *game = corkGame_;
    const BoardPoint at = *cork_;
    corkGame_ = nullptr;
    cork_.reset();
    game->placeDart(at);
    sounds_.play(landingCue(at), true);
    game->confirmCork();
}

std::optional<DartByDartOpponent::NextDart>
PlacedDartsOpponent::nextDart(const GameSession &, int, int index, const ComputerX01Turn *)
{
    if (index >= darts_.size())
        return std::nullopt;
    // Described where it is shown: on the picture's whole pixels.
    const BoardPoint at = onMarkerGrid(darts_[index], flightMarkerSide);
    return NextDart{{at.x, at.y, dartDescriptionFromXY(at.x, at.y)}, std::nullopt};
}

} // namespace tavrix
