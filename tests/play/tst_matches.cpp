// Matches of legs through the window: the format on the set-up, the score
// and first thrower beside the board, the alerts between legs and at the
// end, the legs after the first without a cork, quitting, and the rows of
// the legs and the match.

#include "../support/program_test.h"

#include <QComboBox>
#include <QSpinBox>
#include <QTimer>

using namespace tavrix;

class TestMatches : public ProgramTest {
    Q_OBJECT

    void chooseMatch(int choice, int legs, int sets = 2)
    {
        control<QComboBox>("cboMatchFormat")->setCurrentIndex(choice);
        control<QSpinBox>("spnLegs")->setValue(legs);
        control<QSpinBox>("spnSets")->setValue(sets);
    }
    void startAgainstTheMaster()
    {
        for (const char *option : {"opOpponent_0", "opSkill_2", "opGame_2"})
            control<QRadioButton>(option)->click();
        control<QTimer>("ThrowTimer")->setInterval(0);
        press(QStringLiteral("Start Game"));
    }
    // The computer's turn, shown whole and confirmed.
    void computerTurn()
    {
        QCOMPARE(game().currentThrower(), 1);
        QTRY_VERIFY(startButton()->isEnabled());
        press(QStringLiteral("Ok"));
    }
    // Ann throws 501 in nine darts; the computer's turns come between hers.
    void nineDarter()
    {
        const QList<QStringList> sets{{"T20", "T20", "T20"}, {"T20", "T20", "T20"}, {"T20", "T19", "D12"}};
        for (const QStringList &set : sets) {
            if (game().currentThrower() == 1)
                computerTurn();
            playSet(set);
        }
    }
    QString lastAlert() const
    {
        const auto &shown = messages_.shown.last();
        return shown.title + QLatin1Char('|') + shown.text;
    }

private slots:
    void init() { startProgram(); }
    void cleanup() { program_.reset(); }

    // First to 2 legs against the Master: Ann wins the cork and the first
    // leg, the Master throws first in the second and wins it, Ann throws
    // first in the third and wins the match. Every leg is a game with its
    // row; the match has its row and one link a leg.
    void firstToTwoLegsAgainstTheMaster()
    {
        program_->session().random.seed(5);
        chooseMatch(1, 2);
        startAgainstTheMaster();
        QCOMPARE(text("lblMatchScore"), QStringLiteral("First to 2 legs"));
        throwDarts({QStringLiteral("B")});
        press(QStringLiteral("Confirm Dart"));
        QTRY_COMPARE(startButton()->text(), QStringLiteral("Ok"));
        QCOMPARE(game().currentThrower(), 2);
        QCOMPARE(text("lblMatchScore"), QStringLiteral("Legs 0\u20130"));
        QCOMPARE(text("lblLegStarter"), QStringLiteral("Leg 1: Ann threw first"));
        press(QStringLiteral("Ok"));
        nineDarter();
        QCOMPARE(lastAlert(), QStringLiteral("Leg Over|You won the leg!\r\n\r\nLegs: Computer 0, Ann 1"));
        QCOMPARE(text("lblMatchScore"), QStringLiteral("Legs 0\u20131"));
        QCOMPARE(text("lblLegStarter"), QStringLiteral("Next, leg 2: Computer throws first"));

        // The next leg starts at one press, without a cork: the Master first.
        press(QStringLiteral("Next Leg"));
        QCOMPARE(game().phase(), GamePhase::Turn);
        QCOMPARE(text("lblLegStarter"), QStringLiteral("Leg 2: Computer threw first"));
        for (int turn = 0; turn < 100 && startButton()->text() != QStringLiteral("Next Leg"); ++turn) {
            if (game().currentThrower() == 1)
                computerTurn();
            else
                playSet({"M", "M", "M"});
            if (QTest::currentTestFailed())
                return;
        }
        QCOMPARE(lastAlert(), QStringLiteral("Leg Over|I won the leg!\r\n\r\nLegs: Computer 1, Ann 1"));

        press(QStringLiteral("Next Leg"));
        QCOMPARE(game().currentThrower(), 2);
        QCOMPARE(text("lblLegStarter"), QStringLiteral("Leg 3: Ann threw first"));
        nineDarter();
        QCOMPARE(startButton()->text(), QStringLiteral("Play Again"));
        QCOMPARE(text("lblMatchScore"), QStringLiteral("Legs 1\u20132"));
        QVERIFY(text("lblLegStarter").isEmpty());

        const auto games = rows(QStringLiteral("SELECT id, result, throws, points FROM games ORDER BY id"));
        QCOMPARE(games.size(), 3);
        QCOMPARE(games[0].mid(1), (QVariantList{"W", 9, 501}));
        QCOMPARE(games[1][1], QVariant("L"));
        QCOMPARE(games[2].mid(1), (QVariantList{"W", 9, 501}));
        const int annDarts = 18 + games[1][2].toInt();
        const auto match = rows(QStringLiteral(
            "SELECT kind, sets, legs, opponent, result, playerlegs, opponentlegs, playersets, opponentsets,"
            " playerpoints, playerdarts, opponentpoints, opponentdarts FROM matches"));
        QCOMPARE(match.size(), 1);
        QCOMPARE(match[0].mid(0, 11), (QVariantList{1, 1, 2, "Computer", "W", 2, 1, 0, 0, 1002, annDarts}));
        const int masterPoints = match[0][11].toInt();
        const int masterDarts = match[0][12].toInt();
        QVERIFY(masterPoints > 501 && masterDarts > 0);
        QCOMPARE(lastAlert(), QStringLiteral("Good Game!|You won the match by 2 legs to 1!\r\n\r\n"
                                             "Match averages: Computer %1, Ann %2")
                                  .arg(masterPoints * 3.0 / masterDarts, 0, 'f', 2)
                                  .arg(1002 * 3.0 / annDarts, 0, 'f', 2));
        QCOMPARE(rows(QStringLiteral("SELECT games_id, setno, legno, firstthrower FROM matchlegs ORDER BY legno")),
                 (QList<QVariantList>{{games[0][0], 1, 1, 2}, {games[1][0], 1, 2, 1}, {games[2][0], 1, 3, 2}}));
        // The records beside the board count legs, as games.
        QVERIFY(text("rstatsText").contains(QStringLiteral("Won: 2  Lost: 1")));

        // "Play Again" starts a new match with a cork.
        press(QStringLiteral("Play Again"));
        QCOMPARE(game().phase(), GamePhase::CorkAwaited);
        QCOMPARE(text("lblMatchScore"), QStringLiteral("First to 2 legs"));
    }

