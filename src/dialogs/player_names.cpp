#include "dialogs/player_names.h"

#include "stats/stats_store.h"

#include <algorithm>

namespace tavrix {

std::optional<QString> playerNameProblem(StatsStore &store, const QString &typed)
{
    const QString trimmed = typed.trimmed();
    if (trimmed.isEmpty())
        return QStringLiteral("Please enter at least one letter in the \"Name\" field");
    const std::optional<QList<PlayerRow>> players = store.players();
    if (!players)
        return store.lastError();
    const bool inUse = std::any_of(players->cbegin(), players->cend(),
                                   [&](const PlayerRow &player) { return player.name.trimmed() == trimmed; });
    if (inUse)
        return QStringLiteral("Sorry.  That name is already in use.");
    return std::nullopt;
}

} // namespace tavrix
