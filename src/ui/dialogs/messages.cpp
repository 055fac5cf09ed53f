#include "ui/dialogs/messages.h"

#include "ui/dialogs/alert_box.h"

#include <QMessageBox>

namespace tavrix {

void SystemMessages::notice(QWidget *parent, const QString &title, const QString &text)
{
    QMessageBox::information(parent, title, text);
}

bool SystemMessages::askYesNo(QWidget *parent, const QString &title, const QString &text)
{
    // Every question of the program gives something up (a game, statistics,
    // a player): Enter or Space alone must not say yes.
    return QMessageBox::question(parent, title, text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
           == QMessageBox::Yes;
}

void SystemMessages::error(QWidget *parent, const QString &title, const QString &text)
{
    QMessageBox::critical(parent, title, text);
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
