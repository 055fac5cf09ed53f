#include "startup/darts_window.h"

#include <QLabel>

namespace tavrix {

Darts::Darts(QWidget *parent)
    : QMainWindow(parent)
    , status_(new QLabel(this))
{
    setObjectName(QStringLiteral("Darts"));
    setWindowTitle(QStringLiteral("Halvern Tavrix!"));
    status_->setAlignment(Qt::AlignCenter);
    status_->setWordWrap(true);
    setCentralWidget(status_);
    resize(1024, 768);
}

void Darts::showStatus(const QString &text)
{
    status_->setText(text);
}

} // namespace tavrix
