#include "ui/statistics/statistics_dialog.h"

#include "ui/statistics/club_page.h"
#include "ui/statistics/statistics_charts.h"
#include "ui/statistics/statistics_service.h"

#include "core/stats/stats_store.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

namespace tavrix {

namespace {

// The periods in the order of the combo box.
constexpr StatsPeriod periods[] = {StatsPeriod::AllTime, StatsPeriod::Last365Days, StatsPeriod::Last30Days,
                                   StatsPeriod::Last7Days};

// How often a shown window looks whether the store has changed.
constexpr int changeLookMs = 2000;

} // namespace

StatisticsDialog::StatisticsDialog(StatsStore &store, QWidget *parent)
    : QDialog(parent)
    , store_(store)
    , service_(new StatisticsService(store, this))
{
    setObjectName(QStringLiteral("StatisticsDialog"));
    setWindowTitle(QStringLiteral("Statistics"));
    setSizeGripEnabled(true);

    auto *figures = new QGroupBox(QStringLiteral("301/501 games"));
    auto *grid = new QGridLayout(figures);
    grid->setVerticalSpacing(4);
    period_ = new QComboBox;
    period_->setObjectName(QStringLiteral("cboPeriod"));
    period_->addItems({QStringLiteral("All time"), QStringLiteral("Last 365 days"), QStringLiteral("Last 30 days"),
                       QStringLiteral("Last 7 days")});
    games_ = addFigure(grid, "statGames", QStringLiteral("Games"));
    won_ = addFigure(grid, "statWon", QStringLiteral("Won"));
    average_ = addFigure(grid, "statAverage", QStringLiteral("3-dart average"));
    firstNine_ = addFigure(grid, "statFirst9", QStringLiteral("First 9 average"));
    checkout_ = addFigure(grid, "statCheckout", QStringLiteral("Checkout rate"));
    tons_ = addFigure(grid, "statTons", QStringLiteral("100+"));
    tons140_ = addFigure(grid, "stat140", QStringLiteral("140+"));
    tons180_ = addFigure(grid, "stat180", QStringLiteral("180"));
    bestLeg_ = addFigure(grid, "statBestLeg", QStringLiteral("Best leg (darts)"));
    highOut_ = addFigure(grid, "statHighOut", QStringLiteral("Highest out"));
    marksPerRound_ = addFigure(grid, "statMarksPerRound", QStringLiteral("Cricket marks per round"));
    // Hidden until the player has ended a match.
    matches_ = new QGroupBox(QStringLiteral("Matches"));
    matches_->setObjectName(QStringLiteral("grpMatches"));
    matches_->hide();
    auto *matchGrid = new QGridLayout(matches_);
    matchGrid->setVerticalSpacing(4);
    matchesPlayed_ = addFigure(matchGrid, "lblMatchesPlayed", QStringLiteral("Played"));
    matchesWonLost_ = addFigure(matchGrid, "lblMatchesWon", QStringLiteral("Won / lost"));
    matchesAbandoned_ = addFigure(matchGrid, "lblMatchesAbandoned", QStringLiteral("Abandoned"));
    matchAverage_ = addFigure(matchGrid, "lblMatchAverage", QStringLiteral("301/501 average"));
    matchOpponentAverage_ = addFigure(matchGrid, "lblMatchOpponentAverage", QStringLiteral("Opponents' average"));
    note_ = new QLabel;
    note_->setObjectName(QStringLiteral("lblStatisticsNote"));
    note_->setWordWrap(true);
    note_->setMaximumWidth(240);
    busy_ = new QProgressBar;
    busy_->setObjectName(QStringLiteral("barStatisticsBusy"));
    busy_->setRange(0, 0);
    busy_->setTextVisible(false);
    busy_->setMaximumHeight(12);
    busy_->hide();

    auto *left = new QVBoxLayout;
    left->addWidget(new QLabel(QStringLiteral("Period:")));
    left->addWidget(period_);
    left->addWidget(busy_);
    left->addWidget(figures);
    left->addWidget(matches_);
    left->addWidget(note_);
    left->addStretch(1);

    charts_ = new StatisticsCharts;
    auto *layout = new QHBoxLayout(this);
    layout->addLayout(left, 0);
    layout->addWidget(charts_, 1);
    followDatabase();

    connect(period_, &QComboBox::currentIndexChanged, this, &StatisticsDialog::recompute);
    connect(service_, &StatisticsService::ready, this, &StatisticsDialog::showStatistics);
    connect(service_, &StatisticsService::failed, this, &StatisticsDialog::showFailure);
    auto *watch = new QTimer(this);
    watch->setInterval(changeLookMs);
    connect(watch, &QTimer::timeout, this, &StatisticsDialog::recomputeIfChanged);
    watch->start();

    // Pleasant on a large screen, never larger than the one it is on.
    QSize size(1100, 680);
    if (const QScreen *screen = parent ? parent->screen() : this->screen()) {
        const QSize room = screen->availableGeometry().size() - QSize(16, 40);
        size = size.boundedTo(room).expandedTo(minimumSizeHint());
    }
    resize(size);
}

void StatisticsDialog::followDatabase()
{
    if (store_.server() && !clubPage_) {
        clubPage_ = new ClubPage(store_);
        charts_->addTab(clubPage_, QStringLiteral("Club"));
        connect(service_, &StatisticsService::clubReady, clubPage_, &ClubPage::showLines);
        connect(service_, &StatisticsService::clubFailed, clubPage_, &ClubPage::showFailure);
        connect(clubPage_, &ClubPage::hiddenChanged, this, &StatisticsDialog::recompute);
    } else if (!store_.server() && clubPage_) {
        delete clubPage_;
        clubPage_ = nullptr;
    }
}

QLabel *StatisticsDialog::addFigure(QGridLayout *grid, const char *name, const QString &caption)
{
    const int row = grid->rowCount();
    grid->addWidget(new QLabel(caption + QLatin1Char(':')), row, 0);
    auto *figure = new QLabel(QStringLiteral("N/A"));
    figure->setObjectName(QString::fromLatin1(name));
    figure->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    figure->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont bold = figure->font();
    bold.setBold(true);
    figure->setFont(bold);
    grid->addWidget(figure, row, 1);
    return figure;
}

void StatisticsDialog::showFor(qint64 playerId, const QString &playerName)
{
    playerId_ = playerId;
    followDatabase();
    if (clubPage_)
        clubPage_->setPlayer(playerId);
    setWindowTitle(QStringLiteral("Statistics - ") + playerName);
    show();
    raise();
    activateWindow();
    recompute();
}

void StatisticsDialog::recompute()
{
    const int index = std::clamp(period_->currentIndex(), 0, int(std::size(periods)) - 1);
    busy_->show();
    counted_ = store_.storeVersion();
    service_->request(playerId_, periods[index], clubPage_ != nullptr);
}

void StatisticsDialog::recomputeIfChanged()
{
    if (!isVisible() || playerId_ == 0 || service_->busy())
        return;
    const std::optional<StoreVersion> now = store_.storeVersion();
    if (now && now != counted_)
        recompute();
}

void StatisticsDialog::showStatistics(const PlayerStatistics &statistics)
{
    busy_->setVisible(service_->busy());
    const StatisticsTexts texts = statisticsTexts(statistics);
    const std::pair<QLabel *, const QString *> figures[] = {
        {games_, &texts.games},       {won_, &texts.won},         {average_, &texts.average},
        {firstNine_, &texts.firstNine}, {checkout_, &texts.checkout}, {tons_, &texts.tons},
        {tons140_, &texts.tons140},   {tons180_, &texts.tons180}, {bestLeg_, &texts.bestLeg},
        {highOut_, &texts.highOut},   {marksPerRound_, &texts.marksPerRound},
        {matchesPlayed_, &texts.matchesPlayed}, {matchesWonLost_, &texts.matchesWonLost},
        {matchesAbandoned_, &texts.matchesAbandoned}, {matchAverage_, &texts.matchAverage},
        {matchOpponentAverage_, &texts.matchOpponentAverage}};
    for (const auto &[label, text] : figures)
        label->setText(*text);
    matches_->setVisible(statistics.matches.anyEver);
    note_->setText(texts.note);
    note_->setVisible(!texts.note.isEmpty());
    charts_->showStatistics(statistics);
}

void StatisticsDialog::showFailure(const QString &error)
{
    busy_->setVisible(service_->busy());
    note_->setText(QStringLiteral("The statistics cannot be read. ") + error);
    note_->show();
}

} // namespace tavrix
