#include "core/board/pointer_rules.h"

#include <algorithm>
#include <cmath>

namespace tavrix {

namespace {

int lastMarker(int pipCount)
{
    return static_cast<int>(lesserOf(pipCount, 2));
}

} // namespace

bool rectContains(const QRectF &rect, double x, double y)
{
    return x >= rect.left() && x <= rect.left() + rect.width() && y >= rect.top()
           && y <= rect.top() + rect.height();
}

int closestMarkerIndex(const MarkerRects &markers, int pipCount, double x, double y,
                       double *distance)
{
    double best = noMarker;
    int found = noMarker;
    for (int i = lastMarker(pipCount); i >= 0; --i) {
        if (!markers[i] || !rectContains(*markers[i], x, y))
            continue;
        const QPointF centre = markers[i]->center();
        const double d = std::hypot(x - centre.x(), y - centre.y());
        if (d < best) {
            best = d;
            found = i;
        }
    }
    if (distance)
        *distance = best;
    return found;
}

bool onMarker(const MarkerRects &markers, int pipCount, double x, double y)
{
    for (int i = 0; i <= lastMarker(pipCount); ++i) {
        if (markers[i] && rectContains(*markers[i], x, y))
            return true;
    }
    return false;
}

QPointF hoverTopLeft(double x, double y, QSizeF label, double pictureWidth, bool clampRight)
{
    const double top = y - label.height() - 1;
    if (clampRight && x > pictureWidth - label.width())
        return {pictureWidth - label.width(), top};
    return {x - 1, top};
}

QString playHoverCaption(double radius, double angle, bool cork, bool useCms)
{
    if (cork)
        return distanceText(radius, useCms) + QStringLiteral(" from bull.");
    return dartDescription(radius, angle);
}

QString markerHoverCaption(MarkerHover hover, double radius, double angle, bool useCms,
                           const QString &current)
{
    switch (hover.kind) {
    case HoverKind::Keep:
        break;
    case HoverKind::DistanceFromBull:
        return distanceText(radius, useCms) + QStringLiteral(" from bull.");
    case HoverKind::Target:
        return QStringLiteral("Target: ") + dartDescription(radius, angle);
    case HoverKind::Description:
        return dartDescription(radius, angle);
    case HoverKind::Dart:
        return QStringLiteral("Dart ") + QString::number(hover.dart) + QStringLiteral(": ")
               + dartDescription(radius, angle);
    }
    return current;
}

HoverKind labelHoverKind(ThrowPhase phase)
{
    switch (phase) {
    case ThrowPhase::None:
        break;
    case ThrowPhase::CorkAwaited:
        return HoverKind::DistanceFromBull;
    case ThrowPhase::CorkPlaced:
        return HoverKind::Target;
    case ThrowPhase::TurnDarts:
        return HoverKind::Description;
    }
    return HoverKind::Keep;
}

std::optional<QString>
reviewHoverCaption(double radius, double angle,
                   const std::array<std::array<qint64, 21>, 3> &counts)
{
    static const QString ringWords[] = {QStringLiteral("Single/Any"), QStringLiteral("Double"),
                                        QStringLiteral("Triple")};
    int ringIndex = -1;
    int targetIndex = -1;
    QString area;
    // The bull and the outer bull are one review area; a point in the bull's
    // radius that is no bed (a wire) is none.
    if (radius <= 19.0001) {
        if (ringFromRadius(radius) >= 1) {
            ringIndex = 0;
            targetIndex = 0;
            area = QStringLiteral("25/Bull");
        }
    } else {
        const int ring = ringFromRadius(radius);
        if (ring > 0 && ring <= 3) {
            ringIndex = ring - 1;
            area = ringWords[ringIndex] + QLatin1Char(' ');
            const int segment = segmentFromAngle(angle);
            if (segment > 0) {
                targetIndex = 21 - segment;
                area += QString::number(segment);
            }
        }
    }
    if (ringIndex < 0 || targetIndex < 0)
        return std::nullopt;
    const qint64 n = counts[ringIndex][targetIndex];
    if (n <= 0)
        return std::nullopt;
    return area + QStringLiteral(" -- ") + QString::number(n) + QStringLiteral(" dart")
           + (n > 1 ? QStringLiteral("s.") : QStringLiteral("."));
}

bool dragAllowed(MarkerKind kind, bool inPlay, int pipCount, ThrowPhase phase, bool rightButton)
{
    if (kind == MarkerKind::Dart)
        return pipCount >= 3 || phase == ThrowPhase::CorkPlaced || rightButton;
    return inPlay && (pipCount >= 3 || (phase == ThrowPhase::TurnDarts && rightButton));
}

} // namespace tavrix
