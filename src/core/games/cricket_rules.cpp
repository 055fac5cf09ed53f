#include "core/games/cricket_rules.h"

#include "core/games/advisor.h"

#include <algorithm>

namespace tavrix {

CricketRules::CricketRules(const Advisor &advisor)
    : advisor_(advisor)
{
}

void CricketRules::start(const GameOptions &options)
{
    simple_ = options.simpleCricket;
    marks_ = {};
    shownPoints_ = {};
}

namespace {

// The darts of a set of `player`, marked in order on `marks`; `shownPoints`
// follows the player's points whenever a dart scores.
struct MarkedSet {
    QList<int> darts;
    QList<CricketMark> marks;
    int turnMarks = 0;
};

MarkedSet markSet(CricketMarks &marks, int &shownPoints, int player, const SetDarts &darts, bool simple)
{
    MarkedSet out;
    for (int i = 0; i < 3; ++i) {
        if (!darts[i])
            continue;
        out.darts.append(i);
        const DartScore score = scoreFromXY(darts[i]->x, darts[i]->y);
        if (score.number <= 0 || score.multiplier <= 0)
            continue;
        const CricketMark mark = markCricketScore(marks, player, score.multiplier, score.number, simple);
        if (mark.slot >= 0) {
            out.turnMarks += mark.marks;
            out.marks.append(mark);
        }
        if (mark.slotPoints)
            shownPoints = cricketPointsOf(marks[player - 1]);
    }
    return out;
}

} // namespace

ScoredSet CricketRules::scoreSet(int player, const SetDarts &darts)
{
    ScoredSet out;
    const MarkedSet marked = markSet(marks_, shownPoints_[player - 1], player, darts, simple_);
    out.darts = marked.darts;
    out.marks = marked.marks;
    out.marksAfter = marks_[player - 1];
    out.pointsAfter = cricketPointsOf(marks_[player - 1]);
    out.won = cricketWon(marks_, player, simple_);
    if (out.won)
        return out;
    if (marked.turnMarks >= 8)
        out.applause = SoundCue::Applause140;
    else if (marked.turnMarks >= 6)
        out.applause = SoundCue::Applause100;
    else if (marked.turnMarks >= 3)
        out.applause = SoundCue::Applause60;
    return out;
}

LocalFigures CricketRules::localFigures(bool) const
{
    return {simple_ ? 0 : cricketPointsOf(marks_[1]), 0};
}

GlanceFigures CricketRules::glance(int player, const SetDarts &turn) const
{
    // The turn's darts are marked on copies: nothing is booked here.
    CricketMarks marks = marks_;
    int points = shownPoints_[player - 1];
    markSet(marks, points, player, turn, simple_);
    const CricketRow &row = marks[player - 1];
    const int closed = int(std::count_if(row.begin(), row.end(), [](int m) { return m >= 3; }));
    const QString closedText = QString::number(closed) + QStringLiteral("/7");
    GlanceFigures figures;
    figures.figure = simple_ ? closedText : QString::number(points);
    figures.detail = simple_ ? QStringLiteral("closed") : closedText + QStringLiteral(" closed");
    return figures;
}

QString CricketRules::turnPrompt(const QString &name, int) const
{
    return tavrix::turnPrompt(name);
}

QString CricketRules::liveText(const QString &name, int, const SetDarts &darts, int placed) const
{
    if (!darts[0] && !darts[1] && !darts[2])
        return {};
    QString text = QStringLiteral("\n") + name + QStringLiteral(" threw: ") + dartListText(darts);
    if (placed >= 3)
        text += adjustDartsText();
    return text;
}

std::optional<BoardPoint> CricketRules::advice(int player, const SetDarts &darts) const
{
    CricketStanding standing{marks_[player - 1], marks_[2 - player], simple_};
    for (const std::optional<BoardPoint> &dart : darts) {
        if (!dart)
            continue;
        const DartScore score = scoreFromXY(dart->x, dart->y);
        const int slot = cricketSlot(score.number);
        if (slot >= 0 && score.multiplier > 0)
            standing.mine[slot] += score.multiplier;
    }
    return advisor_.cricketTarget(standing);
}

std::optional<ComputerAim> CricketRules::computerAim(int player, const SetDarts &darts) const
{
    const std::optional<BoardPoint> aim = advice(player, darts);
    if (!aim)
        return std::nullopt;
    return ComputerAim{*aim, std::nullopt};
}

std::optional<SoundCue> CricketRules::hitCue(int player, DartScore scored, std::optional<DartScore>,
                                             bool atThisBoard) const
{
    // A double or treble marked here on a number the other player has not
    // closed; the computer's darts earn no such sound.
    const int slot = cricketSlot(scored.number);
    if (!atThisBoard || slot < 0 || marks_[2 - player][slot] >= 3)
        return std::nullopt;
    if (scored.multiplier == 2)
        return SoundCue::Harp;
    if (scored.multiplier == 3)
        return SoundCue::Fanfare;
    return std::nullopt;
}

} // namespace tavrix
