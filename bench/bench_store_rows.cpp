// The reads of a player's every dart on a file through Qt SQL (the way a
// server is read) against the same reads through SQLite's own calls: aimed
// darts, the statistics rows and the export, best of three each, with the
// ratio of the two ways. Both ways must hand over the same rows.
//
//   bench_store_rows [database file] [darts]

#include "bench_support.h"
#include "core/stats/store_dialect.h"
#include "core/stats/store_rows.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <cstdio>

using namespace tavrix;

namespace {

// A sum of what was handed over, to tell the two ways' rows apart.
struct Tally {
    qint64 rows = 0;
    double sum = 0;
    friend bool operator==(const Tally &, const Tally &) = default;
};

Tally tallyOf(const StatisticsRows &rows)
{
    Tally t;
    t.rows = qint64(rows.games.size() + rows.gameDarts.size() + rows.practiceSets.size() + rows.practiceDarts.size()
                    + rows.drills.size() + rows.drillDoubleDarts.size() + rows.matches.size());
    for (const StatsGameDart &d : rows.gameDarts)
        t.sum += double(d.gameId + d.setSeq * 3 + d.dartSeq + d.score * 7 + d.ring + d.targetScore + d.targetRing);
    for (const StatsPracticeDart &d : rows.practiceDarts)
        t.sum += double(d.setId + d.score * 5 + d.ring);
    for (const StatsGame &g : rows.games)
        t.sum += double(g.playedAt.value_or(0) % 1000 + g.throws + g.points);
    return t;
}

bool report(const char *what, double fastMs, double qtMs, bool same)
{
    std::printf("%-18s SQLite's calls %8.1f ms   Qt SQL %8.1f ms   %5.2f x%s\n", what, fastMs, qtMs, qtMs / fastMs,
                same ? "" : "   DIFFERENT ROWS");
    return same;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const std::optional<bench::BenchFile> file = bench::benchFile(argc, argv, dir, 20261127);
    if (!file)
        return 1;
    StatsStore store(QStringLiteral("rows"));
    if (!store.open(file->path))
        return bench::failed(store) ? 0 : 1;
    const qint64 player = file->player;
    QSqlDatabase db = store.connection();
    const StoreDialect &dialect = store.dialect();
    QSqlError error;
    std::printf("full read of the player's distances %9.1f ms\n", bench::bestFullReadMs(3, file->path, player));

    Tally fast;
    Tally qt;
    const auto aimedInto = [](Tally &t) {
        t = {};
        return [&t](int value, int ring, double x, double y) {
            ++t.rows;
            t.sum += value * 4 + ring + x + y;
        };
    };
    const double fastAimed = bench::bestOf(3, [&] { return store.readAimedDarts(player, aimedInto(fast)); });
    const double qtAimed =
        bench::bestOf(3, [&] { return readAimedDartRows(db, dialect, player, aimedInto(qt), error); });
    bool same = report("aimed darts", fastAimed, qtAimed, fast == qt && fast.rows > 0);

    const double fastRows = bench::bestOf(3, [&] {
        const std::optional<StatisticsRows> rows = store.statisticsRows(player);
        return rows && (fast = tallyOf(*rows), true);
    });
    const double qtRows = bench::bestOf(3, [&] {
        const std::optional<StatisticsRows> rows = readStatisticsRows(db, dialect, player, error);
        return rows && (qt = tallyOf(*rows), true);
    });
    same = report("statistics rows", fastRows, qtRows, fast == qt && fast.rows > 0) && same;

    QHash<qint64, QByteArray> names;
    QSqlQuery query(db);
    query.exec(QStringLiteral("SELECT id, name FROM players"));
    while (query.next())
        names.insert(query.value(0).toLongLong(), query.value(1).toString().toUtf8());
    query.finish();
    const auto exportInto = [](Tally &t) {
        t = {};
        return [&t](const ExportDart &d) {
            ++t.rows;
            t.sum += double(d.date.size() + d.set.whole.value_or(0) + d.score.whole.value_or(0)) + d.x.value_or(0);
            return true;
        };
    };
    const double fastExport = bench::bestOf(3, [&] { return store.readExportDarts(player, exportInto(fast)); });
    const double qtExport = bench::bestOf(
        3, [&] { return readExportDartRows(db, dialect, player, names, exportInto(qt), error); });
    same = report("export darts", fastExport, qtExport, fast == qt && fast.rows > 0) && same;
    if (error.isValid())
        std::fprintf(stderr, "%s\n", qPrintable(error.text()));
    return same ? 0 : 1;
}
