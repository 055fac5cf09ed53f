#include "core/stats/sqlite_schema.h"

#include "core/stats/outchart_data.h"
#include "core/stats/store_schema.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>
#include <array>
#include <optional>
#include <span>

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

// The training drills: a row per drill, ended (enddate set) when it is
// finished or quit, and the darts of its confirmed sets. The history reads
// a player's drills, the aimed darts and the doubles' rates a player's drill
// darts by their target.
constexpr const char *drillStatements[] = {
    "CREATE TABLE IF NOT EXISTS drills ("
    " id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " players_id INTEGER,"
    " kind SMALLINT,"
    " target SMALLINT,"
    " startdate DATETIME,"
    " enddate DATETIME,"
    " score INTEGER DEFAULT 0,"
    " completed SMALLINT DEFAULT 0,"
    " quit SMALLINT DEFAULT 0)",

    "CREATE TABLE IF NOT EXISTS drilldarts ("
    " creationdate DATETIME,"
    " drills_id INTEGER,"
    " players_id INTEGER,"
    " setseq INTEGER,"
    " dartseq INTEGER,"
    " x FLOAT,"
    " y FLOAT,"
    " dist DOUBLE,"
    " score INTEGER,"
    " ring INTEGER,"
    " targetscore INTEGER,"
    " targetring INTEGER,"
    " aimx FLOAT,"
    " aimy FLOAT)",
};

// The matches of legs: a row per match, ended (enddate set) with its result
// and figures, and a row per leg naming the leg's game. The statistics read
// a player's matches; a leg is found by its match or by its game.
constexpr const char *matchStatements[] = {
    "CREATE TABLE IF NOT EXISTS matches ("
    " id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " players_id INTEGER,"
    " gametype SMALLINT,"
    " skill SMALLINT,"
    " opponent TEXT,"
    " kind SMALLINT,"
    " sets SMALLINT,"
    " legs SMALLINT,"
    " startdate DATETIME,"
    " enddate DATETIME,"
    " result CHAR(1) DEFAULT '',"
    " playerlegs INTEGER DEFAULT 0,"
    " opponentlegs INTEGER DEFAULT 0,"
    " playersets INTEGER DEFAULT 0,"
    " opponentsets INTEGER DEFAULT 0,"
    " playerpoints INTEGER DEFAULT 0,"
    " playerdarts INTEGER DEFAULT 0,"
    " opponentpoints INTEGER DEFAULT 0,"
    " opponentdarts INTEGER DEFAULT 0)",

    "CREATE TABLE IF NOT EXISTS matchlegs ("
    " matches_id INTEGER,"
    " games_id INTEGER,"
    " setno SMALLINT,"
    " legno SMALLINT,"
    " firstthrower SMALLINT)",
};

QString failure(const QSqlQuery &query)
{
    return query.lastError().text();
}

// Whether the file holds the program's six tables.
bool holdsOwnTables(QSqlDatabase &db)
{
    QSqlQuery query(db);
    if (!query.exec(QStringLiteral("SELECT count(*) FROM sqlite_master WHERE type = 'table' AND lower(name) IN"
                                   " ('players', 'games', 'gamesdarts', 'statstargets', 'statsthrows', 'outchart')"))
        || !query.next())
        return false;
    return query.value(0).toInt() == 6;
}

// Step 1: the six tables of the darts with their indexes, and the bundled
// checkout chart in an empty `outchart`.
QString createTables(QSqlDatabase &db)
{
    QString error = runStatements(db, schemaStatements);
    if (error.isEmpty())
        error = runStatements(db, gameIndexStatements);
    if (!error.isEmpty())
        return error;
    return chartHasRows(db) ? QString() : fillBundledChart(db);
}

// Step 2: the tables of the practice sums and the triggers that drop a
// player's sums whenever the player's practice darts or targets change (by
// this program or any other).
QString createPracticeSums(QSqlDatabase &db)
{
    return runStatements(db, practiceSumsStatements);
}

// Step 3: the tables of the training drills.
QString createDrills(QSqlDatabase &db)
{
    const QString error = runStatements(db, drillStatements);
    return error.isEmpty() ? runStatements(db, drillIndexStatements) : error;
}

