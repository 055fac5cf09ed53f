// Review of a scoring area: the area a click selects, the captions, the hit
// rule and the figures; the spread of a set of darts; the darts the store
// reads for an area.

#include "core/review/dart_spread.h"
#include "core/review/review_rules.h"
#include "core/stats/stats_store.h"

#include "../support/data_table.h"

#include <QLocale>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

using namespace tavrix;

namespace {

using Dart = AreaDart;

bool near(double a, double b, double tolerance = 1e-9)
{
    return std::abs(a - b) <= tolerance;
}

} // namespace

class TestReview : public QObject {
    Q_OBJECT

private slots:
    void init() { QLocale::setDefault(QLocale::c()); }

    // The area a click's ring and segment codes select: the bull and the
    // outer bull are one area whatever their segment; wires, misses and gaps
    // select nothing. (Treble 20, the outer bull, wires and misses are
    // clicked through the program in tst_review_mode.)
    void areasAndCaptions_data()
    {
        addTable<int, int, QString, BoardPoint>({"ringCode", "segment", "caption", "aim"}, // null caption: no area
            {{"single 20", 1, 20, "Totals: Any 20", {0, 150}}, {"bull of segment 6", 50, 6, "Totals:  25/Bull", {}},
             {"segment gap", 3, NoMatch, QString(), {}}});
    }
    void areasAndCaptions()
    {
        QFETCH(int, ringCode);
        QFETCH(int, segment);
        QFETCH(QString, caption);
        QFETCH(BoardPoint, aim);
        const std::optional<ReviewArea> area = reviewArea(ringCode, segment);
        QCOMPARE(area.has_value(), !caption.isNull());
        if (area) {
            QCOMPARE(reviewCaption(QStringLiteral("Totals"), *area), caption);
            QVERIFY(near(area->aim.x, aim.x) && near(area->aim.y, aim.y));
        }
    }

    // Treble 20 is hit by 20 in ring 3 only; a single bed is the "Any"
    // target, hit by its number in any ring; the bull is hit by the practice
    // bull (score 50), the practice 25 and a game's 25 of either multiplier.
    void hits_data()
    {
        addTable<ReviewArea, int, int, bool>({"area", "score", "ring", "hit"},
            {{"D20, bull", *reviewArea(2, 20), 50, 1, false}, {"any 20, S20", *reviewArea(1, 20), 20, 1, true},
             {"any 20, D20", *reviewArea(1, 20), 20, 2, true}, {"any 20, S5", *reviewArea(1, 20), 5, 1, false},
             {"bull, practice bull", *reviewArea(50, 0), 50, 1, true}, {"bull, 25", *reviewArea(25, 0), 25, 1, true},
             {"bull, S20", *reviewArea(50, 0), 20, 1, false}});
    }
    void hits()
    {
        QFETCH(ReviewArea, area);
        QFETCH(int, score);
        QFETCH(int, ring);
        QTEST(reviewHit(area, score, ring), "hit");
    }

