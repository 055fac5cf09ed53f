// The club page's figures on a server: each listed player's are those the
// player's own statistics give, a hidden player is left out, the period
// counts, a file refuses, and a server database of the version before the
// club table gets it.

#include "../support/test_server.h"
#include "core/statistics/club_statistics.h"
#include "core/stats/stats_store.h"

#include <QDateTime>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrix;

namespace {

struct Dart {
    int score, ring;
};

// A finished 301 game with its darts kept, three to a set.
void playGame(StatsStore &store, qint64 player, const QString &result, const std::vector<Dart> &darts,
              int points, int outSet)
{
    const qint64 game = store.insertGame({player, GameType::X01_301, SkillLevel::Master, QStringLiteral("CPU")})
                            .value_or(-1);
    for (int i = 0; i < int(darts.size()); ++i)
        QVERIFY(store.insertGameDart({game, player, i / 3 + 1, i % 3, 0, 0, 0, darts[size_t(i)].score,
                                      darts[size_t(i)].ring, 20, 3}));
    QVERIFY(store.finishGame(game, {result, int(darts.size()), points, 0, outSet}));
}

void playDrill(StatsStore &store, qint64 player, int kind, int score)
{
    const qint64 drill = store.insertDrill({player, kind, 0}).value_or(-1);
    QVERIFY(store.finishDrill(drill, {score, true, false}));
}

const ClubLine *lineOf(const std::vector<ClubLine> &lines, qint64 player)
{
    const auto found = std::find_if(lines.begin(), lines.end(), [&](const ClubLine &l) { return l.playerId == player; });
    return found == lines.end() ? nullptr : &*found;
}

} // namespace

