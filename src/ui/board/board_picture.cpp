#include "ui/board/board_picture.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace tavrix {

namespace {

const QColor boardBlack(28, 28, 28);
const QColor boardCream(236, 222, 186);
const QColor boardRed(206, 32, 41);
const QColor boardGreen(19, 133, 72);
const QColor wireSilver(196, 200, 206);
const QColor surround(18, 18, 20);
const QColor numberColor(245, 245, 245);

// Numbers whose single bed is dark; their doubles and trebles are red.
bool isDarkSegment(int number)
{
    switch (number) {
    case 20: case 18: case 13: case 10: case 2: case 3: case 7: case 8: case 14: case 12:
        return true;
    default:
        return false;
    }
}

} // namespace

QColor bedColor(int ring, int number)
{
    if (number == 0)
        return wireSilver;
    switch (ring) {
    case RingBull: return boardRed;
    case RingOuterBull: return boardGreen;
    case RingSingle: return isDarkSegment(number) ? boardBlack : boardCream;
    case RingDouble:
    case RingTriple: return isDarkSegment(number) ? boardRed : boardGreen;
    default: return wireSilver;
    }
}

namespace {

// The area between two radii and two angles (degrees, counter-clockwise).
QPainterPath annularSector(double inner, double outer, double fromDeg, double toDeg)
{
    const QPointF c(boardCenter, boardCenter);
    QPainterPath path;
    const double span = toDeg - fromDeg;
    path.arcMoveTo(QRectF(c.x() - outer, c.y() - outer, 2 * outer, 2 * outer), fromDeg);
    path.arcTo(QRectF(c.x() - outer, c.y() - outer, 2 * outer, 2 * outer), fromDeg, span);
    if (inner > 0)
        path.arcTo(QRectF(c.x() - inner, c.y() - inner, 2 * inner, 2 * inner), toDeg, -span);
    else
        path.lineTo(c);
    path.closeSubpath();
    return path;
}

QPainterPath ring(double inner, double outer)
{
    const QPointF c(boardCenter, boardCenter);
    QPainterPath path;
    path.addEllipse(c, outer, outer);
    if (inner > 0)
        path.addEllipse(c, inner, inner);
    return path;
}

} // namespace

BoardPicture::BoardPicture(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("Picture1"));
    // The window keeps the picture square; it never shrinks below one
    // pixel per unit.
    setMinimumSize(side, side);
    resize(side, side);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QPointF BoardPicture::pictureFromBoard(BoardPoint point)
{
    return {boardCenter + point.x, boardCenter - point.y};
}

void BoardPicture::setPlots(std::vector<PlotSet> sets)
{
    plots_ = std::move(sets);
    renderPlots();
    update();
}

void BoardPicture::clearPlots()
{
    if (plots_.empty())
        return;
    plots_.clear();
    plotLayer_ = QImage();
    update();
}

void BoardPicture::setAimMap(std::optional<AimMapPicture> map)
{
    if (!map && !aimMap_)
        return;
    aimMap_ = std::move(map);
    update();
}

void BoardPicture::renderPlots()
{
    if (plots_.empty()) {
        plotLayer_ = QImage();
        return;
    }
    // Drawn at the screen's pixels for the picture's present size, then
    // copied one to one.
    const qreal ratio = devicePixelRatioF();
    plotLayer_ = renderPlotLayer(plots_, side, ratio * scale());
    plotLayer_.setDevicePixelRatio(ratio);
}

void BoardPicture::resizeEvent(QResizeEvent *)
{
    // The plot is drawn again at the next paint, once for all the sizes a
    // window passes through while it is dragged.
    emit rescaled();
}

void BoardPicture::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), palette().window());
    painter.save();
    painter.scale(scale(), scale());
    painter.setPen(Qt::NoPen);
    painter.setBrush(surround);
    painter.drawEllipse(QPointF(boardCenter, boardCenter), boardCenter - 1, boardCenter - 1);

    // The beds: every ring row crossed with every segment row of the tables.
    // Wire rows of either table come out silver.
    for (const TableRow &ringRow : ringTable) {
        if (ringRow.code == RingBull || ringRow.code == RingOuterBull)
            continue;
        for (const TableRow &segmentRow : segmentTable) {
            const int number = ringRow.code == RingWire ? 0 : segmentRow.code;
            painter.setBrush(bedColor(ringRow.code, number));
            // The row that ends at 360 degrees runs on under the row of
            // the same number from 0, so no seam shows where they meet.
            const double to = segmentRow.to >= 360 ? 361 : segmentRow.to + 1e-5;
            painter.drawPath(annularSector(ringRow.from, ringRow.to, segmentRow.from, to));
        }
    }
    // The bull and its wires are whole rings.
    for (const TableRow &ringRow : ringTable) {
        if (ringRow.to > 20)
            break;
        painter.setBrush(ringRow.code == RingWire ? wireSilver : bedColor(ringRow.code, 25));
        painter.drawPath(ring(ringRow.from, ringRow.to));
    }

    // The numbers, in the board's order, outside the double ring.
    QFont font = painter.font();
    font.setPixelSize(26);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(numberColor);
    for (int number = 1; number <= 20; ++number) {
        const double a = segmentAngle[number] * radPerDeg;
        const QPointF at = pictureFromBoard({228 * std::cos(a), 228 * std::sin(a)});
        painter.drawText(QRectF(at.x() - 22, at.y() - 16, 44, 32), Qt::AlignCenter,
                         QString::number(number));
    }

    if (aimMap_)
        drawAimMap(painter, *aimMap_);
    painter.restore();

    if (!plots_.empty()) {
        // The screen or the picture's size may have changed since the plot
        // was drawn.
        const int pixels = int(std::ceil(side * (devicePixelRatioF() * scale())));
        if (plotLayer_.devicePixelRatio() != devicePixelRatioF() || plotLayer_.width() != pixels)
            renderPlots();
        painter.drawImage(QPointF(0, 0), plotLayer_);
    }
    if (aimMap_) {
        painter.save();
        painter.scale(scale(), scale());
        drawBestAim(painter, *aimMap_);
        painter.restore();
    }
}

} // namespace tavrix
