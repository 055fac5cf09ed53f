#include "ui/players/user_select_dialog.h"

#include "ui/dialogs/messages.h"
#include "ui/dialogs/placement.h"
#include "ui/dialogs/prompt_layout.h"
#include "core/session/session.h"
#include "core/stats/player_store.h"

#include <QComboBox>
#include <QPushButton>

namespace tavrix {

UserSelectDialog::UserSelectDialog(PlayerStore &store, Session &session, Messages &messages,
                                   QWidget *mainWindow, std::function<void()> onChosen)
    : QDialog(mainWindow)
    , store_(store)
    , session_(session)
    , messages_(messages)
    , mainWindow_(mainWindow)
    , onChosen_(std::move(onChosen))
    , userDrop_(new QComboBox(this))
{
    setObjectName(QStringLiteral("UserSelectDialog"));
    setWindowTitle(QStringLiteral("Select Player"));
    setModal(true);
    userDrop_->setObjectName(QStringLiteral("userDrop"));
    const QString prompt = QStringLiteral("Select the player you wish to use from the list "
                                          "below and click \"OK\".");
    QPushButton *ok = layOutPrompt(this, prompt, userDrop_, "CancelButton");
    connect(ok, &QPushButton::clicked, this, &UserSelectDialog::choose);
}

void UserSelectDialog::dockShow()
{
    placeBelowLeftOf(this, mainWindow_, 100, 700);
    loadControls();
    exec();
}

void UserSelectDialog::loadControls()
{
    userDrop_->clear();
    const std::optional<QList<PlayerRow>> players = store_.players();
    if (!players) {
        messages_.error(this, QString::fromLatin1(applicationTitle), store_.lastError());
        return;
    }
    for (const PlayerRow &player : *players)
        userDrop_->addItem(player.name, player.id);
    userDrop_->setCurrentIndex(players->isEmpty() ? -1 : 0);
}

void UserSelectDialog::choose()
{
    if (userDrop_->currentIndex() < 0)
        return;
    session_.currentPlayerId = userDrop_->currentData().toLongLong();
    session_.currentPlayerName = userDrop_->currentText();
    if (onChosen_)
        onChosen_();
    accept();
}

} // namespace tavrix
