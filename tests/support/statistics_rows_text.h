#pragma once

// The statistics rows as lines of their kind and numbers, so two reads of
// them compare line by line; a missing time is -1.

#include "core/stats/statistics_rows.h"

#include <QStringList>

#include <initializer_list>

inline QString rowLine(const char *kind, std::initializer_list<qint64> numbers)
{
    QStringList words{QString::fromLatin1(kind)};
    for (const qint64 number : numbers)
        words << QString::number(number);
    return words.join(QLatin1Char(' '));
}

inline QStringList rowsText(const tavrix::StatisticsRows &rows)
{
    using namespace tavrix;
    const auto at = [](const std::optional<qint64> &seconds) { return seconds.value_or(-1); };
    QStringList out;
    for (const StatsGame &g : rows.games)
        out << rowLine("game", {g.id, at(g.playedAt), int(g.type), int(g.end), g.throws, g.points, g.outSet});
    for (const StatsGameDart &d : rows.gameDarts)
        out << rowLine("gameDart", {d.gameId, d.setSeq, d.dartSeq, d.score, d.ring, d.targetScore, d.targetRing});
    for (const StatsPracticeSet &s : rows.practiceSets)
        out << rowLine("set", {s.id, at(s.openedAt), s.targetValue, s.targetRing});
    for (const StatsPracticeDart &d : rows.practiceDarts)
        out << rowLine("practiceDart", {d.setId, d.score, d.ring});
    for (const DrillRow &d : rows.drills)
        out << rowLine("drill", {d.id, d.kind, d.targetNumber, at(d.startedAt), at(d.endedAt), d.score, d.completed,
                                 d.quit});
    for (const StatsDrillDart &d : rows.drillDoubleDarts)
        out << rowLine("drillDart", {at(d.thrownAt), d.score, d.ring, d.targetScore, d.targetRing});
    for (const StatsMatch &m : rows.matches)
        out << rowLine("match", {m.id, int(m.type), at(m.endedAt), int(m.result), m.playerPoints, m.playerDarts,
                                 m.opponentPoints, m.opponentDarts});
    return out;
}
