#include "ui/statistics/statistics_charts.h"

#include "core/training/drill.h"

#include <QBarCategoryAxis>
#include <QHorizontalBarSeries>
#include <QBarSet>
#include <QChart>
#include <QChartView>
#include <QCursor>
#include <QDateTime>
#include <QDateTimeAxis>
#include <QHeaderView>
#include <QLineSeries>
#include <QSplitter>
#include <QTableWidget>
#include <QToolTip>
#include <QValueAxis>

#include <algorithm>
#include <tuple>
#include <cmath>

namespace tavrix {

namespace {

// Local seconds (core/stats/statistics_rows.h) as the local date and time
// they were written in, in milliseconds for a date-time axis.
qreal axisMilliseconds(qint64 localSeconds)
{
    const QDateTime utc = QDateTime::fromSecsSinceEpoch(localSeconds, Qt::UTC);
    return qreal(QDateTime(utc.date(), utc.time()).toMSecsSinceEpoch());
}

QChartView *viewOf(QChart *chart, const QString &name)
{
    chart->legend()->setAlignment(Qt::AlignBottom);
    chart->setMargins(QMargins(4, 4, 4, 4));
    auto *view = new QChartView(chart);
    view->setObjectName(name);
    view->setRenderHint(QPainter::Antialiasing);
    view->setMinimumSize(300, 220);
    return view;
}

QString doubleName(int index)
{
    return index == doubleTargets - 1 ? QStringLiteral("Bull") : QStringLiteral("D%1").arg(index + 1);
}

// A time axis over [first, last] with a little room at either end, so
// that the first and last points are drawn whole, a day wide at least,
// with dates that suit its span: a span of a few days gets the hour too,
// since its ticks lie less than a day apart and the dates alone would
// repeat.
void setTimeRange(QDateTimeAxis *axis, qreal first, qreal last)
{
    constexpr qreal day = 86400000.0;
    const qreal room = std::max(day / 2, (last - first) / 50);
    first -= room;
    last += room;
    const qreal tickSpacing = (last - first) / std::max(1, axis->tickCount() - 1);
    axis->setFormat(last - first > 300 * day ? QStringLiteral("MMM yyyy")
                    : tickSpacing >= day     ? QStringLiteral("d MMM")
                                             : QStringLiteral("d MMM HH:mm"));
    axis->setRange(QDateTime::fromMSecsSinceEpoch(qint64(first)), QDateTime::fromMSecsSinceEpoch(qint64(last)));
}

// A time axis below and an axis of whole numbers on the left, both
// attached to each of the chart's series given.
std::pair<QDateTimeAxis *, QValueAxis *> addTimeAxes(QChart *chart, std::initializer_list<QLineSeries *> series)
{
    auto *time = new QDateTimeAxis;
    time->setTickCount(5);
    auto *values = new QValueAxis;
    values->setLabelFormat(QStringLiteral("%d"));
    chart->addAxis(time, Qt::AlignBottom);
    chart->addAxis(values, Qt::AlignLeft);
    for (QLineSeries *one : series) {
        one->attachAxis(time);
        one->attachAxis(values);
    }
    return {time, values};
}

} // namespace

StatisticsCharts::StatisticsCharts(QWidget *parent)
    : QTabWidget(parent)
{
    setObjectName(QStringLiteral("tabStatisticsCharts"));
    buildAverages();
    buildDoubles();
    buildPractice();
    buildTraining();
}

void StatisticsCharts::buildAverages()
{
    averagesChart_ = new QChart;
    averagesChart_->setTitle(QStringLiteral("Three-dart average per 301/501 game"));
    gameAverages_ = new QLineSeries;
    gameAverages_->setName(QStringLiteral("Game"));
    gameAverages_->setPointsVisible(true);
    gameAverages_->setMarkerSize(5);
    gameAverages_->setPen(QPen(QColor(120, 150, 200), 1));
    movingAverage_ = new QLineSeries;
    movingAverage_->setName(QStringLiteral("Last 10 games"));
    movingAverage_->setPen(QPen(QColor(200, 60, 30), 2.5));
    averagesChart_->addSeries(gameAverages_);
    averagesChart_->addSeries(movingAverage_);
    std::tie(averagesTime_, averagesValue_) = addTimeAxes(averagesChart_, {gameAverages_, movingAverage_});
    addTab(viewOf(averagesChart_, QStringLiteral("chartAverages")), QStringLiteral("Averages"));
}

void StatisticsCharts::buildDoubles()
{
    doublesChart_ = new QChart;
    doublesChart_->setTitle(QStringLiteral("Hit rate per double, games and practice (%)"));
    doubleRates_ = new QBarSet(QStringLiteral("Darts in the double aimed at"));
    // The bars lie across, the doubles listed up the side, where their
    // names fit in full even in a small window.
    QStringList names;
    for (int i = 0; i < doubleTargets; ++i) {
        doubleRates_->append(0);
        names << doubleName(i);
    }
    auto *series = new QHorizontalBarSeries;
    series->append(doubleRates_);
    doublesChart_->addSeries(series);
    auto *categories = new QBarCategoryAxis;
    categories->append(names);
    categories->setTruncateLabels(false);
    auto *rates = new QValueAxis;
    rates->setRange(0, 100);
    rates->setLabelFormat(QStringLiteral("%d"));
    doublesChart_->addAxis(categories, Qt::AlignLeft);
    doublesChart_->addAxis(rates, Qt::AlignBottom);
    series->attachAxis(categories);
    series->attachAxis(rates);
    connect(series, &QHorizontalBarSeries::hovered, this, [this](bool over, int index, QBarSet *) {
        if (over)
            QToolTip::showText(QCursor::pos(), doubleTip(index), this);
        else
            QToolTip::hideText();
    });
    addTab(viewOf(doublesChart_, QStringLiteral("chartDoubles")), QStringLiteral("Doubles"));
}

void StatisticsCharts::buildPractice()
{
    practiceChart_ = new QChart;
    practiceChart_->setTitle(QStringLiteral("Practice hit rate per week (%)"));
    practiceRates_ = new QLineSeries;
    practiceRates_->setName(QStringLiteral("Darts on their target"));
    practiceRates_->setPointsVisible(true);
    practiceChart_->addSeries(practiceRates_);
    QValueAxis *rates = nullptr;
    std::tie(practiceTime_, rates) = addTimeAxes(practiceChart_, {practiceRates_});
    rates->setRange(0, 100);
    addTab(viewOf(practiceChart_, QStringLiteral("chartPractice")), QStringLiteral("Practice"));
}

void StatisticsCharts::buildTraining()
{
    auto *split = new QSplitter(Qt::Vertical);
    split->setObjectName(QStringLiteral("splitTraining"));
    split->setChildrenCollapsible(false);
    drillTable_ = new QTableWidget(0, 4, split);
    drillTable_->setObjectName(QStringLiteral("tblDrillHistory"));
    drillTable_->setHorizontalHeaderLabels(
        {QStringLiteral("Drill"), QStringLiteral("Best"), QStringLiteral("Last 10 avg."), QStringLiteral("Played")});
    drillTable_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    drillTable_->setSelectionBehavior(QAbstractItemView::SelectRows);
    drillTable_->setSelectionMode(QAbstractItemView::SingleSelection);
    drillTable_->verticalHeader()->hide();
    drillTable_->setWordWrap(false);
    QHeaderView *header = drillTable_->horizontalHeader();
    // The name takes what the figures leave; the figures keep their width.
    header->setSectionResizeMode(0, QHeaderView::Stretch);
    for (int column = 1; column < 4; ++column)
        header->setSectionResizeMode(column, QHeaderView::ResizeToContents);
    drillTable_->setMinimumHeight(110);
    connect(drillTable_, &QTableWidget::currentCellChanged, this,
            [this](int row) { showDrillScores(row); });

    drillChart_ = new QChart;
    drillChart_->setTitle(QStringLiteral("Scores of the drill chosen above"));
    drillScores_ = new QLineSeries;
    drillScores_->setName(QStringLiteral("Completed drill"));
    drillScores_->setPointsVisible(true);
    drillScores_->setMarkerSize(5);
    drillChart_->addSeries(drillScores_);
    std::tie(drillTime_, drillValue_) = addTimeAxes(drillChart_, {drillScores_});
    QChartView *view = viewOf(drillChart_, QStringLiteral("chartDrillScores"));
    // The table and the chart share the tab's height on the smallest screen.
    view->setMinimumSize(300, 180);
    split->addWidget(drillTable_);
    split->addWidget(view);
    // The chart takes the larger share; the table scrolls past a few drills.
    split->setStretchFactor(0, 1);
    split->setStretchFactor(1, 2);
    split->setSizes({1, 2});
    addTab(split, QStringLiteral("Training"));
}

QString drillHistoryName(const DrillHistory &drill)
{
    const auto kind = DrillKind(drill.kind);
    QString name = drillName(kind);
    if (name.isEmpty())
        name = QStringLiteral("Drill %1").arg(drill.kind);
    if (kind == DrillKind::NinetyNineDarts)
        name += drill.targetNumber == 25 ? QStringLiteral(" (Bull)") : QStringLiteral(" (%1)").arg(drill.targetNumber);
    return name;
}

void StatisticsCharts::showDrills(const std::vector<DrillHistory> &drills)
{
    // The row chosen stays chosen when the figures are worked out again.
    const int chosen = drillTable_->currentRow();
    std::optional<std::pair<int, int>> chosenDrill;
    if (chosen >= 0 && chosen < int(drills_.size()))
        chosenDrill = std::pair{drills_[size_t(chosen)].kind, drills_[size_t(chosen)].targetNumber};
    drills_ = drills;
    const QString none = QStringLiteral("N/A");
    const QSignalBlocker quiet(drillTable_);
    drillTable_->setRowCount(int(drills_.size()));
    int again = drills_.empty() ? -1 : 0;
    for (int row = 0; row < int(drills_.size()); ++row) {
        const DrillHistory &drill = drills_[size_t(row)];
        const QString texts[] = {drillHistoryName(drill), drill.best ? QString::number(*drill.best) : none,
                                 drill.lastTenAverage ? QString::number(*drill.lastTenAverage, 'f', 1) : none,
                                 QString::number(drill.count)};
        for (int column = 0; column < 4; ++column) {
            auto *item = new QTableWidgetItem(texts[column]);
            if (column > 0)
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            drillTable_->setItem(row, column, item);
        }
        if (chosenDrill && *chosenDrill == std::pair{drill.kind, drill.targetNumber})
            again = row;
    }
    drillTable_->setCurrentCell(again, 0);
    showDrillScores(again);
}

void StatisticsCharts::showDrillScores(int row)
{
    QList<QPointF> points;
    int lowest = 0;
    int highest = 10;
    if (row >= 0 && row < int(drills_.size())) {
        const DrillHistory &drill = drills_[size_t(row)];
        drillChart_->setTitle(QStringLiteral("Scores at ") + drillHistoryName(drill));
        for (const DrillScorePoint &point : drill.scores) {
            points.append({axisMilliseconds(point.endedAt), qreal(point.score)});
            lowest = std::min(lowest, point.score);
            highest = std::max(highest, point.score);
        }
    } else {
        drillChart_->setTitle(QStringLiteral("Scores of the drill chosen above"));
    }
    drillScores_->replace(points);
    const qreal now = qreal(QDateTime::currentMSecsSinceEpoch());
    setTimeRange(drillTime_, points.isEmpty() ? now : points.first().x(), points.isEmpty() ? now : points.last().x());
    // Room above the best score, on a round figure.
    const int step = highest > 100 ? 50 : 10;
    drillValue_->setRange(lowest, step * ((highest + step) / step));
    // Ticks on round figures too (0, 20, 40 ... rather than 0, 22, 45 ...).
    drillValue_->applyNiceNumbers();
}

void StatisticsCharts::showStatistics(const PlayerStatistics &statistics)
{
    QList<QPointF> games;
    QList<QPointF> moving;
    games.reserve(qsizetype(statistics.averages.size()));
    moving.reserve(qsizetype(statistics.averages.size()));
    double highest = 60;
    for (const GameAveragePoint &point : statistics.averages) {
        const qreal at = axisMilliseconds(point.playedAt);
        games.append({at, point.average});
        moving.append({at, point.movingAverage});
        highest = std::max(highest, point.average);
    }
    gameAverages_->replace(games);
    movingAverage_->replace(moving);
    const qreal now = qreal(QDateTime::currentMSecsSinceEpoch());
    setTimeRange(averagesTime_, games.isEmpty() ? now : games.first().x(), games.isEmpty() ? now : games.last().x());
    averagesValue_->setRange(0, std::min(180.0, 20.0 * std::ceil(highest / 20.0)));

    doubles_ = statistics.doubles;
    for (int i = 0; i < doubleTargets; ++i) {
        const DoubleRate &rate = doubles_[i];
        doubleRates_->replace(i, rate.aimed > 0 ? 100.0 * double(rate.hit) / double(rate.aimed) : 0.0);
    }

    QList<QPointF> weeks;
    weeks.reserve(qsizetype(statistics.practiceWeeks.size()));
    for (const WeekRate &week : statistics.practiceWeeks)
        weeks.append({axisMilliseconds(week.weekStart), 100.0 * double(week.hits) / double(week.darts)});
    practiceRates_->replace(weeks);
    setTimeRange(practiceTime_, weeks.isEmpty() ? now : weeks.first().x(), weeks.isEmpty() ? now : weeks.last().x());

    showDrills(statistics.drills);
}

QString StatisticsCharts::doubleTip(int index) const
{
    if (index < 0 || index >= doubleTargets)
        return {};
    const DoubleRate &rate = doubles_[index];
    if (rate.aimed == 0)
        return doubleName(index) + QStringLiteral(": no darts aimed at it");
    return QStringLiteral("%1: %2 of %3 darts hit (%4%)")
        .arg(doubleName(index))
        .arg(rate.hit)
        .arg(rate.aimed)
        .arg(100.0 * double(rate.hit) / double(rate.aimed), 0, 'f', 1);
}

} // namespace tavrix
