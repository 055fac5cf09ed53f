#pragma once

// One practice session without any widget: the target of the open set, the
// darts marked for it where their markers stand, a count-down or count-up
// round the board and how far it has come, and so what the Go button offers.
// The window shows what this model says and hands it every click and drop on
// the board as a board position; it never reads a dart back from a marker.

#include "core/board/board_geometry.h"
#include "core/practice/practice_rules.h"
#include "core/practice/practice_totals.h"
#include "core/practice/set_grouping.h"

#include <QString>

#include <array>
#include <optional>

class QRandomGenerator;

namespace tavrix {

// Item data of the two target lists. The rings 1 to 3 and the numbers 1 to
// 20 stand for themselves; these are the other items ("-- Random --" in
// both lists, the two sequences and the bull in the score list).
enum class TargetItem : int { Random = 0, CountDown = -1, CountUp = -2, Bull = 21 };
constexpr int itemData(TargetItem item)
{
    return static_cast<int>(item);
}

// A message box's text and title.
struct PracticeAlert {
    QString text;
    QString title;
    friend bool operator==(const PracticeAlert &, const PracticeAlert &) = default;
};

// What the Go button offers.
enum class PracticeStage {
    AtRest,          // no set open: "Go" opens one
    AwaitingDarts,   // a single set is open and not all its darts are marked
    SetComplete,     // three darts are marked: "Confirm Darts" records them
    SequenceRunning, // a sequence's set awaits its darts: the button quits the sequence
};

enum class PracticeSequence { None, CountDown, CountUp };

struct PracticeTarget {
    // 1 to 20, or 25 for the bull; 0 before the first set.
    int value = 0;
    // 1 "Any", 2 "Double", 3 "Triple" (1 for the bull); 0 before the first set.
    int ring = 0;
    BoardPoint aim;
    // The set's row in statstargets.
    qint64 id = 0;
};

// The target a new set is to aim at, drawn but not yet taken.
struct SetDraw {
    PracticeTarget target;
    // What "Shoot for " names: "Double 17", "Any 25 or Bull", "25 or Bull".
    QString targetText;
    // Said before the first set of a sequence.
    std::optional<PracticeAlert> alert;
    PracticeSequence sequence = PracticeSequence::None;
};

// A set ready to be confirmed: the rows to record, and what to say once
// they are recorded.
struct SetConfirmation {
    PracticeSet rows;
    std::optional<PracticeAlert> alert;
};

class PracticeSession {
public:
    PracticeStage stage() const;
    const PracticeTarget &target() const { return target_; }
    PracticeSequence sequence() const { return sequence_; }
    int countdownNext() const { return countdownNext_; }
    int countupNext() const { return countupNext_; }
    int dartCount() const { return dartCount_; }
    // Where dart `index` stands, on whole picture pixels as its marker shows it.
    BoardPoint dart(int index) const { return darts_.at(index); }

    // No set open, no dart marked, no target, no sequence running.
    void reset();

    // Draws the target of a new set from the item data of the ring and score
    // lists, drawing from `random` where a list says "-- Random --" (the bull
    // one chance in 21, which then ignores the ring list); the next number of
    // a running sequence, or the first of one to start. Nothing changes until
    // openSet takes the draw, so a set whose target row cannot be written
    // leaves the session as it was.
    SetDraw drawSet(int ringItem, int scoreItem, QRandomGenerator &random) const;
    // Opens the drawn set, its target row written as `targetId`.
    void openSet(const SetDraw &draw, qint64 targetId);

    // A click while the set awaits darts marks the next one where its marker
    // will stand; the dart's index, or -1 when no dart may be marked.
    int placeDart(BoardPoint at);
    // A marked dart was dragged to a new place.
    void moveDart(int index, BoardPoint at);
    // How the three marked darts lie about the aiming point; none before the
    // third dart.
    std::optional<SetGrouping> grouping() const;

    // The rows of the complete set for the player; none unless three darts
    // are marked. Nothing changes until confirmSet.
    std::optional<SetConfirmation> confirmation(qint64 playerId) const;
    // The set's darts were recorded: the set closes, a running sequence moves
    // on (and may end); the darts stay counted until the next set opens.
    // The sequence still runs afterwards when its next set is to open at once.
    void confirmSet();

    // Ends any sequence (and the set open in it).
    void quitSequence();

    // The caption of the Go button while a sequence runs.
    QString quitCaption() const;

private:
    struct Progress {
        PracticeSequence sequence = PracticeSequence::None;
        int countdownNext = 0;
        int countupNext = 0;
    };
    // Moves a sequence on by one confirmed set; what a confirmed set says.
    static std::optional<PracticeAlert> advance(Progress &progress);
    Progress progress() const { return {sequence_, countdownNext_, countupNext_}; }

    PracticeTarget target_;
    bool setOpen_ = false;
    std::array<BoardPoint, 3> darts_{};
    int dartCount_ = 0;
    PracticeSequence sequence_ = PracticeSequence::None;
    // The next number of a count-down and of a count-up; 21 is the bull.
    int countdownNext_ = 21;
    int countupNext_ = 1;
};

} // namespace tavrix
