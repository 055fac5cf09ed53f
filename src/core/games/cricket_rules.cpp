#include "core/games/cricket_rules.h"

#include <algorithm>

namespace tavrix {

int cricketSlot(int number)
{
    if (number == 25)
        return 0;
    return number >= 15 && number <= 20 ? 21 - number : -1;
}

int cricketSlotValue(int slot)
{
    return slot == 0 ? 25 : 21 - slot;
}

int cricketPointsOf(const CricketRow &row)
{
    int points = 0;
    for (int slot = 0; slot < 7; ++slot) {
        if (row[slot] > 3)
            points += (row[slot] - 3) * cricketSlotValue(slot);
    }
    return points;
}

CricketMark markCricketScore(CricketMarks &marks, int player, int multiplier, int number,
                             bool simple)
{
    CricketMark mark;
    mark.slot = cricketSlot(number);
    if (mark.slot < 0)
        return mark;
    CricketRow &mine = marks[player - 1];
    const CricketRow &theirs = marks[2 - player];
    mine[mark.slot] += multiplier;
    mark.marks = multiplier;
    if (!simple && mine[mark.slot] > 3) {
        if (theirs[mark.slot] < 3)
            mark.slotPoints = cricketSlotValue(mark.slot) * (mine[mark.slot] - 3);
        else
            mine[mark.slot] = 3;
    }
    return mark;
}

bool cricketWon(const CricketMarks &marks, int player, bool simple)
{
    const CricketRow &mine = marks[player - 1];
    if (std::any_of(mine.begin(), mine.end(), [](int m) { return m < 3; }))
        return false;
    return simple || cricketPointsOf(mine) >= cricketPointsOf(marks[2 - player]);
}

std::optional<BoardPoint> nextCricketTarget(const CricketMarks &marks, int player,
                                            const QList<DartScore> &placed, bool simple)
{
    CricketRow mine = marks[player - 1];
    const CricketRow &theirs = marks[2 - player];
    for (const DartScore &dart : placed) {
        const int slot = cricketSlot(dart.number);
        if (slot >= 0 && dart.multiplier > 0)
            mine[slot] += dart.multiplier;
    }
    const bool behind = cricketPointsOf(mine) <= cricketPointsOf(theirs);
    // Behind under Standard rules: score on a number the opponent still has open.
    if (!simple && behind) {
        for (int slot = 1; slot <= 6; ++slot) {
            if (mine[slot] >= 3 && theirs[slot] < 3)
                return aimPoint(1, 21 - slot);
        }
    }
    for (int slot = 0; slot <= 6; ++slot) {
        if (mine[slot] >= 3)
            continue;
        if (slot == 0)
            return BoardPoint{0, 0};
        return aimPoint(mine[slot] == 0 ? 3 : 1, 21 - slot);
    }
    if (behind)
        return BoardPoint{0, 0};
    return std::nullopt;
}

} // namespace tavrix
