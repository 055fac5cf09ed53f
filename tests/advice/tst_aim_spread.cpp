#include "core/advice/aim_spread.h"

#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <random>

using namespace tavrix;

namespace {

// Darts drawn from a normal distribution with the given bias and covariance
// (through its Cholesky factor), all aimed at one class.
std::vector<DartOffset> normalDarts(const Spread &s, int count, AimClass aimClass, quint32 seed)
{
    QRandomGenerator random(seed);
    std::normal_distribution<double> normal;
    const double l11 = std::sqrt(s.varX);
    const double l21 = s.covXY / l11;
    const double l22 = std::sqrt(s.varY - l21 * l21);
    std::vector<DartOffset> darts;
    for (int i = 0; i < count; ++i) {
        const double u = normal(random);
        const double v = normal(random);
        darts.push_back({float(s.biasX + l11 * u), float(s.biasY + l21 * u + l22 * v), aimClass});
    }
    return darts;
}

std::vector<DartOffset> atLengths(std::initializer_list<double> lengths)
{
    std::vector<DartOffset> darts;
    for (const double length : lengths)
        darts.push_back({float(length), 0, AimClass::Single});
    return darts;
}

} // namespace

class TestAimSpread : public QObject {
    Q_OBJECT

private slots:
    // A target names its area as the review does: the bull area by its
    // centre whatever the ring, a number by its ring's aiming point.
    void targetsNameTheirAimingPoints()
    {
        const auto check = [](int value, int ring, BoardPoint aim, AimClass aimClass) {
            const auto got = aimOfTarget(value, ring);
            QVERIFY2(got, qPrintable(QStringLiteral("%1/%2").arg(value).arg(ring)));
            QCOMPARE(got->first, aim);
            QCOMPARE(got->second, aimClass);
        };
        check(25, 1, {0, 0}, AimClass::Bull);
        check(50, 3, {0, 0}, AimClass::Bull);
        check(20, 3, aimPoint(3, 20), AimClass::Treble);
        check(7, 2, aimPoint(2, 7), AimClass::Double);
        check(5, 1, aimPoint(1, 5), AimClass::Single);
        for (const auto &[value, ring] : std::initializer_list<std::pair<int, int>>{{0, 1}, {21, 1}, {20, 0}, {20, 4}, {-3, 2}, {24, 3}})
            QVERIFY2(!aimOfTarget(value, ring), qPrintable(QStringLiteral("%1/%2").arg(value).arg(ring)));

        // 202 board units are 165.1 mm.
        const auto offset = dartOffset(20, 2, {aimPoint(2, 20).x + 202, aimPoint(2, 20).y - 101});
        QVERIFY(offset);
        QCOMPARE(offset->dx, 165.1f);
        QCOMPARE(offset->dy, -82.55f);
        QCOMPARE(offset->aimClass, AimClass::Double);
        QVERIFY(!dartOffset(0, 0, {}));
    }

    // Beds by the program's scoring; wires, singles and the outside are singles.
    void aimClassFollowsTheBedUnderThePoint()
    {
        const auto polar = [](double radius, double degrees) {
            return BoardPoint{radius * std::cos(degrees * radPerDeg), radius * std::sin(degrees * radPerDeg)};
        };
        QCOMPARE(aimClassAt(aimPoint(3, 20)), AimClass::Treble);
        QCOMPARE(aimClassAt(polar(114, 10)), AimClass::Treble);
        QCOMPARE(aimClassAt(aimPoint(2, 11)), AimClass::Double);
        QCOMPARE(aimClassAt(polar(201, 300)), AimClass::Double);
        QCOMPARE(aimClassAt({0, 0}), AimClass::Bull);
        QCOMPARE(aimClassAt(polar(15, 200)), AimClass::Bull);
        QCOMPARE(aimClassAt(aimPoint(1, 3)), AimClass::Single);
        QCOMPARE(aimClassAt(polar(113.5, 90)), AimClass::Single); // ring wire
        QCOMPARE(aimClassAt(polar(7.5, 90)), AimClass::Single);   // bull's wire
        QCOMPARE(aimClassAt(polar(118, 81)), AimClass::Single);   // wire across the treble
        QCOMPARE(aimClassAt(polar(195, 99)), AimClass::Single);   // wire across the double
        QCOMPARE(aimClassAt(polar(230, 90)), AimClass::Single);   // off the board
    }

