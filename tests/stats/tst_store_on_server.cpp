// The store on a PostgreSQL server against the store on a file: one round
// of everything the program writes and reads, with the odd rows older
// programs and hand edits leave, run on both, gives the same ids, rows,
// figures and dropped practice sums; two boards writing at once lose and mix
// nothing; and a server that stops in the middle of a game loses no set.

#include "../support/sql_rows.h"
#include "../support/statistics_rows_text.h"
#include "../support/test_server.h"
#include "core/export/darts_csv.h"
#include "core/stats/game_journal.h"
#include "core/stats/stats_store.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QScopeGuard>

#include <algorithm>

using namespace tavrix;

namespace {

QString line(const QString &label, const QStringList &values)
{
    return label + QStringLiteral(": ") + values.join(QLatin1Char(' '));
}

template <typename T>
QString text(const std::optional<T> &value)
{
    return value ? QString::number(*value) : QStringLiteral("none");
}

// Everything the program does with a store, once, with what each step
// gives written down.
QStringList exercise(StatsStore &store)
{
    QStringList log;
    const qint64 ann = store.insertPlayer(QStringLiteral("Ann")).value_or(-1);
    const qint64 bob = store.insertPlayer(QStringLiteral("Bob O'Neil'); --")).value_or(-1);
    store.renamePlayer(ann, QStringLiteral("Ann Ö"));
    log << line(QStringLiteral("players"), {QString::number(ann), QString::number(bob),
                                            text(store.playerIdByName(QStringLiteral("Bob O'Neil'); --"))),
                                            store.playerName(ann).value_or(QStringLiteral("?")),
                                            text(store.playerCount())});

    const qint64 game = store.insertGame({ann, GameType::X01_501, SkillLevel::Master, QStringLiteral("Computer")})
                            .value_or(-1);
    {
        StatsAccess::Batch batch(store);
        for (int set = 1; set <= 3; ++set)
            for (int dart = 0; dart < 3; ++dart)
                store.insertGameDart({game, ann, set, dart, 0.1 * set, -0.2 * dart, 0.35 * (set + dart),
                                      20 - dart, dart % 3 + 1, 20, 3});
        log << line(QStringLiteral("batch"), {QString::number(batch.commit())});
    }
    store.finishGame(game, {QStringLiteral("W"), 9, 501, 180, 141});
    // A game kept through a lost connection comes back with its own id, and
    // the next new game takes the id after it.
    store.restoreGame(40, {bob, GameType::Cricket, SkillLevel::You, QStringLiteral("Ann")},
                      QStringLiteral("Bob O'Neil'); --"));
    const qint64 after = store.insertGame({bob, GameType::X01_301, SkillLevel::BPlayer, QStringLiteral("x")})
                             .value_or(-1);
    store.insertGameDart({after, bob, 1, 0, 0.5, 0.5, 0.7, 5, 1, 20, 1});
    store.finishGame(after, {QStringLiteral("L"), 3, 5, 5, 0});
    log << line(QStringLiteral("games"), {QString::number(game), QString::number(after)});

    const qint64 target = store.insertStatTarget(ann, 19, 2).value_or(-1);
    for (int seq = 0; seq < 4; ++seq)
        store.insertStatThrow({ann, target, seq, 0.01 * seq, 0.02, 0.03 * seq + 0.1, 19, seq % 2 ? 2 : 1});
    PracticeSums sums;
    sums.lastTarget = target;
    sums.distCount = 4;
    sums.distSum = 0.58;
    sums.targets[{19, 2}] = {4, 2, 4, 0.58};
    store.keepPracticeSums(ann, sums);
    log << line(QStringLiteral("kept sums"), {QString::number(store.keptPracticeSums(ann).value_or(PracticeSums{}) == sums)});
    // A new dart drops the kept sums, by the database's own triggers.
    store.insertStatThrow({ann, target, 4, 0.05, 0.02, 0.4, 3, 1});
    log << line(QStringLiteral("sums after a dart"), {QString::number(store.keptPracticeSums(ann).has_value()),
                                                      QString::number(store.keptPracticeSums(ann)->lastTarget)});
    QStringList practice;
    store.readPracticeDarts(ann, [&](int value, int ring, const PracticeDart &dart) {
        practice << QStringLiteral("%1/%2:%3,%4").arg(value).arg(ring).arg(dart.score).arg(dart.ring);
    });
    log << line(QStringLiteral("practice darts"), practice);

    const qint64 drill = store.insertDrill({ann, 4, 20}).value_or(-1);
    store.insertDrillSet({{drill, ann, 1, 0, 0.1, 0.1, 0.2, 20, 2, 20, 2, 0, 0.6},
                          {drill, ann, 1, 1, 0.2, 0.1, 0.3, 5, 1, 20, 2, 0, 0.6}});
    store.finishDrill(drill, {60, true, false});
    const std::optional<std::vector<DrillRow>> drills = store.drillRows(ann);
    log << line(QStringLiteral("drills"),
                {QString::number(drill), QString::number(drills ? drills->size() : 99),
                 drills && !drills->empty() ? QString::number(drills->front().score) : QString(),
                 text(store.bestDrillScore(ann, 4, 20, false).value_or(std::nullopt))});

    const qint64 match = store.insertMatch({ann, GameType::X01_501, SkillLevel::Master, QStringLiteral("Computer"),
                                            1, 1, 3})
                             .value_or(-1);
    store.insertMatchLeg({match, game, 1, 1, 2});
    store.finishMatch(match, {QStringLiteral("W"), 2, 1, 0, 0, 1002, 60, 900, 63});
    store.restoreMatch(30, {bob, GameType::Cricket, SkillLevel::You, QStringLiteral("Ann"), 1, 1, 3});
    log << line(QStringLiteral("matches"), {QString::number(match),
                                            text(store.insertMatch({bob, GameType::X01_301, SkillLevel::BPlayer,
                                                                    QStringLiteral("x"), 1, 1, 3}))});

    const auto edit = [&](const QStringList &statements) {
        QSqlQuery query(store.connection());
        for (const QString &statement : statements) {
            if (!query.exec(statement))
                log << line(QStringLiteral("edit failed"), {statement, query.lastError().text()});
        }
    };
    // What older programs and hand edits leave: no place or distance, times
    // of other forms, a throw whose set is gone, results no program writes.
    edit({QStringLiteral("UPDATE gamesdarts SET x = NULL, dist = NULL WHERE setseq = 2"),
          QStringLiteral("UPDATE gamesdarts SET targetring = -3 WHERE setseq = 3 AND dartseq = 2"),
          QStringLiteral("UPDATE games SET creationdate = NULL, result = 'WL', gametype = 9 WHERE id = 40"),
          QStringLiteral("UPDATE games SET creationdate = '2026-03-01' WHERE id = 41"),
          QStringLiteral("UPDATE statstargets SET creationdate = 'soon'"),
          QStringLiteral("UPDATE statsthrows SET statstargets_id = 999, y = NULL WHERE seq = 2"),
          QStringLiteral("UPDATE matches SET result = 'X', enddate = '2026-02-02' WHERE id = 30"),
          QStringLiteral("UPDATE matches SET result = 'A', enddate = '2026-02-02 10:00:00' WHERE id = 31")});

    // Each write to practice darts or targets drops the kept sums of the
    // players it touches, by the database's own triggers: a dart's thrower
    // and its target's owner, before and after; a new target's owner only
    // when darts already name its id. Players 101 to 105 keep sums before
    // each write.
    edit({QStringLiteral("INSERT INTO statstargets (id, players_id) VALUES (1001, 101), (1002, 102)"),
          QStringLiteral("INSERT INTO statsthrows (id, players_id, statstargets_id)"
                         " VALUES (1001, 103, 1001), (1002, 103, 1007)")});
    QStringList sumsLeft;
    for (const char *write : {"INSERT INTO statsthrows (id, players_id, statstargets_id) VALUES (1010, 104, 1002)",
                              "UPDATE statsthrows SET players_id = 104, statstargets_id = 1002 WHERE id = 1001",
                              "DELETE FROM statsthrows WHERE id = 1001",
                              "INSERT INTO statstargets (id, players_id) VALUES (1003, 105)",
                              "INSERT INTO statstargets (id, players_id) VALUES (1007, 105)",
                              "DELETE FROM statstargets WHERE id = 1002",
                              "UPDATE statstargets SET players_id = 104 WHERE id = 1001"}) {
        edit({QStringLiteral("DELETE FROM practicesums WHERE players_id > 100"),
              QStringLiteral("INSERT INTO practicesums (players_id, distcount)"
                             " VALUES (101, 1), (102, 1), (103, 1), (104, 1), (105, 1)"),
              QString::fromLatin1(write)});
        QStringList left;
        for (const QVariantList &row : sqlRows(store.connection(), QStringLiteral("SELECT players_id FROM practicesums"
                                                                                  " WHERE players_id > 100 ORDER BY 1")))
            left << row[0].toString();
        sumsLeft << left.join(QLatin1Char(' '));
    }
    log << line(QStringLiteral("sums left"), {sumsLeft.join(QStringLiteral(" | "))});
    edit({QStringLiteral("DELETE FROM statsthrows WHERE id > 1000"),
          QStringLiteral("DELETE FROM statstargets WHERE id > 1000"),
          QStringLiteral("DELETE FROM practicesums WHERE players_id > 100")});

    const std::optional<DistanceQuarters> quarters = store.distanceQuarters(ann, 3);
    log << line(QStringLiteral("quarters"),
                {QString::number(quarters ? quarters->sampleCount : -1), QString::number(quarters->average, 'f', 6),
                 QString::number(quarters->tightestMax, 'f', 6), QString::number(quarters->widestMax, 'f', 6)});
    const std::optional<TargetCounts> counts = store.targetCounts(ann);
    log << line(QStringLiteral("counts"), {QString::number(counts ? (*counts)[2][19] : -1),
                                           QString::number((*counts)[2][20]), QString::number((*counts)[1][19])});
    const std::optional<AreaDarts> area = store.areaDarts(ann, 20, 3);
    QStringList areaText;
    for (const AreaDart &dart : area ? area->game : std::vector<AreaDart>{})
        areaText << QStringLiteral("%1,%2:%3/%4").arg(dart.x).arg(dart.y).arg(dart.score).arg(dart.ring);
    log << line(QStringLiteral("area"), areaText);
    const std::optional<GameRecordFigures> record = store.gameRecord(ann, GameType::X01_501, SkillLevel::Master);
    log << line(QStringLiteral("record"), {QString::number(record ? record->wins : -1), QString::number(record->losses),
                                           QString::number(record->bestLeg), QString::number(record->bestOut)});
    for (const qint64 player : {ann, bob}) {
        // A server may give the aimed darts of a player in another order.
        QStringList aimed;
        store.readAimedDarts(player, [&](int value, int ring, double x, double y) {
            aimed << QStringLiteral("%1/%2@%3,%4").arg(value).arg(ring).arg(x, 0, 'g', 17).arg(y, 0, 'g', 17);
        });
        aimed.sort();
        log << line(QStringLiteral("aimed"), aimed);
        const std::optional<StatisticsRows> rows = store.statisticsRows(player);
        log << line(QStringLiteral("statistics rows"), rows ? rowsText(*rows) : QStringList{QStringLiteral("none")});
    }

    const std::optional<StoreVersion> before = store.storeVersion();
    store.players();
    log << line(QStringLiteral("version after a read"), {QString::number(store.storeVersion() == before)});
    store.insertPlayer(QStringLiteral("Cy"));
    log << line(QStringLiteral("version after a write"), {QString::number(store.storeVersion() == before)});

    const std::optional<QList<StoredChartRow>> chart = store.storedOutchartRows();
    log << line(QStringLiteral("chart"), {QString::number(chart ? chart->size() : -1),
                                          chart ? chart->front().row.singleOut : QString()});
    store.replaceOutchartRows({chart->front().rowId}, {{170, QStringLiteral("T20 T20 Bull"), QString()}});
    log << line(QStringLiteral("chart repaired"), {QString::number(store.outchartRows()->size()),
                                                   store.outchartRows()->back().singleOut});

    QTemporaryDir dir;
    const QString csv = dir.filePath(QStringLiteral("darts.csv"));
    const ExportOutcome exported = exportDartsCsv(store, std::nullopt, csv);
    QFile file(csv);
    file.open(QIODevice::ReadOnly);
    QStringList csvLines;
    for (const QByteArray &row : file.readAll().split('\n')) {
        QList<QByteArray> fields = row.split(',');
        // The times are those of the run.
        if (fields.size() > 2)
            fields[2] = "time";
        csvLines << QString::fromUtf8(fields.join(','));
    }
    log << line(QStringLiteral("export"), {QString::number(exported.rows)}) << csvLines;

    store.resetPlayerStats(bob);
    store.deletePlayer(ann);
    log << line(QStringLiteral("after reset and delete"),
                {text(store.playerCount()), text(store.exportDartCount(std::nullopt)),
                 text(store.exportDartCount(bob))});
    log << line(QStringLiteral("error"), {store.lastError()});
    return log;
}

} // namespace

