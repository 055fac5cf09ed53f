#pragma once

// The rules of practice: how a practice dart is scored, which target a new
// set aims at (a chosen one, a random one, or the next of a count-down or a
// count-up round the board), what confirming a set says, and the running
// totals as the user reads them.

#include "core/board/board_geometry.h"
#include "core/stats/practice_sums.h"

#include <QString>

#include <optional>

class QRandomGenerator;

namespace tavrix {

// How a practice dart is stored: off the board ring -999 and score 0; in the
// bull area ring 1 and score 25, 50 or 0 (a wire); elsewhere the ring code
// and the segment.
struct PracticeScore {
    int ring = 0;
    int score = 0;
    friend bool operator==(const PracticeScore &, const PracticeScore &) = default;
};
PracticeScore practiceScore(double radius, double angle);

// Whether a practice dart hits its target: an "Any" target (ring 1, the bull
// among them) needs the number alone, a double or treble also the ring.
bool practiceHit(int targetValue, int targetRing, int score, int ring);

// The word for a target's ring: 1 "Any", 2 "Double", 3 "Triple"; empty for
// any other.
QString targetRingWord(int ring);

// Item data of the two target lists.
inline constexpr int randomChoice = 0;
inline constexpr int countDownChoice = -1;
inline constexpr int countUpChoice = -2;
inline constexpr int bullChoice = 21;

struct PracticeState {
    // The target of the current set: 1 to 20 or 25 for the bull, the ring
    // 1 "Any", 2 "Double", 3 "Triple" (1 for the bull), and its aiming point.
    int targetValue = 0;
    int targetRing = 0;
    BoardPoint target;
    // The set's row in statstargets.
    qint64 targetId = 0;
    // The next number of a count-down and a count-up; 21 is the bull.
    int countdownNext = 21;
    int countupNext = 1;
    bool countdownActive = false;
    bool countupActive = false;

    bool sequenceActive() const { return countdownActive || countupActive; }
};

struct PracticeAlert {
    QString text;
    QString title;
    friend bool operator==(const PracticeAlert &, const PracticeAlert &) = default;
};

struct OpenedSet {
    // What "Shoot for " names: "Double 17", "Any 25 or Bull", "25 or Bull".
    QString targetText;
    // Said before the first set of a sequence.
    std::optional<PracticeAlert> alert;
};

// Chooses the target of a new set from the item data of the ring and score
// lists, drawing from `random` where a list says "-- Random --" (the bull
// one chance in 21, which then ignores the ring list), and starts a
// sequence when its first set is asked for.
OpenedSet openPracticeSet(PracticeState &state, int ringChoice, int scoreChoice, QRandomGenerator &random);

// The caption of the Go button while a sequence runs.
QString quitSequenceCaption(const PracticeState &state);

// A set is confirmed: a running sequence moves on (and may end); the alert
// to show, if any. The sequence still runs afterwards when its next set is
// to open at once.
std::optional<PracticeAlert> confirmPracticeSet(PracticeState &state);

// Ends any sequence.
void quitPracticeSequences(PracticeState &state);

// The seven running totals, as shown.
struct RunningTotalsTexts {
    QString pctAll;
    QString pctThis;
    QString avgDistAny;
    QString avgDistThis;
    QString pctAnys;
    QString pctDoubles;
    QString pctTriples;
    friend bool operator==(const RunningTotalsTexts &, const RunningTotalsTexts &) = default;
};

// From the player's sums, with "this target" the given value and ring (none
// matches before the first set). Percentages keep two decimals, cut not
// rounded, and "N/A" stands where no dart counts.
RunningTotalsTexts runningTotalsTexts(const PracticeSums &sums, int targetValue, int targetRing,
                                      bool useCms);

// hits / darts as a percentage cut to two decimals, without the sign; "N/A"
// without darts.
QString hitPercentText(qint64 hits, qint64 darts);

} // namespace tavrix
