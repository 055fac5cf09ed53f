#pragma once

#include "core/stats/outchart_data.h"
#include "core/stats/stats_access.h"

#include <QList>

#include <optional>

namespace tavrix {

// The checkout chart as the store keeps it.
class ChartStore : public virtual StatsAccess {
public:
    // The chart in ascending order of points, rows of equal points in the
    // order they were added. A points value that is no whole number (text, a
    // fraction, NULL) reads as 0, which is no score.
    virtual std::optional<QList<ChartRow>> outchartRows() = 0;
    // The same rows, each with the id by which it can be removed.
    virtual std::optional<QList<StoredChartRow>> storedOutchartRows() = 0;
    // Removes the rows with these ids and adds `rows`, in one transaction:
    // either all of it is written or nothing is.
    virtual bool replaceOutchartRows(const QList<qint64> &rowIds, const QList<ChartRow> &rows) = 0;

protected:
    ~ChartStore() = default;
};

} // namespace tavrix
