#pragma once

// The main window: the board on the left, the frame of the current mode on
// the right, and the menus.

#include "ui/board/board_input.h"
#include "core/startup/club_settings.h"
#include "core/opponent/skill_profile.h"
#include "ui/play/record_labels.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class QAbstractButton;
class QAction;
class QGroupBox;
class QLabel;
class QMenu;
class QPushButton;

namespace tavrix {

class AimAdviceService;
class AimMapView;
class BoardPicture;
class GameChoices;
class GameFrame;
class HelpViewer;
class PlayController;
class PracticeController;
class StatsFiles;
class StatsRescue;
class StatisticsDialog;
class PracticeFrame;
class ReviewController;
class TrainingController;
class TrainingModeFrame;
class ReviewFrame;
class SkillOptions;
class MyAlertBox;
class NewUserDialog;
class Program;
struct Session;
class UserEditDialog;
class UserSelectDialog;

enum class Mode { Practice = 1, Review = 2, Play = 3, Training = 4 };

class Darts : public QMainWindow {
    Q_OBJECT

public:
    explicit Darts(Program &program);
    ~Darts() override;
    // Shows the window at a size that suits the screen.
    void showFitted();

    // The board picture as input, with its markers.
    BoardInput *boardInput() const { return boardInput_; }
    PlayController *playController() const { return play_; }
    PracticeController *practiceController() const { return practice_; }
    ReviewController *reviewController() const { return review_; }
    TrainingController *trainingController() const { return training_; }
    // The advice worked out from the player's own darts.
    AimAdviceService *aimAdvice() const { return aims_; }
    void hidePips() { boardInput_->hidePips(); }

    Mode currentMode() const { return currentMode_; }
    // The computer's profile, and the player's own sample count.
    const SkillProfileState &skill() const { return skill_; }

    // Makes a mode the current one.
    void switchMode(Mode mode);
    // Shows the current player's name in the name labels.
    void setPlayerName();
    // Rebuilds the player's own ("You") profile, refreshing its sample
    // count; a database failure is reported and the old figures stay.
    void buildYouProfile();
    // Review: plots the darts aimed at the clicked area (ring and segment
    // code) with their figures, then refreshes the skill factors.
    void doPlot(int ringCode, int segmentCode);
    // Counts the player's darts aimed at each scoring area.
    void countTargetThrows();
    // Chooses the game options of the last run again.
    void restoreGameChoices();

    // Dialogs, created on first use and kept.
    NewUserDialog *newUserDialog();
    UserSelectDialog *userSelectDialog();
    UserEditDialog *userEditDialog();
    MyAlertBox *alertBox();
    // "Statistics", once it has been shown.
    StatisticsDialog *statisticsDialog() const { return statistics_; }

    // Hides every dialog and closes the window: the last step of shutdown.
    void unloadWindows();

    // The folder of the help pages; by default the one that travels with the
    // program (programFilesFolder). Read when the help is first shown.
    void setHelpFolder(const QString &folder) { helpFolder_ = folder; }

    // Called after "Club Database" with the user's choice (never when he
    // cancelled); true when the statistics are now kept where he chose.
    // On false the stored choice goes back to the one in use. Empty: the
    // choice is only stored, for the next start.
    std::function<bool(const ClubChoice &)> onClubChoice;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void formLoad();
    void buildFrames();
    void buildMenus();
    // Alt and a letter opens a menu, leaving the menu titles as they are.
    void addAccessKey(QMenu *menu, Qt::Key key);
    void resetGame();

    // Menu handlers.
    void chooseMode(Mode mode);
    void changePlayer();
    void editPlayers();
    void useUnits(bool centimetres);
    void useSound(bool on);
    void resetStats();
    // "Club Database": stores the user's choice and hands it to onClubChoice.
    void chooseClubDatabase();
    // File menu: the darts as CSV, a backup, and a restore from one.
    void exportDarts();
    void backUpStats();
    void restoreStats();
    // The current player's statistics from the file on this computer into
    // the club database, worked on away from the window.
    void copyLocalStatistics();
    // Shows the entries that belong to where the statistics are kept.
    void showStoreEntries();
    void showHelp();
    // The help window at `page`, or a message naming where the pages were
    // looked for.
    void showHelpPage(const QString &page);
    void showAbout();
    // The statistics of the current player.
    void showStatistics();
    // After the current player may have changed.
    void refreshAfterPlayerChange();
    // True when no game runs, or the user agrees to quit the one that does;
    // the same for a drill, which is recorded as quit when it is left.
    bool mayLeaveGame();

    void checkModeEntry(Mode mode);
    // The "You" profile rebuilt and shown in the review frame.
    void showReviewProfile();

    Program &program_;
    Session &session_;
    Mode currentMode_ = Mode::Play;
    SkillProfileState skill_;

    BoardPicture *picture_ = nullptr;
    QGroupBox *playFrame_ = nullptr;
    PracticeFrame *practiceFrame_ = nullptr;
    BoardInput *boardInput_ = nullptr;
    GameFrame *gameFrame_ = nullptr;
    std::unique_ptr<StatsRescue> rescue_;
    std::unique_ptr<StatsFiles> files_;
    PlayController *play_ = nullptr;
    PracticeController *practice_ = nullptr;
    ReviewController *review_ = nullptr;
    TrainingModeFrame *trainingFrame_ = nullptr;
    TrainingController *training_ = nullptr;
    AimAdviceService *aims_ = nullptr;
    AimMapView *aimMap_ = nullptr;
    ReviewFrame *reviewFrame_ = nullptr;
    QLabel *scoreHoverText_ = nullptr;
    RecordLabels records_;
    QList<QLabel *> nameLabels_;
    QList<QLabel *> greetingLabels_;
    QPushButton *btnStartGame_ = nullptr;
    SkillOptions *skillOptions_ = nullptr;
    GameChoices *gameChoices_ = nullptr;

    QAction *modePractice_ = nullptr;
    QAction *modeReview_ = nullptr;
    QAction *modePlay_ = nullptr;
    QAction *modeTraining_ = nullptr;
    QAction *useInches_ = nullptr;
    QAction *useCms_ = nullptr;
    QAction *soundEntry_ = nullptr;
    // "Copy Local Statistics to Club Database...", there only while the
    // statistics are kept in a club database.
    QAction *copyToClub_ = nullptr;

    NewUserDialog *newUserDialog_ = nullptr;
    UserSelectDialog *userSelectDialog_ = nullptr;
    UserEditDialog *userEditDialog_ = nullptr;
    MyAlertBox *alertBox_ = nullptr;
    HelpViewer *helpViewer_ = nullptr;
    StatisticsDialog *statistics_ = nullptr;
    QString helpFolder_;
};

// The 1-based position of the first checked button of an option group, 0
// when none is checked.
int selectedOption(const QList<QAbstractButton *> &group);

} // namespace tavrix
