// The darts review mode plots for one scoring area: the practice darts of
// every practice set aimed at it and the game darts aimed at it.

#include "core/stats/stats_store.h"

#include "core/stats/store_dialect.h"

#include <QSqlQuery>
#include <QVariant>

namespace tavrix {

namespace {

// Reads x, y, score and ring of every row the query returns.
void readDarts(QSqlQuery &query, std::vector<AreaDart> &darts)
{
    while (query.next()) {
        darts.push_back({query.value(0).toDouble(), query.value(1).toDouble(), query.value(2).toInt(),
                         query.value(3).toInt()});
    }
    query.finish();
}

} // namespace

std::optional<AreaDarts> StatsStore::areaDarts(qint64 playerId, int targetValue,
                                                           int targetRing)
{
    // One join rather than a query per practice set; the player's targets
    // come from their index in id order and each set's darts from theirs.
    const std::pair<const char *, QString> statements[] = {
        {"areaPractice",
         QStringLiteral("SELECT th.x, th.y, th.score, th.ring"
                        " FROM statstargets ta JOIN statsthrows th ON th.statstargets_id = ta.id"
                        " WHERE ta.players_id = ? AND ta.targetValue = ? AND ta.targetRing = ?"
                        " ORDER BY ta.id, th.id")},
        {"areaGame",
         QStringLiteral("SELECT x, y, score, ring FROM gamesdarts"
                        " WHERE players_id = ? AND targetscore = ? AND targetring = ? ORDER BY ")
             + dialect().writeOrder()},
    };
    AreaDarts darts;
    std::vector<AreaDart> *const lists[] = {&darts.practice, &darts.game};
    for (int i = 0; i < 2; ++i) {
        QSqlQuery *const query = prepared(QString::fromLatin1(statements[i].first), statements[i].second);
        if (!query)
            return std::nullopt;
        query->setForwardOnly(true);
        query->addBindValue(playerId);
        query->addBindValue(targetValue);
        query->addBindValue(targetRing);
        if (!exec(*query, QStringLiteral("Cannot read the darts aimed at the area")))
            return std::nullopt;
        readDarts(*query, *lists[i]);
    }
    return darts;
}

} // namespace tavrix
