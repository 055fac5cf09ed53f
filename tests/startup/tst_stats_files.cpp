// The File menu's export, backup and restore of the statistics, driven
// through the real main window.

#include "../export/csv_reader.h"
#include "../support/program_test.h"

#include <QFile>
#include <QProgressDialog>

using namespace tavrix;

class TestStatsFiles : public ProgramTest {
    Q_OBJECT

    qint64 ann_ = 0;

    // Ann's two game darts and three practice darts, and Bob's one dart.
    void recordDarts()
    {
        StatsStore &store = program_->store();
        ann_ = store.playerIdByName(QStringLiteral("Ann")).value();
        const qint64 bob = store.insertPlayer(QStringLiteral("Bob")).value();
        const qint64 game = store.insertGame({ann_, GameType::X01_301, SkillLevel::You, QStringLiteral("Al")}).value();
        QVERIFY(store.insertGameDart({game, ann_, 1, 0, 10, 150, 5, 20, 1, 20, 3}));
        QVERIFY(store.insertGameDart({game, ann_, 1, 1, -3, 160, 5, 20, 3, 20, 3}));
        const qint64 target = store.insertStatTarget(ann_, 19, 2).value();
        for (int seq = 0; seq < 3; ++seq)
            QVERIFY(store.insertStatThrow({ann_, target, seq, -50.0 + seq, -170, 4, 19, 2}));
        const qint64 bobs = store.insertStatTarget(bob, 25, 1).value();
        QVERIFY(store.insertStatThrow({bob, bobs, 0, 1, 2, 3, 25, 1}));
    }
    QList<QStringList> csvRows(const QString &path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return {};
        const CsvFile csv = readCsv(file.readAll());
        return csv.error.isEmpty() ? csv.records : QList<QStringList>();
    }
    static QList<QVariantList> everyRow(const QSqlDatabase &db)
    {
        QList<QVariantList> rows;
        for (const char *table : {"players", "games", "gamesdarts", "statstargets", "statsthrows", "outchart"})
            rows += sqlRows(db, QStringLiteral("SELECT '%1', * FROM %1 ORDER BY rowid").arg(QLatin1String(table)));
        return rows;
    }
    QString file(const char *name) const { return home_->dir.filePath(QString::fromLatin1(name)); }

private slots:
    void init()
    {
        startProgram();
        recordDarts();
    }
    void cleanup() { program_.reset(); }

    // The player's darts or everybody's, as asked; Cancel asks no more.
    void exportWritesTheDartsOfWhoeverIsChosen()
    {
        const QString path = file("darts.csv");
        messages_.choices = {0};
        messages_.savePaths = {path};
        action("mnuExportDarts")->trigger();
        QList<QStringList> rows = csvRows(path);
        QCOMPARE(rows.size(), 1 + 5);
        for (int i = 1; i < rows.size(); ++i)
            QCOMPARE(rows[i][0], QStringLiteral("Ann"));
        QVERIFY2(messages_.texts(QStringLiteral("notice")).last().startsWith(QStringLiteral("5 darts written")),
                 qPrintable(messages_.texts().join('|')));

        messages_.choices = {1};
        messages_.savePaths = {path};
        action("mnuExportDarts")->trigger();
        rows = csvRows(path);
        QCOMPARE(rows.size(), 1 + 6);
        QCOMPARE(rows[4][0], QStringLiteral("Bob"));

        messages_.shown.clear();
        messages_.choices = {2};
        action("mnuExportDarts")->trigger();
        QCOMPARE(messages_.texts(QStringLiteral("save file")), QStringList());
    }

    // Cancel in the progress dialog: no file, and it is said.
    void cancellingTheExportLeavesNoFile()
    {
        const QString path = file("cancelled.csv");
        messages_.choices = {1};
        messages_.savePaths = {path};
        bool found = false;
        QTimer::singleShot(0, window(), [&] {
            if (auto *progress = window()->findChild<QProgressDialog *>(QStringLiteral("dlgExportProgress"))) {
                found = true;
                progress->cancel();
            }
        });
        action("mnuExportDarts")->trigger();
        QVERIFY(found);
        QVERIFY(!QFile::exists(path));
        QVERIFY2(messages_.texts(QStringLiteral("notice")).last().contains(QStringLiteral("cancelled")),
                 qPrintable(messages_.texts().join('|')));
    }

    // The copy opens as a statistics file and holds every row; the file in
    // use cannot be its own backup.
    void backupIsAWholeCopyThatOpens()
    {
        const QString path = file("backup.db");
        messages_.savePaths = {path};
        action("mnuBackupStats")->trigger();
        QCOMPARE(messages_.texts(QStringLiteral("error")), QStringList());
        {
            StatsStore copy(QStringLiteral("copy"));
            QVERIFY2(copy.open(path), qPrintable(copy.lastError()));
            QCOMPARE(everyRow(copy.connection()), everyRow(program_->store().connection()));
        }
        const QList<QVariantList> before = everyRow(program_->store().connection());
        messages_.savePaths = {home_->dbPath};
        action("mnuBackupStats")->trigger();
        QCOMPARE(messages_.texts(QStringLiteral("error")).size(), 1);
        QCOMPARE(everyRow(program_->store().connection()), before);
    }

