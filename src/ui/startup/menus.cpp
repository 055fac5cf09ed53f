// The main window's menus and the handlers that belong to no other window.

#include "ui/startup/darts_window.h"

#include "ui/advice/aim_advice_service.h"
#include "ui/review/aim_map_view.h"
#include "ui/statistics/statistics_dialog.h"

#include "core/help/help_pages.h"
#include "ui/help/help_viewer.h"
#include "ui/help/about_dialog.h"
#include "ui/dialogs/club_database_dialog.h"
#include "ui/dialogs/messages.h"
#include "ui/players/user_edit_dialog.h"
#include "ui/players/user_select_dialog.h"
#include "ui/play/play_controller.h"
#include "core/session/program_files.h"
#include "core/session/session.h"
#include "ui/startup/program.h"
#include "core/startup/settings.h"
#include "ui/sound/sounds.h"
#include "ui/training/training_controller.h"

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>

namespace tavrix {

namespace {

// The help page of each mode, which F1 opens.
QString modeHelpPage(Mode mode)
{
    switch (mode) {
    case Mode::Practice: return QStringLiteral("practice.html");
    case Mode::Review: return QStringLiteral("review.html");
    case Mode::Training: return QStringLiteral("training.html");
    case Mode::Play: break;
    }
    return QStringLiteral("play.html");
}

QMenu *namedMenu(QMenuBar *bar, const char *name, const QString &caption)
{
    QMenu *menu = bar->addMenu(caption);
    menu->setObjectName(QString::fromLatin1(name));
    return menu;
}

QAction *namedAction(QMenu *menu, const char *name, const QString &caption)
{
    QAction *action = menu->addAction(caption);
    action->setObjectName(QString::fromLatin1(name));
    return action;
}

} // namespace

void Darts::buildMenus()
{
    QMenuBar *bar = menuBar();

    QMenu *file = namedMenu(bar, "mnuFile", QStringLiteral("File"));
    connect(namedAction(file, "mnuExportDarts", QStringLiteral("Export Darts...")), &QAction::triggered, this,
            &Darts::exportDarts);
    connect(namedAction(file, "mnuBackupStats", QStringLiteral("Back Up Statistics...")), &QAction::triggered,
            this, &Darts::backUpStats);
    connect(namedAction(file, "mnuRestoreStats", QStringLiteral("Restore Statistics...")), &QAction::triggered,
            this, &Darts::restoreStats);
    copyToClub_ = namedAction(file, "mnuCopyStatsToClub", QStringLiteral("Copy Local Statistics to Club Database..."));
    connect(copyToClub_, &QAction::triggered, this, &Darts::copyLocalStatistics);
    showStoreEntries();
    file->addSeparator();
    QAction *exit = namedAction(file, "mnuExit", QStringLiteral("Exit"));
    exit->setShortcut(QKeySequence::Quit);
    exit->setShortcutContext(Qt::ApplicationShortcut);
    connect(exit, &QAction::triggered, this, [this] {
        if (mayLeaveGame())
            program_.shutDownProgram();
    });

    QMenu *mode = namedMenu(bar, "mnuMode", QStringLiteral("Mode"));
    modePractice_ = namedAction(mode, "mnuModePractice", QStringLiteral("Practice Mode"));
    modeReview_ = namedAction(mode, "mnuModeReview", QStringLiteral("Review Mode"));
    modePlay_ = namedAction(mode, "mnuModePlay", QStringLiteral("Play Mode"));
    modeTraining_ = namedAction(mode, "mnuModeTraining", QStringLiteral("Training"));
    for (QAction *entry : {modePractice_, modeReview_, modePlay_, modeTraining_})
        entry->setCheckable(true);
    checkModeEntry(Mode::Play);
    connect(modePractice_, &QAction::triggered, this, [this] { chooseMode(Mode::Practice); });
    connect(modeReview_, &QAction::triggered, this, [this] { chooseMode(Mode::Review); });
    connect(modePlay_, &QAction::triggered, this, [this] { chooseMode(Mode::Play); });
    connect(modeTraining_, &QAction::triggered, this, [this] { chooseMode(Mode::Training); });

    QMenu *options = namedMenu(bar, "mnuOptions", QStringLiteral("Options"));
    connect(namedAction(options, "mnuOptionsChangePlayer", QStringLiteral("Change Player...")),
            &QAction::triggered, this, &Darts::changePlayer);
    connect(namedAction(options, "mnuOptionsEditPlayers", QStringLiteral("Add/Edit Players...")),
            &QAction::triggered, this, &Darts::editPlayers);
    useInches_ = namedAction(options, "mnuOptionsUseInches", QStringLiteral("Use Inches"));
    useCms_ = namedAction(options, "mnuOptionsUseCms", QStringLiteral("Use Centimeters"));
    for (QAction *entry : {useInches_, useCms_})
        entry->setCheckable(true);
    useInches_->setChecked(true);
    connect(useInches_, &QAction::triggered, this, [this] { useUnits(false); });
    connect(useCms_, &QAction::triggered, this, [this] { useUnits(true); });
    soundEntry_ = namedAction(options, "mnuOptionsSound", QStringLiteral("Sound"));
    soundEntry_->setCheckable(true);
    soundEntry_->setChecked(program_.sounds().isEnabled());
    connect(soundEntry_, &QAction::triggered, this, &Darts::useSound);
    connect(namedAction(options, "mnuOptionResetStats", QStringLiteral("Reset Stats")),
            &QAction::triggered, this, &Darts::resetStats);
    QAction *closeNet = namedAction(options, "mnuCloseNet", QStringLiteral("Close Net Connection"));
    QAction *showChat = namedAction(options, "mnuShowChat", QStringLiteral("Show Chat Window"));
    play_->setNetIndicators(closeNet, showChat);
    connect(namedAction(options, "mnuOptionsClubDatabase", QStringLiteral("Club Database...")),
            &QAction::triggered, this, &Darts::chooseClubDatabase);

    QMenu *help = namedMenu(bar, "mnuHelp", QStringLiteral("Help"));
    QAction *helpEntry = namedAction(help, "mnuHelpHelp", QStringLiteral("Tavrix! Help"));
    // The entry opens the contents; F1 in the window opens the page of the
    // current mode. The entry shows F1 but takes it only while its menu is
    // open, so that the two never compete for the key.
    helpEntry->setShortcut(QKeySequence::HelpContents);
    helpEntry->setShortcutContext(Qt::WidgetShortcut);
    connect(helpEntry, &QAction::triggered, this, &Darts::showHelp);
    auto *modeHelp = new QShortcut(QKeySequence::HelpContents, this);
    modeHelp->setObjectName(QStringLiteral("modeHelpShortcut"));
    modeHelp->setContext(Qt::WindowShortcut);
    connect(modeHelp, &QShortcut::activated, this, [this] { showHelpPage(modeHelpPage(currentMode_)); });
    connect(namedAction(help, "mnuHelpAbout", QStringLiteral("About Tavrix!")),
            &QAction::triggered, this, &Darts::showAbout);

    QMenu *statistics = namedMenu(bar, "mnuStatistics", QStringLiteral("Statistics"));
    QAction *showStatistics = namedAction(statistics, "mnuStatisticsShow", QStringLiteral("Show Statistics..."));
    showStatistics->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_T));
    connect(showStatistics, &QAction::triggered, this, &Darts::showStatistics);

    addAccessKey(file, Qt::Key_F);
    addAccessKey(mode, Qt::Key_M);
    addAccessKey(options, Qt::Key_O);
    addAccessKey(help, Qt::Key_H);
}

