#include "startup/darts_window.h"
#include "startup/settings.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tavrix!"));

    using namespace tavrix;
    if (!settingsStored())
        createDefaultSettings();
    const bool useCms = unitsAreCentimetres(getSetting(QString::fromLatin1(unitsSetting)));

    Darts window;
    window.showStatus(useCms ? QStringLiteral("Distances in centimetres")
                             : QStringLiteral("Distances in inches"));
    window.show();
    return app.exec();
}
