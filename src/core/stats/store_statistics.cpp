// The rows the statistics window counts: a statement per kind of row, each
// row taken as it comes. A file's are read through SQLite's own calls on the
// store's connection, a server's through Qt SQL (store_rows.h).

#include "core/stats/stats_store.h"

#include "core/stats/sqlite_row.h"
#include "core/stats/store_dialect.h"
#include "core/stats/store_rows.h"

#include <QSqlDatabase>

#include <sqlite3.h>

namespace tavrix {

namespace {

} // namespace

std::optional<StatisticsRows> StatsStore::statisticsRows(qint64 playerId)
{
    ++playerReads_;
    const QString what = QStringLiteral("Cannot read the player's statistics");
    sqlite3 *const handle = sqliteHandle(connection());
    if (!handle) {
        QSqlDatabase db = connection();
        QSqlError error;
        std::optional<StatisticsRows> rows = readStatisticsRows(db, dialect(), playerId, error);
        if (!rows)
            fail(what, dialect().describeError(error, databasePath()));
        return rows;
    }
    StatisticsRows rows;
    int code = readRows(handle, gamesStatement, playerId,
                        [&](const SqliteRow &row) { rows.games.push_back(gameFrom(row)); });
    if (code == SQLITE_DONE) {
        code = readRows(handle, gameDartsStatement, playerId,
                        [&](const SqliteRow &row) { rows.gameDarts.push_back(gameDartFrom(row)); });
    }
    if (code == SQLITE_DONE) {
        code = readRows(handle, practiceSetsStatement, playerId,
                        [&](const SqliteRow &row) { rows.practiceSets.push_back(practiceSetFrom(row)); });
    }
    if (code == SQLITE_DONE) {
        code = readRows(handle, practiceDartsStatement, playerId,
                        [&](const SqliteRow &row) { rows.practiceDarts.push_back(practiceDartFrom(row)); });
    }
    if (code == SQLITE_DONE)
        code = readEndedDrills(handle, playerId, rows.drills);
    if (code == SQLITE_DONE && holdsTable(handle, "drilldarts")) {
        code = readRows(handle, drillDoubleDartsStatement, playerId,
                        [&](const SqliteRow &row) { rows.drillDoubleDarts.push_back(drillDartFrom(row)); });
    }
    // A file another program held at start may lack the matches until a
    // later start: it has none yet.
    if (code == SQLITE_DONE && holdsTable(handle, "matches")) {
        code = readRows(handle, endedMatchesStatement, playerId,
                        [&](const SqliteRow &row) { rows.matches.push_back(matchFrom(row)); });
    }
    if (code != SQLITE_DONE) {
        fail(what, QString::fromUtf8(sqlite3_errmsg(handle)));
        return std::nullopt;
    }
    return rows;
}

int readEndedDrills(sqlite3 *handle, qint64 playerId, std::vector<DrillRow> &rows)
{
    // A file another program held at start keeps the tables of the version
    // before the drills until a later start: it has no drills yet.
    if (!holdsTable(handle, "drills"))
        return SQLITE_DONE;
    return readRows(handle, endedDrillsStatement, playerId,
                    [&](const SqliteRow &row) { rows.push_back(drillFrom(row)); });
}

std::optional<qint64> storedSeconds(sqlite3_stmt *statement, int column)
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
    if (!text)
        return std::nullopt;
    return localSeconds(std::string_view(text, std::size_t(sqlite3_column_bytes(statement, column))));
}

} // namespace tavrix
