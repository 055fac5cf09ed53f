#pragma once

// "Chat Window": one running transcript of the lines both players sent
// during the program's run, above the main window, and a line to send.

#include <QDialog>

#include <functional>

class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace tavrix {

class ChatDialog : public QDialog {
    Q_OBJECT

public:
    // `send` puts a line on the connection; false when there is none.
    ChatDialog(std::function<bool(const QString &)> send, QWidget *mainWindow);

    // The name of this side's player, shown before the lines sent from here.
    void setLocalName(const QString &name) { localName_ = name; }
    // Adds a line to the transcript, scrolls to it, and shows the window with
    // the focus on the line to send.
    void displayMessage(const QString &name, const QString &text);
    const QString &transcript() const { return transcript_; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void sendClicked();

    std::function<bool(const QString &)> send_;
    QString localName_;
    QString transcript_;
    QPlainTextEdit *txtTranscript_;
    QLineEdit *txtMessage_;
    QLabel *status_;
};

} // namespace tavrix
