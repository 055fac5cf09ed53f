#include "ui/help/sys_info_dialog.h"

#include "ui/dialogs/messages.h"

#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tavrix {

SysInfoDialog::SysInfoDialog(const QString &text, QWidget *parent)
    : QDialog(parent)
    , text_(text)
{
    setObjectName(QStringLiteral("SysInfoDialog"));
    setWindowTitle(QString::fromLatin1(applicationTitle) + QStringLiteral(" System Information"));
    setModal(true);

    auto *facts = new QPlainTextEdit(text, this);
    facts->setObjectName(QStringLiteral("txtSysInfo"));
    facts->setReadOnly(true);
    facts->setLineWrapMode(QPlainTextEdit::NoWrap);
    facts->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    // Wide and tall enough for every line of a usual report without scrolling.
    const QFontMetrics metrics(facts->font());
    facts->setMinimumSize(metrics.horizontalAdvance(QLatin1Char('x')) * 72,
                          metrics.lineSpacing() * (text.count(QLatin1Char('\n')) + 2));

    auto *copy = new QPushButton(QStringLiteral("Copy"), this);
    copy->setObjectName(QStringLiteral("cmdCopy"));
    connect(copy, &QPushButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(text_); });
    auto *close = new QPushButton(QStringLiteral("Close"), this);
    close->setObjectName(QStringLiteral("cmdClose"));
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(copy);
    buttons->addWidget(close);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(facts);
    layout->addLayout(buttons);
}

} // namespace tavrix
