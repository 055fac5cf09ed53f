// The score boards of the play frame show what a confirmed set did.

#include "ui/play/game_frame.h"
#include "ui/play/score_boards.h"

#include <QLabel>
#include <QTest>

using namespace tavrix;

class TestScoreBoards : public QObject {
    Q_OBJECT

private slots:
    // A Cricket set that scores on two numbers: each number's points, and
    // the player's total after the set, not the last dart's points.
    void cricketShowsEachNumbersPointsAndTheTotal()
    {
        GameFrame frame;
        CricketScoreBoard board(frame);
        board.start(GameOptions{.type = GameType::Cricket, .names = {}});
        SetOutcome outcome;
        outcome.player = 2;
        outcome.marks = {CricketMark{1, 1, 20}, CricketMark{2, 1, 19}};
        outcome.marksAfter = {0, 4, 4, 0, 0, 0, 0};
        outcome.pointsAfter = 39;
        board.showDarts(outcome);
        QCOMPARE(frame.lblP2Points[1]->text() + ' ' + frame.lblP2Points[2]->text(), QStringLiteral("20 19"));
        QCOMPARE(frame.lblP2TotalPts->text(), QStringLiteral("39"));
    }
};

QTEST_MAIN(TestScoreBoards)
#include "tst_score_boards.moc"
