// The matches of legs in the statistics file: the tables a file of the
// version before gains, a match's rows written and read back, and the
// journal keeping a match's rows while the file cannot be written.

#include "../support/data_table.h"
#include "../support/lost_file.h"
#include "../support/store_fixture.h"
#include "core/stats/game_journal.h"
#include "core/stats/sqlite_schema.h"
#include "core/stats/stats_store.h"

#include <QSignalSpy>
#include <QTest>

using namespace tavrix;

namespace {

// What a file of the version before the matches holds: every definition
// and every row of its tables.
QList<QVariantList> olderTables(const QString &path)
{
    const OtherConnection db(path, QStringLiteral("older"));
    QList<QVariantList> rows = db.rows(
        QStringLiteral("SELECT type, name, sql FROM sqlite_master WHERE name NOT LIKE 'match%' ORDER BY name"));
    for (const char *table : {"players", "games", "gamesdarts", "statstargets", "statsthrows", "outchart",
                              "practicesums", "practicetargetsums", "drills", "drilldarts"})
        rows += db.rows(QStringLiteral("SELECT '%1', * FROM %1 ORDER BY rowid").arg(QLatin1String(table)));
    return rows;
}

QStringList toVersionBeforeMatches()
{
    return {QStringLiteral("DROP TABLE matchlegs"), QStringLiteral("DROP TABLE matches"),
            QStringLiteral("PRAGMA user_version = 3")};
}

const NewMatch bestOfFive{1, GameType::X01_501, SkillLevel::APlayer, QStringLiteral("Computer"), 1, 1, 3};

} // namespace

class TestMatchStore : public QObject, StoreFixture {
    Q_OBJECT

private slots:
    void init() { openNewStore(); }
    void cleanup() { store_.close(); }

    // A file of the version before gains the matches' tables on opening and
    // keeps every row and definition it had; opened again, nothing changes.
    void previousVersionIsUpgradedOnceKeepingEveryRow()
    {
        const QString path = fileWithRows(QStringLiteral("previous.db"), toVersionBeforeMatches());
        const QList<QVariantList> before = olderTables(path);
        QVERIFY(before.size() > 180 + 8);
        {
            StatsStore store(QStringLiteral("upgrade"));
            QVERIFY2(store.open(path), qPrintable(store.lastError()));
            const qint64 match = *store.insertMatch(bestOfFive);
            QVERIFY2(store.insertMatchLeg({match, 1, 1, 1, 2}), qPrintable(store.lastError()));
        }
        QCOMPARE(olderTables(path), before);
        const OtherConnection db(path);
        QCOMPARE(db.value(QStringLiteral("PRAGMA user_version")).toInt(), newestSchemaVersion());
        QCOMPARE(db.rows(QStringLiteral("SELECT name FROM sqlite_master WHERE name LIKE 'match%' ORDER BY name")),
                 (QList<QVariantList>{{"matches"}, {"matches_player"}, {"matchlegs"}, {"matchlegs_game"},
                                      {"matchlegs_match"}}));
        const QList<QVariantList> upgraded = db.rows(QStringLiteral("SELECT * FROM sqlite_master ORDER BY name"));
        {
            StatsStore store(QStringLiteral("again"));
            QVERIFY2(store.open(path), qPrintable(store.lastError()));
        }
        QCOMPARE(db.rows(QStringLiteral("SELECT * FROM sqlite_master ORDER BY name")), upgraded);
    }

    // A backup of the version before is still ours and is brought up to
    // date on restore; one of this version must hold the matches' tables.
    void restoreTakesBackupsWithAndWithoutMatches_data()
    {
        addTable<QStringList, QString>({"changes", "refusal"},
                                       {{"previous version", toVersionBeforeMatches(), ""},
                                        {"this version", {}, ""},
                                        {"this version without match legs", {QStringLiteral("DROP TABLE matchlegs")},
                                         "it has no table matchlegs"}});
    }
    void restoreTakesBackupsWithAndWithoutMatches()
    {
        QFETCH(QStringList, changes);
        QFETCH(QString, refusal);
        const QString backup = fileWithRows(QStringLiteral("backup.db"), changes);
        QCOMPARE(store_.restoreFrom(backup), refusal.isEmpty());
        QVERIFY2(store_.lastError().contains(refusal), qPrintable(store_.lastError()));
        if (!refusal.isEmpty())
            return;
        const qint64 match = *store_.insertMatch(bestOfFive);
        QVERIFY2(store_.insertMatchLeg({match, 1, 1, 1, 2}), qPrintable(store_.lastError()));
        QVERIFY(store_.finishMatch(match, {QStringLiteral("W"), 3, 0}));
        QCOMPARE(store_.statisticsRows(1)->matches.size(), std::size_t(1));
    }

