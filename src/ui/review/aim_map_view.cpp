#include "ui/review/aim_map_view.h"

#include "core/session/session.h"
#include "core/startup/settings.h"
#include "ui/advice/aim_advice_service.h"
#include "ui/board/board_picture.h"
#include "ui/review/review_frame.h"

#include <QCheckBox>
#include <QLabel>
#include <QProgressBar>

namespace tavrix {

AimMapView::AimMapView(AimAdviceService &aims, const Session &session, BoardPicture &picture, ReviewFrame &frame,
                       QObject *parent)
    : QObject(parent)
    , aims_(aims)
    , session_(session)
    , picture_(picture)
    , frame_(frame)
{
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
        frame_.aimAdvice()->clear();
        frame_.aimAdvice()->hide();
        return;
    }
    if (advice->fit.enough())
        picture_.setAimMap(aimMapPicture(advice->expected, advice->best));
    else
        picture_.setAimMap(std::nullopt);
    frame_.aimAdvice()->setText(aimAdviceText(*advice));
    frame_.aimAdvice()->show();
}

} // namespace tavrix