    // A percentage in centimetres under a German locale, cut to two decimals
    // (no darts and all hits are checked through the program in
    // tst_review_mode).
    void figuresFollowTheLocale()
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(reviewFigures({3, 1, 30}, true).percentage, QStringLiteral("33,33%"));
    }

    // Four darts 12 units apart along an axis turned 40 degrees and 6 across
    // it: sample variances 24 and 6 along and across. The ellipse reaches
    // sqrt(2 ln 3) deviations each way, holding two thirds of a normal
    // spread; a dart within that reach on either axis lies inside, one
    // beyond it not.
    void spreadOfATurnedSet()
    {
        const double c = std::cos(40 * M_PI / 180), s = std::sin(40 * M_PI / 180);
        std::vector<BoardPoint> darts;
        for (const BoardPoint p : {BoardPoint{6, 0}, BoardPoint{-6, 0}, BoardPoint{0, 3}, BoardPoint{0, -3}})
            darts.push_back({-30 + p.x * c - p.y * s, 100 + p.x * s + p.y * c});
        const SpreadEllipse e = *dartSpread(darts).ellipse;
        const double k = std::sqrt(2 * std::log(3.0));
        QVERIFY2(near(e.semiMajor, k * std::sqrt(24.0)), qPrintable(QString::number(e.semiMajor)));
        QVERIFY2(near(e.semiMinor, k * std::sqrt(6.0)), qPrintable(QString::number(e.semiMinor)));
        QVERIFY2(near(e.angle, 40, 1e-7), qPrintable(QString::number(e.angle)));
        // Reach 7.26 along, 3.63 across.
        QVERIFY(e.contains({-30 + 7 * c, 100 + 7 * s}) && !e.contains({-30 + 7.5 * c, 100 + 7.5 * s}));
        QVERIFY(e.contains({-30 - 3.5 * s, 100 + 3.5 * c}) && !e.contains({-30 - 3.8 * s, 100 + 3.8 * c}));
    }

    // No darts: nothing; one dart: its spot and no ellipse; darts on one spot
    // or on one line give an ellipse of no size or no width, never a NaN.
    void spreadOfFewOrDegenerateDarts()
    {
        QVERIFY(!dartSpread({}).mean && !dartSpread({}).ellipse);
        const DartSpread one = dartSpread({{5, 7}});
        QVERIFY(one.mean && *one.mean == (BoardPoint{5, 7}) && !one.ellipse);

        const SpreadEllipse spot = *dartSpread({{5, 7}, {5, 7}, {5, 7}}).ellipse;
        QVERIFY(spot.semiMajor == 0 && spot.semiMinor == 0);
        QVERIFY(spot.contains({5, 7}) && !spot.contains({5, 7.01}));

        // Along the diagonal 0, sqrt 2, 2 sqrt 2, 3 sqrt 2: variance 10/3.
        const SpreadEllipse line = *dartSpread({{0, 0}, {1, 1}, {2, 2}, {3, 3}}).ellipse;
        QVERIFY(std::isfinite(line.semiMinor) && line.semiMinor < 1e-6);
        // Half its length is 2.706: the first dart lies within, beyond it not.
        QVERIFY(line.contains({1.5, 1.5}) && line.contains({0, 0}));
        QVERIFY(!line.contains({-0.5, -0.5}) && !line.contains({1.5, 1.6}));
    }

    // The store's darts of an area are those of the player's practice sets
    // aimed at it, whoever wrote the dart, and the player's own game darts
    // aimed at it. (Other targets, other aims and a failed read are checked
    // through the program in tst_review_mode.)
    void storeReadsTheDartsOfAnArea()
    {
        QTemporaryDir dir;
        StatsStore store;
        QVERIFY(store.open(dir.filePath(QStringLiteral("tavrix.db"))));
        const qint64 ann = *store.insertPlayer(QStringLiteral("Ann"));
        const qint64 bob = *store.insertPlayer(QStringLiteral("Bob"));
        const qint64 anns = *store.insertStatTarget(ann, 20, 3);
        const qint64 bobs = *store.insertStatTarget(bob, 20, 3);
        QVERIFY(store.insertStatThrow({ann, anns, 0, 3, 4, 1, 20, 1}));
        QVERIFY(store.insertStatThrow({ann, bobs, 0, 7, 8, 1, 20, 3}));
        // Bob's dart on Ann's set belongs to the set.
        QVERIFY(store.insertStatThrow({bob, anns, 1, 13.5, -14.25, 1, 25, 1}));
        const qint64 game = *store.insertGame({ann, GameType::X01_501, SkillLevel::Master, QStringLiteral("Computer")});
        QVERIFY(store.insertGameDart({game, ann, 1, 0, 20, 21, 1, 20, 3, 20, 3}));
        QVERIFY(store.insertGameDart({game, bob, 1, 1, 24, 25, 1, 20, 3, 20, 3}));

        const std::optional<AreaDarts> t20 = store.areaDarts(ann, 20, 3);
        QVERIFY(t20);
        QCOMPARE(t20->practice, (std::vector<Dart>{{3, 4, 20, 1}, {13.5, -14.25, 25, 1}}));
        QCOMPARE(t20->game, (std::vector<Dart>{{20, 21, 20, 3}}));
        QCOMPARE(store.areaDarts(bob, 20, 3)->practice, (std::vector<Dart>{{7, 8, 20, 3}}));
    }
};

QTEST_GUILESS_MAIN(TestReview)
#include "tst_review.moc"
