// The rules of X01 and Cricket and the chart's advice, without widgets.

#include "../support/board_points.h"
#include "../support/data_table.h"
#include "core/advice/chart_advisor.h"
#include "core/games/cricket_rules.h"
#include "core/games/x01_rules.h"

#include <QTest>

using namespace tavrix;

Q_DECLARE_METATYPE(tavrix::X01Reading)

class TestGameRules : public QObject {
    Q_OBJECT

    const CheckoutChart chart_ = testChart();
    const ChartAdvisor advisor_{chart_};

    GameOptions options(GameType type, bool doubleIn = false, bool doubleOut = true, bool simple = false) const
    {
        GameOptions o;
        o.type = type;
        o.doubleIn = doubleIn;
        o.doubleOut = doubleOut;
        o.simpleCricket = simple;
        return o;
    }

private slots:
    // A set's darts against the score: the doubling dart, the finish, and
    // the darts that count no more; scored, and as the live text and the
    // computer read them while they are thrown.
    void x01SetCounting_data()
    {
        const auto scored = X01Reading::Scored, thrown = X01Reading::AsThrown;
        addTable<QStringList, X01Reading, int, bool, int, int, bool>(
            {"darts", "reading", "remaining", "doubledIn", "left", "dealtWith", "doublesIn"},
            {{"plain", {"T20", "T20", "S20"}, scored, 501, true, 361, 3, true},
             {"second dart doubles in", {"S20", "D10", "T20"}, scored, 301, false, 221, 3, true},
             {"inner bull doubles in", {"T20", "S5", "B"}, scored, 301, false, 251, 3, true},
             {"outer bull does not", {"T20", "S5", "OB"}, scored, 301, false, 301, 3, false},
             {"darts after the finish", {"D16", "T20", "T20"}, scored, 32, true, 0, 1, true},
             {"stops at 1", {"S19", "S20"}, scored, 20, true, 1, 1, true},
             {"hidden markers", {"", "T20", ""}, scored, 100, true, 40, 1, true},
             // A wire between two doubles: no double when the set is scored,
             // a double while the darts are thrown.
             {"wire double, scored", {"WD", "S20"}, scored, 301, false, 301, 2, false},
             {"wire double, as thrown", {"WD", "S20"}, thrown, 301, false, 281, 2, true},
             // As thrown, every dart counts: the live text adds up all three.
             {"as thrown past 1", {"S19", "S20", "S5"}, thrown, 20, true, -24, 3, true}});
    }
    void x01SetCounting()
    {
        QFETCH(QStringList, darts);
        QFETCH(X01Reading, reading);
        QFETCH(int, remaining);
        QFETCH(bool, doubledIn);
        QFETCH(int, left);
        const X01Count count = countX01Set(set(darts), remaining, doubledIn, reading);
        QCOMPARE(count.remaining, left);
        QTEST(int(count.darts.size()), "dealtWith");
        QTEST(count.doubledIn, "doublesIn");
        QCOMPARE(count.points, remaining - left);
    }

    // Every kind of bust, the wins, and the best-set quirk at exactly 1.
    void bustsWinsAndTheBestSet()
    {
        for (const auto &[left, doubleOut, multiplier] : {std::tuple(-4, true, 3), {1, false, 1}, {1, true, 2}, {0, true, 1},
                                                          {0, true, 3}})
            QCOMPARE(x01Outcome(left, doubleOut, multiplier), X01Outcome::Bust);
        QCOMPARE(x01Outcome(0, true, 2), X01Outcome::Win);
        QCOMPARE(x01Outcome(0, false, 3), X01Outcome::Win);
        QCOMPARE(x01Outcome(40, true, 0), X01Outcome::Continue);
        QVERIFY(countsForBestSet(1, false) && countsForBestSet(0, true));
        QVERIFY(!countsForBestSet(1, true) && !countsForBestSet(-3, false));
    }

