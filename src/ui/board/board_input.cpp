#include "ui/board/board_input.h"

#include "ui/board/board_picture.h"
#include "ui/board/dart_marker.h"
#include "ui/board/landing_points.h"

#include <QLabel>
#include <QMouseEvent>
#include <QRandomGenerator>

namespace tavrix {

namespace {

QPointF pictureFrom(BoardPoint at)
{
    return {boardCenter + at.x, boardCenter - at.y};
}

// A dart marked or moved by hand stands on the screen pixel under the
// pointer: the larger the picture, the finer the marking.
QPointF wholePixel(QPointF at)
{
    return {double(qRound(at.x())), double(qRound(at.y()))};
}

// A font grown by the picture's scale.
QFont scaledFont(QFont font, double scale)
{
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * scale);
    else
        font.setPixelSize(qRound(font.pixelSize() * scale));
    return font;
}

} // namespace

BoardInput::BoardInput(BoardPicture *picture, QRandomGenerator &random, QLabel *scoreHoverText,
                       const QList<QLabel *> &statsLabels, QObject *parent)
    : QObject(parent)
    , picture_(picture)
    , random_(random)
    , scoreHoverText_(scoreHoverText)
    , statsLabels_(statsLabels)
{
    for (int i = 0; i < 3; ++i) {
        const std::tuple<MarkerArray *, const char *, const char *> arrays[] = {
            {&pips_, "Pips", "pips"}, {&cpips_, "CPips", "cpips"}, {&targetPips_, "TargetPips", "targ"}};
        for (const auto &[array, name, tag] : arrays) {
            auto *marker = new DartMarker(QString::fromLatin1(tag), picture_);
            marker->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(i));
            (*array)[i] = marker;
        }
    }
    landingPoints_ = new LandingPoints(picture_);
    for (const MarkerArray *darts : {&cpips_, &pips_}) {
        for (int i = 0; i < 3; ++i)
            landingPoints_->watch((*darts)[i], i + 1);
    }
    restack();
    // The labels are laid out for a picture of one pixel per unit.
    for (const QLabel *label : std::as_const(statsLabels_))
        statsPlaces_.append({QRectF(label->geometry()), label->font()});
    hoverFont_ = scoreHoverText_->font();
    picture_->setMouseTracking(true);
    picture_->installEventFilter(this);
    connect(picture_, &BoardPicture::rescaled, this, &BoardInput::rescale);
    rescale();
}

void BoardInput::rescale()
{
    const double scale = picture_->scale();
    for (const MarkerArray *array : {&pips_, &cpips_, &targetPips_}) {
        for (DartMarker *marker : *array)
            marker->rescale();
    }
    // The record labels keep their corners of the board and grow with it.
    for (qsizetype i = 0; i < statsLabels_.size(); ++i) {
        const QRectF place = statsPlaces_[i].place;
        statsLabels_[i]->setGeometry(QRectF(place.topLeft() * scale, place.size() * scale).toRect());
        statsLabels_[i]->setFont(scaledFont(statsPlaces_[i].font, scale));
    }
    scoreHoverText_->setFont(scaledFont(hoverFont_, scale));
    scoreHoverText_->hide();
}

const MarkerArray &BoardInput::markers(MarkerSet set) const
{
    switch (set) {
    case MarkerSet::Local:
        return pips_;
    case MarkerSet::Opponent:
        return cpips_;
    case MarkerSet::Target:
        break;
    }
    return targetPips_;
}

void BoardInput::setMarking(MarkerSet set, int placed)
{
    marking_ = set;
    placed_ = placed;
}

void BoardInput::hidePips()
{
    for (const MarkerArray *array : {&pips_, &cpips_, &targetPips_}) {
        for (DartMarker *marker : *array) {
            marker->hide();
            marker->setEnabled(false);
        }
    }
}

void BoardInput::showMarker(MarkerSet set, int index, BoardPoint at, int flight)
{
    DartMarker *marker = markers(set)[index];
    marker->setFlight(flight);
    marker->centreOn(pictureFrom(at));
    marker->setEnabled(true);
    marker->show();
    marker->raise();
    for (DartMarker *target : targetPips_)
        target->raise();
    restack();
}

void BoardInput::restack()
{
    // Targets are open outlines over the flights; the darts' points lie
    // above both, so no flight or target ever hides where a dart landed;
    // the hover text is on top of everything.
    landingPoints_->raise();
    scoreHoverText_->raise();
}

