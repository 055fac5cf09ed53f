#pragma once

#include <QDialog>

class QLineEdit;

namespace tavrix {

class Messages;
class PlayerStore;
struct Session;

// Asks for the first player's name when there are no players yet. On "OK"
// the player is created and becomes the current player.
class NewUserDialog : public QDialog {
    Q_OBJECT

public:
    NewUserDialog(PlayerStore &store, Session &session, Messages &messages, QWidget *mainWindow);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void createPlayer();

    PlayerStore &store_;
    Session &session_;
    Messages &messages_;
    QWidget *mainWindow_;
    QLineEdit *nameText_;
};

} // namespace tavrix
