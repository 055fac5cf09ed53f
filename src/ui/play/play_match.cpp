// Play mode in matches of legs and sets. Each leg is a game as any other;
// the match keeps the score between them, says who throws first in each leg,
// starts the legs after the first without a cork, and is recorded beside the
// games. Over the network the copy that chose the game (the server, after
// the greeting) proposes the format right after it, and the match is played
// only when the other copy agreed before its cork dart.

#include "ui/play/play_controller.h"

#include "core/games/match_play.h"
#include "core/net/net_game_rules.h"
#include "core/net/network_peer.h"
#include "core/session/session.h"
#include "core/stats/game_journal.h"
#include "core/stats/game_store.h"
#include "ui/dialogs/messages.h"
#include "ui/dialogs/stats_rescue.h"
#include "ui/net/network_game.h"
#include "ui/play/game_frame.h"
#include "ui/play/score_glance.h"

#include <QLabel>

namespace tavrix {

namespace {

// The local player is the match's player 1, the opponent its player 0.
constexpr int localPlayer = matchPlayerOf(2);
constexpr int opponentPlayer = matchPlayerOf(1);

std::array<QString, 2> namesOf(const GameOptions &options) { return {options.names[0], options.names[1]}; }

} // namespace

bool PlayController::matchContinues() const
{
    return match_ && !match_->isOver();
}

std::pair<QString, QString> PlayController::quitQuestion() const
{
    if (matchContinues())
        return {QStringLiteral("Quit Match?"),
                QStringLiteral("Quit the match in progress? It is recorded as abandoned.")};
    return {QStringLiteral("Quit Game?"), QStringLiteral("Quit game in progress?")};
}

void PlayController::chooseMatchFormat()
{
    match_.reset();
    matchId_ = 0;
    matchFormat_ = form_.matchFormat();
}

void PlayController::startMatch()
{
    if (matchFormat_.kind == MatchKind::SingleGame || match_)
        return;
    // Over the network a match proposed by this side stands only when the
    // other copy agreed before its cork dart, which it sent before this
    // decision; without the answer both copies play a single game.
    if (game_.overNetwork() && proposal_ != Proposal::Accepted && !acceptedHere_) {
        proposal_ = Proposal::None;
        matchFormat_ = MatchFormat::singleGame();
        showMatchGlance();
        if (!peerSinglesOnly_) {
            peerSinglesOnly_ = true;
            c_.messages.notice(c_.window, QString::fromLatin1(applicationTitle),
                               QStringLiteral("The other copy plays single games only."));
        }
        return;
    }
    matchOfferOpen_ = false;
    const GameOptions &options = game_.options();
    const std::optional<qint64> id =
        journal_->startMatch({c_.session.currentPlayerId, options.type, options.skill, options.names[0],
                              int(matchFormat_.kind), matchFormat_.sets, matchFormat_.legs});
    if (!id) {
        // Without its row the match could not be recorded: back to the options.
        databaseFailed();
        if (net_->established() && game_.overNetwork())
            peer_->quit();
        resetGame();
        return;
    }
    matchId_ = *id;
    match_.emplace(matchFormat_, matchPlayerOf(game_.currentThrower()));
    recordMatch(MatchLeg{matchId_, game_.gameId(), 1, 1, game_.currentThrower()});
    showMatchGlance();
}

void PlayController::startNextLeg(const GameOptions &options, qint64 gameId)
{
    const int first = gamePlayerOf(match_->nextFirstThrower().value_or(localPlayer));
    game_.startLeg(options, gameId, first);
    recordMatch(MatchLeg{matchId_, gameId, match_->setNumber(), match_->legNumber(), first});
    c_.frame.colourThrower(first);
    showGlance();
    nextTurn();
}

bool PlayController::matchLegWon(int winner)
{
    if (!matchContinues())
        return false;
    const LegOutcome outcome = match_->recordLeg(matchPlayerOf(winner), game_.legFigures());
    const std::array<QString, 2> names = namesOf(game_.options());
    // The new score shows behind the alert.
    showMatchGlance();
    // Not when the other side has already asked to go on.
    const bool alert = !(game_.overNetwork() && peer_->playAgainAsked());
    if (outcome == LegOutcome::MatchWon) {
        recordMatch(std::nullopt, matchEnd());
        if (alert)
            c_.messages.alert(matchOverText(*match_, game_.alertName(winner), names,
                                            game_.options().type == GameType::Cricket),
                              QStringLiteral("Good Game!"));
    } else if (alert) {
        c_.messages.alert(legOverText(*match_, outcome, game_.alertName(winner), names), legOverTitle(outcome));
    }
    return true;
}

void PlayController::abandonMatch()
{
    nextLeg_ = false;
    if (!matchContinues())
        return;
    const bool legInPlay = game_.phase() != GamePhase::GameOver && game_.phase() != GamePhase::Idle;
    match_->abandonLeg(legInPlay ? game_.legFigures() : LegFigures{});
    recordMatch(std::nullopt, matchEnd());
}

MatchEnd PlayController::matchEnd() const
{
    MatchEnd end;
    if (const std::optional<int> winner = match_->winner())
        end.result = *winner == localPlayer ? QStringLiteral("W") : QStringLiteral("L");
    else
        end.result = QStringLiteral("A");
    end.playerLegs = match_->legsWon(localPlayer);
    end.opponentLegs = match_->legsWon(opponentPlayer);
    end.playerSets = match_->setsWon(localPlayer);
    end.opponentSets = match_->setsWon(opponentPlayer);
    end.playerPoints = match_->points(localPlayer);
    end.playerDarts = match_->darts(localPlayer);
    end.opponentPoints = match_->points(opponentPlayer);
    end.opponentDarts = match_->darts(opponentPlayer);
    return end;
}

void PlayController::recordMatch(std::optional<MatchLeg> leg, std::optional<MatchEnd> end)
{
    if (matchId_ == 0)
        return;
    std::optional<std::pair<qint64, MatchEnd>> ended;
    if (end)
        ended = std::pair{matchId_, *end};
    if (!journal_->recordMatch(leg, ended) && c_.rescue.fileLost())
        c_.rescue.tellFileLost(c_.window, c_.store.lastError());
}

void PlayController::showMatchGlance()
{
    ScoreGlance *glance = c_.frame.scoreGlance;
    if (match_) {
        const bool legInPlay = game_.phase() != GamePhase::GameOver;
        glance->showMatch(matchScoreText(*match_), legStarterText(*match_, namesOf(game_.options()), legInPlay));
        return;
    }
    // Before the cork decides the first leg: the format to be played, once
    // it is agreed.
    const bool agreed = !game_.overNetwork() || acceptedHere_ || proposal_ == Proposal::Accepted;
    if (matchFormat_.kind != MatchKind::SingleGame && agreed && game_.phase() != GamePhase::Idle)
        glance->showMatch(matchFormat_.text(), {});
    else
        glance->showMatch({}, {});
}

// --- Over the network ----------------------------------------------------------

void PlayController::proposeMatch()
{
    matchFormat_ = peerSinglesOnly_ ? MatchFormat::singleGame() : form_.matchFormat();
    match_.reset();
    matchId_ = 0;
    proposal_ = Proposal::None;
    acceptedHere_ = false;
    matchOfferOpen_ = false;
    if (matchFormat_.kind == MatchKind::SingleGame)
        return;
    const auto [sets, legs] = wireFormat(matchFormat_);
    proposal_ = Proposal::Awaiting;
    net_->send(MatchMessage{sets, legs});
}

void PlayController::matchProposed(int sets, int legs)
{
    const std::optional<MatchFormat> format = formatFromWire(sets, legs);
    if (!format || !matchOfferOpen_ || !game_.overNetwork())
        return;
    matchOfferOpen_ = false;
    acceptedHere_ = format->kind != MatchKind::SingleGame;
    matchFormat_ = *format;
    form_.showMatchFormat(*format);
    net_->send(MatchOkMessage{});
    showMatchGlance();
}

void PlayController::matchAccepted()
{
    if (proposal_ != Proposal::Awaiting)
        return;
    proposal_ = Proposal::Accepted;
    showMatchGlance();
}

} // namespace tavrix
