#include "games/checkout_chart.h"

#include "stats/stats_store.h"

#include <QTemporaryDir>
#include <QTest>

using namespace tavrix;

namespace {

DartRoute route(std::initializer_list<DartScore> darts)
{
    return DartRoute(darts);
}

} // namespace

class TestCheckoutChart : public QObject {
    Q_OBJECT

private slots:
    // Fields become dart pairs and a display text with a blank after each
    // comma; malformed fields are refused rather than half read.
    void parsesDartCodes()
    {
        QCOMPARE(*parseDartCodes(QStringLiteral("T20,D20")), route({{3, 20}, {2, 20}}));
        QCOMPARE(*parseDartCodes(QStringLiteral("S25,D25")), route({{1, 25}, {2, 25}}));
        QCOMPARE(*parseDartCodes(QStringLiteral(" T19 , D16 ")), route({{3, 19}, {2, 16}}));
        QVERIFY(parseDartCodes(QString())->isEmpty());
        QVERIFY(parseDartCodes(QStringLiteral(""))->isEmpty());
        for (const char *bad : {"X20", "T25", "D21", "S0", "T", "20", "T20,,D20", "T20,D2O", "t20"})
            QVERIFY2(!parseDartCodes(QString::fromLatin1(bad)), bad);
        QCOMPARE(dartCodesText(route({{3, 20}, {3, 19}, {2, 25}})), QStringLiteral("T20, T19, D25"));
    }

    void checkoutDartsFollowTheRules()
    {
        CheckoutChart chart;
        QCOMPARE(chart.load({{100, QStringLiteral("T20,T20,S20"), QStringLiteral("T20,D20")},
                             {175, QStringLiteral("T20,T20,S25"), QString()},
                             {80, QStringLiteral("T20,S20"), QString()},
                             {2, QStringLiteral("S2"), QStringLiteral("D1")}}),
                 0);
        // Double out never asks the chart above 170; single out does up to 180.
        QCOMPARE(chart.checkoutDarts(175, true), route({{3, 20}}));
        QCOMPARE(chart.checkoutDarts(175, false), route({{3, 20}, {3, 20}, {1, 25}}));
        QCOMPARE(chart.checkoutDarts(181, false), route({{3, 20}}));
        QCOMPARE(chart.checkoutDarts(100, true), route({{3, 20}, {2, 20}}));
        QCOMPARE(chart.checkoutDarts(100, false), route({{3, 20}, {3, 20}, {1, 20}}));
        // An empty field and a score without a row both fall back to treble 20.
        QCOMPARE(chart.checkoutDarts(80, true), route({{3, 20}}));
        QCOMPARE(chart.checkoutDarts(57, true), route({{3, 20}}));
        QCOMPARE(chart.checkoutDarts(2, true), route({{2, 1}}));
        // 1 or less: nothing to recommend.
        QCOMPARE(chart.checkoutDarts(1, false), route({{0, 0}}));
        QCOMPARE(chart.checkoutDarts(-5, true), route({{0, 0}}));

        QCOMPARE(chart.routeText(100, true), QStringLiteral("T20, D20"));
        QCOMPARE(chart.routeText(80, true), QString());
        QVERIFY(chart.hasRow(80));
        QVERIFY(!chart.hasRow(57));
    }

    // Rows outside 1..180 and broken fields are rejected; later rows replace
    // earlier ones for the same score.
    void loadRejectsBadRowsAndKeepsTheLast()
    {
        CheckoutChart chart;
        const int rejected = chart.load({{0, QStringLiteral("S1"), QString()},
                                         {181, QStringLiteral("T20"), QString()},
                                         {40, QStringLiteral("X5"), QStringLiteral("D20")},
                                         {32, QStringLiteral("S16,S16"), QStringLiteral("D8,D8")},
                                         {32, QStringLiteral("S16,S16"), QStringLiteral("D16")}});
        QCOMPARE(rejected, 3);
        QCOMPARE(chart.checkoutDarts(40, false), route({{3, 20}}));
        QCOMPARE(chart.checkoutDarts(40, true), route({{2, 20}}));
        QCOMPARE(chart.checkoutDarts(32, true), route({{2, 16}}));
    }

    // The chart a new database is filled with is the one start-up reads back.
    void loadsTheBundledChartFromTheDatabase()
    {
        QTemporaryDir dir;
        StatsStore store(QStringLiteral("chart"));
        QVERIFY2(store.open(dir.filePath(QStringLiteral("t.db"))), qPrintable(store.lastError()));
        CheckoutChart chart;
        QVERIFY(loadCheckoutChart(store, chart));
        for (int points = 1; points <= CheckoutChart::MaxPoints; ++points)
            QVERIFY(chart.hasRow(points));
        QCOMPARE(chart.routeText(170, true), QStringLiteral("T20, T20, D25"));

        store.close();
        CheckoutChart untouched;
        QVERIFY(!loadCheckoutChart(store, untouched));
        QVERIFY(!untouched.hasRow(100));
    }
};

QTEST_GUILESS_MAIN(TestCheckoutChart)
#include "tst_checkout_chart.moc"
