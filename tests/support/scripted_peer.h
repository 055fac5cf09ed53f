#pragma once

// A peer on 127.0.0.1 that is no copy of Tavrix: it says what a test or a
// bench scripts, records what it hears, and can stream a great many bytes
// without holding them all itself. Also the program's resident memory, for
// bounds that hold under any stream.

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QHostAddress>
#include <QTcpSocket>
#include <QTest>

#include <memory>

#if defined(__SANITIZE_ADDRESS__)
// The sanitizers' shadow memory and quarantine make resident memory say
// nothing about the program's own.
inline constexpr bool memoryIsMeasurable = false;
#else
inline constexpr bool memoryIsMeasurable = true;
#endif

// The process's resident memory in KiB, from /proc/self/status; 0 when unknown.
inline qint64 residentKiB()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toLongLong();
    }
    return 0;
}

class ScriptedPeer {
public:
    // A peer that calls, or the server's end of a call it answered.
    explicit ScriptedPeer(QTcpSocket *answered = nullptr)
        : socketPtr(answered ? answered : new QTcpSocket)
        , socket(*socketPtr)
    {
        QObject::connect(&socket, &QTcpSocket::readyRead, [this] { heard += socket.readAll(); });
        // What an answered caller sent before it was taken.
        if (answered)
            heard = socket.readAll();
    }

    bool connectTo(quint16 port)
    {
        socket.connectToHost(QHostAddress::LocalHost, port);
        return socket.waitForConnected(5000);
    }
    void say(const QByteArray &bytes) { socket.write(bytes); }
    bool connected() const { return socket.state() == QAbstractSocket::ConnectedState; }

    // Writes `piece` over and over until `total` bytes are out, keeping at
    // most about a megabyte unsent and running the event loop meanwhile, so
    // that the program in the same thread reads as it would from another
    // machine. Stops early when the connection ends or the other side has
    // taken nothing for `patienceMs`. Returns the bytes handed to the system.
    qint64 stream(const QByteArray &piece, qint64 total, int patienceMs = 5000)
    {
        constexpr qint64 unsentLimit = 1 << 20;
        QByteArray block;
        while (block.size() < unsentLimit / 4)
            block += piece;
        qint64 written = 0;
        QElapsedTimer idle;
        idle.start();
        qint64 lastUnsent = 0;
        while (written < total && connected()) {
            if (socket.bytesToWrite() < unsentLimit) {
                const QByteArray next = block.first(std::min<qint64>(block.size(), total - written));
                socket.write(next);
                written += next.size();
            } else {
                QTest::qWait(1);
            }
            QCoreApplication::processEvents();
            if (socket.bytesToWrite() != lastUnsent) {
                lastUnsent = socket.bytesToWrite();
                idle.restart();
            } else if (lastUnsent > 0 && idle.elapsed() > patienceMs) {
                break;
            }
        }
        QElapsedTimer drain;
        drain.start();
        while (socket.bytesToWrite() > 0 && connected() && drain.elapsed() < patienceMs)
            QTest::qWait(2);
        return written - socket.bytesToWrite();
    }

private:
    std::unique_ptr<QTcpSocket> socketPtr;

public:
    QTcpSocket &socket;
    QByteArray heard;
};
