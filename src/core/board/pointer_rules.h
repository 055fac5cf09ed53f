#pragma once

// What the pointer means over the board picture, as pure functions of picture
// pixels and state: which marker lies under it, where the floating hover text
// goes, what it says, and when a marker may be dragged.

#include "core/board/board_geometry.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <array>
#include <optional>

namespace tavrix {

// The index closestMarkerIndex returns when no marker contains the point.
inline constexpr int noMarker = 999;

// The rectangles of a marker array's visible members (picture pixels);
// nothing for a hidden member.
using MarkerRects = std::array<std::optional<QRectF>, 3>;

// Whether a picture point lies on a rectangle, its edges included.
bool rectContains(const QRectF &rect, double x, double y);

// The visible marker containing (x, y) whose centre is nearest, searching
// markers lesserOf(pipCount, 2) down to 0 so that ties keep the later dart;
// noMarker when none contains the point. `distance` receives the distance
// to the found marker's centre.
int closestMarkerIndex(const MarkerRects &markers, int pipCount, double x, double y,
                       double *distance = nullptr);

// Whether (x, y) lies on one of markers 0 .. lesserOf(pipCount, 2).
bool onMarker(const MarkerRects &markers, int pipCount, double x, double y);

// Top-left corner of the hover text for the pointer at (x, y): just above the
// pointer, its left edge one pixel to the left; with `clampRight` it never
// reaches past the picture's right edge.
QPointF hoverTopLeft(double x, double y, QSizeF label, double pictureWidth, bool clampRight);

// Caption over the board in play: the distance from the bull while the cork
// dart is awaited, the dart's description otherwise.
QString playHoverCaption(double radius, double angle, bool cork, bool useCms);

// Where a game stands, as far as the pointer on the board is concerned.
enum class ThrowPhase { None, CorkAwaited, CorkPlaced, TurnDarts };

// What the hover text over a marker or a statistics label says about the
// point under the pointer.
enum class HoverKind {
    Keep,             // the caption stays as it is
    DistanceFromBull, // 3.217" from bull.
    Target,           // Target: Triple 20
    Description,      // Triple 20
    Dart,             // Dart 2: Triple 20
};

struct MarkerHover {
    HoverKind kind = HoverKind::Keep;
    int dart = 0; // with HoverKind::Dart, the dart's number from 1
};

// The caption for the point at (radius, angle); `current` is what Keep leaves.
QString markerHoverCaption(MarkerHover hover, double radius, double angle, bool useCms,
                           const QString &current);

// The hover over a statistics label while the darts are being marked: the
// distance from the bull while the cork is awaited, the area as a target once
// it is placed, the plain description during a turn, and the caption left as
// it was outside a game.
HoverKind labelHoverKind(ThrowPhase phase);

// Review: the area under the pointer with the number of recorded darts aimed
// at it ([ring index][target index], target 0 the bull, 21 - n segment n);
// nothing over an area without darts, a wire or off the board.
std::optional<QString>
reviewHoverCaption(double radius, double angle,
                   const std::array<std::array<qint64, 21>, 3> &counts);

enum class MarkerKind { Dart, Target };

// Whether pressing a marker starts a drag: darts once the set or the cork is
// complete, or at any time with the right button; targets only in play, once
// the set is complete or with the right button during a turn.
bool dragAllowed(MarkerKind kind, bool inPlay, int pipCount, ThrowPhase phase, bool rightButton);

} // namespace tavrix
