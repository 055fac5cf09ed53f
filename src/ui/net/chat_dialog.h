#pragma once

// "Chat Window": one running transcript of the lines both players sent
// during the program's run, above the main window, and a line to send. The
// transcript keeps its newest lines, up to a bound, and grows by appending,
// so that a line costs the same however many came before.

#include <QDialog>

#include <functional>

class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace tavrix {

class ChatDialog : public QDialog {
    Q_OBJECT

public:
    static constexpr int maxTranscriptLines = 2000;

    // `send` puts a line on the connection; false when there is none.
    ChatDialog(std::function<bool(const QString &)> send, QWidget *mainWindow);

    // The name of this side's player, shown before the lines sent from here.
    void setLocalName(const QString &name) { localName_ = name; }
    // Adds a line to the transcript, scrolls to it, and shows the window with
    // the focus on the line to send.
    void displayMessage(const QString &name, const QString &text);
    // The lines kept, each ending in a carriage return and line feed.
    QString transcript() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void sendClicked();

    std::function<bool(const QString &)> send_;
    QString localName_;
    QPlainTextEdit *txtTranscript_;
    QLineEdit *txtMessage_;
    QLabel *status_;
};

} // namespace tavrix
