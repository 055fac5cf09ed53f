#include "core/stats/game_journal.h"

#include <QTimer>

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
    retryTimer_->stop();
    failureAnnounced_ = false;
    return true;
}

} // namespace tavrix
