#include "core/stats/server_connection.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <atomic>

namespace tavrix {

namespace {

// Where the server was looked for, for messages.
QString placeOf(const ServerAddress &server)
{
    return server.host.isEmpty() ? QStringLiteral("the PostgreSQL server on this computer")
                                 : QStringLiteral("%1, port %2").arg(server.host).arg(server.port);
}

bool says(const QString &text, const char *words)
{
    return text.contains(QLatin1String(words), Qt::CaseInsensitive);
}

} // namespace

ServerFailure describeServerFailure(const ServerAddress &server, const QString &driverText)
{
    const QString text = driverText.simplified();
    bool needsPassword = false;
    QString cause;
    if (says(text, "Connection refused"))
        cause = QStringLiteral("nothing answers there (the server may be stopped, or may not listen on the network)");
    else if (says(text, "could not translate host name") || says(text, "Name or service not known"))
        cause = QStringLiteral("the name %1 is not known on this network").arg(server.host);
    else if (says(text, "timeout expired") || says(text, "timed out"))
        cause = QStringLiteral("no answer came within %1 seconds").arg(server.connectTimeout);
    else if (says(text, "no password supplied") || says(text, "password authentication failed")) {
        needsPassword = true;
        cause = says(text, "no password supplied")
                    ? QStringLiteral("the server asks for the password of %1").arg(server.user)
                    : QStringLiteral("the server refused the password of %1").arg(server.user);
    } else if (says(text, "does not support SSL") || says(text, "SSL") || says(text, "certificate"))
        cause = QStringLiteral("the encrypted (TLS) connection could not be made: %1").arg(text);
    else if (says(text, "no pg_hba.conf entry"))
        cause = QStringLiteral("the server does not let this computer or user in (pg_hba.conf): %1").arg(text);
    else if (says(text, "role") && says(text, "does not exist"))
        cause = QStringLiteral("the server has no user %1").arg(server.user);
    else if (says(text, "database") && says(text, "does not exist"))
        cause = QStringLiteral("the server has no database %1").arg(server.databaseName());
    else if (text.isEmpty())
        cause = QStringLiteral("the server gave no reason");
    else
        cause = text;
    // Without a full stop, as the store's other reasons: the sentence it
    // ends is finished where it is shown.
    while (cause.endsWith(QLatin1Char('.')))
        cause.chop(1);
    return {QStringLiteral("Cannot reach the club database at %1: %2").arg(placeOf(server), cause), needsPassword};
}

std::optional<ServerFailure> openServerConnection(const QString &connectionName, const ServerAddress &server,
                                                  const QString &password)
{
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL")))
        return ServerFailure{QStringLiteral("Cannot reach the club database: the PostgreSQL driver for Qt is "
                                            "not installed (Debian's package libqt6sql6-psql)"),
                             false};
    QString driverText;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), connectionName);
        db.setHostName(server.host);
        db.setPort(server.port);
        db.setUserName(server.user);
        db.setDatabaseName(server.databaseName());
        const QString given = server.password.value_or(password);
        if (!given.isEmpty())
            db.setPassword(given);
        db.setConnectOptions(connectOptions(server));
        if (db.open())
            return std::nullopt;
        driverText = db.lastError().databaseText();
        if (driverText.isEmpty())
            driverText = db.lastError().text();
    }
    QSqlDatabase::removeDatabase(connectionName);
    return describeServerFailure(server, driverText);
}

std::optional<ServerFailure> testServerConnection(const ServerAddress &server, const QString &password)
{
    static std::atomic<int> serial = 0;
    const QString name = QStringLiteral("serverTest%1").arg(++serial);
    if (std::optional<ServerFailure> failure = openServerConnection(name, server, password))
        return failure;
    std::optional<ServerFailure> failure;
    {
        QSqlDatabase db = QSqlDatabase::database(name, false);
        QSqlQuery query(db);
        if (!query.exec(QStringLiteral("SELECT version()")) || !query.next())
            failure = describeServerFailure(server, query.lastError().databaseText());
        db.close();
    }
    QSqlDatabase::removeDatabase(name);
    return failure;
}

} // namespace tavrix
