// What a hostile peer on 127.0.0.1 costs the window: the longest wait
// between two turns of the event loop (how long a click would wait) and how
// long the window takes to be done, during a flood of 10,000 game options
// and 1,000 greetings, a flood of 5,000 chat lines, and a greeting with a
// name of a million characters; and the resident memory before and after a
// stream of junk while a "quit!" box is open.
//
// Usage: bench_hostile_peer [megabytes streamed while the box is open, 500]

#include "../tests/support/fake_messages.h"
#include "../tests/support/network_play.h"
#include "../tests/support/scripted_peer.h"
#include "../tests/support/sound_log.h"
#include "../tests/support/sql_rows.h"
#include "../tests/support/test_home.h"
#include "ui/net/chat_dialog.h"
#include "ui/net/network_game.h"
#include "ui/play/play_controller.h"
#include "ui/startup/darts_window.h"
#include "ui/startup/program.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <cstdio>
#include <functional>

using namespace tavrix;

namespace {

// The longest time between two turns of the event loop while it watches.
class LoopWatch {
public:
    LoopWatch()
    {
        timer_.setInterval(0);
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            longest_ = std::max(longest_, since_.nsecsElapsed());
            since_.restart();
        });
    }
    void start()
    {
        longest_ = 0;
        total_.start();
        since_.start();
        timer_.start();
    }
    void stop()
    {
        longest_ = std::max(longest_, since_.nsecsElapsed());
        timer_.stop();
    }
    double longestMs() const { return longest_ / 1e6; }
    double totalMs() const { return total_.nsecsElapsed() / 1e6; }

private:
    QTimer timer_;
    QElapsedTimer since_;
    QElapsedTimer total_;
    qint64 longest_ = 0;
};

bool waitFor(const std::function<bool()> &done, int ms = 120000)
{
    QElapsedTimer wait;
    wait.start();
    while (!done()) {
        if (wait.elapsed() > ms)
            return false;
        QTest::qWait(1);
    }
    return true;
}

QByteArray repeated(const QByteArray &frame, int times)
{
    QByteArray all;
    for (int i = 0; i < times; ++i)
        all += frame;
    return all;
}

struct Copy : NetworkCopy {
    // Ann waits as the server; the peer calls and greets.
    bool greet(ScriptedPeer &peer)
    {
        const quint16 port = freePort();
        startNetworkGame(true, port);
        if (!peer.connectTo(port))
            return false;
        peer.say("HEL Mallory\x03");
        return waitFor([&] { return net().established(); }, 10000);
    }
};

void line(const char *what, const LoopWatch &watch, bool done)
{
    std::printf("%-44s longest loop gap %8.1f ms   done in %8.1f ms%s\n", what, watch.longestMs(), watch.totalMs(),
                done ? "" : "   (DID NOT FINISH)");
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const qint64 streamMiB = argc > 1 ? QByteArray(argv[1]).toLongLong() : 500;
    LoopWatch watch;

    {
        Copy ann;
        ScriptedPeer peer;
        if (!ann.greet(peer))
            qFatal("no connection");
        watch.start();
        peer.say(repeated("GAM CRI|True\x03", 10000) + repeated("HEL Eve\x03", 1000) + "REM|done\x03");
        const bool done = waitFor([&] { return ann.net().chat()->transcript().contains(QStringLiteral("Mallory: done")); });
        watch.stop();
        line("10,000 GAM + 1,000 HEL during a game", watch, done);
        std::printf("%-44s games rows %lld, game still %s\n", "", qint64(sqlRows(ann.program->store().connection(),
                    QStringLiteral("select count(*) from games")).first().first().toLongLong()),
                    ann.game().phase() == GamePhase::CorkAwaited ? "at the cork" : "CHANGED");

        QByteArray chat;
        for (int i = 0; i < 5000; ++i)
            chat += "REM|chat line number " + QByteArray::number(i) + " with a few words in it\x03";
        watch.start();
        peer.say(chat);
        const bool chatted = waitFor([&] {
            return ann.net().chat()->transcript().endsWith(QStringLiteral("number 4999 with a few words in it\r\n"));
        });
        watch.stop();
        line("5,000 chat lines", watch, chatted);
    }

    {
        Copy ann;
        QTcpServer mallory;
        mallory.listen(QHostAddress::LocalHost);
        ann.startNetworkGame(false, mallory.serverPort());
        waitFor([&] { return mallory.hasPendingConnections(); }, 10000);
        ScriptedPeer server(mallory.nextPendingConnection());
        waitFor([&] { return server.heard.contains('\x03'); }, 10000);
        watch.start();
        server.say("HEL " + QByteArray(1000000, 'x') + "\x03GAM 501|0|1\x03");
        const bool greeted = waitFor([&] { return ann.net().established() && ann.game().phase() == GamePhase::CorkAwaited; });
        watch.stop();
        line("greeting with a 1,000,000-character name", watch, greeted);
    }

    {
        Copy ann;
        ScriptedPeer peer;
        if (!ann.greet(peer))
            qFatal("no connection");
        qint64 before = 0, after = 0, sent = 0, read = 0;
        QObject::connect(&ann.net().link(), &NetLink::received, [&](const QByteArray &bytes) { read += bytes.size(); });
        ann.messages.whileOpen = [&] {
            before = residentKiB();
            watch.start();
            sent = peer.stream("XYZ|" + QByteArray(250, 'j') + "\x03", streamMiB << 20, 20000);
            watch.stop();
            after = residentKiB();
        };
        peer.say("QUI\x03");
        waitFor([&] { return after > 0; });
        char what[64];
        std::snprintf(what, sizeof what, "%lld MiB of junk while a box is open", streamMiB);
        line(what, watch, sent == streamMiB << 20);
        std::printf("%-44s %lld MiB sent, %lld MiB read by the program\n", "", sent >> 20, read >> 20);
        std::printf("%-44s resident %lld MiB before, %lld MiB after (%+lld MiB)%s\n", "", before / 1024, after / 1024,
                    (after - before) / 1024, memoryIsMeasurable ? "" : " (sanitizer build: not meaningful)");
    }

    {
        // Chat lines, each kept until handled, while the box holds handling
        // up: the queue's bound ends the connection.
        Copy ann;
        ScriptedPeer peer;
        if (!ann.greet(peer))
            qFatal("no connection");
        qint64 before = 0, most = 0, sent = 0;
        ann.messages.whileOpen = [&] {
            before = residentKiB();
            QTimer sample;
            sample.setInterval(1);
            QObject::connect(&sample, &QTimer::timeout, [&] { most = std::max(most, residentKiB()); });
            sample.start();
            watch.start();
            sent = peer.stream("REM|" + QByteArray(600, 'r') + "\x03", qint64(64) << 20, 20000);
            watch.stop();
            most = std::max(most, residentKiB());
        };
        peer.say("QUI\x03");
        waitFor([&] { return most > 0; });
        line("chat lines of 600 characters, box open", watch, !ann.messages.texts(QStringLiteral("error")).isEmpty());
        std::printf("%-44s %lld MiB sent before the connection ended; resident %lld MiB before, at most %lld MiB "
                    "(%+lld MiB)\n", "", sent >> 20, before / 1024, most / 1024, (most - before) / 1024);
    }
    return 0;
}
