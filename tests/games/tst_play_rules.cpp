// The rules of play around the scoring: the cork, the sounds a dart or a set
// earns, what is recorded, and the texts of a turn.

#include "../support/board_points.h"
#include "games/play_rules.h"

#include <QRandomGenerator>
#include <QTest>

using namespace tavrix;

namespace {

// A cue as a number for the tables: -1 for none.
int cue(std::optional<SoundCue> sound)
{
    return sound ? static_cast<int>(*sound) : -1;
}
int cue(SoundCue sound)
{
    return static_cast<int>(sound);
}

} // namespace

class TestPlayRules : public QObject {
    Q_OBJECT

private slots:
    void applause_data()
    {
        QTest::addColumn<GameType>("type");
        QTest::addColumn<int>("amount");
        QTest::addColumn<int>("expected");
        const int none = -1;
        const QList<std::tuple<const char *, GameType, int, int>> rows{
            {"59 points", GameType::X01_501, 59, none},
            {"60 points", GameType::X01_501, 60, cue(SoundCue::Applause60)},
            {"99 points", GameType::X01_301, 99, cue(SoundCue::Applause60)},
            {"100 points", GameType::X01_501, 100, cue(SoundCue::Applause100)},
            {"139 points", GameType::X01_501, 139, cue(SoundCue::Applause100)},
            {"140 points", GameType::X01_501, 140, cue(SoundCue::Applause140)},
            {"180 points", GameType::X01_501, 180, cue(SoundCue::Applause140)},
            {"2 marks", GameType::Cricket, 2, none},
            {"3 marks", GameType::Cricket, 3, cue(SoundCue::Applause60)},
            {"5 marks", GameType::Cricket, 5, cue(SoundCue::Applause60)},
            {"6 marks", GameType::Cricket, 6, cue(SoundCue::Applause100)},
            {"7 marks", GameType::Cricket, 7, cue(SoundCue::Applause100)},
            {"8 marks", GameType::Cricket, 8, cue(SoundCue::Applause140)},
            {"9 marks", GameType::Cricket, 9, cue(SoundCue::Applause140)},
        };
        for (const auto &[name, type, amount, expected] : rows)
            QTest::newRow(name) << type << amount << expected;
    }
    // 301/501 applaud points, Cricket marks; the other figure is ignored.
    void applause()
    {
        QFETCH(GameType, type);
        QFETCH(int, amount);
        QFETCH(int, expected);
        const bool x01 = type != GameType::Cricket;
        QCOMPARE(cue(applauseCue(type, x01 ? amount : 0, x01 ? 0 : amount)), expected);
        QCOMPARE(cue(applauseCue(type, x01 ? amount : 200, x01 ? 20 : amount)), expected);
    }

    void corkWinner_data()
    {
        QTest::addColumn<double>("distance1");
        QTest::addColumn<double>("distance2");
        QTest::addColumn<bool>("cms");
        QTest::addColumn<int>("tieWinner");
        QTest::addColumn<int>("first");
        QTest::newRow("player 1 nearer") << 10.0 << 20.0 << false << 2 << 1;
        QTest::newRow("player 2 nearer") << 20.0 << 10.0 << false << 1 << 2;
        QTest::newRow("equal, tie to 2") << 15.0 << 15.0 << false << 2 << 2;
        QTest::newRow("equal, tie to 1") << 15.0 << 15.0 << false << 1 << 1;
        // 0.0311" both ways: different distances, equal as shown.
        QTest::newRow("equal as shown") << 0.9665 << 0.9670 << false << 1 << 1;
        // In centimetres the same pair shows 0.078 cm and 0.079 cm.
        QTest::newRow("apart in cm") << 0.9665 << 0.9670 << true << 2 << 1;
        QTest::newRow("off the board") << 300.0 << 250.0 << false << 1 << 2;
    }
    void corkWinner()
    {
        QFETCH(double, distance1);
        QFETCH(double, distance2);
        QFETCH(bool, cms);
        QFETCH(int, tieWinner);
        QTEST(corkFirstThrower(distance1, distance2, cms, tieWinner), "first");
    }

