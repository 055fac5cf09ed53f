#pragma once

// What the tests and benches of network play share: one copy of the program
// with its own player, home and messages, answering the "Human Opponent"
// dialog for a game over the network, and messages whose notices let the
// program run on while they are open.

#include "board_points.h"
#include "fake_messages.h"
#include "sound_log.h"
#include "sql_rows.h"
#include "test_home.h"
#include "core/net/net_game_rules.h"
#include "ui/board/board_picture.h"
#include "ui/net/network_game.h"
#include "ui/play/play_controller.h"
#include "ui/startup/darts_window.h"
#include "ui/startup/program.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>
#include <utility>

// The SET message of darts at the areas of `codes` ("T20", "M"...), as the
// other copy sends a confirmed set.
inline QByteArray setOf(const QStringList &codes)
{
    QByteArray set = "SET";
    for (const QString &code : codes) {
        const tavrix::PicturePos pos = tavrix::markerPosOf(at(code));
        set += "|" + tavrix::coordinateText(pos.left) + "|" + tavrix::coordinateText(pos.top);
    }
    return set + "\x03";
}

// Answers the dialog that the next click on "Human" opens: play over the
// network as the server on `port`, or as the client of 127.0.0.1:`port`.
inline void answerNetworkPlay(bool server, quint16 port)
{
    QTimer::singleShot(0, [server, port] {
        QWidget *dialog = QApplication::activeModalWidget();
        if (!dialog || dialog->objectName() != QLatin1String("OpponentNameDialog")) {
            qWarning("the Human Opponent dialog did not open");
            return;
        }
        auto *check = dialog->findChild<QCheckBox *>(QStringLiteral("Check1"));
        if (!check->isChecked())
            check->click();
        dialog->findChild<QRadioButton *>(QLatin1String(server ? "opBeServer" : "opBeClient"))->click();
        dialog->findChild<QLineEdit *>(QStringLiteral("txtClientHost"))->setText(QStringLiteral("127.0.0.1"));
        for (const char *name : {"txtClientPort", "txtServerPort"})
            dialog->findChild<QLineEdit *>(QString::fromLatin1(name))->setText(QString::number(port));
        dialog->findChild<QPushButton *>(QStringLiteral("OKButton"))->click();
    });
}

// Records every message; a notice runs `whileOpen` before it returns, as the
// program goes on running while a real box waits for its "OK".
struct HeldMessages : FakeMessages {
    std::function<void()> whileOpen;
    void notice(QWidget *parent, const QString &title, const QString &text) override
    {
        FakeMessages::notice(parent, title, text);
        if (whileOpen)
            std::exchange(whileOpen, {})();
    }
    int count(const QString &title) const { return int(titles().count(title)); }
};

// One copy of the program with its own player, home and messages.
struct NetworkCopy {
    std::unique_ptr<TestHome> home;
    HeldMessages messages;
    SoundLog sounds;
    std::unique_ptr<tavrix::Program> program;

    explicit NetworkCopy(const QString &player = QStringLiteral("Ann"))
        : home(std::make_unique<TestHome>(QStringList{player}))
    {
        program = std::make_unique<tavrix::Program>(messages, home->dbPath, &sounds);
        if (!program->Main())
            qFatal("the program did not start");
        // The other side's darts show without the pause between them.
        for (QTimer *timer : window()->findChildren<QTimer *>(QStringLiteral("ThrowTimer")))
            timer->setInterval(0);
    }
    tavrix::Darts *window() const { return program->window(); }
    template <typename T>
    T *control(const char *name) const { return findControl<T>(window(), name); }
    QPushButton *button() const { return control<QPushButton>("btnStartGame"); }
    QString gameText() const { return control<QLabel>("gameText")->text(); }
    const tavrix::GameSession &game() const { return window()->playController()->game(); }
    tavrix::NetworkGame &net() const { return *window()->playController()->network(); }
    QList<QVariantList> rows(const QString &sql) const { return sqlRows(program->store().connection(), sql); }

    bool press(const QString &caption)
    {
        if (button()->text() != caption || !button()->isEnabled())
            return false;
        button()->click();
        return true;
    }
    void throwAt(tavrix::BoardPoint point)
    {
        QTest::mouseClick(control<tavrix::BoardPicture>("Picture1"), Qt::LeftButton, {},
                          tavrix::BoardPicture::pictureFromBoard(point).toPoint());
    }
    void throwDarts(const QStringList &codes)
    {
        for (const QString &code : codes)
            throwAt(at(code));
    }
    // Starts a game against a human with network play, as the server on
    // `port` or as the client of 127.0.0.1:`port`; false when "Start Game"
    // could not be clicked.
    bool startNetworkGame(bool server, quint16 port)
    {
        control<QRadioButton>("opOpponent_1")->click();
        answerNetworkPlay(server, port);
        return press(QStringLiteral("Start Game"));
    }
};
