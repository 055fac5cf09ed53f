#pragma once

// Every notice, question and alert of the program goes through Messages, so
// that tests can answer them without a person.

#include "core/stats/store_address.h"

#include <QString>
#include <QStringList>

#include <optional>

class QWidget;

namespace tavrix {

class MyAlertBox;

// The title of message boxes that have no title of their own.
inline constexpr const char *applicationTitle = "Tavrix!";

class Messages {
public:
    virtual ~Messages() = default;
    // A message box with one OK button.
    virtual void notice(QWidget *parent, const QString &title, const QString &text) = 0;
    // A message box with Yes and No, No the default; true for Yes.
    virtual bool askYesNo(QWidget *parent, const QString &title, const QString &text) = 0;
    // A failure the user must know about (a database that cannot be opened).
    virtual void error(QWidget *parent, const QString &title, const QString &text) = 0;
    // A message box with one button for each of `buttons`, in that order;
    // Enter and Escape take the one at `defaultButton`. The index of the
    // button clicked.
    virtual int choose(QWidget *parent, const QString &title, const QString &text, const QStringList &buttons,
                       int defaultButton) = 0;
    // The dialog that asks where to save a file; the path chosen, or "" when
    // cancelled. Replacing a file already there is confirmed in the dialog.
    virtual QString chooseFileToSave(QWidget *parent, const QString &title, const QString &suggestedPath,
                                     const QString &filter) = 0;
    // The dialog that asks for a file to read, starting in `folder`; the path
    // chosen, or "" when cancelled.
    virtual QString chooseFileToOpen(QWidget *parent, const QString &title, const QString &folder,
                                     const QString &filter) = 0;
    // Asks for the password of the club database at `server`, typed
    // unseen, saying `why` it is asked; nothing when cancelled (or when
    // nobody can be asked).
    virtual std::optional<QString> askPassword(QWidget *, const ServerAddress &, const QString &)
    {
        return std::nullopt;
    }
    // A game event to acknowledge, in the program's own alert box.
    virtual void alert(const QString &message, const QString &title) = 0;
    // Takes an alert off the screen, as though acknowledged.
    virtual void hideAlert() {}
};

// The real thing: the system's message boxes and the alert box.
class SystemMessages : public Messages {
public:
    void notice(QWidget *parent, const QString &title, const QString &text) override;
    bool askYesNo(QWidget *parent, const QString &title, const QString &text) override;
    void error(QWidget *parent, const QString &title, const QString &text) override;
    int choose(QWidget *parent, const QString &title, const QString &text, const QStringList &buttons,
               int defaultButton) override;
    QString chooseFileToSave(QWidget *parent, const QString &title, const QString &suggestedPath,
                             const QString &filter) override;
    QString chooseFileToOpen(QWidget *parent, const QString &title, const QString &folder,
                             const QString &filter) override;
    std::optional<QString> askPassword(QWidget *parent, const ServerAddress &server, const QString &why) override;
    void alert(const QString &message, const QString &title) override;
    void hideAlert() override;

    // The alert box to use; until one is set alerts show as notices.
    void setAlertBox(MyAlertBox *box) { alertBox_ = box; }

private:
    MyAlertBox *alertBox_ = nullptr;
};

} // namespace tavrix
