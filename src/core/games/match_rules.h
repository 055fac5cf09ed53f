#pragma once

// The rules of a match of legs and sets between two players (0 and 1): its
// format, the score in legs and sets, who throws first in each leg, when the
// match is won, and its figures. A leg is one game; the game's rules decide
// who wins it, and the match is told the winner and each player's points and
// darts as the leg ends. Pure values: no widget, no store, no signal.

#include <QList>
#include <QString>

#include <array>
#include <optional>

namespace tavrix {

enum class MatchKind {
    SingleGame, // one leg
    Legs,       // first to `legs` legs
    Sets,       // first to `sets` sets, each first to `legs` legs
};

struct MatchFormat {
    static constexpr int MinLegs = 2, MaxLegs = 11;
    static constexpr int MinSets = 2, MaxSets = 7;
    static constexpr int MinSetLegs = 2, MaxSetLegs = 5;

    MatchKind kind = MatchKind::SingleGame;
    // Legs to win the match (Legs) or a set (Sets); 1 in a single game.
    int legs = 1;
    // Sets to win the match (Sets); 1 otherwise.
    int sets = 1;

    static MatchFormat singleGame() { return {}; }
    static MatchFormat firstToLegs(int legs) { return {MatchKind::Legs, legs, 1}; }
    static MatchFormat firstToSets(int sets, int legsPerSet) { return {MatchKind::Sets, legsPerSet, sets}; }

    // What is wrong with the format, for the player to read; "" when it is
    // within its bounds. A single game counts exactly one leg and one set, so
    // that two equal matches have equal formats.
    QString problem() const;
    bool isValid() const { return problem().isEmpty(); }
    // The nearest format within the bounds; an unknown kind is a single game.
    MatchFormat clamped() const;

    // "Single game", "First to 3 legs", "First to 2 sets of 3 legs".
    QString text() const;

    bool operator==(const MatchFormat &) const = default;
};

// Each player's points and darts in one leg, as the leg ends.
struct LegFigures {
    std::array<int, 2> points{};
    std::array<int, 2> darts{};
};

// A leg as played: its place in the match, who threw first, who won it (none
// when abandoned) and the figures.
struct LegRecord {
    int set = 1; // the set's number from 1 (always 1 outside a set match)
    int leg = 1; // the leg's number within its set, from 1
    int firstThrower = 0;
    std::optional<int> winner;
    LegFigures figures;

    bool abandoned() const { return !winner; }
    // The winner's darts in the leg; 0 when abandoned.
    int winningDarts() const { return winner ? figures.darts[*winner] : 0; }
};

// What recording a leg did: the highest step it reached.
enum class LegOutcome { Refused, LegWon, SetWon, MatchWon, Abandoned };

class Match {
public:
    // A match of `format` (clamped into its bounds) whose first leg is begun
    // by `corkWinner` (player 1 when given 1, player 0 for anything else).
    explicit Match(const MatchFormat &format = {}, int corkWinner = 0);

    const MatchFormat &format() const { return format_; }
    int corkWinner() const { return corkWinner_; }

    // The leg in play: its set's number and its number within the set (both
    // from 1), and who throws first in it. Once the match is over they name
    // the last leg played, and there is no next thrower.
    int setNumber() const { return set_; }
    int legNumber() const { return leg_; }
    std::optional<int> nextFirstThrower() const;

    // Legs in the set in play (in a legs match: in the match). They start
    // again at 0 when a set is won and the match goes on; the last set's
    // stay once the match is won.
    int setLegs(int player) const;
    // Sets won; 0 outside a set match.
    int setsWon(int player) const;
    // Legs won over the whole match.
    int legsWon(int player) const;

    bool isOver() const { return over_; }
    bool isAbandoned() const { return over_ && !winner_; }
    std::optional<int> winner() const { return winner_; }

    // Why the leg cannot be recorded, for the player to read; "" when it can.
    // `winner` is 0 or 1, or nothing for an abandoned leg.
    QString legProblem(std::optional<int> winner, const LegFigures &figures) const;
    // The leg in play ends, won by `winner`: the score moves on and the match
    // may be won. Refused (and nothing changes) when legProblem says why.
    LegOutcome recordLeg(int winner, const LegFigures &figures);
    // The leg in play is given up: it is kept with its figures, and the
    // match ends with no winner.
    LegOutcome abandonLeg(const LegFigures &figures);

    // The legs played, in order.
    const QList<LegRecord> &legs() const { return legs_; }
    // Over every leg played, abandoned ones too: points and darts, and the
    // three-dart average (0 before the first dart).
    int points(int player) const;
    int darts(int player) const;
    double average(int player) const;

private:
    LegOutcome record(std::optional<int> winner, const LegFigures &figures);
    int setsToWin() const;
    int legsToWinSet() const;
    int setFirstThrower() const;
    // A figure of `player` summed over the legs played.
    int total(int player, std::array<int, 2> LegFigures::*figure) const;

    MatchFormat format_;
    int corkWinner_ = 0;
    int set_ = 1;
    int leg_ = 1;
    std::array<int, 2> setLegs_{};
    std::array<int, 2> sets_{};
    std::array<int, 2> legsWon_{};
    bool over_ = false;
    std::optional<int> winner_;
    QList<LegRecord> legs_;
};

} // namespace tavrix