    // What is written is what another program reads, dates as the other
    // tables keep them; the statistics read the ended matches only. An end
    // of a match that is not there, or with a result of no meaning, is
    // refused and says why. A restored match fills a missing id and leaves
    // a row that is there.
    void matchRowsAreStoredAndReadBack()
    {
        const qint64 ann = *store_.insertPlayer(QStringLiteral("Ann"));
        const qint64 bob = *store_.insertPlayer(QStringLiteral("Bob"));
        const qint64 played = *store_.insertMatch({ann, GameType::X01_301, SkillLevel::Master, "Bob", 2, 2, 3});
        const qint64 open = *store_.insertMatch({ann, GameType::Cricket, SkillLevel::None, "e-Cyd", 1, 1, 5});
        const qint64 given = *store_.insertMatch({ann, GameType::Cricket, SkillLevel::BPlayer, {}, 1, 1, 2});
        const qint64 bobs = *store_.insertMatch({bob, GameType::X01_501, SkillLevel::You, "Ann", 1, 1, 2});
        QVERIFY(store_.insertMatchLeg({played, 11, 1, 1, 2}));
        QVERIFY(store_.insertMatchLeg({played, 12, 1, 2, 1}));
        QVERIFY(store_.insertMatchLeg({played, 13, 2, 1, 1}));
        QVERIFY(store_.finishMatch(played, {"W", 5, 3, 2, 1, 2404, 120, 2100, 117}));
        QVERIFY(store_.finishMatch(given, {"A", 0, 1, 0, 0, 30, 9, 40, 9}));
        QVERIFY(store_.finishMatch(bobs, {"L", 0, 2, 0, 0, 900, 40, 1002, 33}));

        QVERIFY(!store_.finishMatch(bobs + 1, {"W"}));
        QCOMPARE(store_.lastError(), QStringLiteral("Cannot record the end of the match: there is no match %1 in the "
                                                    "statistics").arg(bobs + 1));
        QVERIFY(!store_.finishMatch(open, {"D"}));
        QCOMPARE(store_.lastError(),
                 QStringLiteral("Cannot record the end of the match: its result \"D\" is none of W, L and A"));

        QCOMPARE(read(QStringLiteral("SELECT players_id, gametype, skill, opponent, kind, sets, legs, result,"
                                     " playerlegs, opponentlegs, playersets, opponentsets, playerpoints,"
                                     " playerdarts, opponentpoints, opponentdarts, enddate IS NULL"
                                     " FROM matches ORDER BY id")),
                 (QList<QVariantList>{{ann, 2, 3, "Bob", 2, 2, 3, "W", 5, 3, 2, 1, 2404, 120, 2100, 117, 0},
                                      {ann, 1, 0, "e-Cyd", 1, 1, 5, "", 0, 0, 0, 0, 0, 0, 0, 0, 1},
                                      {ann, 1, 1, "", 1, 1, 2, "A", 0, 1, 0, 0, 30, 9, 40, 9, 0},
                                      {bob, 3, 4, "Ann", 1, 1, 2, "L", 0, 2, 0, 0, 900, 40, 1002, 33, 0}}));
        QCOMPARE(read(QStringLiteral("SELECT * FROM matchlegs ORDER BY rowid")),
                 (QList<QVariantList>{{played, 11, 1, 1, 2}, {played, 12, 1, 2, 1}, {played, 13, 2, 1, 1}}));
        const QVariantList dates = read(QStringLiteral("SELECT startdate, datetime(startdate), enddate,"
                                                       " datetime(enddate) FROM matches WHERE id = %1")
                                            .arg(played))[0];
        QCOMPARE(dates[1], dates[0]);
        QCOMPARE(dates[3], dates[2]);

        const std::vector<StatsMatch> matches = store_.statisticsRows(ann)->matches;
        QCOMPARE(matches.size(), std::size_t(2));
        const StatsMatch &won = matches[0].id == played ? matches[0] : matches[1];
        const StatsMatch &abandoned = matches[0].id == played ? matches[1] : matches[0];
        QCOMPARE(won.type, GameType::X01_301);
        QCOMPARE(won.result, MatchResult::Won);
        QCOMPARE(won.endedAt, localSeconds(dates[2].toString().toStdString()));
        QCOMPARE((std::array{won.playerPoints, won.playerDarts, won.opponentPoints, won.opponentDarts}),
                 (std::array<qint64, 4>{2404, 120, 2100, 117}));
        QCOMPARE(abandoned.id, given);
        QCOMPARE(abandoned.result, MatchResult::Abandoned);

        QVERIFY(store_.restoreMatch(played, {bob, GameType::Cricket, SkillLevel::You, "Cyd", 1, 1, 9}));
        QVERIFY(store_.restoreMatch(40, bestOfFive));
        QCOMPARE(read(QStringLiteral("SELECT id, players_id, gametype, opponent, legs, result, startdate IS NULL,"
                                     " enddate IS NULL FROM matches WHERE id IN (%1, 40) ORDER BY id")
                          .arg(played)),
                 (QList<QVariantList>{{played, ann, 2, "Bob", 3, "W", 0, 0}, {40, 1, 3, "Computer", 3, "", 0, 1}}));
        QVERIFY(store_.finishMatch(40, {"L", 1, 3}));
    }

