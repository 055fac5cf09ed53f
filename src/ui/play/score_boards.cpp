#include "ui/play/score_boards.h"

#include "ui/play/game_frame.h"

#include <QGroupBox>
#include <QLabel>

namespace tavrix {

void X01ScoreBoard::start(const GameOptions &options)
{
    GameFrame &f = frame_;
    const QString startScore = options.type == GameType::X01_301 ? QStringLiteral("301") : QStringLiteral("501");
    f.fraCricketScore->hide();
    f.fraCricketScore->setEnabled(false);
    f.lblGameStartup->hide();
    f.lblGameStartup->setEnabled(false);
    f.fra01Score->show();
    f.fra01Score->setEnabled(true);
    f.p1ScoreText->setText(startScore);
    f.p2scoretext->setText(startScore);
}

void X01ScoreBoard::showSetEnd(const SetOutcome &outcome)
{
    if (outcome.columnLine.isEmpty())
        return;
    QLabel *column = outcome.player == 1 ? frame_.p1ScoreText : frame_.p2scoretext;
    column->setText(column->text() + outcome.columnLine);
}

void X01ScoreBoard::markWinner(int player)
{
    QLabel *column = player == 1 ? frame_.p1ScoreText : frame_.p2scoretext;
    column->setText(column->text() + QStringLiteral("\nWinner!"));
}

void CricketScoreBoard::start(const GameOptions &options)
{
    GameFrame &f = frame_;
    const bool simple = options.simpleCricket;
    f.fraCricketScore->show();
    f.fraCricketScore->setEnabled(true);
    f.lblGameStartup->hide();
    f.lblGameStartup->setEnabled(false);
    f.fra01Score->hide();
    f.fra01Score->setEnabled(false);
    for (int slot = 0; slot < 7; ++slot) {
        for (int player : {1, 2})
            f.showMarks(player, slot, 0);
        for (QLabel *points : {f.lblP1Points[slot], f.lblP2Points[slot]}) {
            points->clear();
            points->setVisible(!simple);
            points->setEnabled(!simple);
        }
    }
    for (QLabel *total : {f.lblP1TotalPts, f.lblP2TotalPts, f.lblTotalPts}) {
        total->setVisible(!simple);
        total->setEnabled(!simple);
    }
    f.lblP1TotalPts->setText(QStringLiteral("0"));
    f.lblP2TotalPts->setText(QStringLiteral("0"));
    f.colourThrower(0);
}

void CricketScoreBoard::showDarts(const SetOutcome &outcome)
{
    GameFrame &f = frame_;
    const int player = outcome.player;
    for (const CricketMark &mark : outcome.marks) {
        f.showMarks(player, mark.slot, outcome.marksAfter[mark.slot]);
        if (mark.slotPoints) {
            (player == 1 ? f.lblP1Points : f.lblP2Points)[mark.slot]->setText(QString::number(*mark.slotPoints));
            (player == 1 ? f.lblP1TotalPts : f.lblP2TotalPts)->setText(QString::number(outcome.pointsAfter));
        }
    }
}

void CricketScoreBoard::showStanding(const GameSession &game)
{
    frame_.showClosedNumbers(game.closedNumbers());
}

} // namespace tavrix
