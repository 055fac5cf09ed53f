// What exporting a player's darts as CSV costs at scale: the time as a
// ratio to one full read of the player's distances, and how far memory rises
// above the program at rest while it runs (VmHWM over VmRSS, the peak reset
// just before through /proc/self/clear_refs).
//
// Usage: bench_export [database file] [darts]
// (a new database of 1000000 darts for one player in a temporary folder when
// no file is given; an existing file must hold exactly one player)

#include "core/export/darts_csv.h"
#include "bench_support.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>

using namespace tavrix;

namespace {

// A figure of /proc/self/status in kB ("VmRSS", "VmHWM"); -1 when unknown.
qint64 statusKb(const char *field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray prefix = QByteArray(field) + ':';
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(prefix))
            return line.mid(prefix.size()).trimmed().split(' ').value(0).toLongLong();
    }
    return -1;
}

// Sets the peak back to the memory in use now; false where the kernel
// does not offer it.
bool resetPeak()
{
    QFile refs(QStringLiteral("/proc/self/clear_refs"));
    return refs.open(QIODevice::WriteOnly) && refs.write("5") == 1;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const std::optional<bench::BenchFile> file = bench::benchFile(argc, argv, dir, 20261122);
    if (!file)
        return 1;
    const QString csv = dir.filePath(QStringLiteral("darts.csv"));
    StatsStore store(QStringLiteral("export"));
    if (!store.open(file->path))
        return bench::failed(store) ? 0 : 1;
    auto exportOnce = [&](qint64 *rows) {
        const ExportOutcome outcome = exportDartsCsv(store, file->player, csv, [](qint64, qint64) { return true; });
        if (outcome.end != ExportEnd::Written)
            std::fprintf(stderr, "export failed: %s\n", qPrintable(outcome.error));
        if (rows)
            *rows = outcome.rows;
        return outcome.end == ExportEnd::Written;
    };

    // Memory: the first export from the store opened beforehand, the peak
    // reset at rest.
    const bool peakReset = resetPeak();
    const qint64 restKb = statusKb("VmRSS");
    qint64 rows = 0;
    if (!exportOnce(&rows))
        return 1;
    const qint64 peakKb = statusKb("VmHWM");
    const qint64 afterKb = statusKb("VmRSS");

    // Time: the full read, the export and the same rows read and dropped
    // (what the export costs above SQLite's own work), taken in turns so
    // that a change in the machine's load meets all three; the best of each.
    qint64 darts = 0;
    double scanMs = -1, exportMs = -1, readMs = -1;
    auto keepBest = [](double &best, double ms) { best = best < 0 || ms < 0 ? ms : std::min(best, ms); };
    for (int run = 0; run < 5; ++run) {
        keepBest(scanMs, bench::fullReadMs(file->path, file->player, &darts));
        keepBest(exportMs, bench::bestOf(1, [&] { return exportOnce(nullptr); }));
        keepBest(readMs, bench::bestOf(1, [&] {
                     return store.readExportDarts(file->player, [](const ExportDart &) { return true; });
                 }));
        if (scanMs < 0 || exportMs < 0 || readMs < 0)
            return 1;
    }
    std::printf("player's darts: %lld\n", darts);
    bench::ratioLine("full read of the distances", scanMs, scanMs);
    std::printf("rows written: %lld, file %.1f MB\n", rows, QFileInfo(csv).size() / 1e6);
    bench::ratioLine("export of the player's darts", exportMs, scanMs);
    bench::ratioLine("  the same rows read alone", readMs, scanMs);
    std::printf("memory at rest (VmRSS):            %8.1f MB\n", restKb / 1024.0);
    std::printf("peak during the export (VmHWM):    %8.1f MB  (+%.1f MB%s)\n", peakKb / 1024.0,
                (peakKb - restKb) / 1024.0, peakReset ? "" : "; the peak could not be reset");
    std::printf("after the export (VmRSS):          %8.1f MB\n", afterKb / 1024.0);
    return 0;
}
