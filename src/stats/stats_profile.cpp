// Queries over the player's recorded darts: the quarters of the distances
// behind the "You" profile and the count of darts aimed at each area.

#include "stats/stats_store.h"

#include <QVariant>

namespace tavrix {

namespace {

// Every distinct distance the player has recorded, in games and in practice.
// Two placeholders, both the player's id.
const QString playerDistances = QStringLiteral(
    "SELECT dist FROM gamesdarts WHERE players_id = ?"
    " UNION SELECT dist FROM statsthrows WHERE players_id = ?");

double valueOrZero(const QSqlQuery &query, int column)
{
    return query.value(column).isNull() ? 0.0 : query.value(column).toDouble();
}

} // namespace

std::optional<DistanceQuarters> StatsStore::distanceQuarters(qint64 playerId, qint64 minSamples)
{
    // Runs one statement over the distances: the player's id goes to both
    // halves of the union, then the extra values in order.
    auto run = [&](QSqlQuery &query, const QString &statement, std::initializer_list<QVariant> extra) {
        query.prepare(statement);
        query.addBindValue(playerId);
        query.addBindValue(playerId);
        for (const QVariant &value : extra)
            query.addBindValue(value);
        return exec(query, QStringLiteral("Cannot read the player's distances")) && query.next();
    };

    DistanceQuarters quarters;
    QSqlQuery query(connection());
    if (!run(query, QStringLiteral("SELECT count(dist), avg(dist) FROM (") + playerDistances
                        + QStringLiteral(")"),
             {}))
        return std::nullopt;
    quarters.sampleCount = query.value(0).toLongLong();
    quarters.average = valueOrZero(query, 1);
    if (quarters.sampleCount < minSamples)
        return quarters;

    // A quarter and a half of the ordered distances, rounded up.
    const qint64 quarter = (quarters.sampleCount + 3) / 4;
    const qint64 half = (quarters.sampleCount + 1) / 2;
    const QString closest = QStringLiteral(" ORDER BY dist LIMIT ?)");
    const QString farthest = QStringLiteral(" ORDER BY dist DESC LIMIT ?)");

    if (!run(query, QStringLiteral("SELECT max(dist) FROM (") + playerDistances + closest, {quarter}))
        return std::nullopt;
    quarters.tightestMax = valueOrZero(query, 0);

    if (!run(query,
             QStringLiteral("SELECT min(dist), max(dist) FROM (") + playerDistances + closest
                 + QStringLiteral(" WHERE dist > ?"),
             {half, quarters.tightestMax}))
        return std::nullopt;
    quarters.secondMin = valueOrZero(query, 0);
    quarters.secondMax = valueOrZero(query, 1);

    if (!run(query, QStringLiteral("SELECT min(dist), max(dist) FROM (") + playerDistances + farthest,
             {quarter}))
        return std::nullopt;
    quarters.widestMin = valueOrZero(query, 0);
    quarters.widestMax = valueOrZero(query, 1);

    if (!run(query,
             QStringLiteral("SELECT min(dist), max(dist) FROM (") + playerDistances + farthest
                 + QStringLiteral(" WHERE dist < ?"),
             {half, quarters.widestMin}))
        return std::nullopt;
    quarters.thirdMin = valueOrZero(query, 0);
    quarters.thirdMax = valueOrZero(query, 1);

    const double wildLimit = 3 * quarters.average;
    query.prepare(QStringLiteral("SELECT count(dist) FROM ("
                                 "SELECT dist FROM gamesdarts WHERE dist > ? AND players_id = ?"
                                 " UNION SELECT dist FROM statsthrows WHERE dist > ? AND players_id = ?)"));
    for (const QVariant &value : {QVariant(wildLimit), QVariant(playerId), QVariant(wildLimit),
                                  QVariant(playerId)})
        query.addBindValue(value);
    if (!exec(query, QStringLiteral("Cannot read the player's distances")) || !query.next())
        return std::nullopt;
    quarters.wildCount = query.value(0).toLongLong();
    return quarters;
}

std::optional<TargetCounts> StatsStore::targetCounts(qint64 playerId)
{
    TargetCounts counts{};
    const QString statements[] = {
        QStringLiteral("SELECT ta.targetRing, ta.targetValue, count(*)"
                       " FROM statsthrows th JOIN statstargets ta ON th.statstargets_id = ta.id"
                       " WHERE ta.players_id = ? GROUP BY ta.targetRing, ta.targetValue"),
        QStringLiteral("SELECT targetring, targetscore, count(*) FROM gamesdarts"
                       " WHERE players_id = ? GROUP BY targetring, targetscore"),
    };
    for (const QString &statement : statements) {
        QSqlQuery query(connection());
        query.prepare(statement);
        query.addBindValue(playerId);
        if (!exec(query, QStringLiteral("Cannot count the darts per target")))
            return std::nullopt;
        while (query.next()) {
            const int ring = query.value(0).toInt();
            const int value = query.value(1).toInt();
            const int target = value == 25 ? 0 : 21 - value;
            // Only the areas review mode shows: rings 1 to 3 of the bull and 1..20.
            if (ring < 1 || ring > 3 || (value != 25 && (value < 1 || value > 20)))
                continue;
            counts[ring - 1][target] += query.value(2).toLongLong();
        }
    }
    return counts;
}

} // namespace tavrix
