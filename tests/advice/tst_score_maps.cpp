#include "core/advice/score_maps.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <map>

using namespace tavrix;

Q_DECLARE_METATYPE(tavrix::Spread)
Q_DECLARE_METATYPE(tavrix::BoardPoint)

namespace {

BoardPoint polar(double radius, double degrees)
{
    return {radius * std::cos(degrees * radPerDeg), radius * std::sin(degrees * radPerDeg)};
}

// What a dart aimed at `aim` (board units) scores and hits, integrated
// directly: the board's areas are rectangles in radius and angle, bounded by
// the rows of the ring and segment tables; each is scored by scoreFromXY at
// its middle and its chance is the normal density integrated over it by
// three-point Gauss-Legendre rules on pieces of at most `step` mm.
struct Integral {
    double score = 0;
    double hit = 0;
    std::map<std::pair<int, int>, double> chance; // by (multiplier, number)
};

Integral integrate(const Spread &s, BoardPoint aim, double step)
{
    const double det = s.varX * s.varY - s.covXY * s.covXY;
    const double ixx = s.varY / det;
    const double ixy = -s.covXY / det;
    const double iyy = s.varX / det;
    const double norm = 1 / (2 * Pi * std::sqrt(det));
    const double meanX = aim.x * mmPerUnit + s.biasX;
    const double meanY = aim.y * mmPerUnit + s.biasY;
    const double far = 7 * std::sqrt(std::max(s.varX, s.varY));
    std::vector<double> radii; // mm
    for (const TableRow &row : ringTable)
        radii.push_back(row.from * mmPerUnit);
    radii.push_back(ringTable.back().to * mmPerUnit);
    std::vector<double> angles{0, 360};
    for (const TableRow &row : segmentTable)
        if (row.from > 0)
            angles.push_back(row.from);
    std::sort(angles.begin(), angles.end());
    const double node[3] = {-std::sqrt(0.6), 0, std::sqrt(0.6)};
    const double weight[3] = {5 / 9.0, 8 / 9.0, 5 / 9.0};

    Integral result;
    for (std::size_t i = 0; i + 1 < radii.size(); ++i) {
        const double r0 = radii[i];
        const double r1 = radii[i + 1];
        const int radialPieces = int(std::ceil((r1 - r0) / step));
        for (std::size_t j = 0; j + 1 < angles.size(); ++j) {
            const double a0 = angles[j] * radPerDeg;
            const double a1 = angles[j + 1] * radPerDeg;
            const double rm = (r0 + r1) / 2;
            const double am = (a0 + a1) / 2;
            const DartScore score = scoreFromXY(rm * std::cos(am) / mmPerUnit, rm * std::sin(am) / mmPerUnit);
            if (score.points() == 0)
                continue;
            const int angularPieces = int(std::ceil((a1 - a0) * r1 / step));
            double mass = 0;
            for (int ir = 0; ir < radialPieces; ++ir) {
                const double ra = r0 + (r1 - r0) * ir / radialPieces;
                const double rb = r0 + (r1 - r0) * (ir + 1) / radialPieces;
                for (int ia = 0; ia < angularPieces; ++ia) {
                    const double aa = a0 + (a1 - a0) * ia / angularPieces;
                    const double ab = a0 + (a1 - a0) * (ia + 1) / angularPieces;
                    const double middleX = (ra + rb) / 2 * std::cos((aa + ab) / 2) - meanX;
                    const double middleY = (ra + rb) / 2 * std::sin((aa + ab) / 2) - meanY;
                    if (std::hypot(middleX, middleY) > far)
                        continue;
                    for (int p = 0; p < 3; ++p) {
                        const double r = (ra + rb) / 2 + node[p] * (rb - ra) / 2;
                        for (int q = 0; q < 3; ++q) {
                            const double a = (aa + ab) / 2 + node[q] * (ab - aa) / 2;
                            const double ex = r * std::cos(a) - meanX;
                            const double ey = r * std::sin(a) - meanY;
                            mass += weight[p] * weight[q] * (rb - ra) / 2 * (ab - aa) / 2 * r * norm
                                    * std::exp(-0.5 * (ixx * ex * ex + 2 * ixy * ex * ey + iyy * ey * ey));
                        }
                    }
                }
            }
            result.score += mass * score.points();
            result.hit += mass;
            result.chance[{score.multiplier, score.number}] += mass;
        }
    }
    return result;
}

// The number that sits where `number` would be seen in a mirror held at
// the board's vertical axis.
int mirrored(int number)
{
    const double angle = std::fmod(540.0 - segmentAngle[number], 360.0);
    for (int n = 1; n <= 20; ++n)
        if (std::fabs(segmentAngle[n] - angle) < 1e-9)
            return n;
    return 0;
}

} // namespace

