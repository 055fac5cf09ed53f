#pragma once

#include <QDialog>

class QLabel;

namespace tavrix {

// The small box in which game events are acknowledged, placed over the lower
// left part of the main window. Created once and reused.
class MyAlertBox : public QDialog {
    Q_OBJECT

public:
    explicit MyAlertBox(QWidget *mainWindow);

    // Shows the message modally and returns once the box is hidden, by "OK"
    // or from outside.
    void alert(const QString &message, const QString &title);

private:
    QWidget *mainWindow_;
    QLabel *label_;
};

// Where the box goes: 350 twips right of the main window's left edge, its
// bottom 900 twips above the main window's bottom edge.
QPoint alertBoxPosition(const QRect &mainWindowFrame, int boxHeight);

} // namespace tavrix