// Step 4: the tables of the matches of legs.
QString createMatches(QSqlDatabase &db)
{
    const QString error = runStatements(db, matchStatements);
    return error.isEmpty() ? runStatements(db, matchIndexStatements) : error;
}

using SchemaStep = QString (*)(QSqlDatabase &db);

// In order: step i makes version i + 1. Every statement is written to be
// harmless where its object exists already, because the first program
// version kept no version number and a file of it holds some of them.
constexpr std::array<SchemaStep, 4> schemaSteps = {createTables, createPracticeSums, createDrills, createMatches};

// The file's user_version; none (with the reason) when it cannot be read.
std::optional<int> fileVersion(QSqlDatabase &db, QString &error)
{
    QSqlQuery query(db);
    if (!query.exec(QStringLiteral("PRAGMA user_version")) || !query.next()) {
        error = describeDatabaseError(query.lastError());
        return std::nullopt;
    }
    return query.value(0).toInt();
}

// Runs the steps the file lacks inside the open transaction.
QString runSteps(QSqlDatabase &db, int from)
{
    for (int step = from; step < newestSchemaVersion(); ++step) {
        if (const QString error = schemaSteps[step](db); !error.isEmpty())
            return error;
    }
    // A pragma takes no bound value; the number is the program's own.
    QSqlQuery query(db);
    if (!query.exec(QStringLiteral("PRAGMA user_version = %1").arg(newestSchemaVersion())))
        return failure(query);
    return {};
}

} // namespace

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
            return refusedAsForeign();
    }
    return {};
}

QString checkOwnColumns(QSqlDatabase &db)
{
    QSqlQuery query(db);
    if (!query.exec(QStringLiteral("PRAGMA user_version")) || !query.next())
        return describeDatabaseError(query.lastError());
    const int version = query.value(0).toInt();
    for (const OwnTable &table : ownTables()) {
        // SQLite matches names without regard to case, and so does this.
        if (!query.prepare(QStringLiteral("SELECT lower(name) FROM pragma_table_info(?)")))
            return describeDatabaseError(query.lastError());
        query.addBindValue(QString::fromLatin1(table.name));
        if (!query.exec())
            return describeDatabaseError(query.lastError());
        QStringList columns;
        while (query.next())
            columns << query.value(0).toString();
        if (columns.isEmpty() && version < table.sinceVersion)
            continue;
        if (columns.isEmpty())
            return QStringLiteral("it has no table %1").arg(QLatin1String(table.name));
        for (const char *column : table.columns) {
            if (!columns.contains(QLatin1String(column)))
                return QStringLiteral("its table %1 has no column %2")
                    .arg(QLatin1String(table.name), QLatin1String(column));
        }
    }
    return {};
}

int newestSchemaVersion()
{
    return static_cast<int>(schemaSteps.size());
}

QString upgradeSchema(QSqlDatabase &db)
{
    QString error;
    std::optional<int> version = fileVersion(db, error);
    if (!version)
        return error;
    if (*version > newestSchemaVersion())
        return refusedAsNewer();
    if (*version == newestSchemaVersion() && chartHasRows(db))
        return {};

    // The write lock first, then the version again: another copy of the
    // program may have upgraded the file in between. A file that already
    // holds the program's tables works without the newer steps while
    // another program holds it; it is upgraded at a later start.
    QSqlQuery query(db);
    if (!query.exec(QStringLiteral("BEGIN IMMEDIATE"))) {
        if (holdsOwnTables(db))
            return {};
        return describeDatabaseError(query.lastError());
    }
    version = fileVersion(db, error);
    if (version && *version > newestSchemaVersion())
        error = refusedAsNewer();
    else if (version && *version < newestSchemaVersion())
        error = runSteps(db, std::max(*version, 0));
    // A chart emptied by another program is filled again, as in a new file.
    if (error.isEmpty() && !chartHasRows(db))
        error = fillBundledChart(db);
    if (error.isEmpty() && query.exec(QStringLiteral("COMMIT")))
        return {};
    if (error.isEmpty())
        error = describeDatabaseError(query.lastError());
    query.exec(QStringLiteral("ROLLBACK"));
    return error;
}

} // namespace tavrix