    // Another program's database, a file of ours that lacks a column, a
    // text file, and a No to the question: nothing changes, and why is said.
    void restoreRefusesWhatIsNotOursAndChangesNothing()
    {
        const QString foreign = file("foreign.db");
        QVERIFY(OtherConnection(foreign, QStringLiteral("foreign"))
                    .exec({QStringLiteral("CREATE TABLE players (id INTEGER, name TEXT)"),
                           QStringLiteral("CREATE TABLE notes (text TEXT)")}));
        const QString lacking = file("lacking.db");
        {
            StatsStore maker(QStringLiteral("maker"));
            QVERIFY(maker.open(lacking));
        }
        QVERIFY(OtherConnection(lacking, QStringLiteral("lacking"))
                    .exec({QStringLiteral("DROP INDEX gamesdarts_player_target"),
                           QStringLiteral("ALTER TABLE gamesdarts DROP COLUMN targetring")}));
        const QString text = file("notes.txt");
        QFile notes(text);
        QVERIFY(notes.open(QIODevice::WriteOnly));
        notes.write("player,score\nAnn,60\n");
        notes.close();
        const QString good = file("good.db");
        {
            StatsStore maker(QStringLiteral("maker"));
            QVERIFY(maker.open(good));
            QVERIFY(maker.insertPlayer(QStringLiteral("Cy")));
        }

        const QList<QVariantList> before = everyRow(program_->store().connection());
        const std::pair<QString, const char *> refused[] = {
            {foreign, "not a Tavrix statistics file"}, {lacking, "no column targetring"},
            {text, "not a statistics file"}, {file("nowhere.db"), "does not exist"}};
        for (const auto &[path, why] : refused) {
            messages_.shown.clear();
            messages_.openPaths = {path};
            action("mnuRestoreStats")->trigger();
            const QStringList errors = messages_.texts(QStringLiteral("error"));
            QVERIFY2(errors.size() == 1 && errors[0].contains(QLatin1String(why)), qPrintable(errors.join('|')));
        }
        messages_.openPaths = {good};
        messages_.answers = {false};
        action("mnuRestoreStats")->trigger();
        QVERIFY(!QFile::exists(home_->dbPath + QStringLiteral(".before-restore")));
        QCOMPARE(everyRow(program_->store().connection()), before);
        QCOMPARE(program_->session().currentPlayerName, QStringLiteral("Ann"));
        // What the window reads is still the file in place.
        QVERIFY(program_->store().insertPlayer(QStringLiteral("Dee")));
        QCOMPARE(OtherConnection(home_->dbPath).value(QStringLiteral("SELECT count(*) FROM players")).toInt(), 3);
    }

    // The restored statistics are the window's: the file replaced is kept,
    // the player of the same name goes on, and a player who is not in the
    // file gives way to the one who is.
    void restoreTakesTheFileAndKeepsTheOldOne()
    {
        const QList<QVariantList> before = everyRow(program_->store().connection());
        const QString withAnn = file("with-ann.db");
        {
            StatsStore maker(QStringLiteral("maker"));
            QVERIFY(maker.open(withAnn));
            QVERIFY(maker.insertPlayer(QStringLiteral("Zoe")));
            const qint64 ann = maker.insertPlayer(QStringLiteral("Ann")).value();
            const qint64 target = maker.insertStatTarget(ann, 20, 3).value();
            QVERIFY(maker.insertStatThrow({ann, target, 0, 0, 100, 3, 20, 3}));
        }
        messages_.openPaths = {withAnn};
        action("mnuRestoreStats")->trigger();
        QCOMPARE(messages_.texts(QStringLiteral("error")), QStringList());
        QVERIFY(messages_.titles().contains(QStringLiteral("Restore Statistics")));
        QCOMPARE(program_->session().currentPlayerName, QStringLiteral("Ann"));
        QCOMPARE(program_->session().currentPlayerId, 2);
        QCOMPARE(text("PlayerNameText"), QStringLiteral("Hey, Ann!"));
        QCOMPARE(rows(QStringLiteral("SELECT name FROM players ORDER BY id")),
                 (QList<QVariantList>{{QStringLiteral("Zoe")}, {QStringLiteral("Ann")}}));
        {
            const OtherConnection kept(home_->dbPath + QStringLiteral(".before-restore"), QStringLiteral("kept"));
            QCOMPARE(everyRow(kept.db()), before);
        }
        // The new file takes the darts from here on.
        const qint64 target = program_->store().insertStatTarget(2, 19, 1).value();
        QVERIFY(program_->store().insertStatThrow({2, target, 0, 0, 100, 3, 19, 1}));
        QCOMPARE(OtherConnection(home_->dbPath).value(QStringLiteral("SELECT count(*) FROM statsthrows")).toInt(), 2);

        const QString withBob = file("with-bob.db");
        {
            StatsStore maker(QStringLiteral("maker"));
            QVERIFY(maker.open(withBob));
            QVERIFY(maker.insertPlayer(QStringLiteral("Bob")));
        }
        messages_.openPaths = {withBob};
        action("mnuRestoreStats")->trigger();
        QCOMPARE(messages_.texts(QStringLiteral("error")), QStringList());
        QCOMPARE(program_->session().currentPlayerName, QStringLiteral("Bob"));
        QCOMPARE(text("PlayerNameText"), QStringLiteral("Hey, Bob!"));
        QVERIFY(window()->isVisible());
    }
};

QTEST_MAIN(TestStatsFiles)
#include "tst_stats_files.moc"
