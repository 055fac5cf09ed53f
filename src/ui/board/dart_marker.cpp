#include "ui/board/dart_marker.h"

#include "ui/board/picture_scale.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace tavrix {

namespace {

struct FinPalette {
    QColor fill;
    QColor stripe;
    QColor edge;  // dark line round each vane and round the landing point
    QColor halo;  // light band outside the edge
};

FinPalette palette(FinColor color)
{
    if (color == FinColor::Blue)
        return {QColor(45, 120, 235, 205), QColor(175, 220, 255, 230), QColor(0, 12, 55),
                QColor(240, 248, 255, 235)};
    // The opponent's halo is warm, so a black flight still reads as its own
    // colour when it lies beside a blue one (the two cork darts).
    return {QColor(26, 26, 30, 225), QColor(215, 45, 45, 230), QColor(0, 0, 0), QColor(255, 226, 120, 235)};
}

// Where the dot of a dart at a picture point is centred: the middle of the
// pixel whose top left corner the point is.
QPointF middleOf(QPointF at)
{
    return at + QPointF(0.5, 0.5);
}

// A flight seen from behind: four vanes round the shaft. The twelve pictures
// differ in how far they are turned and in the vanes' cut, so no two darts
// of a set look alike.
void drawFlight(QPainter &p, FinColor color, int index, QPointF centre, double scale)
{
    const double turn = index * 15.0 + 10.0;
    const bool slim = index % 3 == 1;
    const bool kite = index % 3 == 2;
    const double reach = slim ? 26 : 24;
    const double width = slim ? 7 : (kite ? 11 : 9.5);
    const FinPalette colours = palette(color);

    QPainterPath vane;
    vane.moveTo(0, -2);
    if (kite) {
        vane.lineTo(width, -reach * 0.55);
        vane.lineTo(0, -reach);
        vane.lineTo(-width * 0.35, -reach * 0.45);
    } else {
        vane.cubicTo(width, -6, width, -reach + 4, width * 0.5, -reach);
        vane.lineTo(-width * 0.5, -reach);
        vane.cubicTo(-width, -reach + 4, -width * 0.4, -6, 0, -2);
    }
    vane.closeSubpath();

    p.setRenderHint(QPainter::Antialiasing);
    p.save();
    p.translate(centre);
    p.scale(scale, scale);
    p.rotate(turn);
    QTransform quarter;
    QPainterPath vanes;
    for (int i = 0; i < 4; ++i) {
        vanes.addPath(quarter.map(vane));
        quarter.rotate(90);
    }
    // The halo lies only outside the vanes, round the whole flight: each
    // flight keeps its own outline where it lies over another.
    QPainterPathStroker band;
    band.setWidth(4.0);
    band.setJoinStyle(Qt::RoundJoin);
    p.setPen(Qt::NoPen);
    p.setBrush(colours.halo);
    p.drawPath(band.createStroke(vanes).united(vanes).subtracted(vanes));
    p.setPen(QPen(colours.edge, 1.1));
    p.setBrush(colours.fill);
    p.drawPath(vanes);
    // A stripe across each vane, as printed flights have.
    p.setPen(QPen(colours.stripe, 2.0, Qt::SolidLine, Qt::RoundCap));
    for (int i = 0; i < 4; ++i) {
        p.drawLine(QPointF(-width * 0.35, -reach * 0.7), QPointF(width * 0.35, -reach * 0.7));
        p.rotate(90);
    }
    p.restore();
}

// Thin lines drawn twice, dark and wide under light and narrow.
void strokeTwice(QPainter &p, const QPainterPath &path, const QColor &light)
{
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(QColor(0, 0, 0, 200), 3.0, Qt::SolidLine, Qt::RoundCap));
    p.drawPath(path);
    p.setPen(QPen(light, 1.4, Qt::SolidLine, Qt::RoundCap));
    p.drawPath(path);
}

// A ring with four ticks and nothing in the middle, so whatever lies at
// the aiming point, a dart or the bed, stays in sight.
void drawTarget(QPainter &p, QPointF middle, double scale)
{
    p.save();
    p.translate(middle);
    p.scale(scale, scale);
    const QPointF centre(0, 0);
    p.setRenderHint(QPainter::Antialiasing);
    QPainterPath ring;
    ring.addEllipse(centre, 5.5, 5.5);
    QPainterPath ticks;
    for (const QPointF direction : {QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1), QPointF(0, -1)}) {
        ticks.moveTo(centre + direction * 3.0);
        ticks.lineTo(centre + direction * 7.0);
    }
    strokeTwice(p, ring, QColor(255, 210, 0));
    strokeTwice(p, ticks, QColor(255, 210, 0));
    p.restore();
}

} // namespace

void drawDartPoint(QPainter &painter, QPointF at, FinColor color, double scale)
{
    const FinPalette colours = palette(color);
    painter.save();
    painter.translate(middleOf(at));
    painter.scale(scale, scale);
    const QPointF middle(0, 0);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    // Light halo, dark ring, white core: one of the three stands out on
    // every bed, and the core's middle pixel is the landing point itself.
    // The radii end on pixel edges, so at a device pixel ratio of 1 the
    // core is three pixels across and the ring two whole pixels wide, not
    // blurred into greys.
    painter.setBrush(colours.halo);
    painter.drawEllipse(middle, dartPointRadius, dartPointRadius);
    painter.setBrush(colours.edge);
    painter.drawEllipse(middle, 3.5, 3.5);
    painter.setBrush(Qt::white);
    painter.drawEllipse(middle, 1.5, 1.5);
    painter.restore();
}

void drawDartNumber(QPainter &painter, QPointF at, int number, double scale)
{
    const QPointF middle(0, 0);
    QFont font = painter.font();
    font.setPixelSize(10);
    font.setBold(true);
    const QString digit = QString::number(number);
    const QFontMetricsF metrics(font);
    QPainterPath text;
    text.addText(middle + QPointF(-metrics.horizontalAdvance(digit) / 2, metrics.capHeight() / 2), font,
                 digit);
    painter.save();
    painter.translate(at);
    painter.scale(scale, scale);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0, 0, 0, 220), 2.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(text);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawPath(text);
    painter.restore();
}

DartMarker::DartMarker(const QString &tag, QWidget *board)
    : QWidget(board)
    , tag_(tag)
{
    resize(side(), side());
    centre_ = QPointF(side() / 2.0, side() / 2.0);
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
    centre_ = picturePoint;
    rescale();
    emit centreMoved();
}

void DartMarker::rescale()
{
    const double scale = pictureScale(parentWidget());
    const int pixels = int(std::ceil(side() * scale));
    const QPointF middle = centre_ * scale;
    setGeometry(qRound(middle.x() - pixels / 2.0), qRound(middle.y() - pixels / 2.0), pixels, pixels);
    update();
}

QRectF DartMarker::area() const
{
    return {centre_ - QPointF(side() / 2.0, side() / 2.0), QSizeF(side(), side())};
}

void DartMarker::paintEvent(QPaintEvent *)
{
    // Drawn as vectors on every paint, so the marker stays sharp at any
    // device pixel ratio.
    QPainter painter(this);
    const double scale = pictureScale(parentWidget());
    const QPointF at = centre_ * scale - QPointF(pos());
    if (isTarget()) {
        drawTarget(painter, middleOf(at), scale);
        return;
    }
    drawFlight(painter, finColor(), flight_, middleOf(at), scale);
    drawDartPoint(painter, at, finColor(), scale);
}

} // namespace tavrix
