#include "core/advice/aim_advice.h"

#include "core/games/checkout_chart.h"
#include "core/review/review_rules.h"

namespace tavrix {

namespace {

QString oneDecimal(double value)
{
    return QString::number(value, 'f', 1);
}

} // namespace

ChartFirstDarts chartFirstDarts(const CheckoutChart &chart)
{
    ChartFirstDarts first{};
    for (int left = 2; left <= maxCheckout; ++left) {
        const DartRoute route = chart.checkoutDarts(left, true);
        if (!route.isEmpty())
            first[left] = route.first();
    }
    return first;
}

std::optional<SpreadFit> readSpreadFit(DartHistory &store, qint64 playerId)
{
    // A player has a few dozen targets and a million darts: each target's
    // aim is worked out once.
    using Aim = std::optional<std::pair<BoardPoint, AimClass>>;
    constexpr int values = 64;
    constexpr int rings = 4;
    std::array<std::optional<Aim>, values * rings> known;
    auto aimOf = [&](int value, int ring) -> Aim {
        if (value < 0 || value >= values || ring < 0 || ring >= rings)
            return aimOfTarget(value, ring);
        std::optional<Aim> &slot = known[std::size_t(value * rings + ring)];
        if (!slot)
            slot = aimOfTarget(value, ring);
        return *slot;
    };
    std::vector<DartOffset> offsets;
    const bool read = store.readAimedDarts(playerId, [&](int value, int ring, double x, double y) {
        if (const Aim aim = aimOf(value, ring))
            offsets.push_back(dartOffset(aim->first, aim->second, {x, y}));
    });
    if (!read)
        return std::nullopt;
    return fitSpread(offsets);
}

std::optional<PersonalAdvice> personalAdvice(const SpreadFit &fit, const ChartFirstDarts &chartFirst,
                                             ScoreMaps &maps, const std::atomic<bool> *stop)
{
    auto stopped = [stop] { return stop && stop->load(); };
    PersonalAdvice advice;
    advice.fit = fit;
    if (!fit.enough())
        return advice;
    advice.expected = maps.expectedScore(fit.pooled);
    advice.best = bestAim(advice.expected);
    const auto [column, row] = boardToGridPoint(aimPoint(3, 20));
    advice.treble20 = advice.expected.at(column, row);
    std::array<std::vector<AimMap>, aimClassCount> byClass;
    for (int c = 0; c < aimClassCount; ++c) {
        if (stopped())
            return std::nullopt;
        // A class without a fit of its own has the pooled maps already.
        const Spread &spread = fit.forClass(static_cast<AimClass>(c));
        int same = 0;
        while (same < c && !(fit.forClass(static_cast<AimClass>(same)) == spread))
            ++same;
        byClass[c] = same < c ? byClass[same] : maps.regionChances(spread);
    }
    if (stopped())
        return std::nullopt;
    advice.checkouts.emplace(chancesByAimClass(byClass), chartFirst);
    return advice;
}

QString needMoreDartsText(qint64 fitted)
{
    return QStringLiteral("Where to aim needs %1 aimed darts (%2 so far).").arg(minFittedDarts).arg(fitted);
}

QString aimAreaName(BoardPoint at)
{
    const std::optional<ReviewArea> area = reviewArea(ringFromXY(at.x, at.y), segmentFromXY(at.x, at.y));
    if (!area)
        return {};
    return area->ringWord.isEmpty() ? area->name : area->ringWord + QLatin1Char(' ') + area->name;
}

QString aimAdviceText(const PersonalAdvice &advice)
{
    if (!advice.fit.enough())
        return needMoreDartsText(advice.fit.fitted);
    const BoardPoint best = gridPointToBoard(advice.best.column, advice.best.row);
    return QStringLiteral("Best aim: %1, %2 points per dart\nTreble 20: %3 points per dart\nFrom %4 darts (%5 wild)")
        .arg(aimAreaName(best), oneDecimal(advice.best.value), oneDecimal(advice.treble20))
        .arg(advice.fit.fitted)
        .arg(advice.fit.wild);
}

QString yourOutText(const CheckoutTable &table, int left, int darts)
{
    if (darts < 1 || darts > 3 || !canFinish(left, darts))
        return {};
    return QStringLiteral("For you: %1, %2% (chart: %3%)")
        .arg(table.route(left, darts), oneDecimal(100 * table.chance(left, darts)),
             oneDecimal(100 * table.chartChance(left, darts)));
}

} // namespace tavrix