    // What the cork shows: names or "My"/"Your", and the computer's verdict
    // without a full stop.
    void corkTexts()
    {
        const std::array<QString, 2> names{QStringLiteral("Bob"), QStringLiteral("Ann")};
        QCOMPARE(corkResultText(false, names, 202, 101, false, 2),
                 QStringLiteral("\nBob's dart: 6.5\"\nAnn's dart: 3.25\"\n\nAnn goes first.\n(Click \"Ok\")"));
        QCOMPARE(corkResultText(true, names, 202, 101, true, 1),
                 QStringLiteral("\nMy dart: 16.51 cm\nYour dart: 8.255 cm\n\nI go first\n(Click \"Ok\")"));
        QVERIFY(corkResultText(true, names, 202, 101, false, 2).endsWith(QStringLiteral("You go first.\n(Click \"Ok\")")));
        QCOMPARE(corkPrompt(QStringLiteral("Bo")),
                 QStringLiteral("\nBo: Throw the cork.  Mark where your dart went on the board, adjust if "
                                "necessary, and click \"Confirm Dart\""));
    }

    void recordedTargets_data()
    {
        QTest::addColumn<QString>("area");
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("ring");
        QTest::addColumn<BoardPoint>("aim");
        QTest::newRow("bull") << "B" << 25 << 1 << BoardPoint{0, 0};
        QTest::newRow("outer bull") << "OB" << 25 << 1 << BoardPoint{0, 0};
        QTest::newRow("treble 20") << "T20" << 20 << 3 << aimPoint(3, 20);
        QTest::newRow("double 16") << "D16" << 16 << 2 << aimPoint(2, 16);
        QTest::newRow("single 5") << "S5" << 5 << 1 << aimPoint(1, 5);
    }
    void recordedTargets()
    {
        QFETCH(QString, area);
        const RecordedTarget target = recordedTarget(scoreOf(area));
        QTEST(target.number, "number");
        QTEST(target.ring, "ring");
        QTEST(target.aim, "aim");
    }

    void hitSounds_data()
    {
        QTest::addColumn<QString>("dart");
        QTest::addColumn<QString>("target");
        QTest::addColumn<int>("otherMarks");
        QTest::addColumn<int>("x01");
        QTest::addColumn<int>("cricket");
        const int none = -1;
        const int harp = cue(SoundCue::Harp);
        const int fanfare = cue(SoundCue::Fanfare);
        QTest::newRow("treble on target") << "T20" << "T20" << 0 << fanfare << fanfare;
        QTest::newRow("double on target") << "D16" << "D16" << 0 << harp << harp;
        QTest::newRow("single on target") << "S5" << "S5" << 0 << harp << none;
        QTest::newRow("treble off target") << "T20" << "T19" << 2 << none << fanfare;
        QTest::newRow("single 20") << "S20" << "T20" << 0 << none << none;
        QTest::newRow("double, other closed") << "D20" << "T20" << 3 << none << none;
        QTest::newRow("double 15") << "D15" << "T20" << 0 << none << harp;
        QTest::newRow("treble 14") << "T14" << "T20" << 0 << none << none;
        QTest::newRow("bull") << "B" << "B" << 2 << harp << harp;
        QTest::newRow("bull, other closed") << "B" << "T20" << 3 << none << none;
    }
    // In 301/501 a dart on its target sounds; in Cricket a double or treble
    // on a number the other player has not closed.
    void hitSounds()
    {
        QFETCH(QString, dart);
        QFETCH(QString, target);
        QFETCH(int, otherMarks);
        QTEST(cue(x01HitCue(scoreOf(dart), scoreOf(target))), "x01");
        CricketRow other{};
        other.fill(otherMarks);
        QTEST(cue(cricketHitCue(scoreOf(dart), other)), "cricket");
    }

