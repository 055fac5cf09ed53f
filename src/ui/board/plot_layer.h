#pragma once

// Darts plotted over the board picture (review mode), drawn once into an
// image of the screen's own pixels that every paint then only copies: a plot
// may hold hundreds of thousands of darts, and the board repaints whenever
// the pointer moves.

#include "core/board/board_geometry.h"

#include <QColor>
#include <QImage>

#include <optional>
#include <vector>

namespace tavrix {

// Where a set of darts clusters: an ellipse about their mean point.
struct PlotEllipse {
    double semiMajor = 0; // board units
    double semiMinor = 0;
    double angle = 0;     // degrees of the major axis, counter-clockwise
};

// Darts of one colour, each a dot of radius 2 board units with a thin light
// rim; their mean point marked with a cross and their spread with an
// ellipse, when given.
struct PlotSet {
    QColor color;
    std::vector<BoardPoint> dots;
    std::optional<BoardPoint> mean;
    std::optional<PlotEllipse> ellipse;
};

// The crosses and ellipses first, then the dots' rims, then the dots of each
// set in order, on a transparent image of the board picture's side times
// `ratio` pixels: nothing covers a dot but a later dot. Darts that fall on
// one pixel are drawn once.
QImage renderPlotLayer(const std::vector<PlotSet> &sets, int side, qreal ratio);

} // namespace tavrix
