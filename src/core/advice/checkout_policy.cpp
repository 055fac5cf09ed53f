#include "core/advice/checkout_policy.h"

#include "core/games/checkout_chart.h"

#include <algorithm>
#include <thread>

namespace tavrix {

namespace {

constexpr int maxSetDarts = 3;

// finishable[r][d]: some d darts or fewer, each hitting its aim, finish r.
using FinishTable = std::array<std::array<bool, maxSetDarts + 1>, maxCheckout + 1>;

const FinishTable &finishTable()
{
    static const FinishTable table = [] {
        FinishTable t{};
        for (int d = 1; d <= maxSetDarts; ++d) {
            for (int r = 2; r <= maxCheckout; ++r) {
                bool can = t[r][d - 1];
                for (int region = 0; region < regionCount && !can; ++region) {
                    const int left = r - regionPoints(region);
                    can = (left == 0 && regionIsDouble(region)) || (left >= 2 && t[left][d - 1]);
                }
                t[r][d] = can;
            }
        }
        return t;
    }();
    return table;
}

// Aiming points are taken in tiles of this many, so that one tile's chances
// of every region stay in the cache while every score left is weighed.
constexpr int tileSize = 512;

// acc += weight * chances, over one tile; restrict lets the compiler use
// vector instructions without checking for overlap.
void addScaled(float *__restrict acc, const float *__restrict chances, float weight)
{
    for (int j = 0; j < tileSize; ++j)
        acc[j] += weight * chances[j];
}

// What a dart hitting each region is worth from one score left, and what a
// miss is worth (the score stays, one dart fewer).
struct Outcomes {
    std::array<float, regionCount> value{};
    std::array<int, regionCount> regions{}; // those worth anything, ascending
    int count = 0;
    float miss = 0;
};

Outcomes outcomesFrom(int r, const std::array<float, maxCheckout + 1> &previous)
{
    Outcomes o;
    o.miss = previous[r];
    for (int region = 0; region < regionCount; ++region) {
        const int left = r - regionPoints(region);
        float value = 0;
        if (left == 0 && regionIsDouble(region))
            value = 1;
        else if (left >= 2)
            value = previous[left];
        o.value[region] = value;
        if (value != 0)
            o.regions[o.count++] = region;
    }
    return o;
}

// The chances of the aiming points on the scoring area, region by region,
// each region's row padded to whole tiles.
struct ChanceMatrix {
    std::vector<int> point; // grid index (row * side + column) of each aim
    std::size_t stride = 0;
    std::vector<float> chances; // regionCount rows of `stride`
    std::vector<float> missShare; // 1 - the chances of all regions

    explicit ChanceMatrix(const std::vector<AimMap> &maps)
    {
        for (int row = 0; row < aimGridSide; ++row)
            for (int column = 0; column < aimGridSide; ++column)
                if (regionAt(gridPointToBoard(column, row)) >= 0)
                    point.push_back(row * aimGridSide + column);
        stride = (point.size() + tileSize - 1) / tileSize * tileSize;
        chances.assign(regionCount * stride, 0.0f);
        missShare.assign(stride, 1.0f);
        for (int region = 0; region < regionCount; ++region) {
            float *to = chances.data() + region * stride;
            const std::vector<float> &from = maps[region].values;
            for (std::size_t j = 0; j < point.size(); ++j)
                to[j] = from[point[j]];
        }
        for (std::size_t j = 0; j < point.size(); ++j) {
            float hit = 0;
            for (int region = 0; region < regionCount; ++region)
                hit += chances[region * stride + j];
            missShare[j] = 1 - hit;
        }
    }
    const float *row(int region) const { return chances.data() + region * stride; }

