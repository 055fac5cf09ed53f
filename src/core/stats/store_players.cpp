// The players table: listing, looking up, renaming and deleting players.

#include "core/stats/stats_store.h"

#include "core/stats/sqlite_handle.h"

#include <QSqlQuery>
#include <QVariant>

namespace tavrix {

std::optional<int> StatsStore::playerCount()
{
    QSqlQuery query(connection());
    query.prepare(QStringLiteral("SELECT count(*) FROM players"));
    if (!exec(query, QStringLiteral("Cannot count the players")) || !query.next())
        return std::nullopt;
    return query.value(0).toInt();
}

std::optional<QList<PlayerRow>> StatsStore::players()
{
    QSqlQuery query(connection());
    query.prepare(QStringLiteral("SELECT id, name FROM players ORDER BY id"));
    if (!exec(query, QStringLiteral("Cannot read the players")))
        return std::nullopt;
    QList<PlayerRow> rows;
    while (query.next())
        rows.append({query.value(0).toLongLong(), query.value(1).toString()});
    return rows;
}

std::optional<qint64> StatsStore::playerIdByName(const QString &name)
{
    QSqlQuery *const query =
        prepared(QStringLiteral("playerid"), QStringLiteral("SELECT id FROM players WHERE name = ?"));
    if (!query)
        return {};
    query->addBindValue(name);
    if (!exec(*query, QStringLiteral("Cannot look up the player")))
        return std::nullopt;
    std::optional<qint64> id;
    if (query->next())
        id = query->value(0).toLongLong();
    query->finish();
    return id;
}

std::optional<QString> StatsStore::playerName(qint64 playerId)
{
    QSqlQuery *const query = prepared(QStringLiteral("playername"),
                                      QStringLiteral("SELECT name FROM players WHERE id = ?"));
    if (!query)
        return {};
    query->addBindValue(playerId);
    if (!exec(*query, QStringLiteral("Cannot look up the player")))
        return std::nullopt;
    std::optional<QString> name;
    if (query->next())
        name = query->value(0).toString();
    query->finish();
    return name;
}

bool StatsStore::renamePlayer(qint64 playerId, const QString &name)
{
    if (!writable(QStringLiteral("Cannot rename the player")))
        return false;
    QSqlQuery query(connection());
    query.prepare(QStringLiteral("UPDATE players SET name = ? WHERE id = ?"));
    query.addBindValue(name);
    query.addBindValue(playerId);
    return exec(query, QStringLiteral("Cannot rename the player"));
}

bool StatsStore::deletePlayer(qint64 playerId)
{
    // The player's games (and matches) stay, as before; the drills go with
    // the practice.
    std::vector<const char *> statements{"DELETE FROM statsthrows WHERE players_id = ?",
                                         "DELETE FROM statstargets WHERE players_id = ?"};
    if (holdsDrillTables())
        statements.insert(statements.end(), std::begin(deleteDrillsStatements), std::end(deleteDrillsStatements));
    if (server_)
        statements.push_back("DELETE FROM clubcopies WHERE players_id = ?");
    statements.push_back("DELETE FROM players WHERE id = ?");
    return runForPlayer(statements, playerId, QStringLiteral("Cannot delete the player"));
}

} // namespace tavrix
