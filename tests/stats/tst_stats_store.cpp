// The statistics store against a real file, read back through a second
// connection the way another program would read it.

#include "../support/data_table.h"
#include "../support/lost_file.h"
#include "../support/store_fixture.h"
#include "core/stats/game_record.h"
#include "core/stats/sqlite_schema.h"
#include "core/stats/stats_store.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QSqlError>
#include <QTest>

using namespace tavrix;

class TestStatsStore : public QObject, StoreFixture {
    Q_OBJECT

    // A file as the first program version left it, with a row in each table
    // of the darts, in rollback journal mode and then changed by `changes`.
    QString firstVersionFile(const QStringList &changes) const
    {
        const QString path = dir_->filePath(QStringLiteral("first.db"));
        {
            StatsStore maker(QStringLiteral("maker"));
            if (!maker.open(path))
                qWarning("%s", qPrintable(maker.lastError()));
            const qint64 ann = maker.insertPlayer(QStringLiteral("Ann")).value_or(0);
            const qint64 game = maker.insertGame({ann, GameType::X01_501, SkillLevel::You, QStringLiteral("Computer")}).value_or(0);
            maker.insertGameDart({game, ann, 1, 0, 1.5, 2.5, 3.5, 20, 3, 20, 3});
            maker.finishGame(game, {QStringLiteral("W"), 9, 501, 180, 141});
            const qint64 target = maker.insertStatTarget(ann, 19, 2).value_or(0);
            maker.insertStatThrow({ann, target, 0, 1, 2, 3, 19, 2});
        }
        OtherConnection(path).exec(QStringList{QStringLiteral("PRAGMA journal_mode=DELETE"),
                                               QStringLiteral("PRAGMA user_version = 0")}
                                   + changes);
        return path;
    }
    static QList<QVariantList> everyRow(const QString &path)
    {
        const OtherConnection db(path, QStringLiteral("rows"));
        QList<QVariantList> rows;
        for (const char *table : {"players", "games", "gamesdarts", "statstargets", "statsthrows", "outchart"})
            rows += db.rows(QStringLiteral("SELECT '%1', * FROM %1 ORDER BY rowid").arg(QLatin1String(table)));
        return rows;
    }


    void lose(Loss loss) const { loseFile(path_, loss); }

private slots:
    void init() { openNewStore(); }
    void cleanup()
    {
        store_.close();
        QLocale::setDefault(QLocale::c());
    }

    // A new file carries the newest version of the tables, the whole chart
    // with empty fields as empty text, and WAL mode. (That the chart is not
    // filled twice is seen at every start in tst_main_window, which would
    // name the surplus rows.)
    void newFileHasTheNewestVersionAndTheChart()
    {
        QCOMPARE(read(QStringLiteral("PRAGMA user_version")), (QList<QVariantList>{{newestSchemaVersion()}}));
        QCOMPARE(read(QStringLiteral("SELECT count(*), count(DISTINCT points), sum(doubleout IS NULL) FROM outchart")),
                 (QList<QVariantList>{{180, 180, 0}}));
        QCOMPARE(read(QStringLiteral("PRAGMA journal_mode")), (QList<QVariantList>{{"wal"}}));
    }

    // The first program version kept no version number: its file is
    // recognised by its tables and upgraded, every row kept and the chart
    // not filled again.
    void fileOfTheFirstVersionIsUpgradedKeepingEveryRow()
    {
        const QString path = firstVersionFile({});
        const QList<QVariantList> before = everyRow(path);
        QCOMPARE(before.size(), 180 + 5);
        {
            StatsStore store(QStringLiteral("upgrade"));
            QVERIFY2(store.open(path), qPrintable(store.lastError()));
        }
        QCOMPARE(everyRow(path), before);
        QCOMPARE(OtherConnection(path).value(QStringLiteral("PRAGMA user_version")).toInt(), newestSchemaVersion());
    }

