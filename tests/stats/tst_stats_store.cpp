#include "stats/game_record.h"
#include "stats/stats_store.h"

#include <QDateTime>
#include <QFile>
#include <QLocale>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrix;

namespace {

// A second, independent connection to the same file, to read what the store
// wrote the way another program would.
class Reader {
public:
    explicit Reader(const QString &path)
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(path);
        db.open();
    }
    ~Reader() { QSqlDatabase::removeDatabase(name); }

    QVariant value(const QString &sql)
    {
        QSqlQuery query(QSqlDatabase::database(name));
        if (!query.exec(sql) || !query.next())
            return {};
        return query.value(0);
    }
    QStringList columns(const QString &table)
    {
        QStringList names;
        const QSqlRecord record = QSqlDatabase::database(name).record(table);
        for (int i = 0; i < record.count(); ++i)
            names.append(record.fieldName(i));
        return names;
    }
    bool exec(const QString &sql)
    {
        QSqlQuery query(QSqlDatabase::database(name));
        return query.exec(sql);
    }

private:
    const QString name = QStringLiteral("reader");
};

} // namespace

class TestStatsStore : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        dir_ = std::make_unique<QTemporaryDir>();
        path_ = dir_->filePath(QStringLiteral("tavrix.db"));
        QVERIFY2(store_.open(path_), qPrintable(store_.lastError()));
    }
    void cleanup()
    {
        store_.close();
        QLocale::setDefault(QLocale::c());
    }

    void newDatabaseHasTheSchemaAndTheChart();
    void reopeningKeepsDataAndDoesNotRefillTheChart();
    void namesRoundTripExactly_data();
    void namesRoundTripExactly();
    void gameDartsAreStoredAsGiven();
    void statTargetIdIsThePlayersNewest();
    void resetRemovesOnlyThatPlayersStatistics();
    void numbersDoNotDependOnTheLocale();
    void badFilesAreReportedAndLeftAlone();
    void closedStoreRefusesWrites();
    void lockedDatabaseFailsCleanlyAndRecovers();
    void unpreparedStatementsSayWhy();
    void batchRollsBackWhatItDidNotCommit();
    void gameRecordCountsOneTypeAndSkill();
    void recordTextsNameTheOpponent();

private:
    std::unique_ptr<QTemporaryDir> dir_;
    QString path_;
    StatsStore store_;
};

void TestStatsStore::newDatabaseHasTheSchemaAndTheChart()
{
    Reader db(path_);
    const QStringList tables{"players", "games", "gamesdarts", "statstargets", "statsthrows",
                             "outchart"};
    for (const QString &table : tables)
        QVERIFY2(!db.columns(table).isEmpty(), qPrintable(table));
    QCOMPARE(db.columns(QStringLiteral("gamesdarts")),
             QStringList({"creationDate", "games_id", "players_id", "setseq", "dartseq", "x", "y",
                          "dist", "score", "ring", "targetscore", "targetring"}));
    QCOMPARE(db.columns(QStringLiteral("games")),
             QStringList({"id", "creationdate", "players_id", "gametype", "skill", "opponent",
                          "result", "throws", "points", "bestset", "outset"}));
    QCOMPARE(db.columns(QStringLiteral("statsthrows")),
             QStringList({"id", "players_id", "statstargets_id", "seq", "x", "y", "dist", "score",
                          "ring"}));
    QCOMPARE(db.value(QStringLiteral("SELECT count(*) FROM outchart")).toInt(), 180);
    QCOMPARE(db.value(QStringLiteral("SELECT count(DISTINCT points) FROM outchart")).toInt(), 180);
    // Empty fields are empty text, not NULL.
    QCOMPARE(db.value(QStringLiteral("SELECT count(*) FROM outchart WHERE doubleout IS NULL"))
                 .toInt(),
             0);
    QCOMPARE(db.value(QStringLiteral("PRAGMA journal_mode")).toString(), QStringLiteral("wal"));
    QVERIFY(db.value(QStringLiteral("SELECT count(*) FROM sqlite_master WHERE type = 'index'"))
                .toInt()
            >= 5);
}

