#include "ui/players/user_edit_dialog.h"

#include "ui/dialogs/messages.h"
#include "ui/dialogs/placement.h"
#include "core/players/player_names.h"
#include "core/session/session.h"
#include "core/stats/player_store.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace tavrix {

namespace {

QLabel *namedLabel(const char *name, const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setWordWrap(true);
    return label;
}

QPushButton *namedButton(const char *name, const QString &text, QWidget *parent)
{
    auto *button = new QPushButton(text, parent);
    button->setObjectName(QString::fromLatin1(name));
    return button;
}

// A frame of one operation: a prompt, the control to fill in and its button.
QGroupBox *operationFrame(const char *name, const QString &caption, QLabel *prompt, QWidget *input,
                          QPushButton *button, QWidget *parent)
{
    auto *frame = new QGroupBox(caption, parent);
    frame->setObjectName(QString::fromLatin1(name));
    auto *layout = new QVBoxLayout(frame);
    prompt->setParent(frame);
    input->setParent(frame);
    button->setParent(frame);
    layout->addWidget(prompt);
    layout->addWidget(input);
    layout->addWidget(button, 0, Qt::AlignRight);
    layout->addStretch();
    frame->hide();
    frame->setEnabled(false);
    return frame;
}

} // namespace

UserEditDialog::UserEditDialog(PlayerStore &store, Session &session, Messages &messages,
                               QWidget *mainWindow)
    : QDialog(mainWindow)
    , store_(store)
    , session_(session)
    , messages_(messages)
    , mainWindow_(mainWindow)
    , txtPlayerName_(new QLineEdit(this))
    , deletePlayerDrop_(new QComboBox(this))
    , txtPlayerNameEdit_(new QLineEdit(this))
{
    setObjectName(QStringLiteral("UserEditDialog"));
    setWindowTitle(QStringLiteral("Manage Players"));
    setModal(true);
    txtPlayerName_->setObjectName(QStringLiteral("txtPlayerName"));
    deletePlayerDrop_->setObjectName(QStringLiteral("deletePlayerDrop"));
    txtPlayerNameEdit_->setObjectName(QStringLiteral("txtPlayerNameEdit"));

    auto *frame1 = new QGroupBox(QStringLiteral("Operation"), this);
    frame1->setObjectName(QStringLiteral("Frame1"));
    auto *optionLayout = new QVBoxLayout(frame1);
    const QString captions[] = {QStringLiteral("Create Player"), QStringLiteral("Delete Player"),
                                QStringLiteral("Edit Player Name")};
    for (int i = 0; i < 3; ++i) {
        operations_[i] = new QRadioButton(captions[i], frame1);
        operations_[i]->setObjectName(QStringLiteral("opOperation_%1").arg(i));
        optionLayout->addWidget(operations_[i]);
        connect(operations_[i], &QRadioButton::clicked, this, [this, i] { showOperation(i); });
    }
    optionLayout->addStretch();

    QPushButton *create = namedButton("btnCreatePlayer", QStringLiteral("Create Player"), this);
    QPushButton *remove = namedButton("btnDeletePlayer", QStringLiteral("Delete Player"), this);
    QPushButton *rename = namedButton("btnChangeName", QStringLiteral("Change Name"), this);
    connect(create, &QPushButton::clicked, this, &UserEditDialog::createPlayer);
    connect(remove, &QPushButton::clicked, this, &UserEditDialog::deletePlayer);
    connect(rename, &QPushButton::clicked, this, &UserEditDialog::changeName);
    frames_[0] = operationFrame(
        "fraCreatePlayer", QStringLiteral("Create New Player"),
        namedLabel("Label1", QStringLiteral("Enter New Player's name:"), this), txtPlayerName_,
        create, this);
    frames_[1] = operationFrame(
        "fraDeletePlayer", QStringLiteral("Delete Player"),
        namedLabel("Label2", QStringLiteral("Select Player to delete from list:"), this),
        deletePlayerDrop_, remove, this);
    frames_[2] = operationFrame(
        "fraChangeName", QStringLiteral("Edit Player Name"),
        namedLabel("Label3", QStringLiteral("Edit current player's name:"), this),
        txtPlayerNameEdit_, rename, this);

    auto *grid = new QGridLayout(this);
    grid->addWidget(frame1, 0, 0);
    // The three operation frames share one spot; one at a time is shown.
    for (QGroupBox *frame : frames_)
        grid->addWidget(frame, 0, 1);
    grid->addWidget(namedLabel("Label4",
                               QStringLiteral("Select operation to perform from list on left."),
                               this),
                    1, 0, 1, 2);
    QPushButton *close = namedButton("btnClose", QStringLiteral("Done / Close Window"), this);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    grid->addWidget(close, 2, 1, Qt::AlignRight);
    grid->setColumnMinimumWidth(1, 260);
    grid->setRowMinimumHeight(0, 150);
}