    // The worth of aiming at aim j. The same operations in the same order
    // as the tiled search, so that a fixed aim never beats the best one by
    // rounding.
    float valueAt(std::size_t j, const Outcomes &o) const
    {
        float acc = missShare[j] * o.miss;
        for (int i = 0; i < o.count; ++i)
            acc += o.value[o.regions[i]] * row(o.regions[i])[j];
        return acc;
    }
};

struct Best {
    float value = -1;
    std::size_t aim = 0;
};

// The best aim for each score left among the aims of tiles [from, to).
void searchTiles(const ChanceMatrix &m, const std::vector<Outcomes> &outcomes, std::size_t from,
                 std::size_t to, std::vector<Best> &best)
{
    alignas(64) float acc[tileSize];
    for (std::size_t tile = from; tile < to; ++tile) {
        const std::size_t first = tile * tileSize;
        const std::size_t valid = std::min<std::size_t>(tileSize, m.point.size() - first);
        const float *miss = m.missShare.data() + first;
        for (int r = 2; r <= maxCheckout; ++r) {
            const Outcomes &o = outcomes[r];
            for (int j = 0; j < tileSize; ++j)
                acc[j] = miss[j] * o.miss;
            for (int i = 0; i < o.count; ++i)
                addScaled(acc, m.row(o.regions[i]) + first, o.value[o.regions[i]]);
            Best &b = best[r];
            for (std::size_t j = 0; j < valid; ++j) {
                if (acc[j] > b.value) {
                    b.value = acc[j];
                    b.aim = first + j;
                }
            }
        }
    }
}

} // namespace

bool canFinish(int left, int darts)
{
    if (left < 2 || left > maxCheckout || darts < 1)
        return false;
    return finishTable()[left][std::min(darts, maxSetDarts)];
}

std::vector<AimMap> chancesByAimClass(const std::array<std::vector<AimMap>, aimClassCount> &byClass)
{
    std::vector<AimMap> joined(regionCount);
    for (AimMap &map : joined)
        map.values.resize(std::size_t(aimGridSide) * aimGridSide);
    for (int row = 0; row < aimGridSide; ++row) {
        for (int column = 0; column < aimGridSide; ++column) {
            const int c = static_cast<int>(aimClassAt(gridPointToBoard(column, row)));
            const std::size_t i = std::size_t(row) * aimGridSide + column;
            for (int region = 0; region < regionCount; ++region)
                joined[region].values[i] = byClass[c][region].values[i];
        }
    }
    return joined;
}

CheckoutTable::CheckoutTable(const std::vector<AimMap> &chances,
                             const std::array<DartScore, maxCheckout + 1> &chartFirst)
{
    const ChanceMatrix m(chances);
    // The chart's aim for each score left, as an index among the aims.
    std::array<std::size_t, maxCheckout + 1> chartAim{};
    for (int r = 2; r <= maxCheckout; ++r) {
        const DartScore first = chartFirst[r];
        const auto [column, row] = boardToGridPoint(aimPoint(first.multiplier, first.number));
        const auto found = std::lower_bound(m.point.begin(), m.point.end(), row * aimGridSide + column);
        // The nearest grid point to the aiming point of any bed lies inside
        // that bed; were one off the scoring area, the next aim in row order
        // would stand in for it.
        chartAim[r] = std::size_t(std::min(found - m.point.begin(), std::ptrdiff_t(m.point.size() - 1)));
    }

    const std::size_t tiles = m.stride / tileSize;
    std::array<float, maxCheckout + 1> policy{};
    std::array<float, maxCheckout + 1> chart{};
    for (int d = 1; d <= maxSetDarts; ++d) {
        std::vector<Outcomes> outcomes(maxCheckout + 1);
        std::vector<Outcomes> chartOutcomes(maxCheckout + 1);
        for (int r = 2; r <= maxCheckout; ++r) {
            outcomes[r] = outcomesFrom(r, policy);
            chartOutcomes[r] = outcomesFrom(r, chart);
        }
        // Two workers, each over half the tiles; the first half wins ties,
        // which keeps the first best aim in row order.
        std::vector<Best> early(maxCheckout + 1);
        std::vector<Best> late(maxCheckout + 1);
        const std::size_t half = tiles / 2;
        std::thread worker(searchTiles, std::cref(m), std::cref(outcomes), half, tiles, std::ref(late));
        searchTiles(m, outcomes, 0, half, early);
        worker.join();

        std::array<float, maxCheckout + 1> nextPolicy{};
        std::array<float, maxCheckout + 1> nextChart{};
        for (int r = 2; r <= maxCheckout; ++r) {
            const Best &b = late[r].value > early[r].value ? late[r] : early[r];
            nextPolicy[r] = b.value;
            nextChart[r] = m.valueAt(chartAim[r], chartOutcomes[r]);
            const int grid = m.point[b.aim];
            entries_[r][d] = {b.value, nextChart[r], grid % aimGridSide, grid / aimGridSide};
        }
        policy = nextPolicy;
        chart = nextChart;
    }
}

double CheckoutTable::chance(int left, int darts) const
{
    if (left < 2 || left > maxCheckout || darts < 1 || darts > maxSetDarts)
        return 0;
    return entries_[left][darts].chance;
}

double CheckoutTable::chartChance(int left, int darts) const
{
    if (left < 2 || left > maxCheckout || darts < 1 || darts > maxSetDarts)
        return 0;
    return entries_[left][darts].chart;
}

std::pair<int, int> CheckoutTable::aim(int left, int darts) const
{
    if (left < 2 || left > maxCheckout || darts < 1 || darts > maxSetDarts)
        return {aimGridHalf, aimGridHalf};
    const Entry &e = entries_[left][darts];
    return {e.column, e.row};
}

QString CheckoutTable::route(int left, int darts) const
{
    if (chance(left, darts) <= 0)
        return {};
    DartRoute path;
    int r = left;
    for (int d = darts; d > 0; --d) {
        const Entry &e = entries_[r][d];
        const int region = regionAt(gridPointToBoard(e.column, e.row));
        path.append(regionScore(region));
        const int rest = r - regionPoints(region);
        if (rest < 2)
            break; // a finish or a bust
        r = rest;
    }
    return dartCodesText(path, QStringLiteral(" "));
}

} // namespace tavrix
