#include "core/games/cricket_marks.h"

#include <algorithm>

namespace tavrix {

int cricketSlot(int number)
{
    if (number == 25)
        return 0;
    return number >= 15 && number <= 20 ? 21 - number : -1;
}

int cricketSlotNumber(int slot)
{
    return slot == 0 ? 25 : 21 - slot;
}

int cricketSlotValue(int slot)
{
    return cricketSlotNumber(slot);
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

std::array<bool, 7> closedByBoth(const CricketMarks &marks)
{
    std::array<bool, 7> both{};
    for (int slot = 0; slot < 7; ++slot)
        both[slot] = marks[0][slot] >= 3 && marks[1][slot] >= 3;
    return both;
}

} // namespace tavrix
