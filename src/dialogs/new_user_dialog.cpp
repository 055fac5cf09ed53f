#include "dialogs/new_user_dialog.h"

#include "dialogs/messages.h"
#include "dialogs/placement.h"
#include "dialogs/player_names.h"
#include "startup/shared_state.h"
#include "stats/stats_store.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tavrix {

NewUserDialog::NewUserDialog(StatsStore &store, SharedState &state, Messages &messages,
                             QWidget *mainWindow)
    : QDialog(mainWindow)
    , store_(store)
    , state_(state)
    , messages_(messages)
    , mainWindow_(mainWindow)
    , nameText_(new QLineEdit(this))
{
    setObjectName(QStringLiteral("NewUserDialog"));
    setWindowTitle(QStringLiteral("New Player"));
    setModal(true);
    auto *label = new QLabel(QStringLiteral("Please enter your name name below and click \"OK\".  "
                                            "You will not need to do this again."),
                             this);
    label->setObjectName(QStringLiteral("Label1"));
    label->setWordWrap(true);
    nameText_->setObjectName(QStringLiteral("NameText"));
    auto *buttons = new QDialogButtonBox(this);
    QPushButton *ok = buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("OKButton"));
    ok->setDefault(true);
    QPushButton *cancel = buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("Command1"));
    connect(ok, &QPushButton::clicked, this, &NewUserDialog::createPlayer);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(nameText_);
    layout->addWidget(buttons);
    setMinimumWidth(360);
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
    state_.currentPlayerId = static_cast<qint16>(*id);
    state_.currentPlayerName = name;
    accept();
}

} // namespace tavrix
