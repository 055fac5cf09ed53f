#pragma once

// A game against another copy of the program, as far as the connection goes:
// the one link and its progress box, the chat window, the greeting that
// completes a connection, the indicators of a live connection, and the
// messages that arrive, handed on one at a time and in order: the greeting,
// the game's options and the match as signals to the play controller, chat lines to
// the chat window, and the messages of the game itself to the peer.

#include "core/games/game_session.h"
#include "core/net/message_codec.h"
#include "core/net/net_link.h"
#include "core/net/network_peer.h"

#include <QObject>
#include <QPointer>

#include <deque>
#include <functional>

class QAction;
class QLabel;
class QWidget;

namespace tavrix {

class ChatDialog;
class Messages;
class MyCancelBox;

class NetworkGame : public QObject {
    Q_OBJECT

public:
    // Messages waiting at most; one more ends the connection. A message
    // holds a kilobyte at most (a chat line), so the queue stays near twenty
    // megabytes whatever the other side sends.
    static constexpr int maxQueuedMessages = 20000;
    // A slice of handling ends after this many messages or this much time,
    // whichever comes first.
    static constexpr int sliceMessages = 256;
    static constexpr int sliceMs = 4;

    // `clientAddress` gives the host and port typed for the client at each
    // attempt; `localName` the name of the player at this board.
    NetworkGame(Messages &messages, QWidget *mainWindow,
                std::function<std::pair<QString, QString>()> clientAddress,
                std::function<QString()> localName, QObject *parent = nullptr);
    ~NetworkGame() override;

    NetLink &link() { return link_; }
    MyCancelBox *cancelBox() const { return box_; }
    ChatDialog *chat() const { return chat_; }
    // "Network Connection Active", and the entries "Close Net Connection"
    // and "Show Chat Window", enabled while a connection stands. "Show Chat
    // Window" shows the chat; what "Close Net Connection" does is the play
    // controller's to decide.
    void setIndicators(QLabel *active, QAction *closeNet, QAction *showChat);

    // The choice of "Start Game": a game over the network or not, and which
    // end. While a connection stands its end stays what it was.
    void choose(bool networkPlay, NetRole role);
    bool networkPlay() const { return networkPlay_; }
    NetRole role() const { return networkPlay_ ? role_ : NetRole::None; }
    // Connected, and the other side has greeted.
    bool isConnected() const { return link_.isConnected(); }
    bool established() const { return established_; }
    // The other player's name, from its greeting.
    const QString &peerName() const { return peerName_; }
    // Messages received and not yet handled.
    qsizetype queuedMessages() const { return qsizetype(queue_.size()); }

    // Starts waiting for the caller, or calling; `name` is the opponent's
    // name so far (the previous one, or none).
    void waitForConnect(const QString &name, const QString &port);
    void connectToServer(const QString &name, const QString &host, const QString &port);
    // "Close Net Connection".
    void closeConnection();
    void showChat();

    // Sends a message over the live connection; false when there is none.
    bool send(const NetMessage &message);

    // The other copy's player in the game, who takes the messages of the
    // game itself: cork, sets, "Ok", "Play Again" and quitting.
    void setPeer(NetworkPeer *peer) { peer_ = peer; }

signals:
    // The greeting arrived: the connection stands (the server has already
    // answered with its own greeting).
    void greeted(const QString &name);
    void gameChosen(const GameMessage &message);
    // The server proposes a match (MAT), in its wire numbers: sets to win (1
    // outside a set match) and legs to win the match or each set (1 in a
    // single game); and the client's answer that it plays it (MOK). Only
    // once the connection is established: before the greeting they are
    // dropped.
    void matchProposed(int sets, int legs);
    void matchAccepted();
    // The other side closed an established connection, or it was ended.
    void peerGone();
    // The progress box closed or gave up without a connection.
    void startAllowed();

private:
    void linkConnected();
    void bytesArrived(const QByteArray &bytes);
    void endFlood(const QString &text);
    void scheduleDrain();
    void drain();
    void handle(const NetMessage &message);
    void linkLost();
    void enableNetMenuOpts();
    void disableNetMenuOpts();

    Messages &messages_;
    QWidget *mainWindow_;
    std::function<QString()> localName_;
    NetLink link_;
    MessageDecoder decoder_;
    MyCancelBox *box_;
    ChatDialog *chat_;
    QPointer<QLabel> active_;
    QPointer<QAction> closeNet_;
    QPointer<QAction> showChat_;
    bool networkPlay_ = false;
    NetRole role_ = NetRole::None;
    bool established_ = false;
    QString peerName_;
    // Messages waiting to be handled: bytes go on arriving while a handler
    // waits for a sound or a message box.
    std::deque<NetMessage> queue_;
    // A handler is running (perhaps waiting in a box's event loop): the next
    // message waits for it.
    bool handling_ = false;
    bool drainScheduled_ = false;
    QPointer<NetworkPeer> peer_;
};

} // namespace tavrix
