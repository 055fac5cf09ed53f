#pragma once

// The SQLite connection under a Qt one, for the reads of a player's every
// dart: SQLite's own calls on it read a million rows in a fraction of what
// Qt's values take.

class QSqlDatabase;
struct sqlite3;

namespace tavrix {

// Null when the connection's driver is not SQLite's.
sqlite3 *sqliteHandle(const QSqlDatabase &connection);

} // namespace tavrix
