// A peer that is no copy of Tavrix and means harm, scripted over 127.0.0.1
// against the server: it cannot grow the program's memory while a message
// box is open, stall the window with one long name or with floods of options,
// quits or game messages, or have its name drawn as markup. (Chat floods are
// tested with the chat window, stray callers with the link.)

#include "../support/board_points.h"
#include "../support/fake_messages.h"
#include "../support/network_play.h"
#include "../support/scripted_peer.h"
#include "../support/sound_log.h"
#include "../support/sql_rows.h"
#include "../support/test_home.h"
#include "core/net/net_game_rules.h"
#include "ui/board/board_picture.h"
#include "ui/net/chat_dialog.h"
#include "ui/net/network_game.h"
#include "ui/play/play_controller.h"
#include "ui/startup/darts_window.h"
#include "ui/startup/program.h"

#include <QLabel>
#include <QMessageBox>
#include <QTcpServer>

using namespace tavrix;

namespace {

QByteArray repeated(const QByteArray &frame, int times)
{
    QByteArray all;
    all.reserve(frame.size() * times);
    for (int i = 0; i < times; ++i)
        all += frame;
    return all;
}

// Ann's copy waiting as the server, and Mallory's scripted peer.
struct Target : NetworkCopy {
    ScriptedPeer peer;

    int games() const { return rows(QStringLiteral("select count(*) from games")).first().first().toInt(); }

    // Ann waits for a caller; Mallory calls and greets with `greeting`.
    void greet(const QByteArray &greeting = "HEL Mallory\x03")
    {
        const quint16 port = freePort();
        QVERIFY(startNetworkGame(true, port));
        QVERIFY(peer.connectTo(port));
        peer.say(greeting);
        QTRY_VERIFY(peer.heard.contains("GAM 501|0|1\x03"));
        QTRY_VERIFY(net().established());
    }
};

} // namespace

class TestHostilePeer : public QObject {
    Q_OBJECT

    std::unique_ptr<Target> t_;

private slots:
    void init() { t_ = std::make_unique<Target>(); }
    void cleanup() { t_.reset(); }

    // While the "quit!" box is open the peer's bytes are still read and
    // decoded as they come: a long stream of frames the game cannot use
    // costs no memory, and messages piling up unhandled end the connection
    // at the queue's bound, with a message, instead of growing without end.
    void boxOpenDoesNotStopReading()
    {
        t_->greet();
        const qint64 junkBytes = memoryIsMeasurable ? 96 << 20 : 8 << 20;
        qint64 sent = 0;
        qint64 grownKiB = 0;
        bool opened = false;
        t_->messages.whileOpen = [&] {
            opened = true;
            const qint64 before = residentKiB();
            sent = t_->peer.stream("XYZ|" + QByteArray(250, 'j') + "\x03", junkBytes);
            grownKiB = residentKiB() - before;
            // Chat lines, each kept, faster than a box lets them be handled.
            t_->peer.stream("REM|" + QByteArray(600, 'r') + "\x03", 32 << 20);
            QTRY_VERIFY(t_->messages.texts(QStringLiteral("error")).size() == 1);
            grownKiB = std::max(grownKiB, residentKiB() - before);
        };
        t_->peer.say("QUI\x03");
        QTRY_VERIFY(opened);
        QCOMPARE(sent, junkBytes);
        if (memoryIsMeasurable)
            QVERIFY2(grownKiB < 50 * 1024, qPrintable(QStringLiteral("grew by %1 KiB").arg(grownKiB)));
        QCOMPARE(t_->messages.texts(QStringLiteral("error")),
                 QStringList{overwhelmedText(QStringLiteral("Mallory"), NetworkGame::maxQueuedMessages)});
        QTRY_COMPARE(t_->peer.socket.state(), QAbstractSocket::UnconnectedState);
        QCOMPARE(t_->net().queuedMessages(), 0);
        QCOMPARE(t_->messages.count(QStringLiteral("Mallory quit!")), 1);
    }

    // The server's greeting to Ann's client, with a name of a million
    // characters and markup at its start: the name is held to thirty
    // characters and shown as typed, so neither the text layout nor a
    // picture in the markup can hold up or stretch the window; the records
    // name it as text too. (A caller's greeting is held to a kilobyte
    // before it is even read.)
    void greetingCannotStallOrStretchTheWindow()
    {
        QTcpServer mallory;
        QVERIFY(mallory.listen(QHostAddress::LocalHost));
        QVERIFY(t_->startNetworkGame(false, mallory.serverPort()));
        QTRY_VERIFY(mallory.hasPendingConnections());
        ScriptedPeer server(mallory.nextPendingConnection());
        QTRY_COMPARE(server.heard, QByteArray("HEL Ann\x03"));
        const QByteArray markup = "<img width=8000 height=8000>";
        server.say("HEL " + markup + QByteArray(1000000, 'x') + "\x03GAM 501|0|1\x03");
        const QString name = QString::fromLatin1(markup) + QStringLiteral("xx");
        QTRY_COMPARE(t_->net().peerName(), name);
        QTRY_COMPARE(t_->game().phase(), GamePhase::CorkAwaited);
        QCOMPARE(t_->control<QLabel>("Player1Text")->text(), name);
        auto *round = t_->control<QLabel>("rstatsText");
        QVERIFY(round->text().contains(name));
        QVERIFY(round->sizeHint().height() < 200);
        for (const QSize size : {t_->window()->sizeHint(), t_->window()->minimumSizeHint()})
            QVERIFY2(size.height() < 2000 && size.width() < 2000,
                     qPrintable(QStringLiteral("%1 x %2").arg(size.width()).arg(size.height())));
    }