    // 10,000 darts of a known spread give it back within four standard
    // errors of each estimate.
    void fitRecoversAKnownSpread()
    {
        const Spread truth{3.0, -2.0, 64.0, 20.0, 36.0};
        const int n = 10000;
        const SpreadFit fit = fitSpread(normalDarts(truth, n, AimClass::Treble, 17));
        QCOMPARE(fit.fitted + fit.wild, qint64(n));
        QVERIFY2(fit.wild <= 5, qPrintable(QString::number(fit.wild)));
        const Spread &s = fit.pooled;
        const auto near = [](double got, double want, double standardError) {
            return std::fabs(got - want) <= 4 * standardError;
        };
        QVERIFY2(near(s.biasX, truth.biasX, std::sqrt(truth.varX / n)), qPrintable(QString::number(s.biasX)));
        QVERIFY2(near(s.biasY, truth.biasY, std::sqrt(truth.varY / n)), qPrintable(QString::number(s.biasY)));
        QVERIFY2(near(s.varX, truth.varX, truth.varX * std::sqrt(2.0 / (n - 1))), qPrintable(QString::number(s.varX)));
        QVERIFY2(near(s.varY, truth.varY, truth.varY * std::sqrt(2.0 / (n - 1))), qPrintable(QString::number(s.varY)));
        QVERIFY2(near(s.covXY, truth.covXY,
                      std::sqrt((truth.varX * truth.varY + truth.covXY * truth.covXY) / (n - 1))),
                 qPrintable(QString::number(s.covXY)));
        // All aimed at trebles: the treble fit is the pooled one, the
        // other classes have none of their own.
        QCOMPARE(fit.byClass[int(AimClass::Treble)], std::optional<Spread>(s));
        QVERIFY(!fit.byClass[int(AimClass::Double)]);
        QCOMPARE(fit.forClass(AimClass::Double), s);
    }

    // The sample covariance divides by n - 1.
    void smallSampleIsFittedExactly()
    {
        const SpreadFit fit = fitSpread({{1, 2, AimClass::Single}, {3, 2, AimClass::Single}, {2, 5, AimClass::Bull}});
        QCOMPARE(fit.fitted, qint64(3));
        QCOMPARE(fit.pooled, (Spread{2.0, 3.0, 1.0, 0.0, 3.0}));
        QCOMPARE(fitSpread({}).fitted, qint64(0));
        QVERIFY(!fitSpread(atLengths({1, 2})).enough());
    }

    // Darts beyond four times the median distance are counted, not fitted;
    // a dart at exactly four times stays; an even count takes the mean of
    // the two middle distances.
    void wildDartsAreLeftOut()
    {
        // Median 3 (between 2 and 4): the limit is 12.
        SpreadFit fit = fitSpread(atLengths({0.5, 1, 2, 4, 10, 13}));
        QCOMPARE(fit.wild, qint64(1));
        QCOMPARE(fit.fitted, qint64(5));
        fit = fitSpread(atLengths({1, 1, 1, 1, 4}));
        QCOMPARE(fit.wild, qint64(0));

        std::vector<DartOffset> darts = normalDarts({-1.0, 4.0, 100.0, -10.0, 81.0}, 2000, AimClass::Single, 5);
        const SpreadFit clean = fitSpread(darts);
        for (const auto &[x, y] : std::initializer_list<std::pair<float, float>>{{400, 0}, {-300, 250}, {0, -500}})
            darts.push_back({x, y, AimClass::Treble});
        const SpreadFit withWild = fitSpread(darts);
        QCOMPARE(withWild.wild, clean.wild + 3);
        QCOMPARE(withWild.fitted, clean.fitted);
        QCOMPARE(withWild.pooled, clean.pooled);
        QVERIFY(!withWild.byClass[int(AimClass::Treble)]);
    }

    // A class takes its own fit from 30 fitted darts; below that the pooled
    // fit stands in, and the pooled fit holds every class's darts.
    void aClassNeedsThirtyDartsOfItsOwn()
    {
        std::vector<DartOffset> darts = normalDarts({0, 0, 64, 0, 64}, 200, AimClass::Treble, 1);
        std::vector<DartOffset> doubles = normalDarts({6, 0, 100, 0, 9}, 30, AimClass::Double, 2);
        darts.insert(darts.end(), doubles.begin(), doubles.end() - 1);
        SpreadFit fit = fitSpread(darts);
        QCOMPARE(fit.wild, qint64(0));
        QVERIFY(!fit.byClass[int(AimClass::Double)]);
        QCOMPARE(fit.forClass(AimClass::Double), fit.pooled);
        QVERIFY(fit.forClass(AimClass::Treble) != fit.pooled);

        darts.push_back(doubles.back());
        fit = fitSpread(darts);
        QCOMPARE(fit.fitted, qint64(230));
        QVERIFY(fit.byClass[int(AimClass::Double)]);
        const Spread &own = fit.forClass(AimClass::Double);
        QVERIFY(own != fit.pooled);
        QVERIFY2(own.biasX > 3 && own.varX > 2 * own.varY, qPrintable(QString::number(own.varX)));
        // The pooled bias is the darts' mean: 30 doubles pull it right.
        const double meanX = (fit.forClass(AimClass::Treble).biasX * 200 + own.biasX * 30) / 230;
        QVERIFY(std::fabs(fit.pooled.biasX - meanX) < 1e-9);
    }
};

QTEST_GUILESS_MAIN(TestAimSpread)
#include "tst_aim_spread.moc"
