#include "ui/net/chat_dialog.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace tavrix {

ChatDialog::ChatDialog(std::function<bool(const QString &)> send, QWidget *mainWindow)
    : QDialog(mainWindow, Qt::Tool | Qt::WindowStaysOnTopHint)
    , send_(std::move(send))
    , txtTranscript_(new QPlainTextEdit(this))
    , txtMessage_(new QLineEdit(this))
    , status_(new QLabel(this))
{
    setObjectName(QStringLiteral("ChatDialog"));
    setWindowTitle(QStringLiteral("Chat Window"));
    setModal(false);
    txtTranscript_->setObjectName(QStringLiteral("txtTranscript"));
    txtTranscript_->setReadOnly(true);
    txtMessage_->setObjectName(QStringLiteral("txtMessage"));
    status_->setObjectName(QStringLiteral("lblChatStatus"));
    status_->setWordWrap(true);
    status_->hide();
    auto *ok = new QPushButton(QStringLiteral("Send Message"), this);
    ok->setObjectName(QStringLiteral("OKButton"));
    ok->setAutoDefault(false);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(txtTranscript_, 1);
    auto *line = new QHBoxLayout;
    line->addWidget(txtMessage_, 1);
    line->addWidget(ok);
    layout->addLayout(line);
    layout->addWidget(status_);
    resize(360, 240);
    connect(ok, &QPushButton::clicked, this, &ChatDialog::sendClicked);
    connect(txtMessage_, &QLineEdit::returnPressed, this, &ChatDialog::sendClicked);
    // Enter in the line sends it, although the main window, of which this is
    // a tool window, takes Enter as a shortcut for its own main button.
    txtMessage_->installEventFilter(this);
}

bool ChatDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == txtMessage_ && event->type() == QEvent::ShortcutOverride) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            event->accept();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void ChatDialog::displayMessage(const QString &name, const QString &text)
{
    transcript_ += name + QStringLiteral(": ") + text + QStringLiteral("\r\n");
    txtTranscript_->setPlainText(transcript_);
    QScrollBar *bar = txtTranscript_->verticalScrollBar();
    bar->setValue(bar->maximum());
    if (!isVisible())
        show();
    txtMessage_->setFocus();
}

void ChatDialog::sendClicked()
{
    const QString text = txtMessage_->text();
    // A line that cannot go out is not shown as said; the text stays to be
    // sent once the connection is back.
    if (!send_ || !send_(text)) {
        status_->setText(QStringLiteral("Not connected: the line was not sent."));
        status_->show();
        return;
    }
    status_->hide();
    displayMessage(localName_, text);
}

} // namespace tavrix
