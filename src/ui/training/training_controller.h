#pragma once

// Training mode: "Start Drill" reads the personal best and writes the
// drill's row, each click on the board marks the next dart of the set (to be
// dragged or taken back until confirmed), "Confirm Darts" writes the set's
// darts and hands them to the drill, and at the end (or at "Quit Drill")
// the drill's row gets its score. The drill's rules say what each dart did;
// this shows it, plays its sounds and says its moments.

#include "ui/board/board_input.h"
#include "core/training/drill_run.h"

#include <QObject>

#include <memory>
#include <optional>

class QWidget;

namespace tavrix {

class DrillLog;
class Messages;
class SoundOut;
class StatsRescue;
class TrainingModeFrame;
struct Session;

class TrainingController : public QObject, public BoardController {
    Q_OBJECT

public:
    struct Context {
        Session &session;
        DrillLog &store;
        SoundOut &sounds;
        Messages &messages;
        BoardInput &board;
        TrainingModeFrame &frame;
        QWidget *window;
        // Says failed writes in the program's usual words.
        StatsRescue &rescue;
    };
    explicit TrainingController(const Context &context, QObject *parent = nullptr);

    // The drill running, or the one that ended last; none before the first.
    const DrillRun *run() const { return run_.get(); }
    // A drill has started and is not over yet.
    bool drillRunning() const { return drillId_ != 0; }

    // Any mode is entered: a drill still running is recorded as quit (the
    // window asked first) and nothing stays marked.
    void enter();
    // Training mode is entered: the list enabled, no drill running.
    void begin();

    void startDrill();
    void confirmDarts();
    void undoDart();
    // Asks first; a drill quit is recorded as quit.
    void quitDrill();

    void pointerOver(const PointerSpot &spot) override;
    void pointerLeft() override;
    void boardClicked(BoardPoint at, int flight) override;
    bool mayDrag(MarkerSet set, bool rightButton) const override;
    void markerDropped(MarkerSet set, int index, BoardPoint at, QPointF pixel) override;

private:
    void showDrill();
    void showIdle();
    void announce(const std::vector<DrillDartOutcome> &outcomes);
    void finishDrill();
    void recordQuit();
    QString bestText() const;
    void reportStoreError();

    Session &session_;
    DrillLog &store_;
    SoundOut &sounds_;
    Messages &messages_;
    StatsRescue &rescue_;
    BoardInput &board_;
    TrainingModeFrame &frame_;
    QWidget *window_;

    std::unique_ptr<DrillRun> run_;
    // The row of the drill running; 0 when none runs.
    qint64 drillId_ = 0;
    // The best completed score of the drill's kind and target before it started.
    std::optional<int> best_;
};

} // namespace tavrix
