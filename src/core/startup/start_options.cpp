#include "core/startup/start_options.h"

#include "core/session/program_files.h"
#include "core/session/version.h"
#include "core/startup/club_settings.h"
#include "core/stats/stats_store.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <optional>

namespace tavrix {

namespace {

QString usageText()
{
    return QStringLiteral("Usage: tavrix [option]\n"
                          "Without an option Tavrix keeps its statistics in tavrix.db in the working folder,\n"
                          "or in the file named by the environment variable TAVRIX_DB.\n"
                          "\n"
                          "  %1  keep the statistics in tavrix/tavrix.db in the user's data folder\n"
                          "               (~/.local/share) unless TAVRIX_DB is set; the desktop menu\n"
                          "               starts Tavrix this way\n"
                          "  --paths      print where Tavrix finds its sounds, help pages and database\n"
                          "  --export-csv FILE [--player NAME]\n"
                          "               write every recorded dart (of the player NAME only, when\n"
                          "               given) into the CSV file FILE, without a window\n"
                          "  --version    print the version\n"
                          "  --help       print this text\n")
        .arg(QLatin1String(fromMenuOption));
}

// One line of the paths report: the folder, or where it was looked for.
QString foundLine(const QString &title, ProgramFiles kind, const QString &programFolder)
{
    const QString folder = programFilesFolder(kind, programFolder);
    if (!folder.isEmpty())
        return title + QDir::toNativeSeparators(folder);
    QStringList places;
    for (const QString &place : programFilesPlaces(kind, programFolder))
        places.append(QDir::toNativeSeparators(place));
    return title + QStringLiteral("not found (looked in %1)").arg(places.join(QStringLiteral(" and ")));
}

} // namespace

QStringList withoutToolkitOptions(const QStringList &arguments)
{
    // Qt's documented options for every application: these take a value,
    // either as the next argument or after "=".
    static const QStringList withValue{"style",        "stylesheet",      "platform",     "platformpluginpath",
                                       "platformtheme", "plugin",         "qwindowgeometry", "qwindowicon",
                                       "qwindowtitle",  "session",        "display",      "geometry",
                                       "qmljsdebugger", "dialogs",        "fontengine"};
    static const QStringList flags{"widgetcount", "reverse", "nograb", "dograb", "sync"};
    QStringList left;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments[i];
        // Qt reads "--style" as "-style"; our own options all have two dashes.
        QString name = argument.startsWith(QLatin1String("--")) ? argument.mid(2)
                       : argument.startsWith(QLatin1Char('-'))  ? argument.mid(1)
                                                                : QString();
        const qsizetype equals = name.indexOf(QLatin1Char('='));
        const bool valueAttached = equals > 0;
        if (valueAttached)
            name.truncate(equals);
        if (withValue.contains(name)) {
            if (!valueAttached)
                ++i; // the value
            continue;
        }
        if (flags.contains(name) && !valueAttached)
            continue;
        left.append(argument);
    }
    return left;
}

namespace {

// The value of an option given as "--name value" or "--name=value", moving
// `i` past it; nothing when it is not this option. A missing value is "".
std::optional<QString> optionValue(const QStringList &arguments, qsizetype &i, QLatin1String name)
{
    const QString &argument = arguments[i];
    if (argument == name) {
        if (i + 1 >= arguments.size())
            return QString();
        return arguments[++i];
    }
    if (argument.startsWith(name + QLatin1Char('=')))
        return argument.mid(name.size() + 1);
    return std::nullopt;
}

} // namespace