    // Sets on the set-up fit the small screen; a single game shows no match
    // line. Quitting a match asks first, No goes on, and Yes records the
    // match as abandoned, between legs as during one.
    void setUpAndQuitting()
    {
        chooseMatch(2, 3, 2);
        for (const char *shown : {"spnSets", "spnLegs", "lblMatchSetsOf"})
            QVERIFY2(control<QWidget>(shown)->isVisible(), shown);
        QVERIFY(window()->minimumSizeHint().height() <= 600 - 32 && window()->minimumSizeHint().width() <= 800);
        QCOMPARE(control<QSpinBox>("spnLegs")->maximum(), 5);
        chooseMatch(0, 3);
        QVERIFY(!control<QWidget>("spnLegs")->isVisible());
        startAgainst(QStringLiteral("Bob"));
        QVERIFY(!control<QWidget>("lblMatchScore")->isVisible());
        control<QPushButton>("btnQuitGame")->click();

        chooseMatch(2, 2, 2);
        startAgainst(QStringLiteral("Bob"));
        corkAnnFirst();
        QCOMPARE(text("lblMatchScore"), QStringLiteral("Sets 0\u20130 \u00b7 Legs 0\u20130"));
        QCOMPARE(text("lblLegStarter"), QStringLiteral("Set 1, leg 1: Ann threw first"));
        playSet({"T20", "T20", "T20"});
        messages_.answers = {false};
        control<QPushButton>("btnQuitGame")->click();
        QCOMPARE(messages_.shown.last().title, QStringLiteral("Quit Match?"));
        QCOMPARE(game().phase(), GamePhase::Turn);
        control<QPushButton>("btnQuitGame")->click();
        QCOMPARE(game().phase(), GamePhase::Idle);
        QCOMPARE(rows(QStringLiteral("SELECT result, playerpoints, playerdarts, opponentlegs FROM matches")),
                 (QList<QVariantList>{{"A", 180, 3, 0}}));
        QCOMPARE(rows(QStringLiteral("SELECT count(*) FROM matchlegs")), (QList<QVariantList>{{1}}));
    }
};

QTEST_MAIN(TestMatches)
#include "tst_matches.moc"
