#pragma once

// The club server's side of the store: its tables, their versions, and how
// a database on the server is made ready. Only the server dialect includes
// this.

#include <QSqlDatabase>
#include <QString>

namespace tavrix {

// The version of the server's tables this program writes: the number of
// schema steps.
int newestServerSchemaVersion();

// Whether the connection's current schema holds the table `name` (false
// when that cannot be read).
bool serverHoldsTable(QSqlDatabase &db, const QString &name);

// Makes the connection's current schema ready: refuses one that holds
// another program's tables or was written by a newer version, runs the
// steps it lacks and fills an empty checkout chart, all in one transaction
// that boards starting at the same moment take in turn. A schema already of
// the newest version is only read. "" on success, else the reason.
QString prepareServerSchema(QSqlDatabase &db);

} // namespace tavrix
