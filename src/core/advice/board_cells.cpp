#include "core/advice/board_cells.h"

#include <cmath>
#include <optional>

namespace tavrix {

namespace {

// Points per side sampled in a cell that holds more than one region: the
// wires are under 1 mm wide, so a cell's share of each region has to come
// from more than its centre.
constexpr int samplesPerSide = 16;

template <std::size_t N>
int rowOf(const std::array<TableRow, N> &table, double value)
{
    for (std::size_t i = 0; i < N; ++i)
        if (table[i].from <= value && value <= table[i].to)
            return int(i);
    return -1;
}

// The region of every point of a cell (board units, edges x0 < x1, y0 < y1)
// where the cell lies within one row of the ring table and, outside the bull
// and off the scoring rings, one row of the segment table; nothing where
// the cell may hold more than one region (or a region and a miss).
std::optional<int> wholeCellRegion(double x0, double x1, double y0, double y1)
{
    const double nearX = std::clamp(0.0, x0, x1);
    const double nearY = std::clamp(0.0, y0, y1);
    const double farX = std::max(std::fabs(x0), std::fabs(x1));
    const double farY = std::max(std::fabs(y0), std::fabs(y1));
    const double nearest = std::hypot(nearX, nearY);
    const double farthest = std::hypot(farX, farY);
    const double centreX = (x0 + x1) / 2;
    const double centreY = (y0 + y1) / 2;
    if (nearest > ringTable.back().to)
        return -1; // off the board
    const int ring = rowOf(ringTable, nearest);
    if (ring < 0 || ring != rowOf(ringTable, farthest))
        return std::nullopt;
    const int code = ringTable[ring].code;
    if (code == RingBull || code == RingOuterBull || code == RingWire)
        return regionAt({centreX, centreY});
    // The branch of the angles at 0 degrees runs through the 6: such cells
    // are sampled.
    if (x1 > 0 && y0 <= 0 && y1 >= 0)
        return std::nullopt;
    double low = 360;
    double high = 0;
    for (const double x : {x0, x1}) {
        for (const double y : {y0, y1}) {
            const double angle = angleFromXY(x, y);
            low = std::min(low, angle);
            high = std::max(high, angle);
        }
    }
    const int segment = rowOf(segmentTable, low);
    if (segment < 0 || segment != rowOf(segmentTable, high))
        return std::nullopt;
    return regionAt({centreX, centreY});
}

BoardCells sampleBoard()
{
    BoardCells board;
    board.points.assign(std::size_t(cellSide) * cellSide, CellMass{});
    std::array<std::vector<std::pair<int, CellMass>>, regionCount> byRegion;
    const double step = 1.0 / samplesPerSide;
    const double sampleShare = 1.0 / (samplesPerSide * samplesPerSide);
    std::array<int, regionCount> counts{};
    std::array<double, regionCount> sumX{};
    std::array<double, regionCount> sumY{};
    const auto add = [&](int index, int region, const CellMass &mass) {
        byRegion[region].emplace_back(index, mass);
        const float points = float(regionPoints(region));
        board.points[index] += {mass.share * points, mass.momentX * points, mass.momentY * points};
    };
    for (int iy = 0; iy < cellSide; ++iy) {
        for (int ix = 0; ix < cellSide; ++ix) {
            const int index = iy * cellSide + ix;
            const double cx = ix - cellHalf;
            const double cy = iy - cellHalf;
            const std::optional<int> whole = wholeCellRegion((cx - 0.5) / mmPerUnit, (cx + 0.5) / mmPerUnit,
                                                             (cy - 0.5) / mmPerUnit, (cy + 0.5) / mmPerUnit);
            if (whole) {
                if (*whole >= 0)
                    add(index, *whole, {1, 0, 0});
                continue;
            }
            // The samples of a cell form a lattice shifted by an offset of
            // its own (a low-discrepancy sequence over the cells): lattices
            // in step with each other would count the circles of the rings
            // with errors of one sign all round.
            const double shiftX = std::fmod(index * 0.7548776662466927, 1.0) * step;
            const double shiftY = std::fmod(index * 0.5698402909980532, 1.0) * step;
            counts.fill(0);
            sumX.fill(0);
            sumY.fill(0);
            for (int sy = 0; sy < samplesPerSide; ++sy) {
                const double oy = sy * step + shiftY - 0.5;
                for (int sx = 0; sx < samplesPerSide; ++sx) {
                    const double ox = sx * step + shiftX - 0.5;
                    const int region = regionAt({(cx + ox) / mmPerUnit, (cy + oy) / mmPerUnit});
                    if (region >= 0) {
                        ++counts[region];
                        sumX[region] += ox;
                        sumY[region] += oy;
                    }
                }
            }
            for (int region = 0; region < regionCount; ++region)
                if (counts[region] > 0)
                    add(index, region, {float(counts[region] * sampleShare), float(sumX[region] * sampleShare),
                                        float(sumY[region] * sampleShare)});
        }
    }
    for (int region = 0; region < regionCount; ++region) {
        board.start[region] = board.cell.size();
        for (const auto &[index, mass] : byRegion[region]) {
            board.cell.push_back(index);
            board.mass.push_back(mass);
        }
    }
    board.start[regionCount] = board.cell.size();
    return board;
}

} // namespace

const BoardCells &boardCells()
{
    static const BoardCells board = sampleBoard();
    return board;
}

const std::vector<char> &gridInside()
{
    static const std::vector<char> inside = [] {
        std::vector<char> result(std::size_t(aimGridSide) * aimGridSide);
        for (int row = 0; row < aimGridSide; ++row)
            for (int column = 0; column < aimGridSide; ++column)
                result[std::size_t(row) * aimGridSide + column] =
                    regionAt(gridPointToBoard(column, row)) >= 0;
        return result;
    }();
    return inside;
}

} // namespace tavrix
