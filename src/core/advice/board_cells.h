#pragma once

// The board's scoring regions over a grid of 1 mm cells, as the maps of
// score_maps.h convolve them: for each cell, its share of each region and
// where in the cell that share lies, sampled once per program.

#include "core/advice/score_maps.h"

#include <array>
#include <cstddef>
#include <vector>

namespace tavrix {

// The board is sampled on 1 mm cells centred on whole millimetres from -166
// to 166 mm, which covers the scoring area (165.1 mm) with room to spare.
inline constexpr int cellHalf = 166;
inline constexpr int cellSide = 2 * cellHalf + 1;

// What a cell holds of something (a region, or points): its share of the
// cell and the first moments of that share about the cell's centre (mm),
// which place it at its centroid rather than the centre. A convolution of
// shares alone moves every partly covered cell's mass to the centre, an
// error of the order of the wires' width; the moments take it back to first
// order.
struct CellMass {
    float share = 0;
    float momentX = 0;
    float momentY = 0;
    CellMass &operator+=(const CellMass &other)
    {
        share += other.share;
        momentX += other.momentX;
        momentY += other.momentY;
        return *this;
    }
};

// The regions of the board per cell: the points (the regions' points
// weighted by their masses), and each region's cells, region by region.
struct BoardCells {
    std::vector<CellMass> points; // cellSide², row iy = y + cellHalf (y up)
    std::vector<int> cell;        // iy * cellSide + ix
    std::vector<CellMass> mass;
    std::array<std::size_t, regionCount + 1> start{};
};

// The board's cells, sampled on first use.
const BoardCells &boardCells();
// Whether each grid point of the maps lies on a scoring region.
const std::vector<char> &gridInside();

} // namespace tavrix