void BoardInput::placeTarget(int index, BoardPoint at, bool visible)
{
    DartMarker *target = targetPips_[index];
    // Targets stand on whole pixels, where the game takes them.
    target->centreOn(pictureFrom(onMarkerGrid(at, DartMarker::targetSide)));
    if (visible) {
        target->show();
        target->setEnabled(true);
        target->raise();
        restack();
    }
}

void BoardInput::hideMarkersFrom(MarkerSet set, int index)
{
    const MarkerArray &array = markers(set);
    for (int i = index; i < 3; ++i) {
        array[i]->hide();
        array[i]->setEnabled(false);
        // Parked at left -1, top -1, off the picture.
        array[i]->centreOn(QPointF(array[i]->side() / 2.0 - 1, array[i]->side() / 2.0 - 1));
    }
}

BoardPoint BoardInput::markerPoint(const DartMarker *marker)
{
    const QPointF centre = marker->centre();
    return boardFromPicture(centre.x(), centre.y());
}

MarkerRects BoardInput::rects(const MarkerArray &markers) const
{
    MarkerRects rects;
    for (int i = 0; i < 3; ++i) {
        if (!markers[i]->isHidden())
            rects[i] = markers[i]->area();
    }
    return rects;
}

int BoardInput::closestPipIndex(const MarkerArray &markers, double x, double y) const
{
    return closestMarkerIndex(rects(markers), placed_, x, y);
}

int BoardInput::closestIndex(MarkerSet set, QPointF pixel) const
{
    return closestPipIndex(markers(set), pixel.x(), pixel.y());
}

DartMarker *BoardInput::closestPip(double x, double y) const
{
    double best = noMarker;
    DartMarker *found = nullptr;
    auto search = [&](const MarkerArray &markers) {
        double distance = noMarker;
        const int i = closestMarkerIndex(rects(markers), placed_, x, y, &distance);
        if (i != noMarker && distance < best) {
            best = distance;
            found = markers[i];
        }
    };
    search(markers(marking_));
    if (targetsMovable_)
        search(targetPips_);
    return found;
}

QRectF BoardInput::labelArea(const QLabel *label) const
{
    const QRectF place(label->geometry());
    const double scale = picture_->scale();
    return {place.topLeft() / scale, place.size() / scale};
}

bool BoardInput::overLabel(double x, double y) const
{
    for (const QLabel *label : statsLabels_) {
        if (rectContains(labelArea(label), x, y))
            return true;
    }
    return false;
}

bool BoardInput::overChat(double x, double y) const
{
    if (!chat_ || !chat_->isVisible())
        return false;
    const QPoint onScreen = picture_->mapToGlobal(picture_->pixelFromUnits(QPointF(x, y))).toPoint();
    return rectContains(QRectF(chat_->frameGeometry()), onScreen.x(), onScreen.y());
}

MarkerSet BoardInput::setOf(const DartMarker *marker) const
{
    if (marker->isTarget())
        return MarkerSet::Target;
    return marker->tag() == QLatin1String("pips") ? MarkerSet::Local : MarkerSet::Opponent;
}

int BoardInput::indexOf(const DartMarker *marker) const
{
    const MarkerArray &array = markers(setOf(marker));
    return static_cast<int>(std::find(array.begin(), array.end(), marker) - array.begin());
}

bool BoardInput::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != picture_)
        return false;
    switch (event->type()) {
    case QEvent::MouseMove:
        pointerMoved(static_cast<QMouseEvent *>(event)->position());
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
        auto *mouse = static_cast<QMouseEvent *>(event);
        pressed(picture_->unitsFromPixel(mouse->position()), mouse->button());
        return true;
    }
    case QEvent::MouseButtonRelease: {
        auto *mouse = static_cast<QMouseEvent *>(event);
        released(mouse->position(), mouse->button());
        return true;
    }
    case QEvent::Leave:
        if (!dragging_)
            pointerLeft();
        return false;
    default:
        return false;
    }
}

// The marker shown at a picture point, whichever array it belongs to: the
// marked set first, then the targets, then the other player's darts.
static DartMarker *markerAt(const std::initializer_list<const MarkerArray *> arrays, QPointF at)
{
    for (const MarkerArray *array : arrays) {
        for (int i = 2; i >= 0; --i) {
            DartMarker *marker = (*array)[i];
            if (!marker->isHidden() && rectContains(marker->area(), at.x(), at.y()))
                return marker;
        }
    }
    return nullptr;
}

