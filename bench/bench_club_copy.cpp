// "Copy Local Statistics to Club Database" at 1,000,000 game darts: a file
// filled with one player's games is copied into a fresh database on the
// test server, timed against one full read of the player's darts in the
// file and on the server.

#include "../tests/support/test_server.h"
#include "core/stats/local_copy.h"
#include "core/stats/stats_store.h"

#include <QElapsedTimer>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <cstdio>

using namespace tavrix;

namespace {

constexpr int games = 20000;
constexpr int dartsPerGame = 50;

bool fill(StatsStore &file, qint64 player)
{
    QSqlQuery query(file.connection());
    query.prepare(QStringLiteral("INSERT INTO games (creationdate, players_id, gametype, skill, opponent, result,"
                                 " throws, points, outset) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1"
                                 " FROM n WHERE i < ?) SELECT '2026-11-01 10:00:00', ?, ?, 1, 'CPU', 'W', ?, 501, 40"
                                 " FROM n"));
    query.addBindValue(games);
    query.addBindValue(player);
    query.addBindValue(code(GameType::X01_501));
    query.addBindValue(dartsPerGame);
    if (!query.exec())
        return false;
    query.prepare(QStringLiteral("INSERT INTO gamesdarts (creationDate, games_id, players_id, setseq, dartseq, x, y,"
                                 " dist, score, ring, targetscore, targetring) WITH RECURSIVE d(i) AS (SELECT 0"
                                 " UNION ALL SELECT i + 1 FROM d WHERE i < ? - 1) SELECT g.creationdate, g.id,"
                                 " g.players_id, d.i / 3 + 1, d.i % 3, (g.id % 97) - 48.5, (d.i % 89) - 44.5,"
                                 " 10.25, 20, 1, 20, 3 FROM games g CROSS JOIN d"));
    query.addBindValue(dartsPerGame);
    return query.exec();
}

// One full read of the player's darts, in ms.
double fullRead(StatsStore &store, qint64 player)
{
    QElapsedTimer timer;
    timer.start();
    const std::optional<PlayerDistances> distances = store.playerDistances(player);
    return distances ? timer.nsecsElapsed() / 1e6 : -1;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("local.db"));
    qint64 ann = 0;
    {
        StatsStore file(QStringLiteral("fill"));
        if (!file.open(path) || !(ann = file.insertPlayer(QStringLiteral("Ann")).value_or(0)) || !fill(file, ann)) {
            std::fprintf(stderr, "cannot fill the file: %s\n", qPrintable(file.lastError()));
            return 1;
        }
    }
    for (int round = 0; round < 3; ++round) {
        QString error;
        const std::optional<ServerAddress> server =
            TestServer::freshDatabase(QStringLiteral("benchcopy%1").arg(round), error);
        if (!server) {
            std::fprintf(stderr, "no server: %s\n", qPrintable(error));
            return 1;
        }
        StatsStore club(QStringLiteral("club"));
        StatsStore file(QStringLiteral("file"));
        if (!club.open(StoreAddress(*server), {}) || !file.open(path)) {
            std::fprintf(stderr, "cannot open: %s %s\n", qPrintable(club.lastError()), qPrintable(file.lastError()));
            return 1;
        }
        const qint64 clubAnn = club.insertPlayer(QStringLiteral("Ann")).value_or(0);
        const double fileRead = fullRead(file, ann);
        QElapsedTimer timer;
        timer.start();
        const LocalCopy copy = copyLocalStatistics(*server, {}, path, QStringLiteral("Ann"), clubAnn);
        const double copyMs = timer.nsecsElapsed() / 1e6;
        if (!copy.copied) {
            std::fprintf(stderr, "copy failed: %s\n", qPrintable(copy.error));
            return 1;
        }
        timer.restart();
        const LocalCopy again = copyLocalStatistics(*server, {}, path, QStringLiteral("Ann"), clubAnn);
        const double againMs = timer.nsecsElapsed() / 1e6;
        const double serverRead = fullRead(club, clubAnn);
        std::printf("%lld games, %lld darts: copy %.0f ms (%.1f x the file's full read of %.0f ms, %.1f x the"
                    " server's of %.0f ms); copying again %.0f ms, %lld new\n",
                    copy.copied->games, copy.copied->gameDarts, copyMs, copyMs / fileRead, fileRead,
                    copyMs / serverRead, serverRead, againMs, again.copied ? again.copied->games : -1);
    }
    return 0;
}
