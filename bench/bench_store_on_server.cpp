// One player of 1,000,000 game darts (and 100,002 practice darts, which the
// "You" profile and the review's counts read too) on a fresh database of the
// test server. Times, several rounds each, the reads a board makes of that
// player against one full read of the player's darts in the same run: the
// "You" profile, the review's counts and the darts of a few areas; then the
// writes of 1,000 sets of three darts as a game writes them.
//
//   bench_store_on_server [game darts] [rounds]
//
// The server is the one TAVRIX_TEST_PG names, else a throw-away cluster
// started for the run and stopped at its end.

#include "../tests/support/test_server.h"
#include "fill_darts.h"
#include "core/opponent/skill_profile.h"
#include "core/stats/game_codes.h"
#include "core/stats/game_journal.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSqlError>
#include <QSqlQuery>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

using namespace tavrix;
using namespace tavrix::bench;

namespace {

constexpr int practiceSets = 33334;
constexpr const char *fillDate = "2026-11-01 10:00:00";

struct Area {
    const char *name;
    int number;
    int ring;
};

// A game of 20 sets: the trebles first (every third set at 19, else at 20),
// the last three at a double or the bull, in turn, as a leg of 501 ends.
constexpr Area finishes[] = {{"D20", 20, RingDouble}, {"D16", 16, RingDouble}, {"D8", 8, RingDouble},
                             {"D10", 10, RingDouble}, {"Bull", 25, RingSingle}};
constexpr Area reviewed[] = {{"T20", 20, RingTriple}, {"T19", 19, RingTriple}, {"D16", 16, RingDouble},
                             {"Bull", 25, RingSingle}, {"S5", 5, RingSingle}};

Area gameTarget(int set, int game)
{
    const int inGame = set % setsPerGame;
    if (inGame >= setsPerGame - 3)
        return finishes[std::size_t(game + inGame) % std::size(finishes)];
    return inGame % 3 == 2 ? Area{"T19", 19, RingTriple} : Area{"T20", 20, RingTriple};
}

bool failedQuery(const QSqlQuery &query)
{
    std::fprintf(stderr, "failed: %s\n", qPrintable(query.lastError().text()));
    return false;
}

struct Column {
    const char *name;
    const char *type;
};

// A value as an element of an array's text: text quoted, numbers in full.
QString arrayElement(const QVariant &value)
{
    if (value.typeId() == QMetaType::Double)
        return QString::number(value.toDouble(), 'g', 17);
    if (value.typeId() != QMetaType::QString)
        return value.toString();
    QString text = value.toString();
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('"'), QLatin1String("\\\""));
    return QLatin1Char('"') + text + QLatin1Char('"');
}

// Inserts `count` rows into `table`, `perStatement` rows a statement and a
// statement a transaction, row i's values given by `row(i)` in the order of
// `columns`; with `ids`, the new rows' ids in order. Each column's values
// travel as one array, which the server takes apart. Every statement bumps
// the one row of the change counter, as does each practice sums' drop that a
// practice dart makes: in a transaction of 100,000 practice darts the server
// would walk that row's ever longer chain of versions at every bump.
bool insertRows(StatsStore &store, const char *table, std::initializer_list<Column> columns, qsizetype count,
                qsizetype perStatement, const std::function<QVariantList(qsizetype)> &row,
                std::vector<qint64> *ids = nullptr)
{
    QStringList names;
    QStringList arrays;
    for (const Column &column : columns) {
        names << QLatin1String(column.name);
        arrays << QStringLiteral("?::%1[]").arg(QLatin1String(column.type));
    }
    QSqlQuery query(store.connection());
    if (!query.prepare(QStringLiteral("INSERT INTO %1 (%2) SELECT * FROM unnest(%3)%4")
                           .arg(QLatin1String(table), names.join(QLatin1Char(',')), arrays.join(QLatin1Char(',')),
                                ids ? QStringLiteral(" RETURNING id") : QString())))
        return failedQuery(query);
    for (qsizetype first = 0; first < count; first += perStatement) {
        std::vector<QStringList> values(columns.size());
        for (qsizetype i = first; i < std::min(count, first + perStatement); ++i) {
            const QVariantList rowValues = row(i);
            for (std::size_t c = 0; c < values.size(); ++c)
                values[c] << arrayElement(rowValues[qsizetype(c)]);
        }
        for (const QStringList &column : values)
            query.addBindValue(QLatin1Char('{') + column.join(QLatin1Char(',')) + QLatin1Char('}'));
        StatsStore::Batch batch(store);
        if (!query.exec())
            return failedQuery(query);
        while (ids && query.next())
            ids->push_back(query.value(0).toLongLong());
        if (!batch.commit())
            return failed(store);
    }
    return true;
}

// Prints how long the phase since the last took.
bool phase(const char *what, QElapsedTimer &timer, bool done)
{
    if (done)
        std::printf("  %-22s %7.1f s\n", what, timer.nsecsElapsed() / 1e9);
    timer.restart();
    return done;
}

