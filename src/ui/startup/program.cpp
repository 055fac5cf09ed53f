#include "ui/startup/program.h"

#include "ui/dialogs/messages.h"
#include "core/stats/server_connection.h"
#include "ui/players/new_user_dialog.h"
#include "ui/players/user_select_dialog.h"
#include "ui/play/play_controller.h"
#include "ui/startup/darts_window.h"
#include "ui/training/training_controller.h"
#include "core/startup/settings.h"
#include "ui/sound/sounds.h"

#include <QDir>
#include <QGuiApplication>
#include <QScreen>

namespace tavrix {

QString smallScreenMessage()
{
    return QStringList{QStringLiteral("Sorry."), QString(),
                       QStringLiteral("Tavrix! Requires 800x600 screen resolution or higher to "
                                      "work properly."),
                       QString(),
                       QStringLiteral("Please use the Display Settings Control Panel to increase "
                                      "your screen resolution")}
        .join(QStringLiteral("\r\n"));
}

bool screenIsLargeEnough(QSize screen)
{
    return screen.width() >= smallestScreenWidth && screen.height() >= smallestScreenHeight;
}

namespace {

int programsAlive = 0;
int programsMade = 0;

// Each program alive in the process has its own database connection (two
// copies may run side by side in one test).
QString storeConnectionName()
{
    const QString name = QString::fromLatin1(StatsStore::defaultConnectionName);
    ++programsMade;
    return programsAlive == 0 ? name : name + QStringLiteral("-%1").arg(programsMade);
}

QString rowCount(int rows)
{
    return rows == 1 ? QStringLiteral("1 row") : QStringLiteral("%1 rows").arg(rows);
}

} // namespace

QString chartRepairMessage(const ChartRepairReport &report, const QString &databasePath)
{
    if (!report.repaired())
        return {};
    QStringList done;
    if (report.replaced > 0)
        done.append(rowCount(report.replaced)
                    + (report.replaced == 1 ? QStringLiteral(" was") : QStringLiteral(" were"))
                    + QStringLiteral(" replaced by the chart that comes with Tavrix"));
    if (report.surplus > 0)
        done.append(rowCount(report.surplus)
                    + (report.surplus == 1
                           ? QStringLiteral(" that belongs to no score or repeats one was removed")
                           : QStringLiteral(" that belong to no score or repeat one were removed")));
    const QString file = QDir::toNativeSeparators(databasePath);
    if (report.saved)
        return QStringLiteral("The checkout chart in %1 was damaged: %2.")
            .arg(file, done.join(QStringLiteral(", and ")));
    return QStringLiteral("The checkout chart in %1 is damaged, and the repair cannot be saved "
                          "(%2). Until it can, Tavrix uses the chart that comes with it in place "
                          "of the damaged rows.")
        .arg(file, report.error);
}

Program::Program(Messages &messages, QString databasePath, SoundPlayer *soundPlayer)
    : screenSize([] {
        const QScreen *screen = QGuiApplication::primaryScreen();
        return screen ? screen->size() : QSize();
    })
    , messages_(messages)
    , databasePath_(std::move(databasePath))
    , store_(storeConnectionName())
{
    ++programsAlive;
    if (!soundPlayer) {
        ownSoundPlayer_ = std::make_unique<QtSoundPlayer>();
        soundPlayer = ownSoundPlayer_.get();
    }
    sounds_ = std::make_unique<Sounds>(*soundPlayer, Sounds::defaultFolder());
}

Program::~Program()
{
    --programsAlive;
}

bool Program::openStatistics()
{
    const QString title = QString::fromLatin1(applicationTitle);
    const std::variant<StoreAddress, QString> read = readStoreAddress(databasePath_);
    if (const QString *reason = std::get_if<QString>(&read)) {
        messages_.error(nullptr, title,
                        QStringLiteral("Cannot use the club database: %1.").arg(*reason));
        return false;
    }
    const StoreAddress &address = std::get<StoreAddress>(read);
    const ServerAddress *server = std::get_if<ServerAddress>(&address);
    if (!server) {
        if (store_.open(std::get<QString>(address)))
            return true;
        messages_.error(nullptr, title, store_.lastError());
        return false;
    }
    startPassword_.clear();
    while (!store_.open(address, startPassword_)) {
        if (store_.needsPassword()) {
            const std::optional<QString> given = messages_.askPassword(nullptr, *server, store_.lastError() + QLatin1Char('.'));
            if (given) {
                startPassword_ = *given;
                continue;
            }
        }
        // The server cannot be had: the user may go on with the file on
        // this computer, or end here.
        if (!messages_.askYesNo(nullptr, title,
                                store_.lastError()
                                    + QStringLiteral(".\r\n\r\nUse the statistics file on this computer (%1) "
                                                     "instead?")
                                          .arg(QDir::toNativeSeparators(localDatabasePath))))
            return false;
        if (store_.open(localDatabasePath)) {
            databasePath_ = localDatabasePath;
            return true;
        }
        messages_.error(nullptr, title, store_.lastError());
        return false;
    }
    return true;
}

bool Program::Main()
{
    if (!screenIsLargeEnough(screenSize())) {
        messages_.notice(nullptr, QString::fromLatin1(smallScreenTitle), smallScreenMessage());
        exitCode_ = 1;
        return false;
    }
    if (!settingsStored())
        createDefaultSettings();
    // The computer's names, the angle and unit constants and the board
    // tables are compile-time data; only what is read at run time is set here.
    session_ = Session{};
    shutDownDone_ = false;
    if (!store_.isOpen() && !openStatistics()) {
        exitCode_ = 1;
        return false;
    }
    if (const std::optional<QString> problem = store_.writeProblem())
        messages_.error(nullptr, QString::fromLatin1(applicationTitle), *problem);
    session_.useCms = unitsAreCentimetres(getSetting(QString::fromLatin1(unitsSetting)));
    sounds_->setEnabled(soundIsOn(getSetting(QString::fromLatin1(soundSetting))));

    window_ = std::make_unique<Darts>(*this);
    window_->onClubChoice = [this](const ClubChoice &choice) { return useClubChoice(choice); };
    window_->showFitted();

    if (!choosePlayer()) {
        shutDownProgram();
        exitCode_ = 1;
        return false;
    }
    if (!loadCheckoutChart())
        return false;
    shutDownDone_ = false;

    if (session_.currentPlayerId == 0) {
        // No player was created or chosen: the program closes without a word.
        shutDownProgram();
        exitCode_ = 0;
        return false;
    }
    window_->setPlayerName();
    window_->buildYouProfile();
    window_->switchMode(Mode::Play);
    window_->restoreGameChoices();
    return true;
}

bool Program::choosePlayer()
{
    const std::optional<int> count = store_.playerCount();
    if (!count) {
        messages_.error(window_.get(), QString::fromLatin1(applicationTitle), store_.lastError());
        return false;
    }
    if (*count == 0) {
        window_->newUserDialog()->exec();
    } else if (*count > 1) {
        window_->userSelectDialog()->dockShow();
    } else {
        const std::optional<QList<PlayerRow>> players = store_.players();
        if (!players || players->isEmpty()) {
            messages_.error(window_.get(), QString::fromLatin1(applicationTitle),
                            store_.lastError());
            return false;
        }
        session_.currentPlayerId = players->first().id;
        session_.currentPlayerName = players->first().name;
    }
    return true;
}

bool Program::loadCheckoutChart()
{
    const std::optional<ChartRepairReport> chartRepair = loadRepairedCheckoutChart(store_, chart_);
    if (!chartRepair) {
        messages_.error(window_.get(), QString::fromLatin1(applicationTitle), store_.lastError());
        shutDownProgram();
        exitCode_ = 1;
        return false;
    }
    if (chartRepair->repaired())
        messages_.notice(window_.get(), QString::fromLatin1(applicationTitle),
                         chartRepairMessage(*chartRepair, store_.databasePath()));
    return true;
}

bool Program::takeRestoredStatistics()
{
    const std::optional<qint64> sameName = store_.playerIdByName(session_.currentPlayerName);
    if (sameName) {
        session_.currentPlayerId = *sameName;
    } else {
        session_.currentPlayerId = 0;
        session_.currentPlayerName.clear();
        if (!choosePlayer()) {
            shutDownProgram();
            exitCode_ = 1;
            return false;
        }
    }
    if (!loadCheckoutChart())
        return false;
    if (session_.currentPlayerId == 0) {
        shutDownProgram();
        return false;
    }
    return true;
}

bool Program::useClubChoice(const ClubChoice &choice)
{
    const QString title = QStringLiteral("Club Database");
    if (choice.action == ClubChoice::Cancelled)
        return true;
    const bool toServer = choice.action == ClubChoice::UseClub;
    // The server is asked first, so that a refusal leaves the statistics
    // in use as they are.
    if (toServer) {
        if (const std::optional<ServerFailure> failure = testServerConnection(choice.server, choice.password)) {
            messages_.error(window_.get(), title, failure->message + QLatin1Char('.'));
            return false;
        }
    }
    const StoreAddress address = toServer ? StoreAddress(choice.server) : StoreAddress(localDatabasePath);
    if (!store_.open(address, choice.password)) {
        const QString why = store_.lastError();
        // Back to what was in use: the file, or the club database named at
        // start, whose password the server's password file gives.
        const std::variant<StoreAddress, QString> before = readStoreAddress(databasePath_);
        if (const StoreAddress *previous = std::get_if<StoreAddress>(&before))
            store_.open(*previous, startPassword_);
        messages_.error(window_.get(), title, why + QLatin1Char('.'));
        return false;
    }
    databasePath_ = toServer ? serverUri(choice.server) : localDatabasePath;
    startPassword_ = choice.password;
    return takeRestoredStatistics();
}

void Program::shutDownProgram()
{
    if (shutDownDone_)
        return;
    // Set first: closing the main window below must not shut down again.
    shutDownDone_ = true;
    // Darts not saved yet are given up only when the user says so.
    if (window_) {
        window_->playController()->saveBeforeClosing();
        // A drill left running ends as quit.
        window_->trainingController()->enter();
    }
    store_.close();
    if (window_)
        window_->unloadWindows();
}

} // namespace tavrix
