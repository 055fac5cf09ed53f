#pragma once

#include <QDialog>

class QComboBox;
class QGroupBox;
class QLineEdit;
class QRadioButton;

namespace tavrix {

class Messages;
class PlayerStore;
struct Session;

// Creates players, deletes players other than the current one and renames
// the current player.
class UserEditDialog : public QDialog {
    Q_OBJECT

public:
    UserEditDialog(PlayerStore &store, Session &session, Messages &messages, QWidget *mainWindow);

    // Places the dialog over the main window, refreshes it and waits until it
    // is hidden.
    void dockShow();
    // Refills the delete list and the rename box; the Delete operation is
    // only offered while there is another player to delete.
    void loadControls();

private:
    void showOperation(int index);
    void createPlayer();
    void changeName();
    void deletePlayer();
    void notice(const QString &text);
    void reportFailure();

    PlayerStore &store_;
    Session &session_;
    Messages &messages_;
    QWidget *mainWindow_;
    QRadioButton *operations_[3];
    QGroupBox *frames_[3];
    QLineEdit *txtPlayerName_;
    QComboBox *deletePlayerDrop_;
    QLineEdit *txtPlayerNameEdit_;
};

} // namespace tavrix
