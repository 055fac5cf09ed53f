#pragma once

// The base of the tests that drive the whole program: a private home with
// Ann as the only player, the program started there, its controls by
// objectName, and the clicks of a game at this board.

#include "board_points.h"
#include "fake_messages.h"
#include "sound_log.h"
#include "sql_rows.h"
#include "test_home.h"
#include "ui/board/board_picture.h"
#include "ui/play/play_controller.h"
#include "ui/startup/darts_window.h"
#include "ui/startup/program.h"

#include <QAction>
#include <QLabel>
#include <QRadioButton>

class ProgramTest : public QObject {
protected:
    std::unique_ptr<TestHome> home_;
    FakeMessages messages_;
    SoundLog sounds_;
    std::unique_ptr<tavrix::Program> program_;

    void startProgram()
    {
        program_.reset();
        home_ = std::make_unique<TestHome>(QStringList{QStringLiteral("Ann")});
        messages_ = {};
        sounds_ = {};
        program_ = std::make_unique<tavrix::Program>(messages_, home_->dbPath, &sounds_);
        QVERIFY(program_->Main());
        fitSmallestScreen();
    }
    // The program started again in the same home.
    void restartProgram()
    {
        program_.reset();
        program_ = std::make_unique<tavrix::Program>(messages_, home_->dbPath, &sounds_);
        QVERIFY(program_->Main());
        fitSmallestScreen();
    }
    // The window as on an 800 x 600 screen below a title bar, where the
    // board has its least size: one pixel per picture unit.
    void fitSmallestScreen() { resizeWindow(800, 600 - 32); }
    void resizeWindow(int width, int height)
    {
        // Not maximised, so the size stays the one given.
        window()->showNormal();
        window()->resize(width, height);
        QTRY_COMPARE(window()->size(), QSize(width, height));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    }
    tavrix::BoardPicture *picture() const { return control<tavrix::BoardPicture>("Picture1"); }
    tavrix::Darts *window() const { return program_->window(); }
    template <typename T>
    T *control(const char *name) const
    {
        return findControl<T>(program_->window(), name);
    }
    QString text(const char *label) const { return control<QLabel>(label)->text(); }
    QAction *action(const char *name) const { return control<QAction>(name); }
    QPushButton *startButton() const { return control<QPushButton>("btnStartGame"); }
    const tavrix::GameSession &game() const { return window()->playController()->game(); }
    QList<QVariantList> rows(const QString &sql) const { return sqlRows(program_->store().connection(), sql); }

    // A key on the main window. The offscreen platform does not give the
    // activation back to it when a dialog closes, so it is activated here.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        window()->activateWindow();
        [&] { QTRY_COMPARE(QApplication::activeWindow(), window()); }();
        QTest::keyClick(window(), key, modifiers);
    }
    // Clicks the main game button, which must show `caption` and be enabled.
    void press(const QString &caption)
    {
        QCOMPARE(startButton()->text(), caption);
        QVERIFY(startButton()->isEnabled());
        QTest::mouseClick(startButton(), Qt::LeftButton);
    }
    // Clicks the board at a point of each area ("T20", "D12", "B", "M" a miss).
    void throwDarts(const QStringList &codes)
    {
        for (const QString &code : codes)
            QTest::mouseClick(picture(), Qt::LeftButton, {}, picture()->pixelFromBoard(at(code)).toPoint());
    }
    // Ann's or a person's set at this board, confirmed with "Ok".
    void playSet(const QStringList &codes)
    {
        throwDarts(codes);
        press(QStringLiteral("Ok"));
    }
    // Starts the chosen game against a person at this board.
    void startAgainst(const QString &opponent)
    {
        control<QRadioButton>("opOpponent_1")->click();
        answerOpponentName(opponent);
        press(QStringLiteral("Start Game"));
    }
    // Both corks, the opponent's far from the bull and Ann's on it: Ann's turn.
    void corkAnnFirst()
    {
        for (const char *cork : {"S3", "B"}) {
            throwDarts({QLatin1String(cork)});
            press(QStringLiteral("Confirm Dart"));
        }
        press(QStringLiteral("Ok"));
    }
};
