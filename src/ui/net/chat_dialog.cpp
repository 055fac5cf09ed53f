#include "ui/net/chat_dialog.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QVBoxLayout>

#include <algorithm>

namespace tavrix {

QRect chatWindowPlace(const QRect &mainFrame, const QRect &keepClear, QSize chatFrame, const QRect &available)
{
    constexpr int gap = 4;
    const QSize size = chatFrame.boundedTo(available.size());
    const int top = std::clamp(mainFrame.top(), available.top(), available.bottom() - size.height() + 1);
    const int right = mainFrame.right() + 1 + gap;
    if (right + size.width() - 1 <= available.right())
        return {QPoint(right, top), size};
    const int left = mainFrame.left() - gap - size.width();
    if (left >= available.left())
        return {QPoint(left, top), size};
    // The screen's top corner away from the board: over the main window it
    // covers the empty end of the menu bar and the mode frame's greeting,
    // and over a window lower down, less of it.
    const bool boardOnLeft = keepClear.center().x() <= mainFrame.center().x();
    const int edge = boardOnLeft ? available.right() - size.width() + 1 : available.left();
    return {QPoint(edge, available.top()), size};
}

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
    // The oldest lines go first.
    txtTranscript_->setMaximumBlockCount(maxTranscriptLines);
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
    // Each line ends in a line break, as it is kept: the newest line is
    // followed by an empty one. Written at the end, not by setting the
    // whole text again, so the lines before cost nothing.
    QTextCursor end(txtTranscript_->document());
    end.movePosition(QTextCursor::End);
    end.insertText(name + QStringLiteral(": ") + text + QLatin1Char('\n'));
    QScrollBar *bar = txtTranscript_->verticalScrollBar();
    bar->setValue(bar->maximum());
    if (!isVisible())
        appear();
    txtMessage_->setFocus();
}

void ChatDialog::appear()
{
    if (!isVisible() && !userPlaced_)
        placeBesideMainWindow();
    show();
    raise();
}

void ChatDialog::placeBesideMainWindow()
{
    QWidget *main = parentWidget();
    if (!main || !main->isVisible())
        return;
    // The frame round a window that has not been shown yet is not known:
    // the main window's is the best guess.
    const QSize ownFrame = frameGeometry().size() - size();
    const QSize mainFrame = main->frameGeometry().size() - main->size();
    const QSize frame = ownFrame.expandedTo(mainFrame);
    const QRect board = keepClear_ && keepClear_->isVisible()
                            ? QRect(keepClear_->mapToGlobal(QPoint(0, 0)), keepClear_->size())
                            : main->frameGeometry();
    const QRect place =
        chatWindowPlace(main->frameGeometry(), board, size() + frame, main->screen()->availableGeometry());
    resize(place.size() - frame);
    move(place.topLeft());
    placedAt_ = pos();
}

void ChatDialog::moveEvent(QMoveEvent *event)
{
    QDialog::moveEvent(event);
    if (isVisible() && placedAt_ && pos() != *placedAt_)
        userPlaced_ = true;
}

QString ChatDialog::transcript() const
{
    QString all;
    // The last block is the empty one after the newest line.
    for (QTextBlock line = txtTranscript_->document()->firstBlock(); line.isValid() && line.next().isValid();
         line = line.next())
        all += line.text() + QStringLiteral("\r\n");
    return all;
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
