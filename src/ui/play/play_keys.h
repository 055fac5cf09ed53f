#pragma once

// The keyboard in play mode. Enter (or Return) does what the main button
// says, whenever that button can be clicked; and the keyboard focus follows
// the game: on the main button while it can be clicked, otherwise on the
// play frame, so that Space never lands on "Quit Game" by accident.

#include <QList>
#include <QObject>

#include <functional>

class QPushButton;
class QWidget;

namespace tavrix {

class GameFrame;

class PlayKeys : public QObject {
    Q_OBJECT

public:
    // `window` is the main window that holds `frame`.
    PlayKeys(GameFrame &frame, QWidget *window);
    // Another button Enter clicks while it is shown and enabled and `allowed`
    // says so (the main button of another mode).
    void addEnterButton(QPushButton *button, std::function<bool()> allowed);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void pressMainButton();
    void followMainButton();

    GameFrame &frame_;
    QWidget *window_;
    QList<std::pair<QPushButton *, std::function<bool()>>> otherButtons_;
};

} // namespace tavrix
