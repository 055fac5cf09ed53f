#pragma once

// What the command line asks of the program, and where the statistics
// database lies for the way the program was started.

#include <QString>
#include <QStringList>

namespace tavrix {

enum class StartAction {
    Run,         // start the program
    ShowVersion, // print the version and exit
    ShowPaths,   // print where the sounds, help pages and database are, and exit
    ShowUsage,   // print the options and exit
    Refuse,      // an argument the program does not know: say so and exit
    ExportCsv,   // write the recorded darts into a CSV file and exit
};

struct StartOptions {
    StartAction action = StartAction::Run;
    // Started from the desktop menu: the database lives in the user's data
    // folder rather than in whatever folder the launcher chose.
    bool fromMenu = false;
    // What was wrong, for Refuse.
    QString problem;
    // For ExportCsv: the file to write, and the player whose darts go into
    // it (everybody's when empty).
    QString exportPath;
    QString exportPlayer;
};

// The option the desktop entry starts the program with.
inline constexpr char fromMenuOption[] = "--from-menu";

// The arguments without the program's own name. An argument the program does
// not know refuses the whole line, whatever else it asks for.
StartOptions parseStartOptions(const QStringList &arguments);

// The arguments less the toolkit's own options (-platform offscreen,
// -style=fusion, -reverse...), as the window toolkit will take them off the
// line: so the line can be read before the toolkit starts, which needs a
// display.
QStringList withoutToolkitOptions(const QStringList &arguments);

// "Tavrix " and the version of the build.
QString versionText();

// Where the database lies: TAVRIX_DB (`fromEnvironment`) when set wins;
// started from the menu, tavrix/tavrix.db in the user's data folder; else
// tavrix.db in the working folder.
QString chooseDatabasePath(bool fromMenu, const QString &fromEnvironment, const QString &userDataFolder,
                           const QString &workingFolder);

// The same for this process. With `makeFolder`, the folder of a database
// in the user's data folder is created; one that cannot be created is left
// for the statistics store to name when it opens the file.
QString startDatabasePath(bool fromMenu, bool makeFolder);
// The statistics file on this computer, as startDatabasePath gives it when
// TAVRIX_DB is not set.
QString localDatabasePath(bool fromMenu, bool makeFolder);

// What a printing action writes, and how the program then exits.
struct OptionOutput {
    QString text;
    bool toErrorStream = false;
    int exitCode = 0;
};

// The output of a printing action (anything but Run) for a program that lies
// in `programFolder`. The paths report exits 0 only when the sounds and the
// help pages were both found.
OptionOutput printedOption(const StartOptions &options, const QString &programFolder);

} // namespace tavrix