class TestScoreMaps : public QObject {
    Q_OBJECT

private slots:
    // The grid runs from -170 mm on the left and +170 mm at the top; the
    // middle point is the bull's centre.
    void gridPointsStandOnWholeMillimetres()
    {
        QCOMPARE(gridPointToBoard(170, 170), (BoardPoint{0, 0}));
        const BoardPoint topLeft = gridPointToBoard(0, 0);
        QCOMPARE(topLeft.x * mmPerUnit, -170.0);
        QCOMPARE(topLeft.y * mmPerUnit, 170.0);
        const BoardPoint lowRight = gridPointToBoard(340, 339);
        QCOMPARE(lowRight.x * mmPerUnit, 170.0);
        QCOMPARE(lowRight.y * mmPerUnit, -169.0);
        for (int column = 0; column < aimGridSide; column += 17)
            for (int row = 0; row < aimGridSide; row += 13)
                QCOMPARE(boardToGridPoint(gridPointToBoard(column, row)), std::pair(column, row));
        // Nearest: 0.4 mm off stays, 0.6 mm off moves on; far off is clamped.
        QCOMPARE(boardToGridPoint({0.4 / mmPerUnit, -0.6 / mmPerUnit}), std::pair(170, 171));
        QCOMPARE(boardToGridPoint({-500, 500}), std::pair(0, 0));
        QCOMPARE(boardToGridPoint({500, -500}), std::pair(340, 340));
    }

    // Each region holds the aiming point of its own area and scores it.
    void regionsFollowTheScoring()
    {
        std::map<std::pair<int, int>, int> seen;
        for (int region = 0; region < regionCount; ++region) {
            const DartScore score = regionScore(region);
            QVERIFY2(seen.emplace(std::pair(score.multiplier, score.number), region).second,
                     qPrintable(QString::number(region)));
            QCOMPARE(regionAt(aimPoint(score.multiplier, score.number)), region == outerBullRegion ? bullRegion : region);
            QCOMPARE(regionPoints(region), score.points());
            QCOMPARE(regionIsDouble(region), (region >= 20 && region < 40) || region == bullRegion);
        }
        QCOMPARE(regionScore(outerBullRegion), (DartScore{1, 25}));
        QCOMPARE(regionAt(polar(15, 45)), outerBullRegion);
        QCOMPARE(regionScore(bullRegion), (DartScore{2, 25}));
        QCOMPARE(regionScore(19), (DartScore{1, 20}));
        QCOMPARE(regionScore(40), (DartScore{3, 1}));
        QCOMPARE(regionAt(polar(150, 81)), -1);  // wire between 1 and 20
        QCOMPARE(regionAt(polar(189.5, 0)), -1); // wire round the double
        QCOMPARE(regionAt(polar(210, 90)), -1);  // off the board
    }

    // The FFT maps agree with direct integration of the board's scoring
    // under the normal density: the expected points, the chance of hitting
    // anything, and each region's chance; for a round spread and a tilted,
    // biased one, at the middle of small areas and where wires cross.
    void mapsAgreeWithDirectIntegration_data()
    {
        QTest::addColumn<Spread>("spread");
        QTest::addColumn<BoardPoint>("aim");
        const Spread round{0, 0, 100, 0, 100};
        const Spread tilted{2.5, -4.0, 144, 40, 49};
        const std::pair<const char *, BoardPoint> aims[] = {
            {"treble 20", aimPoint(3, 20)},
            {"double 16", aimPoint(2, 16)},
            {"bull", {0, 0}},
            {"wires of 20, 1 and the treble", polar(125.5, 81)},
        };
        for (const auto &[name, aim] : aims) {
            QTest::addRow("round, %s", name) << round << aim;
            QTest::addRow("tilted, %s", name) << tilted << aim;
        }
    }
    void mapsAgreeWithDirectIntegration()
    {
        QFETCH(Spread, spread);
        QFETCH(BoardPoint, aim);
        const auto [column, row] = boardToGridPoint(aim);
        const Integral want = integrate(spread, gridPointToBoard(column, row), 0.5);
        const double score = maps_.expectedScore(spread).at(column, row);
        QVERIFY2(std::fabs(score - want.score) < 0.05,
                 qPrintable(QStringLiteral("%1 against %2").arg(score).arg(want.score)));
        const std::vector<AimMap> chances = maps_.regionChances(spread);
        double hit = 0;
        double worst = 0;
        for (int region = 0; region < regionCount; ++region) {
            const DartScore s = regionScore(region);
            const double got = chances[region].at(column, row);
            hit += got;
            const auto found = want.chance.find({s.multiplier, s.number});
            worst = std::max(worst, std::fabs(got - (found == want.chance.end() ? 0.0 : found->second)));
        }
        QVERIFY2(worst < 0.002, qPrintable(QString::number(worst)));
        QVERIFY2(std::fabs(hit - want.hit) < 0.002, qPrintable(QStringLiteral("%1 against %2").arg(hit).arg(want.hit)));
    }

