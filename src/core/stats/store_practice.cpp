// The practice darts as the running totals read them, and the sums kept of
// them.

#include "core/stats/stats_store.h"

#include <QSqlQuery>
#include <QVariant>

#include <cmath>

namespace tavrix {

namespace {

// A whole number as stored (20 and 20.0 alike, as SQLite compares them), or
// unreadableValue for an empty field, text or a fraction.
int wholeNumber(const QVariant &value)
{
    double number = 0;
    if (value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Int)
        number = double(value.toLongLong());
    else if (value.typeId() == QMetaType::Double)
        number = value.toDouble();
    else
        return unreadableValue;
    if (!(number > std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max())
        || number != std::trunc(number))
        return unreadableValue;
    return static_cast<int>(number);
}

} // namespace

std::optional<PracticeSums> StatsStore::keptPracticeSums(qint64 playerId)
{
    QSqlQuery query(connection());
    query.prepare(QStringLiteral(
        "SELECT lasttarget, distcount, distsum FROM practicesums WHERE players_id = ?"));
    query.addBindValue(playerId);
    // Sums that cannot be read are built again from the darts.
    if (!query.exec() || !query.next())
        return std::nullopt;
    PracticeSums sums;
    sums.lastTarget = query.value(0).toLongLong();
    sums.distCount = query.value(1).toLongLong();
    sums.distSum = query.value(2).toDouble();

    query.prepare(QStringLiteral("SELECT targetValue, targetRing, throws, hits, distcount, distsum"
                                 " FROM practicetargetsums WHERE players_id = ?"));
    query.addBindValue(playerId);
    if (!query.exec())
        return std::nullopt;
    while (query.next()) {
        const std::pair<int, int> key{wholeNumber(query.value(0)), wholeNumber(query.value(1))};
        sums.targets[key] = {query.value(2).toLongLong(), query.value(3).toLongLong(),
                             query.value(4).toLongLong(), query.value(5).toDouble()};
    }
    return sums;
}

bool StatsStore::keepPracticeSums(qint64 playerId, const PracticeSums &sums)
{
    if (!writable(QStringLiteral("Cannot keep the practice totals")))
        return false;
    QSqlQuery query(connection());
    query.prepare(QStringLiteral("DELETE FROM practicetargetsums WHERE players_id = ?"));
    query.addBindValue(playerId);
    if (!exec(query, QStringLiteral("Cannot keep the practice totals")))
        return false;
    // The player's figures are written with each target's, and once more for
    // a player without darts.
    if (sums.targets.empty())
        return keepPracticeSums(playerId, sums, {unreadableValue, unreadableValue});
    for (const auto &entry : sums.targets) {
        if (!keepPracticeSums(playerId, sums, entry.first))
            return false;
    }
    return true;
}

bool StatsStore::keepPracticeSums(qint64 playerId, const PracticeSums &sums, std::pair<int, int> target)
{
    const QString what = QStringLiteral("Cannot keep the practice totals");
    QSqlQuery *query = prepared(QStringLiteral("practicesums"),
                                QStringLiteral("INSERT INTO practicesums (players_id, lasttarget, distcount, distsum)"
                                               " VALUES (?, ?, ?, ?) ON CONFLICT (players_id) DO UPDATE"
                                               " SET lasttarget = excluded.lasttarget,"
                                               " distcount = excluded.distcount, distsum = excluded.distsum"));
    if (!query)
        return false;
    query->addBindValue(playerId);
    query->addBindValue(sums.lastTarget);
    query->addBindValue(sums.distCount);
    query->addBindValue(sums.distSum);
    if (!exec(*query, what))
        return false;

    query = prepared(QStringLiteral("practicetargetsums-remove"),
                     QStringLiteral("DELETE FROM practicetargetsums"
                                    " WHERE players_id = ? AND targetValue = ? AND targetRing = ?"));
    if (!query)
        return false;
    query->addBindValue(playerId);
    query->addBindValue(target.first);
    query->addBindValue(target.second);
    if (!exec(*query, what))
        return false;
    const auto tally = sums.targets.find(target);
    if (tally == sums.targets.end())
        return true;
    query = prepared(QStringLiteral("practicetargetsums-add"),
                     QStringLiteral("INSERT INTO practicetargetsums (players_id, targetValue,"
                                    " targetRing, throws, hits, distcount, distsum)"
                                    " VALUES (?, ?, ?, ?, ?, ?, ?)"));
    if (!query)
        return false;
    query->addBindValue(playerId);
    query->addBindValue(target.first);
    query->addBindValue(target.second);
    query->addBindValue(tally->second.throws);
    query->addBindValue(tally->second.hits);
    query->addBindValue(tally->second.distCount);
    query->addBindValue(tally->second.distSum);
    return exec(*query, what);
}

bool StatsStore::readPracticeDarts(qint64 playerId,
                                   const PracticeDartTaker &take)
{
    QSqlQuery query(connection());
    query.setForwardOnly(true);
    query.prepare(QStringLiteral(
        "SELECT ta.id, ta.targetValue, ta.targetRing, th.players_id, th.x, th.y, th.score, th.ring"
        " FROM statstargets ta JOIN statsthrows th ON th.statstargets_id = ta.id"
        // Targets in id order straight from the table, each with its darts in
        // id order from the index: the order asked for, without sorting.
        " WHERE +ta.players_id = ? ORDER BY ta.id, th.id"));
    query.addBindValue(playerId);
    ++playerReads_;
    if (!exec(query, QStringLiteral("Cannot read the practice darts")))
        return false;
    PracticeDart dart;
    while (query.next()) {
        dart.targetId = query.value(0).toLongLong();
        dart.playerId = query.value(3).toLongLong();
        dart.x = query.value(4).toDouble();
        dart.y = query.value(5).toDouble();
        dart.score = wholeNumber(query.value(6));
        dart.ring = wholeNumber(query.value(7));
        take(wholeNumber(query.value(1)), wholeNumber(query.value(2)), dart);
    }
    return true;
}

} // namespace tavrix
