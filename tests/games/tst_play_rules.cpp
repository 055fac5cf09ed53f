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

} // namespace

class TestPlayRules : public QObject {
    Q_OBJECT

private slots:
    void applause_data()
    {
        QTest::addColumn<int>("points"); // in 301/501
        QTest::addColumn<int>("marks");  // in Cricket
        QTest::addColumn<int>("expected");
        // Each step's last miss and first hit; 180 and 9 marks are heard in
        // whole games (tst_games, tst_game_session).
        QTest::newRow("59 points, 2 marks") << 59 << 2 << -1;
        QTest::newRow("60 points, 3 marks") << 60 << 3 << cue(SoundCue::Applause60);
        QTest::newRow("99 points, 5 marks") << 99 << 5 << cue(SoundCue::Applause60);
        QTest::newRow("100 points, 6 marks") << 100 << 6 << cue(SoundCue::Applause100);
        QTest::newRow("139 points, 7 marks") << 139 << 7 << cue(SoundCue::Applause100);
        QTest::newRow("140 points, 8 marks") << 140 << 8 << cue(SoundCue::Applause140);
    }
    // 301/501 applaud points, Cricket marks; the other figure is ignored.
    void applause()
    {
        QFETCH(int, points);
        QFETCH(int, marks);
        QFETCH(int, expected);
        QCOMPARE(cue(applauseCue(GameType::X01_501, points, 0)), expected);
        QCOMPARE(cue(applauseCue(GameType::X01_301, points, 20)), expected);
        QCOMPARE(cue(applauseCue(GameType::Cricket, 0, marks)), expected);
        QCOMPARE(cue(applauseCue(GameType::Cricket, 200, marks)), expected);
    }

    // The cork goes to the nearer dart as shown: 0.9665 and 0.9670 units
    // both show as 0.031", a tie, but as 0.078 cm and 0.079 cm. (Plain wins
    // and who takes a tie are played in tst_game_session and tst_games.)
    void corkGoesToTheNearerAsShown()
    {
        QCOMPARE(corkFirstThrower(0.9665, 0.9670, false, 2), 2);
        QCOMPARE(corkFirstThrower(0.9670, 0.9665, false, 1), 1);
        QCOMPARE(corkFirstThrower(0.9665, 0.9670, true, 2), 1);
    }

    void recordedTargets_data()
    {
        QTest::addColumn<QString>("area");
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("ring");
        QTest::addColumn<BoardPoint>("aim");
        // The inner bull's row is the cork's and a treble's a set's, both
        // read from the database in tst_games; a double's aim is measured in
        // tst_game_session's 501.
        QTest::newRow("outer bull") << "OB" << 25 << 1 << BoardPoint{0, 0};
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
        // A treble on its target in 301/501 is heard in tst_board_input.
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

    // The cork's texts against the computer, in centimetres ("My"/"Your",
    // and its verdict without a full stop); the turn's prompt with its best
    // out or advice and the reminder to double in. (The cork's result
    // between two named players is checked in tst_game_session, the score
    // column's lines in tst_games.)
    void turnTexts()
    {
        const std::array<QString, 2> names{QStringLiteral("Bob"), QStringLiteral("Ann")};
        QCOMPARE(corkResultText(true, names, 202, 101, true, 1),
                 QStringLiteral("\nMy dart: 16.51 cm\nYour dart: 8.255 cm\n\nI go first\n(Click \"Ok\")"));
        QVERIFY(corkResultText(true, names, 202, 101, false, 2).endsWith(QStringLiteral("You go first.\n(Click \"Ok\")")));
        QCOMPARE(corkPrompt(QStringLiteral("Bo")),
                 QStringLiteral("\nBo: Throw the cork.  Mark where your dart went on the board, adjust if "
                                "necessary, and click \"Confirm Dart\""));

        const CheckoutChart chart = testChart();
        const QString start = QStringLiteral("\nAnn: Throw your darts, mark the board, adjust if necessary, and click \"Ok\"");
        auto prompt = [&](int remaining, bool doubledIn, bool doubleOut) {
            return x01TurnPrompt(QStringLiteral("Ann"), remaining, doubledIn, doubleOut, chart);
        };
        QCOMPARE(prompt(40, true, false), start + QStringLiteral("\n\nBest Out: T10, D5"));
        QCOMPARE(prompt(501, true, true), start + QStringLiteral("\n\nRecommend T20 next."));
        QCOMPARE(prompt(301, false, true), start + QStringLiteral("\n\nYou have not yet doubled in."));
        QCOMPARE(prompt(40, false, true), start + QStringLiteral("\n\nBest Out: D20\n\nYou have not yet doubled in."));
    }

    void resultRows_data()
    {
        QTest::addColumn<GameEnd>("end");
        QTest::addColumn<QString>("result");
        QTest::addColumn<int>("points");
        QTest::addColumn<int>("bestSet");
        QTest::addColumn<int>("outSet");
        // A won 501's row is read from the database in tst_games.
        QTest::newRow("501 lost") << GameEnd{1, GameType::X01_501, false, 0, 501, 40, 15, 40, 140} << "L" << 461 << 140 << 0;
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
    }

    // Each alert draws its title from its own list, every title in turn.
    void alertTitles()
    {
        QRandomGenerator random(1);
        const std::pair<AlertKind, QStringList> lists[] = {
            {AlertKind::DoubledIn, {"Hooray!", "Great!", "Faaan-tastic!", "Game on!", "Yes!"}},
            {AlertKind::NotDoubledIn, {"Too bad...", "Nuts!", "Doh!", "Oh well...", "Ha-ha!"}},
            {AlertKind::Bust, {"Too bad", "Rats!", "NOOO!!!", "Oh well...", "Ugh."}}};
        for (auto [kind, titles] : lists) {
            QStringList drawn;
            for (int i = 0; i < 100; ++i)
                drawn << alertTitle(kind, random);
            drawn.removeDuplicates();
            drawn.sort();
            titles.sort();
            QCOMPARE(drawn, titles);
        }
    }

    // The large figures before a first dart, and for Simple Cricket; a slot
    // is greyed only when both players closed it. (The figures during a game
    // are read from the window in tst_games.)
    void glanceFigures()
    {
        QCOMPARE(x01Glance(501, std::nullopt).detail, QStringLiteral("Avg -"));
        const CricketRow row{3, 5, 3, 1, 0, 0, 2}; // bull closed, 20 two marks past, 19 closed
        const GlanceFigures simple = cricketGlance(row, true, 0);
        QCOMPARE(simple.figure + '|' + simple.detail, QStringLiteral("3/7|closed"));
        const std::array<bool, 7> both = closedByBoth({row, CricketRow{2, 3, 3, 3, 3, 3, 3}});
        QCOMPARE(QList<bool>(both.begin(), both.end()),
                 (QList<bool>{false, true, true, false, false, false, false}));
    }
};

QTEST_GUILESS_MAIN(TestPlayRules)
#include "tst_play_rules.moc"
