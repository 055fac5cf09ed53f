#pragma once

// Review of one scoring area: which area a click selects, the captions of the
// three figure frames, which recorded darts hit it and the figures shown for
// them. Pure rules; the review controller reads the darts and shows the texts.

#include "core/board/board_geometry.h"
#include "core/stats/records.h"

#include <QString>

#include <optional>
#include <vector>

namespace tavrix {

// The scoring area a click in review selects.
struct ReviewArea {
    int number = 0;   // 1..20, 25 for the bull area
    int ring = 0;     // the target's ring: 1 "Any", 2 double, 3 triple; 1 for the bull
    bool bull = false;
    QString name;     // "20", "25/Bull"
    QString ringWord; // "Any", "Double", "Triple"; empty for the bull
    BoardPoint aim;   // the area's aiming point
};

// The area under a click with this ring and segment code. Nothing for a
// wire, a click off the board or a segment gap: such clicks are ignored. The
// bull and the outer bull are one area, whatever their segment code.
std::optional<ReviewArea> reviewArea(int ringCode, int segmentCode);

// "Practice: Triple 20", "Play: Any 5", "Totals:  25/Bull" (the bull has no
// ring word, which leaves two blanks).
QString reviewCaption(const QString &frame, const ReviewArea &area);

// Whether a recorded dart (its stored score and ring) hit the area. A single
// bed is reviewed as the "Any" target of its number, so any ring of the
// number hits; practice stores the bull as score 50.
bool reviewHit(const ReviewArea &area, int score, int ring);

// Darts, hits and the sum of their distances to the area's aiming point.
struct ReviewTally {
    qint64 darts = 0;
    qint64 hits = 0;
    double distanceSum = 0;
    ReviewTally &operator+=(const ReviewTally &other);
};

// The darts as read, their distances measured from their stored position to
// the area's aiming point and summed in this order.
ReviewTally reviewTally(const ReviewArea &area, const std::vector<AreaDart> &darts);

// What a figure frame shows: "0" darts and "N/A" for the percentage and the
// average when there are none.
struct ReviewFigures {
    QString darts;
    QString hits;
    QString percentage; // "33.33%": cut to two decimals
    QString average;    // as distanceText shows it
    friend bool operator==(const ReviewFigures &, const ReviewFigures &) = default;
};
ReviewFigures reviewFigures(const ReviewTally &tally, bool useCms);

} // namespace tavrix
