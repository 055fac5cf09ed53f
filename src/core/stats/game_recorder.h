#pragma once

// Writes what a game records: the darts of each confirmed set, and the end of
// a game with its row, each in one transaction. What cannot be written (the
// file is in use by another program, read-only, or the disk is full) is kept
// in memory and written first by the next write that succeeds.

#include "core/stats/game_log.h"

#include <QList>

#include <optional>

namespace tavrix {

class GameRecorder {
public:
    explicit GameRecorder(GameLog &store)
        : store_(store)
    {
    }

    // Queues the rows, and the end of a game when given, then writes all
    // that is queued. False (with the store's lastError()) when the write
    // failed; nothing queued is lost.
    bool record(const QList<GameDart> &rows, std::optional<std::pair<qint64, GameResult>> finished = {});
    // Writes what is still queued; true when nothing is left.
    bool flush();
    bool hasPending() const { return !rows_.isEmpty() || !finished_.isEmpty(); }
    int pendingRows() const { return static_cast<int>(rows_.size()); }

private:
    GameLog &store_;
    QList<GameDart> rows_;
    QList<std::pair<qint64, GameResult>> finished_;
};

} // namespace tavrix
