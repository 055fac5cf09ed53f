#pragma once

// The checkout chart's rows as the database holds them, and the chart that
// ships with the program to fill a new database.

#include <QList>
#include <QString>

namespace tavrix {

// One row of `outchart`: the remaining score and the two fields of dart codes
// ("T20,D20"), either of which may be empty.
struct ChartRow {
    int points = 0;
    QString singleOut;
    QString doubleOut;
    friend bool operator==(const ChartRow &, const ChartRow &) = default;
};

// A row as it lies in the table, with SQLite's rowid, so that a damaged row
// can be removed even when its points are no number or another row shares them.
struct StoredChartRow {
    qint64 rowId = 0;
    ChartRow row;
};

// Parses "points;singleout;doubleout" lines; blank lines and lines starting
// with '#' are skipped, and so are lines whose points are not a number.
QList<ChartRow> parseChartData(const QString &text);

// The chart compiled into the program (resources/checkout_chart.txt).
QList<ChartRow> bundledChartRows();

} // namespace tavrix
