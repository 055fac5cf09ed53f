#pragma once

// The map of where to aim, laid over the board picture in review: the
// points per dart a player can expect at each aiming point as a colour
// scale, clipped to the scoring area, with a small legend in the picture's
// lower left corner, drawn under the plotted darts, which stay on top; and
// an open marker on the best aiming point over them.

#include "core/advice/score_maps.h"

#include <QImage>
#include <QPointF>
#include <QRectF>

class QPainter;

namespace tavrix {

struct AimMapPicture {
    QImage colours;   // one pixel per grid point, premultiplied ARGB
    QRectF area;      // the picture units the grid covers
    QPointF best;     // the best aiming point, in picture units
    float high = 0;   // points per dart at the top of the scale
};

// The colour of a value on a scale from 0 to `high`, half transparent.
QColor aimMapColor(float value, float high);
AimMapPicture aimMapPicture(const AimMap &map, const BestAim &best);
// Draws the map and its legend in picture units (the painter scaled to the
// picture), and the marker of the best aiming point, which goes over the
// plotted darts.
void drawAimMap(QPainter &painter, const AimMapPicture &map);
void drawBestAim(QPainter &painter, const AimMapPicture &map);

} // namespace tavrix
