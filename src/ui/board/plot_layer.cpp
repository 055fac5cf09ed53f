#include "ui/board/plot_layer.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace tavrix {

namespace {

constexpr double dotRadius = 2;
// A light rim round each dot, so that a black dot on a black bed and a red
// dot on a red bed keep their outline.
constexpr double rimWidth = 1;
const QColor rimColor(255, 255, 255);
// Crosses and ellipses sit on a light halo so that they read over the black
// board.
const QColor halo(255, 255, 255, 210);

// A disc of `radius` picture pixels centred on the middle of the stamp's
// middle pixel.
QImage discStamp(const QColor &color, double radius, qreal ratio, int half)
{
    QImage stamp(2 * half + 1, 2 * half + 1, QImage::Format_ARGB32_Premultiplied);
    stamp.fill(Qt::transparent);
    QPainter painter(&stamp);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QPointF(half + 0.5, half + 0.5), radius * ratio, radius * ratio);
    return stamp;
}

// The stamp copied once onto each screen pixel that holds a dot's centre;
// darts that fall on one pixel are drawn once.
void stampDots(QPainter &painter, const PlotSet &set, const QImage &stamp, int half, int pixels, qreal ratio)
{
    std::vector<bool> drawn(std::size_t(pixels) * std::size_t(pixels), false);
    const double centre = boardCenter * ratio;
    for (const BoardPoint &dot : set.dots) {
        // The stamp's middle pixel goes on the screen pixel holding the
        // dot's centre, less than half a pixel from the exact point.
        const double column = std::floor(centre + dot.x * ratio);
        const double row = std::floor(centre - dot.y * ratio);
        if (column < -half || row < -half || column >= pixels + half || row >= pixels + half)
            continue;
        const int c = int(column);
        const int r = int(row);
        if (c >= 0 && r >= 0 && c < pixels && r < pixels) {
            auto seen = drawn.begin() + (std::ptrdiff_t(r) * pixels + c);
            if (*seen)
                continue;
            *seen = true;
        }
        painter.drawImage(QPoint(c - half, r - half), stamp);
    }
}

// The dot itself: outline and fill in its colour, half a screen pixel of
// outline beyond the radius.
double bodyRadius(qreal ratio)
{
    return dotRadius + 0.5 / ratio;
}

void drawRims(QPainter &painter, const PlotSet &set, int pixels, qreal ratio)
{
    const double radius = bodyRadius(ratio) + rimWidth;
    const int half = int(std::ceil((radius + 1) * ratio));
    stampDots(painter, set, discStamp(rimColor, radius, ratio, half), half, pixels, ratio);
}

void drawBodies(QPainter &painter, const PlotSet &set, int pixels, qreal ratio)
{
    const double radius = bodyRadius(ratio);
    const int half = int(std::ceil((radius + 1) * ratio));
    stampDots(painter, set, discStamp(set.color, radius, ratio, half), half, pixels, ratio);
}

void drawSpread(QPainter &painter, const PlotSet &set)
{
    if (!set.mean)
        return;
    painter.save();
    painter.translate(boardCenter + set.mean->x, boardCenter - set.mean->y);
    QPainterPath marks;
    constexpr double arm = 6;
    marks.moveTo(-arm, 0);
    marks.lineTo(arm, 0);
    marks.moveTo(0, -arm);
    marks.lineTo(0, arm);
    if (set.ellipse && set.ellipse->semiMajor > 0) {
        // The picture's rows run downwards: a counter-clockwise angle on the
        // board is a clockwise turn of the painter's negative angle.
        QTransform turn;
        turn.rotate(-set.ellipse->angle);
        QPainterPath ring;
        ring.addEllipse(QPointF(0, 0), set.ellipse->semiMajor, set.ellipse->semiMinor);
        marks.addPath(turn.map(ring));
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(halo, 4, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(marks);
    painter.setPen(QPen(set.color, 1.6, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(marks);
    painter.restore();
}

} // namespace

QImage renderPlotLayer(const std::vector<PlotSet> &sets, int side, qreal ratio)
{
    const int pixels = int(std::ceil(side * ratio));
    QImage layer(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    layer.fill(Qt::transparent);
    {
        QPainter painter(&layer);
        // The marks lie under the dots, so no dot is hidden by them; every
        // rim lies under every dot, so a rim outlines a cluster without
        // covering the dots in it; a later set's dots lie over an earlier's.
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(ratio, ratio);
        for (const PlotSet &set : sets)
            drawSpread(painter, set);
        painter.restore();
        // Dots are copied at whole screen pixels.
        for (const PlotSet &set : sets)
            drawRims(painter, set, pixels, ratio);
        for (const PlotSet &set : sets)
            drawBodies(painter, set, pixels, ratio);
    }
    layer.setDevicePixelRatio(ratio);
    return layer;
}

} // namespace tavrix
