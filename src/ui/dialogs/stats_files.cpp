#include "ui/dialogs/stats_files.h"

#include "core/export/darts_csv.h"
#include "core/session/session.h"
#include "core/stats/stats_store.h"
#include "ui/dialogs/messages.h"

#include <QCoreApplication>
#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QProgressDialog>
#include <QRegularExpression>

namespace tavrix {

namespace {

QString nativeFile(const QString &path)
{
    return QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
}

// A player's name as part of a file name: letters, digits, "-" and "_".
QString fileNamePart(const QString &name)
{
    QString part = name;
    part.replace(QRegularExpression(QStringLiteral("[^\\w-]+")), QStringLiteral("_"));
    return part;
}

} // namespace

StatsFiles::StatsFiles(StatsStore &store, Messages &messages, const Session &session)
    : store_(store)
    , messages_(messages)
    , session_(session)
{
}

void StatsFiles::exportDarts(QWidget *parent)
{
    const QString title = QStringLiteral("Export Darts");
    enum Choice { CurrentPlayer, AllPlayers, Cancel };
    const int choice = messages_.choose(
        parent, title,
        QStringLiteral("Export the darts of %1 only, or the darts of every player?").arg(session_.currentPlayerName),
        {QStringLiteral("Only %1").arg(session_.currentPlayerName), QStringLiteral("Every Player"),
         QStringLiteral("Cancel")},
        CurrentPlayer);
    if (choice != CurrentPlayer && choice != AllPlayers)
        return;
    const std::optional<qint64> player =
        choice == CurrentPlayer ? std::optional<qint64>(session_.currentPlayerId) : std::nullopt;
    const QString suggested = QDir::home().filePath(
        choice == CurrentPlayer ? QStringLiteral("tavrix-darts-%1.csv").arg(fileNamePart(session_.currentPlayerName))
                                : QStringLiteral("tavrix-darts.csv"));
    const QString path =
        messages_.chooseFileToSave(parent, title, suggested, QStringLiteral("CSV files (*.csv);;All files (*)"));
    if (path.isEmpty())
        return;

    QProgressDialog progress(QStringLiteral("Writing the darts into %1...").arg(nativeFile(path)),
                             QStringLiteral("Cancel"), 0, 1000, parent);
    progress.setObjectName(QStringLiteral("dlgExportProgress"));
    progress.setWindowTitle(title);
    progress.setWindowModality(Qt::WindowModal);
    progress.setAutoReset(false);
    progress.setAutoClose(false);
    // A quick export shows no dialog at all.
    progress.setMinimumDuration(500);
    const ExportOutcome outcome = exportDartsCsv(store_, player, path, [&](qint64 done, qint64 total) {
        progress.setValue(total > 0 ? int(done * 1000 / total) : 0);
        // The dialog answers its Cancel button between rows even before it shows.
        QCoreApplication::processEvents();
        return !progress.wasCanceled();
    });
    progress.close();
    switch (outcome.end) {
    case ExportEnd::Written:
        messages_.notice(parent, title,
                         QStringLiteral("%1 %2 written to %3.")
                             .arg(outcome.rows)
                             .arg(outcome.rows == 1 ? QStringLiteral("dart") : QStringLiteral("darts"),
                                  nativeFile(path)));
        break;
    case ExportEnd::Cancelled:
        messages_.notice(parent, title,
                         QStringLiteral("The export was cancelled; %1 was not written.").arg(nativeFile(path)));
        break;
    case ExportEnd::Failed:
        messages_.error(parent, title, outcome.error + QLatin1Char('.'));
        break;
    }
}

void StatsFiles::backUp(QWidget *parent)
{
    const QString title = QStringLiteral("Back Up Statistics");
    const QString suggested = QFileInfo(store_.databasePath())
                                  .absoluteDir()
                                  .filePath(QStringLiteral("tavrix-backup-%1.db")
                                                .arg(QDate::currentDate().toString(Qt::ISODate)));
    const QString path = messages_.chooseFileToSave(parent, title, suggested,
                                                    QStringLiteral("Statistics files (*.db);;All files (*)"));
    if (path.isEmpty())
        return;
    if (!store_.backUpTo(path)) {
        messages_.error(parent, title, store_.lastError() + QLatin1Char('.'));
        return;
    }
    messages_.notice(parent, title, QStringLiteral("Your statistics are backed up in %1.").arg(nativeFile(path)));
}

} // namespace tavrix
