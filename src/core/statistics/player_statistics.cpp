#include "core/statistics/player_statistics.h"

#include "core/practice/practice_rules.h"
#include "core/training/drill.h"

#include <QStringList>

#include <algorithm>
#include <map>
#include <span>
#include <tuple>
#include <unordered_map>

namespace tavrix {

namespace {

constexpr int bullValue = 25;

// A dart's points as the rules score it: a number 1 to 20 in rings 1 to 3,
// or the bull in ring 1 or 2; anything else (a wire, a miss, a value no
// board has) scores nothing.
int dartPoints(int score, int ring)
{
    if (score >= 1 && score <= 20 && ring >= 1 && ring <= 3)
        return score * ring;
    if (score == bullValue && (ring == 1 || ring == 2))
        return score * ring;
    return 0;
}

bool isDoubleDart(int score, int ring)
{
    return ring == 2 && dartPoints(score, ring) > 0;
}

// One set of a 301/501 game replayed from its kept darts.
struct ReplayedSet {
    int points = 0; // 0 for a bust
    int darts = 0;
    bool bust = false;
};

struct Replay {
    bool matchesRow = false;
    std::vector<ReplayedSet> sets;
    int checkouts = 0;
    qint64 finishDarts = 0;
};

// Replays a game's sets (darts in order, the cork left out) from `start`.
// The options are not stored; they show in the darts: a set that reaches 0
// without a double last wins only as the last set of a won game (single
// out), and busts anywhere else (double out). Double in is tried by the
// caller. The replay matches the game's row when it wins a won game on its
// last set, or leaves a lost game's remainder.
Replay replayX01(std::span<const StatsGameDart> darts, const StatsGame &game, int start, bool doubleIn)
{
    Replay replay;
    const bool won = game.end == GameEnd::Won;
    int remaining = start;
    bool doubledIn = !doubleIn;
    bool wonEarly = false;
    bool wonLast = false;
    std::size_t i = 0;
    while (i < darts.size()) {
        const int setSeq = darts[i].setSeq;
        std::size_t end = i;
        while (end < darts.size() && darts[end].setSeq == setSeq)
            ++end;
        const bool lastSet = end == darts.size();
        if (wonLast)
            wonEarly = true;
        ReplayedSet set;
        int left = remaining;
        bool lastDouble = false;
        bool finishingDartAtFinish = false;
        for (std::size_t d = i; d < end; ++d) {
            ++set.darts;
            const int score = darts[d].score;
            const int ring = darts[d].ring;
            if (!doubledIn && isDoubleDart(score, ring))
                doubledIn = true;
            if (!doubledIn)
                continue;
            // The rules deal with no dart once the score is 1 or less.
            if (left <= 1) {
                replay.matchesRow = false;
                return replay;
            }
            const bool atFinish = oneDartFinish(left);
            if (atFinish)
                ++replay.finishDarts;
            left -= dartPoints(score, ring);
            lastDouble = isDoubleDart(score, ring);
            finishingDartAtFinish = atFinish;
        }
        const bool wins = left == 0 && (lastDouble || (won && lastSet));
        set.bust = !wins && (left < 0 || left == 1 || left == 0);
        if (!set.bust) {
            set.points = remaining - left;
            remaining = left;
        }
        if (wins) {
            wonLast = true;
            if (finishingDartAtFinish)
                ++replay.checkouts;
        }
        replay.sets.push_back(set);
        i = end;
    }
    replay.matchesRow = !wonEarly && (won ? wonLast : !wonLast && start - remaining == game.points);
    return replay;
}

void countX01Game(X01Statistics &x01, const StatsGame &game, std::span<const StatsGameDart> darts)
{
    const int start = game.type == GameType::X01_301 ? 301 : 501;
    ++x01.games;
    if (game.end == GameEnd::Won) {
        ++x01.won;
        if (game.throws > 0)
            x01.bestLeg = std::min(x01.bestLeg.value_or(game.throws), game.throws);
        if (game.outSet > 0 && game.outSet <= 180)
            x01.highOut = std::max(x01.highOut.value_or(0), game.outSet);
    }
    if (game.throws > 0 && game.points >= 0 && game.points <= start) {
        x01.points += game.points;
        x01.darts += game.throws;
    }

    // Kept darts count when they are the darts of the game's row: as many
    // as it counts, adding up to its result.
    std::optional<Replay> replay;
    if (!darts.empty() && qsizetype(darts.size()) == game.throws) {
        for (const bool doubleIn : {false, true}) {
            Replay tried = replayX01(darts, game, start, doubleIn);
            if (tried.matchesRow) {
                replay = std::move(tried);
                break;
            }
        }
    }
    if (!replay) {
        ++x01.gamesWithoutDarts;
        return;
    }
    for (std::size_t s = 0; s < replay->sets.size(); ++s) {
        const ReplayedSet &set = replay->sets[s];
        if (s < 3) {
            x01.firstNinePoints += set.points;
            x01.firstNineDarts += set.darts;
        }
        if (set.points == 180)
            ++x01.tons180;
        else if (set.points >= 140)
            ++x01.tons140;
        else if (set.points >= 100)
            ++x01.tons;
    }
    x01.checkouts += replay->checkouts;
    x01.finishDarts += replay->finishDarts;
}

// Marks of a Cricket dart: its multiplier on 15 to 20 and the bull.
int cricketMarks(int score, int ring)
{
    if ((score >= 15 && score <= 20 && ring >= 1 && ring <= 3) || (score == bullValue && (ring == 1 || ring == 2)))
        return ring;
    return 0;
}

void countCricketGame(CricketStatistics &cricket, const StatsGame &game, std::span<const StatsGameDart> darts)
{
    ++cricket.games;
    if (darts.empty() || qsizetype(darts.size()) != game.throws) {
        ++cricket.gamesWithoutDarts;
        return;
    }
    for (const StatsGameDart &dart : darts)
        cricket.marks += cricketMarks(dart.score, dart.ring);
    cricket.darts += qint64(darts.size());
}

// The double a target stands for (0..19, 20 the bull), or -1.
int doubleIndex(int value, int ring)
{
    if (value == bullValue)
        return 20;
    return ring == 2 && value >= 1 && value <= 20 ? value - 1 : -1;
}

// A game or drill dart by its target: a double's hit is that double, the
// bull's the inner bull.
void countDouble(PlayerStatistics &out, int targetScore, int targetRing, int score, int ring)
{
    const int index = doubleIndex(targetScore, targetRing);
    if (index < 0)
        return;
    ++out.doubles[index].aimed;
    const int value = index == 20 ? bullValue : index + 1;
    if (score == value && ring == 2)
        ++out.doubles[index].hit;
}

void countGameDoubles(PlayerStatistics &out, std::span<const StatsGameDart> darts)
{
    for (const StatsGameDart &dart : darts)
        countDouble(out, dart.targetScore, dart.targetRing, dart.score, dart.ring);
}

void countDrillDoubles(PlayerStatistics &out, const StatisticsRows &rows, const std::optional<qint64> &since)
{
    for (const StatsDrillDart &dart : rows.drillDoubleDarts) {
        if (dart.targetRing == 2 && inPeriod(dart.thrownAt, since))
            countDouble(out, dart.targetScore, dart.targetRing, dart.score, dart.ring);
    }
}

// The drills ended in the period, by kind and target, each kind's in the
// order they ended (those without a readable end first, then by id).
std::vector<DrillHistory> drillHistories(std::vector<DrillRow> drills, const std::optional<qint64> &since)
{
    std::erase_if(drills, [&](const DrillRow &drill) { return !inPeriod(drill.endedAt, since); });
    // Only 99 darts has a target; anything stored with another kind is no
    // kind of its own.
    const auto targetOf = [](const DrillRow &drill) {
        return drill.kind == int(DrillKind::NinetyNineDarts) ? drill.targetNumber : 0;
    };
    const auto key = [&](const DrillRow &drill) {
        return std::tuple(drill.kind, targetOf(drill), drill.endedAt.has_value(), drill.endedAt.value_or(0), drill.id);
    };
    std::sort(drills.begin(), drills.end(), [&](const DrillRow &a, const DrillRow &b) { return key(a) < key(b); });
    std::vector<DrillHistory> histories;
    for (const DrillRow &drill : drills) {
        if (histories.empty() || histories.back().kind != drill.kind
            || histories.back().targetNumber != targetOf(drill)) {
            histories.emplace_back();
            histories.back().kind = drill.kind;
            histories.back().targetNumber = targetOf(drill);
        }
        DrillHistory &history = histories.back();
        ++history.count;
        if (!drill.completed || drill.quit)
            continue;
        if (!history.best)
            history.best = drill.score;
        else if (drillLowerIsBetter(DrillKind(drill.kind)))
            history.best = std::min(*history.best, drill.score);
        else
            history.best = std::max(*history.best, drill.score);
        history.scores.push_back({drill.endedAt.value_or(0), drill.score});
    }
    constexpr std::size_t lastTen = 10;
    for (DrillHistory &history : histories) {
        const std::size_t n = std::min(history.scores.size(), lastTen);
        if (n == 0)
            continue;
        double sum = 0;
        for (std::size_t i = history.scores.size() - n; i < history.scores.size(); ++i)
            sum += history.scores[i].score;
        history.lastTenAverage = sum / double(n);
    }
    return histories;
}

std::vector<GameAveragePoint> averagesOf(std::vector<const StatsGame *> games)
{
    std::stable_sort(games.begin(), games.end(), [](const StatsGame *a, const StatsGame *b) {
        return *a->playedAt != *b->playedAt ? *a->playedAt < *b->playedAt : a->id < b->id;
    });
    constexpr std::size_t window = 10;
    std::vector<GameAveragePoint> points;
    points.reserve(games.size());
    double windowSum = 0;
    for (const StatsGame *game : games) {
        const double average = 3.0 * game->points / game->throws;
        windowSum += average;
        if (points.size() >= window)
            windowSum -= points[points.size() - window].average;
        const std::size_t counted = std::min(points.size() + 1, window);
        points.push_back({*game->playedAt, average, windowSum / double(counted)});
    }
    return points;
}

void countPractice(PlayerStatistics &out, const StatisticsRows &rows, const std::optional<qint64> &since)
{
    struct SetTally {
        const StatsPracticeSet *set = nullptr;
        qint64 darts = 0;
        qint64 hits = 0;
    };
    std::unordered_map<qint64, std::size_t> indexOf;
    indexOf.reserve(rows.practiceSets.size());
    std::vector<SetTally> tallies;
    tallies.reserve(rows.practiceSets.size());
    for (const StatsPracticeSet &set : rows.practiceSets) {
        if (inPeriod(set.openedAt, since) && indexOf.emplace(set.id, tallies.size()).second)
            tallies.push_back({&set});
    }
    // Darts mostly come set by set: the last set found is tried first.
    qint64 lastId = 0;
    SetTally *last = nullptr;
    for (const StatsPracticeDart &dart : rows.practiceDarts) {
        if (!last || dart.setId != lastId) {
            const auto found = indexOf.find(dart.setId);
            lastId = dart.setId;
            last = found == indexOf.end() ? nullptr : &tallies[found->second];
            if (!last)
                continue;
        }
        const StatsPracticeSet &set = *last->set;
        ++last->darts;
        if (practiceHit(set.targetValue, set.targetRing, dart.score, dart.ring))
            ++last->hits;
        const int index = doubleIndex(set.targetValue, set.targetRing);
        if (index >= 0) {
            ++out.doubles[index].aimed;
            // The bull counts as a double when the dart is in the inner bull.
            if (index == 20 ? dart.score == 2 * bullValue : practiceHit(set.targetValue, 2, dart.score, dart.ring))
                ++out.doubles[index].hit;
        }
    }
    std::map<qint64, WeekRate> weeks;
    for (const SetTally &tally : tallies) {
        if (tally.darts == 0 || !tally.set->openedAt)
            continue;
        const qint64 day = localDay(*tally.set->openedAt);
        // 1970-01-01 was a Thursday: Mondays are the days with (day + 3) % 7 == 0.
        const qint64 monday = day - (((day + 3) % 7) + 7) % 7;
        WeekRate &week = weeks[monday];
        week.weekStart = monday * 86400;
        week.darts += tally.darts;
        week.hits += tally.hits;
    }
    out.practiceWeeks.reserve(weeks.size());
    for (const auto &[monday, week] : weeks)
        out.practiceWeeks.push_back(week);
}

QString countText(qint64 count, bool counted)
{
    return counted ? QString::number(count) : QStringLiteral("N/A");
}

QString ratioText(qint64 numerator, qint64 denominator, double scale, int decimals, const QString &unit = {})
{
    if (denominator <= 0)
        return QStringLiteral("N/A");
    return QString::number(scale * double(numerator) / double(denominator), 'f', decimals) + unit;
}

} // namespace

std::optional<qint64> periodStart(StatsPeriod period, qint64 now)
{
    switch (period) {
    case StatsPeriod::AllTime: return std::nullopt;
    case StatsPeriod::Last365Days: return now - 365 * qint64(86400);
    case StatsPeriod::Last30Days: return now - 30 * qint64(86400);
    case StatsPeriod::Last7Days: return now - 7 * qint64(86400);
    }
    return std::nullopt;
}

bool oneDartFinish(int remaining)
{
    return (remaining >= 2 && remaining <= 40 && remaining % 2 == 0) || remaining == 50;
}

PlayerStatistics playerStatistics(StatisticsRows rows, std::optional<qint64> since)
{
    PlayerStatistics out;
    // Each game's darts together, set by set and dart by dart.
    const auto order = [](const StatsGameDart &a, const StatsGameDart &b) {
        if (a.gameId != b.gameId)
            return a.gameId < b.gameId;
        return a.setSeq != b.setSeq ? a.setSeq < b.setSeq : a.dartSeq < b.dartSeq;
    };
    if (!std::is_sorted(rows.gameDarts.begin(), rows.gameDarts.end(), order))
        std::stable_sort(rows.gameDarts.begin(), rows.gameDarts.end(), order);

    std::unordered_map<qint64, const StatsGame *> gameOf;
    gameOf.reserve(rows.games.size());
    for (const StatsGame &game : rows.games)
        gameOf.emplace(game.id, &game);

    std::vector<const StatsGame *> charted;
    std::vector<bool> counted(rows.games.size(), false);
    const std::span<const StatsGameDart> all(rows.gameDarts);
    std::size_t i = 0;
    const auto countGame = [&](const StatsGame &game, std::span<const StatsGameDart> darts) {
        counted[std::size_t(&game - rows.games.data())] = true;
        if (game.end == GameEnd::Unfinished || !inPeriod(game.playedAt, since))
            return;
        if (isX01(game.type)) {
            countX01Game(out.x01, game, darts);
            const int start = game.type == GameType::X01_301 ? 301 : 501;
            if (game.playedAt && game.throws > 0 && game.points >= 0 && game.points <= start)
                charted.push_back(&game);
        } else if (game.type == GameType::Cricket) {
            countCricketGame(out.cricket, game, darts);
        }
    };
    while (i < all.size()) {
        const qint64 gameId = all[i].gameId;
        std::size_t end = i;
        while (end < all.size() && all[end].gameId == gameId)
            ++end;
        const std::span<const StatsGameDart> darts = all.subspan(i, end - i);
        i = end;
        const auto found = gameOf.find(gameId);
        // Darts of a game whose row is missing have no time: all time only.
        const StatsGame *game = found == gameOf.end() ? nullptr : found->second;
        if (!inPeriod(game ? game->playedAt : std::nullopt, since))
            continue;
        countGameDoubles(out, darts);
        if (!game)
            continue;
        // The cork (set 0) is no dart of the game's sets.
        std::size_t firstSet = 0;
        while (firstSet < darts.size() && darts[firstSet].setSeq <= 0)
            ++firstSet;
        countGame(*game, darts.subspan(firstSet));
    }
    for (std::size_t g = 0; g < rows.games.size(); ++g) {
        if (!counted[g])
            countGame(rows.games[g], {});
    }
    out.averages = averagesOf(std::move(charted));
    countPractice(out, rows, since);
    countDrillDoubles(out, rows, since);
    out.drills = drillHistories(std::move(rows.drills), since);
    out.matches = matchStatistics(rows.matches, since);
    return out;
}

StatisticsTexts statisticsTexts(const PlayerStatistics &statistics)
{
    const X01Statistics &x01 = statistics.x01;
    const CricketStatistics &cricket = statistics.cricket;
    const bool keptX01 = x01.games > x01.gamesWithoutDarts;
    StatisticsTexts texts;
    texts.games = QString::number(x01.games);
    texts.won = QString::number(x01.won);
    texts.average = ratioText(x01.points, x01.darts, 3, 2);
    texts.firstNine = ratioText(x01.firstNinePoints, x01.firstNineDarts, 3, 2);
    texts.checkout = ratioText(x01.checkouts, x01.finishDarts, 100, 1, QStringLiteral("%"));
    texts.tons = countText(x01.tons, keptX01);
    texts.tons140 = countText(x01.tons140, keptX01);
    texts.tons180 = countText(x01.tons180, keptX01);
    texts.bestLeg = x01.bestLeg ? QString::number(*x01.bestLeg) : QStringLiteral("N/A");
    texts.highOut = x01.highOut ? QString::number(*x01.highOut) : QStringLiteral("N/A");
    texts.marksPerRound = ratioText(cricket.marks, cricket.darts, 3, 2);
    const MatchStatistics &matches = statistics.matches;
    texts.matchesPlayed = QString::number(matches.played());
    texts.matchesWonLost = QStringLiteral("%1 / %2").arg(matches.won).arg(matches.lost);
    texts.matchesAbandoned = QString::number(matches.abandoned);
    texts.matchAverage = ratioText(matches.playerPoints, matches.playerDarts, 3, 2);
    texts.matchOpponentAverage = ratioText(matches.opponentPoints, matches.opponentDarts, 3, 2);

    // Which games had no kept darts, and which figures that leaves short.
    QStringList missing;
    QStringList figures;
    if (x01.gamesWithoutDarts > 0) {
        missing << QStringLiteral("%1 of %2 301/501 games").arg(x01.gamesWithoutDarts).arg(x01.games);
        figures << QStringLiteral("First 9, checkout rate and 100+/140+/180");
    }
    if (cricket.gamesWithoutDarts > 0) {
        missing << QStringLiteral("%1 of %2 Cricket games").arg(cricket.gamesWithoutDarts).arg(cricket.games);
        figures << QStringLiteral("marks per round");
    }
    if (!missing.isEmpty())
        texts.note = QStringLiteral("No darts kept in ") + missing.join(QStringLiteral(" and ")) + QStringLiteral(": ")
                     + figures.join(QStringLiteral(" and ")) + QStringLiteral(" count only the other games.");
    return texts;
}

} // namespace tavrix
