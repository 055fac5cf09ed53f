#include "core/board/board_geometry.h"

#include <QLocale>
#include <QTest>

#include <cmath>

using namespace tavrix;

namespace {

BoardPoint polar(double radius, double degrees)
{
    const double a = degrees * radPerDeg;
    return {radius * std::cos(a), radius * std::sin(a)};
}

} // namespace

class TestBoardGeometry : public QObject {
    Q_OBJECT

private slots:
    void init() { QLocale::setDefault(QLocale::c()); }

    // Just below the x axis the angle stays under 360. (The quadrants are
    // covered by the scores below.)
    void anglesStayBelow360()
    {
        const double angle = angleFromXY(100, -1e-9);
        QVERIFY2(angle > 359.99 && angle < 360, qPrintable(QString::number(angle, 'g', 17)));
    }

    // Ring bounds are inclusive and the gaps between rows match no ring.
    void ringTableIsFirstMatchWithGaps()
    {
        const struct { double radius; int ring; } rows[] = {
            {0, RingBull}, {7, RingBull}, {7.000005, NoMatch}, {7.5, RingWire}, {8, RingOuterBull},
            {19, RingOuterBull}, {19.5, RingWire}, {113, RingSingle}, {113.5, RingWire}, {118, RingTriple},
            {125, RingTriple}, {196, RingDouble}, {201, RingDouble}, {201.99999, RingWire}, {202, NoMatch}};
        for (const auto &row : rows)
            QVERIFY2(ringFromRadius(row.radius) == row.ring, qPrintable(QString::number(row.radius)));
    }

    // Every number sits at its centre angle; wires and gaps sit between them.
    void segmentsFollowTheBoardOrder()
    {
        // Clockwise from the top, as on every board.
        const int clockwise[] = {20, 1, 18, 4, 13, 6, 10, 15, 2, 17, 3, 19, 7, 16, 8, 11, 14, 9, 12, 5};
        for (int i = 0; i < 20; ++i) {
            const int number = clockwise[i];
            const double centre = std::fmod(90.0 - 18.0 * i + 360.0, 360.0);
            QCOMPARE(segmentAngle[number], centre);
            // 8 degrees either side is still the same number.
            QCOMPARE(segmentFromAngle(std::fmod(centre + 8.0, 360.0)), number);
            QCOMPARE(segmentFromAngle(std::fmod(centre - 8.0 + 360.0, 360.0)), number);
            // Just past the scoring band, counter-clockwise, lies the wire.
            QCOMPARE(segmentFromAngle(std::fmod(centre + 9.0, 360.0)), 0);
        }
        // Round 360 and the edges of the 6: wires are 0, gaps match nothing.
        const struct { double angle; int segment; } edges[] = {
            {351.5, 6}, {360, 6}, {8.499999, 6}, {8.4999995, NoMatch}, {8.5, 0}, {9.499995, NoMatch},
            {9.5, 13}, {350.499995, NoMatch}, {351, 0}};
        for (const auto &edge : edges)
            QVERIFY2(segmentFromAngle(edge.angle) == edge.segment, qPrintable(QString::number(edge.angle, 'g', 10)));
    }

    // What a dart at a position scores and how it is described.
    void scoresAndDescriptions()
    {
        const struct { BoardPoint at; DartScore score; int points; const char *text; } rows[] = {
            {{0, 0}, {2, 25}, 50, "Bull"}, {polar(18.5, 30), {1, 25}, 25, "25"},
            {polar(7.5, 200), {0, 8}, 0, "Bounce-out"},          // the bull's wire
            {polar(7.000005, 90), {0, 20}, 0, "Missed board"},   // the gap after the bull
            {polar(19.5, 90), {0, 20}, 0, "Bounce-out"},         // round the outer bull
            {{0, 100}, {1, 20}, 20, "Single 20"}, {{0, -120}, {3, 3}, 9, "Triple 3"},
            {{-100, 0}, {1, 11}, 11, "Single 11"}, {{100, 0}, {1, 6}, 6, "Single 6"},
            {polar(196, 216), {2, 16}, 32, "Double 16"}, {polar(125, 252), {3, 19}, 57, "Triple 19"},
            {polar(150, 81), {1, 0}, 0, "Bounce-out"},           // between 20 and 1
            {polar(201.99999, 90), {0, 20}, 0, "Bounce-out"}, {polar(202, 90), {0, 20}, 0, "Missed board"},
            {polar(300, 81), {0, 0}, 0, "Missed board"},         // off, beside a wire
            // A dart in a segment gap keeps -999 as number but never scores negative.
            {polar(150, 8.4999995), {1, NoMatch}, 0, "Void."}, {polar(196, 8.4999995), {2, NoMatch}, 0, "Void."}};
        for (const auto &row : rows) {
            const DartScore actual = scoreFromXY(row.at.x, row.at.y);
            QVERIFY2(actual.multiplier == row.score.multiplier && actual.number == row.score.number
                         && actual.points() == row.points && actual.isDouble() == (row.score.multiplier == 2 && row.points > 0),
                     row.text);
            QCOMPARE(dartDescriptionFromXY(row.at.x, row.at.y), QString::fromUtf8(row.text));
        }
    }

    void aimPointsLieInTheirTarget()
    {
        for (const auto &[multiplier, number] : {std::pair{1, 25}, {2, 25}, {0, 20}, {3, 0}})
            QCOMPARE(aimPoint(multiplier, number), BoardPoint{});
        // Every aiming point scores exactly what it aims at.
        for (int multiplier = 1; multiplier <= 3; ++multiplier) {
            for (int number = 1; number <= 20; ++number) {
                const BoardPoint p = aimPoint(multiplier, number);
                QCOMPARE(scoreFromXY(p.x, p.y), (DartScore{multiplier, number}));
            }
        }
    }

    // Shown figures are cut, never rounded, and lose trailing zeros.
    void distanceAndAngleTexts()
    {
        const struct { double units; const char *inches, *centimetres; } rows[] = {
            {202, "6.5\"", "16.51 cm"}, {100, "3.217\"", "8.173 cm"}, {0, "0\"", "0 cm"},
            {404, "13\"", "33.02 cm"}, {0.01, "0\"", "0 cm"}};
        for (const auto &row : rows) {
            QCOMPARE(distanceText(row.units, false), QString::fromUtf8(row.inches));
            QCOMPARE(distanceText(row.units, true), QString::fromUtf8(row.centimetres));
        }
        QCOMPARE(degreesText(90), QStringLiteral("90 deg."));
        QCOMPARE(degreesText(359.99), QStringLiteral("359.9 deg."));
    }

    void textsFollowTheUsersLocale()
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(distanceText(100, false), QStringLiteral("3,217\""));
        QCOMPARE(degreesText(87.39), QStringLiteral("87,3 deg."));
    }
};

QTEST_GUILESS_MAIN(TestBoardGeometry)
#include "tst_board_geometry.moc"
