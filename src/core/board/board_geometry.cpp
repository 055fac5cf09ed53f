#include "core/board/board_geometry.h"

#include <QLocale>

#include <cmath>

namespace tavrix {

namespace {

template <std::size_t N>
int firstMatch(const std::array<TableRow, N> &table, double value)
{
    for (const TableRow &row : table) {
        if (row.from <= value && value <= row.to)
            return row.code;
    }
    return NoMatch;
}

double radiusOf(double x, double y)
{
    return std::sqrt(x * x + y * y);
}

// Int(value * scale) / scale. The tiny allowance keeps exact figures such as
// 16.51 from turning into 16.509 through binary representation error; it is far
// below the last shown digit, so real values are still cut, not rounded.
double truncated(double value, double scale)
{
    return std::floor(value * scale + 1e-7) / scale;
}

QString shortestNumber(double value)
{
    return QLocale().toString(value, 'f', QLocale::FloatingPointShortest);
}

} // namespace

double angleFromXY(double x, double y)
{
    if (x == 0) {
        if (y > 0)
            return 90;
        return y < 0 ? 270 : 0;
    }
    if (y == 0)
        return x >= 0 ? 0 : 180;
    const double a = std::atan(std::fabs(y / x)) * degPerRad;
    if (x > 0)
        return y > 0 ? a : 360 - a;
    return y > 0 ? 180 - a : 180 + a;
}

int ringFromRadius(double radius)
{
    return firstMatch(ringTable, radius);
}

int segmentFromAngle(double angle)
{
    return firstMatch(segmentTable, angle);
}

int ringFromXY(double x, double y)
{
    return ringFromRadius(radiusOf(x, y));
}

int segmentFromXY(double x, double y)
{
    return segmentFromAngle(angleFromXY(x, y));
}

DartScore scoreFromXY(double x, double y)
{
    const int ring = ringFromXY(x, y);
    const int segment = segmentFromXY(x, y);
    if (ring > 20)
        return {ring / 25, 25};
    if (ring < 0)
        return {0, segment};
    return {ring, segment};
}

QString dartDescription(double radius, double angle)
{
    const int ring = ringFromRadius(radius);
    const int segment = segmentFromAngle(angle);
    if (ring == NoMatch)
        return QStringLiteral("Missed board");
    if (radius <= 19) {
        if (ring == RingOuterBull)
            return QStringLiteral("25");
        if (ring == RingBull)
            return QStringLiteral("Bull");
        return QStringLiteral("Bounce-out");
    }
    if (segment == NoMatch)
        return QStringLiteral("Void.");
    if (ring == RingWire || segment == 0)
        return QStringLiteral("Bounce-out");
    static const char *const ringWords[] = {"", "Single", "Double", "Triple"};
    return QStringLiteral("%1 %2").arg(QLatin1String(ringWords[ring])).arg(segment);
}

QString dartDescriptionFromXY(double x, double y)
{
    return dartDescription(radiusOf(x, y), angleFromXY(x, y));
}

BoardPoint aimPoint(int multiplier, int number)
{
    if (number == 25 || multiplier < 1 || number < 1 || multiplier > 3 || number > 20)
        return {0, 0};
    const double r = aimRadius[multiplier - 1];
    const double a = segmentAngle[number] * radPerDeg;
    return {r * std::cos(a), r * std::sin(a)};
}

double lesserOf(double a, double b)
{
    return a > b ? b : a;
}

BoardPoint boardFromPicture(double column, double row)
{
    return {column - boardCenter, boardCenter - row};
}

QString distanceText(double boardUnits, bool useCms)
{
    const double factor = useCms ? cmPerUnit : inchesPerUnit;
    const QString suffix = useCms ? QStringLiteral(" cm") : QStringLiteral("\"");
    return truncatedText(boardUnits * factor, 1000) + suffix;
}

QString degreesText(double angle)
{
    return truncatedText(angle, 10) + QStringLiteral(" deg.");
}

double shownDistance(double boardUnits, bool useCms)
{
    return truncated(boardUnits * (useCms ? cmPerUnit : inchesPerUnit), 1000);
}

QString truncatedText(double value, double scale)
{
    return shortestNumber(truncated(value, scale));
}

BoardPoint onMarkerGrid(BoardPoint at, int side)
{
    const double half = side / 2.0;
    const double left = qRound(boardCenter + at.x - half);
    const double top = qRound(boardCenter - at.y - half);
    return boardFromPicture(left + half, top + half);
}

} // namespace tavrix
