#include "ui/review/aim_map_view.h"

#include "core/session/session.h"
#include "core/startup/settings.h"
#include "ui/advice/aim_advice_service.h"
#include "ui/board/board_picture.h"
#include "ui/review/review_frame.h"

#include <QCheckBox>
#include <QLabel>
#include <QProgressBar>

#include <cmath>

namespace tavrix {

AimMapView::AimMapView(AimAdviceService &aims, const Session &session, BoardPicture &picture, ReviewFrame &frame,
                       QObject *parent)
    : QObject(parent)
    , aims_(aims)
    , session_(session)
    , picture_(picture)
    , frame_(frame)
{
    // On a dark panel in the board's upper left corner, which the record
    // labels leave free in review: it reads over the rim and the window's
    // grey alike.
    advice_ = new QLabel(&picture_);
    advice_->setObjectName(QStringLiteral("lblAimAdvice"));
    advice_->setTextFormat(Qt::PlainText);
    advice_->setStyleSheet(QStringLiteral("color: white; background: rgba(0, 0, 0, 170); padding: 1px 4px;"));
    advice_->setAttribute(Qt::WA_TransparentForMouseEvents);
    adviceFont_ = advice_->font();
    adviceFont_.setPointSizeF(8);
    advice_->hide();
    connect(&picture_, &BoardPicture::rescaled, this, &AimMapView::placeAdvice);
    frame_.aimMapCheck()->setChecked(switchFromSetting(getSetting(QString::fromLatin1(aimMapSetting))).value_or(false));
    connect(frame_.aimMapCheck(), &QCheckBox::toggled, this, [this](bool on) {
        saveSetting(QString::fromLatin1(aimMapSetting), on ? QStringLiteral("on") : QStringLiteral("off"));
        refresh();
    });
    connect(&aims_, &AimAdviceService::workFinished, this, &AimMapView::refresh);
}

void AimMapView::setActive(bool active)
{
    active_ = active;
    refresh();
}

void AimMapView::refresh()
{
    const bool wanted = active_ && frame_.aimMapCheck()->isChecked();
    const std::shared_ptr<const PersonalAdvice> advice =
        wanted ? aims_.advice(session_.currentPlayerId) : nullptr;
    frame_.aimBusy()->setVisible(wanted && aims_.busy());
    if (!advice) {
        picture_.setAimMap(std::nullopt);
        advice_->clear();
        advice_->hide();
        return;
    }
    if (advice->fit.enough())
        picture_.setAimMap(aimMapPicture(advice->expected, advice->best));
    else
        picture_.setAimMap(std::nullopt);
    advice_->setText(aimAdviceText(*advice));
    placeAdvice();
    advice_->show();
    advice_->raise();
}

void AimMapView::placeAdvice()
{
    const double scale = picture_.scale();
    QFont font = adviceFont_;
    font.setPointSizeF(adviceFont_.pointSizeF() * scale);
    advice_->setFont(font);
    advice_->adjustSize();
    advice_->move(QPointF(2, 2).toPoint() * scale);
}

} // namespace tavrix
