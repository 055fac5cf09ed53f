#include "core/statistics/match_statistics.h"

namespace tavrix {

MatchStatistics matchStatistics(const std::vector<StatsMatch> &matches, std::optional<qint64> since)
{
    MatchStatistics out;
    for (const StatsMatch &match : matches) {
        // A result no version of the program writes counts nowhere.
        if (match.result == MatchResult::Other)
            continue;
        out.anyEver = true;
        if (!inPeriod(match.endedAt, since))
            continue;
        if (match.result == MatchResult::Abandoned) {
            ++out.abandoned;
            continue;
        }
        ++(match.result == MatchResult::Won ? out.won : out.lost);
        if (isX01(match.type)) {
            out.playerPoints += match.playerPoints;
            out.playerDarts += match.playerDarts;
            out.opponentPoints += match.opponentPoints;
            out.opponentDarts += match.opponentDarts;
        }
    }
    return out;
}

} // namespace tavrix
