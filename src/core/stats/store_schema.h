#pragma once

// What the schemas of both databases share: the tables and columns the
// store reads and writes, the checkout chart that fills a new `outchart`,
// and the words for a database that is not ours to change.

#include "core/stats/outchart_data.h"

#include <QSqlDatabase>
#include <QString>

#include <initializer_list>
#include <span>

namespace tavrix {

// The columns of a table the program reads or writes (lower case), and the
// schema version that brought the table: a database of an older version
// lacks it until it is opened here.
struct OwnTable {
    const char *name;
    std::initializer_list<const char *> columns;
    int sinceVersion = 0;
};
std::span<const OwnTable> ownTables();

// The indexes of the tables, the same in both databases. Players are looked
// up by name; records, counts and resets select by player first, then by
// game type or target.
inline constexpr const char *gameIndexStatements[] = {
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

// The history reads a player's drills, the aimed darts and the doubles'
// rates a player's drill darts by their target.
inline constexpr const char *drillIndexStatements[] = {
    "CREATE INDEX IF NOT EXISTS drills_player ON drills (players_id, kind, target)",
    "CREATE INDEX IF NOT EXISTS drilldarts_player_target ON drilldarts (players_id, targetring, targetscore)",
};

// The statistics read a player's matches; a leg is found by its match or by
// its game.
inline constexpr const char *matchIndexStatements[] = {
    "CREATE INDEX IF NOT EXISTS matches_player ON matches (players_id, enddate)",
    "CREATE INDEX IF NOT EXISTS matchlegs_match ON matchlegs (matches_id, setno, legno)",
    "CREATE INDEX IF NOT EXISTS matchlegs_game ON matchlegs (games_id)",
};

// Runs the statements in order; the reason of the first that fails.
QString runStatements(QSqlDatabase &db, std::span<const char *const> statements);

// Whether `outchart` holds a row (false when it cannot be read).
bool chartHasRows(QSqlDatabase &db);

// Adds rows to `outchart`, empty fields as empty text; inside the caller's
// transaction. Returns an empty text on success, the reason otherwise.
QString insertChartRows(QSqlDatabase &db, const QList<ChartRow> &rows);

// Fills an empty `outchart` with the chart that comes with the program.
QString fillBundledChart(QSqlDatabase &db);

QString refusedAsNewer();
QString refusedAsForeign();

} // namespace tavrix
