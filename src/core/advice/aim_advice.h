#pragma once

// A player's advice from their own darts: the spread fitted from every dart
// thrown at a target, the map of the points a dart can expect wherever it is
// aimed (for the spread of all the darts) with its best aiming point, and
// the checkout table from the spread of each class of aim. Worked out away
// from the window (it takes a few seconds); the texts the window shows come
// from here too.

#include "core/advice/aim_spread.h"
#include "core/advice/checkout_policy.h"
#include "core/stats/dart_history.h"

#include <QString>

#include <array>
#include <atomic>
#include <optional>

namespace tavrix {

class CheckoutChart;

// The chart's first dart for each score left from 2 to 170, double out.
using ChartFirstDarts = std::array<DartScore, maxCheckout + 1>;
ChartFirstDarts chartFirstDarts(const CheckoutChart &chart);

// The spread of the player's darts, read in one pass; nothing when the store
// cannot be read (its lastError() says why).
std::optional<SpreadFit> readSpreadFit(DartHistory &store, qint64 playerId);

struct PersonalAdvice {
    SpreadFit fit;
    // The rest only when the fit has enough darts.
    AimMap expected;
    BestAim best;
    float treble20 = 0; // expected points aimed at the treble 20's aiming point
    std::optional<CheckoutTable> checkouts;
};

// Everything from a fit: the maps and the checkout table. Nothing when
// `stop` was set before the work was done (it is looked at between steps).
std::optional<PersonalAdvice> personalAdvice(const SpreadFit &fit, const ChartFirstDarts &chartFirst,
                                             ScoreMaps &maps, const std::atomic<bool> *stop = nullptr);

// "Where to aim needs 30 aimed darts (12 so far)."
QString needMoreDartsText(qint64 fitted);
// The three lines of the review's advice, or the line asking for darts.
QString aimAdviceText(const PersonalAdvice &advice);
// The area an aiming point lies in, as the review names areas ("Triple 19",
// "Any 20", "Double 16", "25/Bull"); empty off the scoring area.
QString aimAreaName(BoardPoint at);
// The checkout for a score left with darts left in the set: "For you: T19
// T12 D12, 31.4% (chart: 29.8%)"; empty when the darts cannot finish it.
QString yourOutText(const CheckoutTable &table, int left, int darts);

} // namespace tavrix