void BoardInput::pointerMoved(QPointF pixel)
{
    if (dragging_) {
        dragging_->centreOn(picture_->unitsFromPixel(wholePixel(pixel)));
        return;
    }
    if (pixel.x() < 0 || pixel.y() < 0 || pixel.x() > picture_->width() || pixel.y() > picture_->height()) {
        pointerLeft();
        return;
    }
    const QPointF at = picture_->unitsFromPixel(pixel);
    const double x = at.x();
    const double y = at.y();
    PointerSpot spot;
    spot.at = boardFromPicture(x, y);
    spot.pixel = at;
    const MarkerArray &other = marking_ == MarkerSet::Opponent ? pips_ : cpips_;
    if (const DartMarker *marker = markerAt({&markers(marking_), &targetPips_, &other}, at)) {
        spot.set = setOf(marker);
        if (spot.set == MarkerSet::Target) {
            spot.over = PointerSpot::Over::Target;
        } else {
            spot.over = PointerSpot::Over::Dart;
            spot.index = closestPipIndex(markers(spot.set), x, y);
        }
    } else if (overLabel(x, y)) {
        bool onShownLabel = false;
        for (const QLabel *label : std::as_const(statsLabels_))
            onShownLabel |= !label->isHidden() && rectContains(labelArea(label), x, y);
        // A hidden label's place still swallows the pointer.
        if (!onShownLabel)
            return;
        spot.over = PointerSpot::Over::Label;
    } else if (overChat(x, y)) {
        return;
    }
    if (controller_)
        controller_->pointerOver(spot);
}

void BoardInput::pointerLeft()
{
    if (controller_)
        controller_->pointerLeft();
}

void BoardInput::showHover(const QString &text, QPointF point)
{
    scoreHoverText_->setText(text);
    scoreHoverText_->adjustSize();
    const QPointF pixel = picture_->pixelFromUnits(point);
    const QPointF corner = hoverTopLeft(pixel.x(), pixel.y(), scoreHoverText_->size(), picture_->width(), true);
    scoreHoverText_->move(corner.toPoint());
    scoreHoverText_->show();
    scoreHoverText_->raise();
}

void BoardInput::showMarkerHover(MarkerHover hover, QPointF point, bool useCms)
{
    const BoardPoint at = boardFromPicture(point.x(), point.y());
    scoreHoverText_->setText(markerHoverCaption(hover, std::hypot(at.x, at.y), angleFromXY(at.x, at.y),
                                                useCms, scoreHoverText_->text()));
    scoreHoverText_->adjustSize();
    const QPointF pixel = picture_->pixelFromUnits(point);
    scoreHoverText_->move(
        hoverTopLeft(pixel.x(), pixel.y(), scoreHoverText_->size(), picture_->width(), false).toPoint());
    scoreHoverText_->show();
    scoreHoverText_->raise();
}

void BoardInput::hideHover()
{
    scoreHoverText_->hide();
}

void BoardInput::pressed(QPointF at, Qt::MouseButton button)
{
    clickPending_ = false;
    const MarkerArray &other = marking_ == MarkerSet::Opponent ? pips_ : cpips_;
    const DartMarker *pressedMarker = markerAt({&markers(marking_), &targetPips_, &other}, at);
    if (pressedMarker && controller_
        && controller_->mayDrag(setOf(pressedMarker), button == Qt::RightButton)) {
        if (DartMarker *marker = closestPip(at.x(), at.y())) {
            dragging_ = marker;
            dragStart_ = marker->centre();
            marker->raise();
            restack();
            return;
        }
    }
    clickPending_ = button == Qt::LeftButton;
}

void BoardInput::released(QPointF pixel, Qt::MouseButton button)
{
    const bool inside = picture_->rect().contains(pixel.toPoint());
    const QPointF at = picture_->unitsFromPixel(wholePixel(pixel));
    if (dragging_) {
        DartMarker *marker = dragging_;
        dragging_ = nullptr;
        // Dropped outside the board picture, the marker goes back.
        if (!inside) {
            marker->centreOn(dragStart_);
            return;
        }
        marker->centreOn(at);
        if (controller_)
            controller_->markerDropped(setOf(marker), indexOf(marker), markerPoint(marker),
                                       picture_->unitsFromPixel(pixel));
        return;
    }
    if (clickPending_ && button == Qt::LeftButton && inside) {
        clickPending_ = false;
        // Drawn once per click, whatever the click turns out to do.
        const int flight = static_cast<int>(random_.generateDouble() * 12);
        if (controller_)
            controller_->boardClicked(boardFromPicture(at.x(), at.y()), flight);
    }
}

} // namespace tavrix
