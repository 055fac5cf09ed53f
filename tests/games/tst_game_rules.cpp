// The rules of X01 and Cricket, without widgets.

#include "../support/board_points.h"
#include "core/games/cricket_rules.h"
#include "core/games/x01_rules.h"

#include <QTest>

using namespace tavrix;

class TestGameRules : public QObject {
    Q_OBJECT

private slots:
    // A set's darts against the score: double in, the finish, and the darts
    // that count no more.
    void x01SetScoring()
    {
        const struct {
            QStringList darts;
            int remaining;
            bool doubledIn;
            int left, dealtWith;
            bool doublesIn;
        } sets[] = {{{"T20", "T20", "S20"}, 501, true, 361, 3, false},
                    {{"S20", "D10", "T20"}, 301, false, 221, 3, true}, // doubles in on the second dart
                    {{"T20", "S5", "B"}, 301, false, 251, 3, true},    // the inner bull doubles in
                    {{"T20", "S5", "OB"}, 301, false, 301, 3, false},
                    {{"D16", "T20", "T20"}, 32, true, 0, 1, false}, // darts after the finish are ignored
                    {{"S19", "S20"}, 20, true, 1, 1, false},        // stops at 1
                    {{"", "T20", ""}, 100, true, 40, 1, false}};    // hidden markers score nothing
        for (const auto &row : sets) {
            const X01Set scored = scoreX01Set(set(row.darts), row.remaining, row.doubledIn);
            QVERIFY2(scored.remaining == row.left && int(scored.darts.size()) == row.dealtWith
                         && scored.doubledIn == row.doublesIn && scored.turnPoints == row.remaining - row.left,
                     qPrintable(row.darts.join(',')));
        }
    }

    // Every kind of bust, the wins, and the best-set quirk at exactly 1.
    void bustsWinsAndTheBestSet()
    {
        // {remaining, double out, last multiplier}: below zero, 1 left with or
        // without double out, a finish on a single or treble under double out.
        for (const auto &[left, doubleOut, multiplier] : {std::tuple(-4, true, 3), {1, false, 1}, {1, true, 2}, {0, true, 1},
                                                          {0, true, 3}})
            QCOMPARE(x01Outcome(left, doubleOut, multiplier), X01Outcome::Bust);
        QCOMPARE(x01Outcome(0, true, 2), X01Outcome::Win);
        QCOMPARE(x01Outcome(0, false, 3), X01Outcome::Win);
        QCOMPARE(x01Outcome(40, true, 0), X01Outcome::Continue);
        // The inner bull is a double: it finishes under double out.
        const X01Set bull = scoreX01Set(set({"B"}), 50, true);
        QCOMPARE(x01Outcome(bull.remaining, true, bull.lastMultiplier), X01Outcome::Win);
        // A wire in the double ring scores nothing and doubles nobody in.
        QCOMPARE(findDoubleIn({BoardPoint{0, 201.5}, std::nullopt, std::nullopt}), -1);

        QVERIFY(countsForBestSet(1, false) && countsForBestSet(0, true));
        QVERIFY(!countsForBestSet(1, true) && !countsForBestSet(-3, false));
    }

    void x01Advice()
    {
        const CheckoutChart chart = testChart();
        QCOMPARE(nextX01Aim({}, 301, false, true, chart), (DartScore{2, 20}));
        QCOMPARE(nextX01Aim({scoreOf("D20")}, 301, false, true, chart), (DartScore{3, 20}));
        QCOMPARE(nextX01Aim({}, 40, true, false, chart), (DartScore{3, 10}));

        const QString name = QStringLiteral("Ann");
        QCOMPARE(x01LiveText(name, set({"S20"}), 1, 60, true, true, chart),
                 QStringLiteral("\nAnn threw: Single 20 for 20 points.\n\nRecommend D20 next."));
        QCOMPARE(x01LiveText(name, set({"S20", "S19"}), 2, 40, true, true, chart),
                 QStringLiteral("\nAnn threw: Single 20, and Single 19 for 39 points.\n\nNo recommendations."));
        QCOMPARE(x01LiveText(name, set({"D20"}), 1, 40, true, true, chart),
                 QStringLiteral("\nAnn threw: Double 20 for 40 points.\n\nGame over?"));
        QCOMPARE(x01LiveText(name, set({"S5", "S1", "S20"}), 3, 301, false, true, chart),
                 QStringLiteral("\nAnn threw: Single 5, Single 1, and Single 20 for 0 points.\n\n"
                                "Adjust darts if necessary and click \"Ok\" to continue."));
    }

    // Standard: points only while the opponent is open, marks cut back to 3
    // once he has closed; the bull counts 25 a mark.
    void cricketMarksAndPoints()
    {
        CricketMarks marks{};
        QCOMPARE(markCricketScore(marks, 2, 3, 20, false).slotPoints, std::nullopt);
        QCOMPARE(markCricketScore(marks, 2, 2, 20, false).slotPoints, 40);
        markCricketScore(marks, 2, 2, 25, false);
        markCricketScore(marks, 2, 2, 25, false);
        QCOMPARE(cricketPointsOf(marks[1]), 40 + 25);
        QCOMPARE(markCricketScore(marks, 2, 3, 7, false).slot, -1);

        markCricketScore(marks, 1, 3, 20, false);
        QCOMPARE(markCricketScore(marks, 2, 3, 20, false).slotPoints, std::nullopt);
        QCOMPARE(marks[1][1], 3);
        QCOMPARE(cricketPointsOf(marks[1]), 25);

        CricketMarks simple{};
        markCricketScore(simple, 1, 3, 19, true);
        markCricketScore(simple, 1, 3, 19, true);
        QCOMPARE(simple[0][2], 6);
    }

    void cricketWinsAndAdvice()
    {
        CricketMarks marks{};
        marks[0] = {3, 3, 3, 3, 3, 3, 3};
        marks[1] = {3, 5, 3, 3, 3, 3, 2};
        // Closed but behind on points: no win under Standard rules.
        QVERIFY(!cricketWon(marks, 1, false));
        QVERIFY(cricketWon(marks, 1, true));
        marks[1][6] = 3;
        QVERIFY(cricketWon(marks, 2, false));
        // Level on points with every number closed is a win.
        marks[0][1] = 5;
        QVERIFY(cricketWon(marks, 1, false));

        // The advice: the bull first, then the treble 20, the single once
        // marked, and behind on points a number still open for the opponent.
        CricketMarks fresh{};
        QCOMPARE(nextCricketTarget(fresh, 2, {}, false), BoardPoint{});
        QCOMPARE(nextCricketTarget(fresh, 2, {scoreOf("B"), scoreOf("OB")}, true), aimPoint(3, 20));
        QCOMPARE(nextCricketTarget(fresh, 2, {scoreOf("B"), scoreOf("B"), scoreOf("S20")}, true), aimPoint(1, 20));
        CricketMarks behind{};
        behind[0] = {0, 3, 3, 0, 0, 0, 0};
        behind[1] = {3, 3, 3, 3, 0, 0, 0};
        QCOMPARE(nextCricketTarget(behind, 2, {}, false), aimPoint(1, 18));
        CricketMarks allClosed{};
        allClosed.fill({3, 3, 3, 3, 3, 3, 3});
        QCOMPARE(nextCricketTarget(allClosed, 2, {}, false), BoardPoint{});
        allClosed[1][1] = 4;
        QCOMPARE(nextCricketTarget(allClosed, 2, {}, false), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(TestGameRules)
#include "tst_game_rules.moc"
