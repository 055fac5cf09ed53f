#pragma once

// One drill as the training mode runs it: the drill as confirmed so far,
// and the darts of the set being marked. Marked darts can be moved and
// taken back until the set is confirmed, so they are not handed to the
// drill one by one; instead a second copy of the drill is brought up to
// date from the confirmed sets and the marks whenever they change. That
// copy says what each marked dart did, what to aim at next and where the
// drill would stand.

#include "core/stats/drill_log.h"
#include "core/training/drill.h"

#include <QList>

#include <memory>
#include <vector>

namespace tavrix {

// A dart marked on the board with what the drill made of it.
struct MarkedDrillDart {
    BoardPoint at;
    DartScore score;
    // The target the drill named when this dart was thrown.
    DrillTarget aim;
    DrillDartOutcome outcome;
};

class DrillRun {
public:
    // `targetNumber` is the chosen target of the drills that have one (99
    // darts); the others keep 0.
    DrillRun(DrillKind kind, int targetNumber);

    DrillKind kind() const { return kind_; }
    int targetNumber() const { return targetNumber_; }
    // The drill as confirmed.
    const Drill &drill() const { return *drill_; }
    // The drill with the marked darts thrown: its target is the next dart's.
    const Drill &preview() const { return *preview_; }
    int confirmedSets() const { return int(sets_.size()); }

    const std::vector<MarkedDrillDart> &marked() const { return marked_; }
    int dartCount() const { return int(marked_.size()); }
    // The marked darts that count: up to the one that ended the set early
    // (a bust, a finish), when one did.
    int countingDarts() const { return counting_; }
    // The set is marked: as many darts as the set allows, or one of them
    // ended the set early.
    bool setMarked() const;

    // Marks a dart; its index, or -1 when the set takes no more.
    int placeDart(BoardPoint at);
    void moveDart(int index, BoardPoint at);
    // Takes back the last dart marked; its index, or -1 when there is none.
    int undoDart();

    // The counting darts as the store keeps them, for the next set.
    QList<DrillDart> setRows(qint64 drillId, qint64 playerId) const;
    // Hands the counting darts to the drill and ends the set; the marks
    // are cleared. What the darts did, in order.
    std::vector<DrillDartOutcome> confirmSet();

private:
    void refresh();

    DrillKind kind_;
    int targetNumber_;
    std::unique_ptr<Drill> drill_;
    std::unique_ptr<Drill> preview_;
    // The confirmed sets' darts, to bring the preview up to date.
    std::vector<std::vector<DartScore>> sets_;
    std::vector<MarkedDrillDart> marked_;
    int counting_ = 0;
    bool endedEarly_ = false;
};

// The store's convention for a dart: the number hit and its multiplier, both
// 0 on a wire, in a gap or off the board.
struct StoredScore {
    int score = 0;
    int ring = 0;
};
StoredScore storedScore(DartScore dart);

// Whether `score` beats `best` (none: any completed score does).
bool beatsBest(int score, std::optional<int> best, bool lowerIsBetter);

} // namespace tavrix

namespace tavrix {

// A dart in a word of a few letters: "T20", "D16", "5", "Bull", "25", "Miss".
QString dartCode(DartScore dart);

} // namespace tavrix
