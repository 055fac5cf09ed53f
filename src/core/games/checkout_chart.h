#pragma once

// The checkout chart: what to throw from a remaining score in 301 and 501,
// once for games that may end on any dart (single out) and once for games that
// must end on a double (double out).

#include "core/board/board_geometry.h"
#include "core/games/advisor.h"
#include "core/stats/outchart_data.h"

#include <QList>
#include <QString>

#include <array>
#include <optional>

namespace tavrix {

class ChartStore;

// Parses a field of dart codes: "S", "D" or "T" followed by 1 to 20 or 25,
// separated by commas ("T20,T20,D25"). An empty field is an empty route.
// Blanks around the codes are tolerated; anything else outside the format
// (an unknown letter, a number that is no segment, T25) gives no value.
std::optional<DartRoute> parseDartCodes(const QString &field);

// The route as the user reads it: "T20, D20", or with another separator.
QString dartCodesText(const DartRoute &route, const QString &separator = QStringLiteral(", "));

class CheckoutChart {
public:
    static constexpr int MaxPoints = 180;

    // Fills the chart from rows in ascending order of points; a later row for
    // the same score replaces an earlier one. Rows outside 1..180 are ignored,
    // and a field that breaks the format counts as empty. Returns the number of
    // fields that were rejected.
    int load(const QList<ChartRow> &rows);

    // What to throw from `remaining`: treble 20 above the chart's reach or
    // where it has nothing, (0, 0) when remaining is 1 or less.
    DartRoute checkoutDarts(int remaining, bool doubleOut) const;

    // The chart's own route for a score, empty when it has none (or the
    // score lies outside 1..180).
    DartRoute route(int points, bool doubleOut) const;
    // The display text of a score's route ("T20, D20"), "" when there is none.
    QString routeText(int points, bool doubleOut) const;

    bool hasRow(int points) const;

private:
    struct Entry {
        bool set = false;
        std::array<DartRoute, 2> routes; // [0] single out, [1] double out
    };
    std::array<Entry, MaxPoints> entries_{};
};

// Whether a row holds a proper chart entry: points 1..180, both fields dart
// codes of at most three darts that add up to the points, the double-out
// route ending on a double, and a field empty only where no three darts
// finish from the points.
bool chartRowIsSound(const ChartRow &row);

// How to mend a stored chart with the bundled one. For each score the last
// sound row is kept as it is and every other row of it goes; a score of the
// bundled chart left without a row gets the bundled row. Rows outside
// 1..180 go.
struct ChartRepair {
    QList<qint64> removedRowIds;
    QList<ChartRow> replacements; // bundled rows, ascending
    int surplus = 0;              // removed rows that nothing takes the place of
    QList<ChartRow> rows;         // the chart once mended, ascending
    bool needed() const { return !removedRowIds.isEmpty() || !replacements.isEmpty(); }
};
ChartRepair planChartRepair(const QList<StoredChartRow> &stored, const QList<ChartRow> &bundled);

// Reads the whole `outchart` table into `chart`. False (with the chart left
// as it was) when the table cannot be read.
bool loadCheckoutChart(ChartStore &store, CheckoutChart &chart);

// What loading the chart at start-up did about damaged rows.
struct ChartRepairReport {
    int replaced = 0;
    int surplus = 0;
    bool saved = true; // false: the table kept its damage, the chart in memory is mended
    QString error;     // why it was not saved
    bool repaired() const { return replaced > 0 || surplus > 0; }
};

// Loads `outchart` into `chart` after mending it with the bundled chart and
// writing the mended rows back in one transaction. When they cannot be
// written the mended chart is still what `chart` holds. Nothing when the
// table cannot be read (the store's lastError() says why; `chart` unchanged).
std::optional<ChartRepairReport> loadRepairedCheckoutChart(ChartStore &store, CheckoutChart &chart);

} // namespace tavrix
