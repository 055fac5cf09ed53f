#pragma once

// The check every new or changed player name passes before it is stored.

#include <QString>

#include <optional>

namespace tavrix {

class PlayerStore;

// The longest name accepted, counted without leading and trailing blanks:
// thirty ordinary letters fit the greeting at the top of the play frame
// ("Hey, Maximilian Alexander Hohenberg!"); thirty wide capitals do not.
inline constexpr int maxPlayerNameLength = 30;

// A control character, or a line or paragraph separator: what would break a
// name or a chat line over more than one line.
bool breaksLine(QChar c);

// The message to show when the name cannot be used, nothing when it can.
// Emptiness, length and uniqueness are judged on the name without leading and
// trailing blanks, and so are the stored names it is compared with; the name
// is stored as typed, so line breaks and other control characters are refused
// anywhere in it, blanks at the ends included. "|" is refused too: it
// separates the fields of a network message.
std::optional<QString> playerNameProblem(PlayerStore &store, const QString &typed);

} // namespace tavrix
