#pragma once

// "Statistics": the figures of the player's games in the chosen period on
// the left (and below them those of the matches, once the player has
// played one), the charts in tabs on the right, and on a club's server a
// last tab with every player's figures. Everything is worked out by a
// StatisticsService; while it works a busy bar shows and the window goes on.
// While shown, it follows what is written meanwhile (a game finished, a
// practice set, another copy's darts): the store is looked at every two
// seconds, and the figures are worked out again when it has changed.

#include "core/statistics/player_statistics.h"
#include "core/stats/dart_history.h"

#include <QDialog>

class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QProgressBar;

namespace tavrix {

class ClubPage;
class StatsStore;
class StatisticsCharts;
class StatisticsService;

class StatisticsDialog : public QDialog {
    Q_OBJECT

public:
    StatisticsDialog(StatsStore &store, QWidget *parent = nullptr);

    // Shows the dialog for the player and works out the figures afresh.
    void showFor(qint64 playerId, const QString &playerName);
    // Fills the figures and the charts.
    void showStatistics(const PlayerStatistics &statistics);
    StatisticsService *service() const { return service_; }
    StatisticsCharts *charts() const { return charts_; }
    // The "Club" page beside the charts, on a club's server only.
    ClubPage *clubPage() const { return clubPage_; }

private:
    void recompute();
    // Adds the club page when the statistics are on a server, and takes it
    // away when they are on a file: the store may change between showings.
    void followDatabase();
    void recomputeIfChanged();
    void showFailure(const QString &error);
    QLabel *addFigure(QGridLayout *grid, const char *name, const QString &caption);

    StatsStore &store_;
    StatisticsService *service_ = nullptr;
    StatisticsCharts *charts_ = nullptr;
    ClubPage *clubPage_ = nullptr;
    QComboBox *period_ = nullptr;
    QProgressBar *busy_ = nullptr;
    QLabel *note_ = nullptr;
    QLabel *games_ = nullptr;
    QLabel *won_ = nullptr;
    QLabel *average_ = nullptr;
    QLabel *firstNine_ = nullptr;
    QLabel *checkout_ = nullptr;
    QLabel *tons_ = nullptr;
    QLabel *tons140_ = nullptr;
    QLabel *tons180_ = nullptr;
    QLabel *bestLeg_ = nullptr;
    QLabel *highOut_ = nullptr;
    QLabel *marksPerRound_ = nullptr;
    QGroupBox *matches_ = nullptr;
    QLabel *matchesPlayed_ = nullptr;
    QLabel *matchesWonLost_ = nullptr;
    QLabel *matchesAbandoned_ = nullptr;
    QLabel *matchAverage_ = nullptr;
    QLabel *matchOpponentAverage_ = nullptr;
    qint64 playerId_ = 0;
    // The store's version when the figures shown were asked for.
    std::optional<StoreVersion> counted_;
};

} // namespace tavrix
