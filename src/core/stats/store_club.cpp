// The club page's reads on a server: one statement per table for all the
// players listed, each row handed to its player by the id it carries, so
// ten players cost as many round trips as one. A player in `clubhidden`
// is left out by the server, whose rows then never travel.

#include "core/stats/stats_store.h"

#include "core/stats/store_dialect.h"
#include "core/stats/store_rows.h"

#include <QHash>
#include <QSqlDatabase>
#include <QSqlQuery>

namespace tavrix {

namespace {

constexpr const char *listedFilter = " NOT IN (SELECT players_id FROM clubhidden)";

// The columns of the player's own reads (store_rows.h) with the player's id
// last, in the order of the player's own reads within each player, so that
// each player's figures come out as the window's.
constexpr const char *clubPlayersStatement = "SELECT id, name FROM players WHERE id";
constexpr const char *clubGamesStatement =
    "SELECT id, creationdate, gametype, result, throws, points, outset, players_id FROM games WHERE players_id";
constexpr const char *clubGamesOrder = " ORDER BY players_id, gametype, skill, result, throws, outset, id";
constexpr const char *clubGameDartsStatement =
    "SELECT games_id, setseq, dartseq, score, ring, targetscore, targetring, players_id FROM gamesdarts"
    " WHERE players_id";
constexpr const char *clubGameDartsOrder = " ORDER BY players_id, targetring, targetscore, id";
constexpr const char *clubDrillsStatement =
    "SELECT id, kind, target, startdate, enddate, score, completed, quit, players_id FROM drills"
    " WHERE enddate IS NOT NULL AND players_id";
constexpr const char *clubDrillsOrder = " ORDER BY players_id, enddate, id";

// Runs one read and hands each row to `take`; false when it fails.
template <typename Take>
bool readAll(QSqlQuery &query, const char *statement, const char *order, Take take)
{
    query.setForwardOnly(true);
    if (!query.exec(QString::fromLatin1(statement) + QLatin1String(listedFilter) + QLatin1String(order)))
        return false;
    const QueryRow row(query);
    while (query.next())
        take(row);
    return !query.lastError().isValid();
}

} // namespace

bool StatsStore::clubUsable(const QString &what)
{
    if (!server_)
        return fail(what, QStringLiteral("the club page needs a club database on a server"));
    return reachServer(what);
}

std::optional<std::vector<ClubPlayerRows>> StatsStore::clubRows()
{
    const QString what = QStringLiteral("Cannot read the club's statistics");
    if (!clubUsable(what))
        return std::nullopt;
    std::vector<ClubPlayerRows> players;
    QHash<qint64, size_t> byId;
    QSqlQuery query(connection());
    const auto rowsOf = [&](const QueryRow &row, int column) -> StatisticsRows * {
        const auto found = byId.constFind(row.int64(column));
        return found == byId.constEnd() ? nullptr : &players[*found].rows;
    };
    const bool read =
        readAll(query, clubPlayersStatement, " ORDER BY id",
                [&](const QueryRow &row) {
                    byId.insert(row.int64(0), players.size());
                    players.push_back({row.int64(0), query.value(1).toString(), {}});
                })
        && readAll(query, clubGamesStatement, clubGamesOrder,
                   [&](const QueryRow &row) {
                       if (StatisticsRows *rows = rowsOf(row, 7))
                           rows->games.push_back(gameFrom(row));
                   })
        && readAll(query, clubGameDartsStatement, clubGameDartsOrder,
                   [&](const QueryRow &row) {
                       if (StatisticsRows *rows = rowsOf(row, 7))
                           rows->gameDarts.push_back(gameDartFrom(row));
                   })
        && readAll(query, clubDrillsStatement, clubDrillsOrder, [&](const QueryRow &row) {
               if (StatisticsRows *rows = rowsOf(row, 8))
                   rows->drills.push_back(drillFrom(row));
           });
    if (!read) {
        fail(what, query);
        return std::nullopt;
    }
    return players;
}

std::optional<bool> StatsStore::isHiddenFromClub(qint64 playerId)
{
    const QString what = QStringLiteral("Cannot read whether the player is on the club page");
    if (!clubUsable(what))
        return std::nullopt;
    QSqlQuery query(connection());
    query.prepare(QStringLiteral("SELECT 1 FROM clubhidden WHERE players_id = ?"));
    query.addBindValue(playerId);
    if (!exec(query, what))
        return std::nullopt;
    return query.next();
}

bool StatsStore::setHiddenFromClub(qint64 playerId, bool hidden)
{
    const QString what = QStringLiteral("Cannot change whether the player is on the club page");
    if (!clubUsable(what))
        return false;
    QSqlQuery query(connection());
    query.prepare(hidden ? QStringLiteral("INSERT INTO clubhidden (players_id) VALUES (?) ON CONFLICT DO NOTHING")
                         : QStringLiteral("DELETE FROM clubhidden WHERE players_id = ?"));
    query.addBindValue(playerId);
    return exec(query, what);
}

} // namespace tavrix