StartOptions parseStartOptions(const QStringList &arguments)
{
    StartOptions options;
    bool playerGiven = false;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments[i];
        StartAction asked = StartAction::Run;
        if (const auto file = optionValue(arguments, i, QLatin1String("--export-csv"))) {
            if (file->isEmpty()) {
                options.action = StartAction::Refuse;
                options.problem = QStringLiteral("--export-csv needs the name of the file to write");
                return options;
            }
            options.exportPath = *file;
            asked = StartAction::ExportCsv;
        } else if (const auto player = optionValue(arguments, i, QLatin1String("--player"))) {
            if (player->isEmpty()) {
                options.action = StartAction::Refuse;
                options.problem = QStringLiteral("--player needs a player's name");
                return options;
            }
            options.exportPlayer = *player;
            playerGiven = true;
        } else if (argument == QLatin1String(fromMenuOption))
            options.fromMenu = true;
        else if (argument == QLatin1String("--version"))
            asked = StartAction::ShowVersion;
        else if (argument == QLatin1String("--paths"))
            asked = StartAction::ShowPaths;
        else if (argument == QLatin1String("--help") || argument == QLatin1String("-h"))
            asked = StartAction::ShowUsage;
        else {
            options.action = StartAction::Refuse;
            options.problem = argument.startsWith(QLatin1Char('-'))
                                  ? QStringLiteral("unknown option %1").arg(argument)
                                  : QStringLiteral("unexpected argument %1").arg(argument);
            return options;
        }
        // The first printing action asked for is the one done.
        if (options.action == StartAction::Run)
            options.action = asked;
    }
    if (playerGiven && options.exportPath.isEmpty()) {
        options.action = StartAction::Refuse;
        options.problem = QStringLiteral("--player goes with --export-csv");
    }
    return options;
}

namespace {

// A file path as the system writes it; a server's URI without its password.
QString shownDatabase(const QString &database)
{
    const std::variant<StoreAddress, QString> read = readStoreAddress(database);
    const StoreAddress *address = std::get_if<StoreAddress>(&read);
    const ServerAddress *server = address ? std::get_if<ServerAddress>(address) : nullptr;
    if (server)
        return serverUri(*server);
    return address ? QDir::toNativeSeparators(database) : QStringLiteral("(cannot be read) ") + std::get<QString>(read);
}

} // namespace

QString versionText()
{
    return QStringLiteral("Tavrix %1").arg(versionNumber());
}

QString chooseDatabasePath(bool fromMenu, const QString &fromEnvironment, const QString &userDataFolder,
                           const QString &workingFolder)
{
    if (!fromEnvironment.isEmpty())
        return fromEnvironment;
    const QString fileName = QString::fromLatin1(StatsStore::defaultFileName);
    if (fromMenu)
        return QDir(userDataFolder).filePath(QStringLiteral("tavrix/") + fileName);
    return QDir(workingFolder).filePath(fileName);
}

QString localDatabasePath(bool fromMenu, bool makeFolder)
{
    const QString path =
        chooseDatabasePath(fromMenu, QString(), QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation),
                           QDir::currentPath());
    // Only the program's own folder is made; a file the user named must lie
    // in a folder that is there.
    if (fromMenu && makeFolder)
        QDir().mkpath(QFileInfo(path).absolutePath());
    return path;
}

QString startDatabasePath(bool fromMenu, bool makeFolder)
{
    const QString fromEnvironment = qEnvironmentVariable(StatsStore::pathVariable);
    if (!fromEnvironment.isEmpty())
        return fromEnvironment;
    if (const std::optional<ServerAddress> club = clubServerInUse())
        return serverUri(*club);
    return localDatabasePath(fromMenu, makeFolder);
}

OptionOutput printedOption(const StartOptions &options, const QString &programFolder)
{
    switch (options.action) {
    case StartAction::ShowVersion:
        return {versionText() + QLatin1Char('\n'), false, 0};
    case StartAction::ShowUsage:
        return {usageText(), false, 0};
    case StartAction::ShowPaths: {
        const bool complete = !programFilesFolder(ProgramFiles::Sounds, programFolder).isEmpty()
                              && !programFilesFolder(ProgramFiles::Help, programFolder).isEmpty();
        const QStringList lines{
            foundLine(QStringLiteral("Sounds:   "), ProgramFiles::Sounds, programFolder),
            foundLine(QStringLiteral("Help:     "), ProgramFiles::Help, programFolder),
            QStringLiteral("Database: ") + shownDatabase(startDatabasePath(options.fromMenu, false))};
        return {lines.join(QLatin1Char('\n')) + QLatin1Char('\n'), false, complete ? 0 : 1};
    }
    case StartAction::Refuse:
        return {QStringLiteral("tavrix: %1\nTry 'tavrix --help' for the options.\n").arg(options.problem), true, 2};
    case StartAction::Run:
    case StartAction::ExportCsv:
        break;
    }
    return {};
}

} // namespace tavrix
