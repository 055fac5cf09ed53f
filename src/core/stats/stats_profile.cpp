// Queries over the player's recorded darts: the quarters of the distances
// behind the "You" profile and the count of darts aimed at each area. Both
// read every dart of the player, so each result is kept until the database
// changes.

#include "core/stats/stats_store.h"

#include <QVariant>

#include <algorithm>

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

DistanceQuarters distanceQuartersOf(PlayerDistances distances, qint64 minSamples)
{
    // The profile counts each distinct distance once, in increasing order.
    std::vector<double> &v = distances.values;
    std::sort(v.begin(), v.end());
    v.erase(std::unique(v.begin(), v.end()), v.end());
    const qint64 n = static_cast<qint64>(v.size());

    DistanceQuarters quarters;
    quarters.sampleCount = n;
    double sum = 0;
    for (double d : v)
        sum += d;
    quarters.average = n > 0 ? sum / double(n) : 0.0;
    if (n < minSamples || n == 0)
        return quarters;

    // A quarter and a half of the ordered distances, rounded up. An empty
    // distance sorts first and takes a place among the closest ones.
    const qint64 quarter = (n + 3) / 4;
    const qint64 half = (n + 1) / 2;
    const qint64 gap = distances.hasNull ? 1 : 0;
    const qint64 closestQuarter = std::max<qint64>(0, quarter - gap);
    const qint64 closestHalf = std::max<qint64>(0, half - gap);

    quarters.tightestMax = closestQuarter > 0 ? v[closestQuarter - 1] : 0.0;
    // The rest of the closest half, beyond the tightest quarter.
    const auto secondBegin = std::upper_bound(v.begin(), v.begin() + closestHalf, quarters.tightestMax);
    if (secondBegin != v.begin() + closestHalf) {
        quarters.secondMin = *secondBegin;
        quarters.secondMax = v[closestHalf - 1];
    }
    quarters.widestMin = v[n - quarter];
    quarters.widestMax = v[n - 1];
    // The rest of the farthest half, short of the widest quarter.
    const auto farHalf = v.begin() + (n - half);
    const auto thirdEnd = std::lower_bound(farHalf, v.end(), quarters.widestMin);
    if (thirdEnd != farHalf) {
        quarters.thirdMin = *farHalf;
        quarters.thirdMax = *(thirdEnd - 1);
    }
    const double wildLimit = 3 * quarters.average;
    quarters.wildCount = v.end() - std::upper_bound(v.begin(), v.end(), wildLimit);
    return quarters;
}

std::optional<ChangeStamp> StatsStore::changeStamp()
{
    QSqlQuery query(connection());
    query.prepare(QStringLiteral("SELECT data_version, total_changes() FROM pragma_data_version"));
    if (!exec(query, QStringLiteral("Cannot read the statistics")) || !query.next())
        return std::nullopt;
    return ChangeStamp{query.value(0).toLongLong(), query.value(1).toLongLong()};
}

std::optional<DistanceQuarters> StatsStore::distanceQuarters(qint64 playerId, qint64 minSamples)
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

std::optional<TargetCounts> StatsStore::targetCounts(qint64 playerId)
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

std::optional<PlayerDistances> StatsStore::playerDistances(qint64 playerId)
{
    QSqlQuery query(connection());
    std::optional<PlayerDistances> distances = readDistances(query, playerId);
    if (!distances)
        fail(QStringLiteral("Cannot read the player's distances"), query);
    return distances;
}

} // namespace tavrix
