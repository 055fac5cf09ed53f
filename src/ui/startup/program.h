#pragma once

// Start-up and shutdown: the entry routine Main, which brings the program from
// nothing to a main window with a current player, and shutDownProgram, which
// takes it down again exactly once.

#include "core/advice/chart_advisor.h"
#include "core/games/checkout_chart.h"
#include "core/startup/club_settings.h"
#include "core/session/session.h"
#include "core/stats/stats_store.h"

#include <QDir>
#include <QSize>
#include <QString>

#include <functional>
#include <memory>

namespace tavrix {

class Darts;
class Messages;
class SoundPlayer;
class Sounds;

// The smallest screen the program runs on.
inline constexpr int smallestScreenWidth = 800;
inline constexpr int smallestScreenHeight = 600;

// The message shown when the screen is too small, and its title.
inline constexpr const char *smallScreenTitle = "800 x 600 required";
QString smallScreenMessage();
bool screenIsLargeEnough(QSize screen);

// The notice after start-up found the checkout chart in `databasePath`
// damaged; "" when it was whole.
QString chartRepairMessage(const ChartRepairReport &report, const QString &databasePath);

class Program {
public:
    // `databasePath` is where the statistics live; `messages` shows every
    // message box; `soundPlayer` plays the sound effects (the program's own
    // Qt Multimedia player when none is given). The screen size comes from
    // the primary screen unless a test sets `screenSize`.
    Program(Messages &messages, QString databasePath, SoundPlayer *soundPlayer = nullptr);
    ~Program();
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    std::function<QSize()> screenSize;
    // The statistics file on this computer, offered when the club database
    // named at start cannot be reached.
    QString localDatabasePath = QDir::current().filePath(QString::fromLatin1(StatsStore::defaultFileName));

    // Runs every start-up step in order. Returns false when the program ends
    // during start-up; exitCode() then says how (0 when the user chose to
    // end, 1 on a failure).
    bool Main();
    int exitCode() const { return exitCode_; }

    // Closes the database and every window; runs once, however often called.
    void shutDownProgram();

    // After the statistics file was replaced by a restore: the current
    // player is the player of the same name in it, else one is chosen as at
    // start-up; the checkout chart is read from it again. False when no
    // player was chosen or the file cannot be read (said); the program is
    // then shut down, as a start-up would end.
    bool takeRestoredStatistics();
    // Keeps the statistics where the user chose in "Club Database": the
    // club's server (asked first, so that a refusal changes nothing) or the
    // local file; then takes them as after a restore. False (said) when
    // the choice could not be followed.
    bool useClubChoice(const ClubChoice &choice);

    Session &session() { return session_; }
    bool isShutDown() const { return shutDownDone_; }
    StatsStore &store() { return store_; }
    const CheckoutChart &checkoutChart() const { return chart_; }
    // Where the games advise the players and the computer to aim.
    const Advisor &advisor() const { return advisor_; }
    Messages &messages() { return messages_; }
    Sounds &sounds() { return *sounds_; }
    Darts *window() { return window_.get(); }

private:
    // Opens the statistics named at start: a file, or a club database,
    // asking for its password when the server wants one, and offering the
    // local file when the server cannot be had. False (said) when neither
    // is opened.
    bool openStatistics();
    // The number of players decides how the current one is chosen.
    bool choosePlayer();
    // Reads the checkout chart, repairing it where it must be and saying
    // so; false, with the program shut down, when it cannot be read.
    bool loadCheckoutChart();

    Messages &messages_;
    QString databasePath_;
    // The password typed for the club database in use, in memory only.
    QString startPassword_;
    std::unique_ptr<SoundPlayer> ownSoundPlayer_;
    std::unique_ptr<Sounds> sounds_;
    Session session_;
    bool shutDownDone_ = false;
    StatsStore store_;
    CheckoutChart chart_;
    ChartAdvisor advisor_{chart_};
    std::unique_ptr<Darts> window_;
    int exitCode_ = 0;
};

} // namespace tavrix
