#pragma once

// Practice mode: the Go button opens a set at the chosen (or a random) target
// and writes its target row, each click on the board marks the next of three
// darts with its read-outs, the third dart (and every drag after it) shows how
// the darts are grouped, and "Confirm Darts" writes the darts and refreshes
// the running totals. A count-down or count-up opens its next set at once.

#include "ui/board/board_input.h"
#include "core/practice/practice_session.h"

#include <QObject>

class QWidget;

namespace tavrix {

class Messages;
class PracticeFrame;
class SoundOut;
class PracticeLog;
class StatsRescue;
struct Session;

class PracticeController : public QObject, public BoardController {
    Q_OBJECT

public:
    struct Context {
        Session &session;
        PracticeLog &store;
        SoundOut &sounds;
        Messages &messages;
        BoardInput &board;
        PracticeFrame &frame;
        QWidget *window;
        // Says failed writes, and saves into another file a file lost.
        StatsRescue &rescue;
    };
    explicit PracticeController(const Context &context, QObject *parent = nullptr);

    const PracticeSession &model() const { return model_; }
    // Any mode is entered: no darts marked, no sequence running.
    void enter();
    // Practice mode is entered: no set open, the running totals shown.
    void begin();
    // The dart dropped last.
    int dragPipIndex() const { return dragPipIndex_; }

    // Does what the Go button offers: opens a set, confirms it, or quits a
    // sequence.
    void goButtonClick();
    // Whether the Go button opens or confirms a set (rather than quitting a
    // sequence).
    bool goCaptionIsSafe() const;
    void updateRunningStats();
    void doAverageDist();

    void pointerOver(const PointerSpot &spot) override;
    void pointerLeft() override;
    void boardClicked(BoardPoint at, int flight) override;
    bool mayDrag(MarkerSet set, bool rightButton) const override;
    void markerDropped(MarkerSet set, int index, BoardPoint at, QPointF pixel) override;

signals:
    // A sequence was quit: practice mode starts afresh.
    void reenterRequested();

private:
    void openSet();
    void confirmSet();
    void quitSequence();
    void setListsEnabled(bool enabled);
    void showStage();
    void readout(int row, BoardPoint pointer);
    void reportStoreError();

    Session &session_;
    PracticeLog &store_;
    SoundOut &sounds_;
    Messages &messages_;
    StatsRescue &rescue_;
    BoardInput &board_;
    PracticeFrame &frame_;
    QWidget *window_;
    PracticeSession model_;
    int dragPipIndex_ = 0;
};

} // namespace tavrix
