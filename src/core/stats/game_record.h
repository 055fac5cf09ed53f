#pragma once

// The two small records shown on the board during a game: "This Round", the
// tallies since they were last cleared, and "Overall", from the database.

#include "core/stats/game_codes.h"
#include "core/stats/local_tallies.h"
#include "core/stats/records.h"

#include <QString>

namespace tavrix {

// How the opponent is named in the records: the computer by its level
// ("Virtual Pro", or "Virtual " and the player's own name for "You"), a
// network opponent with "e-" in front, a person at this board as typed.
QString recordOpponentName(OpponentKind opponentKind, SkillLevel skillLevel, bool networkPlay,
                           const QString &opponentName, const QString &playerName);

struct RecordTexts {
    QString thisRound;
    QString overall;
};

// "vs " + the opponent, the wins and losses, and for 301/501 the best leg and
// the best out.
RecordTexts gameRecordTexts(const QString &opponent, GameType gameType, const LocalTallies &tallies,
                            const GameRecordFigures &overall);

} // namespace tavrix
