#include "board/dart_marker.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <cmath>

namespace tavrix {

namespace {

// A flight seen from behind: four vanes round the shaft. The twelve pictures
// differ in how far they are turned and in the vanes' cut, so no two darts
// of a set look alike.
void drawFlight(QPainter &p, FinColor color, int index)
{
    const double side = DartMarker::flightSide;
    const QPointF centre(side / 2, side / 2);
    const double turn = index * 15.0 + 10.0;
    const bool slim = index % 3 == 1;
    const bool kite = index % 3 == 2;
    const double reach = slim ? 26 : 24;
    const double width = slim ? 7 : (kite ? 11 : 9.5);

    const QColor fill = color == FinColor::Blue ? QColor(40, 110, 230, 150) : QColor(20, 20, 24, 165);
    const QColor edge = color == FinColor::Blue ? QColor(225, 240, 255, 230) : QColor(235, 235, 235, 220);
    const QColor stripe = color == FinColor::Blue ? QColor(150, 205, 255, 190) : QColor(200, 40, 40, 180);

    p.setRenderHint(QPainter::Antialiasing);
    p.translate(centre);
    p.rotate(turn);
    for (int vane = 0; vane < 4; ++vane) {
        QPainterPath shape;
        shape.moveTo(0, -2);
        if (kite) {
            shape.lineTo(width, -reach * 0.55);
            shape.lineTo(0, -reach);
            shape.lineTo(-width * 0.35, -reach * 0.45);
        } else {
            shape.cubicTo(width, -6, width, -reach + 4, width * 0.5, -reach);
            shape.lineTo(-width * 0.5, -reach);
            shape.cubicTo(-width, -reach + 4, -width * 0.4, -6, 0, -2);
        }
        shape.closeSubpath();
        p.setPen(QPen(edge, 1.2));
        p.setBrush(fill);
        p.drawPath(shape);
        // A stripe across each vane, as printed flights have.
        p.setPen(QPen(stripe, 2.0, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(-width * 0.35, -reach * 0.7), QPointF(width * 0.35, -reach * 0.7));
        p.rotate(90);
    }
    // The shaft end marks the exact point of the dart.
    p.setPen(QPen(QColor(255, 255, 255), 1.0));
    p.setBrush(color == FinColor::Blue ? QColor(10, 40, 120) : QColor(0, 0, 0));
    p.drawEllipse(QPointF(0, 0), 2.6, 2.6);
}

void drawTarget(QPainter &p)
{
    const double side = DartMarker::targetSide;
    p.setRenderHint(QPainter::Antialiasing);
    const QPointF centre(side / 2, side / 2);
    p.setPen(QPen(QColor(255, 255, 255), 1.5));
    p.setBrush(QColor(255, 200, 0, 200));
    p.drawEllipse(centre, side / 2 - 1, side / 2 - 1);
    p.setPen(QPen(QColor(180, 0, 0), 1.5));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(centre, side / 4, side / 4);
    p.drawLine(QPointF(centre.x(), 1), QPointF(centre.x(), side - 1));
    p.drawLine(QPointF(1, centre.y()), QPointF(side - 1, centre.y()));
}

QPixmap blankPixmap(int side, qreal dpr)
{
    QPixmap pixmap(QSize(side, side) * dpr);
    pixmap.setDevicePixelRatio(dpr);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

} // namespace

QPixmap flightPicture(FinColor color, int index, qreal devicePixelRatio)
{
    QPixmap pixmap = blankPixmap(DartMarker::flightSide, devicePixelRatio);
    QPainter painter(&pixmap);
    drawFlight(painter, color, index % 12);
    return pixmap;
}

QPixmap targetPicture(qreal devicePixelRatio)
{
    QPixmap pixmap = blankPixmap(DartMarker::targetSide, devicePixelRatio);
    QPainter painter(&pixmap);
    drawTarget(painter);
    return pixmap;
}

DartMarker::DartMarker(const QString &tag, QWidget *board)
    : QWidget(board)
    , tag_(tag)
{
    const int side = isTarget() ? targetSide : flightSide;
    resize(side, side);
    // Pointer events belong to the board underneath, which knows the markers.
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    setEnabled(false);
}

void DartMarker::setFlight(int index)
{
    flight_ = isTarget() ? 0 : index;
    update();
}

void DartMarker::centreOn(QPointF picturePoint)
{
    move(qRound(picturePoint.x() - width() / 2.0), qRound(picturePoint.y() - height() / 2.0));
}

QPointF DartMarker::centre() const
{
    return {x() + width() / 2.0, y() + height() / 2.0};
}

void DartMarker::paintEvent(QPaintEvent *)
{
    // Drawn at the screen's density so the marker stays sharp.
    QPainter painter(this);
    if (isTarget()) {
        drawTarget(painter);
    } else {
        drawFlight(painter, tag_ == QLatin1String("pips") ? FinColor::Blue : FinColor::Black,
                   flight_);
    }
}

} // namespace tavrix
