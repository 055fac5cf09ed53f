#include "ui/net/network_game.h"

#include "ui/dialogs/messages.h"
#include "ui/net/chat_dialog.h"
#include "ui/net/connection_box.h"
#include "core/net/net_game_rules.h"
#include "core/net/network_peer.h"

#include <QAction>
#include <QElapsedTimer>
#include <QLabel>

namespace tavrix {

NetworkGame::NetworkGame(Messages &messages, QWidget *mainWindow,
                         std::function<std::pair<QString, QString>()> clientAddress,
                         std::function<QString()> localName, QObject *parent)
    : QObject(parent)
    , messages_(messages)
    , mainWindow_(mainWindow)
    , localName_(std::move(localName))
    , box_(new MyCancelBox(link_, std::move(clientAddress), mainWindow))
    , chat_(new ChatDialog([this](const QString &text) { return send(RemarkMessage{text}); }, mainWindow))
{
    link_.setObjectName(QStringLiteral("Socket"));
    connect(&link_, &NetLink::connected, this, &NetworkGame::linkConnected);
    connect(&link_, &NetLink::received, this, &NetworkGame::bytesArrived);
    connect(&link_, &NetLink::peerClosed, this, &NetworkGame::linkLost);
    connect(box_, &MyCancelBox::startAllowed, this, &NetworkGame::startAllowed);
    chat_->setEnabled(false);
}

NetworkGame::~NetworkGame() = default;

void NetworkGame::setIndicators(QLabel *active, QAction *closeNet, QAction *showChat)
{
    active_ = active;
    closeNet_ = closeNet;
    showChat_ = showChat;
    if (active_)
        active_->setVisible(established_);
    if (showChat_)
        connect(showChat_, &QAction::triggered, this, &NetworkGame::showChat, Qt::UniqueConnection);
    if (established_)
        enableNetMenuOpts();
    else
        disableNetMenuOpts();
}

void NetworkGame::choose(bool networkPlay, NetRole role)
{
    networkPlay_ = networkPlay;
    // Both copies must agree on who called: a live connection keeps its ends.
    if (networkPlay && !isConnected())
        role_ = role;
}

void NetworkGame::waitForConnect(const QString &name, const QString &port)
{
    established_ = false;
    box_->serverListen(name, port);
}

void NetworkGame::connectToServer(const QString &name, const QString &host, const QString &port)
{
    established_ = false;
    box_->clientConnect(name, host, port);
}

void NetworkGame::linkConnected()
{
    // A new connection starts with nothing half-received from an old one.
    decoder_.reset();
    queue_.clear();
    // The client speaks first.
    if (role_ == NetRole::Client)
        send(HelloMessage{localName_()});
}

bool NetworkGame::send(const NetMessage &message)
{
    const QByteArray bytes = encodeMessage(message);
    return !bytes.isEmpty() && link_.send(bytes);
}

// Runs in the socket's notification: decodes and queues, and nothing else,
// so that it returns at once and the socket goes on notifying while a
// message box is open.
void NetworkGame::bytesArrived(const QByteArray &bytes)
{
    const QList<NetMessage> messages = decoder_.feed(bytes);
    if (decoder_.overflowed()) {
        // The peer sends without ever ending a message: no game comes of it.
        endFlood(floodedText(peerName_));
        return;
    }
    for (const NetMessage &message : messages) {
        if (!std::holds_alternative<IgnoredMessage>(message))
            queue_.push_back(message);
    }
    if (queue_.size() > size_t(maxQueuedMessages)) {
        endFlood(overwhelmedText(peerName_, maxQueuedMessages));
        return;
    }
    if (!queue_.empty())
        scheduleDrain();
}

void NetworkGame::endFlood(const QString &text)
{
    const bool wasEstablished = established_;
    link_.close();
    decoder_.reset();
    queue_.clear();
    messages_.error(mainWindow_, QString::fromLatin1(applicationTitle), text);
    if (wasEstablished)
        linkLost();
}

void NetworkGame::scheduleDrain()
{
    if (drainScheduled_)
        return;
    drainScheduled_ = true;
    QMetaObject::invokeMethod(this, &NetworkGame::drain, Qt::QueuedConnection);
}

void NetworkGame::drain()
{
    drainScheduled_ = false;
    // Called from inside a handler's wait: the handler's own slice goes on
    // when it returns.
    if (handling_)
        return;
    handling_ = true;
    QElapsedTimer slice;
    slice.start();
    for (int handled = 0; !queue_.empty() && handled < sliceMessages && slice.elapsed() < sliceMs; ++handled) {
        const NetMessage message = queue_.front();
        queue_.pop_front();
        handle(message);
    }
    handling_ = false;
    if (!queue_.empty())
        scheduleDrain();
}

void NetworkGame::handle(const NetMessage &message)
{
    std::visit(Overloaded{
                   [this](const HelloMessage &m) {
                       // One greeting a connection.
                       if (established_)
                           return;
                       peerName_ = m.name;
                       if (role_ == NetRole::Server)
                           send(HelloMessage{localName_()});
                       established_ = true;
                       networkPlay_ = true;
                       chat_->setLocalName(localName_());
                       if (active_)
                           active_->show();
                       box_->connectionEstablished();
                       enableNetMenuOpts();
                       emit greeted(m.name);
                   },
                   [this](const GameMessage &m) { emit gameChosen(m); },
                   [this](const MatchMessage &m) {
                       if (established_)
                           emit matchProposed(m.sets, m.legs);
                   },
                   [this](const MatchOkMessage &) {
                       if (established_)
                           emit matchAccepted();
                   },
                   [this](const RemarkMessage &m) { chat_->displayMessage(peerName_, m.text); },
                   [](const IgnoredMessage &) {},
                   [this, &message](const auto &) {
                       if (peer_)
                           peer_->receive(message);
                   },
               },
               message);
}

void NetworkGame::linkLost()
{
    if (!established_) {
        queue_.clear();
        return; // during the handshake the progress box decides what comes next
    }
    // What the peer sent before it closed (its quitting, say) still counts,
    // in order, before its leaving does; unless a handler is waiting for
    // the user, in which case the rest is dropped. Nothing waits beyond the
    // connection.
    if (!handling_) {
        handling_ = true;
        while (!queue_.empty()) {
            const NetMessage message = queue_.front();
            queue_.pop_front();
            handle(message);
        }
        handling_ = false;
    }
    queue_.clear();
    established_ = false;
    if (active_)
        active_->hide();
    disableNetMenuOpts();
    emit peerGone();
}

void NetworkGame::closeConnection()
{
    link_.close();
    queue_.clear();
    established_ = false;
    if (active_)
        active_->hide();
    disableNetMenuOpts();
}

void NetworkGame::showChat()
{
    chat_->appear();
}

void NetworkGame::enableNetMenuOpts()
{
    chat_->setEnabled(true);
    for (QAction *entry : {closeNet_.data(), showChat_.data()}) {
        if (entry)
            entry->setEnabled(true);
    }
}

void NetworkGame::disableNetMenuOpts()
{
    chat_->setEnabled(false);
    chat_->hide();
    for (QAction *entry : {closeNet_.data(), showChat_.data()}) {
        if (entry)
            entry->setEnabled(false);
    }
}

} // namespace tavrix