class TestStoreOnServer : public QObject {
    Q_OBJECT

private slots:
    void sameIdsRowsAndFiguresAsAFile()
    {
        QTemporaryDir dir;
        StatsStore file(QStringLiteral("file"));
        QVERIFY2(file.open(dir.filePath(QStringLiteral("tavrix.db"))), qPrintable(file.lastError()));
        StatsStore server(QStringLiteral("server"));
        QVERIFY2(server.open(StoreAddress(TestServer::freshDatabase(QStringLiteral("same")))),
                 qPrintable(server.lastError()));
        QVERIFY(server.server());
        const QStringList onFile = exercise(file);
        const QStringList onServer = exercise(server);
        QCOMPARE(onServer, onFile);
        // The round did everything it meant to.
        QVERIFY2(onFile.contains(QStringLiteral("games: 1 41")), qPrintable(onFile.join(QLatin1Char('\n'))));
        QVERIFY(onFile.contains(QStringLiteral("error: ")));
        QCOMPARE(onFile.filter(QStringLiteral("edit failed")), QStringList());
        QVERIFY(onFile.contains(QStringLiteral("sums left: 101 103 105 | 105 | 101 103 105 | 101 102 103 104 105"
                                               " | 101 102 103 104 | 101 103 104 105 | 102 103 105")));
    }

