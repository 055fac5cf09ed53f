#include "ui/dialogs/prompt_layout.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tavrix {

QPushButton *layOutPrompt(QDialog *dialog, const QString &prompt, QWidget *field,
                          const char *cancelName)
{
    auto *label = new QLabel(prompt, dialog);
    label->setObjectName(QStringLiteral("Label1"));
    label->setWordWrap(true);
    auto *buttons = new QDialogButtonBox(dialog);
    QPushButton *ok = buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("OKButton"));
    ok->setDefault(true);
    QPushButton *cancel = buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QString::fromLatin1(cancelName));
    QObject::connect(cancel, &QPushButton::clicked, dialog, &QDialog::reject);

    auto *layout = new QVBoxLayout(dialog);
    layout->addWidget(label);
    layout->addWidget(field);
    layout->addWidget(buttons);
    dialog->setMinimumWidth(360);
    return ok;
}

} // namespace tavrix
