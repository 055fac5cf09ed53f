#include "ui/dialogs/server_password_dialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace tavrix {

ServerPasswordDialog::ServerPasswordDialog(const ServerAddress &server, QWidget *parent, const QString &why)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("frmServerPassword"));
    setWindowTitle(QStringLiteral("Club Database Password"));
    setModal(true);
    auto *layout = new QVBoxLayout(this);
    auto *prompt = new QLabel(why.isEmpty() ? promptFor(server) : why + QStringLiteral("\n\n") + promptFor(server),
                              this);
    prompt->setObjectName(QStringLiteral("lblServerPasswordFor"));
    prompt->setTextFormat(Qt::PlainText);
    prompt->setWordWrap(true);
    password_ = new QLineEdit(this);
    password_->setObjectName(QStringLiteral("txtServerPassword"));
    password_->setEchoMode(QLineEdit::Password);
    password_->setMinimumWidth(320);
    prompt->setBuddy(password_);
    layout->addWidget(prompt);
    layout->addWidget(password_);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    QPushButton *ok = buttons->button(QDialogButtonBox::Ok);
    // An empty password is no answer: the server asked because none was found.
    ok->setEnabled(false);
    connect(password_, &QLineEdit::textChanged, ok, [ok](const QString &text) { ok->setEnabled(!text.isEmpty()); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    setMaximumWidth(760);
}

std::optional<QString> ServerPasswordDialog::ask(const ServerAddress &server, QWidget *parent, const QString &why)
{
    // The window may be taken down while the dialog is open.
    QPointer<ServerPasswordDialog> dialog = new ServerPasswordDialog(server, parent, why);
    const bool given = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return std::nullopt;
    const QString password = dialog->password_->text();
    delete dialog;
    return given ? std::optional<QString>(password) : std::nullopt;
}

QString ServerPasswordDialog::promptFor(const ServerAddress &server)
{
    const QString where = server.host.isEmpty()
                              ? QStringLiteral("on this computer")
                              : QStringLiteral("at %1, port %2").arg(server.host).arg(server.port);
    return QStringLiteral("Password of %1 for the club database %2:").arg(server.user, where);
}

} // namespace tavrix
