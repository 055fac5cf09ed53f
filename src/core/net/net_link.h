#pragma once

// The one network connection between two copies of the program. The server
// listens on a port and takes one caller; the client calls a host and port.
// Whatever either side held before is closed first, so at most one
// connection exists, and a server that has its caller stops listening. What
// travels over the connection is bytes; what they mean is for the codec.

#include <QByteArray>
#include <QObject>
#include <QString>

#include <optional>

class QTcpServer;
class QTcpSocket;

namespace tavrix {

// A port typed by the user: a whole number from 1 to 65535, blanks around
// it allowed; otherwise what is wrong with it, in words.
struct PortChoice {
    std::optional<quint16> port;
    QString problem;
};
PortChoice parsePort(const QString &text);

class NetLink : public QObject {
    Q_OBJECT

public:
    enum class State { Closed, Listening, Connecting, Connected };

    explicit NetLink(QObject *parent = nullptr);
    ~NetLink() override;

    State state() const { return state_; }
    bool isConnected() const { return state_ == State::Connected; }

    // Closes what is held and listens on every local address at `port`.
    // False, with lastError() in words, when the port cannot be had (in use,
    // or reserved to the administrator).
    bool listen(quint16 port);
    // Closes what is held and starts calling; connected() tells when the
    // connection is up. A failed call is not reported: the caller retries.
    void connectTo(const QString &host, quint16 port);
    // Closes the connection or stops listening or calling. The peer sees
    // peerClosed(); this side sees nothing.
    void close();
    // Sends bytes over a live connection; false when there is none.
    bool send(const QByteArray &bytes);

    QString lastError() const { return lastError_; }
    quint16 listeningPort() const;

signals:
    // A client's call was answered, or a server took its caller.
    void connected();
    // Bytes arrived, in the order sent, cut anywhere.
    void received(const QByteArray &bytes);
    // The other side closed the connection (or it broke).
    void peerClosed();

private:
    void takeCaller();
    void adopt(QTcpSocket *socket);
    void dropSocket();

    QTcpServer *server_ = nullptr;
    QTcpSocket *socket_ = nullptr;
    State state_ = State::Closed;
    QString lastError_;
};

} // namespace tavrix