class TestClubStore : public QObject {
    Q_OBJECT

private slots:
    // Two players with games won and lost and a drill each: every figure of
    // the club page is what the player's own statistics show, whichever
    // player's rows come first on the server; hiding takes a player off
    // and back on; a game played before the period leaves it.
    void clubFiguresMatchEachPlayersOwnAndFollowHidingAndPeriod()
    {
        StatsStore store;
        QVERIFY2(store.open(StoreAddress(TestServer::freshDatabase(QStringLiteral("club"))), {}),
                 qPrintable(store.lastError()));
        const qint64 ann = store.insertPlayer(QStringLiteral("Ann")).value_or(-1);
        const qint64 bob = store.insertPlayer(QStringLiteral("Bob")).value_or(-1);
        // Interleaved, so that no player's rows sit together on the server.
        playGame(store, ann, QStringLiteral("W"), {{20, 3}, {20, 3}, {20, 3}, {20, 3}, {7, 3}, {20, 2}}, 301, 121);
        playGame(store, bob, QStringLiteral("L"), {{20, 1}, {5, 1}, {1, 1}}, 26, 0);
        playGame(store, bob, QStringLiteral("W"),
                 {{20, 3}, {20, 3}, {20, 3}, {20, 3}, {7, 3}, {20, 1}, {10, 1}, {5, 2}}, 301, 20);
        playGame(store, ann, QStringLiteral("L"), {{19, 3}, {19, 1}, {0, 0}}, 76, 0);
        playDrill(store, ann, 4, 120);
        playDrill(store, bob, 4, 45);
        playDrill(store, bob, 1, 33);
        playDrill(store, ann, 4, 80);

        std::optional<std::vector<ClubPlayerRows>> rows = store.clubRows();
        QVERIFY2(rows, qPrintable(store.lastError()));
        const std::vector<ClubLine> lines = clubLines(*rows, std::nullopt);
        QCOMPARE(lines.size(), size_t(2));
        for (const qint64 player : {ann, bob}) {
            const ClubLine *line = lineOf(lines, player);
            QVERIFY(line);
            std::optional<StatisticsRows> own = store.statisticsRows(player);
            QVERIFY(own);
            const PlayerStatistics expected = playerStatistics(*own, std::nullopt);
            const StatisticsTexts texts = statisticsTexts(expected);
            QCOMPARE(line->name, store.playerName(player).value_or(QString()));
            QCOMPARE(line->games, expected.x01.games);
            QCOMPARE(line->texts.average, texts.average);
            QCOMPARE(line->texts.checkout, texts.checkout);
            QCOMPARE(line->drills.size(), expected.drills.size());
            for (size_t i = 0; i < line->drills.size(); ++i)
                QCOMPARE(line->drills[i].best, expected.drills[i].best);
        }
        // Worked out by hand: Ann 377 points in 9 darts, one dart thrown at a
        // finish and it finished; Bob one of three. Two drill kinds played.
        QCOMPARE(lineOf(lines, ann)->games, 2);
        QCOMPARE(*lineOf(lines, ann)->average, 377.0 * 3 / 9);
        QCOMPARE(*lineOf(lines, ann)->checkoutRate, 100.0);
        QCOMPARE(*lineOf(lines, bob)->checkoutRate, 100.0 / 3);
        QCOMPARE(clubBest(*lineOf(lines, ann), {4, 0}), std::optional<int>(120));
        QCOMPARE(clubDrills(lines).size(), size_t(2));

        QVERIFY(store.setHiddenFromClub(bob, true));
        QVERIFY(store.setHiddenFromClub(bob, true)); // twice is still once
        QCOMPARE(store.isHiddenFromClub(bob), std::optional<bool>(true));
        QCOMPARE(store.isHiddenFromClub(ann), std::optional<bool>(false));
        rows = store.clubRows();
        QVERIFY(rows);
        QCOMPARE(rows->size(), size_t(1));
        QCOMPARE(rows->front().playerId, ann);
        QVERIFY(store.setHiddenFromClub(bob, false));
        QCOMPARE(store.clubRows()->size(), size_t(2));

        // Ann's won game moves back before the period.
        QSqlQuery move(store.connection());
        QVERIFY(move.exec(QStringLiteral("UPDATE games SET creationdate = '2020-01-01 10:00:00' WHERE result = 'W'"
                                         " AND players_id = %1").arg(ann)));
        const qint64 now = *localSeconds(
            QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")).toStdString());
        QVERIFY(store.clubRows());
        const std::vector<ClubLine> recent = clubLines(*store.clubRows(), periodStart(StatsPeriod::Last30Days, now));
        QCOMPARE(lineOf(recent, ann)->games, 1);
        QCOMPARE(*lineOf(recent, ann)->average, 76.0);
        QCOMPARE(lineOf(recent, bob)->games, 2);
    }

    // A file has no club page: every call says so and nothing is written.
    void aFileRefusesTheClubCalls()
    {
        QTemporaryDir dir;
        StatsStore store;
        QVERIFY(store.open(dir.filePath(QStringLiteral("t.db"))));
        QVERIFY(!store.clubRows());
        QVERIFY(store.lastError().contains(QStringLiteral("server")));
        QVERIFY(!store.isHiddenFromClub(1));
        QVERIFY(!store.setHiddenFromClub(1, true));
        QVERIFY(store.lastError().contains(QStringLiteral("server")));
    }

    // A server database of version 4 gets the club's tables, counted as a change,
    // when a board of this version opens it.
    void anOlderServerDatabaseGetsTheClubTable()
    {
        const ServerAddress server = TestServer::freshDatabase(QStringLiteral("clubolder"));
        {
            StatsStore store(QStringLiteral("first"));
            QVERIFY(store.open(StoreAddress(server), {}));
            QSqlQuery query(store.connection());
            QVERIFY(query.exec(QStringLiteral("DROP TABLE clubhidden, clubcopies")));
            QVERIFY(query.exec(QStringLiteral("DELETE FROM schemaversions WHERE version >= 5")));
        }
        StatsStore store(QStringLiteral("second"));
        QVERIFY2(store.open(StoreAddress(server), {}), qPrintable(store.lastError()));
        QSqlQuery query(store.connection());
        QVERIFY(query.exec(QStringLiteral("SELECT max(version) FROM schemaversions")) && query.next());
        QCOMPARE(query.value(0).toInt(), 6);
        const qint64 ann = store.insertPlayer(QStringLiteral("Ann")).value_or(-1);
        const std::optional<StoreVersion> before = store.storeVersion();
        QVERIFY2(store.setHiddenFromClub(ann, true), qPrintable(store.lastError()));
        QVERIFY(store.storeVersion() != before);
        QCOMPARE(store.clubRows()->size(), size_t(0));
    }
};

QTEST_GUILESS_MAIN(TestClubStore)
#include "tst_club_store.moc"
