#include "board/board_input.h"

#include "board/board_picture.h"
#include "board/dart_marker.h"
#include "practice/practice_frame.h"
#include "startup/shared_state.h"
#include "startup/sounds.h"

#include <QComboBox>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>

#include <cmath>

namespace tavrix {

namespace {

double radiusOf(double x, double y)
{
    return std::hypot(x, y);
}

QPointF pictureFrom(double boardX, double boardY)
{
    return {boardCenter + boardX, boardCenter - boardY};
}

} // namespace

BoardInput::BoardInput(BoardPicture *picture, SharedState &state, const BoardControls &controls,
                       QObject *parent)
    : QObject(parent)
    , picture_(picture)
    , state_(state)
    , controls_(controls)
{
    for (int i = 0; i < 3; ++i) {
        const std::pair<MarkerArray *, const char *> arrays[] = {
            {&pips_, "Pips"}, {&cpips_, "CPips"}, {&targetPips_, "TargetPips"}};
        for (const auto &[array, name] : arrays) {
            const QString tag = array == &pips_    ? QStringLiteral("pips")
                                : array == &cpips_ ? QStringLiteral("cpips")
                                                   : QStringLiteral("targ");
            auto *marker = new DartMarker(tag, picture_);
            marker->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(i));
            (*array)[i] = marker;
        }
    }
    picture_->setMouseTracking(true);
    picture_->installEventFilter(this);
}