void TestStatsStore::reopeningKeepsDataAndDoesNotRefillTheChart()
{
    const qint64 id = store_.insertPlayer(QStringLiteral("Ann")).value();
    store_.close();
    QVERIFY(!store_.isOpen());
    QVERIFY(store_.open(path_));
    QCOMPARE(store_.playerIdByName(QStringLiteral("Ann")), std::optional<qint64>(id));
    QCOMPARE(store_.outchartRows()->size(), 180);
}

void TestStatsStore::namesRoundTripExactly_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("single quote") << QStringLiteral("O'Brien");
    QTest::newRow("injection") << QStringLiteral("x'); DROP TABLE players; --");
    QTest::newRow("double quotes") << QStringLiteral("\"The Power\" Taylor");
    QTest::newRow("keywords and semicolons") << QStringLiteral("select * from games; delete");
    QTest::newRow("blanks kept") << QStringLiteral("  Ann  Lee ");
    QTest::newRow("non-ASCII") << QStringLiteral("Zoë Ünal-Łukasz 山田");
    QTest::newRow("percent and underscore") << QStringLiteral("100%_sure");
}

void TestStatsStore::namesRoundTripExactly()
{
    QFETCH(QString, name);
    const std::optional<qint64> id = store_.insertPlayer(name);
    QVERIFY2(id, qPrintable(store_.lastError()));
    QCOMPARE(store_.playerName(*id), std::optional<QString>(name));
    QCOMPARE(store_.playerIdByName(name), id);
    // Names compare exactly: no trimming, no wildcards.
    QCOMPARE(store_.playerIdByName(name.trimmed() + QLatin1Char('x')), std::nullopt);
    const std::optional<qint64> game = store_.insertGame({*id, GameType::X01_501, SkillLevel::APlayer, name});
    QVERIFY(game);
    Reader db(path_);
    QCOMPARE(db.value(QStringLiteral("SELECT opponent FROM games WHERE id = %1").arg(*game))
                 .toString(),
             name);
    QCOMPARE(db.value(QStringLiteral("SELECT count(*) FROM players")).toInt(), 1);
}

