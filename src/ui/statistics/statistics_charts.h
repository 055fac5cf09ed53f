#pragma once

// The statistics window's charts, one per tab: the three-dart average of
// each 301/501 game over time with its moving average over 10 games, the
// hit rate per double, and the practice hit rate per week. Each series is
// filled in one replace(), so ten thousand games draw as two paths.

#include "core/statistics/player_statistics.h"

#include <QTabWidget>

class QBarSet;
class QChart;
class QDateTimeAxis;
class QLineSeries;
class QValueAxis;

namespace tavrix {

class StatisticsCharts : public QTabWidget {
    Q_OBJECT

public:
    explicit StatisticsCharts(QWidget *parent = nullptr);

    void showStatistics(const PlayerStatistics &statistics);
    // The tooltip of a double's bar: "D16: 12 of 40 darts hit (30.0%)".
    QString doubleTip(int index) const;

private:
    void buildAverages();
    void buildDoubles();
    void buildPractice();

    QChart *averagesChart_ = nullptr;
    QLineSeries *gameAverages_ = nullptr;
    QLineSeries *movingAverage_ = nullptr;
    QDateTimeAxis *averagesTime_ = nullptr;
    QValueAxis *averagesValue_ = nullptr;

    QChart *doublesChart_ = nullptr;
    QBarSet *doubleRates_ = nullptr;
    std::array<DoubleRate, doubleTargets> doubles_{};

    QChart *practiceChart_ = nullptr;
    QLineSeries *practiceRates_ = nullptr;
    QDateTimeAxis *practiceTime_ = nullptr;
};

} // namespace tavrix
