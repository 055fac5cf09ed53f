#pragma once

// Writes what a game records: the darts of each confirmed set, and the end of
// a game with its row, each in one transaction. What cannot be written (the
// file is in use by another program, read-only, or the disk is full) is kept
// in memory, tried again every few seconds and before the next game, and
// written first by the next write that succeeds; the first failure after a
// success is announced once, so the player is told once and not at every set.

#include "core/stats/game_log.h"

#include <QList>
#include <QObject>

#include <optional>

class QTimer;

namespace tavrix {

class GameJournal : public QObject {
    Q_OBJECT

public:
    static constexpr int retryIntervalMs = 5000;

    explicit GameJournal(GameLog &store, QObject *parent = nullptr);

    // Queues the rows, and the end of a game when given, then writes all
    // that is queued. False (with the store's lastError()) when the write
    // failed; nothing queued is lost.
    bool record(const QList<GameDart> &rows, std::optional<std::pair<qint64, GameResult>> finished = {});
    // Writes what is still queued; true when nothing is left.
    bool flush();
    // Writes what is queued at the end of the program, without trying again
    // later; true when nothing is left.
    bool flushForGood();
    bool hasPending() const { return !rows_.isEmpty() || !finished_.isEmpty(); }
    int pendingRows() const { return static_cast<int>(rows_.size()); }
    // "saveRetryTimer": runs while something waits to be written.
    QTimer *retryTimer() const { return retryTimer_; }

signals:
    // A write failed after the last one that succeeded; the store's
    // lastError() says why.
    void firstFailure();

private:
    bool write();

    GameLog &store_;
    QList<GameDart> rows_;
    QList<std::pair<qint64, GameResult>> finished_;
    QTimer *retryTimer_;
    bool failureAnnounced_ = false;
};

} // namespace tavrix
