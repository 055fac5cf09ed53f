#pragma once

// Rows of a query as lists of values, so whole rows compare at once; and a
// connection of another program to a database file.

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QVariantList>

inline QList<QVariantList> sqlRows(const QSqlDatabase &db, const QString &sql)
{
    QSqlQuery query(db);
    if (!query.exec(sql))
        qWarning("%s: %s", qPrintable(sql), qPrintable(query.lastError().text()));
    QList<QVariantList> rows;
    while (query.next()) {
        rows.append(QVariantList());
        for (int i = 0; i < query.record().count(); ++i)
            rows.last().append(query.value(i));
    }
    return rows;
}

// The first value of the first row; invalid when there is none.
inline QVariant sqlValue(const QSqlDatabase &db, const QString &sql)
{
    const QList<QVariantList> rows = sqlRows(db, sql);
    return rows.isEmpty() ? QVariant() : rows[0].value(0);
}

class OtherConnection {
public:
    explicit OtherConnection(const QString &path, const QString &name = QStringLiteral("other"))
        : name_(name)
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_);
        db.setDatabaseName(path);
        db.open();
    }
    ~OtherConnection()
    {
        db().close();
        QSqlDatabase::removeDatabase(name_);
    }
    QSqlDatabase db() const { return QSqlDatabase::database(name_, false); }
    // Runs the statements in order; false at the first that fails.
    bool exec(const QStringList &statements) const
    {
        QSqlQuery query(db());
        for (const QString &statement : statements) {
            if (!query.exec(statement)) {
                qWarning("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
                return false;
            }
        }
        return true;
    }
    QVariant value(const QString &sql) const { return sqlValue(db(), sql); }
    QList<QVariantList> rows(const QString &sql) const { return sqlRows(db(), sql); }

private:
    QString name_;
};