    // A 301 through the rules object: the missed double in, the doubling
    // set, the column lines, the win, and the figures recorded for the local
    // player. (Busts are scored in tst_game_session's 501.)
    void x01RulesPlayAGame()
    {
        X01Rules rules(GameType::X01_301, advisor_);
        rules.start(options(GameType::X01_301, true));
        QCOMPARE(rules.glance(2).figure, QStringLiteral("301"));
        ScoredSet s = rules.scoreSet(2, set({"T20", "T20", "T20"}));
        QCOMPARE(s.doubleIn, ScoredSet::DoubleIn::Missed);
        QCOMPARE(s.columnLine, QStringLiteral("*"));
        s = rules.scoreSet(2, set({"S20", "D20", "T20"}));
        QCOMPARE(s.doubleIn, ScoredSet::DoubleIn::DoubledIn);
        QCOMPARE(s.columnLine, QStringLiteral("\n201"));
        s = rules.scoreSet(2, set({"T20", "T20", "T20"}));
        QCOMPARE(s.columnLine, QStringLiteral("\n21"));
        rules.scoreSet(2, set({"S11"}));
        s = rules.scoreSet(2, set({"D5"}));
        QVERIFY(s.won);
        QCOMPARE(s.columnLine, QString());
        QCOMPARE(rules.localFigures(true).points, 301);
        QCOMPARE(rules.localFigures(true).bestSet, 180);
        QCOMPARE(rules.glance(2).figure, QStringLiteral("0"));
    }

    // The advice of a turn: double 20 until doubled in, then the chart's
    // first dart from what is left; the live text.
    void x01AdviceAndTexts()
    {
        QCOMPARE(advisor_.x01Target({40, true, false}), (DartScore{3, 10}));
        QCOMPARE(advisor_.x01Target({1, true, true}), DartScore{});

        X01Rules rules(GameType::X01_501, advisor_);
        rules.start(options(GameType::X01_501));
        const QString ann = QStringLiteral("Ann");
        rules.scoreSet(2, set({"T20", "T20", "T20"}));
        rules.scoreSet(2, set({"T20", "T20", "T20"}));
        rules.scoreSet(2, set({"T20", "T20", "S1"}));
        QCOMPARE(rules.remaining(2), 20);
        rules.scoreSet(2, set({"S10", "S10"})); // a bust at 0 without a double
        QCOMPARE(rules.liveText(ann, 2, set({"S20"}), 1),
                 QStringLiteral("\nAnn threw: Single 20 for 20 points.\n\nGame over?"));
        QCOMPARE(rules.liveText(ann, 2, set({"S19"}), 1),
                 QStringLiteral("\nAnn threw: Single 19 for 19 points.\n\nNo recommendations."));
        QCOMPARE(rules.liveText(ann, 2, set({"S10", "S1", "S1"}), 3),
                 QStringLiteral("\nAnn threw: Single 10, Single 1, and Single 1 for 12 points.\n\n"
                                "Adjust darts if necessary and click \"Ok\" to continue."));
        // 10 left after the dart: the chart has no route, treble 20 stands in.
        QCOMPARE(rules.advice(2, set({"S10"})), aimPoint(3, 20));
    }

    // The turn's prompt: the best out from the chart, or the advice of T20
    // once doubled in, and the reminder while not doubled in.
    void x01TurnPrompt_data()
    {
        const QStringList to40{"T20,T20,T20", "T20,S20,S1"};
        addTable<bool, bool, QStringList, QString>({"doubleIn", "doubleOut", "sets", "ending"},
            {{"best out, single out", false, false, to40, "\n\nBest Out: T10, D5"},
             {"best out, double out", false, true, to40, "\n\nBest Out: D20"},
             {"no route", false, true, {}, "\n\nRecommend T20 next."},
             {"not doubled in", true, true, {"T20"}, "\n\nYou have not yet doubled in."}});
    }
    void x01TurnPrompt()
    {
        QFETCH(bool, doubleIn);
        QFETCH(bool, doubleOut);
        QFETCH(QStringList, sets);
        QFETCH(QString, ending);
        X01Rules rules(GameType::X01_301, advisor_);
        rules.start(options(GameType::X01_301, doubleIn, doubleOut));
        for (const QString &darts : std::as_const(sets))
            rules.scoreSet(2, set(darts.split(',')));
        QCOMPARE(rules.turnPrompt(QStringLiteral("Ann"), 2),
                 QStringLiteral("\nAnn: Throw your darts, mark the board, adjust if necessary, and click \"Ok\"") + ending);
    }