void Darts::addAccessKey(QMenu *menu, Qt::Key key)
{
    auto *shortcut = new QShortcut(QKeySequence(Qt::ALT | key), this);
    shortcut->setContext(Qt::WindowShortcut);
    connect(shortcut, &QShortcut::activated, this,
            [this, menu] { menuBar()->setActiveAction(menu->menuAction()); });
}

// The current mode's entry is checked and disabled, the others unchecked
// and enabled.
void Darts::checkModeEntry(Mode mode)
{
    const std::pair<QAction *, Mode> entries[] = {{modePractice_, Mode::Practice},
                                                  {modeReview_, Mode::Review},
                                                  {modePlay_, Mode::Play},
                                                  {modeTraining_, Mode::Training}};
    for (const auto &[entry, entryMode] : entries) {
        entry->setChecked(entryMode == mode);
        entry->setEnabled(entryMode != mode);
    }
}

void Darts::chooseMode(Mode mode)
{
    if (mode == currentMode_) {
        checkModeEntry(mode);
        return;
    }
    // A drill running is left only when the user agrees; asked once.
    const bool leavingTraining = currentMode_ == Mode::Training;
    if (leavingTraining && !mayLeaveGame()) {
        checkModeEntry(currentMode_);
        return;
    }
    if (mode == Mode::Play) {
        checkModeEntry(Mode::Play);
        btnStartGame_->setText(QStringLiteral("Start Game"));
        switchMode(Mode::Play);
        return;
    }
    if (!leavingTraining && !mayLeaveGame()) {
        // Triggering a checkable entry toggled it; put the menu back.
        checkModeEntry(currentMode_);
        return;
    }
    if (currentMode_ == Mode::Play)
        resetGame();
    checkModeEntry(mode);
    switchMode(mode);
}

bool Darts::mayLeaveGame()
{
    if (currentMode_ == Mode::Training && training_->drillRunning())
        return program_.messages().askYesNo(this, QStringLiteral("Quit Drill?"),
                                            QStringLiteral("Quit the drill in progress? It is recorded as quit."));
    if (currentMode_ != Mode::Play || !play_->gameInProgress())
        return true;
    const auto [title, text] = play_->quitQuestion();
    return program_.messages().askYesNo(this, title, text);
}

