#pragma once

// Works out a player's own advice (core/advice/aim_advice.h) away from the
// window: the darts are read through a connection of the worker's own, the
// maps and the checkout table computed there, and the result kept for the
// player until anything is written to the statistics (the same test the
// "You" profile uses). While a fresher result is worked out the last one is
// still given, so the window never waits.

#include "core/advice/aim_advice.h"
#include "core/stats/store_address.h"

#include <QFutureWatcher>
#include <QObject>

#include <memory>
#include <optional>

namespace tavrix {

class CheckoutChart;
class StatsStore;

class AimAdviceService : public QObject {
    Q_OBJECT

public:
    AimAdviceService(StatsStore &store, const CheckoutChart &chart, QObject *parent = nullptr);
    ~AimAdviceService() override;

    // The player's advice as last worked out; null while there is none yet.
    // Starts working out a fresh one when the statistics changed since.
    std::shared_ptr<const PersonalAdvice> advice(qint64 playerId);
    // Whether advice is being worked out now (until its result is taken).
    bool busy() const { return !handled_; }
    // Waits until the work in hand is done and its result kept.
    void waitForWork();
    // Drops the advice kept and the record of work done: the statistics file
    // was replaced, and a new connection's version may equal an old one.
    void forget();

signals:
    // Fresh advice for the player was kept.
    void adviceReady(qint64 playerId);
    // The work in hand ended, with advice or without (the darts could not
    // be read; it is not tried again until the statistics change).
    void workFinished();

private:
    struct Result {
        qint64 playerId = 0;
        StoreVersion version;
        std::shared_ptr<const PersonalAdvice> advice; // null when the darts could not be read
    };
    static Result work(StoreAddress address, QString password, qint64 playerId, StoreVersion version, ChartFirstDarts chart,
                       std::shared_ptr<std::atomic<bool>> stop);
    void finished();

    StatsStore &store_;
    const CheckoutChart &chart_;
    std::optional<Result> kept_;
    // The player and version of the work in hand, or last done.
    qint64 workPlayer_ = 0;
    std::optional<StoreVersion> workVersion_;
    // The result of the work last started has been taken.
    bool handled_ = true;
    QFutureWatcher<Result> watcher_;
    // Set when the window goes: the work stops at its next step.
    std::shared_ptr<std::atomic<bool>> stop_ = std::make_shared<std::atomic<bool>>(false);
};

} // namespace tavrix
