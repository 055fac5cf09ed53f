#pragma once

// The dartboard model: board units, the ring and segment lookup tables, dart
// scores, descriptions and the texts in which distances and angles are shown.
//
// A board position (x, y) is measured in board units (one pixel of the
// 520 x 520 board picture) from the bull's centre, x to the right, y upwards.
// Angles are degrees, 0 <= a < 360, 0 through the middle of the 6 and
// increasing counter-clockwise (90 through the middle of the 20).

#include <QString>

#include <array>

namespace tavrix {

// Ring codes.
inline constexpr int RingBull = 50;
inline constexpr int RingOuterBull = 25;
inline constexpr int RingSingle = 1;
inline constexpr int RingDouble = 2;
inline constexpr int RingTriple = 3;
inline constexpr int RingWire = 0;
// Shared by rings and segments: no row of the table matched.
inline constexpr int NoMatch = -999;

inline constexpr double Pi = 3.14159265358979;
inline constexpr double degPerRad = 180.0 / Pi;
inline constexpr double radPerDeg = 1.0 / degPerRad;
// 202 board units (the outer edge of the scoring area) are 6.5 in, 16.51 cm.
inline constexpr double inchesPerUnit = 6.5 / 202.0;
inline constexpr double cmPerUnit = 16.51 / 202.0;
// Half the side of the board picture: picture pixel (260, 260) is the bull.
inline constexpr int boardCenter = 260;

struct TableRow {
    double from; // inclusive
    double to;   // inclusive
    int code;
};

// Radii in board units; the first row whose bounds contain the radius wins and
// the narrow gaps between rows (7.0 .. 7.00001) match nothing.
inline constexpr std::array<TableRow, 12> ringTable{{
    {0.0, 7.0, RingBull},
    {7.00001, 7.99999, RingWire},
    {8.0, 19.0, RingOuterBull},
    {19.00001, 19.99999, RingWire},
    {20.0, 113.0, RingSingle},
    {113.00001, 113.99999, RingWire},
    {114.0, 125.0, RingTriple},
    {125.00001, 125.99999, RingWire},
    {126.0, 189.0, RingSingle},
    {189.00001, 189.99999, RingWire},
    {190.0, 201.0, RingDouble},
    {201.00001, 201.99999, RingWire},
}};

// Angles in degrees: each number has a 17 degree scoring band around its
// centre, followed counter-clockwise by a 1 degree wire (code 0). The 6 sits
// across 0 degrees and so takes two rows.
inline constexpr std::array<TableRow, 41> segmentTable{{
    {351.5, 360.0, 6},       {0.0, 8.499999, 6},      {8.5, 9.49999, 0},
    {9.5, 26.49999, 13},     {26.5, 27.49999, 0},     {27.5, 44.49999, 4},
    {44.5, 45.49999, 0},     {45.5, 62.49999, 18},    {62.5, 63.49999, 0},
    {63.5, 80.49999, 1},     {80.5, 81.49999, 0},     {81.5, 98.49999, 20},
    {98.5, 99.49999, 0},     {99.5, 116.49999, 5},    {116.5, 117.49999, 0},
    {117.5, 134.49999, 12},  {134.5, 135.49999, 0},   {135.5, 152.49999, 9},
    {152.5, 153.49999, 0},   {153.5, 170.49999, 14},  {170.5, 171.49999, 0},
    {171.5, 188.49999, 11},  {188.5, 189.49999, 0},   {189.5, 206.49999, 8},
    {206.5, 207.49999, 0},   {207.5, 224.49999, 16},  {224.5, 225.49999, 0},
    {225.5, 242.49999, 7},   {242.5, 243.49999, 0},   {243.5, 260.49999, 19},
    {260.5, 261.49999, 0},   {261.5, 278.49999, 3},   {278.5, 279.49999, 0},
    {279.5, 296.49999, 17},  {296.5, 297.49999, 0},   {297.5, 314.49999, 2},
    {314.5, 315.49999, 0},   {315.5, 332.49999, 15},  {332.5, 333.49999, 0},
    {333.5, 350.49999, 10},  {350.5, 351.49999, 0},
}};

// Centre angle of each segment, indexed by its number (entry 0 is no segment).
inline constexpr std::array<double, 21> segmentAngle{
    0, 72, 306, 270, 36, 108, 0, 234, 198, 144, 342,
    180, 126, 18, 162, 324, 216, 288, 54, 252, 90};

// Radius to aim at in the single, double and triple ring (index multiplier - 1).
inline constexpr std::array<double, 3> aimRadius{150, 196, 118};

// A dart's score: points are multiplier x number. The bull is (2, 25), the
// outer bull (1, 25); wires and misses have multiplier 0. A dart in a segment
// gap keeps its ring as multiplier and number -999 ("Void.").
struct DartScore {
    int multiplier = 0;
    int number = 0;

    // Points the dart adds to a score: never negative, 0 for a void dart.
    int points() const
    {
        return multiplier > 0 && number > 0 ? multiplier * number : 0;
    }
    bool isDouble() const { return multiplier == 2 && number > 0; }
    friend bool operator==(const DartScore &, const DartScore &) = default;
};

struct BoardPoint {
    double x = 0;
    double y = 0;
    friend bool operator==(const BoardPoint &, const BoardPoint &) = default;
};

double angleFromXY(double x, double y);
int ringFromRadius(double radius);
int segmentFromAngle(double angle);
int ringFromXY(double x, double y);
int segmentFromXY(double x, double y);
DartScore scoreFromXY(double x, double y);
QString dartDescription(double radius, double angle);
QString dartDescriptionFromXY(double x, double y);
BoardPoint aimPoint(int multiplier, int number);
double lesserOf(double a, double b);

// Conversion between picture units (column, row of the 520-unit picture)
// and board positions.
BoardPoint boardFromPicture(double column, double row);

// Markers are squares of these sides in picture units. Every target stands
// on whole units: onMarkerGrid gives the centre of such a marker put at any
// board position. A dart marked by hand stands on the screen pixel clicked;
// other darts (the computer's, the network peer's) stand exactly where they
// landed.
inline constexpr int flightMarkerSide = 60;
inline constexpr int targetMarkerSide = 16;
BoardPoint onMarkerGrid(BoardPoint at, int side);

// Distances and angles as the user sees them: truncated, never rounded, in the
// user's locale. `useCms` picks centimetres over inches.
QString distanceText(double boardUnits, bool useCms);
QString degreesText(double angle);
// A distance as distanceText shows it, as a number in the chosen unit.
double shownDistance(double boardUnits, bool useCms);
// Any figure cut (not rounded) to 1/scale, as the user's locale writes it.
QString truncatedText(double value, double scale);

} // namespace tavrix
