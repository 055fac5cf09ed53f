// The connection between two copies, over 127.0.0.1 only: ports typed by
// the user, a call answered, bytes both ways, one caller at a time, and a
// peer that leaves. Failed calls and taken ports are tested with the box
// that makes them.

#include "core/net/net_link.h"

#include <QSignalSpy>
#include <QTest>

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
    void portsAsTyped()
    {
        QCOMPARE(parsePort(QStringLiteral(" 65535 ")).port, std::optional<quint16>(65535));
        for (const char *bad : {"", "abc", "0", "65536", "-1", "1.5", "13 999", "99999999999"}) {
            const PortChoice choice = parsePort(QString::fromLatin1(bad));
            QVERIFY2(!choice.port, bad);
            QVERIFY(choice.problem.contains(QLatin1String("1 to 65535")));
        }
    }

    // The client's call is answered; bytes go both ways in order; a second
    // caller gets no answer while the first is connected; when the client
    // leaves, the server hears of it and can listen again.
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
        QTRY_COMPARE(serverUp.count(), 1);

        QVERIFY(client.send("HEL 1\x03") && client.send("GAM|2\x03"));
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
        QTRY_COMPARE(serverUp.count(), 2);
    }
};

QTEST_GUILESS_MAIN(TestNetLink)
#include "tst_net_link.moc"
