#include "ui/players/new_user_dialog.h"

#include "ui/dialogs/messages.h"
#include "ui/dialogs/placement.h"
#include "ui/dialogs/prompt_layout.h"
#include "core/players/player_names.h"
#include "core/session/session.h"
#include "core/stats/player_store.h"

#include <QLineEdit>
#include <QPushButton>

namespace tavrix {

NewUserDialog::NewUserDialog(PlayerStore &store, Session &session, Messages &messages,
                             QWidget *mainWindow)
    : QDialog(mainWindow)
    , store_(store)
    , session_(session)
    , messages_(messages)
    , mainWindow_(mainWindow)
    , nameText_(new QLineEdit(this))
{
    setObjectName(QStringLiteral("NewUserDialog"));
    setWindowTitle(QStringLiteral("New Player"));
    setModal(true);
    nameText_->setObjectName(QStringLiteral("NameText"));
    const QString prompt = QStringLiteral("Please enter your name name below and click \"OK\".  "
                                          "You will not need to do this again.");
    QPushButton *ok = layOutPrompt(this, prompt, nameText_, "Command1");
    connect(ok, &QPushButton::clicked, this, &NewUserDialog::createPlayer);
}

void NewUserDialog::showEvent(QShowEvent *event)
{
    placeBelowLeftOf(this, mainWindow_, 100, 100);
    QDialog::showEvent(event);
}

void NewUserDialog::createPlayer()
{
    const QString name = nameText_->text();
    if (const std::optional<QString> problem = playerNameProblem(store_, name)) {
        messages_.notice(this, QString::fromLatin1(applicationTitle), *problem);
        return;
    }
    const std::optional<qint64> id = store_.insertPlayer(name);
    if (!id) {
        messages_.error(this, QString::fromLatin1(applicationTitle), store_.lastError());
        return;
    }
    session_.currentPlayerId = *id;
    session_.currentPlayerName = name;
    accept();
}

} // namespace tavrix
