// "Establishing Network Connection" over 127.0.0.1: the client's eleven
// attempts with the address read again each time, the time-out and "Close",
// the server's wait until its caller comes with where to call it, a port
// that is taken, Cancel.

#include "../support/test_home.h"
#include "ui/net/connection_box.h"
#include "core/net/net_link.h"

#include <QLabel>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>

using namespace tavrix;

class TestConnectionBox : public QObject {
    Q_OBJECT

private slots:
    void clientAttemptsThenTimesOut()
    {
        NetLink link;
        QString host = QStringLiteral("127.0.0.1");
        const QString port = QString::number(freePort());
        MyCancelBox box(link, [&] { return std::pair{host, port}; }, nullptr);
        QSignalSpy allowed(&box, &MyCancelBox::startAllowed);
        auto *label = findControl<QLabel>(&box, "Label1");
        box.clientConnect(QStringLiteral("Bob"), host, port);
        QCOMPARE(label->text(), QStringLiteral("Connecting to Bob at host 127.0.0.1 on port %1 (attempt #1)").arg(port));
        QVERIFY(findControl<QLabel>(&box, "lblLocalAddresses")->isHidden());
        host = QStringLiteral("localhost");
        for (int tick = 0; tick < 10; ++tick)
            box.socketTimerTick();
        QCOMPARE(label->text(), QStringLiteral("Connecting to Bob at host localhost on port %1 (attempt #11)").arg(port));
        QCOMPARE(allowed.count(), 0);
        box.socketTimerTick();
        QCOMPARE(label->text(), QStringLiteral("Connection attempt timed out."));
        QCOMPARE(findControl<QPushButton>(&box, "CancelButton")->text(), QStringLiteral("Close"));
        QVERIFY(!box.socketTimer()->isActive() && box.isVisible() && link.state() == NetLink::State::Closed);
        QCOMPARE(allowed.count(), 1);
        findControl<QPushButton>(&box, "CancelButton")->click();
        QVERIFY(!box.isVisible());
    }

    // The server waits 60 s with the previous opponent's name, says on a
    // line of its own where to call it (or that nothing can), and goes on
    // listening, as it says, while a caller that does not greet is held; the
    // caller that greets is taken and closes the box through the greeting; a
    // second wait on a taken port says so at once; Cancel stops the wait.
    void serverWaits()
    {
        NetLink link;
        MyCancelBox box(link, [] { return std::pair{QString(), QString()}; }, nullptr);
        QSignalSpy allowed(&box, &MyCancelBox::startAllowed);
        auto *label = findControl<QLabel>(&box, "Label1");
        auto *addresses = findControl<QLabel>(&box, "lblLocalAddresses");
        // Only what another computer can call, IPv4 first, each once.
        QList<QHostAddress> own{QHostAddress(QStringLiteral("127.0.0.1")), QHostAddress(QStringLiteral("fe80::1%2")),
                                QHostAddress(QStringLiteral("2001:db8::5")), QHostAddress(QStringLiteral("192.168.1.20")),
                                QHostAddress(QStringLiteral("::ffff:10.0.0.7")), QHostAddress(QStringLiteral("::1")),
                                QHostAddress(QStringLiteral("192.168.1.20"))};
        box.setAddressSource([&] { return own; });
        const QString port = QString::number(freePort());
        box.serverListen(QString(), port);
        QCOMPARE(label->text(), QStringLiteral("Waiting for connection from  on port %1").arg(port));
        QVERIFY(addresses->isVisible());
        QCOMPARE(addresses->text(),
                 QStringLiteral("Tell the other player to connect to 192.168.1.20, 10.0.0.7 or 2001:db8::5 on port %1.")
                     .arg(port));
        QTcpSocket stray;
        stray.connectToHost(QHostAddress::LocalHost, port.toUShort());
        QVERIFY(stray.waitForConnected(5000));
        QTRY_COMPARE(link.candidateCount(), 1);
        QCOMPARE(link.state(), NetLink::State::Listening);
        QVERIFY(label->text().startsWith(QStringLiteral("Waiting for connection from")) && box.isVisible());
        NetLink caller;
        QSignalSpy up(&link, &NetLink::connected);
        QSignalSpy callerUp(&caller, &NetLink::connected);
        caller.connectTo(QStringLiteral("127.0.0.1"), port.toUShort());
        QTRY_COMPARE(callerUp.count(), 1);
        QVERIFY(caller.send("HEL Bob\x03"));
        QTRY_COMPARE(up.count(), 1);
        box.connectionEstablished();
        QVERIFY(!box.isVisible() && !box.socketTimer()->isActive());

        QTcpServer holder;
        QVERIFY(holder.listen(QHostAddress::Any, 0));
        box.serverListen(QStringLiteral("Bob"), QString::number(holder.serverPort()));
        QVERIFY(label->text().startsWith(QStringLiteral("Port %1 is in use by another program.").arg(holder.serverPort())));
        QVERIFY(allowed.count() == 1 && !box.socketTimer()->isActive() && addresses->isHidden());

        own = {QHostAddress(QStringLiteral("127.0.0.1")), QHostAddress(QStringLiteral("fe80::1%2"))};
        box.serverListen(QStringLiteral("Bob"), port);
        QCOMPARE(link.state(), NetLink::State::Listening);
        QCOMPARE(addresses->text(),
                 QStringLiteral("This computer has no address on a network, so no other computer can connect to it."));
        findControl<QPushButton>(&box, "CancelButton")->click();
        QVERIFY(link.state() == NetLink::State::Closed && !box.isVisible());
        QCOMPARE(allowed.count(), 2);
    }
};

QTEST_MAIN(TestConnectionBox)
#include "tst_connection_box.moc"
