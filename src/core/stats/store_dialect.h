#pragma once

// What differs between the two databases the statistics store runs on: an
// SQLite file on this computer, or a PostgreSQL server a club's boards share.
// The store's reads and writes are the same statements on both; the dialect
// names the driver, makes a new connection ready (its tables of the newest
// version, created or upgraded by versioned steps), tells when anything was
// written, and gives the few pieces of statement text that differ.

#include "core/stats/dart_history.h"

#include <QString>

#include <optional>

class QSqlDatabase;
class QSqlError;

namespace tavrix {

class StoreDialect {
public:
    virtual ~StoreDialect() = default;

    // Qt's driver: "QSQLITE" or "QPSQL".
    virtual QString driver() const = 0;
    // Whether the store is a server several copies share.
    virtual bool isServer() const = 0;

    // Makes an opened connection ready for the store: refuses a database
    // that holds another program's tables or was written by a newer
    // version, and brings older tables up to the newest version in one
    // transaction, so that a failed upgrade leaves them as they were. ""
    // on success, else the reason in words.
    virtual QString prepare(QSqlDatabase &db) const = 0;

    // Changes the store after `stamp` was read give another stamp; equal
    // stamps mean nothing was written in between, by this connection or
    // any other. Nothing (with `error`) when it cannot be read.
    virtual std::optional<StoreVersion> changeStamp(QSqlDatabase &db, QString &error) const = 0;

    // Whether the database holds `table` (false when that cannot be read).
    virtual bool holdsTable(QSqlDatabase &db, const char *table) const = 0;

    // The column that orders a table's rows as they were written: "rowid"
    // in a file, "id" on the server, for the tables without an id of their
    // own (gamesdarts, drilldarts, outchart, matchlegs).
    virtual QString writeOrder() const = 0;

    // After rows were written with ids given by the program (a game kept
    // through a lost connection, restored): makes the table's next new id
    // larger than every id in it. A file does this by itself.
    virtual QString afterGivenIds(QSqlDatabase &db, const char *table) const = 0;

    // What a database error means, in words a user understands; `where`
    // names the file or the server.
    virtual QString describeError(const QSqlError &error, const QString &where) const = 0;
};

const StoreDialect &sqliteDialect();
const StoreDialect &postgresDialect();

} // namespace tavrix
