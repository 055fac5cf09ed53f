// Queries over the player's recorded darts: the quarters of the distances
// behind the "You" profile and the count of darts aimed at each area. Both
// read every dart of the player, so each result is kept until the database
// changes.

#include "core/stats/stats_store.h"

#include "core/stats/distance_quarters.h"
#include "core/stats/sqlite_row.h"
#include "core/stats/sqlite_schema.h"
#include "core/stats/store_dialect.h"
#include "core/stats/store_rows.h"

#include <QSqlDriver>
#include <QSqlQuery>
#include <QVariant>

#include <sqlite3.h>

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

sqlite3 *sqliteHandle(const QSqlDatabase &connection)
{
    const QVariant handle = connection.driver() ? connection.driver()->handle() : QVariant();
    if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0)
        return nullptr;
    return *static_cast<sqlite3 *const *>(handle.constData());
}

bool StatsStore::readAimedDarts(qint64 playerId, const AimedDartTaker &take)
{
    ++playerReads_;
    // A million rows through Qt's values cost two and a half times the
    // plain read of the distances; SQLite's own calls on the same
    // connection read them in less than the plain read takes. A server's
    // connection has no SQLite handle and reads through Qt SQL.
    const QString what = QStringLiteral("Cannot read the player's darts");
    QSqlDatabase db = connection();
    sqlite3 *const handle = sqliteHandle(db);
    if (!handle) {
        QSqlError error;
        return readAimedDartRows(db, dialect(), playerId, take, error)
               || fail(what, dialect().describeError(error, databasePath()));
    }
    const auto read = [&](const char *text) {
        const int code = readRows(handle, text, playerId, [&](const SqliteRow &row) { takeAimedDart(row, take); });
        if (code != SQLITE_DONE)
            fail(what, QString::fromUtf8(sqlite3_errmsg(handle)));
        return code == SQLITE_DONE;
    };
    return read(aimedDartsStatement)
           && (!dialect().holdsTable(db, "drilldarts") || read(aimedDrillDartsStatement));
}

std::optional<StatsStore::ChangeStamp> StatsStore::changeStamp()
{
    if (!reachServer(QStringLiteral("Cannot read the statistics")))
        return std::nullopt;
    if (!isOpen()) {
        fail(QStringLiteral("Cannot read the statistics"), QStringLiteral("the statistics database is not open"));
        return std::nullopt;
    }
    QSqlDatabase db = connection();
    QString error;
    const std::optional<ChangeStamp> stamp = dialect_->changeStamp(db, error);
    if (!stamp)
        fail(QStringLiteral("Cannot read the statistics"), error);
    return stamp;
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
