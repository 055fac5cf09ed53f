// The File menu's entries for the statistics file: export, backup, restore,
// and the copy of the local statistics into a club database.

#include "ui/startup/darts_window.h"

#include "core/session/session.h"
#include "core/stats/local_copy.h"
#include "core/stats/stats_store.h"
#include "ui/advice/aim_advice_service.h"
#include "ui/dialogs/messages.h"
#include "ui/dialogs/stats_files.h"
#include "ui/startup/program.h"

#include <QAction>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QFutureWatcher>
#include <QProgressDialog>
#include <QtConcurrent>

namespace tavrix {

void Darts::exportDarts()
{
    files_->exportDarts(this);
}

void Darts::backUpStats()
{
    files_->backUp(this);
}

void Darts::restoreStats()
{
    const QString title = QStringLiteral("Restore Statistics");
    Messages &messages = program_.messages();
    StatsStore &store = program_.store();
    if (store.server()) {
        messages.error(this, title,
                       QStringLiteral("The statistics are in the club database (%1), which its server keeps and "
                                      "backs up. Restore Statistics replaces only a statistics file.")
                           .arg(describeServer(*store.server())));
        return;
    }
    // The game's darts would go into the file that is replaced.
    if (!mayLeaveGame())
        return;
    const QString database = QDir::toNativeSeparators(QFileInfo(store.databasePath()).absoluteFilePath());
    const QString path =
        messages.chooseFileToOpen(this, title, QFileInfo(store.databasePath()).absolutePath(),
                                  QStringLiteral("Statistics files (*.db);;All files (*)"));
    if (path.isEmpty())
        return;
    const QString kept = database + QLatin1String(StatsStore::beforeRestoreSuffix);
    if (!messages.askYesNo(this, title,
                           QStringLiteral("Replace the statistics in %1 with those in %2?\r\n\r\n"
                                          "The statistics in use now are kept in %3 (in place of any kept "
                                          "there by an earlier restore).")
                               .arg(database, QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath()), kept)))
        return;
    if (currentMode_ == Mode::Play)
        resetGame();
    if (!store.restoreFrom(path)) {
        messages.error(this, title, store.lastError() + QLatin1Char('.'));
        return;
    }
    aims_->forget();
    if (!program_.takeRestoredStatistics())
        return;
    setPlayerName();
    buildYouProfile();
    switchMode(currentMode_);
    messages.notice(this, title,
                    QStringLiteral("The statistics from %1 are restored. The statistics used before are kept in %2.")
                        .arg(QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath()), kept));
}

void Darts::showStoreEntries()
{
    copyToClub_->setVisible(program_.store().server().has_value());
}

void Darts::copyLocalStatistics()
{
    const QString title = QStringLiteral("Copy Local Statistics");
    Messages &messages = program_.messages();
    StatsStore &store = program_.store();
    if (!store.server())
        return;
    const QString path = program_.localDatabasePath;
    const QString name = session_.currentPlayerName;
    if (!messages.askYesNo(this, title,
                           QStringLiteral("Copy %1's games, practice and drills from the statistics file on this "
                                          "computer (%2) into the club database (%3)?\r\n\r\n"
                                          "What was copied from there before is left out.")
                               .arg(name, QDir::toNativeSeparators(path), describeServer(*store.server()))))
        return;
    // A player's darts take a while to cross: the window waits, and says so.
    QProgressDialog progress(QStringLiteral("Copying %1's statistics into the club database...").arg(name), QString(),
                             0, 0, this);
    progress.setObjectName(QStringLiteral("frmCopyProgress"));
    progress.setWindowTitle(title);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(500);
    QFutureWatcher<LocalCopy> watcher;
    QEventLoop wait;
    connect(&watcher, &QFutureWatcher<LocalCopy>::finished, &wait, &QEventLoop::quit);
    watcher.setFuture(QtConcurrent::run(&tavrix::copyLocalStatistics, *store.server(), store.serverPassword(), path, name,
                                        session_.currentPlayerId));
    if (!watcher.isFinished())
        wait.exec();
    progress.reset();
    const LocalCopy result = watcher.result();
    if (!result.copied) {
        messages.error(this, title, result.error);
        return;
    }
    if (result.copied->any())
        buildYouProfile();
    messages.notice(this, title, localCopyReport(*result.copied, name, path));
}

} // namespace tavrix
