// The training drills in the statistics file: the tables a file of the
// version before gains, the drills and their darts written and read back,
// and which of the player's reads count drill darts.

#include "../support/data_table.h"
#include "../support/lost_file.h"
#include "../support/store_fixture.h"
#include "core/stats/sqlite_schema.h"
#include "core/stats/stats_store.h"

#include <QDateTime>
#include <QTest>

using namespace tavrix;

namespace {

// Every row of the tables the program had before the drills, and their
// definitions.
QList<QVariantList> olderTables(const QString &path)
{
    const OtherConnection db(path, QStringLiteral("older"));
    QList<QVariantList> rows = db.rows(QStringLiteral(
        "SELECT type, name, sql FROM sqlite_master WHERE name NOT LIKE 'drill%' AND name NOT LIKE 'match%'"
        " ORDER BY name"));
    for (const char *table : {"players", "games", "gamesdarts", "statstargets", "statsthrows", "outchart",
                              "practicesums", "practicetargetsums"})
        rows += db.rows(QStringLiteral("SELECT '%1', * FROM %1 ORDER BY rowid").arg(QLatin1String(table)));
    return rows;
}

// A file of this version turned into one of the version before the drills
// (and the matches after them).
QStringList toVersionBeforeDrills()
{
    return {QStringLiteral("DROP TABLE matchlegs"), QStringLiteral("DROP TABLE matches"),
            QStringLiteral("DROP TABLE drilldarts"), QStringLiteral("DROP TABLE drills"),
            QStringLiteral("PRAGMA user_version = 2")};
}

QList<QVariantList> everything(const QString &path)
{
    const OtherConnection db(path, QStringLiteral("everything"));
    QList<QVariantList> rows = olderTables(path);
    rows += db.rows(QStringLiteral("SELECT type, name, sql FROM sqlite_master WHERE name LIKE 'drill%' ORDER BY name"));
    rows += db.rows(QStringLiteral("SELECT * FROM drills ORDER BY id"));
    rows += db.rows(QStringLiteral("SELECT * FROM drilldarts ORDER BY rowid"));
    rows += db.rows(QStringLiteral("PRAGMA user_version"));
    return rows;
}

DrillDart drillDart(qint64 drill, qint64 player, int dartSeq, int targetScore, int targetRing, int score = 20,
                    int ring = 1)
{
    return {drill, player, 1, dartSeq, 1.5 + dartSeq, -2.25, 3.5, score, ring, targetScore, targetRing, 0.5, 0.75};
}

} // namespace

class TestDrillStore : public QObject, StoreFixture {
    Q_OBJECT

    // A file as the version before the drills left it: a row in each table
    // of the darts, the practice sums kept.
    QString previousVersionFile(const QString &name) const { return fileWithRows(name, toVersionBeforeDrills()); }

    qint64 endedDrill(qint64 player, int kind, int target, DrillEnd end)
    {
        const qint64 drill = store_.insertDrill({player, kind, target}).value_or(0);
        if (!store_.finishDrill(drill, end))
            qWarning("%s", qPrintable(store_.lastError()));
        return drill;
    }

private slots:
    void init() { openNewStore(); }
    void cleanup() { store_.close(); }

    // A file of the version before gains the drills' tables on opening and
    // keeps every row and definition it had; opened again, nothing changes.
    void previousVersionIsUpgradedOnceKeepingEveryRow()
    {
        const QString path = previousVersionFile(QStringLiteral("previous.db"));
        const QList<QVariantList> before = olderTables(path);
        QVERIFY(before.size() > 180 + 5);
        {
            StatsStore store(QStringLiteral("upgrade"));
            QVERIFY2(store.open(path), qPrintable(store.lastError()));
            const qint64 drill = *store.insertDrill({1, 4, 0});
            QVERIFY2(store.insertDrillSet({drillDart(drill, 1, 0, 1, 2)}), qPrintable(store.lastError()));
        }
        QCOMPARE(olderTables(path), before);
        const OtherConnection db(path);
        QCOMPARE(db.value(QStringLiteral("PRAGMA user_version")).toInt(), newestSchemaVersion());
        QCOMPARE(db.rows(QStringLiteral("SELECT name FROM sqlite_master WHERE name LIKE 'drill%' ORDER BY name")),
                 (QList<QVariantList>{{"drilldarts"}, {"drilldarts_player_target"}, {"drills"}, {"drills_player"}}));
        const QList<QVariantList> upgraded = everything(path);
        {
            StatsStore store(QStringLiteral("again"));
            QVERIFY2(store.open(path), qPrintable(store.lastError()));
        }
        QCOMPARE(everything(path), upgraded);
    }

