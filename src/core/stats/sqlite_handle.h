#pragma once

// What the files of the SQLite store share among themselves: the SQLite
// connection under a Qt one, for the reads of a player's every dart (SQLite's
// own calls on it read a million rows in a fraction of what Qt's values
// take), the stored form of times, and the drills' reads and deletes and the
// matches' deletes.

#include "core/stats/drill_log.h"

#include <QString>
#include <QtGlobal>

#include <optional>
#include <vector>

class QSqlDatabase;
struct sqlite3;
struct sqlite3_stmt;

namespace tavrix {

// Null when the connection's driver is not SQLite's.
sqlite3 *sqliteHandle(const QSqlDatabase &connection);

// The text in which dates and times are stored: SQLite's own form, read back
// as the same local date and time.
QString storedDateTimeNow();

// Whether the file holds the table (false when that cannot be read).
bool holdsTable(sqlite3 *handle, const char *table);

// A stored date and time of the row's column in local seconds
// (localSeconds); nothing for an empty field or another text.
std::optional<qint64> storedSeconds(sqlite3_stmt *statement, int column);

// What deleting a player's statistics removes of the drills, the player's
// id bound to each.
inline constexpr const char *deleteDrillsStatements[] = {"DELETE FROM drilldarts WHERE players_id = ?",
                                                         "DELETE FROM drills WHERE players_id = ?"};

// What deleting a player's statistics removes of the matches (the legs'
// links before their matches), the player's id bound to each.
inline constexpr const char *deleteMatchesStatements[] = {
    "DELETE FROM matchlegs WHERE matches_id IN (SELECT id FROM matches WHERE players_id = ?)",
    "DELETE FROM matches WHERE players_id = ?"};

// Adds the player's ended drills to `rows`, oldest end first; none from a
// file without the drills' tables. SQLITE_DONE when all were read.
int readEndedDrills(sqlite3 *handle, qint64 playerId, std::vector<DrillRow> &rows);

} // namespace tavrix
