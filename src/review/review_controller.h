#pragma once

// Review mode on the board: the pointer names the scoring area under it with
// the number of recorded darts aimed at it, and a click chooses that area.

#include "board/board_input.h"
#include "stats/stats_store.h"

#include <QObject>

namespace tavrix {

class ReviewController : public QObject, public BoardController {
    Q_OBJECT

public:
    ReviewController(BoardInput &board, QObject *parent = nullptr);

    // Darts aimed at each scoring area, as the hover tells them.
    void setCounts(const TargetCounts &counts) { counts_ = counts; }
    const TargetCounts &counts() const { return counts_; }

    void pointerOver(const PointerSpot &spot) override;
    void pointerLeft() override;
    void boardClicked(BoardPoint at, int flight) override;
    bool mayDrag(MarkerSet, bool) const override { return false; }
    void markerDropped(MarkerSet, int, BoardPoint, QPointF) override {}

signals:
    // A scoring area was clicked: its ring code and segment.
    void areaChosen(int ring, int segment);

private:
    BoardInput &board_;
    TargetCounts counts_{};
};

} // namespace tavrix
