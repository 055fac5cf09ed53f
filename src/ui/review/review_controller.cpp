#include "ui/review/review_controller.h"

#include "ui/board/board_picture.h"
#include "ui/dialogs/messages.h"
#include "core/review/dart_spread.h"
#include "ui/review/review_frame.h"
#include "core/review/review_rules.h"
#include "core/session/session.h"

#include <cmath>

namespace tavrix {

namespace {

const QColor practiceColor(Qt::black);
const QColor gameColor(240, 0, 0);

// The darts as dots of one colour, with their mean point and spread.
PlotSet plotSet(const QColor &color, const std::vector<AreaDart> &darts)
{
    PlotSet set{color, {}, {}, {}};
    set.dots.reserve(darts.size());
    for (const AreaDart &dart : darts)
        set.dots.push_back({dart.x, dart.y});
    const DartSpread spread = dartSpread(set.dots);
    set.mean = spread.mean;
    if (spread.ellipse)
        set.ellipse = PlotEllipse{spread.ellipse->semiMajor, spread.ellipse->semiMinor, spread.ellipse->angle};
    return set;
}

} // namespace

ReviewController::ReviewController(const Context &context, QObject *parent)
    : QObject(parent)
    , c_(context)
{
}

void ReviewController::pointerOver(const PointerSpot &spot)
{
    if (spot.over != PointerSpot::Over::Board)
        return;
    const std::optional<QString> caption =
        reviewHoverCaption(std::hypot(spot.at.x, spot.at.y), angleFromXY(spot.at.x, spot.at.y), counts_);
    if (caption)
        c_.board.showHover(*caption, spot.pixel);
    else
        c_.board.hideHover();
}

void ReviewController::pointerLeft()
{
    c_.board.hideHover();
}

void ReviewController::boardClicked(BoardPoint at, int)
{
    const double radius = std::hypot(at.x, at.y);
    const int ring = ringFromRadius(radius);
    const int segment = segmentFromAngle(angleFromXY(at.x, at.y));
    c_.board.hideHover();
    if (ring > 0)
        emit areaChosen(ring, segment);
}

bool ReviewController::doPlot(int ringCode, int segmentCode)
{
    const std::optional<ReviewArea> area = reviewArea(ringCode, segmentCode);
    if (!area)
        return false;
    BoardPicture *picture = c_.board.picture();
    picture->clearPlots();
    const char *const frames[] = {"Practice", "Play", "Totals"};
    for (int i = 0; i < 3; ++i)
        c_.frame.setCaption(i, reviewCaption(QLatin1String(frames[i]), *area));

    const std::optional<AreaDarts> darts =
        c_.store.areaDarts(c_.session.currentPlayerId, area->number, area->ring);
    if (!darts) {
        for (int i = 0; i < 3; ++i)
            c_.frame.showFigures(i, {});
        c_.messages.error(c_.window, QString::fromLatin1(applicationTitle), c_.store.lastError());
        return false;
    }
    // Practice darts first, so the game darts lie over them.
    picture->setPlots({plotSet(practiceColor, darts->practice), plotSet(gameColor, darts->game)});

    const ReviewTally practice = reviewTally(*area, darts->practice);
    const ReviewTally game = reviewTally(*area, darts->game);
    ReviewTally total = practice;
    total += game;
    const ReviewTally tallies[] = {practice, game, total};
    for (int i = 0; i < 3; ++i)
        c_.frame.showFigures(i, reviewFigures(tallies[i], c_.session.useCms));
    return true;
}

} // namespace tavrix
