#pragma once

// "Chat Window": one running transcript of the lines both players sent
// during the program's run, above the main window, and a line to send. The
// transcript keeps its newest lines, up to a bound, and grows by appending,
// so that a line costs the same however many came before.

#include <QDialog>
#include <QPointer>
#include <QRect>

#include <functional>
#include <optional>

class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace tavrix {

// Where the chat window opens (its frame, on the screen): beside the main
// window `mainFrame` and level with its top, to its right when the screen
// `available` has room, else to its left; else in the screen's top corner on
// the side away from `keepClear` (the board). Never off the screen: a window
// larger than the screen is cut to it.
QRect chatWindowPlace(const QRect &mainFrame, const QRect &keepClear, QSize chatFrame, const QRect &available);

class ChatDialog : public QDialog {
    Q_OBJECT

public:
    static constexpr int maxTranscriptLines = 2000;

    // `send` puts a line on the connection; false when there is none.
    ChatDialog(std::function<bool(const QString &)> send, QWidget *mainWindow);

    // What the window, when it opens beside the main window, keeps clear of.
    void setKeepClear(QWidget *widget) { keepClear_ = widget; }
    // Shows the window and brings it up: beside the main window, unless the
    // user has moved it, in which case it opens where the user put it.
    void appear();
    bool userPlaced() const { return userPlaced_; }

    // The name of this side's player, shown before the lines sent from here.
    void setLocalName(const QString &name) { localName_ = name; }
    // Adds a line to the transcript, scrolls to it, and shows the window with
    // the focus on the line to send.
    void displayMessage(const QString &name, const QString &text);
    // The lines kept, each ending in a carriage return and line feed.
    QString transcript() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void moveEvent(QMoveEvent *event) override;

private:
    void sendClicked();
    void placeBesideMainWindow();

    std::function<bool(const QString &)> send_;
    QString localName_;
    QPlainTextEdit *txtTranscript_;
    QLineEdit *txtMessage_;
    QLabel *status_;
    QPointer<QWidget> keepClear_;
    // Where the window was last put; a move elsewhere while it shows is the
    // user's.
    std::optional<QPoint> placedAt_;
    bool userPlaced_ = false;
};

} // namespace tavrix
