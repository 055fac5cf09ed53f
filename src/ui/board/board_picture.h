#pragma once

#include "core/board/board_geometry.h"
#include "ui/board/plot_layer.h"

#include <QColor>
#include <QWidget>

namespace tavrix {

// The colour of a bed of the board: ring code and segment number as the
// scoring tables give them; number 0 is a wire.
QColor bedColor(int ring, int number);

// The 520 x 520 picture of the board, drawn from the ring and segment tables
// so that every ring and wire lies exactly where scoring puts it. Drawn as
// vectors on every paint, so it stays sharp at any device pixel ratio.
class BoardPicture : public QWidget {
    Q_OBJECT

public:
    static constexpr int side = 2 * boardCenter;

    explicit BoardPicture(QWidget *parent = nullptr);

    // Darts plotted over the board (review); cleared on a mode switch. The
    // plot is drawn once, here, and only copied by each paint.
    void setPlots(std::vector<PlotSet> sets);
    void clearPlots();
    const std::vector<PlotSet> &plots() const { return plots_; }

    // Picture pixel of a board position.
    static QPointF pictureFromBoard(BoardPoint point);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void renderPlots();

    std::vector<PlotSet> plots_;
    QImage plotLayer_;
};

} // namespace tavrix
