#pragma once

// The statistics window's "Club" page, shown on a club's server only: every
// player not hidden from it, with the games, 3-dart average, checkout rate
// and best drill scores of the chosen period, sortable by any column (the
// current player's row in bold), and the current player's choice to be
// left off it. The figures come worked out (club_statistics.h); the page
// only shows them.

#include "core/statistics/club_statistics.h"

#include <QWidget>

class QCheckBox;
class QLabel;
class QTableWidget;

namespace tavrix {

class ClubStore;

class ClubPage : public QWidget {
    Q_OBJECT

public:
    explicit ClubPage(ClubStore &store, QWidget *parent = nullptr);

    // The player whose row is marked and whose choice the check box shows.
    void setPlayer(qint64 playerId);
    void showLines(const std::vector<ClubLine> &lines);
    void showFailure(const QString &error);
    QTableWidget *table() const { return table_; }

signals:
    // The player was hidden or shown again: the figures want reading again.
    void hiddenChanged();

private:
    void hideToggled(bool hidden);

    ClubStore &store_;
    qint64 playerId_ = 0;
    QCheckBox *hideMe_ = nullptr;
    QLabel *note_ = nullptr;
    QTableWidget *table_ = nullptr;
};

} // namespace tavrix