void TestStatsStore::gameDartsAreStoredAsGiven()
{
    const qint64 player = *store_.insertPlayer(QStringLiteral("Ann"));
    const qint64 game = *store_.insertGame({player, GameType::X01_501, SkillLevel::You, QStringLiteral("Computer")});
    // The cork, then a first set.
    QVERIFY(store_.insertGameDart({game, player, 0, 1, 1.25, -3.5, 3.72, 25, 2, 25, 1}));
    QVERIFY(store_.insertGameDart({game, player, 1, 0, 0.1, 118.3, 0.3, 20, 3, 20, 3}));

    Reader db(path_);
    QCOMPARE(db.value(QStringLiteral("SELECT result || '/' || throws || '/' || points || '/' ||"
                                     " bestset || '/' || outset || '/' || gametype || '/' || skill"
                                     " FROM games"))
                 .toString(),
             QStringLiteral("/0/0/0/0/3/4"));
    QCOMPARE(db.value(QStringLiteral("SELECT setseq || ',' || dartseq || ',' || x || ',' || y ||"
                                     " ',' || dist || ',' || score || ',' || ring || ',' ||"
                                     " targetscore || ',' || targetring FROM gamesdarts"
                                     " WHERE setseq = 0"))
                 .toString(),
             QStringLiteral("0,1,1.25,-3.5,3.72,25,2,25,1"));
    // x and y carry single precision; dist keeps double precision.
    QCOMPARE(db.value(QStringLiteral("SELECT x FROM gamesdarts WHERE setseq = 1")).toFloat(), 0.1f);
    QCOMPARE(db.value(QStringLiteral("SELECT dist FROM gamesdarts WHERE setseq = 1")).toDouble(),
             0.3);
    // The stored date reads back as the same date and time.
    const QString stored =
        db.value(QStringLiteral("SELECT creationDate FROM gamesdarts WHERE setseq = 1")).toString();
    QCOMPARE(db.value(QStringLiteral("SELECT datetime(creationDate) FROM gamesdarts"
                                     " WHERE setseq = 1"))
                 .toString(),
             stored);
    const QDateTime when = QDateTime::fromString(stored, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    QVERIFY(qAbs(when.secsTo(QDateTime::currentDateTime())) < 60);
}

void TestStatsStore::statTargetIdIsThePlayersNewest()
{
    const qint64 ann = *store_.insertPlayer(QStringLiteral("Ann"));
    const qint64 bob = *store_.insertPlayer(QStringLiteral("Bob"));
    const qint64 first = *store_.insertStatTarget(ann, 20, 3);
    const qint64 other = *store_.insertStatTarget(bob, 25, 1);
    const qint64 second = *store_.insertStatTarget(ann, 19, 2);
    QVERIFY(first < other && other < second);
    Reader db(path_);
    QCOMPARE(db.value(QStringLiteral("SELECT max(id) FROM statstargets WHERE players_id = %1")
                          .arg(ann))
                 .toLongLong(),
             second);
    QCOMPARE(db.value(QStringLiteral("SELECT targetValue || ',' || targetRing FROM statstargets"
                                     " WHERE id = %1")
                          .arg(second))
                 .toString(),
             QStringLiteral("19,2"));
    QVERIFY(store_.insertStatThrow({ann, second, 2, -10.5, 4, 1.5, 19, 2}));
    QCOMPARE(db.value(QStringLiteral("SELECT statstargets_id || ',' || seq || ',' || x || ',' || y"
                                     " || ',' || dist || ',' || score || ',' || ring"
                                     " FROM statsthrows"))
                 .toString(),
             QStringLiteral("%1,2,-10.5,4.0,1.5,19,2").arg(second));
}

void TestStatsStore::resetRemovesOnlyThatPlayersStatistics()
{
    const qint64 ann = *store_.insertPlayer(QStringLiteral("Ann"));
    const qint64 bob = *store_.insertPlayer(QStringLiteral("Bob"));
    for (const qint64 player : {ann, bob}) {
        const qint64 game = *store_.insertGame({player, GameType::X01_501, SkillLevel::BPlayer, QStringLiteral("Computer")});
        const qint64 target = *store_.insertStatTarget(player, 20, 1);
        for (int seq = 0; seq < 3; ++seq) {
            QVERIFY(store_.insertGameDart({game, player, 1, seq, 0, 100, 18, 20, 1, 20, 3}));
            QVERIFY(store_.insertStatThrow({player, target, seq, 0, 150, 0, 20, 1}));
        }
    }
    QVERIFY(store_.resetPlayerStats(ann));

    Reader db(path_);
    auto count = [&](const char *table, qint64 player) {
        return db.value(QStringLiteral("SELECT count(*) FROM %1 WHERE players_id = %2")
                            .arg(QLatin1String(table))
                            .arg(player))
            .toInt();
    };
    for (const char *table : {"games", "gamesdarts", "statstargets", "statsthrows"}) {
        QCOMPARE(count(table, ann), 0);
        QVERIFY(count(table, bob) > 0);
    }
    QCOMPARE(store_.playerName(ann), std::optional<QString>(QStringLiteral("Ann")));
    // A player with nothing recorded resets without complaint.
    QVERIFY(store_.resetPlayerStats(ann));
}

void TestStatsStore::numbersDoNotDependOnTheLocale()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const qint64 player = *store_.insertPlayer(QStringLiteral("Ann"));
    const qint64 target = *store_.insertStatTarget(player, 20, 1);
    QVERIFY(store_.insertStatThrow({player, target, 0, 1.5, -2.25, 1234.5678, 20, 1}));
    Reader db(path_);
    QCOMPARE(db.value(QStringLiteral("SELECT typeof(x) || typeof(dist) FROM statsthrows"))
                 .toString(),
             QStringLiteral("realreal"));
    QCOMPARE(db.value(QStringLiteral("SELECT x + y + dist FROM statsthrows")).toDouble(),
             1.5 - 2.25 + 1234.5678);
}