    // Two boards play a game each at the same moment, each set in its own
    // transaction: every dart is there, in its own game, in order.
    void twoBoardsWriteAtOnce()
    {
        const ServerAddress server = TestServer::freshDatabase(QStringLiteral("boards"));
        {
            StatsStore maker(QStringLiteral("maker"));
            QVERIFY2(maker.open(StoreAddress(server)), qPrintable(maker.lastError()));
        }
        constexpr int sets = 40;
        QString errors[2];
        qint64 games[2] = {0, 0};
        const auto board = [&](int which) {
            StatsStore store(QStringLiteral("board%1").arg(which));
            if (!store.open(StoreAddress(server))) {
                errors[which] = store.lastError();
                return;
            }
            const qint64 player = store.insertPlayer(QStringLiteral("Player %1").arg(which)).value_or(0);
            GameJournal journal(store);
            games[which] = journal.startGame({player, GameType::X01_501, SkillLevel::You, QStringLiteral("x")},
                                             QStringLiteral("Player %1").arg(which))
                               .value_or(0);
            for (int set = 1; set <= sets; ++set) {
                QList<GameDart> darts;
                for (int dart = 0; dart < 3; ++dart)
                    darts.append({games[which], player, set, dart, 0.1, 0.1, 0.2, 20, 1, 20, 3});
                if (!journal.record(darts))
                    errors[which] += store.lastError();
            }
        };
        QThread *threads[] = {QThread::create(board, 0), QThread::create(board, 1)};
        for (QThread *thread : threads)
            thread->start();
        for (QThread *thread : threads) {
            QVERIFY(thread->wait(60000));
            delete thread;
        }
        QCOMPARE(errors[0] + errors[1], QString());
        StatsStore reader(QStringLiteral("reader"));
        QVERIFY(reader.open(StoreAddress(server)));
        QSqlQuery query(reader.connection());
        for (const qint64 game : games) {
            QVERIFY(game > 0);
            query.prepare(QStringLiteral("SELECT count(*), count(DISTINCT players_id), count(DISTINCT setseq),"
                                         " min(setseq), max(setseq) FROM gamesdarts WHERE games_id = ?"));
            query.addBindValue(game);
            QVERIFY(query.exec() && query.next());
            QCOMPARE(query.value(0).toInt(), sets * 3);
            QCOMPARE(query.value(1).toInt(), 1);
            QCOMPARE(query.value(2).toInt(), sets);
            QCOMPARE(query.value(4).toInt(), sets);
        }
    }

