#include "ui/statistics/statistics_service.h"

#include "core/stats/stats_store.h"

#include <QDateTime>
#include <QtConcurrent>

#include <atomic>

namespace tavrix {

StatisticsService::StatisticsService(const StatsStore &store, QObject *parent)
    : QObject(parent)
    , store_(store)
{
    connect(&watcher_, &QFutureWatcher<Result>::finished, this, &StatisticsService::finished);
}

StatisticsService::~StatisticsService()
{
    watcher_.waitForFinished();
}

void StatisticsService::request(qint64 playerId, StatsPeriod period, bool club)
{
    if (working_) {
        waiting_ = Request{playerId, period, club};
        return;
    }
    start({playerId, period, club});
}

void StatisticsService::start(const Request &request)
{
    // Now as the stored times are written: the local date and time.
    const std::optional<qint64> now = localSeconds(
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")).toStdString());
    working_ = true;
    watcher_.setFuture(QtConcurrent::run(&StatisticsService::work, store_.address(), store_.serverPassword(),
                                         request, periodStart(request.period, now.value_or(0))));
}

void StatisticsService::waitForWork()
{
    // The watcher tells of the end through the event loop, perhaps not yet:
    // each result is taken here.
    while (working_) {
        watcher_.waitForFinished();
        finished();
    }
}

StatisticsService::Result StatisticsService::work(StoreAddress address, QString password, Request request,
                                                  std::optional<qint64> since)
{
    static std::atomic<int> serial = 0;
    Result result;
    // A file that has gone is not made again here; the window tells of it.
    StatsStore store(QStringLiteral("statistics%1").arg(++serial));
    if (!store.openExisting(address, password)) {
        result.error = store.lastError();
        return result;
    }
    std::optional<StatisticsRows> rows = store.statisticsRows(request.playerId);
    if (!rows) {
        result.error = store.lastError();
        return result;
    }
    result.statistics = playerStatistics(std::move(*rows), since);
    if (request.club) {
        if (std::optional<std::vector<ClubPlayerRows>> players = store.clubRows())
            result.club = clubLines(std::move(*players), since);
        else
            result.clubError = store.lastError();
    }
    return result;
}

void StatisticsService::finished()
{
    const QFuture<Result> future = watcher_.future();
    if (!working_ || !future.isFinished())
        return;
    working_ = false;
    const Result result = future.resultCount() > 0 ? future.result() : Result{{}, QStringLiteral("The work stopped."), {}, {}};
    if (waiting_) {
        // A newer request replaces this result.
        const Request next = *waiting_;
        waiting_.reset();
        start(next);
        return;
    }
    if (result.statistics)
        emit ready(*result.statistics);
    else
        emit failed(result.error);
    if (result.club)
        emit clubReady(*result.club);
    else if (!result.clubError.isEmpty())
        emit clubFailed(result.clubError);
}

} // namespace tavrix