void TestStatsStore::badFilesAreReportedAndLeftAlone()
{
    StatsStore other(QStringLiteral("other"));
    QVERIFY(!other.open(dir_->filePath(QStringLiteral("missing/folder/tavrix.db"))));
    QVERIFY(other.lastError().contains(QStringLiteral("does not exist")));
    QVERIFY(!other.isOpen());

    const QString notADatabase = dir_->filePath(QStringLiteral("notes.db"));
    const QByteArray content = "These are my notes, not a database.\n";
    {
        QFile file(notADatabase);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    QVERIFY(!other.open(notADatabase));
    QVERIFY2(other.lastError().contains(QStringLiteral("notes.db")), qPrintable(other.lastError()));
    QVERIFY(!other.isOpen());
    QFile file(notADatabase);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), content);
}

void TestStatsStore::closedStoreRefusesWrites()
{
    store_.close();
    QVERIFY(!store_.insertGameDart({}));
    QVERIFY(store_.lastError().contains(QStringLiteral("not open")));
    QVERIFY(!store_.insertStatTarget(1, 20, 1));
    QVERIFY(!store_.resetPlayerStats(1));
    QVERIFY(!store_.outchartRows());
}

void TestStatsStore::lockedDatabaseFailsCleanlyAndRecovers()
{
    const qint64 player = *store_.insertPlayer(QStringLiteral("Ann"));
    const qint64 target = *store_.insertStatTarget(player, 20, 1);
    {
        Reader other(path_);
        QVERIFY(other.exec(QStringLiteral("BEGIN EXCLUSIVE")));
        QVERIFY(!store_.insertStatThrow({player, target, 0, 1, 1, 1, 20, 1}));
        QVERIFY2(store_.lastError().contains(QStringLiteral("in use by another program")),
                 qPrintable(store_.lastError()));
        QVERIFY(other.exec(QStringLiteral("ROLLBACK")));
    }
    QVERIFY(store_.insertStatThrow({player, target, 0, 1, 1, 1, 20, 1}));
    QCOMPARE(Reader(path_).value(QStringLiteral("SELECT count(*) FROM statsthrows")).toInt(), 1);
}

// A statement that cannot be prepared reports why, not Qt's "No query".
void TestStatsStore::unpreparedStatementsSayWhy()
{
    QVERIFY(store_.insertPlayer(QStringLiteral("Ann")));
    Reader(path_).exec(QStringLiteral("DROP TABLE players"));
    QVERIFY(!store_.playerCount());
    QVERIFY2(store_.lastError().contains(QStringLiteral("no such table: players")), qPrintable(store_.lastError()));
}

void TestStatsStore::batchRollsBackWhatItDidNotCommit()
{
    const qint64 player = *store_.insertPlayer(QStringLiteral("Ann"));
    {
        StatsStore::Batch batch(store_);
        QVERIFY(batch.isActive());
        QVERIFY(store_.insertStatTarget(player, 20, 1));
    }
    {
        StatsStore::Batch batch(store_);
        QVERIFY(store_.insertStatTarget(player, 19, 1));
        QVERIFY(batch.commit());
    }
    Reader db(path_);
    QCOMPARE(db.value(QStringLiteral("SELECT group_concat(targetValue) FROM statstargets"))
                 .toString(),
             QStringLiteral("19"));
}

