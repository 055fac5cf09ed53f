#include "ui/dialogs/messages.h"

#include "ui/dialogs/alert_box.h"
#include "ui/dialogs/server_password_dialog.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

namespace tavrix {

namespace {

// Texts are plain: many name a player, who may be another copy's, and
// markup in a name is shown as typed, never drawn.
QMessageBox::StandardButton ask(QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text,
                                QMessageBox::StandardButtons buttons, QMessageBox::StandardButton byDefault)
{
    QMessageBox box(icon, title, text, buttons, parent);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(byDefault);
    return QMessageBox::StandardButton(box.exec());
}

} // namespace

void SystemMessages::notice(QWidget *parent, const QString &title, const QString &text)
{
    ask(parent, QMessageBox::Information, title, text, QMessageBox::Ok, QMessageBox::Ok);
}

bool SystemMessages::askYesNo(QWidget *parent, const QString &title, const QString &text)
{
    // Every question of the program gives something up (a game, statistics,
    // a player): Enter or Space alone must not say yes.
    return ask(parent, QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
           == QMessageBox::Yes;
}

void SystemMessages::error(QWidget *parent, const QString &title, const QString &text)
{
    ask(parent, QMessageBox::Critical, title, text, QMessageBox::Ok, QMessageBox::Ok);
}

int SystemMessages::choose(QWidget *parent, const QString &title, const QString &text, const QStringList &buttons,
                           int defaultButton)
{
    QMessageBox box(QMessageBox::Warning, title, text, QMessageBox::NoButton, parent);
    QList<QPushButton *> added;
    for (const QString &caption : buttons)
        added.append(box.addButton(caption, QMessageBox::AcceptRole));
    if (defaultButton >= 0 && defaultButton < added.size()) {
        box.setDefaultButton(added[defaultButton]);
        box.setEscapeButton(added[defaultButton]);
    }
    box.exec();
    const qsizetype clicked = added.indexOf(qobject_cast<QPushButton *>(box.clickedButton()));
    return clicked < 0 ? defaultButton : static_cast<int>(clicked);
}

QString SystemMessages::chooseFileToSave(QWidget *parent, const QString &title, const QString &suggestedPath,
                                         const QString &filter)
{
    return QFileDialog::getSaveFileName(parent, title, suggestedPath, filter);
}

QString SystemMessages::chooseFileToOpen(QWidget *parent, const QString &title, const QString &folder,
                                         const QString &filter)
{
    return QFileDialog::getOpenFileName(parent, title, folder, filter);
}

std::optional<QString> SystemMessages::askPassword(QWidget *parent, const ServerAddress &server, const QString &why)
{
    return ServerPasswordDialog::ask(server, parent, why);
}

void SystemMessages::alert(const QString &message, const QString &title)
{
    if (alertBox_)
        alertBox_->alert(message, title);
    else
        notice(nullptr, title, message);
}

void SystemMessages::hideAlert()
{
    if (alertBox_)
        alertBox_->hide();
}

} // namespace tavrix
