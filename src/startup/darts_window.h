#pragma once

// The main window: the board on the left, the frame of the current mode on
// the right, and the menus.

#include "board/board_input.h"

#include <QMainWindow>

class QAbstractButton;
class QAction;
class QGroupBox;
class QLabel;
class QPushButton;

namespace tavrix {

class BoardPicture;
class GameFlow;
class GameFrame;
class PracticeFrame;
class SkillFactorsFrame;
class SkillOptions;
class MyAlertBox;
class NewUserDialog;
class Program;
struct SharedState;
class UserEditDialog;
class UserSelectDialog;

class Darts : public QMainWindow, public BoardHandoffs {
    Q_OBJECT

public:
    explicit Darts(Program &program);
    ~Darts() override;

    // The board picture as input, with its markers.
    BoardInput *boardInput() const { return boardInput_; }
    GameFlow *gameFlow() const { return gameFlow_; }
    void hidePips() { boardInput_->hidePips(); }
    static double pipX(const DartMarker *marker) { return BoardInput::pipX(marker); }
    static double pipY(const DartMarker *marker) { return BoardInput::pipY(marker); }
    static DartScore pipScore(const DartMarker *marker) { return BoardInput::pipScore(marker); }
    static int centerX() { return boardCenter; }
    static int centerY() { return boardCenter; }

    // What the board hands on when darts are placed or moved: the scores,
    // the advice and the review plots are filled in by the games, practice
    // and review as they arrive.
    void show301Scores(const MarkerArray &markers) override;
    void showNext01Target() override;
    void showCricketScores(const MarkerArray &markers) override;
    void showNextCricketTarget() override;
    void doAverageDist() override;
    void doPlot(int ring, int segment) override;

    // Makes practice (1), review (2) or play (3) the current mode.
    void switchMode(int mode);
    // Shows the current player's name in the name labels.
    void setPlayerName();
    // Rebuilds the player's own ("You") profile, refreshing its sample
    // count; a database failure is reported and the old figures stay.
    void buildYouProfile();
    // Counts the player's darts aimed at each scoring area.
    void countTargetThrows();

    // Dialogs, created on first use and kept.
    NewUserDialog *newUserDialog();
    UserSelectDialog *userSelectDialog();
    UserEditDialog *userEditDialog();
    MyAlertBox *alertBox();

    // Hides every dialog and closes the window: the last step of shutdown.
    void unloadWindows();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void formLoad();
    void buildFrames();
    void buildMenus();
    void resetGame();

    // Menu handlers.
    void chooseMode(int mode);
    void changePlayer();
    void editPlayers();
    void useUnits(bool centimetres);
    void useSound(bool on);
    void resetStats();
    void showHelp();
    void showAbout();
    // After the current player may have changed.
    void refreshAfterPlayerChange();

    void checkModeEntry(int mode);

    Program &program_;
    SharedState &state_;

    BoardPicture *picture_ = nullptr;
    QGroupBox *playFrame_ = nullptr;
    PracticeFrame *practiceFrame_ = nullptr;
    BoardInput *boardInput_ = nullptr;
    GameFrame *gameFrame_ = nullptr;
    GameFlow *gameFlow_ = nullptr;
    QGroupBox *reviewFrame_ = nullptr;
    QLabel *scoreHoverText_ = nullptr;
    QList<QLabel *> statsLabels_;
    QList<QLabel *> nameLabels_;
    QList<QLabel *> greetingLabels_;
    QPushButton *btnStartGame_ = nullptr;
    SkillOptions *skillOptions_ = nullptr;
    SkillFactorsFrame *skillFactors_ = nullptr;

    QAction *modePractice_ = nullptr;
    QAction *modeReview_ = nullptr;
    QAction *modePlay_ = nullptr;
    QAction *useInches_ = nullptr;
    QAction *useCms_ = nullptr;
    QAction *soundEntry_ = nullptr;

    NewUserDialog *newUserDialog_ = nullptr;
    UserSelectDialog *userSelectDialog_ = nullptr;
    UserEditDialog *userEditDialog_ = nullptr;
    MyAlertBox *alertBox_ = nullptr;
};

// The 1-based position of the first checked button of an option group, 0
// when none is checked.
int selectedOption(const QList<QAbstractButton *> &group);

} // namespace tavrix
