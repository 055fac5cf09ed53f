// The player's record against one kind of opponent, read from `games`.

#include "core/stats/stats_store.h"

#include <QSqlQuery>
#include <QVariant>

namespace tavrix {

std::optional<GameRecordFigures> StatsStore::gameRecord(qint64 playerId, GameType gameType, SkillLevel skill)
{
    // One pass over the player's games of this type and skill, read from the
    // games_record index alone: counts, fewest darts in a win, best finish.
    QSqlQuery *const query = prepared(
        QStringLiteral("gamerecord"),
        QStringLiteral("SELECT count(CASE WHEN result = 'W' THEN 1 END),"
                       " count(CASE WHEN result = 'L' THEN 1 END),"
                       " min(CASE WHEN result = 'W' THEN throws END), max(outset)"
                       " FROM games WHERE players_id = ? AND gametype = ? AND skill = ?"));
    if (!query)
        return std::nullopt;
    query->addBindValue(playerId);
    query->addBindValue(code(gameType));
    query->addBindValue(code(skill));
    if (!exec(*query, QStringLiteral("Cannot read the game record")) || !query->next())
        return std::nullopt;
    GameRecordFigures figures;
    figures.wins = query->value(0).toInt();
    figures.losses = query->value(1).toInt();
    if (isX01(gameType) && figures.wins + figures.losses > 0) {
        if (!query->value(2).isNull())
            figures.bestLeg = query->value(2).toInt();
        figures.bestOut = query->value(3).toInt();
    }
    query->finish();
    return figures;
}

} // namespace tavrix
