#include "board/board_geometry.h"

#include <QLocale>
#include <QTest>

#include <cmath>

using namespace tavrix;

Q_DECLARE_METATYPE(tavrix::DartScore)

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

    // The axes are handled before the division, and each quadrant maps to
    // its own range of angles.
    void anglesCoverAllQuadrants_data()
    {
        QTest::addColumn<double>("x");
        QTest::addColumn<double>("y");
        QTest::addColumn<double>("angle");
        QTest::newRow("origin") << 0.0 << 0.0 << 0.0;
        QTest::newRow("up") << 0.0 << 100.0 << 90.0;
        QTest::newRow("down") << 0.0 << -120.0 << 270.0;
        QTest::newRow("left") << -100.0 << 0.0 << 180.0;
        QTest::newRow("second quadrant") << -1.0 << 1.0 << 135.0;
        QTest::newRow("fourth quadrant") << 1.0 << -1.0 << 315.0;
        QTest::newRow("just below the x axis") << 100.0 << -1e-9 << 360.0 - 5.7295779513e-10;
    }

    void anglesCoverAllQuadrants()
    {
        QFETCH(double, x);
        QFETCH(double, y);
        QFETCH(double, angle);
        const double actual = angleFromXY(x, y);
        QVERIFY2(std::fabs(actual - angle) < 1e-9, qPrintable(QString::number(actual, 'g', 17)));
        QVERIFY(actual >= 0 && actual < 360);
    }

    // Ring bounds are inclusive and the gaps between rows match no ring.
    void ringTableIsFirstMatchWithGaps_data()
    {
        QTest::addColumn<double>("radius");
        QTest::addColumn<int>("ring");
        QTest::newRow("centre") << 0.0 << RingBull;
        QTest::newRow("bull edge") << 7.0 << RingBull;
        QTest::newRow("gap after bull") << 7.000005 << NoMatch;
        QTest::newRow("bull wire") << 7.5 << RingWire;
        QTest::newRow("outer bull start") << 8.0 << RingOuterBull;
        QTest::newRow("outer bull edge") << 19.0 << RingOuterBull;
        QTest::newRow("outer bull wire") << 19.5 << RingWire;
        QTest::newRow("inner single edge") << 113.0 << RingSingle;
        QTest::newRow("triple wire") << 113.5 << RingWire;
        QTest::newRow("triple") << 118.0 << RingTriple;
        QTest::newRow("triple outer edge") << 125.0 << RingTriple;
        QTest::newRow("double") << 196.0 << RingDouble;
        QTest::newRow("double outer edge") << 201.0 << RingDouble;
        QTest::newRow("last wire") << 201.99999 << RingWire;
        QTest::newRow("board edge") << 202.0 << NoMatch;
    }

    void ringTableIsFirstMatchWithGaps()
    {
        QFETCH(double, radius);
        QTEST(ringFromRadius(radius), "ring");
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
            QCOMPARE(segmentFromAngle(centre), number);
            // 8 degrees either side is still the same number.
            QCOMPARE(segmentFromAngle(std::fmod(centre + 8.0, 360.0)), number);
            QCOMPARE(segmentFromAngle(std::fmod(centre - 8.0 + 360.0, 360.0)), number);
            // Just past the scoring band, counter-clockwise, lies the wire.
            QCOMPARE(segmentFromAngle(std::fmod(centre + 9.0, 360.0)), 0);
        }
    }

    void segmentGapsAndWires_data()
    {
        QTest::addColumn<double>("angle");
        QTest::addColumn<int>("segment");
        QTest::newRow("6 from below 360") << 351.5 << 6;
        QTest::newRow("360 itself") << 360.0 << 6;
        QTest::newRow("6 edge") << 8.499999 << 6;
        QTest::newRow("gap after the 6") << 8.4999995 << NoMatch;
        QTest::newRow("wire after the 6") << 8.5 << 0;
        QTest::newRow("gap after a wire") << 9.499995 << NoMatch;
        QTest::newRow("13 start") << 9.5 << 13;
        QTest::newRow("gap after the 10") << 350.499995 << NoMatch;
        QTest::newRow("wire before the 6") << 351.0 << 0;
    }

    void segmentGapsAndWires()
    {
        QFETCH(double, angle);
        QTEST(segmentFromAngle(angle), "segment");
    }

    // What a dart at a position scores and how it is described.
    void scoresAndDescriptions_data()
    {
        QTest::addColumn<double>("x");
        QTest::addColumn<double>("y");
        QTest::addColumn<DartScore>("score");
        QTest::addColumn<int>("points");
        QTest::addColumn<QString>("description");

        auto row = [](const char *name, BoardPoint p, DartScore score, int points, const char *text) {
            QTest::newRow(name) << p.x << p.y << score << points << QString::fromUtf8(text);
        };
        row("bull centre", {0, 0}, {2, 25}, 50, "Bull");
        row("outer bull", polar(18.5, 30), {1, 25}, 25, "25");
        row("bull wire", polar(7.5, 200), {0, 8}, 0, "Bounce-out");
        row("gap after bull", polar(7.000005, 90), {0, 20}, 0, "Missed board");
        row("wire round the outer bull", polar(19.5, 90), {0, 20}, 0, "Bounce-out");
        row("single 20", {0, 100}, {1, 20}, 20, "Single 20");
        row("triple 3", {0, -120}, {3, 3}, 9, "Triple 3");
        row("single 11", {-100, 0}, {1, 11}, 11, "Single 11");
        row("single 6", {100, 0}, {1, 6}, 6, "Single 6");
        row("double 16", polar(196, 216), {2, 16}, 32, "Double 16");
        row("treble 19 edge", polar(125, 252), {3, 19}, 57, "Triple 19");
        row("wire between 20 and 1", polar(150, 81), {1, 0}, 0, "Bounce-out");
        row("outermost wire", polar(201.99999, 90), {0, 20}, 0, "Bounce-out");
        row("off the board", polar(202, 90), {0, 20}, 0, "Missed board");
        row("off beside a wire", polar(300, 81), {0, 0}, 0, "Missed board");
        // A dart in a segment gap keeps -999 as number but never scores negative.
        row("segment gap", polar(150, 8.4999995), {1, NoMatch}, 0, "Void.");
        row("segment gap in the double ring", polar(196, 8.4999995), {2, NoMatch}, 0, "Void.");
    }

    void scoresAndDescriptions()
    {
        QFETCH(double, x);
        QFETCH(double, y);
        QFETCH(DartScore, score);
        QFETCH(int, points);
        const DartScore actual = scoreFromXY(x, y);
        QCOMPARE(actual.multiplier, score.multiplier);
        QCOMPARE(actual.number, score.number);
        QCOMPARE(actual.points(), points);
        QCOMPARE(actual.isDouble(), score.multiplier == 2 && points > 0);
        QTEST(dartDescriptionFromXY(x, y), "description");
    }

    void aimPointsLieInTheirTarget()
    {
        const BoardPoint t20 = aimPoint(3, 20);
        QVERIFY(std::fabs(t20.x) < 1e-9);
        QVERIFY(std::fabs(t20.y - 118) < 1e-9);
        const BoardPoint d6 = aimPoint(2, 6);
        QVERIFY(std::fabs(d6.x - 196) < 1e-9 && std::fabs(d6.y) < 1e-9);
        QCOMPARE(aimPoint(1, 25), BoardPoint{});
        QCOMPARE(aimPoint(2, 25), BoardPoint{});
        QCOMPARE(aimPoint(0, 20), BoardPoint{});
        QCOMPARE(aimPoint(3, 0), BoardPoint{});
        // Every aiming point scores exactly what it aims at.
        for (int multiplier = 1; multiplier <= 3; ++multiplier) {
            for (int number = 1; number <= 20; ++number) {
                const BoardPoint p = aimPoint(multiplier, number);
                QCOMPARE(scoreFromXY(p.x, p.y), (DartScore{multiplier, number}));
            }
        }
    }

    // Shown figures are cut, never rounded, and lose trailing zeros.
    void distanceAndAngleTexts_data()
    {
        QTest::addColumn<double>("units");
        QTest::addColumn<QString>("inches");
        QTest::addColumn<QString>("centimetres");
        QTest::newRow("board radius") << 202.0 << "6.5\"" << "16.51 cm";
        QTest::newRow("cut, not rounded") << 100.0 << "3.217\"" << "8.173 cm";
        QTest::newRow("zero") << 0.0 << "0\"" << "0 cm";
        QTest::newRow("whole number") << 404.0 << "13\"" << "33.02 cm";
        QTest::newRow("below the last digit") << 0.01 << "0\"" << "0 cm";
    }

    void distanceAndAngleTexts()
    {
        QFETCH(double, units);
        QTEST(distanceText(units, false), "inches");
        QTEST(distanceText(units, true), "centimetres");
    }

    void textsFollowTheUsersLocale()
    {
        QCOMPARE(degreesText(87.39), QStringLiteral("87.3 deg."));
        QCOMPARE(degreesText(90), QStringLiteral("90 deg."));
        QCOMPARE(degreesText(359.99), QStringLiteral("359.9 deg."));
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(distanceText(100, false), QStringLiteral("3,217\""));
        QCOMPARE(degreesText(87.39), QStringLiteral("87,3 deg."));
    }
};

QTEST_GUILESS_MAIN(TestBoardGeometry)
#include "tst_board_geometry.moc"
