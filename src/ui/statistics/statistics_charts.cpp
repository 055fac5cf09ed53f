#include "ui/statistics/statistics_charts.h"

#include <QBarCategoryAxis>
#include <QHorizontalBarSeries>
#include <QBarSet>
#include <QChart>
#include <QChartView>
#include <QCursor>
#include <QDateTime>
#include <QDateTimeAxis>
#include <QLineSeries>
#include <QToolTip>
#include <QValueAxis>

#include <algorithm>
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
// with dates that suit its span.
void setTimeRange(QDateTimeAxis *axis, qreal first, qreal last)
{
    constexpr qreal day = 86400000.0;
    const qreal room = std::max(day / 2, (last - first) / 50);
    first -= room;
    last += room;
    axis->setFormat(last - first > 300 * day ? QStringLiteral("MMM yyyy") : QStringLiteral("d MMM"));
    axis->setRange(QDateTime::fromMSecsSinceEpoch(qint64(first)), QDateTime::fromMSecsSinceEpoch(qint64(last)));
}

} // namespace

StatisticsCharts::StatisticsCharts(QWidget *parent)
    : QTabWidget(parent)
{
    setObjectName(QStringLiteral("tabStatisticsCharts"));
    buildAverages();
    buildDoubles();
    buildPractice();
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
    averagesTime_ = new QDateTimeAxis;
    averagesTime_->setTickCount(5);
    averagesValue_ = new QValueAxis;
    averagesValue_->setLabelFormat(QStringLiteral("%d"));
    averagesChart_->addAxis(averagesTime_, Qt::AlignBottom);
    averagesChart_->addAxis(averagesValue_, Qt::AlignLeft);
    for (QLineSeries *series : {gameAverages_, movingAverage_}) {
        series->attachAxis(averagesTime_);
        series->attachAxis(averagesValue_);
    }
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
    practiceTime_ = new QDateTimeAxis;
    practiceTime_->setTickCount(5);
    auto *rates = new QValueAxis;
    rates->setRange(0, 100);
    rates->setLabelFormat(QStringLiteral("%d"));
    practiceChart_->addAxis(practiceTime_, Qt::AlignBottom);
    practiceChart_->addAxis(rates, Qt::AlignLeft);
    practiceRates_->attachAxis(practiceTime_);
    practiceRates_->attachAxis(rates);
    addTab(viewOf(practiceChart_, QStringLiteral("chartPractice")), QStringLiteral("Practice"));
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
