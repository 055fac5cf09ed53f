#pragma once

// The board picture is 520 picture units across, whatever its size on the
// screen: every position on it (markers, targets, the pointer, plots) is
// kept in those units and only drawn at the widget's own size. A picture
// widget of 520 pixels shows one unit per pixel.

#include "core/board/board_geometry.h"

#include <QPointF>
#include <QWidget>

namespace tavrix {

inline constexpr int pictureUnits = 2 * boardCenter;

// Screen pixels per picture unit of a picture widget.
inline double pictureScale(const QWidget *picture)
{
    return picture && picture->width() > 0 ? picture->width() / double(pictureUnits) : 1.0;
}

} // namespace tavrix
