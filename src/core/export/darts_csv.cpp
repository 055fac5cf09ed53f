#include "core/export/darts_csv.h"

#include "core/export/csv_row.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace tavrix {

namespace {

// Rows between two reports of progress, and bytes gathered before a write.
constexpr qint64 rowsPerReport = 16384;
constexpr qsizetype bytesPerWrite = 1 << 20;

} // namespace

ExportOutcome exportDartsCsv(DartExport &store, std::optional<qint64> playerId, const QString &path,
                             const ExportProgress &progress)
{
    ExportOutcome outcome;
    const QString file = QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
    const std::optional<qint64> total = store.exportDartCount(playerId);
    if (!total) {
        outcome.error = store.lastError();
        return outcome;
    }
    // Written beside the file under a name of its own, and put in its place
    // by commit() only when complete.
    QSaveFile out(path);
    if (!out.open(QIODevice::WriteOnly)) {
        outcome.error = QStringLiteral("Cannot write %1: %2").arg(file, out.errorString());
        return outcome;
    }
    QByteArray buffer;
    buffer.reserve(bytesPerWrite + 4096);
    buffer.append(dartsCsvHeader);
    buffer.append("\r\n");
    bool writeFailed = false;
    auto flush = [&] {
        writeFailed = writeFailed || out.write(buffer) != buffer.size();
        // resize keeps the room reserved; clear would give it back.
        buffer.resize(0);
        return !writeFailed;
    };
    bool cancelled = progress && !progress(0, *total);
    const bool read = cancelled || store.readExportDarts(playerId, [&](const ExportDart &dart) {
        appendDartRow(buffer, dart);
        ++outcome.rows;
        if (buffer.size() >= bytesPerWrite && !flush())
            return false;
        if (progress && outcome.rows % rowsPerReport == 0 && !progress(outcome.rows, *total)) {
            cancelled = true;
            return false;
        }
        return true;
    });
    if (cancelled) {
        out.cancelWriting();
        outcome.end = ExportEnd::Cancelled;
        return outcome;
    }
    if (!read) {
        out.cancelWriting();
        outcome.error = store.lastError();
        return outcome;
    }
    if (!flush() || !out.commit()) {
        outcome.error = QStringLiteral("Cannot write %1: %2").arg(file, out.errorString());
        return outcome;
    }
    if (progress)
        progress(outcome.rows, outcome.rows);
    outcome.end = ExportEnd::Written;
    return outcome;
}

} // namespace tavrix
