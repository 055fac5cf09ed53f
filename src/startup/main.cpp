#include "games/checkout_chart.h"
#include "startup/darts_window.h"
#include "startup/settings.h"
#include "stats/stats_store.h"

#include <QApplication>
#include <QDir>
#include <QMessageBox>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tavrix!"));

    using namespace tavrix;
    if (!settingsStored())
        createDefaultSettings();
    const bool useCms = unitsAreCentimetres(getSetting(QString::fromLatin1(unitsSetting)));

    StatsStore store;
    if (!store.open(StatsStore::defaultDatabasePath())) {
        QMessageBox::critical(nullptr, QStringLiteral("Tavrix!"), store.lastError());
        return 1;
    }
    CheckoutChart chart;
    if (!loadCheckoutChart(store, chart)) {
        QMessageBox::critical(nullptr, QStringLiteral("Tavrix!"), store.lastError());
        return 1;
    }

    Darts window;
    window.showStatus(QStringLiteral("Statistics: %1\nDistances in %2\nBest out from 170: %3")
                          .arg(QDir::toNativeSeparators(store.databasePath()),
                               useCms ? QStringLiteral("centimetres") : QStringLiteral("inches"),
                               chart.routeText(170, true)));
    window.show();
    return app.exec();
}
