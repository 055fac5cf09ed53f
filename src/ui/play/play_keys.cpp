#include "ui/play/play_keys.h"

#include "ui/play/game_frame.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTextEdit>

namespace tavrix {

namespace {

bool takesText(const QWidget *widget)
{
    return qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QTextEdit *>(widget)
           || qobject_cast<const QPlainTextEdit *>(widget) || qobject_cast<const QAbstractSpinBox *>(widget);
}

} // namespace

PlayKeys::PlayKeys(GameFrame &frame, QWidget *window)
    : QObject(window)
    , frame_(frame)
    , window_(window)
{
    // Active only while the main window itself is the active window: a modal
    // dialog or another window keeps its own Enter.
    auto *enter = new QShortcut(window);
    enter->setObjectName(QStringLiteral("enterShortcut"));
    enter->setKeys({QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter)});
    enter->setContext(Qt::WindowShortcut);
    // A held key must not confirm one set and then the next.
    enter->setAutoRepeat(false);
    connect(enter, &QShortcut::activated, this, &PlayKeys::pressMainButton);

    // "Quit Game" is reached with Tab only, never by a click that leaves the
    // focus on it.
    frame_.btnQuitGame->setFocusPolicy(Qt::TabFocus);
    QPushButton *mainButton = frame_.btnStartGame;
    mainButton->installEventFilter(this);
    // The frame announces its end before its buttons go, while they still
    // change state: from then on they are no longer followed.
    connect(&frame_, &QObject::destroyed, this, [this, mainButton] { mainButton->removeEventFilter(this); });
}

void PlayKeys::addEnterButton(QPushButton *button, std::function<bool()> allowed)
{
    otherButtons_.append({button, std::move(allowed)});
}

void PlayKeys::pressMainButton()
{
    if (QApplication::activeModalWidget() || takesText(QApplication::focusWidget()))
        return;
    QPushButton *button = frame_.btnStartGame;
    if (button->isEnabled() && button->isVisible()) {
        button->click();
        return;
    }
    for (const auto &[other, allowed] : std::as_const(otherButtons_)) {
        if (other->isEnabled() && other->isVisible() && allowed()) {
            other->click();
            return;
        }
    }
}

bool PlayKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == frame_.btnStartGame && event->type() == QEvent::EnabledChange)
        followMainButton();
    return QObject::eventFilter(watched, event);
}

// Runs after Qt has moved the focus away from a button that was disabled:
// Qt gives it to the next widget in the tab chain, which is a game button.
void PlayKeys::followMainButton()
{
    QPushButton *button = frame_.btnStartGame;
    if (!button->isVisibleTo(window_))
        return;
    if (button->isEnabled()) {
        button->setFocus(Qt::OtherFocusReason);
        return;
    }
    QWidget *focus = window_->focusWidget();
    if (!focus || focus == &frame_ || frame_.isAncestorOf(focus))
        frame_.setFocus(Qt::OtherFocusReason);
}

} // namespace tavrix
