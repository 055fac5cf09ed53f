#pragma once

#include "core/stats/outchart_data.h"

#include <QSqlDatabase>
#include <QString>

namespace tavrix {

// Creates whatever part of the schema the database lacks (all of it for a new
// file) and fills an empty `outchart` with the bundled checkout chart, all in
// one transaction. Returns an empty text on success, the reason otherwise.
QString ensureSchema(QSqlDatabase &db);

// Creates the tables of the practice sums and the triggers that drop a
// player's sums whenever the player's practice darts or targets change
// (by this program or any other). The sums only save time: a file in which
// they cannot be made (a read-only one) works without them. Returns an empty
// text on success, the reason otherwise.
QString ensurePracticeSums(QSqlDatabase &db);

// Whether an open file may become the statistics database: a new or empty
// one, or one that holds our tables. Reads only; an empty text means yes,
// otherwise what is wrong with it.
QString checkOwnDatabase(QSqlDatabase &db);

// Adds rows to `outchart`, empty fields as empty text; inside the caller's
// transaction. Returns an empty text on success, the reason otherwise.
QString insertChartRows(QSqlDatabase &db, const QList<ChartRow> &rows);

} // namespace tavrix
