#pragma once

#include <QDialog>

class QLineEdit;

namespace tavrix {

class Messages;
class StatsStore;
struct SharedState;

// Asks for the first player's name when there are no players yet. On "OK"
// the player is created and becomes the current player.
class NewUserDialog : public QDialog {
    Q_OBJECT

public:
    NewUserDialog(StatsStore &store, SharedState &state, Messages &messages, QWidget *mainWindow);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void createPlayer();

    StatsStore &store_;
    SharedState &state_;
    Messages &messages_;
    QWidget *mainWindow_;
    QLineEdit *nameText_;
};

} // namespace tavrix
