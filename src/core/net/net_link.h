#pragma once

// The one network connection between two copies of the program. The server
// listens on a port and takes one caller; the client calls a host and port.
// Whatever either side held before is closed first, so at most one
// connection exists. What travels over the connection is bytes; what they
// mean is for the codec.
//
// A caller must greet before it is taken: the server holds a few callers at
// once as candidates, each with a small allowance of bytes and a few seconds
// to send its greeting, and keeps listening meanwhile. The first to greet
// becomes the connection and only then does the server stop listening; the
// others are closed. A caller that stays silent, sends too much, sends
// anything else first or leaves is dropped, so a stray connection cannot
// keep the real opponent out.

#include <QByteArray>
#include <QObject>
#include <QString>

#include <optional>
#include <vector>

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

    // Callers held at once while they have not greeted; one more drops the
    // one held longest.
    static constexpr int maxCandidates = 4;
    // A greeting is a three-letter command and a name of thirty characters:
    // well under this.
    static constexpr qsizetype greetingByteLimit = 1024;
    static constexpr int defaultGreetingWaitMs = 5000;
    // What the connection's socket holds unread at most; beyond it the
    // system holds the bytes back and the sender waits.
    static constexpr qint64 readBufferBytes = 64 * 1024;

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

    // How long a caller has to greet.
    void setGreetingWait(int ms) { greetingWaitMs_ = ms; }
    // Callers held while they have not greeted.
    int candidateCount() const { return int(candidates_.size()); }

signals:
    // A client's call was answered, or a caller greeted the server. On the
    // server the greeting itself follows at once as received().
    void connected();
    // Bytes arrived, in the order sent, cut anywhere.
    void received(const QByteArray &bytes);
    // The other side closed the connection (or it broke).
    void peerClosed();

private:
    struct Candidate {
        QTcpSocket *socket;
        QByteArray bytes; // what it sent so far
    };

    void takeCallers();
    void candidateSpoke(QTcpSocket *socket);
    void dropCandidate(QTcpSocket *socket);
    void dropCandidates();
    void adopt(QTcpSocket *socket);
    void dropSocket();

    QTcpServer *server_ = nullptr;
    QTcpSocket *socket_ = nullptr;
    std::vector<Candidate> candidates_; // the one held longest first
    int greetingWaitMs_ = defaultGreetingWaitMs;
    State state_ = State::Closed;
    QString lastError_;
};

} // namespace tavrix
