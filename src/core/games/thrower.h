#pragma once

// One side of a game, as the game model sees it: somebody who throws a cork
// dart and takes turns. The person at this board, the computer and a player
// on another copy all take their turns through this one interface; each
// reports its darts back to the model with GameSession::placeDart, confirms a
// cork dart with confirmCork and ends a turn with reportTurn.

namespace tavrix {

class GameSession;

class Thrower {
public:
    virtual ~Thrower() = default;

    // Whether this side's darts are marked by hand on this board: the board
    // then takes its clicks, and its turns are numbered as recorded sets.
    virtual bool marksAtThisBoard() const = 0;

    // The model awaits this side's cork dart (`player` is 1 or 2).
    virtual void throwCork(GameSession &game, int player) = 0;
    // The model awaits this side's darts of a turn.
    virtual void takeTurn(GameSession &game, int player) = 0;
    // A cork or turn in progress is abandoned (the game was quit).
    virtual void stop() = 0;
};

} // namespace tavrix
