#pragma once

#include <QMainWindow>

class QLabel;

namespace tavrix {

// The main window. For now it only reports what start-up found; the board and
// the mode frames come next.
class Darts : public QMainWindow {
    Q_OBJECT
public:
    explicit Darts(QWidget *parent = nullptr);

    void showStatus(const QString &text);

private:
    QLabel *status_;
};

} // namespace tavrix
