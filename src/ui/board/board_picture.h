#pragma once

#include "core/board/board_geometry.h"
#include "ui/board/aim_map_layer.h"
#include "ui/board/picture_scale.h"
#include "ui/board/plot_layer.h"

#include <QColor>
#include <QWidget>

#include <optional>

namespace tavrix {

// The colour of a bed of the board: ring code and segment number as the
// scoring tables give them; number 0 is a wire.
QColor bedColor(int ring, int number);

// The picture of the board, 520 picture units across and drawn at whatever
// square size the window gives it (520 pixels at the least), from the ring
// and segment tables so that every ring and wire lies exactly where scoring
// puts it. Drawn as vectors on every paint, so it stays sharp at any size
// and device pixel ratio.
class BoardPicture : public QWidget {
    Q_OBJECT

public:
    static constexpr int side = pictureUnits;

    explicit BoardPicture(QWidget *parent = nullptr);

    // Darts plotted over the board (review); cleared on a mode switch. The
    // plot is drawn once, here, and only copied by each paint.
    void setPlots(std::vector<PlotSet> sets);
    void clearPlots();
    const std::vector<PlotSet> &plots() const { return plots_; }
    // The map of where to aim (review), under the plots; nothing hides it.
    void setAimMap(std::optional<AimMapPicture> map);
    bool showsAimMap() const { return aimMap_.has_value(); }

    // Picture point (in picture units) of a board position.
    static QPointF pictureFromBoard(BoardPoint point);
    // Screen pixels per picture unit, and the conversions both ways.
    double scale() const { return pictureScale(this); }
    QPointF pixelFromUnits(QPointF units) const { return units * scale(); }
    QPointF unitsFromPixel(QPointF pixel) const { return pixel / scale(); }
    // The widget pixel that shows a board position.
    QPointF pixelFromBoard(BoardPoint point) const { return pixelFromUnits(pictureFromBoard(point)); }

signals:
    // The picture took a new size: whatever lies on it follows.
    void rescaled();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void renderPlots();

    std::vector<PlotSet> plots_;
    std::optional<AimMapPicture> aimMap_;
    QImage plotLayer_;
};

} // namespace tavrix