// The player's game darts in games of 20 sets, and practice sets of three
// over every target in turn.
bool fill(StatsStore &store, qint64 player, int gameDarts, QRandomGenerator &random)
{
    const int games = (gameDarts + setsPerGame * dartsPerSet - 1) / (setsPerGame * dartsPerSet);
    std::vector<qint64> gameIds;
    std::vector<qint64> targetIds;
    std::vector<Area> targets;
    for (int set = 0; set < practiceSets; ++set) {
        const int value = set % 21 == 20 ? 25 : set % 21 + 1;
        targets.push_back({"", value, value == 25 ? RingSingle : 1 + (set / 21) % 3});
    }
    const QString date = QString::fromLatin1(fillDate);
    QElapsedTimer timer;
    timer.start();
    const bool filled =
        phase("games", timer,
              insertRows(store, "games",
                         {{"creationdate", "text"}, {"players_id", "bigint"}, {"gametype", "smallint"},
                          {"skill", "smallint"}, {"opponent", "text"}, {"result", "text"}, {"throws", "integer"},
                          {"points", "integer"}},
                         games, 10000,
                         [&](qsizetype i) {
                             return QVariantList{date, player, code(GameType::X01_501), 1 + int(i % 4),
                                                 QStringLiteral("Computer"),
                                                 i % 2 ? QStringLiteral("W") : QStringLiteral("L"),
                                                 setsPerGame * dartsPerSet, 501};
                         },
                         &gameIds))
        && phase("game darts", timer,
                 insertRows(store, "gamesdarts",
                            {{"creationdate", "text"}, {"games_id", "bigint"}, {"players_id", "bigint"},
                             {"setseq", "integer"}, {"dartseq", "integer"}, {"x", "float8"}, {"y", "float8"},
                             {"dist", "float8"}, {"score", "integer"}, {"ring", "integer"},
                             {"targetscore", "integer"}, {"targetring", "integer"}},
                            gameDarts, 10000,
                            [&](qsizetype i) {
                                const int set = int(i / dartsPerSet);
                                const int game = set / setsPerGame;
                                const Area target = gameTarget(set, game);
                                const Dart d = throwAt(random, aimPoint(target.ring, target.number));
                                return QVariantList{date, gameIds[std::size_t(game)], player, set % setsPerGame + 1,
                                                    int(i % dartsPerSet), storedCoordinate(d.x),
                                                    storedCoordinate(d.y), d.dist, d.score.number,
                                                    d.score.multiplier, target.number, target.ring};
                            }))
        && phase("practice targets", timer,
                 insertRows(store, "statstargets",
                            {{"creationdate", "text"}, {"players_id", "bigint"}, {"targetvalue", "integer"},
                             {"targetring", "integer"}},
                            practiceSets, 10000,
                            [&](qsizetype i) {
                                return QVariantList{date, player, targets[std::size_t(i)].number,
                                                    targets[std::size_t(i)].ring};
                            },
                            &targetIds))
        && phase("practice darts", timer,
                 insertRows(store, "statsthrows",
                            {{"players_id", "bigint"}, {"statstargets_id", "bigint"}, {"seq", "integer"},
                             {"x", "float8"}, {"y", "float8"}, {"dist", "float8"}, {"score", "integer"},
                             {"ring", "integer"}},
                            qsizetype(practiceSets) * dartsPerSet, 500, [&](qsizetype i) {
                                const auto set = std::size_t(i / dartsPerSet);
                                const Dart d = throwAt(random, aimPoint(targets[set].ring, targets[set].number));
                                return QVariantList{player, targetIds[set], int(i % dartsPerSet),
                                                    storedCoordinate(d.x), storedCoordinate(d.y), d.dist,
                                                    d.score.number, d.score.multiplier};
                            }));
    if (!filled)
        return false;
    // The server's own cleaning would have seen to this on a club's server
    // long before a million darts are in it.
    QSqlQuery query(store.connection());
    return phase("VACUUM ANALYZE", timer, query.exec(QStringLiteral("VACUUM ANALYZE"))) || failedQuery(query);
}

struct Times {
    std::vector<double> ms;
    double min() const { return *std::min_element(ms.begin(), ms.end()); }
    double median() const { return percentile(ms, 0.5); }
};

// Times `run` `rounds` times, `before` (untimed) ahead of each; nothing
// when a run fails.
std::optional<Times> timed(int rounds, const std::function<bool()> &run, const std::function<bool()> &before = {})
{
    Times times;
    for (int i = 0; i < rounds; ++i) {
        if (before && !before())
            return std::nullopt;
        QElapsedTimer timer;
        timer.start();
        if (!run())
            return std::nullopt;
        times.ms.push_back(timer.nsecsElapsed() / 1e6);
    }
    return times;
}

void line(const QString &what, const Times &times, const Times &fullRead)
{
    std::printf("%-36s min %8.1f ms  median %8.1f ms  %5.2f x full read\n", qPrintable(what), times.min(),
                times.median(), times.median() / fullRead.median());
}

