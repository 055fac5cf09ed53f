#pragma once

// The SQLite file's own side of the store: its schema and the versions of it,
// and what SQLite's errors mean. Only the SQLite implementation includes this.

#include "core/stats/outchart_data.h"
#include "core/stats/store_schema.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

struct sqlite3;

namespace tavrix {

// The version of the tables this program writes, kept in the file's
// user_version: the number of schema steps.
int newestSchemaVersion();

// Brings the file's tables to the newest version: refuses a file of a newer
// version, and runs the steps a file lacks (every step for a new file and
// for one of the first program version, which kept no version but holds the
// tables) and records the version, all in one transaction, so an upgrade that
// fails leaves the file as it was. A file already of the newest version is
// only read. Returns an empty text on success, the reason otherwise.
QString upgradeSchema(QSqlDatabase &db);

// Whether an open file may become the statistics database: a new or empty
// one, or one that holds our tables. Reads only; an empty text means yes,
// otherwise what is wrong with it.
QString checkOwnDatabase(QSqlDatabase &db);

// Whether the file's tables hold every column the program reads and writes;
// an empty text means they do, otherwise which table or column is missing.
// A table newer than the file's version may be missing (the upgrade adds
// it). Reads only.
QString checkOwnColumns(QSqlDatabase &db);

// What a database error means, in words a user understands. Given the
// database file's path, a write refused because the file or its folder has
// become read-only says which.
QString describeDatabaseError(const QSqlError &error, const QString &path = {});

} // namespace tavrix
