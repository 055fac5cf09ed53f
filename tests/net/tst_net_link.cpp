// The connection between two copies, over 127.0.0.1 only: ports typed by
// the user, a call answered once the caller greets, bytes both ways, one
// caller at a time, callers that never greet, and a peer that leaves.
// Failed calls and taken ports are tested with the box that makes them.

#include "core/net/net_link.h"

#include "../support/data_table.h"

#include <QSignalSpy>
#include <QTcpSocket>
#include <QTest>

#include <array>

using namespace tavrix;

class TestNetLink : public QObject {
    Q_OBJECT

    static QByteArray gather(QSignalSpy &spy)
    {
        QByteArray all;
        for (const QList<QVariant> &arrival : std::as_const(spy))
            all += arrival[0].toByteArray();
        return all;
    }

private slots:
    void portsAsTyped_data()
    {
        addTable<QString, int>({"typed", "port"}, // 0: refused
            {{"highest, with blanks", " 65535 ", 65535}, {"empty", "", 0}, {"letters", "abc", 0}, {"0", "0", 0},
             {"65536", "65536", 0}, {"negative", "-1", 0}, {"fraction", "1.5", 0}, {"two numbers", "13 999", 0},
             {"beyond 32 bits", "99999999999", 0}});
    }
    void portsAsTyped()
    {
        QFETCH(QString, typed);
        QFETCH(int, port);
        const PortChoice choice = parsePort(typed);
        QCOMPARE(choice.port.value_or(0), port);
        QCOMPARE(choice.problem.contains(QLatin1String("1 to 65535")), port == 0);
    }

    // The client's call is answered and taken once it greets; bytes go both
    // ways in order; a second caller gets no answer while the first is
    // connected; when the client leaves, the server hears of it and can
    // listen again.
    void oneConnectionBetweenTwoCopies()
    {
        NetLink server;
        NetLink client;
        QVERIFY2(server.listen(0), qPrintable(server.lastError()));
        const quint16 port = server.listeningPort();
        QSignalSpy serverUp(&server, &NetLink::connected);
        QSignalSpy clientUp(&client, &NetLink::connected);
        QSignalSpy atServer(&server, &NetLink::received);
        QSignalSpy atClient(&client, &NetLink::received);
        QSignalSpy serverLost(&server, &NetLink::peerClosed);
        QVERIFY(!client.send("early"));
        client.connectTo(QStringLiteral("127.0.0.1"), port);
        QTRY_COMPARE(clientUp.count(), 1);
        QVERIFY(client.send("HEL 1\x03") && client.send("GAM|2\x03"));
        QTRY_COMPARE(serverUp.count(), 1);

        QVERIFY(server.send(QByteArray("HEL 2\x03")));
        QTRY_COMPARE(gather(atServer), QByteArray("HEL 1\x03GAM|2\x03"));
        QTRY_COMPARE(gather(atClient), QByteArray("HEL 2\x03"));

        NetLink intruder;
        QSignalSpy intruderUp(&intruder, &NetLink::connected);
        intruder.connectTo(QStringLiteral("127.0.0.1"), port);
        QTest::qWait(200);
        QCOMPARE(intruderUp.count(), 0);
        QCOMPARE(serverUp.count(), 1);

        // What is sent just before closing still arrives.
        QVERIFY(client.send("QUI|bye\x03"));
        client.close();
        QTRY_COMPARE(serverLost.count(), 1);
        QVERIFY(gather(atServer).endsWith("QUI|bye\x03"));
        QVERIFY(!server.isConnected());
        QVERIFY(server.listen(port));
        client.connectTo(QStringLiteral("127.0.0.1"), port);
        QTRY_COMPARE(clientUp.count(), 2);
        QVERIFY(client.send("HEL 1\x03"));
        QTRY_COMPARE(serverUp.count(), 2);
    }

    // Callers that never greet cannot keep the real one out: the silent,
    // one that says something else first, one that sends a kilobyte without
    // ending it, one that leaves, and more silent ones than are held. The
    // server listens until the greeting, takes the greeter with what it sent
    // after, and closes the others; a silent caller goes after the wait.
    void strayCallersDoNotKeepTheCallerOut()
    {
        NetLink server;
        server.setGreetingWait(1000);
        QVERIFY2(server.listen(0), qPrintable(server.lastError()));
        const quint16 port = server.listeningPort();
        QSignalSpy up(&server, &NetLink::connected);
        QSignalSpy heard(&server, &NetLink::received);

        std::array<QTcpSocket, 4> strays;
        for (QTcpSocket &stray : strays) {
            stray.connectToHost(QHostAddress::LocalHost, port);
            QVERIFY(stray.waitForConnected(5000));
        }
        strays[1].write("REM|hi\x03HEL Eve\x03");
        strays[2].write(QByteArray(NetLink::greetingByteLimit + 1, 'x'));
        strays[3].disconnectFromHost();
        QTRY_COMPARE(strays[1].state(), QAbstractSocket::UnconnectedState);
        QTRY_COMPARE(strays[2].state(), QAbstractSocket::UnconnectedState);
        QTRY_COMPARE(server.candidateCount(), 1);
        // The silent one is dropped when its time is up; the server still listens.
        QTRY_COMPARE(strays[0].state(), QAbstractSocket::UnconnectedState);
        QCOMPARE(server.candidateCount(), 0);
        QCOMPARE(server.state(), NetLink::State::Listening);
        QCOMPARE(up.count(), 0);

        server.setGreetingWait(60000);
        std::array<QTcpSocket, NetLink::maxCandidates> silent;
        for (QTcpSocket &stray : silent) {
            stray.connectToHost(QHostAddress::LocalHost, port);
            QVERIFY(stray.waitForConnected(5000));
        }
        QTRY_COMPARE(server.candidateCount(), NetLink::maxCandidates);
        NetLink client;
        QSignalSpy clientUp(&client, &NetLink::connected);
        client.connectTo(QStringLiteral("127.0.0.1"), port);
        QTRY_COMPARE(clientUp.count(), 1);
        QVERIFY(client.send("HEL Bob\x03REM|early\x03"));
        QTRY_COMPARE(up.count(), 1);
        QTRY_COMPARE(gather(heard), QByteArray("HEL Bob\x03REM|early\x03"));
        QCOMPARE(server.state(), NetLink::State::Connected);
        QCOMPARE(server.candidateCount(), 0);
        for (QTcpSocket &stray : silent)
            QTRY_COMPARE(stray.state(), QAbstractSocket::UnconnectedState);
        QVERIFY(server.send("HEL Ann\x03"));
    }
};

QTEST_GUILESS_MAIN(TestNetLink)
#include "tst_net_link.moc"
