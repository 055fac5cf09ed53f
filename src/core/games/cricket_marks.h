#pragma once

// The marks board of Cricket and what a dart does to it: seven slots, the
// bull (slot 0) and 20 down to 15 (slots 1 to 6), for two players.

#include "core/board/board_geometry.h"

#include <array>
#include <optional>

namespace tavrix {

using CricketRow = std::array<int, 7>;
// Row k holds player k + 1's marks; a row may pass 3 marks under Standard rules.
using CricketMarks = std::array<CricketRow, 2>;

// The slot of a number: 0 for the bull, 21 - n for 15 to 20, -1 otherwise.
int cricketSlot(int number);
// The number of a slot: 25 for the bull, else 21 - slot.
int cricketSlotNumber(int slot);
// The value a slot scores per extra mark: 25 for the bull, else its number.
int cricketSlotValue(int slot);

// Points of a row: (marks - 3) x value over every slot past 3 marks.
int cricketPointsOf(const CricketRow &row);

struct CricketMark {
    int slot = -1;
    int marks = 0; // the marks added (the dart's multiplier)
    // Standard rules, past three marks with the opponent still open: the
    // slot's points for the thrower.
    std::optional<int> slotPoints;
};

// Adds one dart of `player` (1 or 2). Past three marks under Standard rules
// it scores while the opponent is open; once the opponent has closed the
// number the thrower's marks stay at 3.
CricketMark markCricketScore(CricketMarks &marks, int player, int multiplier, int number,
                             bool simple);

// Whether `player` has won: every number closed for him and, under Standard
// rules, at least as many points as the other player.
bool cricketWon(const CricketMarks &marks, int player, bool simple);

// The slots (bull, 20 down to 15) both players have closed.
std::array<bool, 7> closedByBoth(const CricketMarks &marks);

} // namespace tavrix
