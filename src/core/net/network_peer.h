#pragma once

// The player at the other copy of the program, as one side of the game. Its
// cork dart and its sets arrive as messages and are revealed a dart a tick
// like the computer's; what the player at this board does that the other
// copy must see (the cork dart, each confirmed set, "Ok" after the cork,
// "Play Again", quitting) goes out as messages. Both copies must agree
// before the first turn and before playing again: the peer keeps that
// handshake and says when it is complete.

#include "core/net/message_codec.h"
#include "core/opponent/dart_by_dart_opponent.h"

#include <functional>
#include <optional>

namespace tavrix {

class NetworkPeer : public DartByDartOpponent {
    Q_OBJECT

public:
    // `send` puts a message on the connection (false when there is none);
    // `game` is the game model it plays in.
    NetworkPeer(SoundOut &sounds, GameSession &game, std::function<bool(const NetMessage &)> send,
                QObject *parent = nullptr);

    void throwCork(GameSession &game, int player) override;
    void takeTurn(GameSession &game, int player) override;
    void stop() override;

    // A message of the game from the other copy: its cork dart, its set,
    // its "Ok" after the cork, its "Play Again", its quitting. Other
    // messages are not for the peer and change nothing.
    void receive(const NetMessage &message);

    // What the player at this board did. The cork dart and a confirmed set
    // are sent as the game model has them, which is where their markers
    // stand.
    void corkConfirmed();
    void setConfirmed();
    // "Ok" after the cork: true when the other copy's player has clicked it
    // too and the first turn may start; otherwise firstTurnAgreed() comes
    // when it does.
    bool agreeToFirstTurn();
    // "Play Again": true when the other copy asked first and the game starts
    // now; otherwise playAgainAgreed() comes when it agrees.
    bool agreeToPlayAgain();
    // The player at this board quit while connected.
    void quit();

    // A new game starts: neither side has clicked "Ok" after its cork.
    void newGame();
    // Back to the set-up: no request to play again stands either.
    void forgetGames();

    // This side clicked "Ok" after the cork, and the other not yet.
    bool awaitingFirstTurn() const;
    // This side asked to play again and waits for the other.
    bool awaitingPlayAgain() const { return localPlayAgain_; }
    // The other side asked to play again first.
    bool playAgainAsked() const { return remotePlayAgain_; }

signals:
    void firstTurnAgreed();
    // The other copy agreed to the game this side asked to play again.
    void playAgainAgreed();
    // The other copy asks to play again.
    void playAgainRequested();
    // The other copy's player quit.
    void peerQuit();

protected:
    std::optional<NextDart> nextDart(const GameSession &game, int index) override;
    bool hasDart(int index) const override { return index < darts_.size(); }

private:
    void placeCork(BoardPoint at);
    void setDarts(const QList<BoardPoint> &darts);
    void deliverCork();

    GameSession &game_;
    std::function<bool(const NetMessage &)> send_;
    bool localBullOk_ = false;
    bool remoteBullOk_ = false;
    bool localPlayAgain_ = false;
    bool remotePlayAgain_ = false;

    // The other player is player 1 of the game model, the player here 2.
    static constexpr int peerPlayer = 1;
    // The darts of the turn being revealed.
    QList<BoardPoint> darts_;
    // A set that came before its turn started.
    std::optional<QList<BoardPoint>> held_;
    // A turn started before its set came.
    bool turnWaiting_ = false;
    int turnPlayer_ = 1;
    std::optional<BoardPoint> cork_;
    bool corkAwaited_ = false;
};

} // namespace tavrix
