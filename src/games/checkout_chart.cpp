#include "games/checkout_chart.h"

#include "stats/stats_store.h"

#include <QStringList>

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

QString dartCodesText(const DartRoute &route)
{
    QStringList codes;
    for (const DartScore &dart : route)
        codes.append(QStringLiteral("SDT").at(dart.multiplier - 1) + QString::number(dart.number));
    return codes.join(QStringLiteral(", "));
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
            entry.texts[rule] = dartCodesText(entry.routes[rule]);
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

QString CheckoutChart::routeText(int points, bool doubleOut) const
{
    if (points < 1 || points > MaxPoints)
        return {};
    return entries_[points - 1].texts[doubleOut ? 1 : 0];
}

bool CheckoutChart::hasRow(int points) const
{
    return points >= 1 && points <= MaxPoints && entries_[points - 1].set;
}

bool loadCheckoutChart(StatsStore &store, CheckoutChart &chart)
{
    const std::optional<QList<ChartRow>> rows = store.outchartRows();
    if (!rows)
        return false;
    chart.load(*rows);
    return true;
}

} // namespace tavrix
