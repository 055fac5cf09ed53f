#include "core/stats/game_journal.h"

#include <QTimer>

#include <algorithm>

namespace tavrix {

GameJournal::GameJournal(GameLog &store, QObject *parent)
    : QObject(parent)
    , store_(store)
    , retryTimer_(new QTimer(this))
{
    retryTimer_->setObjectName(QStringLiteral("saveRetryTimer"));
    retryTimer_->setInterval(retryIntervalMs);
    connect(retryTimer_, &QTimer::timeout, this, &GameJournal::flush);
}

std::optional<qint64> GameJournal::startGame(const NewGame &game, const QString &playerName)
{
    const std::optional<qint64> id = store_.insertGame(game);
    if (id) {
        games_.append({*id, game, playerName});
        forgetWrittenGames();
    }
    return id;
}

void GameJournal::forgetWrittenGames()
{
    const auto kept = [this](const StartedGame &started) {
        if (!games_.isEmpty() && started.id == games_.last().id)
            return true;
        return std::any_of(rows_.cbegin(), rows_.cend(), [&](const GameDart &row) { return row.gameId == started.id; })
               || std::any_of(finished_.cbegin(), finished_.cend(),
                              [&](const auto &finished) { return finished.first == started.id; });
    };
    QList<StartedGame> still;
    for (const StartedGame &started : std::as_const(games_))
        if (kept(started))
            still.append(started);
    games_ = still;
}

bool GameJournal::flushIntoNewFile()
{
    for (const StartedGame &started : std::as_const(games_)) {
        if (!store_.restoreGame(started.id, started.game, started.playerName))
            return false;
    }
    return write();
}

bool GameJournal::record(const QList<GameDart> &rows, std::optional<std::pair<qint64, GameResult>> finished)
{
    rows_.append(rows);
    if (finished)
        finished_.append(*finished);
    if (write())
        return true;
    retryTimer_->start();
    if (!failureAnnounced_) {
        failureAnnounced_ = true;
        emit firstFailure();
    }
    return false;
}

bool GameJournal::flush()
{
    return write();
}

bool GameJournal::flushForGood()
{
    retryTimer_->stop();
    return write();
}

bool GameJournal::write()
{
    if (!hasPending()) {
        retryTimer_->stop();
        failureAnnounced_ = false;
        return true;
    }
    StatsAccess::Batch batch(store_);
    if (!batch.isActive())
        return false;
    for (const GameDart &row : std::as_const(rows_)) {
        if (!store_.insertGameDart(row))
            return false;
    }
    for (const auto &[gameId, result] : std::as_const(finished_)) {
        if (!store_.finishGame(gameId, result))
            return false;
    }
    if (!batch.commit())
        return false;
    rows_.clear();
    finished_.clear();
    forgetWrittenGames();
    retryTimer_->stop();
    failureAnnounced_ = false;
    return true;
}

} // namespace tavrix
