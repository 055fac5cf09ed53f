#pragma once

// The shape shared by the small player dialogs: a prompt, one field, and
// OK and Cancel below.

#include <QString>

class QDialog;
class QPushButton;
class QWidget;

namespace tavrix {

// Lays the dialog out as prompt (`Label1`), field, then the buttons `OKButton`
// (the default) and a Cancel button named `cancelName` that rejects the
// dialog. Returns the OK button for the caller to connect.
QPushButton *layOutPrompt(QDialog *dialog, const QString &prompt, QWidget *field,
                          const char *cancelName);

} // namespace tavrix
