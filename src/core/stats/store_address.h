#pragma once

// Where the statistics are kept, as `TAVRIX_DB` or the club settings name
// it: a file on this computer, or a PostgreSQL server given by a connection
// URI, postgresql://user@host:port/dbname?sslmode=require. Reading the URI
// is pure text work: no connection is made here. A password written in the
// URI is kept in memory only; what is shown or stored never holds it.

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace tavrix {

// How the connection to a server uses TLS, as PostgreSQL names the modes,
// from none at all to a checked certificate and host name.
enum class TlsMode { Disable, Allow, Prefer, Require, VerifyCa, VerifyFull };

struct ServerAddress {
    static constexpr int defaultPort = 5432;

    QString user;
    // Empty: the server on this computer, through its local socket.
    QString host;
    int port = defaultPort;
    // Empty: a database named as the user, as the server's own tools do.
    QString database;
    // Used when the server offers TLS, unless the URI asks for more.
    TlsMode tls = TlsMode::Prefer;
    // Seconds to wait for the server before saying it cannot be reached.
    int connectTimeout = 10;
    // From the URI only; otherwise the server's password file or
    // PGPASSWORD, or the user is asked.
    std::optional<QString> password;

    // The database the server is asked for.
    QString databaseName() const { return database.isEmpty() ? user : database; }
    bool operator==(const ServerAddress &) const = default;
};

// A file path, or a server.
using StoreAddress = std::variant<QString, ServerAddress>;

// Whether `value` names a server: it starts with "postgresql://" or
// "postgres://", in any case.
bool namesServer(const QString &value);

// What `value` names. A value that is no server URI is a file path, taken
// as it stands. A server URI that cannot be read gives the reason, for the
// user to read; it is never taken for a file.
std::variant<StoreAddress, QString> readStoreAddress(const QString &value);

// The URI of a server without its password: what may be shown or stored.
QString serverUri(const ServerAddress &server);
// "ann at club.example.org:5432, database darts", for messages.
QString describeServer(const ServerAddress &server);
// The connection options the PostgreSQL driver is given beside host, port,
// user and database: "sslmode=require;connect_timeout=10".
QString connectOptions(const ServerAddress &server);
// "disable" ... "verify-full", and back; nothing for a name no mode has.
QString tlsModeName(TlsMode mode);
std::optional<TlsMode> tlsModeNamed(const QString &name);

} // namespace tavrix
