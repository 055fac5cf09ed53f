#pragma once

// Writes what a game records: its row, the darts of each confirmed set, and
// the end of a game with its row, each in one transaction. What cannot be
// written (the file is in use by another program, read-only, or the disk is
// full, or the file was deleted or replaced) is kept in memory, tried again
// every few seconds and before the next game, and written first by the next
// write that succeeds; the first failure after a success is announced once,
// so the player is told once and not at every set. The journal remembers
// the rows of the games its kept darts belong to, so that they can be
// written into a new file that lacks them.

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

    // Writes a new game's row; its id, or nothing (with the store's
    // lastError()) when the row cannot be written.
    std::optional<qint64> startGame(const NewGame &game, const QString &playerName);

    // Queues the rows, and the end of a game when given, then writes all
    // that is queued. False (with the store's lastError()) when the write
    // failed; nothing queued is lost.
    bool record(const QList<GameDart> &rows, std::optional<std::pair<qint64, GameResult>> finished = {});
    // Writes what is still queued; true when nothing is left.
    bool flush();
    // Writes what is queued at the end of the program, without trying again
    // later; true when nothing is left.
    bool flushForGood();
    // For a store that has just moved to another file: writes the rows of
    // the games the kept darts belong to where the file lacks them, then
    // what is kept. True when nothing is left.
    bool flushIntoNewFile();
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
    void forgetWrittenGames();

    struct StartedGame {
        qint64 id = 0;
        NewGame game;
        QString playerName;
    };

    GameLog &store_;
    // The game started last, which may still record darts, and those with
    // darts or an end kept.
    QList<StartedGame> games_;
    QList<GameDart> rows_;
    QList<std::pair<qint64, GameResult>> finished_;
    QTimer *retryTimer_;
    bool failureAnnounced_ = false;
};

} // namespace tavrix