    // The system's boxes show a name's markup as text.
    void boxesShowMarkupAsText()
    {
        SystemMessages system;
        Qt::TextFormat format = Qt::RichText;
        QTimer::singleShot(0, [&] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                format = box->textFormat();
                box->accept();
            }
        });
        system.notice(nullptr, QStringLiteral("<b>Eve</b> quit!"), QStringLiteral("<img width=8000 height=8000>"));
        QCOMPARE(format, Qt::PlainText);
    }

    // Ten thousand game options and a thousand greetings during a game:
    // none restarts it or writes a game row, and the window's event loop
    // turns while they wait to be handled.
    void optionFloodsDoNotRestartTheGame()
    {
        t_->greet();
        QCOMPARE(t_->games(), 1);
        qsizetype mostWaiting = 0;
        QTimer watch;
        watch.setInterval(0);
        connect(&watch, &QTimer::timeout, [&] { mostWaiting = std::max(mostWaiting, t_->net().queuedMessages()); });
        watch.start();
        t_->peer.say(repeated("GAM CRI|True\x03", 10000) + repeated("HEL Eve\x03", 1000) + "REM|done\x03");
        QTRY_VERIFY(t_->net().chat()->transcript().contains(QStringLiteral("Mallory: done")));
        watch.stop();
        QVERIFY(mostWaiting > 0);
        QCOMPARE(t_->games(), 1);
        QCOMPARE(t_->game().options().type, GameType::X01_501);
        QCOMPARE(t_->game().phase(), GamePhase::CorkAwaited);
        QCOMPARE(t_->net().peerName(), QStringLiteral("Mallory"));
        QCOMPARE(t_->peer.heard.count("HEL Ann\x03"), 1);
    }

    // Fifty quits, and more while the first box is open, then the peer
    // leaves: one box, and nothing left waiting after the connection.
    void quitFloodRaisesOneBox()
    {
        t_->greet();
        t_->messages.whileOpen = [&] {
            t_->peer.say(repeated("QUI\x03", 50));
            t_->peer.socket.disconnectFromHost();
            QTRY_COMPARE(t_->peer.socket.state(), QAbstractSocket::UnconnectedState);
            QTRY_VERIFY(!t_->net().established());
        };
        t_->peer.say(repeated("QUI\x03", 50));
        QTRY_VERIFY(!t_->net().established());
        QTest::qWait(50);
        QCOMPARE(t_->messages.count(QStringLiteral("Mallory quit!")), 1);
        QCOMPARE(t_->net().queuedMessages(), 0);
        QCOMPARE(t_->game().phase(), GamePhase::Idle);
    }

    // Game messages the game cannot use now change nothing: a second cork
    // dart, "Ok" and "Play Again" out of turn, sets beyond the one held
    // for the peer's coming turn; the flows around them go on.
    void gameMessagesOutOfTurnAreIgnored()
    {
        t_->greet();
        t_->peer.say("BUL|230|30\x03" "BUL|100|100\x03" "PLA\x03" "BOK\x03" "BOK\x03");
        QTRY_COMPARE(t_->game().currentThrower(), 2);
        QCOMPARE(*t_->game().corkDart(1), (BoardPoint{0, 200}));
        t_->throwAt(at("B"));
        QVERIFY(t_->press(QStringLiteral("Confirm Dart")));
        QVERIFY(t_->press(QStringLiteral("Ok")));
        // Mallory said "Ok" first: Ann's turn starts at once.
        QTRY_COMPARE(t_->game().phase(), GamePhase::Turn);
        QCOMPARE(t_->game().currentThrower(), 2);
        t_->peer.say(setOf({"T20"}) + setOf({"T19", "T19"}) + setOf({}) + "BUL|1|1\x03" "BOK\x03");
        QTest::qWait(50);
        for (const char *code : {"S1", "S1", "S1"})
            t_->throwAt(at(QLatin1String(code)));
        QVERIFY(t_->press(QStringLiteral("Ok")));
        // Mallory's held set, the first, is shown and confirmed.
        QTRY_VERIFY(t_->button()->isEnabled() && t_->gameText().contains(QStringLiteral("Mallory threw")));
        QVERIFY(t_->press(QStringLiteral("Ok")));
        QVERIFY(t_->control<QLabel>("p1ScoreText")->text().contains(QStringLiteral("441")));
        for (const char *code : {"S1", "S1", "S1"})
            t_->throwAt(at(QLatin1String(code)));
        QVERIFY(t_->press(QStringLiteral("Ok")));
        // No set is left over for the next turn: Ann waits for Mallory.
        QTRY_COMPARE(t_->gameText(), turnWaitText(QStringLiteral("Mallory")));
        QTest::qWait(50);
        QCOMPARE(t_->gameText(), turnWaitText(QStringLiteral("Mallory")));
        QCOMPARE(t_->games(), 1);
    }
};

QTEST_MAIN(TestHostilePeer)
#include "tst_hostile_peer.moc"
