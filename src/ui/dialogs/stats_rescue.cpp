#include "ui/dialogs/stats_rescue.h"

#include "core/session/session.h"
#include "core/stats/game_journal.h"
#include "core/stats/stats_store.h"
#include "ui/dialogs/messages.h"

#include <QDir>
#include <QFileInfo>

namespace tavrix {

StatsRescue::StatsRescue(StatsStore &store, Messages &messages, Session &session)
    : store_(store)
    , messages_(messages)
    , session_(session)
{
}

bool StatsRescue::fileLost() const
{
    return store_.fileProblem().has_value();
}

void StatsRescue::tellFileLost(QWidget *parent, const QString &error)
{
    if (told_)
        return;
    told_ = true;
    // Enter and Escape leave it for later: no file dialog the player did
    // not ask for.
    const int choice = messages_.choose(
        parent, QString::fromLatin1(applicationTitle),
        QStringLiteral("Tavrix cannot save your darts: ") + error
            + QStringLiteral(".\r\n\r\nThe darts not saved are kept. Save the statistics into another file now? "
                             "If you choose Later, Tavrix asks again when you quit."),
        {QStringLiteral("Save to Another File..."), QStringLiteral("Later")}, 1);
    if (choice == 0)
        saveIntoAnotherFile(parent);
}

void StatsRescue::reportFailure(QWidget *parent, const QString &error)
{
    if (!told_ && fileLost()) {
        tellFileLost(parent, error);
        return;
    }
    // A club database that cannot be reached fails every read the same way
    // until it is back: that is said once, not at every turn.
    if (store_.server()) {
        if (error == lastServerError_)
            return;
        lastServerError_ = error;
    }
    messages_.error(parent, QString::fromLatin1(applicationTitle), error);
}

bool StatsRescue::saveIntoAnotherFile(QWidget *parent)
{
    const QString title = QString::fromLatin1(applicationTitle);
    const QString oldPath = store_.databasePath();
    const QString path = messages_.chooseFileToSave(
        parent, QStringLiteral("Save Statistics As"),
        QFileInfo(oldPath).absoluteDir().filePath(QStringLiteral("tavrix-saved.db")),
        QStringLiteral("Statistics files (*.db);;All files (*)"));
    if (path.isEmpty())
        return false;
    const std::optional<StatsStore::Moved> moved = store_.moveTo(path);
    if (!moved) {
        messages_.error(parent, title, store_.lastError() + QLatin1Char('.'));
        return false;
    }
    const QString file = QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
    // A new file must hold the current player, whose games and practice
    // go on there, and the practice set open.
    if ((session_.currentPlayerId != 0 && !store_.restorePlayer(session_.currentPlayerId, session_.currentPlayerName))
        || (restorePractice_ && !restorePractice_()) || (journal_ && !journal_->flushIntoNewFile())) {
        messages_.error(parent, title,
                        QStringLiteral("The statistics are now in %1, but the darts not saved yet could not be "
                                       "written there: ")
                                .arg(file)
                            + store_.lastError() + QLatin1Char('.'));
        return false;
    }
    told_ = false;
    QString text = *moved == StatsStore::Moved::Copied
                       ? QStringLiteral("Your statistics and the darts not saved before are now saved in %1.").arg(file)
                       : QStringLiteral("The old statistics could no longer be read, so %1 is a new statistics "
                                        "file: it holds your player and the darts not saved before.")
                             .arg(file);
    if (QFileInfo(path).absoluteFilePath() != QFileInfo(oldPath).absoluteFilePath())
        text += QStringLiteral(" When Tavrix starts again it opens %1; to go on with these statistics then, "
                               "put this file in its place.")
                    .arg(QDir::toNativeSeparators(QFileInfo(oldPath).absoluteFilePath()));
    messages_.notice(parent, title, text);
    return true;
}

} // namespace tavrix
