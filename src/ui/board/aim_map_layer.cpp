#include "ui/board/aim_map_layer.h"

#include "ui/board/picture_scale.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>

namespace tavrix {

namespace {

// Dark blue for little, through green and yellow, to red for the most.
constexpr std::array<std::array<int, 3>, 5> scaleStops{{
    {{30, 40, 150}}, {{0, 150, 210}}, {{60, 185, 80}}, {{250, 215, 40}}, {{225, 35, 30}}}};
constexpr int mapAlpha = 140;
// The scoring area ends at the double ring's outer wire.
constexpr double scoringRadius = 202;

QPointF pictureOf(BoardPoint at)
{
    return {boardCenter + at.x, boardCenter - at.y};
}

} // namespace

QColor aimMapColor(float value, float high)
{
    const double share = high > 0 ? std::clamp(double(value) / high, 0.0, 1.0) : 0.0;
    const double position = share * (scaleStops.size() - 1);
    const int low = std::min(int(position), int(scaleStops.size()) - 2);
    const double t = position - low;
    int rgb[3];
    for (int k = 0; k < 3; ++k)
        rgb[k] = int(std::lround(scaleStops[low][k] + t * (scaleStops[low + 1][k] - scaleStops[low][k])));
    return {rgb[0], rgb[1], rgb[2], mapAlpha};
}

AimMapPicture aimMapPicture(const AimMap &map, const BestAim &best)
{
    AimMapPicture picture;
    picture.high = best.value;
    picture.colours = QImage(aimGridSide, aimGridSide, QImage::Format_ARGB32_Premultiplied);
    for (int row = 0; row < aimGridSide; ++row) {
        auto *line = reinterpret_cast<QRgb *>(picture.colours.scanLine(row));
        for (int column = 0; column < aimGridSide; ++column)
            line[column] = qPremultiply(aimMapColor(map.at(column, row), best.value).rgba());
    }
    // Grid points are the middles of the image's pixels.
    const QPointF topLeft = pictureOf(gridPointToBoard(0, 0));
    const QPointF bottomRight = pictureOf(gridPointToBoard(aimGridSide - 1, aimGridSide - 1));
    const QPointF half = (bottomRight - topLeft) / (2.0 * (aimGridSide - 1));
    picture.area = QRectF(topLeft - half, bottomRight + half);
    picture.best = pictureOf(gridPointToBoard(best.column, best.row));
    return picture;
}

void drawAimMap(QPainter &painter, const AimMapPicture &map)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    QPainterPath scoringArea;
    scoringArea.addEllipse(QPointF(boardCenter, boardCenter), scoringRadius, scoringRadius);
    painter.setClipPath(scoringArea);
    painter.drawImage(map.area, map.colours);
    painter.setClipping(false);

    // The legend in the lower left corner, clear of the board's numbers.
    const QRectF panel(4, pictureUnits - 46, 116, 42);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 170));
    painter.drawRoundedRect(panel, 3, 3);
    QLinearGradient gradient(panel.left() + 6, 0, panel.right() - 6, 0);
    for (int stop = 0; stop < int(scaleStops.size()); ++stop) {
        const auto &rgb = scaleStops[stop];
        gradient.setColorAt(double(stop) / (scaleStops.size() - 1), QColor(rgb[0], rgb[1], rgb[2]));
    }
    const QRectF bar(panel.left() + 6, panel.top() + 17, panel.width() - 12, 8);
    painter.setBrush(gradient);
    painter.drawRect(bar);
    QFont font = painter.font();
    font.setPixelSize(10);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRectF(panel.left() + 6, panel.top() + 2, panel.width() - 12, 14), Qt::AlignLeft,
                     QStringLiteral("points per dart"));
    const QRectF numbers(bar.left(), bar.bottom() + 1, bar.width(), 12);
    painter.drawText(numbers, Qt::AlignLeft, QStringLiteral("0"));
    painter.drawText(numbers, Qt::AlignRight, QString::number(map.high, 'f', 1));
    painter.restore();
}

void drawBestAim(QPainter &painter, const AimMapPicture &map)
{
    // An open ring with ticks, white on a dark edge: it marks the point on
    // any colour and leaves the darts inside it in sight.
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    for (const auto &[color, width] : {std::pair{QColor(0, 0, 0, 200), 3.2}, std::pair{QColor(Qt::white), 1.4}}) {
        painter.setPen(QPen(color, width));
        painter.drawEllipse(map.best, 8, 8);
        for (const QPointF direction : {QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1), QPointF(0, -1)})
            painter.drawLine(map.best + direction * 8, map.best + direction * 14);
    }
    painter.restore();
}

} // namespace tavrix