    // A backup of the version before is still ours and is brought up to
    // date on restore; one of this version must hold the drills' tables.
    void restoreTakesBackupsWithAndWithoutDrills_data()
    {
        addTable<QStringList, QString>(
            {"changes", "refusal"},
            {{"previous version", toVersionBeforeDrills(), ""},
             {"this version", {}, ""},
             {"this version without drills", {QStringLiteral("DROP TABLE drilldarts")}, "it has no table drilldarts"}});
    }
    void restoreTakesBackupsWithAndWithoutDrills()
    {
        QFETCH(QStringList, changes);
        QFETCH(QString, refusal);
        const QString backup = dir_->filePath(QStringLiteral("backup.db"));
        {
            StatsStore maker(QStringLiteral("maker"));
            QVERIFY(maker.open(backup));
            QVERIFY(maker.insertPlayer(QStringLiteral("Ann")));
        }
        QVERIFY(OtherConnection(backup).exec(changes));
        QCOMPARE(store_.restoreFrom(backup), refusal.isEmpty());
        QVERIFY2(store_.lastError().contains(refusal), qPrintable(store_.lastError()));
        if (!refusal.isEmpty())
            return;
        QCOMPARE(*store_.playerIdByName(QStringLiteral("Ann")), qint64(1));
        const qint64 drill = *store_.insertDrill({1, 10, 20});
        QVERIFY2(store_.insertDrillSet({drillDart(drill, 1, 0, 20, 1)}), qPrintable(store_.lastError()));
        QVERIFY(store_.finishDrill(drill, {312, true, false}));
        QCOMPARE(store_.drillRows(1)->size(), std::size_t(1));
    }