// Plays `sets` sets of three darts through the journal as a game does,
// a new game every 20 sets and its end recorded with its last set; each
// set's write in milliseconds.
std::optional<std::vector<double>> playSets(StatsStore &store, qint64 player, int sets, QRandomGenerator &random)
{
    GameJournal journal(store);
    std::vector<double> ms;
    qint64 game = 0;
    for (int set = 0; set < sets; ++set) {
        if (set % setsPerGame == 0) {
            const std::optional<qint64> id =
                journal.startGame({player, GameType::X01_501, SkillLevel::You, QStringLiteral("Computer")},
                                  QStringLiteral("Bench O'Mark"));
            if (!id) {
                failed(store);
                return std::nullopt;
            }
            game = *id;
        }
        const Area target = gameTarget(set, set / setsPerGame);
        QList<GameDart> darts;
        for (int seq = 0; seq < dartsPerSet; ++seq) {
            const Dart d = throwAt(random, aimPoint(target.ring, target.number));
            darts.append({game, player, set % setsPerGame + 1, seq, d.x, d.y, d.dist, d.score.number,
                          d.score.multiplier, target.number, target.ring});
        }
        std::optional<std::pair<qint64, GameResult>> end;
        if (set % setsPerGame == setsPerGame - 1)
            end = std::pair{game, GameResult{QStringLiteral("W"), setsPerGame * dartsPerSet, 501, 100, 40}};
        QElapsedTimer timer;
        timer.start();
        if (!journal.record(darts, end)) {
            failed(store);
            return std::nullopt;
        }
        ms.push_back(timer.nsecsElapsed() / 1e6);
    }
    return ms;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int gameDarts = argc > 1 ? std::max(60, QString::fromLocal8Bit(argv[1]).toInt()) : 1000000;
    const int rounds = argc > 2 ? std::max(1, QString::fromLocal8Bit(argv[2]).toInt()) : 7;
    QString error;
    const std::optional<ServerAddress> server = TestServer::freshDatabase(QStringLiteral("benchstore"), error);
    if (!server) {
        std::fprintf(stderr, "no server: %s\n", qPrintable(error));
        return 1;
    }
    StatsStore store;
    if (!store.open(StoreAddress(*server), {}))
        return failed(store) ? 0 : 1;
    const std::optional<qint64> player = store.insertPlayer(QStringLiteral("Bench O'Mark"));
    if (!player)
        return failed(store) ? 0 : 1;
    QRandomGenerator random(20261201);
    QElapsedTimer timer;
    timer.start();
    std::printf("filling...\n");
    if (!fill(store, *player, gameDarts, random))
        return 1;
    std::printf("filled %d game darts and %d practice darts in %.1f s\n", gameDarts, practiceSets * dartsPerSet,
                timer.nsecsElapsed() / 1e9);

    std::size_t darts = 0;
    const std::optional<Times> fullRead = timed(rounds, [&] {
        const std::optional<PlayerDistances> distances = store.playerDistances(*player);
        darts = distances ? distances->values.size() : 0;
        return distances.has_value();
    });
    if (!fullRead)
        return failed(store) ? 0 : 1;
    line(QStringLiteral("full read (%1 distances)").arg(darts), *fullRead, *fullRead);

    // A write between the rounds changes the database, so that neither
    // result kept from the round before is given again.
    const auto touch = [&] { return store.renamePlayer(*player, QStringLiteral("Bench O'Mark")); };
    const std::optional<Times> you = timed(
        rounds,
        [&] { return store.distanceQuarters(*player, youMinSamples) && store.targetCounts(*player); }, touch);
    const std::optional<Times> counts = timed(rounds, [&] { return store.targetCounts(*player).has_value(); }, touch);
    if (!you || !counts)
        return failed(store) ? 0 : 1;
    line(QStringLiteral("\"You\" profile (quarters + counts)"), *you, *fullRead);
    line(QStringLiteral("review: counts per area"), *counts, *fullRead);
    for (const Area &area : reviewed) {
        std::size_t plotted = 0;
        const std::optional<Times> read = timed(rounds, [&] {
            const std::optional<AreaDarts> areaDarts = store.areaDarts(*player, area.number, area.ring);
            plotted = areaDarts ? areaDarts->practice.size() + areaDarts->game.size() : 0;
            return areaDarts.has_value();
        });
        if (!read)
            return failed(store) ? 0 : 1;
        line(QStringLiteral("review: %1 (%2 darts)").arg(QLatin1String(area.name)).arg(plotted), *read, *fullRead);
    }

    constexpr int playedSets = 1000;
    const std::optional<std::vector<double>> sets = playSets(store, *player, playedSets, random);
    if (!sets)
        return 1;
    std::printf("%d sets of 3 darts through the journal: median %.2f ms, p95 %.2f ms, max %.2f ms\n", playedSets,
                percentile(*sets, 0.5), percentile(*sets, 0.95), *std::max_element(sets->begin(), sets->end()));
    return 0;
}
