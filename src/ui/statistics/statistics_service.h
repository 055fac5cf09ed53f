#pragma once

// Works out the statistics window's figures away from the window: the rows
// are read through a connection of the worker's own on the same file and
// counted there (core/statistics/player_statistics.h). One piece of work at
// a time; a request made meanwhile waits for it and replaces any other that
// waits, and only the result of the latest request is given.

#include "core/statistics/club_statistics.h"
#include "core/statistics/player_statistics.h"
#include "core/stats/store_address.h"

#include <QFutureWatcher>
#include <QObject>

#include <optional>

namespace tavrix {

class StatsStore;

class StatisticsService : public QObject {
    Q_OBJECT

public:
    explicit StatisticsService(const StatsStore &store, QObject *parent = nullptr);
    ~StatisticsService() override;

    // Starts working out the player's statistics for the period ending now,
    // and with `club` those of every player on the club page as well.
    void request(qint64 playerId, StatsPeriod period, bool club = false);
    // Whether a request is being worked out or waits.
    bool busy() const { return working_ || waiting_.has_value(); }
    // Waits until every request made is worked out and its result given.
    void waitForWork();

signals:
    void ready(const tavrix::PlayerStatistics &statistics);
    // The rows could not be read; the words say why.
    void failed(const QString &error);
    void clubReady(const std::vector<tavrix::ClubLine> &lines);
    void clubFailed(const QString &error);

private:
    struct Request {
        qint64 playerId = 0;
        StatsPeriod period = StatsPeriod::AllTime;
        bool club = false;
    };
    struct Result {
        std::optional<PlayerStatistics> statistics;
        QString error;
        std::optional<std::vector<ClubLine>> club;
        QString clubError;
    };
    static Result work(StoreAddress address, QString password, Request request, std::optional<qint64> since);
    void start(const Request &request);
    void finished();

    const StatsStore &store_;
    QFutureWatcher<Result> watcher_;
    bool working_ = false;
    std::optional<Request> waiting_;
};

} // namespace tavrix
