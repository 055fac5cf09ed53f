#include "ui/advice/aim_advice_service.h"

#include "core/stats/stats_store.h"

#include <QMutex>
#include <QtConcurrent>

#include <atomic>

namespace tavrix {

AimAdviceService::AimAdviceService(StatsStore &store, const CheckoutChart &chart, QObject *parent)
    : QObject(parent)
    , store_(store)
    , chart_(chart)
{
    connect(&watcher_, &QFutureWatcher<Result>::finished, this, &AimAdviceService::finished);
}

AimAdviceService::~AimAdviceService()
{
    stop_->store(true);
    watcher_.waitForFinished();
}

std::shared_ptr<const PersonalAdvice> AimAdviceService::advice(qint64 playerId)
{
    const std::optional<StoreVersion> version = store_.storeVersion();
    const bool keptForPlayer = kept_ && kept_->playerId == playerId;
    if (keptForPlayer && version && kept_->version == *version)
        return kept_->advice;
    // Work for these darts is in hand, or was done and gave nothing.
    const bool tried = workPlayer_ == playerId && workVersion_ == version;
    if (version && !tried && !busy()) {
        workPlayer_ = playerId;
        workVersion_ = *version;
        handled_ = false;
        watcher_.setFuture(QtConcurrent::run(&AimAdviceService::work, store_.address(), store_.serverPassword(), playerId, *version,
                                             chartFirstDarts(chart_), stop_));
    }
    return keptForPlayer ? kept_->advice : nullptr;
}

void AimAdviceService::waitForWork()
{
    // The watcher tells of the end through the event loop, perhaps not yet:
    // the result is taken here.
    watcher_.waitForFinished();
    finished();
}

void AimAdviceService::forget()
{
    // Work in hand read the old file; its result is taken and dropped.
    if (busy())
        waitForWork();
    kept_.reset();
    workPlayer_ = 0;
    workVersion_.reset();
}

AimAdviceService::Result AimAdviceService::work(StoreAddress address, QString password, qint64 playerId, StoreVersion version,
                                                ChartFirstDarts chart, std::shared_ptr<std::atomic<bool>> stop)
{
    // One piece of work at a time: the FFT library's planner is not to be
    // entered from two threads.
    static QMutex oneAtATime;
    const QMutexLocker lock(&oneAtATime);
    static std::atomic<int> serial = 0;
    Result result{playerId, version, nullptr};
    // A file that has gone is not made again here; the window tells of it.
    StatsStore store(QStringLiteral("aimAdvice%1").arg(++serial));
    if (!store.openExisting(address, password))
        return result;
    const std::optional<SpreadFit> fit = readSpreadFit(store, playerId);
    if (!fit)
        return result;
    static ScoreMaps maps;
    if (std::optional<PersonalAdvice> advice = personalAdvice(*fit, chart, maps, stop.get()))
        result.advice = std::make_shared<const PersonalAdvice>(std::move(*advice));
    return result;
}

void AimAdviceService::finished()
{
    const QFuture<Result> future = watcher_.future();
    if (handled_ || !future.isValid() || future.resultCount() == 0)
        return;
    handled_ = true;
    Result result = future.result();
    if (result.advice) {
        const qint64 playerId = result.playerId;
        kept_ = std::move(result);
        emit adviceReady(playerId);
    }
    emit workFinished();
}

} // namespace tavrix
