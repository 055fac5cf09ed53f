#include "ui/dialogs/messages.h"
#include "ui/startup/darts_window.h"
#include "ui/startup/program.h"
#include "core/startup/command_export.h"
#include "core/startup/start_options.h"

#include <QApplication>
#include <QIcon>

#include <cstdio>

namespace {

// Prints what an option that only prints asks for, and gives the exit code.
int printOption(const tavrix::StartOptions &options)
{
    const tavrix::OptionOutput output =
        options.action == tavrix::StartAction::ExportCsv
            ? tavrix::runCommandExport(options, tavrix::startDatabasePath(options.fromMenu, false))
            : tavrix::printedOption(options, QCoreApplication::applicationDirPath());
    std::fputs(output.text.toLocal8Bit().constData(), output.toErrorStream ? stderr : stdout);
    return output.exitCode;
}

} // namespace

int main(int argc, char *argv[])
{
    // Options that only print, the export, and a line the program refuses,
    // are handled without a window, so that they need no display.
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const tavrix::StartOptions early = tavrix::parseStartOptions(tavrix::withoutToolkitOptions(arguments));
    if (early.action != tavrix::StartAction::Run) {
        QCoreApplication app(argc, argv);
        return printOption(early);
    }

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tavrix!"));
    // The menu entry and icon the desktop shows for the window: the installed
    // icon, or the program's own copy when it runs from a build folder.
    QGuiApplication::setDesktopFileName(QStringLiteral("tavrix"));
    QApplication::setWindowIcon(
        QIcon::fromTheme(QStringLiteral("tavrix"), QIcon(QStringLiteral(":/tavrix-256.png"))));
    // Qt has taken its own options off the line by now.
    const tavrix::StartOptions options = tavrix::parseStartOptions(QCoreApplication::arguments().mid(1));
    if (options.action != tavrix::StartAction::Run)
        return printOption(options);

    tavrix::SystemMessages messages;
    tavrix::Program program(messages, tavrix::startDatabasePath(options.fromMenu, true));
    program.localDatabasePath = tavrix::localDatabasePath(options.fromMenu, true);
    if (!program.Main())
        return program.exitCode();
    messages.setAlertBox(program.window()->alertBox());
    return app.exec();
}
