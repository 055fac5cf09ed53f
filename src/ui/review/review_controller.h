#pragma once

// Review mode on the board: the pointer names the scoring area under it with
// the number of recorded darts aimed at it, and a click chooses that area,
// whose recorded darts are then plotted with their figures.

#include "ui/board/board_input.h"
#include "core/stats/dart_history.h"

#include <QObject>

class QWidget;

namespace tavrix {

class Messages;
class ReviewFrame;
struct Session;

class ReviewController : public QObject, public BoardController {
    Q_OBJECT

public:
    struct Context {
        Session &session;
        DartHistory &store;
        Messages &messages;
        BoardInput &board;
        ReviewFrame &frame;
        // The parent of the message that reports a failed read.
        QWidget *window;
    };
    explicit ReviewController(const Context &context, QObject *parent = nullptr);

    // Darts aimed at each scoring area, as the hover tells them.
    void setCounts(const TargetCounts &counts) { counts_ = counts; }
    const TargetCounts &counts() const { return counts_; }

    // Plots the current player's darts aimed at the area of a click (its
    // ring and segment code) and shows their figures. False when the click
    // selects no area (a wire, off the board, a segment gap) and nothing
    // changed, or when the darts could not be read, which is reported.
    bool doPlot(int ringCode, int segmentCode);

    void pointerOver(const PointerSpot &spot) override;
    void pointerLeft() override;
    void boardClicked(BoardPoint at, int flight) override;
    bool mayDrag(MarkerSet, bool) const override { return false; }
    void markerDropped(MarkerSet, int, BoardPoint, QPointF) override {}

signals:
    // A scoring area was clicked: its ring code and segment.
    void areaChosen(int ring, int segment);

private:
    Context c_;
    TargetCounts counts_{};
};

} // namespace tavrix
