#pragma once

// The statistics window's charts, one per tab: the three-dart average of
// each 301/501 game over time with its moving average over 10 games, the
// hit rate per double, the practice hit rate per week, and the training
// drills: a table of each drill played and the chosen drill's scores over
// time. Each series is filled in one replace(), so ten thousand games draw
// as two paths.

#include "core/statistics/player_statistics.h"

#include <QTabWidget>

class QBarSet;
class QChart;
class QDateTimeAxis;
class QLineSeries;
class QTableWidget;
class QValueAxis;

namespace tavrix {

class StatisticsCharts : public QTabWidget {
    Q_OBJECT

public:
    explicit StatisticsCharts(QWidget *parent = nullptr);

    void showStatistics(const PlayerStatistics &statistics);
    // The tooltip of a double's bar: "D16: 12 of 40 darts hit (30.0%)".
    QString doubleTip(int index) const;
    QTableWidget *drillTable() const { return drillTable_; }

private:
    void buildAverages();
    void buildDoubles();
    void buildPractice();
    void buildTraining();
    void showDrills(const std::vector<DrillHistory> &drills);
    // The scores of the drill in the table's row, or none.
    void showDrillScores(int row);

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

    std::vector<DrillHistory> drills_;
    QTableWidget *drillTable_ = nullptr;
    QChart *drillChart_ = nullptr;
    QLineSeries *drillScores_ = nullptr;
    QDateTimeAxis *drillTime_ = nullptr;
    QValueAxis *drillValue_ = nullptr;
};

// A drill's name in the training table: "Bob's 27", "99 darts at one
// target (Bull)".
QString drillHistoryName(const DrillHistory &drill);

} // namespace tavrix
