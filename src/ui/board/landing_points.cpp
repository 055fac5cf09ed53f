#include "ui/board/landing_points.h"

#include "ui/board/dart_marker.h"
#include "ui/board/picture_scale.h"

#include <QEvent>
#include <QPainter>

#include <cmath>
#include <limits>

namespace tavrix {

LandingPoints::LandingPoints(QWidget *picture)
    : QWidget(picture)
{
    setObjectName(QStringLiteral("landingPoints"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    resize(picture->size());
    picture->installEventFilter(this);
    show();
}

void LandingPoints::watch(DartMarker *marker, int number)
{
    darts_.append({marker, number});
    marker->installEventFilter(this);
    // A marker's exact point may move within the pixel its widget stands on.
    connect(marker, &DartMarker::centreMoved, this, qOverload<>(&QWidget::update));
}

bool LandingPoints::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Resize:
        if (watched == parent())
            resize(parentWidget()->size());
        break;
    case QEvent::Move:
    case QEvent::Show:
    case QEvent::Hide:
        if (watched != parent())
            update();
        break;
    default:
        break;
    }
    return false;
}

namespace {

// Where a dart's number goes: the first of eight places round its point,
// straight above first, that is clear of the other points and of the
// numbers placed before; when none is, the clearest. Distances are in
// widget pixels, on a picture of `scale` pixels per unit.
QPointF numberPlace(QPointF at, const QList<QPointF> &taken, double scale)
{
    static const QPointF directions[] = {{0, -1}, {0.7071, -0.7071}, {-0.7071, -0.7071}, {1, 0},
                                         {-1, 0}, {0.7071, 0.7071},  {-0.7071, 0.7071},  {0, 1}};
    const double distance = (dartPointRadius + 6) * scale;
    const double clear = 12 * scale;
    QPointF best;
    double bestClearance = -1;
    for (const QPointF direction : directions) {
        const QPointF place = at + direction * distance;
        double clearance = std::numeric_limits<double>::max();
        for (const QPointF other : taken) {
            if (other != at)
                clearance = std::min(clearance, std::hypot(place.x() - other.x(), place.y() - other.y()));
        }
        if (clearance >= clear)
            return place;
        if (clearance > bestClearance) {
            bestClearance = clearance;
            best = place;
        }
    }
    return best;
}

} // namespace

void LandingPoints::paintEvent(QPaintEvent *)
{
    const double scale = pictureScale(parentWidget());
    QList<const Dart *> shown;
    QList<QPointF> taken;
    for (const Dart &dart : std::as_const(darts_)) {
        if (!dart.marker->isHidden()) {
            shown << &dart;
            taken << dart.marker->centre() * scale + QPointF(0.5, 0.5);
        }
    }
    QPainter painter(this);
    // The numbers first, so none of them lies over a dart's point.
    for (qsizetype i = 0; i < shown.size(); ++i) {
        const QPointF place = numberPlace(taken[i], taken, scale);
        drawDartNumber(painter, place, shown[i]->number, scale);
        taken << place;
    }
    for (const Dart *dart : std::as_const(shown))
        drawDartPoint(painter, dart->marker->centre() * scale, dart->marker->finColor(), scale);
}

} // namespace tavrix
