#include "ui/statistics/club_page.h"

#include "ui/statistics/statistics_charts.h"

#include "core/stats/club_store.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

namespace tavrix {

namespace {

enum Column { PlayerColumn, GamesColumn, AverageColumn, CheckoutColumn, FirstDrillColumn };

// A cell sorted by the number it holds (Qt::UserRole), or by its text in the
// player column. A cell without a number goes last whichever way the column
// is sorted: the table turns the order round for a descending sort, so such
// a cell counts as the largest going up and the smallest going down.
class ClubItem : public QTableWidgetItem {
public:
    explicit ClubItem(const QString &text, std::optional<double> number = std::nullopt)
        : QTableWidgetItem(text)
    {
        if (number)
            setData(Qt::UserRole, *number);
    }

    bool operator<(const QTableWidgetItem &other) const override
    {
        if (column() == PlayerColumn)
            return text().localeAwareCompare(other.text()) < 0;
        const QVariant mine = data(Qt::UserRole);
        const QVariant theirs = other.data(Qt::UserRole);
        if (mine.isValid() && theirs.isValid())
            return mine.toDouble() < theirs.toDouble();
        const bool descending = tableWidget()
                                && tableWidget()->horizontalHeader()->sortIndicatorOrder() == Qt::DescendingOrder;
        if (mine.isValid() == theirs.isValid())
            return false;
        return mine.isValid() != descending;
    }
};

QString shown(const QString &text)
{
    return text == QLatin1String("N/A") ? QString() : text;
}

} // namespace

ClubPage::ClubPage(ClubStore &store, QWidget *parent)
    : QWidget(parent)
    , store_(store)
{
    setObjectName(QStringLiteral("tabClub"));
    hideMe_ = new QCheckBox(QStringLiteral("Hide my figures from the club page"));
    hideMe_->setObjectName(QStringLiteral("chkClubHideMe"));
    note_ = new QLabel;
    note_->setObjectName(QStringLiteral("lblClubNote"));
    note_->setWordWrap(true);
    note_->hide();
    table_ = new QTableWidget;
    table_->setObjectName(QStringLiteral("tblClub"));
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->verticalHeader()->hide();
    table_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table_->horizontalHeader()->setStretchLastSection(true);
    table_->setSortingEnabled(true);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(hideMe_);
    layout->addWidget(note_);
    layout->addWidget(table_, 1);
    connect(hideMe_, &QCheckBox::toggled, this, &ClubPage::hideToggled);
}

void ClubPage::setPlayer(qint64 playerId)
{
    playerId_ = playerId;
    const std::optional<bool> hidden = store_.isHiddenFromClub(playerId);
    const QSignalBlocker quiet(hideMe_);
    hideMe_->setChecked(hidden.value_or(false));
    if (!hidden)
        showFailure(store_.lastError());
}

void ClubPage::hideToggled(bool hidden)
{
    if (!store_.setHiddenFromClub(playerId_, hidden)) {
        showFailure(store_.lastError());
        const QSignalBlocker quiet(hideMe_);
        hideMe_->setChecked(!hidden);
        return;
    }
    emit hiddenChanged();
}

void ClubPage::showFailure(const QString &error)
{
    note_->setText(QStringLiteral("The club's figures cannot be read. ") + error);
    note_->show();
}

void ClubPage::showLines(const std::vector<ClubLine> &lines)
{
    note_->hide();
    const std::vector<ClubDrill> drills = clubDrills(lines);
    QStringList headers{QStringLiteral("Player"), QStringLiteral("Games"), QStringLiteral("3-dart average"),
                        QStringLiteral("Checkout rate")};
    for (const ClubDrill &drill : drills) {
        DrillHistory named;
        named.kind = drill.kind;
        named.targetNumber = drill.targetNumber;
        headers << drillHistoryName(named);
    }
    // Filled unsorted, then sorted once by the column chosen.
    table_->setSortingEnabled(false);
    table_->clearContents();
    table_->setColumnCount(int(headers.size()));
    table_->setHorizontalHeaderLabels(headers);
    table_->setRowCount(int(lines.size()));
    for (int row = 0; row < int(lines.size()); ++row) {
        const ClubLine &line = lines[size_t(row)];
        std::vector<ClubItem *> items{new ClubItem(line.name), new ClubItem(line.texts.games, line.games),
                                      new ClubItem(shown(line.texts.average), line.average),
                                      new ClubItem(shown(line.texts.checkout), line.checkoutRate)};
        for (const ClubDrill &drill : drills) {
            const std::optional<int> best = clubBest(line, drill);
            items.push_back(new ClubItem(best ? QString::number(*best) : QString(),
                                         best ? std::optional<double>(*best) : std::nullopt));
        }
        const bool mine = line.playerId == playerId_;
        for (int column = 0; column < int(items.size()); ++column) {
            ClubItem *item = items[size_t(column)];
            if (column != PlayerColumn)
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            if (mine) {
                QFont bold = item->font();
                bold.setBold(true);
                item->setFont(bold);
                item->setBackground(palette().alternateBase());
            }
            table_->setItem(row, column, item);
        }
    }
    // The column chosen stays chosen; best average first at the start and
    // when the chosen drill's column has gone.
    QHeaderView *header = table_->horizontalHeader();
    if (header->sortIndicatorSection() < 0 || header->sortIndicatorSection() >= table_->columnCount())
        header->setSortIndicator(AverageColumn, Qt::DescendingOrder);
    table_->setSortingEnabled(true);
}

} // namespace tavrix
