#pragma once

// The rules of practice: how a practice dart is scored, whether it hits its
// target, the words of a target, and the running totals as the user reads
// them.

#include "core/board/board_geometry.h"
#include "core/stats/practice_sums.h"

#include <QString>

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
