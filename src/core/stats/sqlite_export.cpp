// The recorded darts as stored, streamed for writing them out: read through
// SQLite's own calls on the store's connection, as readAimedDarts does, so a
// million rows cost about one plain read and no more memory than one row.

#include "core/stats/sqlite_store.h"

#include "core/stats/sqlite_handle.h"
#include "core/stats/sqlite_schema.h"

#include <QHash>
#include <QSqlQuery>
#include <QVariant>

#include <sqlite3.h>

namespace tavrix {

namespace {

// Each table in the order its rows were recorded. A player's practice darts
// come from the player index, which keeps them in that order.
constexpr const char *practiceOfPlayer =
    "SELECT th.players_id, ta.creationdate, th.statstargets_id, th.seq, ta.targetValue, ta.targetRing,"
    " th.x, th.y, th.score, th.ring"
    " FROM statsthrows th LEFT JOIN statstargets ta ON ta.id = th.statstargets_id"
    " WHERE th.players_id = ?1 ORDER BY th.id";
constexpr const char *practiceOfAll =
    "SELECT th.players_id, ta.creationdate, th.statstargets_id, th.seq, ta.targetValue, ta.targetRing,"
    " th.x, th.y, th.score, th.ring"
    " FROM statsthrows th LEFT JOIN statstargets ta ON ta.id = th.statstargets_id ORDER BY th.id";
// The player index orders by target, not by time: the table is read in its
// own order and the other players' rows are passed over, which costs less
// than sorting the player's rows (the "+" keeps SQLite off the index).
constexpr const char *gameOfPlayer =
    "SELECT players_id, creationDate, games_id, setseq, dartseq, targetscore, targetring, x, y, score, ring"
    " FROM gamesdarts WHERE +players_id = ?1 ORDER BY rowid";
constexpr const char *gameOfAll =
    "SELECT players_id, creationDate, games_id, setseq, dartseq, targetscore, targetring, x, y, score, ring"
    " FROM gamesdarts ORDER BY rowid";

QByteArrayView textAt(sqlite3_stmt *statement, int column)
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
    return text ? QByteArrayView(text, sqlite3_column_bytes(statement, column)) : QByteArrayView();
}

StoredField fieldAt(sqlite3_stmt *statement, int column)
{
    // A whole number travels as the number: SQLite's text of it would cost
    // an allocation per field.
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
        return {{}, sqlite3_column_int64(statement, column)};
    case SQLITE_FLOAT: {
        const double value = sqlite3_column_double(statement, column);
        std::optional<qint64> whole;
        if (value > -1e15 && value < 1e15 && value == double(qint64(value)))
            whole = qint64(value);
        return {textAt(statement, column), whole};
    }
    default:
        return {textAt(statement, column), std::nullopt};
    }
}

std::optional<double> numberAt(sqlite3_stmt *statement, int column)
{
    const int type = sqlite3_column_type(statement, column);
    if (type != SQLITE_INTEGER && type != SQLITE_FLOAT)
        return std::nullopt;
    return sqlite3_column_double(statement, column);
}

} // namespace

std::optional<qint64> SqliteStore::exportDartCount(std::optional<qint64> playerId)
{
    QSqlQuery query(connection());
    query.prepare(playerId ? QStringLiteral("SELECT (SELECT count(*) FROM statsthrows WHERE players_id = ?)"
                                            " + (SELECT count(*) FROM gamesdarts WHERE players_id = ?)")
                           : QStringLiteral("SELECT (SELECT count(*) FROM statsthrows)"
                                            " + (SELECT count(*) FROM gamesdarts)"));
    if (playerId) {
        query.addBindValue(*playerId);
        query.addBindValue(*playerId);
    }
    if (!exec(query, QStringLiteral("Cannot count the darts")) || !query.next())
        return std::nullopt;
    return query.value(0).toLongLong();
}

bool SqliteStore::readExportDarts(std::optional<qint64> playerId, const ExportDartTaker &take)
{
    const QString what = QStringLiteral("Cannot read the darts");
    // The names are few; each row takes its own from here.
    QHash<qint64, QByteArray> names;
    {
        QSqlQuery query(connection());
        query.setForwardOnly(true);
        query.prepare(QStringLiteral("SELECT id, name FROM players"));
        if (!exec(query, what))
            return false;
        while (query.next())
            names.insert(query.value(0).toLongLong(), query.value(1).toString().toUtf8());
    }
    sqlite3 *const handle = sqliteHandle(connection());
    if (!handle)
        return fail(what, QStringLiteral("the database driver is not SQLite's"));

    ExportDart dart;
    qint64 namedId = 0;
    QByteArray name;
    for (const bool practice : {true, false}) {
        const char *text = practice ? (playerId ? practiceOfPlayer : practiceOfAll)
                                    : (playerId ? gameOfPlayer : gameOfAll);
        sqlite3_stmt *statement = nullptr;
        int code = sqlite3_prepare_v2(handle, text, -1, &statement, nullptr);
        if (code == SQLITE_OK && playerId)
            code = sqlite3_bind_int64(statement, 1, *playerId);
        bool goOn = true;
        if (code == SQLITE_OK) {
            dart.practice = practice;
            while (goOn && (code = sqlite3_step(statement)) == SQLITE_ROW) {
                const qint64 player = sqlite3_column_int64(statement, 0);
                if (player != namedId || name.isNull()) {
                    namedId = player;
                    name = names.value(player, QByteArray(""));
                }
                dart.player = name;
                dart.date = textAt(statement, 1);
                int column = 2;
                dart.game = practice ? StoredField{} : fieldAt(statement, column++);
                dart.set = fieldAt(statement, column++);
                dart.dart = fieldAt(statement, column++);
                dart.targetScore = fieldAt(statement, column++);
                dart.targetRing = fieldAt(statement, column++);
                dart.x = numberAt(statement, column++);
                dart.y = numberAt(statement, column++);
                dart.score = fieldAt(statement, column++);
                dart.ring = fieldAt(statement, column++);
                goOn = take(dart);
            }
        }
        const QString detail = QString::fromUtf8(sqlite3_errmsg(handle));
        sqlite3_finalize(statement);
        if (!goOn)
            return true;
        if (code != SQLITE_DONE)
            return fail(what, detail);
    }
    return true;
}

} // namespace tavrix
