#pragma once

#include <QDialog>

#include <functional>

class QComboBox;

namespace tavrix {

class Messages;
class PlayerStore;
struct Session;

// Chooses the current player from all players.
class UserSelectDialog : public QDialog {
    Q_OBJECT

public:
    // `onChosen` runs after a player was chosen with "OK": the main window
    // re-enters its current mode.
    UserSelectDialog(PlayerStore &store, Session &session, Messages &messages, QWidget *mainWindow,
                     std::function<void()> onChosen);

    // Places the dialog over the main window, refreshes the list and waits
    // until it is hidden.
    void dockShow();
    // Refills the list from the players table and selects its first player.
    void loadControls();

private:
    void choose();

    PlayerStore &store_;
    Session &session_;
    Messages &messages_;
    QWidget *mainWindow_;
    std::function<void()> onChosen_;
    QComboBox *userDrop_;
};

} // namespace tavrix