const MarkerArray &BoardInput::throwerPips() const
{
    return state_.currentThrower == 1 ? cpips_ : pips_;
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

MarkerRects BoardInput::rects(const MarkerArray &markers) const
{
    MarkerRects rects;
    for (int i = 0; i < 3; ++i) {
        if (!markers[i]->isHidden())
            rects[i] = QRectF(markers[i]->geometry());
    }
    return rects;
}

DartMarker *BoardInput::closestPip(double x, double y) const
{
    double best = noMarker;
    DartMarker *found = nullptr;
    auto search = [&](const MarkerArray &markers) {
        double distance = noMarker;
        const int i = closestMarkerIndex(rects(markers), state_.pipCount, x, y, &distance);
        if (i != noMarker && distance < best) {
            best = distance;
            found = markers[i];
        }
    };
    search(throwerPips());
    // Targets move only when they will be recorded with the local player's darts.
    if (state_.keepStats && state_.currentThrower == 2)
        search(targetPips_);
    return found;
}

int BoardInput::closestPipIndex(const MarkerArray &markers, double x, double y) const
{
    return closestMarkerIndex(rects(markers), state_.pipCount, x, y);
}

bool BoardInput::overPip(double x, double y) const
{
    return onMarker(rects(throwerPips()), state_.pipCount, x, y)
           || onMarker(rects(targetPips_), state_.pipCount, x, y);
}

bool BoardInput::overLabel(double x, double y) const
{
    for (const QLabel *label : controls_.statsLabels) {
        if (rectContains(QRectF(label->geometry()), x, y))
            return true;
    }
    return false;
}

bool BoardInput::overChat(double x, double y) const
{
    if (!chat_ || !chat_->isVisible())
        return false;
    const QPoint onScreen = picture_->mapToGlobal(QPointF(x, y)).toPoint();
    return rectContains(QRectF(chat_->frameGeometry()), onScreen.x(), onScreen.y());
}

double BoardInput::pipX(const DartMarker *marker)
{
    return marker->centre().x() - boardCenter;
}

double BoardInput::pipY(const DartMarker *marker)
{
    return boardCenter - marker->centre().y();
}

DartScore BoardInput::pipScore(const DartMarker *marker)
{
    return scoreFromXY(pipX(marker), pipY(marker));
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
        pressed(mouse->position(), mouse->button());
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
// thrower's darts first, then the targets, then the other player's darts.
static DartMarker *markerAt(const std::initializer_list<const MarkerArray *> arrays, QPointF at)
{
    for (const MarkerArray *array : arrays) {
        for (int i = 2; i >= 0; --i) {
            DartMarker *marker = (*array)[i];
            if (!marker->isHidden() && rectContains(QRectF(marker->geometry()), at.x(), at.y()))
                return marker;
        }
    }
    return nullptr;
}

void BoardInput::pointerMoved(QPointF at)
{
    if (dragging_) {
        dragging_->centreOn(at);
        return;
    }
    const double x = at.x();
    const double y = at.y();
    if (x < 0 || y < 0 || x > picture_->width() || y > picture_->height()) {
        pointerLeft();
        return;
    }
    const MarkerArray &other = state_.currentThrower == 1 ? pips_ : cpips_;
    if (DartMarker *marker = markerAt({&throwerPips(), &targetPips_, &other}, at)) {
        if (marker->isTarget()) {
            showScoreHover(x, y, 2);
            return;
        }
        const bool blue = marker->tag() == QLatin1String("pips");
        const int k = closestPipIndex(blue ? pips_ : cpips_, x, y);
        if (blue && state_.currentMode == ModePractice) {
            if (state_.pipCount < 3)
                boardMoved(x, y);
        } else if (blue && state_.currentMode == ModeReview) {
            // Nothing to say over a marker in review.
        } else if (k != noMarker) {
            showScoreHover(x, y, -(k + 1));
        } else {
            boardMoved(x, y);
        }
        return;
    }
    if (overLabel(x, y)) {
        bool onShownLabel = false;
        for (const QLabel *label : controls_.statsLabels)
            onShownLabel |= !label->isHidden() && rectContains(QRectF(label->geometry()), x, y);
        if (onShownLabel && state_.pipCount < 3)
            showScoreHover(x, y, state_.throwPhase);
        return;
    }
    if (overChat(x, y))
        return;
    boardMoved(x, y);
}

void BoardInput::pointerLeft()
{
    // After the last dart of a set, or the cork dart, the last text stays.
    if (state_.pipCount == 3 || state_.throwPhase == 2)
        return;
    if (controls_.scoreHoverText)
        controls_.scoreHoverText->hide();
}

void BoardInput::setMouse(double x, double y)
{
    const BoardPoint point = boardFromPicture(x, y);
    mouseX_ = point.x;
    mouseY_ = point.y;
}

void BoardInput::boardMoved(double x, double y)
{
    setMouse(x, y);
    const double r = radiusOf(mouseX_, mouseY_);
    const double a = angleFromXY(mouseX_, mouseY_);
    QLabel *hover = controls_.scoreHoverText;
    switch (state_.currentMode) {
    case ModePractice:
        if (state_.pipCount >= 3)
            return;
        practiceReadout(state_.pipCount, r, a);
        hover->setText(dartDescription(r, a));
        positionHover(x, y);
        break;
    case ModeReview:
        reviewHover(r, a, x, y);
        break;
    case ModePlay:
        if (state_.throwPhase == 2 || state_.pipCount >= 3) {
            hover->hide();
            return;
        }
        hover->setText(playHoverCaption(r, a, state_.throwPhase == 1, state_.useCms));
        positionHover(x, y);
        break;
    default:
        break;
    }
}

void BoardInput::reviewHover(double radius, double angle, double x, double y)
{
    QLabel *hover = controls_.scoreHoverText;
    const std::optional<QString> caption = reviewHoverCaption(radius, angle, state_.reviewCounts);
    if (!caption) {
        hover->hide();
        return;
    }
    hover->setText(*caption);
    positionHover(x, y);
}

void BoardInput::practiceReadout(int row, double radius, double angle)
{
    PracticeFrame *practice = controls_.practice;
    if (!practice || row < 0 || row > 2)
        return;
    // Distance and angle are measured from the practice target, the
    // description from the bull.
    const double dx = mouseX_ - state_.targetX;
    const double dy = mouseY_ - state_.targetY;
    practice->rdisttext[row]->setText(distanceText(radiusOf(dx, dy), state_.useCms));
    practice->angleText[row]->setText(degreesText(angleFromXY(dx, dy)));
    practice->scoreText[row]->setText(dartDescription(radius, angle));
}

void BoardInput::positionHover(double x, double y)
{
    QLabel *hover = controls_.scoreHoverText;
    hover->adjustSize();
    const QPointF corner = hoverTopLeft(x, y, hover->size(), picture_->width(), true);
    hover->move(corner.toPoint());
    hover->show();
    hover->raise();
}

void BoardInput::showScoreHover(double x, double y, int kind)
{
    setMouse(x, y);
    const double r = radiusOf(mouseX_, mouseY_);
    const double a = angleFromXY(mouseX_, mouseY_);
    QLabel *hover = controls_.scoreHoverText;
    hover->setText(markerHoverCaption(kind, r, a, state_.useCms, hover->text()));
    hover->adjustSize();
    hover->move(hoverTopLeft(x, y, hover->size(), picture_->width(), false).toPoint());
    hover->show();
    hover->raise();
}

void BoardInput::pressed(QPointF at, Qt::MouseButton button)
{
    clickPending_ = false;
    const MarkerArray &other = state_.currentThrower == 1 ? pips_ : cpips_;
    DartMarker *pressedMarker = markerAt({&throwerPips(), &targetPips_, &other}, at);
    setMouse(at.x(), at.y());
    if (pressedMarker) {
        const MarkerKind kind = pressedMarker->isTarget() ? MarkerKind::Target : MarkerKind::Dart;
        if (dragAllowed(kind, state_.currentMode, state_.pipCount, state_.throwPhase,
                        button == Qt::RightButton)) {
            if (DartMarker *marker = closestPip(at.x(), at.y())) {
                dragging_ = marker;
                dragStart_ = marker->pos();
                marker->raise();
                return;
            }
        }
    }
    clickPending_ = button == Qt::LeftButton;
}

void BoardInput::released(QPointF at, Qt::MouseButton button)
{
    const bool inside = picture_->rect().contains(at.toPoint());
    if (dragging_) {
        DartMarker *marker = dragging_;
        dragging_ = nullptr;
        // Dropped outside the board picture: the marker goes back.
        if (inside)
            dropped(marker, at);
        else
            marker->move(dragStart_);
        return;
    }
    if (clickPending_ && button == Qt::LeftButton && inside) {
        clickPending_ = false;
        boardClicked();
    }
}

void BoardInput::placeMarker(DartMarker *marker, int flight)
{
    showMarkerAt(marker, {mouseX_, mouseY_}, flight);
}

void BoardInput::showMarkerAt(DartMarker *marker, BoardPoint at, int flight)
{
    marker->setFlight(flight);
    marker->centreOn(pictureFrom(at.x, at.y));
    marker->setEnabled(true);
    marker->show();
    marker->raise();
    // Targets stay visible over the flights, the hover text over both.
    for (DartMarker *target : targetPips_)
        target->raise();
    if (controls_.scoreHoverText)
        controls_.scoreHoverText->raise();
}

void BoardInput::landingSound()
{
    if (!sounds_)
        return;
    if (dartDescriptionFromXY(mouseX_, mouseY_) == QLatin1String("Bounce-out"))
        sounds_->playBoing(true);
    else
        sounds_->playDefaultSound(true);
}

void BoardInput::boardClicked()
{
    const double r = radiusOf(mouseX_, mouseY_);
    const double a = angleFromXY(mouseX_, mouseY_);
    // Drawn once per click, whatever the click turns out to do.
    const int flight = static_cast<int>(state_.random.generateDouble() * 12);

    switch (state_.currentMode) {
    case ModePractice: {
        if (state_.pipCount >= 3)
            return;
        placeMarker(pips_[state_.pipCount], flight);
        landingSound();
        ++state_.pipCount;
        PracticeFrame *practice = controls_.practice;
        if (state_.pipCount == 3) {
            if (practice) {
                practice->goButton()->setText(QStringLiteral("Confirm Darts"));
                practice->goButton()->setEnabled(true);
                practice->targetChoice()->setEnabled(true);
                practice->generalText()->setText(QStringLiteral("Adjust Darts and \"Confirm\""));
            }
            if (handoffs_)
                handoffs_->doAverageDist();
        }
        break;
    }
    case ModePlay: {
        if (state_.gameType < 1 || state_.gameType > 3)
            return;
        const MarkerArray &markers = throwerPips();
        if (state_.throwPhase == 1) {
            placeMarker(markers[0], flight);
            state_.pipCount = 1;
            if (sounds_)
                sounds_->playDefaultSound(true);
            controls_.btnStartGame->setEnabled(true);
            state_.throwPhase = 2;
            return;
        }
        if (state_.throwPhase != 3 || state_.pipCount >= 3)
            return;
        DartMarker *placed = markers[state_.pipCount];
        placeMarker(placed, flight);
        landingSound();
        ++state_.pipCount;
        controls_.btnStartGame->setEnabled(true);
        const DartScore score = pipScore(placed);
        if (state_.gameType == 1) {
            const int column = score.number == 25 ? 0 : 21 - score.number;
            // A good dart on a number the other player has not closed.
            if (sounds_ && column <= 6 && state_.cricketMarks[2 - state_.currentThrower][column] < 3) {
                if (score.multiplier == 2)
                    sounds_->playHarp(false);
                else if (score.multiplier == 3)
                    sounds_->playFanfare(false);
            }
            if (handoffs_) {
                handoffs_->showCricketScores(markers);
                if (state_.pipCount < 3)
                    handoffs_->showNextCricketTarget();
            }
        } else {
            const DartScore target = pipScore(targetPips_[state_.pipCount - 1]);
            if (sounds_ && score == target) {
                if (score.multiplier == 3)
                    sounds_->playFanfare(false);
                else
                    sounds_->playHarp(false);
            }
            if (handoffs_) {
                handoffs_->show301Scores(markers);
                if (state_.pipCount < 3)
                    handoffs_->showNext01Target();
            }
        }
        break;
    }
    case ModeReview: {
        const int ring = ringFromRadius(r);
        const int segment = segmentFromAngle(a);
        controls_.scoreHoverText->hide();
        if (ring > 0 && handoffs_)
            handoffs_->doPlot(ring, segment);
        break;
    }
    default:
        break;
    }
}

void BoardInput::dropped(DartMarker *marker, QPointF at)
{
    const double x = at.x();
    const double y = at.y();
    marker->centreOn(at);
    setMouse(x, y);
    const double r = radiusOf(mouseX_, mouseY_);
    const double a = angleFromXY(mouseX_, mouseY_);
    switch (state_.currentMode) {
    case ModePractice: {
        const int k = closestPipIndex(pips_, x, y);
        dragPipIndex_ = k;
        if (k != noMarker)
            practiceReadout(k, r, a);
        if (handoffs_)
            handoffs_->doAverageDist();
        break;
    }
    case ModePlay: {
        if (marker->isTarget()) {
            // A target snaps to the aiming point of the area it was dropped
            // on, and to the bull's centre off the board or on a wire.
            const DartScore area = pipScore(marker);
            const BoardPoint aim = aimPoint(area.multiplier, area.number);
            marker->centreOn(pictureFrom(aim.x, aim.y));
            return;
        }
        QLabel *hover = controls_.scoreHoverText;
        hover->setText(playHoverCaption(r, a, state_.throwPhase == 1, state_.useCms));
        positionHover(x, y);
        if (state_.throwPhase == 3 && handoffs_) {
            if (state_.gameType == 2 || state_.gameType == 3)
                handoffs_->show301Scores(throwerPips());
            else if (state_.gameType == 1)
                handoffs_->showCricketScores(throwerPips());
        }
        break;
    }
    default:
        break;
    }
}

} // namespace tavrix
