#include "dialogs/messages.h"
#include "startup/darts_window.h"
#include "startup/program.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tavrix!"));

    tavrix::SystemMessages messages;
    tavrix::Program program(messages, tavrix::StatsStore::defaultDatabasePath());
    if (!program.Main())
        return program.exitCode();
    messages.setAlertBox(program.window()->alertBox());
    return app.exec();
}
