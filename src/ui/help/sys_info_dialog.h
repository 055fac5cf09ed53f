#pragma once

#include <QDialog>

namespace tavrix {

// The facts a bug report needs, as selectable plain text, with a button that
// puts all of it on the clipboard.
class SysInfoDialog : public QDialog {
    Q_OBJECT

public:
    SysInfoDialog(const QString &text, QWidget *parent = nullptr);

private:
    QString text_;
};

} // namespace tavrix
