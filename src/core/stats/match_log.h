#pragma once

// What a match of legs writes, and what is read back of the matches. Each
// leg stays one game with its own row and darts; a match adds one row of its
// own (format, opponent, result, score and figures) and one link row a leg,
// naming the leg's game. Each write gives nothing, or false, when the store
// refuses (lastError() says why).

#include "core/stats/records.h"
#include "core/stats/stats_access.h"

#include <QString>
#include <QtGlobal>

#include <optional>

namespace tavrix {

// A match as it starts. `kind` is MatchKind's code (1 legs, 2 sets); `sets`
// the sets to win (1 in a legs match) and `legs` the legs to win the match
// or each set. The opponent as the games row names it.
struct NewMatch {
    qint64 playerId = 0;
    GameType gameType = GameType::None;
    SkillLevel skill = SkillLevel::None;
    QString opponent;
    int kind = 0;
    int sets = 1;
    int legs = 1;
};

// One leg of a match: the game it is, its set's number and its number within
// the set (both from 1), and who threw first: 1 the opponent, 2 the player.
struct MatchLeg {
    qint64 matchId = 0;
    qint64 gameId = 0;
    int set = 1;
    int leg = 1;
    int firstThrower = 2;
};

// How a match ended. "W" or "L" for the player, "A" when it was abandoned
// (quit, or the other copy left). Legs and sets won, points scored and darts
// thrown over the whole match, the player's and the opponent's.
struct MatchEnd {
    QString result;
    int playerLegs = 0;
    int opponentLegs = 0;
    int playerSets = 0;
    int opponentSets = 0;
    int playerPoints = 0;
    int playerDarts = 0;
    int opponentPoints = 0;
    int opponentDarts = 0;
};

class MatchLog : public virtual StatsAccess {
public:
    // A new match's row, not ended; its id.
    virtual std::optional<qint64> insertMatch(const NewMatch &match) = 0;
    virtual bool insertMatchLeg(const MatchLeg &leg) = 0;
    virtual bool finishMatch(qint64 matchId, const MatchEnd &end) = 0;
    // Writes the match's row with this id where it is missing: a file made
    // anew must hold what kept legs refer to.
    virtual bool restoreMatch(qint64 matchId, const NewMatch &match) = 0;

protected:
    ~MatchLog() = default;
};

} // namespace tavrix