    // What is written is what another program reads; only ended drills are
    // read back, by their end, and finishing a drill that is not there
    // says so.
    void drillsAreStoredAndReadBack()
    {
        const qint64 ann = *store_.insertPlayer(QStringLiteral("Ann"));
        const qint64 first = *store_.insertDrill({ann, 10, 19});
        const qint64 second = *store_.insertDrill({ann, 4, 0});
        const qint64 open = *store_.insertDrill({ann, 1, 0});
        QVERIFY(store_.insertDrillSet({drillDart(first, ann, 0, 19, 3, 19, 3), drillDart(first, ann, 1, 19, 3, 7, 1)}));
        QVERIFY(store_.finishDrill(second, {-27, false, false}));
        QVERIFY(store_.finishDrill(first, {210, true, false}));
        QVERIFY(!store_.finishDrill(open + 1, {1, true, false}));
        QCOMPARE(store_.lastError(), QStringLiteral("Cannot record the end of the drill: there is no drill %1 in the "
                                                    "statistics").arg(open + 1));

        const OtherConnection db(path_);
        QCOMPARE(db.rows(QStringLiteral("SELECT players_id, kind, target, score, completed, quit, enddate IS NULL"
                                        " FROM drills ORDER BY id")),
                 (QList<QVariantList>{
                     {ann, 10, 19, 210, 1, 0, 0}, {ann, 4, 0, -27, 0, 0, 0}, {ann, 1, 0, 0, 0, 0, 1}}));
        QCOMPARE(db.rows(QStringLiteral("SELECT drills_id, players_id, setseq, dartseq, x, y, dist, score, ring,"
                                        " targetscore, targetring, aimx, aimy FROM drilldarts ORDER BY rowid")),
                 (QList<QVariantList>{{first, ann, 1, 0, 1.5, -2.25, 3.5, 19, 3, 19, 3, 0.5, 0.75},
                                      {first, ann, 1, 1, 2.5, -2.25, 3.5, 7, 1, 19, 3, 0.5, 0.75}}));
        const QVariantList dates = db.rows(QStringLiteral("SELECT startdate, datetime(startdate), enddate,"
                                                          " datetime(enddate), creationdate FROM drills JOIN drilldarts"
                                                          " ON drills_id = id"))[0];
        QCOMPARE(dates[1], dates[0]);
        QCOMPARE(dates[3], dates[2]);
        QVERIFY(qAbs(QDateTime::fromString(dates[4].toString(), QStringLiteral("yyyy-MM-dd HH:mm:ss"))
                         .secsTo(QDateTime::currentDateTime()))
                < 60);

        // Oldest end first, whatever order the drills started in.
        const QString setEnd = QStringLiteral("UPDATE drills SET enddate = '%1' WHERE id = %2");
        QVERIFY(db.exec({setEnd.arg(QStringLiteral("2026-03-01 10:00:00")).arg(first),
                         setEnd.arg(QStringLiteral("2026-03-01 09:59:59")).arg(second)}));
        const std::vector<DrillRow> rows = *store_.drillRows(ann);
        QCOMPARE(rows.size(), std::size_t(2));
        QCOMPARE(rows[0].id, second);
        QCOMPARE(rows[0].score, -27);
        QVERIFY(!rows[0].completed && !rows[0].quit);
        QCOMPARE(rows[1].kind, 10);
        QCOMPARE(rows[1].targetNumber, 19);
        QCOMPARE(rows[1].endedAt, localSeconds("2026-03-01 10:00:00"));
        QVERIFY(rows[1].startedAt && rows[1].completed);
        QVERIFY(store_.drillRows(ann + 1)->empty());
    }

    // A set is written whole or not at all: a row the file refuses, or a
    // file gone, leaves none of the set and says why.
    void aSetIsWrittenWholeOrNotAtAll_data()
    {
        addTable<bool, QString>({"lost", "said"},
                                {{"a row refused", false, "refused in this test"},
                                 {"file deleted", true, "was deleted or moved away"}});
    }
    void aSetIsWrittenWholeOrNotAtAll()
    {
        QFETCH(bool, lost);
        QFETCH(QString, said);
        const qint64 drill = *store_.insertDrill({1, 7, 0});
        QVERIFY(OtherConnection(path_).exec({QStringLiteral(
            "CREATE TRIGGER refuse BEFORE INSERT ON drilldarts WHEN NEW.dartseq = 2"
            " BEGIN SELECT RAISE(ABORT, 'refused in this test'); END")}));
        QVERIFY(store_.insertDrillSet({drillDart(drill, 1, 0, 1, 1), drillDart(drill, 1, 1, 1, 2)}));
        if (lost)
            loseFile(path_, Loss::Deleted);
        QVERIFY(!store_.insertDrillSet({drillDart(drill, 1, 0, 2, 1), drillDart(drill, 1, 1, 2, 2),
                                        drillDart(drill, 1, 2, 2, 3)}));
        QVERIFY2(store_.lastError().startsWith(QStringLiteral("Cannot record the set of the drill: "))
                     && store_.lastError().contains(said),
                 qPrintable(store_.lastError()));
        if (!lost)
            QCOMPARE(OtherConnection(path_).value(QStringLiteral("SELECT count(*) FROM drilldarts")).toInt(), 2);
        // In the caller's transaction the set goes with it.
        if (!lost) {
            StatsStore::Batch batch(store_);
            QVERIFY(store_.insertDrillSet({drillDart(drill, 1, 0, 3, 1)}));
            QVERIFY(batch.commit());
            QCOMPARE(OtherConnection(path_).value(QStringLiteral("SELECT count(*) FROM drilldarts")).toInt(), 3);
        }
    }

