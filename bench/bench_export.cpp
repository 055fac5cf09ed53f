// What exporting a player's darts as CSV costs at scale: the time as a
// ratio to one full read of the player's distances, and how far memory rises
// above the program at rest while it runs (VmHWM over VmRSS, the peak reset
// just before through /proc/self/clear_refs).
//
// Usage: bench_export [database file] [darts]
// (a new database of 1000000 darts for one player in a temporary folder when
// no file is given; an existing file must hold exactly one player)

#include "core/export/darts_csv.h"
#include "fill_darts.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>

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

double bestOf(int runs, const std::function<bool()> &run)
{
    double best = -1;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        if (!run())
            return -1;
        const double ms = timer.nsecsElapsed() / 1e6;
        best = best < 0 ? ms : std::min(best, ms);
    }
    return best;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    QString path = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    const int darts = argc > 2 ? QString::fromLocal8Bit(argv[2]).toInt() : 1000000;
    qint64 player = 0;
    if (path.isEmpty() || !QFileInfo::exists(path)) {
        if (path.isEmpty())
            path = dir.filePath(QStringLiteral("bench.db"));
        const std::optional<qint64> filled = bench::fillNewFile(path, darts, 20261122);
        if (!filled)
            return 1;
        player = *filled;
    } else {
        SqliteStore store(QStringLiteral("look"));
        const auto players = store.open(path) ? store.players() : std::nullopt;
        if (!players || players->size() != 1) {
            std::fprintf(stderr, "%s must hold exactly one player\n", qPrintable(path));
            return 1;
        }
        player = players->first().id;
    }
    const QString csv = dir.filePath(QStringLiteral("darts.csv"));

    const int runs = 3;
    qint64 values = 0;
    const double scanMs = bestOf(runs, [&] {
        SqliteStore store(QStringLiteral("scan"));
        const auto distances = store.open(path) ? store.playerDistances(player) : std::nullopt;
        values = distances ? qint64(distances->values.size()) : 0;
        return distances.has_value();
    });
    std::printf("player's darts: %lld\n", values);
    std::printf("%-34s %9.1f ms  %6.2f x scan\n", "full read of the distances", scanMs, 1.0);

    // Memory: one export from a store opened beforehand, the peak reset at
    // rest.
    SqliteStore store(QStringLiteral("export"));
    if (!store.open(path))
        return bench::failed(store);
    const bool peakReset = resetPeak();
    const qint64 restKb = statusKb("VmRSS");
    qint64 rows = 0;
    const double firstMs = bestOf(1, [&] {
        const ExportOutcome outcome = exportDartsCsv(store, player, csv, [](qint64, qint64) { return true; });
        rows = outcome.rows;
        if (outcome.end != ExportEnd::Written)
            std::fprintf(stderr, "export failed: %s\n", qPrintable(outcome.error));
        return outcome.end == ExportEnd::Written;
    });
    if (firstMs < 0)
        return 1;
    const qint64 peakKb = statusKb("VmHWM");
    const qint64 afterKb = statusKb("VmRSS");
    const double exportMs = std::min(firstMs, bestOf(runs - 1, [&] {
        return exportDartsCsv(store, player, csv, [](qint64, qint64) { return true; }).end == ExportEnd::Written;
    }));
    std::printf("rows written: %lld, file %.1f MB\n", rows, QFileInfo(csv).size() / 1e6);
    std::printf("%-34s %9.1f ms  %6.2f x scan\n", "export of the player's darts", exportMs, exportMs / scanMs);
    std::printf("memory at rest (VmRSS):            %8.1f MB\n", restKb / 1024.0);
    std::printf("peak during the export (VmHWM):    %8.1f MB  (+%.1f MB%s)\n", peakKb / 1024.0,
                (peakKb - restKb) / 1024.0, peakReset ? "" : "; the peak could not be reset, it includes the fill");
    std::printf("after the export (VmRSS):          %8.1f MB\n", afterKb / 1024.0);
    return 0;
}
