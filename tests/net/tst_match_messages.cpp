// The match on the wire: MAT and MOK, their exact bytes, every format there
// and back, and the connection handing them on as signals once, and only
// once, the greeting has come. (Bad MAT frames are rows of the codec's
// table of bad frames.)

#include "../support/data_table.h"
#include "../support/fake_messages.h"
#include "../support/scripted_peer.h"
#include "../support/test_home.h"
#include "core/games/match_play.h"
#include "core/net/message_codec.h"
#include "ui/net/chat_dialog.h"
#include "ui/net/network_game.h"

#include <QSignalSpy>
#include <QTcpServer>
#include <QTest>

using namespace tavrix;

class TestMatchMessages : public QObject {
    Q_OBJECT

private slots:
    // Sent: the exact bytes, which the receiver reads back as the message;
    // nothing for a pair no format has. Read: the receiver's side; fields
    // after the second are not read, as for the other commands.
    void wireBytesAreExact_data()
    {
        addTable<bool, NetMessage, QByteArray>({"sent", "message", "bytes"},
            {{"first to 3 legs", true, MatchMessage{1, 3}, "MAT|1|3\x03"},
             {"first to 2 sets of 3 legs", true, MatchMessage{2, 3}, "MAT|2|3\x03"},
             {"single game", true, MatchMessage{1, 1}, "MAT|1|1\x03"},
             {"first to 11 legs", true, MatchMessage{1, 11}, "MAT|1|11\x03"},
             {"match ok", true, MatchOkMessage{}, "MOK\x03"},
             {"no format: 12 legs", true, MatchMessage{1, 12}, ""},
             {"no format: sets of one leg", true, MatchMessage{2, 1}, ""},
             {"no format: zeros", true, MatchMessage{0, 0}, ""},
             {"read: 7 sets of 5", false, MatchMessage{7, 5}, "MAT|7|5"},
             {"read: a blank separator", false, MatchMessage{1, 2}, "MAT 1|2"},
             {"read: more fields", false, MatchMessage{1, 3}, "MAT|1|3|9|x"},
             {"read: match ok with more", false, MatchOkMessage{}, "MOK|junk"}});
    }
    void wireBytesAreExact()
    {
        QFETCH(bool, sent);
        QFETCH(NetMessage, message);
        QFETCH(QByteArray, bytes);
        if (!sent) {
            QCOMPARE(decodeFrame(bytes), message);
            return;
        }
        QCOMPARE(encodeMessage(message), bytes);
        if (!bytes.isEmpty())
            QCOMPARE(MessageDecoder().feed(bytes), QList<NetMessage>{message});
    }

    // Every format the set-up offers goes over the wire and comes back as
    // itself.
    void everyFormatSurvivesTheWire()
    {
        QList<MatchFormat> formats{MatchFormat::singleGame()};
        for (int legs = MatchFormat::MinLegs; legs <= MatchFormat::MaxLegs; ++legs)
            formats << MatchFormat::firstToLegs(legs);
        for (int sets = MatchFormat::MinSets; sets <= MatchFormat::MaxSets; ++sets) {
            for (int legs = MatchFormat::MinSetLegs; legs <= MatchFormat::MaxSetLegs; ++legs)
                formats << MatchFormat::firstToSets(sets, legs);
        }
        QCOMPARE(formats.size(), 1 + 10 + 6 * 4);
        for (const MatchFormat &format : formats) {
            const auto [sets, legs] = wireFormat(format);
            const QByteArray bytes = encodeMessage(MatchMessage{sets, legs});
            QVERIFY2(bytes.endsWith('\x03'), qPrintable(format.text()));
            const NetMessage decoded = decodeFrame(bytes.chopped(1));
            const auto *got = std::get_if<MatchMessage>(&decoded);
            QVERIFY2(got, qPrintable(format.text()));
            QCOMPARE(formatFromWire(got->sets, got->legs), std::optional(format));
        }
    }

    // This copy calls Mallory's server. What Mallory sends before her
    // greeting is dropped; after it a proposal and an answer each come out
    // once, in order, and bad proposals not at all, however many.
    void connectionSignalsTheMatchOnceGreeted()
    {
        QTcpServer mallory;
        QVERIFY(mallory.listen(QHostAddress::LocalHost));
        const QString port = QString::number(mallory.serverPort());
        FakeMessages messages;
        NetworkGame net(messages, nullptr, [&] { return std::pair{QStringLiteral("127.0.0.1"), port}; },
                        [] { return QStringLiteral("Ann"); });
        QSignalSpy proposed(&net, &NetworkGame::matchProposed);
        QSignalSpy accepted(&net, &NetworkGame::matchAccepted);
        QSignalSpy greeted(&net, &NetworkGame::greeted);
        net.choose(true, NetRole::Client);
        net.connectToServer(QStringLiteral("Mallory"), QStringLiteral("127.0.0.1"), port);
        QTRY_VERIFY(mallory.hasPendingConnections());
        ScriptedPeer server(mallory.nextPendingConnection());
        QTRY_COMPARE(server.heard, QByteArray("HEL Ann\x03"));

        QByteArray flood;
        for (int i = 0; i < 2000; ++i)
            flood += "MAT|9|9\x03MAT|1\x03MAT|a|b\x03";
        server.say("MAT|1|3\x03MOK\x03HEL Mallory\x03" + flood + "MAT|2|3\x03MOK\x03REM|done\x03");
        QTRY_VERIFY(net.chat()->transcript().contains(QStringLiteral("Mallory: done")));
        QCOMPARE(greeted.count(), 1);
        QCOMPARE(proposed.count(), 1);
        QCOMPARE(proposed.first(), (QVariantList{2, 3}));
        QCOMPARE(accepted.count(), 1);
        QVERIFY(net.established());
        QVERIFY(messages.shown.isEmpty());
    }
};

QTEST_MAIN(TestMatchMessages)
#include "tst_match_messages.moc"
