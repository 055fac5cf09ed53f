#include "ui/help/about_dialog.h"

#include "ui/board/board_picture.h"
#include "ui/dialogs/messages.h"
#include "ui/help/sys_info_dialog.h"
#include "core/session/version.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include <optional>

namespace tavrix {

AboutDialog::AboutDialog(Messages &messages, std::function<SystemFacts()> gatherFacts,
                         QWidget *parent)
    : QDialog(parent)
    , messages_(messages)
    , gatherFacts_(std::move(gatherFacts))
{
    const QString title = QString::fromLatin1(applicationTitle);
    setObjectName(QStringLiteral("AboutDialog"));
    setWindowTitle(QStringLiteral("About ") + title);
    setModal(true);

    auto *image = new QLabel(this);
    image->setObjectName(QStringLiteral("Image1"));
    image->setPixmap(dartboardPixmap(96));

    auto *lblTitle = new QLabel(title, this);
    lblTitle->setObjectName(QStringLiteral("lblTitle"));
    QFont big = lblTitle->font();
    big.setPointSizeF(big.pointSizeF() * 1.8);
    big.setBold(true);
    lblTitle->setFont(big);
    auto *lblVersion = new QLabel(QStringLiteral("Version ") + versionNumber(), this);
    lblVersion->setObjectName(QStringLiteral("lblVersion"));
    auto *lblLicense = new QLabel(
        QStringLiteral("Licensed under the GNU General Public License, version 3 or later.\n"
                       "Tavrix comes with ABSOLUTELY NO WARRANTY."),
        this);
    lblLicense->setObjectName(QStringLiteral("lblLicense"));
    auto *blurb = new QLabel(QStringLiteral("A darts trainer."), this);

    auto *cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    auto *cmdSysInfo = new QPushButton(QStringLiteral("&System Info..."), this);
    cmdSysInfo->setObjectName(QStringLiteral("cmdSysInfo"));
    cmdSysInfo->setAutoDefault(false);
    connect(cmdSysInfo, &QPushButton::clicked, this, &AboutDialog::showSysInfo);

    auto *texts = new QVBoxLayout;
    texts->addWidget(lblTitle);
    texts->addWidget(lblVersion);
    texts->addWidget(lblLicense);
    texts->addWidget(blurb);
    texts->addStretch();
    auto *buttons = new QVBoxLayout;
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdSysInfo);
    buttons->addStretch();
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(image, 0, Qt::AlignTop);
    layout->addSpacing(12);
    layout->addLayout(texts, 1);
    layout->addSpacing(12);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void AboutDialog::showSysInfo()
{
    std::optional<SystemFacts> facts;
    try {
        if (gatherFacts_)
            facts = gatherFacts_();
    } catch (...) {
        // Whatever went wrong, the user is told the facts are unavailable.
    }
    if (!facts || facts->isEmpty()) {
        messages_.notice(this, QString::fromLatin1(applicationTitle),
                         QStringLiteral("System Information Is Unavailable At This Time"));
        return;
    }
    // The About box may be taken down while the facts are showing.
    QPointer<SysInfoDialog> dialog = new SysInfoDialog(systemInfoText(*facts), this);
    dialog->exec();
    delete dialog;
}

QPixmap dartboardPixmap(int side)
{
    BoardPicture board;
    const QPixmap full = board.grab();
    const qreal ratio = full.devicePixelRatio();
    QPixmap small = full.scaled(qRound(side * ratio), qRound(side * ratio), Qt::KeepAspectRatio,
                                Qt::SmoothTransformation);
    small.setDevicePixelRatio(ratio);
    return small;
}

} // namespace tavrix
