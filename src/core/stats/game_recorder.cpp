#include "core/stats/game_recorder.h"

namespace tavrix {

bool GameRecorder::record(const QList<GameDart> &rows, std::optional<std::pair<qint64, GameResult>> finished)
{
    rows_.append(rows);
    if (finished)
        finished_.append(*finished);
    return flush();
}

bool GameRecorder::flush()
{
    if (!hasPending())
        return true;
    GameLog::Batch batch(store_);
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
    return true;
}

} // namespace tavrix
