// The rules of play around the scoring: the cork, what is recorded, and the
// texts of the cork.

#include "../support/board_points.h"
#include "core/games/play_rules.h"

#include <QTest>

using namespace tavrix;

class TestPlayRules : public QObject {
    Q_OBJECT

private slots:
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

    // The cork's texts against the computer, in centimetres ("My"/"Your",
    // and its verdict without a full stop). (The cork's result between two
    // named players is checked in tst_game_session.)
    void turnTexts()
    {
        const std::array<QString, 2> names{QStringLiteral("Bob"), QStringLiteral("Ann")};
        QCOMPARE(corkResultText(true, names, 202, 101, true, 1),
                 QStringLiteral("\nMy dart: 16.51 cm\nYour dart: 8.255 cm\n\nI go first\n(Click \"Ok\")"));
        QVERIFY(corkResultText(true, names, 202, 101, false, 2).endsWith(QStringLiteral("You go first.\n(Click \"Ok\")")));
        QCOMPARE(corkPrompt(QStringLiteral("Bo")),
                 QStringLiteral("\nBo: Throw the cork.  Mark where your dart went on the board, adjust if "
                                "necessary, and click \"Confirm Dart\""));
    }

    // The game's row at its end. (A won 501's row is read from the database
    // in tst_games.)
    void resultRows()
    {
        auto row = [](bool won, int lastSet, int throws, LocalFigures figures) {
            const GameResult r = gameResultRow(won, lastSet, throws, figures);
            return r.result + QStringLiteral("|%1|%2|%3|%4").arg(r.throws).arg(r.points).arg(r.bestSet).arg(r.outSet);
        };
        QCOMPARE(row(false, 40, 15, {461, 140}), QStringLiteral("L|15|461|140|0"));
        QCOMPARE(row(true, 81, 24, {501, 140}), QStringLiteral("W|24|501|140|81"));
    }
};

QTEST_GUILESS_MAIN(TestPlayRules)
#include "tst_play_rules.moc"
