// A player's statistics copied from a file into the club's database: every
// row of the player's, and only the player's, arrives under the club's
// player with its darts and its legs' games; copying again writes nothing,
// new rows in the file are copied alone, and a reset lets all of it be
// copied again. A file refuses to be copied into.

#include "../support/test_server.h"
#include "core/stats/stats_store.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrix;

namespace {

qint64 playGame(StatsStore &store, qint64 player, int darts, int points)
{
    const qint64 game = store.insertGame({player, GameType::X01_301, SkillLevel::Master, QStringLiteral("CPU")})
                            .value_or(-1);
    for (int i = 0; i < darts; ++i)
        [&] { QVERIFY(store.insertGameDart({game, player, i / 3 + 1, i % 3, 1.5 * i, -1.0 * i, 1.0 * i, 20 - i, i % 4, 20, 3})); }();
    [&] { QVERIFY(store.finishGame(game, {QStringLiteral("W"), darts, points, 60, 3})); }();
    return game;
}

// Everything of the player's that a copy carries, without the ids, each
// dart with what identifies its game, target, drill or match.
QStringList playerRows(StatsStore &store, qint64 player)
{
    static const char *const reads[] = {
        "SELECT creationdate, gametype, skill, opponent, result, throws, points, bestset, outset FROM games"
        " WHERE players_id = ? ORDER BY id",
        "SELECT g.points, d.setseq, d.dartseq, d.x, d.y, d.dist, d.score, d.ring, d.targetscore, d.targetring"
        " FROM gamesdarts d JOIN games g ON g.id = d.games_id WHERE d.players_id = ? ORDER BY g.id, d.setseq, d.dartseq",
        "SELECT t.targetValue, t.targetRing, s.seq, s.x, s.y, s.dist, s.score, s.ring FROM statsthrows s"
        " JOIN statstargets t ON t.id = s.statstargets_id WHERE s.players_id = ? ORDER BY t.id, s.seq",
        "SELECT kind, target, score, completed, quit FROM drills WHERE players_id = ? ORDER BY id",
        "SELECT r.kind, d.setseq, d.dartseq, d.x, d.y, d.aimx, d.aimy, d.score FROM drilldarts d"
        " JOIN drills r ON r.id = d.drills_id WHERE d.players_id = ? ORDER BY r.id, d.setseq, d.dartseq",
        "SELECT m.opponent, m.result, m.playerlegs, l.setno, l.legno, l.firstthrower, g.points FROM matchlegs l"
        " JOIN matches m ON m.id = l.matches_id JOIN games g ON g.id = l.games_id WHERE m.players_id = ?"
        " ORDER BY m.id, l.setno, l.legno",
    };
    QStringList rows;
    for (const char *read : reads) {
        QSqlQuery query(store.connection());
        query.prepare(QString::fromLatin1(read));
        query.addBindValue(player);
        if (!query.exec())
            return {query.lastError().text()};
        while (query.next()) {
            QStringList values;
            for (int column = 0; column < query.record().count(); ++column)
                values << query.value(column).toString();
            rows << values.join(QLatin1Char('|'));
        }
    }
    return rows;
}

qint64 count(StatsStore &store, const char *table)
{
    QSqlQuery query(store.connection());
    query.exec(QStringLiteral("SELECT count(*) FROM %1").arg(QString::fromLatin1(table)));
    return query.next() ? query.value(0).toLongLong() : -1;
}

} // namespace

