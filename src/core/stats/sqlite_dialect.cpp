// The SQLite file's dialect: its schema steps counted in the file's
// user_version, the write-ahead log, and SQLite's own change counters.

#include "core/stats/store_dialect.h"

#include "core/stats/sqlite_schema.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace tavrix {

namespace {

class SqliteDialect final : public StoreDialect {
public:
    QString driver() const override { return QStringLiteral("QSQLITE"); }
    bool isServer() const override { return false; }

    // Nothing is changed in a file that is not ours, or no database, or of
    // a newer version; the journal mode is switched only once the tables
    // are up to date, so that a failed upgrade leaves the file as it was.
    QString prepare(QSqlDatabase &db) const override
    {
        if (QString error = checkOwnDatabase(db); !error.isEmpty())
            return error;
        if (QString error = upgradeSchema(db); !error.isEmpty())
            return error;
        QSqlQuery pragma(db);
        if (!pragma.exec(QStringLiteral("PRAGMA journal_mode=WAL")))
            return describeDatabaseError(pragma.lastError());
        if (!pragma.exec(QStringLiteral("PRAGMA synchronous=NORMAL")))
            return pragma.lastError().text();
        return {};
    }

    // The file's data_version moves with every commit of another
    // connection, total_changes() with every row this one changes.
    std::optional<StoreVersion> changeStamp(QSqlDatabase &db, QString &error) const override
    {
        QSqlQuery query(db);
        if (!query.exec(QStringLiteral("SELECT data_version, total_changes() FROM pragma_data_version"))
            || !query.next()) {
            error = describeDatabaseError(query.lastError());
            return std::nullopt;
        }
        return StoreVersion{query.value(0).toLongLong(), query.value(1).toLongLong()};
    }

    bool holdsTable(QSqlDatabase &db, const char *table) const override
    {
        QSqlQuery query(db);
        query.prepare(QStringLiteral("SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?"));
        query.addBindValue(QString::fromLatin1(table));
        return query.exec() && query.next();
    }

    QString writeOrder() const override { return QStringLiteral("rowid"); }

    // An id given by the program raises the table's next id by itself.
    QString afterGivenIds(QSqlDatabase &, const char *) const override { return {}; }

    QString describeError(const QSqlError &error, const QString &where) const override
    {
        return describeDatabaseError(error, where);
    }
};

} // namespace

const StoreDialect &sqliteDialect()
{
    static const SqliteDialect dialect;
    return dialect;
}

} // namespace tavrix
