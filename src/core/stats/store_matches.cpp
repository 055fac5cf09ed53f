// The matches of legs: a row per match, a link row per leg naming its game,
// and the match's end with its score and figures.

#include "core/stats/stats_store.h"

#include "core/stats/sqlite_handle.h"
#include "core/stats/store_dialect.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

#include <sqlite3.h>

namespace tavrix {

namespace {

// The values of a match's row as it starts, in the order of the columns
// players_id, gametype, skill, opponent, kind, sets, legs, startdate.
QVariantList startValues(const NewMatch &match)
{
    return {QVariant(match.playerId), QVariant(code(match.gameType)), QVariant(code(match.skill)),
            QVariant(match.opponent.isNull() ? QStringLiteral("") : match.opponent), QVariant(match.kind),
            QVariant(match.sets), QVariant(match.legs), QVariant(storedDateTimeNow())};
}

} // namespace

bool StatsStore::holdsMatchTables()
{
    if (!isOpen())
        return false;
    QSqlDatabase db = connection();
    return dialect().holdsTable(db, "matches") && dialect().holdsTable(db, "matchlegs");
}

bool StatsStore::matchesWritable(const QString &what)
{
    return newerTablesWritable(what, &StatsStore::holdsMatchTables, QStringLiteral("matches"));
}

std::optional<qint64> StatsStore::insertMatch(const NewMatch &match)
{
    const QString what = QStringLiteral("Cannot record the new match");
    if (!matchesWritable(what))
        return std::nullopt;
    QSqlQuery *const query =
        prepared(QStringLiteral("match"),
                 QStringLiteral("INSERT INTO matches (players_id, gametype, skill, opponent, kind, sets, legs,"
                                " startdate, enddate, result) VALUES (?, ?, ?, ?, ?, ?, ?, ?, NULL, '') RETURNING id"));
    if (!query)
        return std::nullopt;
    for (const QVariant &value : startValues(match))
        query->addBindValue(value);
    return execInsert(*query, what, QStringLiteral("match"));
}

bool StatsStore::insertMatchLeg(const MatchLeg &leg)
{
    const QString what = QStringLiteral("Cannot record the leg of the match");
    if (!matchesWritable(what))
        return false;
    QSqlQuery *const query = prepared(
        QStringLiteral("matchleg"),
        QStringLiteral("INSERT INTO matchlegs (matches_id, games_id, setno, legno, firstthrower)"
                       " VALUES (?, ?, ?, ?, ?)"));
    if (!query)
        return false;
    for (const QVariant &value : {QVariant(leg.matchId), QVariant(leg.gameId), QVariant(leg.set), QVariant(leg.leg),
                                  QVariant(leg.firstThrower)})
        query->addBindValue(value);
    return exec(*query, what);
}

bool StatsStore::finishMatch(qint64 matchId, const MatchEnd &end)
{
    const QString what = QStringLiteral("Cannot record the end of the match");
    if (!matchesWritable(what))
        return false;
    // The statistics tell a match by these three; anything else would count
    // as neither played nor abandoned.
    if (end.result != QLatin1String("W") && end.result != QLatin1String("L") && end.result != QLatin1String("A"))
        return fail(what, QStringLiteral("its result \"%1\" is none of W, L and A").arg(end.result));
    QSqlQuery query(connection());
    query.prepare(QStringLiteral("UPDATE matches SET enddate = ?, result = ?, playerlegs = ?, opponentlegs = ?,"
                                 " playersets = ?, opponentsets = ?, playerpoints = ?, playerdarts = ?,"
                                 " opponentpoints = ?, opponentdarts = ? WHERE id = ?"));
    for (const QVariant &value :
         {QVariant(storedDateTimeNow()), QVariant(end.result), QVariant(end.playerLegs), QVariant(end.opponentLegs),
          QVariant(end.playerSets), QVariant(end.opponentSets), QVariant(end.playerPoints), QVariant(end.playerDarts),
          QVariant(end.opponentPoints), QVariant(end.opponentDarts), QVariant(matchId)})
        query.addBindValue(value);
    return execUpdate(query, what, QStringLiteral("match"), matchId);
}

bool StatsStore::restoreMatch(qint64 matchId, const NewMatch &match)
{
    const QString what = QStringLiteral("Cannot record the match");
    if (!matchesWritable(what))
        return false;
    QSqlQuery query(connection());
    query.prepare(QStringLiteral("INSERT INTO matches (id, players_id, gametype, skill, opponent, kind,"
                                 " sets, legs, startdate, enddate, result)"
                                 " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, NULL, '') ON CONFLICT DO NOTHING"));
    query.addBindValue(matchId);
    for (const QVariant &value : startValues(match))
        query.addBindValue(value);
    return execGivenId(query, what, "matches");
}

} // namespace tavrix