    // Resetting a player's statistics takes the player's matches and their
    // legs; deleting the player keeps them, as it keeps the games. Another
    // player's stay.
    void resettingAPlayersStatisticsTakesTheMatches_data()
    {
        addTable<bool, int>({"wholePlayer", "annsLeft"}, {{"player deleted", true, 1}, {"statistics reset", false, 0}});
    }
    void resettingAPlayersStatisticsTakesTheMatches()
    {
        QFETCH(bool, wholePlayer);
        QFETCH(int, annsLeft);
        const qint64 ann = *store_.insertPlayer(QStringLiteral("Ann"));
        const qint64 bob = *store_.insertPlayer(QStringLiteral("Bob"));
        for (const qint64 player : {ann, bob}) {
            const qint64 match = *store_.insertMatch({player, GameType::X01_501, SkillLevel::You, "X", 1, 1, 2});
            QVERIFY(store_.insertMatchLeg({match, 1, 1, 1, 2}));
        }
        QVERIFY(wholePlayer ? store_.deletePlayer(ann) : store_.resetPlayerStats(ann));
        const QList<QVariantList> left =
            annsLeft ? QList<QVariantList>{{ann, 1}, {bob, 1}} : QList<QVariantList>{{bob, 1}};
        QCOMPARE(read(QStringLiteral("SELECT players_id, count(*) FROM matches GROUP BY players_id ORDER BY 1")), left);
        QCOMPARE(read(QStringLiteral("SELECT count(*) FROM matchlegs")), (QList<QVariantList>{{annsLeft + 1}}));
    }

    // A file of the version before that another program holds at start
    // opens without the matches' tables: the statistics read no matches, a
    // match is refused with the reason, and a later start upgrades it.
    void heldOlderFileReadsWithoutMatches()
    {
        const QString path = fileWithRows(QStringLiteral("held.db"),
                                          toVersionBeforeMatches() << QStringLiteral("PRAGMA journal_mode=WAL"));
        {
            OtherConnection holder(path, QStringLiteral("holder"));
            QVERIFY(holder.exec({QStringLiteral("BEGIN EXCLUSIVE")}));
            StatsStore store(QStringLiteral("held"));
            QVERIFY2(store.open(path), qPrintable(store.lastError()));
            const std::optional<StatisticsRows> rows = store.statisticsRows(1);
            QVERIFY2(rows, qPrintable(store.lastError()));
            QCOMPARE(rows->games.size(), std::size_t(1));
            QVERIFY(rows->matches.empty());
            QVERIFY(!store.insertMatch(bestOfFive));
            QCOMPARE(store.lastError(), QStringLiteral("Cannot record the new match: the statistics file has no "
                                                       "place for matches yet, because another program held it "
                                                       "when Tavrix started; it gets one at the next start"));
        }
        StatsStore later(QStringLiteral("later"));
        QVERIFY(later.open(path));
        QVERIFY2(later.insertMatch(bestOfFive), qPrintable(later.lastError()));
    }