    // A set's line in the score column, and the turn's prompt with its advice.
    void turnTexts()
    {
        QCOMPARE(scoreColumnLine(321, 501), QStringLiteral("\n321"));
        QCOMPARE(scoreColumnLine(501, 501), QStringLiteral("*"));
        const CheckoutChart chart = testChart();
        const QString start = QStringLiteral("\nAnn: Throw your darts, mark the board, adjust if necessary, and click \"Ok\"");
        QCOMPARE(turnPrompt(QStringLiteral("Ann")), start);
        QCOMPARE(x01TurnPrompt(QStringLiteral("Ann"), 40, true, true, chart), start + QStringLiteral("\n\nBest Out: D20"));
        QCOMPARE(x01TurnPrompt(QStringLiteral("Ann"), 40, true, false, chart), start + QStringLiteral("\n\nBest Out: T10, D5"));
        QCOMPARE(x01TurnPrompt(QStringLiteral("Ann"), 501, true, true, chart), start + QStringLiteral("\n\nRecommend T20 next."));
        QCOMPARE(x01TurnPrompt(QStringLiteral("Ann"), 301, false, true, chart),
                 start + QStringLiteral("\n\nYou have not yet doubled in."));
        QCOMPARE(x01TurnPrompt(QStringLiteral("Ann"), 40, false, true, chart),
                 start + QStringLiteral("\n\nBest Out: D20\n\nYou have not yet doubled in."));
    }

    void resultRows_data()
    {
        QTest::addColumn<GameEnd>("end");
        QTest::addColumn<QString>("result");
        QTest::addColumn<int>("points");
        QTest::addColumn<int>("bestSet");
        QTest::addColumn<int>("outSet");
        GameEnd won{2, GameType::X01_501, false, 0, 501, 40, 15, 40, 140};
        QTest::newRow("501 won") << won << "W" << 501 << 140 << 40;
        GameEnd lost = won;
        lost.winner = 1;
        QTest::newRow("501 lost") << lost << "L" << 461 << 140 << 0;
        GameEnd cricket{2, GameType::Cricket, false, 75, 0, 0, 24, 0, 99};
        QTest::newRow("Cricket won") << cricket << "W" << 75 << 0 << 0;
        cricket.simpleCricket = true;
        QTest::newRow("simple Cricket") << cricket << "W" << 0 << 0 << 0;
    }
    void resultRows()
    {
        QFETCH(GameEnd, end);
        const GameResult row = gameResultRow(end);
        QTEST(row.result, "result");
        QTEST(row.points, "points");
        QTEST(row.bestSet, "bestSet");
        QTEST(row.outSet, "outSet");
        QCOMPARE(row.throws, end.localThrows);
    }

    // Alert titles come from their own list, one draw each.
    void alertTitles()
    {
        QRandomGenerator random(1);
        const QStringList busts{"Too bad", "Rats!", "NOOO!!!", "Oh well...", "Ugh."};
        QVERIFY(busts.contains(alertTitle(AlertKind::Bust, random)));
        QVERIFY(QStringList({"Hooray!", "Great!", "Faaan-tastic!", "Game on!", "Yes!"})
                    .contains(alertTitle(AlertKind::DoubledIn, random)));
    }

    // The large figures: what is left with the average, Cricket points or
    // closed numbers; a slot is greyed only when both players closed it.
    void glanceFigures()
    {
        const GlanceFigures x01 = x01Glance(141, 60.0);
        QCOMPARE(x01.figure + '|' + x01.detail, QStringLiteral("141|Avg 60.00"));
        QCOMPARE(x01Glance(501, std::nullopt).detail, QStringLiteral("Avg -"));
        const CricketRow row{3, 5, 3, 1, 0, 0, 2}; // bull closed, 20 two marks past, 19 closed
        const GlanceFigures standard = cricketGlance(row, false, cricketPointsOf(row));
        QCOMPARE(standard.figure + '|' + standard.detail, QStringLiteral("40|3/7 closed"));
        QCOMPARE(cricketGlance(row, true, 0).figure, QStringLiteral("3/7"));
        const std::array<bool, 7> both = closedByBoth({row, CricketRow{2, 3, 3, 3, 3, 3, 3}});
        QCOMPARE(QList<bool>(both.begin(), both.end()),
                 (QList<bool>{false, true, true, false, false, false, false}));
    }
};

QTEST_GUILESS_MAIN(TestPlayRules)
#include "tst_play_rules.moc"
