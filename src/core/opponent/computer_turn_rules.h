#pragma once

// The computer's side of a 301/501 turn without any widget: where it aims,
// how each dart it throws (or a remote player's dart it reveals) lowers its
// score, when the turn ends early, and the report of the turn.

#include "core/board/board_geometry.h"
#include "core/games/checkout_chart.h"
#include "core/games/x01_rules.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace tavrix {

// Double 20 until the computer has doubled in; then the first dart of the
// chart's route from `remaining`, or treble 20 when the chart has none.
DartScore computerX01Target(bool doubledIn, int remaining, bool doubleOut, const CheckoutChart &chart);

// The board position aimed at for a target: the bull's centre for 25.
BoardPoint targetPoint(DartScore target);

// One 301/501 turn as the darts land.
struct ComputerX01Turn {
    int remaining = 0;
    bool doubledIn = false;
    // Points from the doubling dart on (all of them once doubled in).
    int turnPoints = 0;
    QStringList dartTexts;

    ComputerX01Turn(int remainingAtStart, bool doubledInAtStart)
        : remaining(remainingAtStart)
        , doubledIn(doubledInAtStart)
    {
    }

    // Counts a dart that landed at (x, y). Any dart in the double ring
    // doubles in; a wire or a miss scores nothing.
    DartScore count(double x, double y, const QString &description);
    int dartCount() const { return static_cast<int>(dartTexts.size()); }
    // Three darts, or a score of 1 or less (a finish or a bust): the rest
    // are withheld.
    bool over() const { return dartCount() >= 3 || remaining < 2; }
};

// The report of a turn: who threw what, the points in 301/501 (none for
// Cricket), a note when fewer than three darts were thrown, and the request
// to click "Ok".
QString computerTurnReport(const QString &name, const QStringList &dartTexts,
                           std::optional<int> turnPoints);

} // namespace tavrix
