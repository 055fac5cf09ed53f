// The club page's read at 10 players of 100,000 game darts each on the
// test server: one read per table for all players against one full read of
// each player's own statistics, and the figures worked out from them.

#include "../tests/support/test_server.h"
#include "core/statistics/club_statistics.h"
#include "core/stats/stats_store.h"

#include <QElapsedTimer>
#include <QSqlQuery>

#include <cstdio>

using namespace tavrix;

namespace {

constexpr int players = 10;
constexpr int gamesPerPlayer = 2000;
constexpr int dartsPerGame = 50;

bool fill(StatsStore &store)
{
    QSqlQuery query(store.connection());
    for (int i = 0; i < players; ++i) {
        const qint64 player = store.insertPlayer(QStringLiteral("Player %1").arg(i)).value_or(-1);
        query.prepare(QStringLiteral("INSERT INTO games (creationdate, players_id, gametype, skill, opponent, result,"
                                     " throws, points, outset) SELECT '2026-11-01 10:00:00', ?, ?, 1, 'CPU', 'W', ?,"
                                     " 501, 40 FROM generate_series(1, ?)"));
        query.addBindValue(player);
        query.addBindValue(code(GameType::X01_501));
        query.addBindValue(dartsPerGame);
        query.addBindValue(gamesPerPlayer);
        if (!query.exec())
            return false;
    }
    query.prepare(QStringLiteral("INSERT INTO gamesdarts (creationdate, games_id, players_id, setseq, dartseq, x, y,"
                                 " dist, score, ring, targetscore, targetring) SELECT g.creationdate, g.id,"
                                 " g.players_id, d / 3 + 1, d % 3, 0, 0, 0, 20, 1, 20, 3"
                                 " FROM games g CROSS JOIN generate_series(0, ? - 1) d"));
    query.addBindValue(dartsPerGame);
    return query.exec() && query.exec(QStringLiteral("ANALYZE"));
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QString error;
    const std::optional<ServerAddress> server = TestServer::freshDatabase(QStringLiteral("benchclub"), error);
    if (!server) {
        std::fprintf(stderr, "no server: %s\n", qPrintable(error));
        return 1;
    }
    StatsStore store;
    if (!store.open(StoreAddress(*server), {}) || !fill(store)) {
        std::fprintf(stderr, "cannot fill: %s\n", qPrintable(store.lastError()));
        return 1;
    }
    for (int round = 0; round < 3; ++round) {
        QElapsedTimer timer;
        timer.start();
        std::optional<std::vector<ClubPlayerRows>> rows = store.clubRows();
        const qint64 readMs = timer.elapsed();
        if (!rows)
            return 1;
        const std::vector<ClubLine> lines = clubLines(std::move(*rows), std::nullopt);
        const qint64 countMs = timer.elapsed() - readMs;
        timer.restart();
        for (const ClubLine &line : lines) {
            if (!store.statisticsRows(line.playerId))
                return 1;
        }
        std::printf("%d players x %d darts: club read %lld ms, figures %lld ms;"
                    " each player's own read in turn %lld ms\n",
                    players, gamesPerPlayer * dartsPerGame, readMs, countMs, qint64(timer.elapsed()));
    }
    return 0;
}
