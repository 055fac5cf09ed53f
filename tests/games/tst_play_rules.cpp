// The rules of play around the scoring: the cork, the sounds a dart or a set
// earns, what is recorded, and the texts of a turn.

#include "../support/board_points.h"
#include "core/games/play_rules.h"

#include <QRandomGenerator>
#include <QSet>
#include <QTest>

using namespace tavrix;

class TestPlayRules : public QObject {
    Q_OBJECT

private slots:
    // 301/501 applaud points, Cricket marks; the other figure is ignored.
    // Each step's last miss and first hit; 180 and 9 marks are heard in whole
    // games (tst_game_session).
    void applause()
    {
        const struct {
            int points, marks;
            std::optional<SoundCue> expected;
        } steps[] = {{59, 2, std::nullopt},          {60, 3, SoundCue::Applause60},   {99, 5, SoundCue::Applause60},
                     {100, 6, SoundCue::Applause100}, {139, 7, SoundCue::Applause100}, {140, 8, SoundCue::Applause140}};
        for (const auto &step : steps) {
            QCOMPARE(applauseCue(GameType::X01_301, step.points, 20), step.expected);
            QCOMPARE(applauseCue(GameType::Cricket, 200, step.marks), step.expected);
        }
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

    // The outer bull as the target a dart's row records. (The inner bull's
    // row is the cork's and a treble's a set's, both read from the database
    // in tst_games; a double's aim is measured in tst_game_session's 501.)
    void recordedTargets()
    {
        const RecordedTarget outerBull = recordedTarget(scoreOf("OB"));
        QCOMPARE((QList<int>{outerBull.number, outerBull.ring}), (QList<int>{25, 1}));
        QCOMPARE(outerBull.aim, (BoardPoint{0, 0}));
    }

    // In 301/501 a dart on its target sounds; in Cricket a double or treble
    // on a number the other player has not closed. (A treble on its target
    // in 301/501 is heard in tst_board_input.)
    void hitSounds()
    {
        const std::optional<SoundCue> none, harp = SoundCue::Harp, fanfare = SoundCue::Fanfare;
        const struct {
            const char *dart, *target;
            int otherMarks;
            std::optional<SoundCue> x01, cricket;
        } darts[] = {{"D16", "D16", 0, harp, harp},   {"S5", "S5", 0, harp, none},   {"T20", "T19", 2, none, fanfare},
                     {"S20", "T20", 0, none, none},   {"D20", "T20", 3, none, none}, {"D15", "T20", 0, none, harp},
                     {"T14", "T20", 0, none, none},   {"B", "B", 2, harp, harp},     {"B", "T20", 3, none, none}};
        for (const auto &row : darts) {
            CricketRow other{};
            other.fill(row.otherMarks);
            QVERIFY2(x01HitCue(scoreOf(row.dart), scoreOf(row.target)) == row.x01, row.dart);
            QVERIFY2(cricketHitCue(scoreOf(row.dart), other) == row.cricket, row.dart);
        }
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

    // The game's row at its end. (A won 501's row is read from the database
    // in tst_games.)
    void resultRows()
    {
        auto row = [](const GameEnd &end) {
            const GameResult r = gameResultRow(end);
            return r.result + QStringLiteral("|%1|%2|%3").arg(r.points).arg(r.bestSet).arg(r.outSet);
        };
        QCOMPARE(row({1, GameType::X01_501, false, 0, 501, 40, 15, 40, 140}), QStringLiteral("L|461|140|0"));
        GameEnd cricket{2, GameType::Cricket, false, 75, 0, 0, 24, 0, 99};
        QCOMPARE(row(cricket), QStringLiteral("W|75|0|0"));
        cricket.simpleCricket = true;
        QCOMPARE(row(cricket), QStringLiteral("W|0|0|0"));
    }

    // Each alert draws its title from its own list, every title in turn.
    void alertTitles()
    {
        QRandomGenerator random(1);
        const std::pair<AlertKind, QStringList> lists[] = {
            {AlertKind::DoubledIn, {"Hooray!", "Great!", "Faaan-tastic!", "Game on!", "Yes!"}},
            {AlertKind::NotDoubledIn, {"Too bad...", "Nuts!", "Doh!", "Oh well...", "Ha-ha!"}},
            {AlertKind::Bust, {"Too bad", "Rats!", "NOOO!!!", "Oh well...", "Ugh."}}};
        for (const auto &[kind, titles] : lists) {
            QSet<QString> drawn;
            for (int i = 0; i < 100; ++i)
                drawn << alertTitle(kind, random);
            QCOMPARE(drawn, QSet<QString>(titles.begin(), titles.end()));
        }
    }

    // The large figures before a first dart, and for Simple Cricket. (The
    // figures during a game and the greying of a slot both players closed
    // are read from the window in tst_games.)
    void glanceFigures()
    {
        QCOMPARE(x01Glance(501, std::nullopt).detail, QStringLiteral("Avg -"));
        const CricketRow row{3, 5, 3, 1, 0, 0, 2}; // bull closed, 20 two marks past, 19 closed
        const GlanceFigures simple = cricketGlance(row, true, 0);
        QCOMPARE(simple.figure + '|' + simple.detail, QStringLiteral("3/7|closed"));
    }
};

QTEST_GUILESS_MAIN(TestPlayRules)
#include "tst_play_rules.moc"
