#include "core/net/network_peer.h"

#include "core/games/game_session.h"
#include "core/net/net_game_rules.h"
#include "core/sound/sound_cue.h"

namespace tavrix {

NetworkPeer::NetworkPeer(SoundOut &sounds, GameSession &game, std::function<bool(const NetMessage &)> send,
                         QObject *parent)
    : DartByDartOpponent(sounds, parent)
    , game_(game)
    , send_(std::move(send))
{
}

// What the game can use now is used; anything else (a second cork dart, a
// set when one is already held, "Ok" or "Play Again" twice, or out of their
// phase) changes nothing, so no stream of messages does more than one would.
void NetworkPeer::receive(const NetMessage &message)
{
    const GamePhase phase = game_.phase();
    const bool atCork = phase == GamePhase::CorkAwaited || phase == GamePhase::CorkPlaced;
    std::visit(Overloaded{
                   [&](const BullMessage &m) {
                       // One cork dart a game; one may come before it is awaited.
                       if (game_.overNetwork() && atCork && !cork_ && !game_.corkDart(peerPlayer))
                           placeCork(dartAtMarker(m.dart));
                   },
                   [&](const BullOkMessage &) {
                       if (!game_.overNetwork() || remoteBullOk_ || !(atCork || phase == GamePhase::CorkResult))
                           return;
                       remoteBullOk_ = true;
                       // This side clicked "Ok" first and waited.
                       if (localBullOk_ && phase == GamePhase::CorkResult)
                           emit firstTurnAgreed();
                   },
                   [&](const SetMessage &m) {
                       // A set may come before its turn starts here; one is held, no more.
                       if (!game_.overNetwork() || held_ || !(phase == GamePhase::CorkResult || phase == GamePhase::Turn))
                           return;
                       QList<BoardPoint> points;
                       for (const PicturePos &dart : m.darts)
                           points.append(dartAtMarker(dart));
                       setDarts(points);
                   },
                   [&](const PlayAgainMessage &) {
                       // The other side may ask while this side still shows its last turn.
                       if (!game_.overNetwork() || remotePlayAgain_
                           || !(phase == GamePhase::Turn || phase == GamePhase::GameOver))
                           return;
                       if (localPlayAgain_) {
                           // This side asked first and stood by.
                           localPlayAgain_ = false;
                           emit playAgainAgreed();
                           return;
                       }
                       remotePlayAgain_ = true;
                       emit playAgainRequested();
                   },
                   [this](const QuitMessage &) { emit peerQuit(); },
                   [](const auto &) {},
               },
               message);
}

void NetworkPeer::corkConfirmed()
{
    if (const std::optional<BoardPoint> cork = game_.corkDart(2))
        send_(BullMessage{markerPosOf(*cork)});
}

void NetworkPeer::setConfirmed()
{
    SetMessage set;
    for (int i = 0; i < game_.dartsPlaced(); ++i) {
        if (const std::optional<BoardPoint> &dart = game_.setDarts()[i])
            set.darts.append(markerPosOf(*dart));
    }
    send_(set);
}

bool NetworkPeer::agreeToFirstTurn()
{
    localBullOk_ = true;
    send_(BullOkMessage{});
    return remoteBullOk_;
}

bool NetworkPeer::agreeToPlayAgain()
{
    if (!remotePlayAgain_) {
        // Asked first: the game starts when the other side agrees.
        localPlayAgain_ = true;
        send_(PlayAgainMessage{});
        return false;
    }
    remotePlayAgain_ = false;
    send_(PlayAgainMessage{});
    return true;
}

void NetworkPeer::quit()
{
    send_(QuitMessage{});
}

void NetworkPeer::newGame()
{
    localBullOk_ = false;
    remoteBullOk_ = false;
}

void NetworkPeer::forgetGames()
{
    newGame();
    localPlayAgain_ = false;
    remotePlayAgain_ = false;
}

bool NetworkPeer::awaitingFirstTurn() const
{
    return game_.overNetwork() && game_.phase() == GamePhase::CorkResult && localBullOk_ && !remoteBullOk_;
}

// --- Its darts ------------------------------------------------------------------

void NetworkPeer::placeCork(BoardPoint at)
{
    cork_ = at;
    deliverCork();
}

void NetworkPeer::setDarts(const QList<BoardPoint> &darts)
{
    held_ = darts.mid(0, 3);
    if (turnWaiting_) {
        turnWaiting_ = false;
        takeTurn(game_, turnPlayer_);
    }
}

void NetworkPeer::takeTurn(GameSession &game, int player)
{
    if (!held_) {
        turnWaiting_ = true;
        turnPlayer_ = player;
        return;
    }
    // The darts revealed are apart from the set held, which the next set
    // may fill while these are shown.
    darts_ = *held_;
    held_.reset();
    DartByDartOpponent::takeTurn(game, player);
}

void NetworkPeer::throwCork(GameSession &, int)
{
    corkAwaited_ = true;
    deliverCork();
}

void NetworkPeer::stop()
{
    DartByDartOpponent::stop();
    corkAwaited_ = false;
    cork_.reset();
    turnWaiting_ = false;
    held_.reset();
    darts_.clear();
}

void NetworkPeer::deliverCork()
{
    if (!cork_ || !corkAwaited_ || game_.phase() != GamePhase::CorkAwaited)
        return;
    const BoardPoint at = *cork_;
    corkAwaited_ = false;
    cork_.reset();
    game_.placeDart(at);
    sounds_.play(landingCue(at), true);
    game_.confirmCork();
}

std::optional<DartByDartOpponent::NextDart> NetworkPeer::nextDart(const GameSession &, int index)
{
    if (index >= darts_.size())
        return std::nullopt;
    // Described, shown and scored exactly where it was sent.
    const BoardPoint at = darts_[index];
    return NextDart{{at.x, at.y, dartDescriptionFromXY(at.x, at.y)}, std::nullopt};
}

} // namespace tavrix
