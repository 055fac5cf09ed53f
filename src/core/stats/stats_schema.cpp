#include "core/stats/stats_schema.h"

#include "core/stats/outchart_data.h"
#include "core/stats/stats_store.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace tavrix {

namespace {

// Column types follow SQLite's affinity rules: FLOAT and DOUBLE keep REAL
// values, DATETIME keeps the stored text ("2026-11-22 21:05:09").
constexpr const char *schemaStatements[] = {
    "CREATE TABLE IF NOT EXISTS players ("
    " id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " creationdate DATETIME,"
    " name TEXT NOT NULL)",

    "CREATE TABLE IF NOT EXISTS games ("
    " id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " creationdate DATETIME,"
    " players_id INTEGER,"
    " gametype SMALLINT,"
    " skill SMALLINT,"
    " opponent TEXT,"
    " result CHAR(1) DEFAULT '',"
    " throws INTEGER DEFAULT 0,"
    " points INTEGER DEFAULT 0,"
    " bestset INTEGER DEFAULT 0,"
    " outset INTEGER DEFAULT 0)",

    "CREATE TABLE IF NOT EXISTS gamesdarts ("
    " creationDate DATETIME,"
    " games_id INTEGER,"
    " players_id INTEGER,"
    " setseq INTEGER,"
    " dartseq INTEGER,"
    " x FLOAT,"
    " y FLOAT,"
    " dist DOUBLE,"
    " score INTEGER,"
    " ring INTEGER,"
    " targetscore INTEGER,"
    " targetring INTEGER)",

    "CREATE TABLE IF NOT EXISTS statstargets ("
    " id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " creationdate DATETIME,"
    " players_id INTEGER,"
    " targetValue INTEGER,"
    " targetRing INTEGER)",

    "CREATE TABLE IF NOT EXISTS statsthrows ("
    " id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " players_id INTEGER,"
    " statstargets_id INTEGER,"
    " seq INTEGER,"
    " x FLOAT,"
    " y FLOAT,"
    " dist DOUBLE,"
    " score INTEGER,"
    " ring INTEGER)",

    "CREATE TABLE IF NOT EXISTS outchart ("
    " points INTEGER,"
    " singleout TEXT,"
    " doubleout TEXT)",

    // Players are looked up by name; records, counts and resets select by
    // player first, then by game type or target.
    "CREATE INDEX IF NOT EXISTS players_name ON players (name)",
    // The record beside a game is read at every turn from this index alone.
    "CREATE INDEX IF NOT EXISTS games_record"
    " ON games (players_id, gametype, skill, result, throws, outset)",
    "CREATE INDEX IF NOT EXISTS gamesdarts_game ON gamesdarts (games_id)",
    "CREATE INDEX IF NOT EXISTS gamesdarts_player_target"
    " ON gamesdarts (players_id, targetring, targetscore)",
    "CREATE INDEX IF NOT EXISTS statstargets_player"
    " ON statstargets (players_id, targetRing, targetValue)",
    "CREATE INDEX IF NOT EXISTS statsthrows_target ON statsthrows (statstargets_id)",
    "CREATE INDEX IF NOT EXISTS statsthrows_player ON statsthrows (players_id)",
};

// A player's sums count the darts of the player's targets and the darts the
// player threw at them, so a change to a dart drops the sums of both the
// thrower and the target's owner. A new target drops nothing unless darts
// already point at its id.
constexpr const char *practiceSumsStatements[] = {
    "CREATE TABLE IF NOT EXISTS practicesums ("
    " players_id INTEGER PRIMARY KEY,"
    " lasttarget INTEGER,"
    " distcount INTEGER,"
    " distsum DOUBLE)",

    "CREATE TABLE IF NOT EXISTS practicetargetsums ("
    " players_id INTEGER,"
    " targetValue INTEGER,"
    " targetRing INTEGER,"
    " throws INTEGER,"
    " hits INTEGER,"
    " distcount INTEGER,"
    " distsum DOUBLE)",

    "CREATE INDEX IF NOT EXISTS practicetargetsums_player ON practicetargetsums (players_id)",

    "CREATE TRIGGER IF NOT EXISTS practicesums_throw_added AFTER INSERT ON statsthrows BEGIN"
    " DELETE FROM practicesums WHERE players_id = NEW.players_id"
    " OR players_id = (SELECT players_id FROM statstargets WHERE id = NEW.statstargets_id); END",

    "CREATE TRIGGER IF NOT EXISTS practicesums_throw_removed AFTER DELETE ON statsthrows BEGIN"
    " DELETE FROM practicesums WHERE players_id = OLD.players_id"
    " OR players_id = (SELECT players_id FROM statstargets WHERE id = OLD.statstargets_id); END",

    "CREATE TRIGGER IF NOT EXISTS practicesums_throw_changed AFTER UPDATE ON statsthrows BEGIN"
    " DELETE FROM practicesums WHERE players_id IN (OLD.players_id, NEW.players_id)"
    " OR players_id = (SELECT players_id FROM statstargets WHERE id = OLD.statstargets_id)"
    " OR players_id = (SELECT players_id FROM statstargets WHERE id = NEW.statstargets_id); END",

    "CREATE TRIGGER IF NOT EXISTS practicesums_target_added AFTER INSERT ON statstargets"
    " WHEN EXISTS (SELECT 1 FROM statsthrows WHERE statstargets_id = NEW.id) BEGIN"
    " DELETE FROM practicesums WHERE players_id = NEW.players_id; END",

    "CREATE TRIGGER IF NOT EXISTS practicesums_target_removed AFTER DELETE ON statstargets BEGIN"
    " DELETE FROM practicesums WHERE players_id = OLD.players_id; END",

    "CREATE TRIGGER IF NOT EXISTS practicesums_target_changed AFTER UPDATE ON statstargets BEGIN"
    " DELETE FROM practicesums WHERE players_id IN (OLD.players_id, NEW.players_id); END",
};

// Empty fields are stored as empty text, never as NULL.
QString textOrEmpty(const QString &text)
{
    return text.isNull() ? QStringLiteral("") : text;
}

QString failure(const QSqlQuery &query)
{
    return query.lastError().text();
}

QString createAndFill(QSqlDatabase &db)
{
    QSqlQuery query(db);
    for (const char *statement : schemaStatements) {
        if (!query.exec(QString::fromLatin1(statement)))
            return failure(query);
    }
    if (!query.exec(QStringLiteral("SELECT count(*) FROM outchart")) || !query.next())
        return failure(query);
    if (query.value(0).toInt() > 0)
        return {};

    const QList<ChartRow> rows = bundledChartRows();
    if (rows.isEmpty())
        return QStringLiteral("The bundled checkout chart is missing.");
    return insertChartRows(db, rows);
}

} // namespace