    // A file of the first version that another program holds at start opens
    // as it is and is upgraded at a later start; a chart emptied by another
    // program is filled again on opening.
    void heldFileWaitsForItsUpgradeAndAnEmptiedChartIsRefilled()
    {
        // In WAL mode, as the first version left its files: readers go on.
        const QString path = firstVersionFile({QStringLiteral("PRAGMA journal_mode=WAL")});
        {
            OtherConnection holder(path, QStringLiteral("holder"));
            QVERIFY(holder.exec({QStringLiteral("BEGIN EXCLUSIVE")}));
            StatsStore store(QStringLiteral("held"));
            QVERIFY2(store.open(path), qPrintable(store.lastError()));
            QVERIFY(store.writeProblem());
        }
        QCOMPARE(OtherConnection(path).value(QStringLiteral("PRAGMA user_version")).toInt(), 0);
        {
            StatsStore store(QStringLiteral("later"));
            QVERIFY(store.open(path));
        }
        QCOMPARE(OtherConnection(path).value(QStringLiteral("PRAGMA user_version")).toInt(), newestSchemaVersion());
        OtherConnection(path).exec({QStringLiteral("DELETE FROM outchart")});
        {
            StatsStore store(QStringLiteral("refill"));
            QVERIFY(store.open(path));
        }
        QCOMPARE(OtherConnection(path).value(QStringLiteral("SELECT count(*) FROM outchart")).toInt(), 180);
    }

