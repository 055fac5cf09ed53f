#include "dialogs/player_names.h"

#include "stats/stats_store.h"

namespace tavrix {

std::optional<QString> playerNameProblem(StatsStore &store, const QString &typed)
{
    const QString trimmed = typed.trimmed();
    if (trimmed.isEmpty())
        return QStringLiteral("Please enter at least one letter in the \"Name\" field");
    const std::optional<bool> inUse = store.playerNameInUse(trimmed);
    if (!inUse)
        return store.lastError();
    if (*inUse)
        return QStringLiteral("Sorry.  That name is already in use.");
    return std::nullopt;
}

} // namespace tavrix
