// Queries over the player's recorded darts: the quarters of the distances
// behind the "You" profile and the count of darts aimed at each area. Both
// read every dart of the player, so each result is kept until the database
// changes.

#include "core/stats/sqlite_store.h"

#include "core/stats/distance_quarters.h"

#include <QSqlQuery>
#include <QVariant>

namespace tavrix {

namespace {

// The player's distances from both dart tables, as one read.
std::optional<PlayerDistances> readDistances(QSqlQuery &query, qint64 playerId)
{
    query.setForwardOnly(true);
    query.prepare(QStringLiteral("SELECT dist FROM gamesdarts WHERE players_id = ?"
                                 " UNION ALL SELECT dist FROM statsthrows WHERE players_id = ?"));
    query.addBindValue(playerId);
    query.addBindValue(playerId);
    if (!query.exec())
        return std::nullopt;
    PlayerDistances distances;
    while (query.next()) {
        const QVariant value = query.value(0);
        if (value.isNull())
            distances.hasNull = true;
        else
            distances.values.push_back(value.toDouble());
    }
    return distances;
}

} // namespace

bool SqliteStore::readAimedDarts(qint64 playerId, const AimedDartTaker &take)
{
    // Practice darts by their set's target, then game darts by their own;
    // no order is asked for, so each table is read as it lies.
    const std::pair<const char *, const char *> statements[] = {
        {"aimedPractice",
         "SELECT ta.targetValue, ta.targetRing, th.x, th.y"
         " FROM statstargets ta JOIN statsthrows th ON th.statstargets_id = ta.id WHERE +ta.players_id = ?"},
        {"aimedGame", "SELECT targetscore, targetring, x, y FROM gamesdarts WHERE players_id = ?"},
    };
    ++playerReads_;
    for (const auto &[key, statement] : statements) {
        QSqlQuery *const query = prepared(QString::fromLatin1(key), QString::fromLatin1(statement));
        if (!query)
            return false;
        query->setForwardOnly(true);
        query->addBindValue(playerId);
        if (!exec(*query, QStringLiteral("Cannot read the player's darts")))
            return false;
        while (query->next())
            take(query->value(0).toInt(), query->value(1).toInt(), query->value(2).toDouble(),
                 query->value(3).toDouble());
        query->finish();
    }
    return true;
}

std::optional<SqliteStore::ChangeStamp> SqliteStore::changeStamp()
{
    QSqlQuery query(connection());
    query.prepare(QStringLiteral("SELECT data_version, total_changes() FROM pragma_data_version"));
    if (!exec(query, QStringLiteral("Cannot read the statistics")) || !query.next())
        return std::nullopt;
    return ChangeStamp{query.value(0).toLongLong(), query.value(1).toLongLong()};
}

std::optional<DistanceQuarters> SqliteStore::distanceQuarters(qint64 playerId, qint64 minSamples)
{
    const std::optional<ChangeStamp> stamp = changeStamp();
    if (!stamp)
        return std::nullopt;
    if (quartersMemo_ && quartersMemo_->stamp == *stamp && quartersMemo_->playerId == playerId
        && quartersMemo_->minSamples == minSamples)
        return quartersMemo_->quarters;

    QSqlQuery query(connection());
    ++playerReads_;
    const std::optional<PlayerDistances> distances = readDistances(query, playerId);
    if (!distances) {
        fail(QStringLiteral("Cannot read the player's distances"), query);
        return std::nullopt;
    }
    const DistanceQuarters quarters = distanceQuartersOf(*distances, minSamples);
    quartersMemo_ = QuartersMemo{*stamp, playerId, minSamples, quarters};
    return quarters;
}

std::optional<TargetCounts> SqliteStore::targetCounts(qint64 playerId)
{
    const std::optional<ChangeStamp> stamp = changeStamp();
    if (!stamp)
        return std::nullopt;
    if (countsMemo_ && countsMemo_->stamp == *stamp && countsMemo_->playerId == playerId)
        return countsMemo_->counts;

    TargetCounts counts{};
    const QString statements[] = {
        QStringLiteral("SELECT ta.targetRing, ta.targetValue, count(*)"
                       " FROM statsthrows th JOIN statstargets ta ON th.statstargets_id = ta.id"
                       " WHERE ta.players_id = ? GROUP BY ta.targetRing, ta.targetValue"),
        QStringLiteral("SELECT targetring, targetscore, count(*) FROM gamesdarts"
                       " WHERE players_id = ? GROUP BY targetring, targetscore"),
    };
    ++playerReads_;
    for (const QString &statement : statements) {
        QSqlQuery query(connection());
        query.setForwardOnly(true);
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
    countsMemo_ = CountsMemo{*stamp, playerId, counts};
    return counts;
}

std::optional<PlayerDistances> SqliteStore::playerDistances(qint64 playerId)
{
    QSqlQuery query(connection());
    std::optional<PlayerDistances> distances = readDistances(query, playerId);
    if (!distances)
        fail(QStringLiteral("Cannot read the player's distances"), query);
    return distances;
}

} // namespace tavrix