    // The best of the completed drills of one kind and target: the highest,
    // or the lowest where lower is better; quit and unfinished drills, other
    // kinds, targets and players do not count.
    void bestScoreCountsCompletedDrillsOnly()
    {
        const qint64 ann = *store_.insertPlayer(QStringLiteral("Ann"));
        const qint64 bob = *store_.insertPlayer(QStringLiteral("Bob"));
        QCOMPARE(store_.bestDrillScore(ann, 10, 20, false), std::make_optional(std::optional<int>()));
        endedDrill(ann, 10, 20, {250, true, false});
        endedDrill(ann, 10, 20, {190, true, false});
        endedDrill(ann, 10, 20, {400, false, true});
        endedDrill(ann, 10, 20, {100, false, false});
        endedDrill(ann, 10, 19, {500, true, false});
        endedDrill(ann, 9, 20, {600, true, false});
        endedDrill(bob, 10, 20, {700, true, false});
        store_.insertDrill({ann, 10, 20}); // not ended
        QCOMPARE(store_.bestDrillScore(ann, 10, 20, false), std::optional<std::optional<int>>(250));
        QCOMPARE(store_.bestDrillScore(ann, 10, 20, true), std::optional<std::optional<int>>(190));
        store_.close();
        QVERIFY(!store_.bestDrillScore(ann, 10, 20, true));
        QVERIFY(store_.lastError().contains(QStringLiteral("not open")));
    }

    // Drill darts that name an area are aimed darts, after practice and game
    // darts, and the doubles' rates read those at a double; review, the
    // distances of the "You" profile and the export read only practice and
    // game darts.
    void drillDartsCountOnlyAsAimedDarts()
    {
        const qint64 ann = *store_.insertPlayer(QStringLiteral("Ann"));
        const qint64 target = *store_.insertStatTarget(ann, 20, 3);
        QVERIFY(store_.insertStatThrow({ann, target, 0, 1, 2, 3, 20, 3}));
        const qint64 game = *store_.insertGame({ann, GameType::X01_501, SkillLevel::You, QStringLiteral("Computer")});
        QVERIFY(store_.insertGameDart({game, ann, 1, 0, 4, 5, 6, 20, 1, 20, 3}));
        const qint64 drill = *store_.insertDrill({ann, 8, 0});
        QVERIFY(store_.insertDrillSet({drillDart(drill, ann, 0, 20, 3, 20, 3), drillDart(drill, ann, 1, 0, 0),
                                       drillDart(drill, ann, 2, 16, 2, 16, 2)}));
        QVERIFY(store_.insertDrillSet({drillDart(drill, ann, 0, 25, 2, 25, 1)}));
        QVERIFY(store_.finishDrill(drill, {75, true, false}));
        const qint64 bob = *store_.insertPlayer(QStringLiteral("Bob"));
        QVERIFY(store_.insertDrillSet({drillDart(*store_.insertDrill({bob, 8, 0}), bob, 0, 20, 3)}));

        QStringList aimed;
        QVERIFY(store_.readAimedDarts(ann, [&](int value, int ring, double x, double y) {
            aimed << QStringLiteral("%1/%2 at %3 %4").arg(value).arg(ring).arg(x).arg(y);
        }));
        // The drill darts in any order after the others.
        QStringList drillDarts = aimed.mid(2);
        drillDarts.sort();
        QCOMPARE(aimed.first(2), (QStringList{"20/3 at 1 2", "20/3 at 4 5"}));
        QCOMPARE(drillDarts, (QStringList{"16/2 at 3.5 -2.25", "20/3 at 1.5 -2.25", "25/2 at 1.5 -2.25"}));

        const StatisticsRows rows = *store_.statisticsRows(ann);
        QCOMPARE(rows.drills.size(), std::size_t(1));
        QCOMPARE(rows.drills[0].score, 75);
        QCOMPARE(rows.drillDoubleDarts.size(), std::size_t(2));
        QCOMPARE(rows.drillDoubleDarts[0].targetScore, 16);
        QCOMPARE(rows.drillDoubleDarts[1].ring, 1);
        QVERIFY(rows.drillDoubleDarts[0].thrownAt);

        QCOMPARE(store_.areaDarts(ann, 20, 3)->practice.size(), std::size_t(1));
        QCOMPARE(store_.areaDarts(ann, 20, 3)->game.size(), std::size_t(1));
        QVERIFY(store_.areaDarts(ann, 16, 2)->game.empty());
        const TargetCounts counts = *store_.targetCounts(ann);
        qint64 counted = 0;
        for (const auto &ring : counts)
            for (const qint64 count : ring)
                counted += count;
        QCOMPARE(counted, qint64(2));
        QCOMPARE(counts[2][1], qint64(2));
        QCOMPARE(store_.playerDistances(ann)->values, (std::vector<double>{6, 3}));
        QCOMPARE(store_.exportDartCount(std::nullopt), std::optional<qint64>(2));
        int exported = 0;
        QVERIFY(store_.readExportDarts(std::nullopt, [&](const ExportDart &) { return ++exported > 0; }));
        QCOMPARE(exported, 2);
    }