    // A file of a newer version, or one whose upgrade fails, is refused,
    // named, and left as it was, its journal mode too. The changes are made
    // to a file of the first version; in the failed upgrade the first step
    // writes (the index again) and the second fails on the table in its way:
    // nothing of the first may stay.
    void refusedFileIsLeftByteForByte_data()
    {
        addTable<QStringList, QString>({"changes", "reason"},
            {{"newer version", {QStringLiteral("PRAGMA user_version = %1").arg(newestSchemaVersion() + 1)},
              ": it was written by a newer version of Tavrix"},
             {"failed upgrade", {"DROP INDEX statsthrows_player", "DROP TABLE practicetargetsums",
                                 "CREATE TABLE practicetargetsums (other TEXT)"}, ": no such column: players_id"}});
    }
    void refusedFileIsLeftByteForByte()
    {
        QFETCH(QStringList, changes);
        QFETCH(QString, reason);
        const QString path = firstVersionFile(changes);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray before = file.readAll();
        file.close();
        {
            StatsStore store(QStringLiteral("upgrade"));
            QVERIFY(!store.open(path));
            QVERIFY2(store.lastError().startsWith(QStringLiteral("Cannot open the statistics database ")
                                                  + QDir::toNativeSeparators(path) + reason),
                     qPrintable(store.lastError()));
        }
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), before);
    }

    // Names are stored and found exactly: no trimming, quotes and statements
    // kept as text.
    void namesRoundTripExactly()
    {
        for (const QString &name : {QStringLiteral("x'); DROP TABLE \"players\"; --"), QStringLiteral("  Ann  Lee "),
                                    QStringLiteral("100%_sure Zoë 山田")}) {
            const std::optional<qint64> id = store_.insertPlayer(name);
            QVERIFY2(id, qPrintable(store_.lastError()));
            QCOMPARE(store_.playerName(*id), std::optional<QString>(name));
            QCOMPARE(store_.playerIdByName(name), id);
            QVERIFY(store_.insertGame({*id, GameType::X01_501, SkillLevel::APlayer, name}));
            QCOMPARE(read(QStringLiteral("SELECT opponent FROM games WHERE players_id = %1").arg(*id)),
                     (QList<QVariantList>{{name}}));
        }
        QCOMPARE(read(QStringLiteral("SELECT count(*) FROM players")), (QList<QVariantList>{{3}}));
    }

    // What is written is what another program reads, whatever the user's
    // locale: the codes, the figures (x and y in single precision), the date,
    // and the id of a practice target, the one its darts carry.
    void rowsAreStoredAsGiven()
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        const qint64 ann = *store_.insertPlayer(QStringLiteral("Ann"));
        const qint64 game = *store_.insertGame({ann, GameType::X01_501, SkillLevel::You, QStringLiteral("Computer")});
        // The cork, then a first set.
        QVERIFY(store_.insertGameDart({game, ann, 0, 1, 1.25, -3.5, 3.72, 25, 2, 25, 1}));
        QVERIFY(store_.insertGameDart({game, ann, 1, 0, 0.1, 118.3, 0.3, 20, 3, 20, 3}));
        QVERIFY(store_.insertStatTarget(ann, 20, 3));
        const qint64 target = *store_.insertStatTarget(ann, 19, 2);
        QVERIFY(store_.insertStatThrow({ann, target, 2, -10.5, 4, 1234.5678, 19, 2}));

        OtherConnection db(path_);
        QCOMPARE(db.rows(QStringLiteral("SELECT typeof(result), throws, points, bestset, outset, gametype, skill"
                                        " FROM games")),
                 (QList<QVariantList>{{"text", 0, 0, 0, 0, 3, 4}}));
        QCOMPARE(db.rows(QStringLiteral("SELECT setseq, dartseq, x, y, dist, score, ring, targetscore, targetring"
                                        " FROM gamesdarts ORDER BY setseq")),
                 (QList<QVariantList>{{0, 1, 1.25, -3.5, 3.72, 25, 2, 25, 1},
                                      {1, 0, double(0.1f), double(118.3f), 0.3, 20, 3, 20, 3}}));
        QCOMPARE(db.rows(QStringLiteral("SELECT ta.targetValue, ta.targetRing, seq, x, y, dist, score, ring,"
                                        " typeof(x) || typeof(y) || typeof(dist) FROM statsthrows"
                                        " JOIN statstargets ta ON ta.id = statstargets_id")),
                 (QList<QVariantList>{{19, 2, 2, -10.5, 4.0, 1234.5678, 19, 2, "realrealreal"}}));
        // The stored date reads back as the same date and time.
        const QVariantList date =
            db.rows(QStringLiteral("SELECT creationDate, datetime(creationDate) FROM gamesdarts"))[0];
        QCOMPARE(date[1], date[0]);
        const QDateTime when = QDateTime::fromString(date[0].toString(), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        QVERIFY(qAbs(when.secsTo(QDateTime::currentDateTime())) < 60);
    }

    // A file that is no database is refused, named and left as it was. (A
    // missing folder, a read-only or held file and another program's tables
    // are named at start, in tst_main_window; a reset and a held file during
    // a game are played through the window.)
    void aFileThatIsNoDatabaseIsLeftAlone()
    {
        StatsStore other(QStringLiteral("other"));
        QFile notes(dir_->filePath(QStringLiteral("notes.db")));
        const QByteArray content = "These are my notes, not a database.\n";
        QVERIFY(notes.open(QIODevice::WriteOnly) && notes.write(content) == content.size());
        notes.close();
        QVERIFY(!other.open(notes.fileName()));
        QVERIFY2(other.lastError().contains(QStringLiteral("notes.db")), qPrintable(other.lastError()));
        QVERIFY(notes.open(QIODevice::ReadOnly));
        QCOMPARE(notes.readAll(), content);
    }

    // A statement that cannot be prepared says why, not Qt's "No query"; a
    // closed store refuses to write (and to read, in tst_review_mode).
    void failuresSayWhy()
    {
        QVERIFY(store_.insertPlayer(QStringLiteral("Ann")));
        QVERIFY(OtherConnection(path_).exec({QStringLiteral("DROP TABLE players")}));
        QVERIFY(!store_.playerCount());
        QVERIFY2(store_.lastError().contains(QStringLiteral("no such table: players")), qPrintable(store_.lastError()));
        store_.close();
        QVERIFY(!store_.insertGameDart({}));
        QVERIFY(store_.lastError().contains(QStringLiteral("not open")));
    }

    // A file deleted, moved away, replaced or written over while open takes
    // no more writes, single or in a batch, and each says what became of it;
    // a file moved back takes them again.
    void aLostFileTakesNoWrites_data()
    {
        addTable<Loss, QString>({"loss", "said"},
                                {{"deleted", Loss::Deleted, "was deleted or moved away"},
                                 {"moved away", Loss::MovedAway, "was deleted or moved away"},
                                 {"replaced", Loss::Replaced, "was replaced by another file"},
                                 {"written over", Loss::WrittenOver, "was written over and is no longer a statistics file"}});
    }
    void aLostFileTakesNoWrites()
    {
        QFETCH(Loss, loss);
        QFETCH(QString, said);
        const qint64 ann = *store_.insertPlayer(QStringLiteral("Ann"));
        const qint64 game = *store_.insertGame({ann, GameType::X01_501, SkillLevel::You, QStringLiteral("Bob")});
        lose(loss);
        const QString named = QDir::toNativeSeparators(path_) + QLatin1Char(' ') + said;

        QVERIFY(!store_.insertGameDart({game, ann, 1, 0, 1.5, 2.5, 3.5, 20, 3, 20, 3}));
        QVERIFY2(store_.lastError().contains(named), qPrintable(store_.lastError()));
        QVERIFY(!store_.insertPlayer(QStringLiteral("Bob")));
        QVERIFY(!store_.insertStatTarget(ann, 20, 1));
        {
            StatsStore::Batch batch(store_);
            QVERIFY(!batch.isActive());
            QVERIFY2(store_.lastError().contains(named), qPrintable(store_.lastError()));
        }
        if (loss == Loss::Replaced) {
            // Read once this connection's journal beside it is gone.
            store_.close();
            QCOMPARE(read(QStringLiteral("SELECT count(*) FROM players"))[0][0].toInt(), 0);
        }
        if (loss == Loss::MovedAway) {
            QVERIFY(QFile::rename(path_ + QStringLiteral(".away"), path_));
            QVERIFY2(store_.insertPlayer(QStringLiteral("Bob")), qPrintable(store_.lastError()));
            // Moved away again and closed, the file takes along all it held.
            QVERIFY(QFile::rename(path_, path_ + QStringLiteral(".away")));
            store_.close();
            QCOMPARE(OtherConnection(path_ + QStringLiteral(".away")).rows(QStringLiteral("SELECT name FROM players")),
                     (QList<QVariantList>{{"Ann"}, {"Bob"}}));
            QVERIFY(!QFile::exists(path_ + QStringLiteral("-wal")));
        }
    }

    // Saving into another file: everything the connection can still read
    // is copied there; from a file written over only a new file can be
    // made, and the kept rows' game and player are written into it with
    // their ids. A file at the chosen name (one with a quote) is replaced;
    // the file in use is not a place to save into, and a file still in
    // place is kept when its copy fails.
    void savingIntoAnotherFile_data()
    {
        addTable<Loss, StatsStore::Moved>({"loss", "moved"},
                                           {{"deleted", Loss::Deleted, StatsStore::Moved::Copied},
                                            {"replaced", Loss::Replaced, StatsStore::Moved::Copied},
                                            {"written over", Loss::WrittenOver, StatsStore::Moved::NewFile}});
    }
    void savingIntoAnotherFile()
    {
        QFETCH(Loss, loss);
        QFETCH(StatsStore::Moved, moved);
        QVERIFY(!store_.moveTo(path_));
        QVERIFY2(store_.lastError().contains(QStringLiteral("in use now")), qPrintable(store_.lastError()));
        // A copy that cannot be made (here: none is made inside a
        // transaction) is no reason to give up a file still in place.
        {
            StatsStore::Batch batch(store_);
            QVERIFY(!store_.moveTo(dir_->filePath(QStringLiteral("blocked.db"))));
        }
        QCOMPARE(store_.databasePath(), path_);
        QVERIFY(!QFile::exists(dir_->filePath(QStringLiteral("blocked.db"))));

        const qint64 ann = *store_.insertPlayer(QStringLiteral("Ann O'Neil"));
        const NewGame newGame{ann, GameType::Cricket, SkillLevel::Master, QStringLiteral("Bob")};
        const qint64 game = *store_.insertGame(newGame);
        QVERIFY(store_.insertGameDart({game, ann, 1, 0, 1.5, 2.5, 3.5, 20, 3, 20, 3}));
        lose(loss);
        const QString saved = dir_->filePath(QStringLiteral("Ann's darts.db"));
        QFile junk(saved);
        QVERIFY(junk.open(QIODevice::WriteOnly) && junk.write("not a database") > 0);
        junk.close();

        const std::optional<StatsStore::Moved> result = store_.moveTo(saved);
        QVERIFY2(result, qPrintable(store_.lastError()));
        QCOMPARE(*result, moved);
        QCOMPARE(store_.databasePath(), saved);
        QVERIFY(store_.restoreGame(game, newGame, QStringLiteral("Ann O'Neil")));
        QVERIFY2(store_.insertGameDart({game, ann, 2, 0, 4.5, 5.5, 6.5, 19, 1, 20, 3}), qPrintable(store_.lastError()));

        const OtherConnection copy(saved, QStringLiteral("copy"));
        QCOMPARE(copy.rows(QStringLiteral("SELECT id, name FROM players")), (QList<QVariantList>{{ann, "Ann O'Neil"}}));
        QCOMPARE(copy.rows(QStringLiteral("SELECT id, players_id, gametype, skill, opponent FROM games")),
                 (QList<QVariantList>{{game, ann, 1, 3, "Bob"}}));
        const QList<QVariantList> sets{{1}, {2}};
        QCOMPARE(copy.rows(QStringLiteral("SELECT setseq FROM gamesdarts ORDER BY rowid")),
                 moved == StatsStore::Moved::Copied ? sets : sets.mid(1));
        QVERIFY(copy.value(QStringLiteral("SELECT count(*) FROM outchart")).toInt() > 0);
        QVERIFY(!QFile::exists(saved + QStringLiteral(".saving")));
    }

    // SQLite's failures in the words the program uses, also when Qt's driver
    // keeps only SQLite's text, as for a failed COMMIT.
    void failuresAreSaidInPlainWords_data()
    {
        addTable<QString, QString, QString>(
            {"code", "text", "said"},
            {{"full", "13", "database or disk is full", "the disk is full"},
             {"full at commit", "", "database or disk is full", "the disk is full"},
             {"held", "5", "database is locked", "the statistics file is in use by another program"},
             {"held at commit", "", "database is locked", "the statistics file is in use by another program"},
             {"read-only", "8", "attempt to write a readonly database", "the statistics file cannot be written (it or its folder is read-only)"},
             {"disk error", "10", "disk I/O error", "the statistics file could not be written (the disk reported an error)"},
             {"write error", "778", "disk I/O error", "the statistics file could not be written (the disk reported an error)"},
             {"disk error at commit", "", "disk I/O error", "the statistics file could not be written (the disk reported an error)"},
             {"no database", "26", "file is not a database", "the statistics file is damaged or is not a statistics file"},
             {"damaged", "11", "database disk image is malformed", "the statistics file is damaged or is not a statistics file"},
             {"other", "1", "no such table: games", "no such table: games Unable to execute statement"}});
    }
    void failuresAreSaidInPlainWords()
    {
        QFETCH(QString, code);
        QFETCH(QString, text);
        QFETCH(QString, said);
        const QString driverText = code.isEmpty() ? QStringLiteral("Unable to commit transaction")
                                                  : QStringLiteral("Unable to execute statement");
        QCOMPARE(describeDatabaseError(QSqlError(driverText, text, QSqlError::StatementError, code)), said);
    }

    // A disk error, or a refused write, of a file that has become
    // read-only, or whose folder has, says so.
    void aReadOnlyFileOrFolderIsNamed()
    {
        if (QFileInfo(QStringLiteral("/")).isWritable())
            QSKIP("root writes read-only places; run this test as another user");
        const QSqlError diskError(QStringLiteral("Unable to commit transaction"), QStringLiteral("disk I/O error"),
                                  QSqlError::TransactionError);
        QCOMPARE(describeDatabaseError(diskError, path_),
                 QStringLiteral("the statistics file could not be written (the disk reported an error)"));
        QVERIFY(QFile::setPermissions(path_, QFile::ReadOwner));
        QCOMPARE(describeDatabaseError(diskError, path_),
                 QStringLiteral("the statistics file could not be written: it is read-only"));
        QVERIFY(QFile::setPermissions(path_, QFile::ReadOwner | QFile::WriteOwner));
        QVERIFY(QFile::setPermissions(dir_->path(), QFile::ReadOwner | QFile::ExeOwner));
        const QSqlError refused(QStringLiteral("Unable to execute statement"),
                                QStringLiteral("attempt to write a readonly database"), QSqlError::StatementError,
                                QStringLiteral("8"));
        const QString said = describeDatabaseError(refused, path_);
        QVERIFY(QFile::setPermissions(dir_->path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QCOMPARE(said, QStringLiteral("the statistics file cannot be written: its folder %1 is read-only")
                           .arg(QDir::toNativeSeparators(dir_->path())));
    }

    void batchRollsBackWhatItDidNotCommit()
    {
        const qint64 player = *store_.insertPlayer(QStringLiteral("Ann"));
        {
            StatsStore::Batch batch(store_);
            QVERIFY(store_.insertStatTarget(player, 20, 1));
        }
        {
            StatsStore::Batch batch(store_);
            QVERIFY(store_.insertStatTarget(player, 19, 1));
            QVERIFY(batch.commit());
        }
        QCOMPARE(read(QStringLiteral("SELECT targetValue FROM statstargets")), (QList<QVariantList>{{19}}));
    }

    void gameRecordCountsOneTypeAndSkill()
    {
        const qint64 ann = *store_.insertPlayer(QStringLiteral("Ann"));
        const qint64 bob = *store_.insertPlayer(QStringLiteral("Bob"));
        auto game = [&](qint64 player, GameType type, SkillLevel skill, const char *result, int throws, int outSet) {
            const qint64 id = *store_.insertGame({player, type, skill, QStringLiteral("Computer")});
            if (*result)
                QVERIFY(store_.finishGame(id, {QString::fromLatin1(result), throws, 0, 0, outSet}));
        };
        // A lost 501 at Master (its record alone, no best leg and no best
        // out, is shown beside the board in tst_games).
        game(ann, GameType::X01_501, SkillLevel::Master, "L", 30, 0);
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
    }

    void recordTextsNameTheOpponent()
    {
        const QString ann = QStringLiteral("Ann O'Hara");
        QCOMPARE(recordOpponentName(OpponentKind::Computer, SkillLevel::APlayer, false, {}, ann), QStringLiteral("Virtual Player"));
        QCOMPARE(recordOpponentName(OpponentKind::Computer, SkillLevel::You, false, {}, ann), QStringLiteral("Virtual Ann O'Hara"));
        // The tallies keep the highest out and the shortest leg of the wins.
        LocalTallies tallies;
        tallies.countGame(true, 40, 21);
        tallies.countGame(true, 100, 15);
        tallies.countGame(true, 60, 18);
        tallies.countGame(false, 170, 9);
        QCOMPARE(gameRecordTexts(QStringLiteral("Virtual Pro"), GameType::X01_501, tallies, {5, 7, 99, 0}).thisRound,
                 QStringLiteral("vs Virtual Pro\nWon: 3  Lost: 1\nBest Leg: 15\nBest out: 100"));
    }
};

QTEST_GUILESS_MAIN(TestStatsStore)
#include "tst_stats_store.moc"
