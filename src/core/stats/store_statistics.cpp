// The rows the statistics window counts, read through SQLite's own calls on
// the store's connection: a statement per kind of row, each row taken as it
// comes.

#include "core/stats/stats_store.h"

#include "core/stats/sqlite_handle.h"

#include <QSqlDatabase>

#include <sqlite3.h>

namespace tavrix {

namespace {

constexpr const char *gamesStatement =
    "SELECT id, creationdate, gametype, result, throws, points, outset FROM games WHERE players_id = ?1";
constexpr const char *gameDartsStatement =
    "SELECT games_id, setseq, dartseq, score, ring, targetscore, targetring FROM gamesdarts WHERE players_id = ?1";
constexpr const char *practiceSetsStatement =
    "SELECT id, creationdate, targetValue, targetRing FROM statstargets WHERE players_id = ?1";
// The player's sets by their own index, each set's darts through the
// statsthrows_target index.
constexpr const char *practiceDartsStatement =
    "SELECT th.statstargets_id, th.score, th.ring"
    " FROM statstargets ta JOIN statsthrows th ON th.statstargets_id = ta.id WHERE +ta.players_id = ?1";
// The player's ended drills, oldest end first: the stored texts sort as
// the times they name.
constexpr const char *endedDrillsStatement =
    "SELECT id, kind, target, startdate, enddate, score, completed, quit FROM drills"
    " WHERE players_id = ?1 AND enddate IS NOT NULL ORDER BY enddate, id";
// The drill darts at a double or the bull, from the index of their targets.
constexpr const char *drillDoubleDartsStatement =
    "SELECT creationdate, score, ring, targetscore, targetring FROM drilldarts"
    " WHERE players_id = ?1 AND targetring = 2 AND targetscore > 0";

// The player's ended matches.
constexpr const char *endedMatchesStatement =
    "SELECT id, gametype, enddate, result, playerpoints, playerdarts, opponentpoints, opponentdarts FROM matches"
    " WHERE players_id = ?1 AND enddate IS NOT NULL";

GameType gameTypeFrom(int stored)
{
    switch (stored) {
    case code(GameType::Cricket): return GameType::Cricket;
    case code(GameType::X01_301): return GameType::X01_301;
    case code(GameType::X01_501): return GameType::X01_501;
    default: return GameType::None;
    }
}

GameEnd gameEndFrom(const unsigned char *result)
{
    if (result && result[0] == 'W' && result[1] == 0)
        return GameEnd::Won;
    if (result && result[0] == 'L' && result[1] == 0)
        return GameEnd::Lost;
    return GameEnd::Unfinished;
}

MatchResult matchResultFrom(const unsigned char *result)
{
    if (!result || result[0] == 0 || result[1] != 0)
        return MatchResult::Other;
    switch (result[0]) {
    case 'W': return MatchResult::Won;
    case 'L': return MatchResult::Lost;
    case 'A': return MatchResult::Abandoned;
    default: return MatchResult::Other;
    }
}

// Runs one statement with the player's id, handing each row to `take`;
// SQLITE_DONE when every row was read.
template <typename Take>
int readRows(sqlite3 *handle, const char *text, qint64 playerId, Take take)
{
    sqlite3_stmt *statement = nullptr;
    int code = sqlite3_prepare_v2(handle, text, -1, &statement, nullptr);
    if (code == SQLITE_OK)
        code = sqlite3_bind_int64(statement, 1, playerId);
    if (code == SQLITE_OK) {
        while ((code = sqlite3_step(statement)) == SQLITE_ROW)
            take(statement);
    }
    sqlite3_finalize(statement);
    return code;
}

} // namespace

std::optional<StatisticsRows> StatsStore::statisticsRows(qint64 playerId)
{
    ++playerReads_;
    const QString what = QStringLiteral("Cannot read the player's statistics");
    sqlite3 *const handle = sqliteHandle(connection());
    if (!handle) {
        fail(what, QStringLiteral("the database driver is not SQLite's"));
        return std::nullopt;
    }
    StatisticsRows rows;
    int code = readRows(handle, gamesStatement, playerId, [&](sqlite3_stmt *s) {
        rows.games.push_back({sqlite3_column_int64(s, 0), storedSeconds(s, 1), gameTypeFrom(sqlite3_column_int(s, 2)),
                              gameEndFrom(sqlite3_column_text(s, 3)), sqlite3_column_int(s, 4),
                              sqlite3_column_int(s, 5), sqlite3_column_int(s, 6)});
    });
    if (code == SQLITE_DONE) {
        code = readRows(handle, gameDartsStatement, playerId, [&](sqlite3_stmt *s) {
            rows.gameDarts.push_back({sqlite3_column_int64(s, 0), sqlite3_column_int(s, 1), sqlite3_column_int(s, 2),
                                      sqlite3_column_int(s, 3), sqlite3_column_int(s, 4), sqlite3_column_int(s, 5),
                                      sqlite3_column_int(s, 6)});
        });
    }
    if (code == SQLITE_DONE) {
        code = readRows(handle, practiceSetsStatement, playerId, [&](sqlite3_stmt *s) {
            rows.practiceSets.push_back({sqlite3_column_int64(s, 0), storedSeconds(s, 1), sqlite3_column_int(s, 2),
                                         sqlite3_column_int(s, 3)});
        });
    }
    if (code == SQLITE_DONE) {
        code = readRows(handle, practiceDartsStatement, playerId, [&](sqlite3_stmt *s) {
            rows.practiceDarts.push_back({sqlite3_column_int64(s, 0), sqlite3_column_int(s, 1),
                                          sqlite3_column_int(s, 2)});
        });
    }
    if (code == SQLITE_DONE)
        code = readEndedDrills(handle, playerId, rows.drills);
    if (code == SQLITE_DONE && holdsTable(handle, "drilldarts")) {
        code = readRows(handle, drillDoubleDartsStatement, playerId, [&](sqlite3_stmt *s) {
            rows.drillDoubleDarts.push_back({storedSeconds(s, 0), sqlite3_column_int(s, 1), sqlite3_column_int(s, 2),
                                             sqlite3_column_int(s, 3), sqlite3_column_int(s, 4)});
        });
    }
    // A file another program held at start may lack the matches until a
    // later start: it has none yet.
    if (code == SQLITE_DONE && holdsTable(handle, "matches")) {
        code = readRows(handle, endedMatchesStatement, playerId, [&](sqlite3_stmt *s) {
            rows.matches.push_back({sqlite3_column_int64(s, 0), gameTypeFrom(sqlite3_column_int(s, 1)),
                                    storedSeconds(s, 2), matchResultFrom(sqlite3_column_text(s, 3)),
                                    sqlite3_column_int64(s, 4), sqlite3_column_int64(s, 5),
                                    sqlite3_column_int64(s, 6), sqlite3_column_int64(s, 7)});
        });
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
    return readRows(handle, endedDrillsStatement, playerId, [&](sqlite3_stmt *s) {
        rows.push_back({sqlite3_column_int64(s, 0), sqlite3_column_int(s, 1), sqlite3_column_int(s, 2),
                        storedSeconds(s, 3), storedSeconds(s, 4), sqlite3_column_int(s, 5),
                        sqlite3_column_int(s, 6) != 0, sqlite3_column_int(s, 7) != 0});
    });
}

std::optional<qint64> storedSeconds(sqlite3_stmt *statement, int column)
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
    if (!text)
        return std::nullopt;
    return localSeconds(std::string_view(text, std::size_t(sqlite3_column_bytes(statement, column))));
}

} // namespace tavrix
