#include "core/games/checkout_chart.h"

#include "core/stats/chart_store.h"

#include <QStringList>

#include <map>

namespace tavrix {

namespace {

const DartScore trebleTwenty{3, 20};

std::optional<DartScore> parseDartCode(const QString &code)
{
    if (code.size() < 2)
        return std::nullopt;
    const int multiplier = QStringLiteral("SDT").indexOf(code.front()) + 1;
    bool isNumber = false;
    const int number = code.mid(1).toInt(&isNumber);
    if (multiplier == 0 || !isNumber)
        return std::nullopt;
    const bool segment = number >= 1 && number <= 20;
    const bool bullArea = number == 25 && multiplier <= 2;
    if (!segment && !bullArea)
        return std::nullopt;
    return DartScore{multiplier, number};
}

int routePoints(const DartRoute &route)
{
    int sum = 0;
    for (const DartScore &dart : route)
        sum += dart.points();
    return sum;
}

// [doubleOut][points]: whether three darts or fewer score exactly the points,
// the last a double for double out; from the darts the codes can name.
using Finishes = std::array<std::array<bool, CheckoutChart::MaxPoints + 1>, 2>;

Finishes findFinishes()
{
    QList<DartScore> darts{{1, 25}, {2, 25}};
    for (int number = 1; number <= 20; ++number)
        for (int multiplier = 1; multiplier <= 3; ++multiplier)
            darts.append({multiplier, number});
    // reach[n]: totals n darts or fewer can score.
    std::array<std::array<bool, CheckoutChart::MaxPoints + 1>, 3> reach{};
    reach[0][0] = true;
    for (int n = 1; n < 3; ++n) {
        reach[n] = reach[n - 1];
        for (int total = 0; total <= CheckoutChart::MaxPoints; ++total)
            for (const DartScore &dart : darts)
                if (reach[n - 1][total] && total + dart.points() <= CheckoutChart::MaxPoints)
                    reach[n][total + dart.points()] = true;
    }
    Finishes finishes{};
    for (int before = 0; before <= CheckoutChart::MaxPoints; ++before) {
        if (!reach[2][before])
            continue;
        for (const DartScore &dart : darts) {
            const int total = before + dart.points();
            if (total > CheckoutChart::MaxPoints)
                continue;
            finishes[0][total] = true;
            if (dart.isDouble())
                finishes[1][total] = true;
        }
    }
    return finishes;
}

bool fieldIsSound(int points, const QString &field, bool doubleOut)
{
    static const Finishes finishes = findFinishes();
    const std::optional<DartRoute> route = parseDartCodes(field);
    if (!route)
        return false;
    if (route->isEmpty())
        return !finishes[doubleOut ? 1 : 0][points];
    return route->size() <= 3 && routePoints(*route) == points
           && (!doubleOut || route->last().isDouble());
}

} // namespace

std::optional<DartRoute> parseDartCodes(const QString &field)
{
    DartRoute route;
    if (field.trimmed().isEmpty())
        return route;
    const QStringList codes = field.split(QLatin1Char(','));
    for (const QString &code : codes) {
        const std::optional<DartScore> dart = parseDartCode(code.trimmed());
        if (!dart)
            return std::nullopt;
        route.append(*dart);
    }
    return route;
}

QString dartCodesText(const DartRoute &route, const QString &separator)
{
    QStringList codes;
    for (const DartScore &dart : route)
        codes.append(QStringLiteral("SDT").at(dart.multiplier - 1) + QString::number(dart.number));
    return codes.join(separator);
}

int CheckoutChart::load(const QList<ChartRow> &rows)
{
    int rejected = 0;
    for (const ChartRow &row : rows) {
        if (row.points < 1 || row.points > MaxPoints) {
            ++rejected;
            continue;
        }
        Entry &entry = entries_[row.points - 1];
        entry.set = true;
        const std::array<const QString *, 2> fields{&row.singleOut, &row.doubleOut};
        for (int rule = 0; rule < 2; ++rule) {
            const std::optional<DartRoute> route = parseDartCodes(*fields[rule]);
            if (!route)
                ++rejected;
            entry.routes[rule] = route.value_or(DartRoute{});
        }
    }
    return rejected;
}

DartRoute CheckoutChart::checkoutDarts(int remaining, bool doubleOut) const
{
    if (remaining > MaxPoints || (remaining > 170 && doubleOut))
        return {trebleTwenty};
    if (remaining <= 1)
        return {DartScore{0, 0}};
    const DartRoute &route = entries_[remaining - 1].routes[doubleOut ? 1 : 0];
    return route.isEmpty() ? DartRoute{trebleTwenty} : route;
}

DartRoute CheckoutChart::route(int points, bool doubleOut) const
{
    if (points < 1 || points > MaxPoints)
        return {};
    return entries_[points - 1].routes[doubleOut ? 1 : 0];
}

QString CheckoutChart::routeText(int points, bool doubleOut) const
{
    return dartCodesText(route(points, doubleOut));
}

bool CheckoutChart::hasRow(int points) const
{
    return points >= 1 && points <= MaxPoints && entries_[points - 1].set;
}

bool chartRowIsSound(const ChartRow &row)
{
    return row.points >= 1 && row.points <= CheckoutChart::MaxPoints
           && fieldIsSound(row.points, row.singleOut, false)
           && fieldIsSound(row.points, row.doubleOut, true);
}

ChartRepair planChartRepair(const QList<StoredChartRow> &stored, const QList<ChartRow> &bundled)
{
    ChartRepair repair;
    std::map<int, QList<const StoredChartRow *>> byScore;
    for (const StoredChartRow &row : stored) {
        if (row.row.points >= 1 && row.row.points <= CheckoutChart::MaxPoints)
            byScore[row.row.points].append(&row);
        else
            repair.removedRowIds.append(row.rowId);
    }
    // Of several sound rows the last is the one the chart has been using.
    std::map<int, ChartRow> mended;
    for (const auto &[points, rows] : byScore) {
        const StoredChartRow *kept = nullptr;
        for (const StoredChartRow *row : rows)
            if (chartRowIsSound(row->row))
                kept = row;
        for (const StoredChartRow *row : rows)
            if (row != kept)
                repair.removedRowIds.append(row->rowId);
        if (kept)
            mended[points] = kept->row;
    }
    int replacedStored = 0;
    for (const ChartRow &row : bundled) {
        if (mended.contains(row.points))
            continue;
        mended[row.points] = row;
        repair.replacements.append(row);
        if (byScore.contains(row.points))
            ++replacedStored;
    }
    repair.surplus = int(repair.removedRowIds.size()) - replacedStored;
    for (const auto &[points, row] : mended)
        repair.rows.append(row);
    return repair;
}

bool loadCheckoutChart(ChartStore &store, CheckoutChart &chart)
{
    const std::optional<QList<ChartRow>> rows = store.outchartRows();
    if (!rows)
        return false;
    chart.load(*rows);
    return true;
}

std::optional<ChartRepairReport> loadRepairedCheckoutChart(ChartStore &store, CheckoutChart &chart)
{
    const std::optional<QList<StoredChartRow>> stored = store.storedOutchartRows();
    if (!stored)
        return std::nullopt;
    const ChartRepair repair = planChartRepair(*stored, bundledChartRows());
    ChartRepairReport report;
    report.replaced = int(repair.replacements.size());
    report.surplus = repair.surplus;
    if (repair.needed() && !store.replaceOutchartRows(repair.removedRowIds, repair.replacements)) {
        report.saved = false;
        report.error = store.lastError();
    }
    chart.load(repair.rows);
    return report;
}

} // namespace tavrix
