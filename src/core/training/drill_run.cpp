#include "core/training/drill_run.h"

#include <cmath>

namespace tavrix {

DrillRun::DrillRun(DrillKind kind, int targetNumber)
    : kind_(kind)
    , targetNumber_(kind == DrillKind::NinetyNineDarts ? targetNumber : 0)
    , drill_(makeDrill(kind, targetNumber))
{
    refresh();
}

bool DrillRun::setMarked() const
{
    return counting_ > 0 && (counting_ == drill_->dartsLeftInSet() || endedEarly_);
}

int DrillRun::placeDart(BoardPoint at)
{
    if (drill_->over() || setMarked() || dartCount() >= drill_->dartsLeftInSet())
        return -1;
    marked_.push_back({at, {}, {}, {}});
    refresh();
    return dartCount() - 1;
}

void DrillRun::moveDart(int index, BoardPoint at)
{
    if (index < 0 || index >= dartCount())
        return;
    marked_[size_t(index)].at = at;
    refresh();
}

int DrillRun::undoDart()
{
    if (marked_.empty())
        return -1;
    marked_.pop_back();
    refresh();
    return dartCount();
}

QList<DrillDart> DrillRun::setRows(qint64 drillId, qint64 playerId) const
{
    QList<DrillDart> rows;
    const int counting = countingDarts();
    for (int i = 0; i < counting; ++i) {
        const MarkedDrillDart &dart = marked_[size_t(i)];
        const StoredScore stored = storedScore(dart.score);
        DrillDart row;
        row.drillId = drillId;
        row.playerId = playerId;
        row.setSeq = confirmedSets() + 1;
        row.dartSeq = i;
        row.x = dart.at.x;
        row.y = dart.at.y;
        row.dist = std::hypot(dart.at.x - dart.aim.aim.x, dart.at.y - dart.aim.aim.y);
        row.score = stored.score;
        row.ring = stored.ring;
        row.targetScore = dart.aim.aimNumber;
        row.targetRing = dart.aim.aimMultiplier;
        row.aimX = dart.aim.aim.x;
        row.aimY = dart.aim.aim.y;
        rows.append(row);
    }
    return rows;
}

std::vector<DrillDartOutcome> DrillRun::confirmSet()
{
    std::vector<DrillDartOutcome> outcomes;
    std::vector<DartScore> set;
    const int counting = countingDarts();
    for (int i = 0; i < counting; ++i) {
        const DartScore score = marked_[size_t(i)].score;
        set.push_back(score);
        outcomes.push_back(drill_->applyDart(score));
    }
    drill_->endSet();
    sets_.push_back(std::move(set));
    marked_.clear();
    refresh();
    return outcomes;
}

void DrillRun::refresh()
{
    preview_ = makeDrill(kind_, targetNumber_);
    for (const std::vector<DartScore> &set : sets_) {
        for (const DartScore &score : set)
            preview_->applyDart(score);
        preview_->endSet();
    }
    // Darts after one that ended the set (or the drill) stay marked but
    // count for nothing.
    endedEarly_ = false;
    counting_ = 0;
    for (MarkedDrillDart &dart : marked_) {
        dart.score = scoreFromXY(dart.at.x, dart.at.y);
        dart.aim = preview_->target();
        dart.outcome = {};
        if (endedEarly_)
            continue;
        dart.outcome = preview_->applyDart(dart.score);
        ++counting_;
        endedEarly_ = dart.outcome.setEnds || preview_->over();
    }
}

StoredScore storedScore(DartScore dart)
{
    if (dart.number <= 0 || dart.multiplier <= 0)
        return {};
    return {dart.number, dart.multiplier};
}

bool beatsBest(int score, std::optional<int> best, bool lowerIsBetter)
{
    if (!best)
        return true;
    return lowerIsBetter ? score < *best : score > *best;
}

} // namespace tavrix

namespace tavrix {

QString dartCode(DartScore dart)
{
    const StoredScore stored = storedScore(dart);
    if (stored.score == 0)
        return QStringLiteral("Miss");
    if (stored.score == 25)
        return stored.ring == 2 ? QStringLiteral("Bull") : QStringLiteral("25");
    const QString number = QString::number(stored.score);
    switch (stored.ring) {
    case 2: return QStringLiteral("D") + number;
    case 3: return QStringLiteral("T") + number;
    default: return number;
    }
}

} // namespace tavrix
