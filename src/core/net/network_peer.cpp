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

void NetworkPeer::receive(const NetMessage &message)
{
    std::visit(Overloaded{
                   [this](const BullMessage &m) {
                       if (game_.overNetwork())
                           placeCork(dartAtMarker(m.dart));
                   },
                   [this](const BullOkMessage &) {
                       remoteBullOk_ = true;
                       // This side clicked "Ok" first and waited.
                       if (localBullOk_ && game_.phase() == GamePhase::CorkResult)
                           emit firstTurnAgreed();
                   },
                   [this](const SetMessage &m) {
                       if (!game_.overNetwork())
                           return;
                       QList<BoardPoint> points;
                       for (const PicturePos &dart : m.darts)
                           points.append(dartAtMarker(dart));
                       setDarts(points);
                   },
                   [this](const PlayAgainMessage &) {
                       if (!game_.overNetwork())
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
    darts_ = darts.mid(0, 3);
    dartsWaiting_ = true;
    if (turnWaiting_) {
        turnWaiting_ = false;
        takeTurn(game_, turnPlayer_);
    }
}

void NetworkPeer::takeTurn(GameSession &game, int player)
{
    if (!dartsWaiting_) {
        turnWaiting_ = true;
        turnPlayer_ = player;
        return;
    }
    dartsWaiting_ = false;
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
    dartsWaiting_ = false;
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
    // Described where it is shown: on the picture's whole pixels.
    const BoardPoint at = onMarkerGrid(darts_[index], flightMarkerSide);
    return NextDart{{at.x, at.y, dartDescriptionFromXY(at.x, at.y)}, std::nullopt};
}

} // namespace tavrix