    // The server stops after the first set and starts again: the second
    // set waits in memory, and is written when the server is back, through
    // a new connection.
    void aServerThatStopsLosesNoSet()
    {
        QString uri, dir, error;
        QVERIFY2(TestServer::startCluster(uri, dir, error), qPrintable(error));
        const auto cleanup = qScopeGuard([&] { TestServer::clusterCommand(QStringLiteral("stop"), dir); });
        const auto read = readStoreAddress(uri);
        StatsStore store(QStringLiteral("restarted"));
        QVERIFY2(store.open(std::get<StoreAddress>(read)), qPrintable(store.lastError()));
        const qint64 ann = store.insertPlayer(QStringLiteral("Ann")).value_or(0);
        GameJournal journal(store);
        const qint64 game =
            journal.startGame({ann, GameType::X01_501, SkillLevel::You, QStringLiteral("x")}, QStringLiteral("Ann"))
                .value_or(0);
        const auto set = [&](int number) {
            QList<GameDart> darts;
            for (int dart = 0; dart < 3; ++dart)
                darts.append({game, ann, number, dart, 0.1, 0.1, 0.2, 20, 1, 20, 3});
            return darts;
        };
        QVERIFY(journal.record(set(1)));
        QVERIFY(TestServer::clusterCommand(QStringLiteral("halt"), dir));
        QVERIFY(!journal.record(set(2)));
        QCOMPARE(journal.pendingRows(), 3);
        QVERIFY2(store.lastError().contains(QLatin1String("club database")), qPrintable(store.lastError()));
        // Still away: the set stays kept.
        QVERIFY(!journal.flush());
        QVERIFY2(store.lastError().contains(QLatin1String("nothing answers there")), qPrintable(store.lastError()));
        QVERIFY(TestServer::clusterCommand(QStringLiteral("resume"), dir));
        QVERIFY2(journal.record(set(3), std::pair{game, GameResult{QStringLiteral("W"), 9, 501, 100, 100}}),
                 qPrintable(store.lastError()));
        QCOMPARE(journal.pendingRows(), 0);
        QSqlQuery query(store.connection());
        QVERIFY(query.exec(QStringLiteral("SELECT setseq, count(*) FROM gamesdarts GROUP BY setseq ORDER BY setseq")));
        QStringList sets;
        while (query.next())
            sets << QStringLiteral("%1x%2").arg(query.value(0).toInt()).arg(query.value(1).toInt());
        QCOMPARE(sets, QStringList({"1x3", "2x3", "3x3"}));
        QVERIFY(query.exec(QStringLiteral("SELECT result FROM games")) && query.next());
        QCOMPARE(query.value(0).toString(), QStringLiteral("W"));
    }
};

QTEST_GUILESS_MAIN(TestStoreOnServer)
#include "tst_store_on_server.moc"