QString insertChartRows(QSqlDatabase &db, const QList<ChartRow> &rows)
{
    QSqlQuery query(db);
    if (!query.prepare(QStringLiteral(
            "INSERT INTO outchart (points, singleout, doubleout) VALUES (?, ?, ?)")))
        return failure(query);
    for (const ChartRow &row : rows) {
        query.addBindValue(row.points);
        query.addBindValue(textOrEmpty(row.singleOut));
        query.addBindValue(textOrEmpty(row.doubleOut));
        if (!query.exec())
            return failure(query);
    }
    return {};
}

QString checkOwnDatabase(QSqlDatabase &db)
{
    QSqlQuery query(db);
    if (!query.exec(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table'")))
        return describeDatabaseError(query.lastError());
    QStringList tables;
    while (query.next())
        tables << query.value(0).toString().toLower();
    if (tables.isEmpty())
        return {};
    for (const char *own : {"players", "games", "gamesdarts", "statstargets", "statsthrows", "outchart"}) {
        if (!tables.contains(QLatin1String(own)))
            return QStringLiteral("it holds tables of another program; Tavrix leaves it as it is");
    }
    return {};
}

QString ensurePracticeSums(QSqlDatabase &db)
{
    if (!db.transaction())
        return db.lastError().text();
    QSqlQuery query(db);
    for (const char *statement : practiceSumsStatements) {
        if (!query.exec(QString::fromLatin1(statement))) {
            const QString error = failure(query);
            db.rollback();
            return error;
        }
    }
    if (!db.commit())
        return db.lastError().text();
    return {};
}

QString ensureSchema(QSqlDatabase &db)
{
    if (!db.transaction())
        return db.lastError().text();
    const QString error = createAndFill(db);
    if (!error.isEmpty()) {
        db.rollback();
        return error;
    }
    if (!db.commit())
        return db.lastError().text();
    return {};
}

} // namespace tavrix
