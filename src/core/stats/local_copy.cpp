#include "core/stats/local_copy.h"

#include "core/stats/stats_store.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <atomic>

namespace tavrix {

namespace {

QString counted(qint64 count, const QString &one, const QString &many)
{
    return QStringLiteral("%1 %2").arg(count).arg(count == 1 ? one : many);
}

// "3 games with 18 darts", or "1 match".
QString part(qint64 count, const QString &one, const QString &many, std::optional<qint64> darts = std::nullopt)
{
    QString text = counted(count, one, many);
    if (darts)
        text += QStringLiteral(" with ") + counted(*darts, QStringLiteral("dart"), QStringLiteral("darts"));
    return text;
}

} // namespace

LocalCopy copyLocalStatistics(const ServerAddress &club, const QString &password, const QString &localPath,
                              const QString &playerName, qint64 playerId)
{
    static std::atomic<int> serial = 0;
    const int number = ++serial;
    const QString shownPath = QDir::toNativeSeparators(localPath);
    if (!QFileInfo::exists(localPath))
        return {std::nullopt, QStringLiteral("There is no statistics file on this computer at %1.").arg(shownPath)};
    StatsStore file(QStringLiteral("copyFrom%1").arg(number));
    if (!file.open(localPath))
        return {std::nullopt, file.lastError() + QLatin1Char('.')};
    const std::optional<qint64> sourcePlayer = file.playerIdByName(playerName);
    if (!sourcePlayer) {
        const QString why = file.lastError();
        return {std::nullopt, why.isEmpty() ? QStringLiteral("The statistics file on this computer (%1) has no player "
                                                             "named %2.")
                                                  .arg(shownPath, playerName)
                                            : why + QLatin1Char('.')};
    }
    StatsStore store(QStringLiteral("copyInto%1").arg(number));
    if (!store.open(StoreAddress(club), password))
        return {std::nullopt, store.lastError() + QLatin1Char('.')};
    std::optional<CopiedRows> copied = store.copyPlayerFrom(file, *sourcePlayer, playerId);
    if (!copied)
        return {std::nullopt, store.lastError() + QLatin1Char('.')};
    return {copied, {}};
}

QString localCopyReport(const CopiedRows &copied, const QString &playerName, const QString &localPath)
{
    if (!copied.any()) {
        if (copied.copiedBefore > 0)
            return QStringLiteral("Everything of %1's in the statistics file on this computer was copied into the "
                                  "club database before. Nothing was copied again.")
                .arg(playerName);
        return QStringLiteral("The statistics file on this computer (%1) holds no games, practice or drills of %2's.")
            .arg(QDir::toNativeSeparators(localPath), playerName);
    }
    QStringList parts;
    if (copied.games)
        parts << part(copied.games, QStringLiteral("game"), QStringLiteral("games"), copied.gameDarts);
    if (copied.targets)
        parts << part(copied.targets, QStringLiteral("practice target"), QStringLiteral("practice targets"),
                      copied.practiceDarts);
    if (copied.drills)
        parts << part(copied.drills, QStringLiteral("drill"), QStringLiteral("drills"), copied.drillDarts);
    if (copied.matches)
        parts << part(copied.matches, QStringLiteral("match"), QStringLiteral("matches"));
    const QString last = parts.takeLast();
    const QString list = parts.isEmpty() ? last : parts.join(QStringLiteral(", ")) + QStringLiteral(" and ") + last;
    QString text = QStringLiteral("Copied into the club database: %1.").arg(list);
    if (copied.copiedBefore > 0)
        text += QStringLiteral(" What was copied before was left out.");
    return text;
}

} // namespace tavrix
