// The checkout chart: its dart codes, the advice it gives, and its repair
// when the database holds a damaged one.

#include "core/games/checkout_chart.h"

#include "../support/data_table.h"
#include "../support/sql_rows.h"
#include "core/stats/stats_store.h"

#include <QTemporaryDir>
#include <QTest>

#include <map>

using namespace tavrix;

namespace {

DartRoute route(std::initializer_list<DartScore> darts) { return DartRoute(darts); }

} // namespace

class TestCheckoutChart : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> dir_;
    StatsStore store_;

    // A new database whose chart another program has damaged.
    void openDamaged(const QStringList &statements)
    {
        dir_ = std::make_unique<QTemporaryDir>();
        QVERIFY2(store_.open(dir_->filePath(QStringLiteral("t.db"))), qPrintable(store_.lastError()));
        QVERIFY(OtherConnection(dir_->filePath(QStringLiteral("t.db"))).exec(statements));
    }

private slots:
    void cleanup() { store_.close(); }

    // Fields become dart pairs; malformed fields are refused rather than
    // half read. (The display text is read in damagedChartIsMended.)
    void parsesDartCodes_data()
    {
        addTable<QString, std::optional<DartRoute>>({"codes", "route"}, // none: refused
            {{"bull finish", "S25,D25", route({{1, 25}, {2, 25}})}, {"blanks", " T19 , D16 ", route({{3, 19}, {2, 16}})},
             {"null", QString(), DartRoute{}}, {"empty", "", DartRoute{}}, {"X20", "X20", {}}, {"T25", "T25", {}},
             {"D21", "D21", {}}, {"S0", "S0", {}}, {"T", "T", {}}, {"20", "20", {}}, {"T20,,D20", "T20,,D20", {}},
             {"letter O", "T20,D2O", {}}, {"t20", "t20", {}}});
    }
    void parsesDartCodes()
    {
        QFETCH(QString, codes);
        QTEST(parseDartCodes(codes), "route");
    }

    // The advice for a score: double out never asks the chart above 170,
    // single out does up to 180; a score without a row falls back to treble
    // 20 (an empty field and a score beyond the chart do so in
    // tst_throw_model); at 1 or less there is nothing to recommend. Rows
    // outside 1..180 and broken fields are rejected, and a later row
    // replaces an earlier one for the same score.
    void checkoutDartsFollowTheRules()
    {
        CheckoutChart chart;
        QCOMPARE(chart.load({{100, QStringLiteral("T20,T20,S20"), QStringLiteral("T20,D20")},
                             {175, QStringLiteral("T20,T20,S25"), QString()},
                             {80, QStringLiteral("T20,S20"), QString()},
                             {2, QStringLiteral("S2"), QStringLiteral("D1")},
                             {0, QStringLiteral("S1"), QString()},
                             {181, QStringLiteral("T20"), QString()},
                             {40, QStringLiteral("X5"), QStringLiteral("D20")},
                             {32, QStringLiteral("S16,S16"), QStringLiteral("D8,D8")},
                             {32, QStringLiteral("S16,S16"), QStringLiteral("D16")}}),
                 3);
        QCOMPARE(chart.checkoutDarts(175, true), route({{3, 20}}));
        QCOMPARE(chart.checkoutDarts(175, false), route({{3, 20}, {3, 20}, {1, 25}}));
        QCOMPARE(chart.checkoutDarts(100, true), route({{3, 20}, {2, 20}}));
        QCOMPARE(chart.checkoutDarts(57, true), route({{3, 20}}));
        QCOMPARE(chart.checkoutDarts(2, true), route({{2, 1}}));
        QCOMPARE(chart.checkoutDarts(1, false), route({{0, 0}}));
        QCOMPARE(chart.routeText(80, true), QString());
        QCOMPARE(chart.checkoutDarts(40, false), route({{3, 20}}));
        QCOMPARE(chart.checkoutDarts(40, true), route({{2, 20}}));
        QCOMPARE(chart.checkoutDarts(32, true), route({{2, 16}}));
    }

    // What a chart row must hold for the computer to aim by it. The bundled
    // chart's own rows must all pass (bull finishes, empty fields where no
    // darts can finish, 1 and scores above 170 without a double out) for the
    // repair below to replace only the damaged ones; another exact route is
    // kept in "own sound routes kept".
    void soundRows_data()
    {
        addTable<ChartRow, bool>({"row", "sound"},
            {{"blanks round the codes", {40, " D20 ", " D20"}, true}, {"garbage", {100, "banana", "T20,D20"}, false},
             {"semicolon", {100, "T20,S20,S20", "T20;D20"}, false}, {"single out short", {100, "T20,S20", "T20,D20"}, false},
             {"double out over", {100, "T20,S20,S20", "T20,D25"}, false}, {"double out on a single", {80, "T20,S20", "T20,S20"}, false},
             {"double out short", {85, "T20,S25", "T15,S25,D5"}, false}, {"a dart too many", {8, "S2,S2,S2,S2", "D4"}, false},
             {"finish left out", {80, "T20,S20", ""}, false}, {"double out of 1", {1, "S1", "D1"}, false},
             {"score 0", {0, "", ""}, false}, {"score 181", {181, "T20,T20,T20", ""}, false}});
    }
    void soundRows()
    {
        QFETCH(ChartRow, row);
        QTEST(chartRowIsSound(row), "sound");
    }

    // The sound rows stay as they are (same rowid, same text); every other
    // score gets the bundled row, in the database, so the next load finds
    // nothing to mend.
    void damagedChartIsMended_data()
    {
        // A whole chart, garbage fields, missing rows, wrong sums and a broken
        // row repeating a score are mended and counted at start in
        // tst_main_window; of two sound rows for a score the last stays.
        addTable<QStringList, int, int>({"statements", "replaced", "surplus"},
            {{"points no score", {"UPDATE outchart SET points = 'x' WHERE points = 33",
                                  "UPDATE outchart SET points = 0 WHERE points = 34",
                                  "UPDATE outchart SET points = 33.5 WHERE points = 35"}, 3, 3},
             {"a score twice", {"INSERT INTO outchart VALUES (60, 'T20', 'S20,D20')"}, 0, 1},
             {"own sound routes kept", {"UPDATE outchart SET doubleout = 'S20,T20,D10' WHERE points = 100"}, 0, 0}});
    }
    void damagedChartIsMended()
    {
        QFETCH(QStringList, statements);
        openDamaged(statements);
        const QList<StoredChartRow> before = *store_.storedOutchartRows();
        std::map<int, StoredChartRow> soundBefore; // the last sound row of each score
        for (const StoredChartRow &row : before)
            if (chartRowIsSound(row.row))
                soundBefore[row.row.points] = row;
        CheckoutChart chart;
        const std::optional<ChartRepairReport> report = loadRepairedCheckoutChart(store_, chart);
        QVERIFY(report && report->saved);
        QTEST(report->replaced, "replaced");
        QTEST(report->surplus, "surplus");

        const QList<StoredChartRow> after = *store_.storedOutchartRows();
        const QList<ChartRow> bundled = bundledChartRows();
        QCOMPARE(after.size(), bundled.size());
        for (const StoredChartRow &row : after) {
            const int points = row.row.points;
            const auto kept = soundBefore.find(points);
            if (kept != soundBefore.end()) {
                QCOMPARE(row.rowId, kept->second.rowId);
                QCOMPARE(row.row, kept->second.row);
            } else {
                QCOMPARE(row.row, bundled[points - 1]);
            }
            QCOMPARE(chart.routeText(points, true), dartCodesText(*parseDartCodes(row.row.doubleOut)));
        }
        CheckoutChart again;
        QVERIFY(!loadRepairedCheckoutChart(store_, again)->repaired());
    }
};

QTEST_GUILESS_MAIN(TestCheckoutChart)
#include "tst_checkout_chart.moc"
