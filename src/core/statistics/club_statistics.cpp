#include "core/statistics/club_statistics.h"

#include <algorithm>
#include <iterator>

namespace tavrix {

std::vector<ClubLine> clubLines(std::vector<ClubPlayerRows> players, std::optional<qint64> since)
{
    std::vector<ClubLine> lines;
    lines.reserve(players.size());
    for (ClubPlayerRows &player : players) {
        PlayerStatistics statistics = playerStatistics(std::move(player.rows), since);
        const X01Statistics &x01 = statistics.x01;
        ClubLine line{player.playerId, player.name, x01.games, {}, {}, statisticsTexts(statistics), {}};
        if (x01.darts > 0)
            line.average = 3.0 * double(x01.points) / double(x01.darts);
        if (x01.finishDarts > 0)
            line.checkoutRate = 100.0 * double(x01.checkouts) / double(x01.finishDarts);
        std::copy_if(statistics.drills.begin(), statistics.drills.end(), std::back_inserter(line.drills),
                     [](const DrillHistory &drill) { return drill.best.has_value(); });
        lines.push_back(std::move(line));
    }
    return lines;
}

std::vector<ClubDrill> clubDrills(const std::vector<ClubLine> &lines)
{
    std::vector<ClubDrill> drills;
    for (const ClubLine &line : lines) {
        for (const DrillHistory &drill : line.drills)
            drills.push_back({drill.kind, drill.targetNumber});
    }
    std::sort(drills.begin(), drills.end());
    drills.erase(std::unique(drills.begin(), drills.end()), drills.end());
    return drills;
}

std::optional<int> clubBest(const ClubLine &line, const ClubDrill &drill)
{
    for (const DrillHistory &history : line.drills) {
        if (ClubDrill{history.kind, history.targetNumber} == drill)
            return history.best;
    }
    return std::nullopt;
}

} // namespace tavrix
