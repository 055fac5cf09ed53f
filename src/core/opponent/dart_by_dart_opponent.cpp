#include "core/opponent/dart_by_dart_opponent.h"

#include "core/games/game_session.h"
#include "core/opponent/computer_turn_rules.h"
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
    dartTexts_.clear();
    throwTimer_->start();
}

void DartByDartOpponent::stop()
{
    throwTimer_->stop();
    game_ = nullptr;
}

void DartByDartOpponent::ThrowTimer_Timer()
{
    // Stopped first: a sound that waits runs the event loop, and the next
    // tick must not come while this dart is still landing.
    throwTimer_->stop();
    if (!game_ || game_->phase() != GamePhase::Turn)
        return;
    const int index = game_->dartsPlaced();
    if (index < 3) {
        if (const std::optional<NextDart> dart = nextDart(*game_, index)) {
            const SimulatedDart &landed = dart->landed;
            game_->placeDart({landed.x, landed.y});
            dartTexts_.append(landed.description);
            // The landing, and the fanfare or harp of a hit; each waits.
            const DartSounds sounds = game_->dartSounds(index, dart->aimedAt);
            sounds_.play(sounds.landing, true);
            if (sounds.hit)
                sounds_.play(*sounds.hit, sounds.hitWaits);
            if (!game_)
                return; // the game was quit while the dart landed
            const bool more = index + 1 < 3 && !game_->turnDecided()
                              && (!game_->rules().turnEndsWithLastSentDart() || hasDart(index + 1));
            if (more) {
                throwTimer_->start();
                return;
            }
        }
    }
    report();
}

void DartByDartOpponent::report()
{
    GameSession *game = game_;
    const QString text = computerTurnReport(game->messageName(player_), dartTexts_, game->reportedPoints());
    game_ = nullptr;
    game->reportTurn(text);
}

// --- The computer -------------------------------------------------------------

ComputerOpponent::ComputerOpponent(SoundOut &sounds, QRandomGenerator &random, const SkillProfile &profile,
                                   QObject *parent)
    : DartByDartOpponent(sounds, parent)
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

std::optional<DartByDartOpponent::NextDart> ComputerOpponent::nextDart(const GameSession &game, int)
{
    const std::optional<ComputerAim> aim = game.computerAim();
    if (!aim)
        return std::nullopt;
    return NextDart{simulateThrow(profile_, random_, aim->point.x, aim->point.y), aim->area};
}

} // namespace tavrix
