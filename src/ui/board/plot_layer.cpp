#include "ui/board/plot_layer.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace tavrix {

namespace {

constexpr double dotRadius = 2;
// Crosses and ellipses sit on a light halo so that they read over black
// dots and the black board alike.
const QColor halo(255, 255, 255, 210);

// One dot, centred on the middle of the stamp's middle pixel: outline and
// fill in the dot's colour.
QImage dotStamp(const QColor &color, qreal ratio, int &half)
{
    half = int(std::ceil((dotRadius + 1) * ratio));
    QImage stamp(2 * half + 1, 2 * half + 1, QImage::Format_ARGB32_Premultiplied);
    stamp.fill(Qt::transparent);
    QPainter painter(&stamp);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, ratio));
    painter.setBrush(color);
    painter.drawEllipse(QPointF(half + 0.5, half + 0.5), dotRadius * ratio, dotRadius * ratio);
    return stamp;
}

void drawDots(QPainter &painter, const PlotSet &set, int pixels, qreal ratio)
{
    int half = 0;
    const QImage stamp = dotStamp(set.color, ratio, half);
    std::vector<bool> drawn(std::size_t(pixels) * std::size_t(pixels), false);
    const double centre = boardCenter * ratio;
    for (const BoardPoint &dot : set.dots) {
        // The screen pixel holding the dot's centre; the stamp's middle
        // pixel goes there, less than half a pixel from the exact point.
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
        // Dots are copied at whole screen pixels; the marks are drawn in
        // picture units, scaled to the screen.
        for (const PlotSet &set : sets)
            drawDots(painter, set, pixels, ratio);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(ratio, ratio);
        for (const PlotSet &set : sets)
            drawSpread(painter, set);
    }
    layer.setDevicePixelRatio(ratio);
    return layer;
}

} // namespace tavrix
