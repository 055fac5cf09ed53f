#pragma once

// A Qt SQL connection to the PostgreSQL server of a club database, and what
// its failures mean in plain words: where the server was looked for and why
// it did not answer or let this copy in.

#include "core/stats/store_address.h"

#include <QString>

namespace tavrix {

// What went wrong opening a connection: `message` for the user, naming the
// server and the cause, without a closing full stop; `needsPassword` when the server asked for a
// password that was not given or refused the one given, so that the user
// may be asked for it.
struct ServerFailure {
    QString message;
    bool needsPassword = false;
};

// Adds and opens the Qt SQL connection `connectionName` to `server`. The
// password is the address's own, else `password` when given; with neither,
// the driver looks in PGPASSWORD and the user's password file (~/.pgpass).
// Nothing on success; the connection is removed again on failure.
std::optional<ServerFailure> openServerConnection(const QString &connectionName, const ServerAddress &server,
                                                  const QString &password = {});

// Opens a connection to `server`, asks for the server's version and closes
// it again: nothing when it answered, else why not.
std::optional<ServerFailure> testServerConnection(const ServerAddress &server, const QString &password = {});

// The failure of reaching `server` that the driver's `driverText` reports.
ServerFailure describeServerFailure(const ServerAddress &server, const QString &driverText);

} // namespace tavrix
