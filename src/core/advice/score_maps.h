#pragma once

// What a player can expect from aiming at each point of the board, for a
// spread of darts (aim_spread.h): one map of the expected points per dart,
// and one map per scoring region of the chance to hit it. A map covers a
// 1 mm grid of aiming points over the scoring area, 341 x 341 points from
// -170 to 170 mm; column 0 is the left edge and row 0 the top, as on the
// picture. Computed by FFT convolution (FFTW3) of the board's regions with
// the normal distribution of the spread.

#include "core/advice/aim_spread.h"

#include <memory>
#include <vector>

namespace tavrix {

inline constexpr int aimGridSide = 341;
inline constexpr int aimGridHalf = 170; // the middle point is the bull's centre

// Board position (units) of a grid point, and the nearest grid point of a
// board position (clamped to the grid).
BoardPoint gridPointToBoard(int column, int row);
std::pair<int, int> boardToGridPoint(BoardPoint at);

// The 62 scoring regions: 0-19 single 1-20, 20-39 double 1-20, 40-59 treble
// 1-20, 60 the outer bull (25), 61 the bull (50). A dart off the scoring
// area (or on no region: the program scores it 0) is a miss.
inline constexpr int regionCount = 62;
inline constexpr int outerBullRegion = 60;
inline constexpr int bullRegion = 61;
// The region of a board position as the program scores it; -1 for a miss.
int regionAt(BoardPoint at);
int regionPoints(int region);
// Whether a region finishes a double-out game (a double or the bull).
bool regionIsDouble(int region);
// The region as a dart code: "S20", "D16", "T19", "S25", "D25".
DartScore regionScore(int region);

// Values over the grid, row by row from the top.
struct AimMap {
    std::vector<float> values; // aimGridSide * aimGridSide
    float at(int column, int row) const { return values[std::size_t(row) * aimGridSide + column]; }
};

// Keeps the FFT plans and the transforms of the board's regions between
// maps. Not to be shared between threads; each worker makes its own.
class ScoreMaps {
public:
    ScoreMaps();
    ~ScoreMaps();
    ScoreMaps(const ScoreMaps &) = delete;
    ScoreMaps &operator=(const ScoreMaps &) = delete;

    // Expected points of one dart aimed at each grid point.
    AimMap expectedScore(const Spread &spread);
    // The chance of each region for a dart aimed at each grid point
    // (regionCount maps; a miss takes what the maps leave of 1).
    std::vector<AimMap> regionChances(const Spread &spread);

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

// The best aiming point of a map, inside the scoring area: its grid point
// and value (the first of equal values, row by row).
struct BestAim {
    int column = 0;
    int row = 0;
    float value = 0;
};
BestAim bestAim(const AimMap &map);

} // namespace tavrix
