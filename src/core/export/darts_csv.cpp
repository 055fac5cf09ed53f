#include "core/export/darts_csv.h"

#include "core/export/csv_row.h"
#include "core/export/dart_batches.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <thread>

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
    // This thread reads the darts and hands them over in batches; the writer
    // turns them into lines and writes them, at the same time.
    DartBatches batches;
    bool writeFailed = false;
    std::thread writer([&] {
        QByteArray buffer;
        buffer.reserve(bytesPerWrite + 4096);
        buffer.append(dartsCsvHeader);
        buffer.append("\r\n");
        auto flush = [&] {
            writeFailed = out.write(buffer) != buffer.size();
            // resize keeps the room reserved; clear would give it back.
            buffer.resize(0);
            return !writeFailed;
        };
        while (std::optional<DartBatch> batch = batches.take()) {
            for (const ExportDart &dart : batch->darts()) {
                appendDartRow(buffer, dart);
                if (buffer.size() >= bytesPerWrite && !flush()) {
                    batches.stop();
                    return;
                }
            }
            batches.giveBack(std::move(*batch));
        }
        flush();
    });
    DartBatch batch = batches.fresh();
    bool cancelled = progress && !progress(0, *total);
    bool read = cancelled || store.readExportDarts(playerId, [&](const ExportDart &dart) {
        if (!batch.add(dart)) {
            if (!batches.send(std::move(batch)))
                return false;
            batch = batches.fresh();
            batch.add(dart);
        }
        ++outcome.rows;
        if (progress && outcome.rows % rowsPerReport == 0 && !progress(outcome.rows, *total)) {
            cancelled = true;
            return false;
        }
        return true;
    });
    if (cancelled || !read || (!batch.isEmpty() && !batches.send(std::move(batch))))
        batches.stop();
    batches.finish();
    writer.join();
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
    if (writeFailed || !out.commit()) {
        outcome.error = QStringLiteral("Cannot write %1: %2").arg(file, out.errorString());
        return outcome;
    }
    if (progress)
        progress(outcome.rows, outcome.rows);
    outcome.end = ExportEnd::Written;
    return outcome;
}

} // namespace tavrix