void TestStatsStore::gameRecordCountsOneTypeAndSkill()
{
    const qint64 ann = *store_.insertPlayer(QStringLiteral("Ann"));
    const qint64 bob = *store_.insertPlayer(QStringLiteral("Bob"));
    QCOMPARE(*store_.gameRecord(ann, GameType::X01_501, SkillLevel::Master), (GameRecordFigures{0, 0, 99, 0}));

    auto game = [&](qint64 player, GameType type, SkillLevel skill, const char *result, int throws, int outSet) {
        const qint64 id = *store_.insertGame({player, type, skill, QStringLiteral("Computer")});
        if (*result)
            QVERIFY(store_.finishGame(id, {QString::fromLatin1(result), throws, 0, 0, outSet}));
    };
    // Only lost 501s at Master: no best leg, no best out.
    game(ann, GameType::X01_501, SkillLevel::Master, "L", 30, 0);
    QCOMPARE(*store_.gameRecord(ann, GameType::X01_501, SkillLevel::Master), (GameRecordFigures{0, 1, 99, 0}));
    game(ann, GameType::X01_501, SkillLevel::Master, "W", 24, 81);
    game(ann, GameType::X01_501, SkillLevel::Master, "W", 18, 40);
    game(ann, GameType::X01_501, SkillLevel::Master, "", 0, 0); // quit: no result
    // Other games that must not count: another skill, type, player.
    game(ann, GameType::X01_501, SkillLevel::APlayer, "W", 9, 170);
    game(ann, GameType::X01_301, SkillLevel::Master, "W", 12, 160);
    game(bob, GameType::X01_501, SkillLevel::Master, "W", 15, 100);
    QCOMPARE(*store_.gameRecord(ann, GameType::X01_501, SkillLevel::Master), (GameRecordFigures{2, 1, 18, 81}));
    // Cricket keeps no best leg or best out.
    game(ann, GameType::Cricket, SkillLevel::Master, "W", 20, 0);
    QCOMPARE(*store_.gameRecord(ann, GameType::Cricket, SkillLevel::Master), (GameRecordFigures{1, 0, 99, 0}));

    store_.close();
    QVERIFY(!store_.gameRecord(ann, GameType::X01_501, SkillLevel::Master));
    QVERIFY(!store_.lastError().isEmpty());
}

void TestStatsStore::recordTextsNameTheOpponent()
{
    const QString ann = QStringLiteral("Ann O'Hara");
    QCOMPARE(recordOpponentName(OpponentKind::Computer, SkillLevel::APlayer, false, {}, ann), QStringLiteral("Virtual Player"));
    QCOMPARE(recordOpponentName(OpponentKind::Computer, SkillLevel::You, false, {}, ann), QStringLiteral("Virtual Ann O'Hara"));
    QCOMPARE(recordOpponentName(OpponentKind::Human, SkillLevel::BPlayer, true, QStringLiteral("Bob"), ann), QStringLiteral("e-Bob"));
    QCOMPARE(recordOpponentName(OpponentKind::Human, SkillLevel::BPlayer, false, QStringLiteral("Bob"), ann), QStringLiteral("Bob"));

    LocalTallies tallies;
    tallies.localWins = 2;
    tallies.localLosses = 1;
    tallies.localBestOut = 40;
    tallies.localBestLeg = 18;
    const RecordTexts x01 = gameRecordTexts(QStringLiteral("Virtual Pro"), GameType::X01_501, tallies, {5, 7, 99, 0});
    QCOMPARE(x01.thisRound, QStringLiteral("vs Virtual Pro\nWon: 2  Lost: 1\nBest Leg: 18\nBest out: 40"));
    QCOMPARE(x01.overall, QStringLiteral("vs Virtual Pro\nWon: 5  Lost: 7\nBest Leg: 99\nBest out: 0"));
    QCOMPARE(gameRecordTexts(QStringLiteral("Bob"), GameType::Cricket, tallies, {}).thisRound,
             QStringLiteral("vs Bob\nWon: 2  Lost: 1"));
}

QTEST_GUILESS_MAIN(TestStatsStore)
#include "tst_stats_store.moc"
