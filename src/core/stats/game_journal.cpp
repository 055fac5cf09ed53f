#include "core/stats/game_journal.h"

#include <QTimer>

#include <algorithm>

namespace tavrix {

GameJournal::GameJournal(PlayLog &store, QObject *parent)
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
        games_.append({*id, game, playerName, openMatch_});
        forgetWritten();
    }
    return id;
}

std::optional<qint64> GameJournal::startMatch(const NewMatch &match)
{
    const std::optional<qint64> id = store_.insertMatch(match);
    if (id) {
        matches_.append({*id, match});
        openMatch_ = id;
        forgetWritten();
    }
    return id;
}

void GameJournal::forgetWritten()
{
    const auto anyOf = [](const auto &list, const auto &test) { return std::any_of(list.cbegin(), list.cend(), test); };
    const auto keptGame = [&](const StartedGame &started) {
        const qint64 id = started.id;
        return (!games_.isEmpty() && id == games_.last().id) || (started.inMatch && started.inMatch == openMatch_)
               || anyOf(rows_, [&](const GameDart &row) { return row.gameId == id; })
               || anyOf(finished_, [&](const auto &finished) { return finished.first == id; })
               || anyOf(legs_, [&](const MatchLeg &leg) { return leg.gameId == id; });
    };
    const auto keptMatch = [&](const StartedMatch &started) {
        const qint64 id = started.id;
        return id == openMatch_ || anyOf(legs_, [&](const MatchLeg &leg) { return leg.matchId == id; })
               || anyOf(matchEnds_, [&](const auto &end) { return end.first == id; });
    };
    games_.removeIf([&](const StartedGame &started) { return !keptGame(started); });
    matches_.removeIf([&](const StartedMatch &started) { return !keptMatch(started); });
}

bool GameJournal::flushIntoNewFile()
{
    for (const StartedGame &started : std::as_const(games_)) {
        if (!store_.restoreGame(started.id, started.game, started.playerName))
            return false;
    }
    for (const StartedMatch &started : std::as_const(matches_)) {
        if (!store_.restoreMatch(started.id, started.match))
            return false;
    }
    return write();
}

bool GameJournal::record(const QList<GameDart> &rows, std::optional<std::pair<qint64, GameResult>> finished)
{
    rows_.append(rows);
    if (finished)
        finished_.append(*finished);
    return writeOrKeep();
}

bool GameJournal::recordMatch(std::optional<MatchLeg> leg, std::optional<std::pair<qint64, MatchEnd>> end)
{
    if (leg)
        legs_.append(*leg);
    if (end) {
        matchEnds_.append(*end);
        // No leg comes after the end: the match's games need keeping only
        // for the links kept.
        if (openMatch_ == end->first)
            openMatch_.reset();
    }
    return writeOrKeep();
}

bool GameJournal::writeOrKeep()
{
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
    // Each write in order, stopping at the first that fails.
    const auto all = [](const auto &list, const auto &write) { return std::all_of(list.cbegin(), list.cend(), write); };
    const bool written =
        all(rows_, [this](const GameDart &row) { return store_.insertGameDart(row); })
        && all(finished_, [this](const auto &finished) { return store_.finishGame(finished.first, finished.second); })
        && all(legs_, [this](const MatchLeg &leg) { return store_.insertMatchLeg(leg); })
        && all(matchEnds_, [this](const auto &end) { return store_.finishMatch(end.first, end.second); });
    if (!written || !batch.commit())
        return false;
    rows_.clear();
    finished_.clear();
    legs_.clear();
    matchEnds_.clear();
    forgetWritten();
    retryTimer_->stop();
    failureAnnounced_ = false;
    return true;
}

} // namespace tavrix
