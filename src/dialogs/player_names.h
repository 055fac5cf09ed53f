#pragma once

// The check every new or changed player name passes before it is stored.

#include <QString>

#include <optional>

namespace tavrix {

class StatsStore;

// The message to show when the name cannot be used, nothing when it can.
// Emptiness and uniqueness are judged on the name without leading and
// trailing blanks, and so are the stored names it is compared with; the name
// is stored as typed.
std::optional<QString> playerNameProblem(StatsStore &store, const QString &typed);

} // namespace tavrix
