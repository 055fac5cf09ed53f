#pragma once

// Practice mode on the board: each click marks the next of three darts with
// its read-outs (distance and angle from the practice target, the score), and
// the third asks for the set to be confirmed; markers may then be dragged.

#include "board/board_input.h"

#include <QObject>

namespace tavrix {

class PracticeFrame;
class SoundOut;
struct Session;

// Where practice stands: the target and the sequences round the board.
struct PracticeState {
    // Aiming point of the practice target, board units.
    BoardPoint target;
    // The next number of a count-down and a count-up.
    int countdownNext = 21;
    int countupNext = 1;
    bool countdownActive = false;
    bool countupActive = false;
};

class PracticeController : public QObject, public BoardController {
    Q_OBJECT

public:
    PracticeController(Session &session, SoundOut &sounds, BoardInput &board, PracticeFrame &frame,
                       QObject *parent = nullptr);

    PracticeState &state() { return state_; }
    // Practice mode is entered: no darts marked, no sequence running.
    void enter();
    // The dart dropped last.
    int dragPipIndex() const { return dragPipIndex_; }

    void pointerOver(const PointerSpot &spot) override;
    void pointerLeft() override;
    void boardClicked(BoardPoint at, int flight) override;
    bool mayDrag(MarkerSet set, bool rightButton) const override;
    void markerDropped(MarkerSet set, int index, BoardPoint at, QPointF pixel) override;

signals:
    // The three darts of a set are marked, or one of them moved afterwards.
    void setMarked();

private:
    void readout(int row, BoardPoint pointer);

    Session &session_;
    SoundOut &sounds_;
    BoardInput &board_;
    PracticeFrame &frame_;
    PracticeState state_;
    int dragPipIndex_ = 0;
};

} // namespace tavrix