void Darts::refreshAfterPlayerChange()
{
    setPlayerName();
    if (currentMode_ == Mode::Review) {
        countTargetThrows();
        aimMap_->refresh();
    }
    if (currentMode_ == Mode::Play)
        resetGame();
    // A drill belongs to the player who started it.
    if (currentMode_ == Mode::Training) {
        training_->enter();
        training_->begin();
    }
    if (statistics_ && statistics_->isVisible())
        statistics_->showFor(session_.currentPlayerId, session_.currentPlayerName);
}

// A player dialog may change the player of a running game: ask first.
void Darts::changePlayer()
{
    if (!mayLeaveGame())
        return;
    const qint64 before = session_.currentPlayerId;
    userSelectDialog()->dockShow();
    if (session_.currentPlayerId != before)
        refreshAfterPlayerChange();
}

void Darts::editPlayers()
{
    if (!mayLeaveGame())
        return;
    const qint64 idBefore = session_.currentPlayerId;
    const QString nameBefore = session_.currentPlayerName;
    userEditDialog()->dockShow();
    if (session_.currentPlayerId != idBefore || session_.currentPlayerName != nameBefore)
        refreshAfterPlayerChange();
}

void Darts::useUnits(bool centimetres)
{
    useCms_->setChecked(centimetres);
    useInches_->setChecked(!centimetres);
    session_.useCms = centimetres;
    saveSetting(QString::fromLatin1(unitsSetting),
                centimetres ? QStringLiteral("cm") : QStringLiteral("in"));
}

void Darts::useSound(bool on)
{
    soundEntry_->setChecked(on);
    program_.sounds().setEnabled(on);
    saveSetting(QString::fromLatin1(soundSetting), on ? QStringLiteral("on") : QStringLiteral("off"));
}

void Darts::resetStats()
{
    const QString title = QStringLiteral("Delete All Statistics?");
    const QString question =
        QStringLiteral("This action will permanently delete all the statistics collected\r\nfor ")
        + session_.currentPlayerName
        + QStringLiteral(" and cannot be undone.  Are you sure you want to do this?");
    Messages &messages = program_.messages();
    if (!messages.askYesNo(this, title, question))
        return;
    if (!program_.store().resetPlayerStats(session_.currentPlayerId)) {
        messages.error(this, title, program_.store().lastError());
        return;
    }
    messages.notice(this, title,
                    QStringLiteral("All statistics deleted for ") + session_.currentPlayerName);
}

void Darts::chooseClubDatabase()
{
    const bool storedInUse = readClubSettings().inUse;
    const ClubChoice choice = ClubDatabaseDialog::ask(program_.store().server(), this);
    if (choice.action == ClubChoice::Cancelled)
        return;
    // A game's darts would go partly to one database, partly to the other.
    if (!mayLeaveGame()) {
        saveClubInUse(storedInUse);
        return;
    }
    if (currentMode_ == Mode::Play)
        resetGame();
    if (!onClubChoice)
        return;
    if (!onClubChoice(choice)) {
        saveClubInUse(storedInUse);
        return;
    }
    if (program_.isShutDown())
        return;
    // The statistics now in use are read afresh, as after a restore.
    showStoreEntries();
    aims_->forget();
    setPlayerName();
    buildYouProfile();
    switchMode(currentMode_);
    const std::optional<ServerAddress> &server = program_.store().server();
    program_.messages().notice(this, QStringLiteral("Club Database"),
                               server ? QStringLiteral("The statistics are now kept in the club database (%1).")
                                            .arg(describeServer(*server))
                                      : QStringLiteral("The statistics are now kept in %1 on this computer.")
                                            .arg(QDir::toNativeSeparators(program_.store().databasePath())));
}

void Darts::showHelp()
{
    showHelpPage(QString::fromLatin1(helpContentsPage));
}

void Darts::showHelpPage(const QString &page)
{
    if (!helpViewer_) {
        const QString folder = helpFolder_.isEmpty() ? programFilesFolder(ProgramFiles::Help) : helpFolder_;
        QList<HelpPage> pages = loadHelpPages(folder);
        if (pages.isEmpty()) {
            const QStringList places =
                folder.isEmpty() ? programFilesPlaces(ProgramFiles::Help, QCoreApplication::applicationDirPath())
                                 : QStringList{folder};
            program_.messages().error(this, QStringLiteral("Tavrix! Help"), helpMissingMessage(places));
            return;
        }
        helpViewer_ = new HelpViewer(folder, std::move(pages), this);
    }
    helpViewer_->showPage(page);
}

void Darts::showStatistics()
{
    // Kept once made: it remembers its period and size while the program runs.
    if (!statistics_)
        statistics_ = new StatisticsDialog(program_.store(), this);
    statistics_->showFor(session_.currentPlayerId, session_.currentPlayerName);
}

void Darts::showAbout()
{
    const QString database = program_.store().databasePath();
    const QString settings = settingsFilePath();
    // Made afresh for each showing; the window may be taken down meanwhile.
    QPointer<AboutDialog> box = new AboutDialog(
        program_.messages(), [database, settings] { return gatherSystemFacts(database, settings); },
        this);
    box->exec();
    delete box;
}

} // namespace tavrix
