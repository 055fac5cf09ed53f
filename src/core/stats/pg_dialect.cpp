// The club server's dialect: its schema steps counted in `schemaversions`,
// a change counter every write bumps in the writer's transaction, and
// identities for the ids.

#include "core/stats/store_dialect.h"

#include "core/stats/pg_schema.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace tavrix {

namespace {

// What the driver says when the server went away: closed by the server,
// shut down, or the network lost.
bool connectionLost(const QSqlError &error)
{
    const QString code = error.nativeErrorCode();
    if (code.startsWith(QLatin1String("08")) || code == QLatin1String("57P01") || code == QLatin1String("57P02")
        || code == QLatin1String("57P03"))
        return true;
    const QString text = error.text();
    for (const char *sign : {"server closed the connection", "no connection to the server",
                             "terminating connection", "could not send data"}) {
        if (text.contains(QLatin1String(sign), Qt::CaseInsensitive))
            return true;
    }
    return false;
}

class PostgresDialect final : public StoreDialect {
public:
    QString driver() const override { return QStringLiteral("QPSQL"); }
    bool isServer() const override { return true; }

    QString prepare(QSqlDatabase &db) const override { return prepareServerSchema(db); }

    std::optional<StoreVersion> changeStamp(QSqlDatabase &db, QString &error) const override
    {
        QSqlQuery query(db);
        // The counter moves with every commit; inside this board's own
        // transaction its writes so far count too.
        if (!query.exec(QStringLiteral("SELECT counter, coalesce(nullif(current_setting('tavrix.writes', true), ''),"
                                       " '0')::BIGINT FROM storechanges WHERE id = 1"))
            || !query.next()) {
            error = describeError(query.lastError(), db.hostName());
            return std::nullopt;
        }
        return StoreVersion{query.value(0).toLongLong(), query.value(1).toLongLong()};
    }

    bool holdsTable(QSqlDatabase &db, const char *table) const override
    {
        return serverHoldsTable(db, QString::fromLatin1(table));
    }

    QString writeOrder() const override { return QStringLiteral("id"); }

    // The identity's sequence is set to the largest id in the table, or
    // kept where it is when it is already past it (ids handed out by other
    // boards' uncommitted rows); an empty table leaves it alone.
    QString afterGivenIds(QSqlDatabase &db, const char *table) const override
    {
        // The table name is the program's own, never a user's text.
        QSqlQuery query(db);
        if (query.exec(QStringLiteral(
                "SELECT setval(s, greatest(m, coalesce(pg_sequence_last_value(s), 0)))"
                " FROM (SELECT pg_get_serial_sequence('%1', 'id')::regclass AS s,"
                " (SELECT max(id) FROM %1) AS m) given WHERE m IS NOT NULL")
                           .arg(QLatin1String(table))))
            return {};
        return describeError(query.lastError(), db.hostName());
    }

    QString describeError(const QSqlError &error, const QString &where) const override
    {
        if (connectionLost(error))
            return QStringLiteral("the connection to the club database (%1) was lost").arg(where);
        const QString code = error.nativeErrorCode();
        if (code == QLatin1String("40001") || code == QLatin1String("40P01"))
            return QStringLiteral("another board wrote at the same moment");
        return error.databaseText().isEmpty() ? error.text() : error.databaseText();
    }
};

} // namespace

const StoreDialect &postgresDialect()
{
    static const PostgresDialect dialect;
    return dialect;
}

} // namespace tavrix
