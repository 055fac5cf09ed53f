#pragma once

// "Establishing Network Connection": while the server waits for its caller
// or the client calls, this box says what is happening and offers "Cancel";
// it drives the retries and the time-out with `SocketTimer`. The client
// calls every 6 s, 11 times in all, and gives up after the 11th; the server
// waits 60 s. A port that cannot be had is said at once. While the server
// waits, a line of its own says where the other player should connect.

#include <QDialog>
#include <QHostAddress>
#include <QList>

#include <functional>

class QLabel;
class QPushButton;
class QTimer;

namespace tavrix {

class NetLink;

class MyCancelBox : public QDialog {
    Q_OBJECT

public:
    static constexpr int clientRetryMs = 6000;
    static constexpr int clientRetries = 10;
    static constexpr int serverWaitMs = 60000;

    // `clientAddress` reads the host and port again from the dialog at each
    // retry.
    MyCancelBox(NetLink &link, std::function<std::pair<QString, QString>()> clientAddress,
                QWidget *mainWindow);

    // Starts waiting for, or calling, the opponent named `name` (the
    // previous opponent's name, or none, before the greeting says it).
    void serverListen(const QString &name, const QString &port);
    void clientConnect(const QString &name, const QString &host, const QString &port);
    // The greeting has arrived: the box closes.
    void connectionEstablished();
    void connectTimedOut();

    // Where this computer's addresses come from; its network interfaces
    // unless a test says otherwise.
    void setAddressSource(std::function<QList<QHostAddress>()> source) { addressSource_ = std::move(source); }

    int connectAttempts() const { return connectAttempts_; }
    QTimer *socketTimer() const { return timer_; }
    // The timer's tick, also for tests that step it.
    void socketTimerTick();

signals:
    // The box closed without a connection (time-out and "Close", or
    // "Cancel"), or gave up: the game can be set up again.
    void startAllowed();

private:
    void cancelClicked();
    void giveUp(const QString &text);
    void attempt(const QString &host, const QString &port);

    NetLink &link_;
    std::function<std::pair<QString, QString>()> clientAddress_;
    std::function<QList<QHostAddress>()> addressSource_;
    QLabel *label_;
    QLabel *addresses_;
    QPushButton *cancel_;
    QTimer *timer_;
    QString name_;
    bool server_ = false;
    int connectAttempts_ = 0;
};

} // namespace tavrix
