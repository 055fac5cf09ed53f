#pragma once

// Writes what a game records: its row, the darts of each confirmed set, and
// the end of a game with its row, each in one transaction; and of a match of
// legs its row, the link row of each leg and its end. What cannot be written
// (the file is in use by another program, read-only, or the disk is full, or
// the file was deleted or replaced) is kept in memory, tried again every few
// seconds and before the next game, and written first by the next write that
// succeeds; the first failure after a success is announced once, so the
// player is told once and not at every set. The journal remembers the rows
// of the games and matches its kept rows belong to, so that they can be
// written into a new file that lacks them.

#include "core/stats/play_log.h"

#include <QList>
#include <QObject>

#include <optional>

class QTimer;

namespace tavrix {

class GameJournal : public QObject {
    Q_OBJECT

public:
    static constexpr int retryIntervalMs = 5000;

    explicit GameJournal(PlayLog &store, QObject *parent = nullptr);

    // Writes a new game's row; its id, or nothing (with the store's
    // lastError()) when the row cannot be written.
    std::optional<qint64> startGame(const NewGame &game, const QString &playerName);
    // Writes a new match's row, as startGame does a game's.
    std::optional<qint64> startMatch(const NewMatch &match);

    // Queues the rows, and the end of a game when given, then writes all
    // that is queued. False (with the store's lastError()) when the write
    // failed; nothing queued is lost.
    bool record(const QList<GameDart> &rows, std::optional<std::pair<qint64, GameResult>> finished = {});
    // Queues a leg's link row and the end of a match, each when given, then
    // writes all that is queued, as record() does.
    bool recordMatch(std::optional<MatchLeg> leg, std::optional<std::pair<qint64, MatchEnd>> end = {});
    // Writes what is still queued; true when nothing is left.
    bool flush();
    // Writes what is queued at the end of the program, without trying again
    // later; true when nothing is left.
    bool flushForGood();
    // For a store that has just moved to another file: writes the rows of
    // the games and matches the kept rows belong to where the file lacks
    // them, then what is kept. True when nothing is left.
    bool flushIntoNewFile();
    bool hasPending() const
    {
        return !rows_.isEmpty() || !finished_.isEmpty() || !legs_.isEmpty() || !matchEnds_.isEmpty();
    }
    // The darts kept (what the player is told of); the rows of matches are
    // not counted.
    int pendingRows() const { return static_cast<int>(rows_.size()); }
    // "saveRetryTimer": runs while something waits to be written.
    QTimer *retryTimer() const { return retryTimer_; }

signals:
    // A write failed after the last one that succeeded; the store's
    // lastError() says why.
    void firstFailure();

private:
    bool writeOrKeep();
    bool write();
    void forgetWritten();

    struct StartedGame {
        qint64 id = 0;
        NewGame game;
        QString playerName;
        // The match open when it started, of which it may become a leg.
        std::optional<qint64> inMatch;
    };
    struct StartedMatch {
        qint64 id = 0;
        NewMatch match;
    };

    PlayLog &store_;
    // The game started last, which may still record darts, and those with
    // darts, an end or a leg's link kept, or started during the open match.
    QList<StartedGame> games_;
    // The match open (started, its end not yet given), and those with legs
    // or an end kept.
    QList<StartedMatch> matches_;
    std::optional<qint64> openMatch_;
    QList<GameDart> rows_;
    QList<std::pair<qint64, GameResult>> finished_;
    QList<MatchLeg> legs_;
    QList<std::pair<qint64, MatchEnd>> matchEnds_;
    QTimer *retryTimer_;
    bool failureAnnounced_ = false;
};

} // namespace tavrix
