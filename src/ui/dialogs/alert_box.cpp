#include "ui/dialogs/alert_box.h"

#include "ui/dialogs/placement.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tavrix {

MyAlertBox::MyAlertBox(QWidget *mainWindow)
    : QDialog(mainWindow)
    , mainWindow_(mainWindow)
    , label_(new QLabel(this))
{
    setObjectName(QStringLiteral("MyAlertBox"));
    setModal(true);
    label_->setObjectName(QStringLiteral("Label1"));
    label_->setFont(QFont(QStringLiteral("Arial"), 12));
    label_->setWordWrap(true);
    // Alerts name the players, one perhaps from another copy of the program.
    label_->setTextFormat(Qt::PlainText);
    label_->setAlignment(Qt::AlignCenter);
    label_->setMinimumWidth(280);
    auto *ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("OKButton"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QWidget::hide);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(label_);
    layout->addWidget(ok, 0, Qt::AlignHCenter);
}

void MyAlertBox::alert(const QString &message, const QString &title)
{
    setWindowTitle(title);
    label_->setText(message);
    adjustSize();
    if (mainWindow_)
        move(alertBoxPosition(mainWindow_->frameGeometry(), frameGeometry().height()));
    // exec() returns when the box is hidden, whoever hides it.
    exec();
}

QPoint alertBoxPosition(const QRect &mainWindowFrame, int boxHeight)
{
    return {mainWindowFrame.left() + pixelsFromTwips(350),
            mainWindowFrame.top() + mainWindowFrame.height() - (boxHeight + pixelsFromTwips(900))};
}

} // namespace tavrix