    // A spread of no width scores the area aimed at, moved by the bias.
    void aPointSpreadScoresWhereItLands()
    {
        const auto [column, row] = boardToGridPoint(aimPoint(3, 20));
        const AimMap map = maps_.expectedScore({});
        QCOMPARE(map.at(column, row), 60.0f);
        const BestAim best = bestAim(map);
        QCOMPARE(best.value, 60.0f);
        QCOMPARE(regionAt(gridPointToBoard(best.column, best.row)), 59);

        // 20 mm high: the treble's aiming point lands in the outer single.
        const AimMap high = maps_.expectedScore({0, 20, 0, 0, 0});
        QCOMPARE(high.at(column, row), 20.0f);
        QCOMPARE(high.at(column, row + 20), 60.0f);
        const BestAim highBest = bestAim(high);
        QCOMPARE(highBest.value, 60.0f);
        QCOMPARE(regionAt(gridPointToBoard(highBest.column, highBest.row - 20)), 59);
        // The same through the region maps, 3 mm left.
        const std::vector<AimMap> left = maps_.regionChances({-3, 0, 0, 0, 0.01});
        QCOMPARE(left[59].at(column + 3, row), 1.0f);
        QCOMPARE(left[59].at(column, row), 1.0f);
        QCOMPARE(left[bullRegion].at(aimGridHalf + 3, aimGridHalf), 1.0f);
    }

    // Where the darts scatter widely, the treble 20 is no longer the best
    // place to aim: its neighbours 1 and 5 cost too much.
    void aWideSpreadAimsElsewhere()
    {
        const AimMap map = maps_.expectedScore({0, 0, 3600, 0, 3600});
        const BestAim best = bestAim(map);
        const auto [column, row] = boardToGridPoint(aimPoint(3, 20));
        QVERIFY(best.value > map.at(column, row) + 0.5);
        QVERIFY(regionAt(gridPointToBoard(best.column, best.row)) != 59);
    }

    // The board is its own mirror image but for the numbers: under a round
    // spread, a region's chances reflected left to right are the chances of
    // the mirrored region. The points map is the regions' points weighted by
    // their chances, and no aim hits more than once. (Well inside the board
    // the chances add up to less than 1 too: the wires score nothing.)
    void regionMapsFollowTheBoardsMirror()
    {
        const Spread round{0, 0, 144, 0, 144};
        const std::vector<AimMap> chances = maps_.regionChances(round);
        const AimMap expected = maps_.expectedScore(round);
        const auto mirrorOf = [](int region) {
            if (region >= outerBullRegion)
                return region;
            return region / 20 * 20 + mirrored(region % 20 + 1) - 1;
        };
        double mirrorError = 0;
        double pointsError = 0;
        float mostHit = 0;
        for (int row = 0; row < aimGridSide; ++row) {
            for (int column = 0; column < aimGridSide; ++column) {
                double points = 0;
                float hit = 0;
                for (int region = 0; region < regionCount; ++region) {
                    const float chance = chances[region].at(column, row);
                    mirrorError = std::max(mirrorError, double(std::fabs(
                        chance - chances[mirrorOf(region)].at(aimGridSide - 1 - column, row))));
                    points += regionPoints(region) * double(chance);
                    hit += chance;
                }
                pointsError = std::max(pointsError, std::fabs(points - expected.at(column, row)));
                mostHit = std::max(mostHit, hit);
            }
        }
        // The cells' samples are not mirror images of each other: their
        // counts differ a little.
        QVERIFY2(mirrorError < 2e-3, qPrintable(QString::number(mirrorError)));
        QVERIFY2(pointsError < 1e-3, qPrintable(QString::number(pointsError)));
        QVERIFY2(mostHit <= 1 + 1e-5, qPrintable(QString::number(mostHit)));
        // Far off the board nothing is hit.
        for (int region = 0; region < regionCount; ++region)
            QVERIFY(chances[region].at(0, 0) < 1e-6);
    }

private:
    ScoreMaps maps_;
};

QTEST_GUILESS_MAIN(TestScoreMaps)
#include "tst_score_maps.moc"
