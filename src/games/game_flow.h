#pragma once

// One game at one board, from "Start Game" to "Play Again": the options, the
// cork, the turns, the scoring of each confirmed set with its record, and the
// end of the game. The rules themselves are the pure functions of the games
// folder; this class reads the controls, applies them and writes back.

#include "board/board_input.h"
#include "games/cricket_rules.h"
#include "games/x01_rules.h"
#include "stats/stats_store.h"

#include <QObject>
#include <QStringList>

namespace tavrix {

class CheckoutChart;
class ComputerTurns;
class GameFrame;
class Messages;
class OpponentNameDialog;
class Sounds;
class StatsStore;
struct SharedState;

class GameFlow : public QObject {
    Q_OBJECT

public:
    struct Context {
        SharedState &state;
        StatsStore &store;
        Sounds &sounds;
        Messages &messages;
        const CheckoutChart &chart;
        BoardInput &board;
        GameFrame &frame;
        QLabel *scoreHoverText;
        // rstatTitleLabel, rstatsText, ostatTitleLabel, ostatsText.
        QList<QLabel *> statsLabels;
        QWidget *window;
    };
    explicit GameFlow(const Context &context, QObject *parent = nullptr);

    void resetGame();
    void setGameOptFrames(int index);

    // What the board hands on while darts are marked.
    void show301Scores(const MarkerArray &markers);
    void showNext01Target();
    void showCricketScores(const MarkerArray &markers);
    void showNextCricketTarget();

    int turnNumber() const { return turnNumber_; }
    qint64 currentGameId() const { return currentGameId_; }
    const std::array<QList<int>, 2> &scoreHistory() const { return scoreHistory_; }
    ComputerTurns *computerTurns() const { return computerTurns_; }
    const GameRecordFigures &record() const { return record_; }

private:
    void btnStartGameClicked();
    void btnQuitGameClicked();
    void opOpponentClicked(int index);
    void opSkillClicked(int index);

    void startGame(bool playAgain);
    void continueStartGame();
    void start01(int startScore);
    void startCricket();
    void closestToBull();
    void confirmDart();
    void setFirstPlayer();
    void throwForBull();
    void recordCorkDart(const DartMarker *cork, double distance);
    void okClicked();
    void nextTurn();
    void GameTurn();
    void goHuman01(const QString &name);
    void goHuman(const QString &name);
    // Scores the set on the board; true when it won the game.
    bool scoreSet();
    void recordDart(int index, DartScore score, BoardPoint at);
    void showCricketMark(int player, const CricketMark &mark);
    void endGame(int winner);
    void GameOver();
    void setGameStats();
    void hideGameStats();

    QString playerCaption(int player) const;
    QString messageName(int player, bool replaceWithYou) const;
    QString randomChoice(const QStringList &list);
    SetDarts visibleDarts(const MarkerArray &markers) const;
    QList<DartScore> placedScores(const MarkerArray &markers, int count) const;
    void placeTarget(BoardPoint aim);
    bool playingComputer() const { return opponentKind_ == 1; }
    bool doubleOut() const;
    void databaseFailed();

    Context c_;
    OpponentNameDialog *opponentDialog_ = nullptr;
    ComputerTurns *computerTurns_ = nullptr;

    int gameType_ = 0;
    int skillLevel_ = 0;
    int opponentKind_ = 0;
    std::array<int, 3> previousOptions_{};
    int turnNumber_ = 0;
    int setSeq_ = 0;
    int localThrows_ = 0;
    qint64 currentGameId_ = 0;
    int gameBestSet_ = 0;
    GameRecordFigures record_;
    int turnPoints_ = 0;
    int turnMarks_ = 0;
    int startScore_ = 0;
    std::array<bool, 2> doubledIn_{};
    std::array<QList<int>, 2> scoreHistory_;
    bool simpleCricket_ = false;
};

} // namespace tavrix
