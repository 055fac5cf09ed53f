#pragma once

// The score board of each type of game on the play frame: the 301/501
// columns of scores left, and the Cricket marks with their points. The play
// controller shows a game on the board of its type.

#include "core/games/game_session.h"

namespace tavrix {

class GameFrame;

class ScoreBoard {
public:
    virtual ~ScoreBoard() = default;
    // A game starts: the board is shown, empty, in place of the greeting.
    virtual void start(const GameOptions &options) = 0;
    // A confirmed set: what its darts did, shown as it is scored; and what it
    // leaves, shown once its alerts and sounds are over.
    virtual void showDarts(const SetOutcome &) {}
    virtual void showSetEnd(const SetOutcome &) {}
    // What the board shows of the players' standing beyond the sets.
    virtual void showStanding(const GameSession &) {}
};

// "301 Score" / "501 Score": a column per player, a line per set.
class X01ScoreBoard : public ScoreBoard {
public:
    explicit X01ScoreBoard(GameFrame &frame)
        : frame_(frame)
    {
    }
    void start(const GameOptions &options) override;
    void showSetEnd(const SetOutcome &outcome) override;
    // The winner's column ends with "Winner!" (whatever the game: in Cricket
    // the columns are hidden, and the next 301/501 writes them afresh).
    void markWinner(int player);

private:
    GameFrame &frame_;
};

// "Cricket Score": the marks of both players on the seven numbers, the
// points under Standard rules, and the numbers both have closed greyed.
class CricketScoreBoard : public ScoreBoard {
public:
    explicit CricketScoreBoard(GameFrame &frame)
        : frame_(frame)
    {
    }
    void start(const GameOptions &options) override;
    void showDarts(const SetOutcome &outcome) override;
    void showStanding(const GameSession &game) override;

private:
    GameFrame &frame_;
};

} // namespace tavrix
