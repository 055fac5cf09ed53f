#pragma once

// The rules of 301 and 501 as pure functions: doubling in, scoring a set of
// three darts, busts and wins, and the advice for the next dart.

#include "core/board/board_geometry.h"
#include "core/games/checkout_chart.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace tavrix {

// The darts of a set in order; a dart not on the board (its marker hidden)
// is empty.
using SetDarts = std::array<std::optional<BoardPoint>, 3>;

// The first dart that lands in a double of a numbered segment or in the
// inner bull, or -1. A dart on a wire in the double ring does not double in.
int findDoubleIn(const SetDarts &darts);

struct X01Set {
    // Whether the set doubled in (only asked when the player had not yet).
    bool doubledIn = false;
    // The darts of the set that were dealt with, in order: the ones after
    // the score reached 1 or less are neither scored nor recorded.
    QList<int> darts;
    int remaining = 0;  // before any bust is undone
    int turnPoints = 0; // points of the counted darts
    int lastMultiplier = 0;
};

// Scores a confirmed set from `remaining`; a player not yet doubled in
// counts from the doubling dart on, or nothing without one.
X01Set scoreX01Set(const SetDarts &darts, int remaining, bool doubledIn);

enum class X01Outcome { Continue, Bust, Win };

// A set that leaves less than 0, exactly 1, or (double out) 0 without a
// double last is a bust; 0 with a double last, or without double out, wins.
X01Outcome x01Outcome(int remaining, bool doubleOut, int lastMultiplier);

// Whether the set's points count towards the player's best set: any set
// that leaves 0 or more than 1, and one that leaves exactly 1 under single
// out, although that is a bust.
bool countsForBestSet(int remaining, bool doubleOut);

// Where to aim the next dart: what the chart says for the score left after
// the darts already placed, or double 20 until the player doubles in.
DartScore nextX01Aim(const QList<DartScore> &placed, int remaining, bool doubledIn,
                     bool doubleOut, const CheckoutChart &chart);

// The live text for the darts of a turn marked so far: what was thrown,
// for how many points, and the advice for the next dart.
QString x01LiveText(const QString &name, const SetDarts &darts, int pipCount, int remaining,
                    bool doubledIn, bool doubleOut, const CheckoutChart &chart);

// Joins dart descriptions as every list of a set shows them:
// "a", "a, and b", "a, b, and c".
QString joinDartTexts(const QStringList &texts);

// The descriptions of the darts on the board, joined as above.
QString dartListText(const SetDarts &darts);

} // namespace tavrix
