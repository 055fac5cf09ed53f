#include "core/stats/sqlite_schema.h"

#include "core/stats/outchart_data.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>
#include <array>
#include <initializer_list>
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

    "CREATE INDEX IF NOT EXISTS drills_player ON drills (players_id, kind, target)",
    "CREATE INDEX IF NOT EXISTS drilldarts_player_target ON drilldarts (players_id, targetring, targetscore)",
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

    "CREATE INDEX IF NOT EXISTS matches_player ON matches (players_id, enddate)",
    "CREATE INDEX IF NOT EXISTS matchlegs_match ON matchlegs (matches_id, setno, legno)",
    "CREATE INDEX IF NOT EXISTS matchlegs_game ON matchlegs (games_id)",
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

// Runs the statements in order; the reason of the first that fails.
QString runStatements(QSqlDatabase &db, std::span<const char *const> statements)
{
    QSqlQuery query(db);
    for (const char *statement : statements) {
        if (!query.exec(QString::fromLatin1(statement)))
            return failure(query);
    }
    return {};
}

// Whether `outchart` holds a row (false when it cannot be read).
bool chartHasRows(QSqlDatabase &db)
{
    QSqlQuery query(db);
    return query.exec(QStringLiteral("SELECT count(*) FROM outchart")) && query.next() && query.value(0).toInt() > 0;
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

// Fills an empty `outchart` with the chart that comes with the program.
QString fillChart(QSqlDatabase &db)
{
    const QList<ChartRow> rows = bundledChartRows();
    if (rows.isEmpty())
        return QStringLiteral("The bundled checkout chart is missing.");
    return insertChartRows(db, rows);
}

// Step 1: the six tables of the darts with their indexes, and the bundled
// checkout chart in an empty `outchart`.
QString createTables(QSqlDatabase &db)
{
    if (const QString error = runStatements(db, schemaStatements); !error.isEmpty())
        return error;
    return chartHasRows(db) ? QString() : fillChart(db);
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
    return runStatements(db, drillStatements);
}

// Step 4: the tables of the matches of legs.
QString createMatches(QSqlDatabase &db)
{
    return runStatements(db, matchStatements);
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

QString refusedAsNewer()
{
    return QStringLiteral("it was written by a newer version of Tavrix; this one leaves it as it is");
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

namespace {

// The columns of each table the program reads or writes, as created above,
// and the version that brought the table: a file of an older version lacks
// it until it is opened here.
struct OwnTable {
    const char *name;
    std::initializer_list<const char *> columns;
    int sinceVersion = 0;
};
const OwnTable ownTables[] = {
    {"players", {"id", "creationdate", "name"}},
    {"games", {"id", "creationdate", "players_id", "gametype", "skill", "opponent", "result", "throws", "points",
               "bestset", "outset"}},
    {"gamesdarts", {"creationdate", "games_id", "players_id", "setseq", "dartseq", "x", "y", "dist", "score", "ring",
                    "targetscore", "targetring"}},
    {"statstargets", {"id", "creationdate", "players_id", "targetvalue", "targetring"}},
    {"statsthrows", {"id", "players_id", "statstargets_id", "seq", "x", "y", "dist", "score", "ring"}},
    {"outchart", {"points", "singleout", "doubleout"}},
    {"drills", {"id", "players_id", "kind", "target", "startdate", "enddate", "score", "completed", "quit"}, 3},
    {"drilldarts", {"creationdate", "drills_id", "players_id", "setseq", "dartseq", "x", "y", "dist", "score", "ring",
                    "targetscore", "targetring", "aimx", "aimy"}, 3},
    {"matches", {"id", "players_id", "gametype", "skill", "opponent", "kind", "sets", "legs", "startdate", "enddate",
                 "result", "playerlegs", "opponentlegs", "playersets", "opponentsets", "playerpoints", "playerdarts",
                 "opponentpoints", "opponentdarts"}, 4},
    {"matchlegs", {"matches_id", "games_id", "setno", "legno", "firstthrower"}, 4},
};

} // namespace

QString checkOwnColumns(QSqlDatabase &db)
{
    QSqlQuery query(db);
    if (!query.exec(QStringLiteral("PRAGMA user_version")) || !query.next())
        return describeDatabaseError(query.lastError());
    const int version = query.value(0).toInt();
    for (const OwnTable &table : ownTables) {
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
        error = fillChart(db);
    if (error.isEmpty() && query.exec(QStringLiteral("COMMIT")))
        return {};
    if (error.isEmpty())
        error = describeDatabaseError(query.lastError());
    query.exec(QStringLiteral("ROLLBACK"));
    return error;
}

} // namespace tavrix