    // Deleting a player, or the player's statistics, takes the player's
    // drills and their darts; another player's stay.
    void deletingAPlayersStatisticsTakesTheDrills_data()
    {
        addTable<bool>({"wholePlayer"}, {{"player deleted", true}, {"statistics reset", false}});
    }
    void deletingAPlayersStatisticsTakesTheDrills()
    {
        QFETCH(bool, wholePlayer);
        const qint64 ann = *store_.insertPlayer(QStringLiteral("Ann"));
        const qint64 bob = *store_.insertPlayer(QStringLiteral("Bob"));
        for (const qint64 player : {ann, bob}) {
            const qint64 drill = endedDrill(player, 2, 0, {30, true, false});
            QVERIFY(store_.insertDrillSet({drillDart(drill, player, 0, 1, 2)}));
        }
        QVERIFY(wholePlayer ? store_.deletePlayer(ann) : store_.resetPlayerStats(ann));
        const OtherConnection db(path_);
        QCOMPARE(db.rows(QStringLiteral("SELECT players_id FROM drills")), (QList<QVariantList>{{bob}}));
        QCOMPARE(db.rows(QStringLiteral("SELECT players_id FROM drilldarts")), (QList<QVariantList>{{bob}}));
    }

    // A file of the version before that another program holds at start
    // opens without the drills' tables: the reads go on without drills,
    // a drill is refused with the reason, and a later start upgrades it.
    void heldOlderFileReadsWithoutDrills()
    {
        const QString path = previousVersionFile(QStringLiteral("held.db"));
        OtherConnection(path).exec({QStringLiteral("PRAGMA journal_mode=WAL")});
        {
            OtherConnection holder(path, QStringLiteral("holder"));
            QVERIFY(holder.exec({QStringLiteral("BEGIN EXCLUSIVE")}));
            StatsStore store(QStringLiteral("held"));
            QVERIFY2(store.open(path), qPrintable(store.lastError()));
            int aimed = 0;
            QVERIFY2(store.readAimedDarts(1, [&](int, int, double, double) { ++aimed; }),
                     qPrintable(store.lastError()));
            QCOMPARE(aimed, 2);
            const std::optional<StatisticsRows> rows = store.statisticsRows(1);
            QVERIFY2(rows, qPrintable(store.lastError()));
            QCOMPARE(rows->gameDarts.size(), std::size_t(1));
            QVERIFY(rows->drills.empty());
            QVERIFY(store.drillRows(1)->empty());
            QCOMPARE(store.bestDrillScore(1, 4, 0, false), std::make_optional(std::optional<int>()));
            QVERIFY(!store.insertDrill({1, 4, 0}));
            QVERIFY2(store.lastError().startsWith(QStringLiteral("Cannot record the new drill: ")),
                     qPrintable(store.lastError()));
        }
        StatsStore later(QStringLiteral("later"));
        QVERIFY(later.open(path));
        QVERIFY2(later.insertDrill({1, 4, 0}), qPrintable(later.lastError()));
    }
};

QTEST_GUILESS_MAIN(TestDrillStore)
#include "tst_drill_store.moc"