    // While another program holds the file, a match's leg and end are kept
    // (the failure said once, no darts counted) and written by the next
    // write that succeeds. When the file is written over, a new file gets
    // the match still open and the games of its kept legs, and not a match
    // written whole.
    void journalKeepsAMatchAndRestoresItIntoANewFile()
    {
        GameJournal journal(store_);
        QSignalSpy failures(&journal, &GameJournal::firstFailure);
        const qint64 ann = *store_.insertPlayer(QStringLiteral("Ann"));
        const NewGame leg{ann, GameType::X01_501, SkillLevel::APlayer, QStringLiteral("Computer")};
        const qint64 first = *journal.startMatch({ann, GameType::X01_501, SkillLevel::APlayer, "Computer", 1, 1, 2});
        const qint64 firstLeg = *journal.startGame(leg, QStringLiteral("Ann"));
        {
            OtherConnection holder(path_, QStringLiteral("holder"));
            QVERIFY(holder.exec({QStringLiteral("BEGIN EXCLUSIVE")}));
            QVERIFY(!journal.recordMatch(MatchLeg{first, firstLeg, 1, 1, 2}));
            QVERIFY(!journal.recordMatch({}, std::pair{first, MatchEnd{"W", 2, 0, 0, 0, 501, 30, 300, 30}}));
            QCOMPARE(failures.count(), 1);
            QVERIFY(journal.hasPending());
            QCOMPARE(journal.pendingRows(), 0);
        }
        QVERIFY2(journal.flush(), qPrintable(store_.lastError()));
        QVERIFY(!journal.hasPending());
        QCOMPARE(read(QStringLiteral("SELECT matches_id, games_id FROM matchlegs")),
                 (QList<QVariantList>{{first, firstLeg}}));
        QCOMPARE(read(QStringLiteral("SELECT result, playerlegs FROM matches")), (QList<QVariantList>{{"W", 2}}));

        // The second match's first leg is linked only after its second leg
        // has started; both legs' games go into the new file.
        const qint64 second = *journal.startMatch({ann, GameType::X01_501, SkillLevel::APlayer, "Computer", 2, 2, 2});
        const qint64 secondLeg = *journal.startGame(leg, QStringLiteral("Ann"));
        const qint64 thirdLeg = *journal.startGame(leg, QStringLiteral("Ann"));
        loseFile(path_, Loss::WrittenOver);
        QVERIFY(!journal.recordMatch(MatchLeg{second, secondLeg, 1, 1, 1}));
        const QString newPath = dir_->filePath(QStringLiteral("new.db"));
        QCOMPARE(store_.moveTo(newPath), std::optional(StatsStore::Moved::NewFile));
        QVERIFY2(journal.flushIntoNewFile(), qPrintable(store_.lastError()));
        QVERIFY(journal.recordMatch(MatchLeg{second, thirdLeg, 1, 2, 2}, std::pair{second, MatchEnd{"A"}}));
        const OtherConnection db(newPath);
        QCOMPARE(db.rows(QStringLiteral("SELECT id, players_id, kind, sets, result FROM matches")),
                 (QList<QVariantList>{{second, ann, 2, 2, "A"}}));
        QCOMPARE(db.rows(QStringLiteral("SELECT id FROM games ORDER BY id")),
                 (QList<QVariantList>{{secondLeg}, {thirdLeg}}));
        QCOMPARE(db.rows(QStringLiteral("SELECT games_id, legno FROM matchlegs ORDER BY rowid")),
                 (QList<QVariantList>{{secondLeg, 1}, {thirdLeg, 2}}));
        QCOMPARE(db.rows(QStringLiteral("SELECT id, name FROM players")), (QList<QVariantList>{{ann, "Ann"}}));
    }
};

QTEST_GUILESS_MAIN(TestMatchStore)
#include "tst_match_store.moc"
