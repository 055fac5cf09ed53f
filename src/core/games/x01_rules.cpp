#include "core/games/x01_rules.h"

#include "core/games/checkout_chart.h"
#include "core/games/game_options.h"

#include <algorithm>

namespace tavrix {

bool doublesIn(DartScore score, X01Reading reading)
{
    return reading == X01Reading::Scored ? score.isDouble() : score.multiplier == 2;
}

X01Count countX01Set(const SetDarts &darts, int remaining, bool doubledIn, X01Reading reading)
{
    X01Count count;
    count.doubledIn = doubledIn;
    count.remaining = remaining;
    for (int i = 0; i < 3; ++i) {
        if (!darts[i])
            continue;
        const DartScore score = scoreFromXY(darts[i]->x, darts[i]->y);
        if (!count.doubledIn && doublesIn(score, reading))
            count.doubledIn = true;
        count.lastMultiplier = score.multiplier;
        count.darts.append(i);
        if (!count.doubledIn)
            continue;
        count.remaining -= score.multiplier * score.number;
        count.points += score.multiplier * score.number;
        if (reading == X01Reading::Scored && count.remaining <= 1)
            break;
    }
    return count;
}

X01Outcome x01Outcome(int remaining, bool doubleOut, int lastMultiplier)
{
    if (remaining < 0 || remaining == 1 || (doubleOut && remaining == 0 && lastMultiplier != 2))
        return X01Outcome::Bust;
    if (remaining == 0 && (lastMultiplier == 2 || !doubleOut))
        return X01Outcome::Win;
    return X01Outcome::Continue;
}

bool countsForBestSet(int remaining, bool doubleOut)
{
    return remaining == 0 || remaining > 1 || (remaining == 1 && !doubleOut);
}

QString scoreColumnLine(int remaining, int previous)
{
    return remaining != previous ? QStringLiteral("\n") + QString::number(remaining) : QStringLiteral("*");
}

X01Rules::X01Rules(GameType type, const Advisor &advisor)
    : type_(type)
    , advisor_(advisor)
{
    start(GameOptions{});
}

void X01Rules::start(const GameOptions &options)
{
    doubleOut_ = options.doubleOut;
    startScore_ = type_ == GameType::X01_301 ? 301 : 501;
    history_ = {QList<int>{startScore_}, QList<int>{startScore_}};
    doubledIn_.fill(!options.doubleIn);
    dartsThrown_ = {};
    localBestSet_ = 0;
    winner_ = 0;
}

ScoredSet X01Rules::scoreSet(int player, const SetDarts &darts)
{
    const int p = player - 1;
    const X01Count count = countX01Set(darts, remaining(player), doubledIn_[p], X01Reading::Scored);
    ScoredSet out;
    if (!doubledIn_[p]) {
        out.doubleIn = count.doubledIn ? ScoredSet::DoubleIn::DoubledIn : ScoredSet::DoubleIn::Missed;
        doubledIn_[p] = count.doubledIn;
    }
    out.darts = count.darts;
    out.turnPoints = count.points;
    dartsThrown_[p] += int(count.darts.size());

    int left = count.remaining;
    if (player == 2 && countsForBestSet(left, doubleOut_))
        localBestSet_ = std::max(localBestSet_, count.points);
    const X01Outcome outcome = x01Outcome(left, doubleOut_, count.lastMultiplier);
    out.bust = outcome == X01Outcome::Bust;
    if (out.bust)
        left = remaining(player);
    out.won = outcome == X01Outcome::Win;
    if (out.won) {
        winner_ = player;
        return out;
    }
    if (count.points >= 140)
        out.applause = SoundCue::Applause140;
    else if (count.points >= 100)
        out.applause = SoundCue::Applause100;
    else if (count.points >= 60)
        out.applause = SoundCue::Applause60;
    out.columnLine = scoreColumnLine(left, remaining(player));
    history_[p].append(left);
    return out;
}

LocalFigures X01Rules::localFigures(bool localWon) const
{
    return {startScore_ - (localWon ? 0 : remaining(2)), localBestSet_};
}

GlanceFigures X01Rules::glance(int player, const SetDarts &turn) const
{
    const int p = player - 1;
    // The darts as confirming them would score them: a bust leaves the score
    // as it was, its darts counted as thrown.
    const X01Count count = countX01Set(turn, remaining(player), doubledIn_[p], X01Reading::Scored);
    const bool bust = x01Outcome(count.remaining, doubleOut_, count.lastMultiplier) == X01Outcome::Bust;
    const int left = winner_ == player ? 0 : bust ? remaining(player) : count.remaining;
    const int darts = dartsThrown_[p] + int(count.darts.size());
    GlanceFigures figures;
    figures.bust = bust;
    figures.figure = bust ? QStringLiteral("BUST") : QString::number(left);
    figures.detail = QStringLiteral("Avg ")
                     + (darts > 0 ? QString::number((startScore_ - left) * 3.0 / darts, 'f', 2) : QStringLiteral("-"));
    // No finish is advised before the player has doubled in, nor from a bust.
    figures.finish = bust || !count.doubledIn
                         ? QString()
                         : dartCodesText(advisor_.bestOut(left, doubleOut_), QStringLiteral(" \u00B7 "));
    if (doubleOut_ && count.doubledIn && !bust && left > 1)
        figures.checkoutLeft = left;
    return figures;
}

QString X01Rules::turnPrompt(const QString &name, int player) const
{
    const QString bestOut = dartCodesText(advisor_.bestOut(remaining(player), doubleOut_));
    QString text = tavrix::turnPrompt(name);
    if (!bestOut.isEmpty())
        text += QStringLiteral("\n\nBest Out: ") + bestOut;
    else if (doubledIn(player))
        text += QStringLiteral("\n\nRecommend T20 next.");
    if (!doubledIn(player))
        text += QStringLiteral("\n\nYou have not yet doubled in.");
    return text;
}

X01Count X01Rules::asThrown(int player, const SetDarts &darts) const
{
    return countX01Set(darts, remaining(player), doubledIn(player), X01Reading::AsThrown);
}

X01Standing X01Rules::standing(const X01Count &count) const
{
    return {count.remaining, count.doubledIn, doubleOut_};
}

QString X01Rules::liveText(const QString &name, int player, const SetDarts &darts, int placed) const
{
    const X01Count count = asThrown(player, darts);
    if (count.darts.isEmpty())
        return {};
    QString text = QStringLiteral("\n") + name + QStringLiteral(" threw: ") + dartListText(darts)
                   + QStringLiteral(" for ") + QString::number(count.points) + QStringLiteral(" points.");
    if (placed >= 3)
        return text + adjustDartsText();
    const DartScore next = advisor_.x01Target(standing(count));
    if (next.multiplier > 0)
        return text + QStringLiteral("\n\nRecommend ") + QStringLiteral("SDT").mid(next.multiplier - 1, 1)
               + QString::number(next.number) + QStringLiteral(" next.");
    return text + (count.remaining == 0 ? QStringLiteral("\n\nGame over?") : QStringLiteral("\n\nNo recommendations."));
}

std::optional<BoardPoint> X01Rules::advice(int player, const SetDarts &darts) const
{
    const DartScore target = advisor_.x01Target(standing(asThrown(player, darts)));
    return aimPoint(target.multiplier, target.number);
}

std::optional<ComputerAim> X01Rules::computerAim(int player, const SetDarts &darts) const
{
    const DartScore target = advisor_.x01Target(standing(asThrown(player, darts)));
    if (target.multiplier == 0)
        return std::nullopt;
    return ComputerAim{aimPoint(target.multiplier, target.number), target};
}

bool X01Rules::turnDecided(int player, const SetDarts &darts) const
{
    // A finish, or a score of 1 or less that will bust: the rest are withheld.
    return asThrown(player, darts).remaining < 2;
}

std::optional<int> X01Rules::reportedPoints(int player, const SetDarts &darts) const
{
    return asThrown(player, darts).points;
}

std::optional<SoundCue> X01Rules::hitCue(int, DartScore scored, std::optional<DartScore> aimedAt,
                                         bool atThisBoard) const
{
    // The player at this board hears the harp for any hit of the area the
    // advice showed; the computer only for a double it aimed at.
    if (!aimedAt || scored != *aimedAt)
        return std::nullopt;
    if (scored.multiplier == 3)
        return SoundCue::Fanfare;
    if (atThisBoard || scored.multiplier == 2)
        return SoundCue::Harp;
    return std::nullopt;
}

} // namespace tavrix
