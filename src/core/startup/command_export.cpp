#include "core/startup/command_export.h"

#include "core/export/darts_csv.h"
#include "core/stats/stats_store.h"

#include <QDir>
#include <QFileInfo>

namespace tavrix {

namespace {

OptionOutput failed(const QString &why)
{
    return {QStringLiteral("tavrix: %1\n").arg(why), true, 1};
}

} // namespace

OptionOutput runCommandExport(const StartOptions &options, const QString &databasePath)
{
    const std::variant<StoreAddress, QString> read = readStoreAddress(databasePath);
    if (const QString *reason = std::get_if<QString>(&read))
        return failed(QStringLiteral("cannot use the club database: %1").arg(*reason));
    const StoreAddress &address = std::get<StoreAddress>(read);
    const ServerAddress *server = std::get_if<ServerAddress>(&address);
    const QString database =
        server ? describeServer(*server) : QDir::toNativeSeparators(QFileInfo(databasePath).absoluteFilePath());
    if (!server && !QFileInfo(databasePath).isFile())
        return failed(QStringLiteral("there is no statistics file at %1").arg(database));
    StatsStore store(QStringLiteral("commandExport"));
    if (!store.open(address))
        return failed(store.lastError());
    std::optional<qint64> playerId;
    if (!options.exportPlayer.isEmpty()) {
        playerId = store.playerIdByName(options.exportPlayer);
        if (!playerId && !store.lastError().isEmpty())
            return failed(store.lastError());
        if (!playerId || *playerId == 0)
            return failed(QStringLiteral("there is no player named \"%1\" in %2").arg(options.exportPlayer, database));
    }
    const ExportOutcome outcome = exportDartsCsv(store, playerId, options.exportPath);
    if (outcome.end != ExportEnd::Written)
        return failed(outcome.error);
    const QString file = QDir::toNativeSeparators(QFileInfo(options.exportPath).absoluteFilePath());
    return {QStringLiteral("%1 %2 written to %3\n")
                .arg(outcome.rows)
                .arg(outcome.rows == 1 ? QStringLiteral("dart") : QStringLiteral("darts"), file),
            false, 0};
}

} // namespace tavrix
