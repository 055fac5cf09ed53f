#pragma once

// Copying the current player's statistics from the file on this computer
// into the club's database, as the File menu does it: opened, looked up and
// copied on connections of its own, so that it can run away from the
// window, and told in words.

#include "core/stats/club_store.h"
#include "core/stats/store_address.h"

#include <QString>

#include <optional>

namespace tavrix {

struct LocalCopy {
    std::optional<CopiedRows> copied;
    QString error; // why nothing was copied, a sentence
};

// Copies the rows of the player named `playerName` in the file at
// `localPath` into the club database at `club` as the player `playerId`.
// A missing file is not made, and a file without that player is said.
LocalCopy copyLocalStatistics(const ServerAddress &club, const QString &password, const QString &localPath,
                              const QString &playerName, qint64 playerId);

// What a copy did, for the user: "Copied into the club database: 3 games
// with 18 darts and 1 drill with 2 darts.", or that nothing was new, or
// that the file held nothing of the player's.
QString localCopyReport(const CopiedRows &copied, const QString &playerName, const QString &localPath);

} // namespace tavrix