    // 301/501 applaud the points of a set, Cricket its marks: each step's
    // last miss and first hit.
    void applause_data()
    {
        const int a60 = int(SoundCue::Applause60), a100 = int(SoundCue::Applause100), a140 = int(SoundCue::Applause140);
        addTable<QStringList, QStringList, int>({"x01Set", "cricketSet", "expected"}, // -1 none
            {{"59, 2 marks", {"T19", "S2"}, {"D20"}, -1}, {"60, 3 marks", {"T20"}, {"T20"}, a60},
             {"99, 5 marks", {"T20", "T13"}, {"T20", "D19"}, a60}, {"100, 6 marks", {"T20", "D20"}, {"T20", "T19"}, a100},
             {"139, 7 marks", {"T20", "T19", "D1"}, {"T20", "T19", "S18"}, a100},
             {"140, 8 marks", {"T20", "T20", "D10"}, {"T20", "T19", "D18"}, a140}});
    }
    void applause()
    {
        QFETCH(QStringList, x01Set);
        QFETCH(QStringList, cricketSet);
        QFETCH(int, expected);
        X01Rules x01(GameType::X01_501, advisor_);
        x01.start(options(GameType::X01_501));
        CricketRules cricket(advisor_);
        cricket.start(options(GameType::Cricket));
        const std::optional<SoundCue> fromPoints = x01.scoreSet(2, set(x01Set)).applause;
        const std::optional<SoundCue> fromMarks = cricket.scoreSet(2, set(cricketSet)).applause;
        QCOMPARE(fromPoints ? int(*fromPoints) : -1, expected);
        QCOMPARE(fromMarks ? int(*fromMarks) : -1, expected);
    }

    // The large figures: the score left and the average, the Cricket points
    // or, under Simple rules, the numbers closed. With the darts of a turn
    // marked so far they count them as confirming would, without booking
    // them: the finish the chart advises from what they leave, a bust at
    // once, nothing advised before the double in. ("Avg -" before a set is
    // read in tst_game_session.)
    void glanceFollowsTheTurn()
    {
        X01Rules x01(GameType::X01_501, advisor_);
        x01.start(options(GameType::X01_501));
        x01.scoreSet(2, set({"T20", "T20", "T20"}));
        x01.scoreSet(2, set({"T20", "T20", "T20"}));
        x01.scoreSet(2, set({"S20", "S20", "S1"})); // 100 left
        auto shown = [&](const QStringList &darts) {
            const GlanceFigures g = x01.glance(2, set(darts));
            return g.figure + '|' + g.detail + '|' + g.finish.value_or(QStringLiteral("none")) + (g.bust ? "|bust" : "");
        };
        QCOMPARE(shown({}), QStringLiteral("100|Avg 133.67|"));
        QCOMPARE(shown({"S20"}), QStringLiteral("80|Avg 126.30|"));
        QCOMPARE(shown({"S20", "S20"}), QStringLiteral("60|Avg 120.27|S20 \u00B7 D20"));
        QCOMPARE(shown({"S20", "S20", "S20"}), QStringLiteral("40|Avg 115.25|D20"));
        // 100 - 99 leaves 1: a bust, its darts thrown for nothing.
        QCOMPARE(shown({"T20", "T13"}), QStringLiteral("BUST|Avg 109.36||bust"));
        QCOMPARE(x01.remaining(2), 100);

        X01Rules doubleIn(GameType::X01_301, advisor_);
        doubleIn.start(options(GameType::X01_301, true, false));
        QCOMPARE(doubleIn.glance(2, set({"S20", "S20"})).figure, QStringLiteral("301"));
        QCOMPARE(doubleIn.glance(2, set({"S20", "S20"})).finish, QString());

        // Cricket under Standard rules: the points and the numbers closed.
        CricketRules cricket(advisor_);
        cricket.start(options(GameType::Cricket));
        cricket.scoreSet(2, set({"T20"}));
        QCOMPARE(cricket.glance(2, set({"D20", "T19"})).figure + '|' + cricket.glance(2, set({"D20", "T19"})).detail,
                 QStringLiteral("40|2/7 closed"));
        QCOMPARE(cricket.glance(2).figure, QStringLiteral("0"));
        CricketRules simple(advisor_);
        simple.start(options(GameType::Cricket, false, true, true));
        simple.scoreSet(2, set({"B", "B", "T20"}));
        QCOMPARE(simple.glance(2).figure + '|' + simple.glance(2).detail, QStringLiteral("2/7|closed"));
        QVERIFY(!simple.glance(2).finish);
    }