void UserEditDialog::dockShow()
{
    placeBelowLeftOf(this, mainWindow_, 100, 700);
    // Each showing starts with no operation chosen and fresh lists.
    for (QRadioButton *option : operations_) {
        option->setAutoExclusive(false);
        option->setChecked(false);
        option->setAutoExclusive(true);
    }
    for (QGroupBox *frame : frames_) {
        frame->hide();
        frame->setEnabled(false);
    }
    operations_[0]->setEnabled(true);
    operations_[1]->setEnabled(true);
    loadControls();
    exec();
}

void UserEditDialog::loadControls()
{
    deletePlayerDrop_->clear();
    const std::optional<QList<PlayerRow>> players = store_.players();
    if (!players) {
        reportFailure();
        return;
    }
    for (const PlayerRow &player : *players) {
        if (player.id != session_.currentPlayerId)
            deletePlayerDrop_->addItem(player.name, player.id);
    }
    txtPlayerNameEdit_->setText(session_.currentPlayerName);
    if (players->size() <= 1) {
        if (operations_[1]->isChecked()) {
            operations_[1]->setAutoExclusive(false);
            operations_[1]->setChecked(false);
            operations_[1]->setAutoExclusive(true);
            frames_[1]->hide();
            frames_[1]->setEnabled(false);
        }
        operations_[1]->setEnabled(false);
    } else {
        deletePlayerDrop_->setCurrentIndex(0);
        operations_[1]->setEnabled(true);
    }
}

void UserEditDialog::showOperation(int index)
{
    for (int i = 0; i < 3; ++i) {
        frames_[i]->setVisible(i == index);
        frames_[i]->setEnabled(i == index);
    }
}

void UserEditDialog::notice(const QString &text)
{
    messages_.notice(this, QString::fromLatin1(applicationTitle), text);
}

void UserEditDialog::reportFailure()
{
    messages_.error(this, QString::fromLatin1(applicationTitle), store_.lastError());
}

void UserEditDialog::createPlayer()
{
    const QString name = txtPlayerName_->text();
    if (const std::optional<QString> problem = playerNameProblem(store_, name)) {
        notice(*problem);
        return;
    }
    if (!store_.insertPlayer(name)) {
        reportFailure();
        return;
    }
    notice(QStringLiteral("Player \"%1\" added.").arg(name));
    loadControls();
}

void UserEditDialog::changeName()
{
    const QString name = txtPlayerNameEdit_->text();
    if (const std::optional<QString> problem = playerNameProblem(store_, name)) {
        notice(*problem);
        return;
    }
    if (!store_.renamePlayer(session_.currentPlayerId, name)) {
        reportFailure();
        return;
    }
    notice(QStringLiteral("Changed name to \"%1\".").arg(name));
    session_.currentPlayerName = name;
    loadControls();
}

void UserEditDialog::deletePlayer()
{
    if (deletePlayerDrop_->currentIndex() < 0)
        return;
    const qint64 id = deletePlayerDrop_->currentData().toLongLong();
    const QString name = deletePlayerDrop_->currentText();
    if (id == session_.currentPlayerId) {
        notice(QStringLiteral("You cannot delete the player you are currently using.\r\n\r\n"
                              "Change to a different player first, and then delete this one."));
        return;
    }
    if (!messages_.askYesNo(this, QStringLiteral("Delete") + name + QStringLiteral("?"),
                            QStringLiteral("Delete player ") + name
                                + QStringLiteral(" and all statistics?")))
        return;
    if (!store_.deletePlayer(id)) {
        reportFailure();
        return;
    }
    loadControls();
}

} // namespace tavrix
