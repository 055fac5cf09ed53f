#pragma once

// The game set-up on the play frame as one value: which game, opponent and
// skill are chosen, and the options of the chosen game, read from the
// controls into a GameOptions and written back from one. Each option
// button stands for its value by a table here, never by its position.

#include "core/games/game_options.h"
#include "core/games/match_rules.h"

#include <QList>

class QAbstractButton;

namespace tavrix {

class GameFrame;

class GameSetupForm {
public:
    explicit GameSetupForm(GameFrame &frame);

    // The buttons of the game, opponent and skill options, with the value
    // each stands for.
    QList<std::pair<QAbstractButton *, GameType>> gameButtons() const;
    QList<std::pair<QAbstractButton *, OpponentKind>> opponentButtons() const;
    QList<std::pair<QAbstractButton *, SkillLevel>> skillButtons() const;

    GameType gameType() const;
    OpponentKind opponent() const;
    SkillLevel skill() const;
    // The game, opponent and skill chosen; the rest as in `base`.
    GameOptions choices(GameOptions base = {}) const;
    // The options of the chosen game on the frame (the rules of Cricket, or
    // double in and out, and keeping statistics); the rest as in `base`.
    GameOptions gameOptions(GameOptions base) const;

    // Chooses a game, without the consequences of a click.
    void chooseGame(GameType type);
    // Writes the options of the game: the Cricket rules, or double in and out.
    void showGameOptions(const GameOptions &options);
    void chooseOpponent(OpponentKind kind);

    // The match format on the frame, and writing one there.
    MatchFormat matchFormat() const;
    void showMatchFormat(const MatchFormat &format);

private:
    GameFrame &frame_;
};

} // namespace tavrix