    // When the computer's turn is decided: a finish, or a score of 1 or
    // less. (Where it aims by the out rule is thrown in tst_opponents.)
    void computerTurnEnd()
    {
        X01Rules doubleOut(GameType::X01_501, advisor_);
        doubleOut.start(options(GameType::X01_501));
        doubleOut.scoreSet(1, set({"T20", "T20", "T20"}));
        doubleOut.scoreSet(1, set({"T20", "T20", "T20"}));
        doubleOut.scoreSet(1, set({"T20", "T13", "D1"})); // 40 left
        QVERIFY(!doubleOut.turnDecided(1, SetDarts{}));
        const SetDarts leavesOne = set({"T13"});
        QVERIFY(doubleOut.turnDecided(1, leavesOne));
        QCOMPARE(doubleOut.reportedPoints(1, leavesOne), 39);
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
        CricketRules rules(advisor_);
        rules.start(options(GameType::Cricket, false, true, true));
        QCOMPARE(rules.advice(2, {}), BoardPoint{});
        QCOMPARE(rules.advice(2, set({"B", "OB"})), aimPoint(3, 20));
        QCOMPARE(rules.advice(2, set({"B", "B", "S20"})), aimPoint(1, 20));
        CricketStanding behind{{3, 3, 3, 3, 0, 0, 0}, {0, 3, 3, 0, 0, 0, 0}, false};
        QCOMPARE(advisor_.cricketTarget(behind), aimPoint(1, 18));
        // Simple Cricket has no points to catch up: the next open number.
        behind.simple = true;
        QCOMPARE(advisor_.cricketTarget(behind), aimPoint(3, 17));
        CricketStanding allClosed{{3, 3, 3, 3, 3, 3, 3}, {3, 3, 3, 3, 3, 3, 3}, false};
        QCOMPARE(advisor_.cricketTarget(allClosed), BoardPoint{});
        allClosed.mine[1] = 4;
        QCOMPARE(advisor_.cricketTarget(allClosed), std::nullopt);
    }

    // The sounds a dart earns beyond its landing.
    void hitSounds_data()
    {
        const int none = -1, harp = int(SoundCue::Harp), fanfare = int(SoundCue::Fanfare);
        addTable<QString, QString, QString, bool, int>({"game", "dart", "aimedAt", "atThisBoard", "expected"}, // -1 none
            {{"x01 treble hit", "x01", "T20", "T20", true, fanfare}, {"x01 single hit here", "x01", "S20", "S20", true, harp},
             {"x01 single hit by the computer", "x01", "S20", "S20", false, none},
             {"x01 double hit by the computer", "x01", "D16", "D16", false, harp},
             {"x01 miss of the target", "x01", "T19", "T20", true, none},
             {"cricket double", "cricket", "D20", "", true, harp}, {"cricket treble", "cricket", "T18", "", true, fanfare},
             {"cricket single", "cricket", "S18", "", true, none}, {"cricket number the other closed", "cricket", "T15", "", true, none},
             {"cricket low number", "cricket", "T14", "", true, none}, {"cricket computer", "cricket", "T20", "", false, none}});
    }
    void hitSounds()
    {
        QFETCH(QString, game);
        QFETCH(QString, dart);
        QFETCH(QString, aimedAt);
        QFETCH(bool, atThisBoard);
        QFETCH(int, expected);
        std::unique_ptr<GameRules> rules =
            makeGameRules(game == QLatin1String("x01") ? GameType::X01_501 : GameType::Cricket, advisor_);
        rules->start(options(rules->type()));
        // Player 1 has closed the 15.
        rules->scoreSet(1, set({"T15"}));
        const std::optional<DartScore> aim = aimedAt.isEmpty() ? std::nullopt : std::optional(scoreOf(aimedAt));
        const std::optional<SoundCue> cue = rules->hitCue(2, scoreOf(dart), aim, atThisBoard);
        QCOMPARE(cue ? int(*cue) : -1, expected);
    }
};

QTEST_GUILESS_MAIN(TestGameRules)
#include "tst_game_rules.moc"
