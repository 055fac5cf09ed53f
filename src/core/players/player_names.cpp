#include "core/players/player_names.h"

#include "core/stats/player_store.h"

#include <algorithm>

namespace tavrix {

bool breaksLine(QChar c)
{
    switch (c.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

namespace {

bool refusedInName(QChar c)
{
    return breaksLine(c) || c == u'|';
}

} // namespace

std::optional<QString> playerNameProblem(PlayerStore &store, const QString &typed)
{
    const QString trimmed = typed.trimmed();
    if (trimmed.isEmpty())
        return QStringLiteral("Please enter at least one letter in the \"Name\" field");
    if (std::any_of(typed.cbegin(), typed.cend(), refusedInName))
        return QStringLiteral("A name cannot contain line breaks, control characters or \"|\".");
    // Characters, not UTF-16 units: a letter outside the Basic Multilingual
    // Plane counts once.
    if (trimmed.toUcs4().size() > maxPlayerNameLength)
        return QStringLiteral("Please keep the name to %1 characters or fewer.").arg(maxPlayerNameLength);
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
