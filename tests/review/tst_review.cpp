// Review of a scoring area: the area a click selects, the captions, the hit
// rule and the figures; the spread of a set of darts; the darts the store
// reads for an area.

#include "review/dart_spread.h"
#include "review/review_rules.h"
#include "stats/stats_store.h"

#include <QLocale>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <random>

using namespace tavrix;

namespace {

using Dart = StatsStore::AreaDart;

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
    // select nothing. Treble 20 is hit by 20 in ring 3 only; a single bed is
    // the "Any" target, hit by its number in any ring; the bull is hit by the
    // practice bull (score 50), the practice 25 and a game's 25 of either
    // multiplier.
    void areasCaptionsAndHits()
    {
        const struct { int ringCode, segment; const char *caption; BoardPoint aim; } areas[] = {
            {3, 20, "Totals: Triple 20", {0, 118}}, {1, 20, "Totals: Any 20", {0, 150}},
            {50, 6, "Totals:  25/Bull", {}},       {25, NoMatch, "Totals:  25/Bull", {}},
            {0, 20, nullptr, {}}, {NoMatch, 20, nullptr, {}}, {1, 0, nullptr, {}}, {3, NoMatch, nullptr, {}}};
        for (const auto &a : areas) {
            const std::optional<ReviewArea> area = reviewArea(a.ringCode, a.segment);
            QCOMPARE(area.has_value(), a.caption != nullptr);
            if (area) {
                QCOMPARE(reviewCaption(QStringLiteral("Totals"), *area), QLatin1String(a.caption));
                QVERIFY(near(area->aim.x, a.aim.x) && near(area->aim.y, a.aim.y));
            }
        }
        // ring code, segment; the dart's score and ring; hit
        const int hits[][5] = {{3, 20, 20, 3, 1}, {3, 20, 20, 1, 0}, {2, 20, 50, 1, 0}, {1, 20, 20, 1, 1},
                               {1, 20, 20, 2, 1}, {1, 20, 5, 1, 0},  {50, 0, 50, 1, 1}, {25, 0, 25, 1, 1},
                               {25, 0, 25, 2, 1}, {50, 0, 20, 1, 0}};
        for (const auto &h : hits)
            QVERIFY2(reviewHit(*reviewArea(h[0], h[1]), h[2], h[3]) == bool(h[4]),
                     qPrintable(QStringLiteral("%1 %2: %3 %4").arg(h[0]).arg(h[1]).arg(h[2]).arg(h[3])));
    }

