#pragma once

// What a match shows and says while it is played: the game's players 1 and 2
// as the match's 0 and 1, the format chosen on the set-up, the score line
// beside the board, who throws first, and the alerts at the end of a leg, a
// set and the match. Also the format as the network message carries it.
// Pure: no widget, no store.

#include "core/games/match_rules.h"

#include <QString>

#include <array>
#include <optional>
#include <utility>

namespace tavrix {

// The game numbers its players 1 (the opponent) and 2 (the player here); the
// match 0 and 1, in the same order.
constexpr int matchPlayerOf(int gamePlayer) { return gamePlayer - 1; }
constexpr int gamePlayerOf(int matchPlayer) { return matchPlayer + 1; }

// The entries of the set-up's format list, in order.
enum class MatchChoice { SingleGame = 0, Legs = 1, Sets = 2 };
// The format the set-up's choice, legs and sets stand for, within bounds.
MatchFormat formatOfChoice(int choice, int legs, int sets);
MatchChoice choiceOfFormat(const MatchFormat &format);

// The score beside the board, player 1's figure first: "Legs 1–0", or in a
// set match "Sets 1–0 · Legs 2–1" with the legs of the set in play.
QString matchScoreText(const Match &match);
// Who throws first, by the game's names (player 1's first): while a leg is
// in play "Leg 2: Bob threw first", between legs "Next, leg 3: Ann throws
// first"; in a set match "Set 2, leg 1: ...". Empty once the match is over.
QString legStarterText(const Match &match, const std::array<QString, 2> &names, bool legInPlay);

// The alert at the end of a leg that did not end the match: its title
// ("Leg Over", "Set Over") and text, which names the winner as the game's
// alerts do and gives the score by the players' names.
QString legOverTitle(LegOutcome outcome);
QString legOverText(const Match &match, LegOutcome outcome, const QString &winnerName,
                    const std::array<QString, 2> &names);
// The alert at the end of the match: "Ann won the match by 2 legs to 1!"
// (or "by 3 sets to 1") and the two averages over the match, three-dart
// averages or, in Cricket, marks per round.
QString matchOverText(const Match &match, const QString &winnerName, const std::array<QString, 2> &names,
                      bool cricket);

// The message between legs, as a game's end names its winner: "\nAnn won
// that leg.\n\nClick \"Next Leg\" ..."; and what the side asked to go on
// by the other copy reads.
QString nextLegText(const QString &winner);
QString nextLegConsentText(const QString &name);

// The format as the network message carries it: sets to win (1 outside a
// set match) and legs to win the match or each set (1 in a single game).
std::pair<int, int> wireFormat(const MatchFormat &format);
// The format a message names; nothing for numbers no format has.
std::optional<MatchFormat> formatFromWire(int sets, int legs);

} // namespace tavrix