class TestClubCopy : public QObject {
    Q_OBJECT

private slots:
    void aPlayersRowsAreCopiedOnce()
    {
        QTemporaryDir dir;
        StatsStore file(QStringLiteral("file"));
        QVERIFY(file.open(dir.filePath(QStringLiteral("local.db"))));
        // Bob's rows come first in the file, so Ann's ids differ from the
        // ids the server gives; none of Bob's is copied.
        const qint64 bob = file.insertPlayer(QStringLiteral("Bob")).value_or(-1);
        const qint64 ann = file.insertPlayer(QStringLiteral("Ann")).value_or(-1);
        playGame(file, bob, 6, 99);
        playGame(file, ann, 9, 301);
        const qint64 target = file.insertStatTarget(ann, 20, 3).value_or(-1);
        for (int seq = 0; seq < 3; ++seq)
            QVERIFY(file.insertStatThrow({ann, target, seq, 1.0 * seq, 2.0 * seq, 1.0 * seq, 20, seq % 4}));
        const qint64 drill = file.insertDrill({ann, 2, 20}).value_or(-1);
        QVERIFY(file.insertDrillSet({{drill, ann, 1, 0, 1, 2, 3, 20, 1, 20, 1, 0.5, -0.5},
                                     {drill, ann, 1, 1, 4, 5, 6, 5, 1, 20, 1, 0.5, -0.5}}));
        QVERIFY(file.finishDrill(drill, {7, true, false}));
        const qint64 match = file.insertMatch({ann, GameType::X01_301, SkillLevel::Master, QStringLiteral("CPU"), 1, 1, 3})
                                 .value_or(-1);
        for (int leg = 1; leg <= 2; ++leg)
            QVERIFY(file.insertMatchLeg({match, playGame(file, ann, 3 * leg, 100 + leg), 1, leg, leg}));
        QVERIFY(file.finishMatch(match, {QStringLiteral("W"), 2, 0, 0, 0, 203, 9, 150, 9}));

        StatsStore club(QStringLiteral("club"));
        QVERIFY2(club.open(StoreAddress(TestServer::freshDatabase(QStringLiteral("clubcopy"))), {}),
                 qPrintable(club.lastError()));
        const qint64 zed = club.insertPlayer(QStringLiteral("Zed")).value_or(-1);
        playGame(club, zed, 3, 50);
        const qint64 clubAnn = club.insertPlayer(QStringLiteral("Ann")).value_or(-1);

        std::optional<CopiedRows> copied = club.copyPlayerFrom(file, ann, clubAnn);
        QVERIFY2(copied, qPrintable(club.lastError()));
        QCOMPARE((QList<qint64>{copied->games, copied->gameDarts, copied->targets, copied->practiceDarts,
                                copied->drills, copied->drillDarts, copied->matches}),
                 (QList<qint64>{3, 18, 1, 3, 1, 2, 1}));
        const QStringList annRows = playerRows(file, ann);
        QCOMPARE(annRows.size(), 3 + 18 + 3 + 1 + 2 + 2);
        QCOMPARE(playerRows(club, clubAnn), annRows);
        QCOMPARE(club.distanceQuarters(clubAnn, 1)->sampleCount, file.distanceQuarters(ann, 1)->sampleCount);

        // Again: nothing is written, and the database is as it was.
        const qint64 darts = count(club, "gamesdarts");
        copied = club.copyPlayerFrom(file, ann, clubAnn);
        QVERIFY(copied && !copied->any() && copied->gameDarts == 0);
        QCOMPARE(count(club, "gamesdarts"), darts);
        QCOMPARE(playerRows(club, clubAnn), annRows);

        // A game played in the file since, under a new name: that game alone.
        QVERIFY(file.renamePlayer(ann, QStringLiteral("Ann O'Neil")));
        playGame(file, ann, 6, 77);
        copied = club.copyPlayerFrom(file, ann, clubAnn);
        QVERIFY(copied && copied->games == 1 && copied->gameDarts == 6 && copied->targets == 0);
        QCOMPARE(playerRows(club, clubAnn), playerRows(file, ann));

        // After a reset everything is copied again; Zed's rows never change.
        QVERIFY(club.resetPlayerStats(clubAnn));
        copied = club.copyPlayerFrom(file, ann, clubAnn);
        QVERIFY(copied && copied->games == 4 && copied->matches == 1);
        QCOMPARE(playerRows(club, clubAnn), playerRows(file, ann));
        QCOMPARE(playerRows(club, zed).size(), 1 + 3);

        // Into a file there is no copy.
        StatsStore other(QStringLiteral("other"));
        QVERIFY(other.open(dir.filePath(QStringLiteral("other.db"))));
        QVERIFY(!other.copyPlayerFrom(file, ann, 1));
        QVERIFY(other.lastError().contains(QStringLiteral("not kept in a club database")));
    }
};

QTEST_GUILESS_MAIN(TestClubCopy)
#include "tst_club_copy.moc"