    // A percentage in centimetres under a German locale, cut to two decimals
    // (no darts and all hits are checked through the program in
    // tst_review_mode).
    void figuresFollowTheLocale()
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(reviewFigures({3, 1, 30}, true).percentage, QStringLiteral("33,33%"));
    }

    // A normal spread of 4000 seeded darts, 20 by 8 units turned 40
    // degrees: about two thirds fall inside, and the axes come out near.
    void spreadHoldsTwoThirds()
    {
        std::mt19937 random(20261122);
        std::normal_distribution<double> along(0, 20);
        std::normal_distribution<double> across(0, 8);
        std::vector<BoardPoint> sample;
        const double c = std::cos(40 * M_PI / 180), s = std::sin(40 * M_PI / 180);
        for (int i = 0; i < 4000; ++i) {
            const double u = along(random), v = across(random);
            sample.push_back({-30 + u * c - v * s, 100 + u * s + v * c});
        }
        const SpreadEllipse e = *dartSpread(sample).ellipse;
        const double k = std::sqrt(2 * std::log(3.0));
        QVERIFY2(near(e.semiMajor, 20 * k, 0.05 * 20 * k), qPrintable(QString::number(e.semiMajor)));
        QVERIFY2(near(e.semiMinor, 8 * k, 0.05 * 8 * k), qPrintable(QString::number(e.semiMinor)));
        QVERIFY2(near(e.angle, 40, 2), qPrintable(QString::number(e.angle)));
        const auto inside = std::count_if(sample.begin(), sample.end(), [&](BoardPoint p) { return e.contains(p); });
        QVERIFY2(inside > 0.64 * 4000 && inside < 0.69 * 4000, qPrintable(QString::number(inside)));
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
        QVERIFY(near(line.semiMajor, std::sqrt(2 * std::log(3.0)) * std::sqrt(10.0 / 3)));
        QVERIFY(std::isfinite(line.semiMinor) && line.semiMinor < 1e-6);
        QVERIFY(near(line.angle, 45, 1e-7));
        // Half its length is 2.706: the first dart lies within, beyond it not.
        QVERIFY(line.contains({1.5, 1.5}) && line.contains({0, 0}));
        QVERIFY(!line.contains({-0.5, -0.5}) && !line.contains({1.5, 1.6}));
    }

    // The store's darts of an area: the player's practice sets aimed at the
    // target, set by set in id order and each set's darts in id order,
    // whoever wrote the dart; the player's game darts aimed at it, in the
    // order they were recorded.
    void storeReadsTheDartsOfAnArea()
    {
        QTemporaryDir dir;
        StatsStore store;
        QVERIFY(store.open(dir.filePath(QStringLiteral("tavrix.db"))));
        const qint64 ann = *store.insertPlayer(QStringLiteral("Ann"));
        const qint64 bob = *store.insertPlayer(QStringLiteral("Bob"));
        const qint64 first = *store.insertStatTarget(ann, 20, 3);
        const qint64 any20 = *store.insertStatTarget(ann, 20, 1);
        const qint64 bobs = *store.insertStatTarget(bob, 20, 3);
        const qint64 second = *store.insertStatTarget(ann, 20, 3);
        // Written out of order: the second set's first dart comes first.
        const std::pair<qint64, Dart> throws[] = {
            {second, {1, 2, 20, 3}}, {first, {3, 4, 20, 1}},  {any20, {5, 6, 20, 1}},
            {bobs, {7, 8, 20, 3}},   {second, {9, 10, 5, 1}}, {first, {11, 12, 0, NoMatch}}};
        for (const auto &[target, d] : throws)
            QVERIFY(store.insertStatThrow({ann, target, 0, d.x, d.y, 1, d.score, d.ring}));
        // Bob's dart on Ann's set belongs to the set.
        QVERIFY(store.insertStatThrow({bob, first, 2, 13.5, -14.25, 1, 25, 1}));

        const qint64 game = *store.insertGame({ann, GameType::X01_501, SkillLevel::Master, QStringLiteral("Computer")});
        const GameDart gameDarts[] = {{game, ann, 1, 0, 20, 21, 1, 20, 3, 20, 3},
                                      {game, ann, 1, 1, 22, 23, 1, 5, 1, 20, 1},
                                      {game, bob, 1, 2, 24, 25, 1, 20, 3, 20, 3},
                                      {game, ann, 2, 0, 26, 27, 1, 25, 2, 25, 1},
                                      {game, ann, 2, 1, 28, 29, 1, 1, 3, 20, 3}};
        for (const GameDart &d : gameDarts)
            QVERIFY(store.insertGameDart(d));

        const std::optional<StatsStore::AreaDarts> t20 = store.areaDarts(ann, 20, 3);
        QVERIFY(t20);
        QCOMPARE(t20->practice, (std::vector<Dart>{{3, 4, 20, 1}, {11, 12, 0, NoMatch}, {13.5, -14.25, 25, 1},
                                                   {1, 2, 20, 3}, {9, 10, 5, 1}}));
        QCOMPARE(t20->game, (std::vector<Dart>{{20, 21, 20, 3}, {28, 29, 1, 3}}));

        const std::optional<StatsStore::AreaDarts> bull = store.areaDarts(ann, 25, 1);
        QVERIFY(bull && bull->practice.empty());
        QCOMPARE(bull->game, (std::vector<Dart>{{26, 27, 25, 2}}));
        QCOMPARE(store.areaDarts(bob, 20, 3)->practice, (std::vector<Dart>{{7, 8, 20, 3}}));

        store.close();
        QVERIFY(!store.areaDarts(ann, 20, 3));
        QVERIFY(!store.lastError().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestReview)
#include "tst_review.moc"
