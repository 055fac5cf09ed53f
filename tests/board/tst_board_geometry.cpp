#include "core/board/board_geometry.h"

#include "../support/data_table.h"

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
    void ringTableIsFirstMatchWithGaps_data()
    {
        addTable<double, int>({"radius", "ring"},
            {{"bull", 0, RingBull}, {"bull's edge", 7, RingBull}, {"gap after the bull", 7.000005, NoMatch},
             {"bull's wire", 7.5, RingWire}, {"outer bull inside", 8, RingOuterBull}, {"outer bull outside", 19, RingOuterBull},
             {"outer bull's wire", 19.5, RingWire}, {"single's edge", 113, RingSingle}, {"treble's wire", 113.5, RingWire},
             {"treble inside", 118, RingTriple}, {"treble outside", 125, RingTriple}, {"double inside", 196, RingDouble},
             {"double outside", 201, RingDouble}, {"double's wire", 201.99999, RingWire}, {"off the board", 202, NoMatch}});
    }
    void ringTableIsFirstMatchWithGaps()
    {
        QFETCH(double, radius);
        QTEST(ringFromRadius(radius), "ring");
    }

    // Every number sits at its centre angle; wires lie between them.
    void segmentsFollowTheBoardOrder_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<double>("centre");
        // Clockwise from the top, as on every board.
        const int clockwise[] = {20, 1, 18, 4, 13, 6, 10, 15, 2, 17, 3, 19, 7, 16, 8, 11, 14, 9, 12, 5};
        for (int i = 0; i < 20; ++i)
            QTest::addRow("%d", clockwise[i]) << clockwise[i] << std::fmod(90.0 - 18.0 * i + 360.0, 360.0);
    }
    void segmentsFollowTheBoardOrder()
    {
        QFETCH(int, number);
        QFETCH(double, centre);
        QCOMPARE(segmentAngle[number], centre);
        // 8 degrees either side is still the same number.
        QCOMPARE(segmentFromAngle(std::fmod(centre + 8.0, 360.0)), number);
        QCOMPARE(segmentFromAngle(std::fmod(centre - 8.0 + 360.0, 360.0)), number);
        // Just past the scoring band, counter-clockwise, lies the wire.
        QCOMPARE(segmentFromAngle(std::fmod(centre + 9.0, 360.0)), 0);
    }

    // Round 360 and the edges of the 6: wires are 0, gaps match nothing.
    void segmentEdges_data()
    {
        addTable<double, int>({"angle", "segment"},
            {{"6 past its wire", 351.5, 6}, {"6 at 360", 360, 6}, {"6 before its wire", 8.499999, 6},
             {"gap before the wire", 8.4999995, NoMatch}, {"wire of 6 and 13", 8.5, 0},
             {"gap after the wire", 9.499995, NoMatch}, {"13 past its wire", 9.5, 13},
             {"gap before the 5's wire", 350.499995, NoMatch}, {"wire of 5 and 6", 351, 0}});
    }
    void segmentEdges()
    {
        QFETCH(double, angle);
        QTEST(segmentFromAngle(angle), "segment");
    }

    // What a dart at a position scores and how it is described.
    void scoresAndDescriptions_data()
    {
        addTable<BoardPoint, DartScore, int, QString>({"at", "score", "points", "text"},
            {{"bull", {0, 0}, {2, 25}, 50, "Bull"}, {"25", polar(18.5, 30), {1, 25}, 25, "25"},
             {"bull's wire", polar(7.5, 200), {0, 8}, 0, "Bounce-out"},
             {"gap after the bull", polar(7.000005, 90), {0, 20}, 0, "Missed board"},
             {"wire round the outer bull", polar(19.5, 90), {0, 20}, 0, "Bounce-out"},
             {"S20", {0, 100}, {1, 20}, 20, "Single 20"}, {"T3", {0, -120}, {3, 3}, 9, "Triple 3"},
             {"S11", {-100, 0}, {1, 11}, 11, "Single 11"}, {"S6", {100, 0}, {1, 6}, 6, "Single 6"},
             {"D16", polar(196, 216), {2, 16}, 32, "Double 16"}, {"T19", polar(125, 252), {3, 19}, 57, "Triple 19"},
             {"wire of 20 and 1", polar(150, 81), {1, 0}, 0, "Bounce-out"},
             {"double's outer wire", polar(201.99999, 90), {0, 20}, 0, "Bounce-out"},
             {"just off the board", polar(202, 90), {0, 20}, 0, "Missed board"},
             {"off beside a wire", polar(300, 81), {0, 0}, 0, "Missed board"},
             // A dart in a segment gap keeps -999 as number but never scores negative.
             {"gap in the singles", polar(150, 8.4999995), {1, NoMatch}, 0, "Void."},
             {"gap in the doubles", polar(196, 8.4999995), {2, NoMatch}, 0, "Void."}});
    }
    void scoresAndDescriptions()
    {
        QFETCH(BoardPoint, at);
        QFETCH(DartScore, score);
        QFETCH(int, points);
        const DartScore actual = scoreFromXY(at.x, at.y);
        QCOMPARE(actual, score);
        QCOMPARE(actual.points(), points);
        QCOMPARE(actual.isDouble(), score.multiplier == 2 && points > 0);
        QTEST(dartDescriptionFromXY(at.x, at.y), "text");
    }

    // Every aiming point on a number scores exactly what it aims at.
    void aimPointsLieInTheirTarget_data()
    {
        QTest::addColumn<DartScore>("target");
        QTest::addColumn<bool>("centre"); // nothing to aim at but the middle
        for (const auto &[name, target] : {std::pair{"25", DartScore{1, 25}}, {"bull", {2, 25}}, {"miss", {0, 20}}, {"T0", {3, 0}}})
            QTest::newRow(name) << target << true;
        for (int i = 0; i < 60; ++i) // S1 to T20
            QTest::addRow("%c%d", "SDT"[i / 20], i % 20 + 1) << DartScore{i / 20 + 1, i % 20 + 1} << false;
    }
    void aimPointsLieInTheirTarget()
    {
        QFETCH(DartScore, target);
        QFETCH(bool, centre);
        const BoardPoint p = aimPoint(target.multiplier, target.number);
        if (centre)
            QCOMPARE(p, BoardPoint{});
        else
            QCOMPARE(scoreFromXY(p.x, p.y), target);
    }

    // Shown figures are cut, never rounded, and lose trailing zeros (angles
    // below).
    void distanceTexts_data()
    {
        addTable<double, QString, QString>({"units", "inches", "centimetres"},
            {{"board's radius", 202, "6.5\"", "16.51 cm"}, {"100 units", 100, "3.217\"", "8.173 cm"},
             {"none", 0, "0\"", "0 cm"}, {"board's width", 404, "13\"", "33.02 cm"}, {"a hundredth", 0.01, "0\"", "0 cm"}});
    }
    void distanceTexts()
    {
        QFETCH(double, units);
        QTEST(distanceText(units, false), "inches");
        QTEST(distanceText(units, true), "centimetres");
    }

    void textsFollowTheUsersLocale()
    {
        QCOMPARE(degreesText(90), QStringLiteral("90 deg."));
        QCOMPARE(degreesText(359.99), QStringLiteral("359.9 deg."));
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(distanceText(100, false), QStringLiteral("3,217\""));
        QCOMPARE(degreesText(87.39), QStringLiteral("87,3 deg."));
    }
};

QTEST_GUILESS_MAIN(TestBoardGeometry)
#include "tst_board_geometry.moc"
