#include "core/games/match_rules.h"

#include <algorithm>

namespace tavrix {

namespace {

// The most one dart scores in any game played: the treble 20.
constexpr int MaxPointsPerDart = 60;

bool isPlayer(int player) { return player == 0 || player == 1; }

} // namespace

QString MatchFormat::problem() const
{
    switch (kind) {
    case MatchKind::SingleGame:
        if (legs != 1 || sets != 1)
            return QStringLiteral("A single game is one leg.");
        return {};
    case MatchKind::Legs:
        if (legs < MinLegs || legs > MaxLegs || sets != 1)
            return QStringLiteral("A match of legs is first to %1 to %2 legs.").arg(MinLegs).arg(MaxLegs);
        return {};
    case MatchKind::Sets:
        if (sets < MinSets || sets > MaxSets)
            return QStringLiteral("A match of sets is first to %1 to %2 sets.").arg(MinSets).arg(MaxSets);
        if (legs < MinSetLegs || legs > MaxSetLegs)
            return QStringLiteral("A set is first to %1 to %2 legs.").arg(MinSetLegs).arg(MaxSetLegs);
        return {};
    }
    return QStringLiteral("Unknown kind of match.");
}

MatchFormat MatchFormat::clamped() const
{
    switch (kind) {
    case MatchKind::SingleGame:
        return singleGame();
    case MatchKind::Legs:
        return firstToLegs(std::clamp(legs, MinLegs, MaxLegs));
    case MatchKind::Sets:
        return firstToSets(std::clamp(sets, MinSets, MaxSets), std::clamp(legs, MinSetLegs, MaxSetLegs));
    }
    return singleGame();
}

QString MatchFormat::text() const
{
    switch (kind) {
    case MatchKind::SingleGame:
        return QStringLiteral("Single game");
    case MatchKind::Legs:
        return QStringLiteral("First to %1 legs").arg(legs);
    case MatchKind::Sets:
        return QStringLiteral("First to %1 sets of %2 legs").arg(sets).arg(legs);
    }
    return {};
}

Match::Match(const MatchFormat &format, int corkWinner)
    : format_(format.clamped())
    , corkWinner_(corkWinner == 1 ? 1 : 0)
{
}

// A single game is one set of one leg, a legs match one set: the score runs
// the same way for all three.
int Match::setsToWin() const { return format_.kind == MatchKind::Sets ? format_.sets : 1; }

int Match::legsToWinSet() const { return format_.kind == MatchKind::SingleGame ? 1 : format_.legs; }

// The cork winner begins the first set, and each set is begun by the player
// who did not begin the one before, whoever threw its last leg first.
int Match::setFirstThrower() const { return (corkWinner_ + set_ - 1) % 2; }

std::optional<int> Match::nextFirstThrower() const
{
    if (over_)
        return std::nullopt;
    // Within a set the first throw alternates leg by leg.
    return (setFirstThrower() + leg_ - 1) % 2;
}

int Match::setLegs(int player) const { return isPlayer(player) ? setLegs_[player] : 0; }

int Match::setsWon(int player) const
{
    return isPlayer(player) && format_.kind == MatchKind::Sets ? sets_[player] : 0;
}

int Match::legsWon(int player) const { return isPlayer(player) ? legsWon_[player] : 0; }

QString Match::legProblem(std::optional<int> winner, const LegFigures &figures) const
{
    if (over_)
        return QStringLiteral("The match is over: no more legs are played.");
    if (winner && !isPlayer(*winner))
        return QStringLiteral("A leg is won by one of the two players.");
    for (int p : {0, 1}) {
        if (figures.points[p] < 0 || figures.darts[p] < 0)
            return QStringLiteral("Points and darts cannot be negative.");
        if (figures.points[p] > MaxPointsPerDart * figures.darts[p])
            return QStringLiteral("No dart scores more than %1 points.").arg(MaxPointsPerDart);
    }
    if (winner && figures.darts[*winner] == 0)
        return QStringLiteral("The winner of a leg has thrown at least one dart.");
    return {};
}

LegOutcome Match::recordLeg(int winner, const LegFigures &figures) { return record(winner, figures); }

LegOutcome Match::abandonLeg(const LegFigures &figures) { return record(std::nullopt, figures); }

LegOutcome Match::record(std::optional<int> winner, const LegFigures &figures)
{
    if (!legProblem(winner, figures).isEmpty())
        return LegOutcome::Refused;
    legs_.append({set_, leg_, *nextFirstThrower(), winner, figures});
    if (!winner) {
        over_ = true;
        return LegOutcome::Abandoned;
    }
    const int w = *winner;
    ++legsWon_[w];
    if (++setLegs_[w] < legsToWinSet()) {
        ++leg_;
        return LegOutcome::LegWon;
    }
    if (++sets_[w] >= setsToWin()) {
        over_ = true;
        winner_ = w;
        return LegOutcome::MatchWon;
    }
    ++set_;
    leg_ = 1;
    setLegs_ = {};
    return LegOutcome::SetWon;
}

int Match::points(int player) const { return total(player, &LegFigures::points); }

int Match::darts(int player) const { return total(player, &LegFigures::darts); }

int Match::total(int player, std::array<int, 2> LegFigures::*figure) const
{
    int sum = 0;
    if (isPlayer(player))
        for (const LegRecord &leg : legs_)
            sum += (leg.figures.*figure)[player];
    return sum;
}

double Match::average(int player) const
{
    const int thrown = darts(player);
    return thrown == 0 ? 0.0 : 3.0 * points(player) / thrown;
}

} // namespace tavrix
