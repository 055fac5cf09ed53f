#include "core/net/net_link.h"

#include "core/net/message_codec.h"

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <algorithm>

namespace tavrix {

PortChoice parsePort(const QString &text)
{
    bool ok = false;
    const int value = text.trimmed().toInt(&ok);
    if (!ok || value < 1 || value > 65535)
        return {std::nullopt, QStringLiteral("The port must be a whole number from 1 to 65535, not \"%1\".")
                                  .arg(text)};
    return {static_cast<quint16>(value), {}};
}

NetLink::NetLink(QObject *parent)
    : QObject(parent)
    , server_(new QTcpServer(this))
{
    server_->setMaxPendingConnections(maxCandidates);
    connect(server_, &QTcpServer::newConnection, this, &NetLink::takeCallers);
}

NetLink::~NetLink()
{
    // Leaving quietly: the peer learns of it from the closed connection.
    if (socket_)
        socket_->disconnect(this);
    for (const Candidate &candidate : candidates_)
        candidate.socket->disconnect(this);
}

quint16 NetLink::listeningPort() const
{
    return server_->isListening() ? server_->serverPort() : 0;
}

bool NetLink::listen(quint16 port)
{
    close();
    lastError_.clear();
    if (server_->listen(QHostAddress::Any, port)) {
        state_ = State::Listening;
        return true;
    }
    switch (server_->serverError()) {
    case QAbstractSocket::AddressInUseError:
        lastError_ = QStringLiteral("Port %1 is in use by another program. Choose another port, "
                                    "and give the caller the same one.").arg(port);
        break;
    case QAbstractSocket::SocketAccessError:
        lastError_ = QStringLiteral("Port %1 is reserved to the system administrator. "
                                    "Choose a port from 1024 to 65535.").arg(port);
        break;
    default:
        lastError_ = QStringLiteral("Cannot listen on port %1: %2").arg(port).arg(server_->errorString());
        break;
    }
    return false;
}

void NetLink::connectTo(const QString &host, quint16 port)
{
    close();
    auto *socket = new QTcpSocket(this);
    socket->setReadBufferSize(readBufferBytes);
    adopt(socket);
    state_ = State::Connecting;
    connect(socket, &QTcpSocket::connected, this, [this] {
        state_ = State::Connected;
        emit connected();
    });
    socket->connectToHost(host.trimmed(), port);
}

void NetLink::takeCallers()
{
    while (QTcpSocket *caller = server_->nextPendingConnection()) {
        if (state_ != State::Listening) {
            caller->abort();
            caller->deleteLater();
            continue;
        }
        // A crowd of silent callers must not keep the next one out: the one
        // held longest has had the most time to greet.
        if (candidates_.size() >= size_t(maxCandidates))
            dropCandidate(candidates_.front().socket);
        caller->setParent(this);
        caller->setReadBufferSize(greetingByteLimit + 1);
        candidates_.push_back({caller, {}});
        connect(caller, &QTcpSocket::readyRead, this, [this, caller] { candidateSpoke(caller); });
        connect(caller, &QTcpSocket::disconnected, this, [this, caller] { dropCandidate(caller); });
        QTimer::singleShot(greetingWaitMs_, caller, [this, caller] { dropCandidate(caller); });
        if (caller->bytesAvailable() > 0)
            candidateSpoke(caller);
    }
}

void NetLink::candidateSpoke(QTcpSocket *socket)
{
    const auto held = std::find_if(candidates_.begin(), candidates_.end(),
                                   [socket](const Candidate &c) { return c.socket == socket; });
    if (held == candidates_.end())
        return;
    held->bytes += socket->read(greetingByteLimit + 1 - held->bytes.size());
    const qsizetype end = held->bytes.indexOf(messageEnd);
    if (end < 0) {
        if (held->bytes.size() > greetingByteLimit)
            dropCandidate(socket);
        return;
    }
    if (!isGreeting(held->bytes.first(end))) {
        dropCandidate(socket);
        return;
    }
    // The caller greeted: it is the connection now, and no one else is
    // answered.
    QByteArray heard = std::move(held->bytes);
    candidates_.erase(held);
    socket->disconnect(this);
    server_->close();
    dropCandidates();
    dropSocket();
    socket->setReadBufferSize(readBufferBytes);
    adopt(socket);
    state_ = State::Connected;
    emit connected();
    if (socket_ != socket)
        return; // closed by whoever heard of the connection
    heard += socket->readAll();
    emit received(heard);
}

void NetLink::dropCandidate(QTcpSocket *socket)
{
    const auto held = std::find_if(candidates_.begin(), candidates_.end(),
                                   [socket](const Candidate &c) { return c.socket == socket; });
    if (held == candidates_.end())
        return;
    candidates_.erase(held);
    socket->disconnect(this);
    socket->abort();
    socket->deleteLater();
}

void NetLink::dropCandidates()
{
    while (!candidates_.empty())
        dropCandidate(candidates_.front().socket);
}

void NetLink::adopt(QTcpSocket *socket)
{
    socket_ = socket;
    connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
        if (socket == socket_)
            emit received(socket->readAll());
    });
    connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
        if (socket != socket_ || state_ != State::Connected)
            return;
        state_ = State::Closed;
        emit peerClosed();
    });
    // A call that fails is only a call that did not succeed: the caller's
    // timer decides what comes next.
    connect(socket, &QTcpSocket::errorOccurred, this, [this, socket](QAbstractSocket::SocketError) {
        if (socket == socket_ && state_ == State::Connected && socket->state() != QAbstractSocket::ConnectedState) {
            state_ = State::Closed;
            emit peerClosed();
        }
    });
}

void NetLink::dropSocket()
{
    if (!socket_)
        return;
    QTcpSocket *socket = socket_;
    socket_ = nullptr;
    socket->disconnect(this);
    if (socket->state() != QAbstractSocket::ConnectedState) {
        socket->abort();
        socket->deleteLater();
        return;
    }
    // What was sent last (a goodbye) still goes out before the connection
    // closes.
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    socket->disconnectFromHost();
}

void NetLink::close()
{
    server_->close();
    dropCandidates();
    dropSocket();
    state_ = State::Closed;
}

bool NetLink::send(const QByteArray &bytes)
{
    if (!socket_ || state_ != State::Connected)
        return false;
    return socket_->write(bytes) == bytes.size();
}

} // namespace tavrix
