// The server dialect on a throw-away PostgreSQL database: the tables and
// columns the store reads, made once however many boards start together;
// databases that are not ours left alone; the change stamp moving with
// committed writes only; given ids followed by larger new ones; the
// practice-sums triggers dropping what the file's drop; and the words for a
// lost connection and a write that collided with another board's.

#include "core/stats/outchart_data.h"
#include "core/stats/server_connection.h"
#include "core/stats/store_dialect.h"
#include "core/stats/store_schema.h"

#include "../support/sql_rows.h"
#include "../support/test_server.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <thread>

using namespace tavrix;

namespace {

// A connection opened to `server` under `name`, removed again at the end.
class ServerDb {
public:
    ServerDb(const QString &name, const tavrix::ServerAddress &server) : name_(name)
    {
        if (const auto failure = openServerConnection(name, server))
            error_ = failure->message;
    }
    ~ServerDb()
    {
        { QSqlDatabase db = QSqlDatabase::database(name_, false); db.close(); }
        QSqlDatabase::removeDatabase(name_);
    }
    QSqlDatabase db() const { return QSqlDatabase::database(name_, false); }
    QString error() const { return error_; }

private:
    QString name_;
    QString error_;
};

QString prepared(QSqlDatabase db)
{
    return postgresDialect().prepare(db);
}

QString execError(QSqlDatabase db, const QString &sql)
{
    QSqlQuery query(db);
    return query.exec(sql) ? QString() : query.lastError().text();
}

qint64 stamp(QSqlDatabase db)
{
    QString error;
    const auto version = postgresDialect().changeStamp(db, error);
    return version ? version->otherConnections : -1;
}

QList<qint64> remainingSums(QSqlDatabase db)
{
    QList<qint64> players;
    for (const QVariantList &row : sqlRows(db, QStringLiteral("SELECT players_id FROM practicesums")))
        players << row[0].toLongLong();
    std::sort(players.begin(), players.end());
    return players;
}

} // namespace

class TestPgDialect : public QObject {
    Q_OBJECT

    std::optional<ServerAddress> fresh(const QString &name)
    {
        QString error;
        auto server = TestServer::freshDatabase(name, error);
        if (!server)
            qWarning("%s", qPrintable(error));
        return server;
    }

private slots:
    void initTestCase()
    {
        QVERIFY2(QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL")), "Qt's PostgreSQL driver is not installed");
    }

    // Every table and column the store reads, the five versions, the
    // bundled chart; a second start writes nothing, and a chart emptied by
    // someone is filled again.
    void freshDatabaseIsPreparedOnceAndThenOnlyRead()
    {
        const auto server = fresh(QStringLiteral("prepare"));
        QVERIFY(server);
        ServerDb board(QStringLiteral("board"), *server);
        QVERIFY2(board.error().isEmpty(), qPrintable(board.error()));
        QSqlDatabase boardDb = board.db();
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(prepared(board.db()), QString());
        const qint64 freshUs = timer.nsecsElapsed() / 1000;

        for (const OwnTable &table : ownTables()) {
            QSqlQuery query(board.db());
            query.prepare(QStringLiteral("SELECT column_name FROM information_schema.columns"
                                         " WHERE table_schema = current_schema() AND table_name = ?"));
            query.addBindValue(QString::fromLatin1(table.name));
            QVERIFY(query.exec());
            QStringList columns;
            while (query.next())
                columns << query.value(0).toString();
            for (const char *column : table.columns)
                QVERIFY2(columns.contains(QLatin1String(column)), qPrintable(table.name + QStringLiteral(".") + column));
            QVERIFY(postgresDialect().holdsTable(boardDb, table.name));
        }
        QVERIFY(!postgresDialect().holdsTable(boardDb, "nosuchtable"));
        const QString versions = QStringLiteral("SELECT version, applied FROM schemaversions ORDER BY version");
        const QList<QVariantList> versionRows = sqlRows(board.db(), versions);
        QCOMPARE(versionRows.size(), 6);
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(versionRows[i][0].toInt(), i + 1);
            QVERIFY(QDateTime::fromString(versionRows[i][1].toString(), QStringLiteral("yyyy-MM-dd HH:mm:ss")).isValid());
        }
        const QString chartCount = QStringLiteral("SELECT count(*) FROM outchart");
        QCOMPARE(sqlValue(board.db(), chartCount).toInt(), bundledChartRows().size());

        const qint64 before = stamp(board.db());
        timer.restart();
        QCOMPARE(prepared(board.db()), QString());
        const qint64 againUs = timer.nsecsElapsed() / 1000;
        QCOMPARE(stamp(board.db()), before);
        QCOMPARE(sqlRows(board.db(), versions), versionRows);
        qInfo("prepare: %lld us on a fresh database, %lld us on an up-to-date one", freshUs, againUs);

        QCOMPARE(execError(board.db(), QStringLiteral("DELETE FROM outchart")), QString());
        QCOMPARE(prepared(board.db()), QString());
        QCOMPARE(sqlValue(board.db(), chartCount).toInt(), bundledChartRows().size());
    }

    // Boards that start at the same moment take the steps in turn: both
    // succeed and the second finds them done.
    void boardsStartingTogetherRunTheStepsOnce()
    {
        for (int round = 0; round < 3; ++round) {
            const auto server = fresh(QStringLiteral("together%1").arg(round));
            QVERIFY(server);
            QString results[2];
            auto start = [&](int board) {
                ServerDb db(QStringLiteral("board%1").arg(board), *server);
                results[board] = db.error().isEmpty() ? prepared(db.db()) : db.error();
            };
            std::thread first(start, 0), second(start, 1);
            first.join();
            second.join();
            QCOMPARE(results[0], QString());
            QCOMPARE(results[1], QString());
            ServerDb check(QStringLiteral("check"), *server);
            QCOMPARE(sqlValue(check.db(), QStringLiteral("SELECT count(*) FROM schemaversions")).toInt(), 6);
            QCOMPARE(sqlValue(check.db(), QStringLiteral("SELECT count(*) FROM outchart")).toInt(),
                     bundledChartRows().size());
        }
    }

    void refusesWhatIsNotOurs_data()
    {
        QTest::addColumn<bool>("ours");
        QTest::addColumn<QString>("change");
        QTest::addColumn<QString>("reason");
        QTest::newRow("newer version") << true
                                       << "INSERT INTO schemaversions (version, applied) VALUES (99, '2030-01-01 00:00:00')"
                                       << refusedAsNewer();
        QTest::newRow("another program") << false << "CREATE TABLE invoices (id INTEGER, amount NUMERIC)"
                                         << refusedAsForeign();
    }

    // Refused without a change: the newer version keeps its rows, the
    // other program's schema gets none of our tables.
    void refusesWhatIsNotOurs()
    {
        QFETCH(bool, ours);
        QFETCH(QString, change);
        QFETCH(QString, reason);
        const auto server = fresh(QStringLiteral("refuse"));
        QVERIFY(server);
        ServerDb board(QStringLiteral("board"), *server);
        if (ours)
            QCOMPARE(prepared(board.db()), QString());
        QCOMPARE(execError(board.db(), change), QString());
        const QString tables = QStringLiteral(
            "SELECT count(*) FROM information_schema.tables WHERE table_schema = current_schema()");
        const int tablesBefore = sqlValue(board.db(), tables).toInt();
        QCOMPARE(prepared(board.db()), reason);
        QCOMPARE(sqlValue(board.db(), tables).toInt(), tablesBefore);
    }

    // Another board's rows move the stamp once they are committed, this
    // board's as soon as they are written; given ids are followed by larger
    // new ones, and an empty table's next id stays where it was.
    void stampAndIdsFollowTheWrites()
    {
        const auto server = fresh(QStringLiteral("stamp"));
        QVERIFY(server);
        ServerDb board(QStringLiteral("board"), *server), other(QStringLiteral("other"), *server);
        QSqlDatabase boardDb = board.db();
        QCOMPARE(prepared(board.db()), QString());

        const qint64 start = stamp(board.db());
        QVERIFY(start >= 0);
        QCOMPARE(execError(other.db(), QStringLiteral("BEGIN")), QString());
        QCOMPARE(execError(other.db(), QStringLiteral("INSERT INTO players (name) VALUES ('Ann')")), QString());
        QCOMPARE(stamp(board.db()), start);
        QCOMPARE(execError(other.db(), QStringLiteral("COMMIT")), QString());
        const qint64 committed = stamp(board.db());
        QVERIFY(committed > start);
        QCOMPARE(execError(board.db(), QStringLiteral("INSERT INTO statsthrows (players_id) VALUES (1)")), QString());
        QVERIFY(stamp(board.db()) > committed);

        QCOMPARE(execError(board.db(), QStringLiteral("INSERT INTO players (id, name) VALUES (50, 'Bob')")), QString());
        QCOMPARE(postgresDialect().afterGivenIds(boardDb, "players"), QString());
        QCOMPARE(postgresDialect().afterGivenIds(boardDb, "games"), QString());
        QCOMPARE(sqlValue(board.db(), QStringLiteral("INSERT INTO players (name) VALUES ('Cy') RETURNING id")).toInt(), 51);
        QCOMPARE(sqlValue(board.db(), QStringLiteral("INSERT INTO games (players_id) VALUES (1) RETURNING id")).toInt(), 1);
        QVERIFY(!postgresDialect().afterGivenIds(boardDb, "nosuchtable").isEmpty());
    }

    void practiceSumsDropAsInTheFile_data()
    {
        QTest::addColumn<QString>("write");
        QTest::addColumn<bool>("drops");
        QTest::newRow("dart added") << "INSERT INTO statsthrows (id, players_id, statstargets_id) VALUES (10, 4, 2)" << true;
        QTest::newRow("dart removed") << "DELETE FROM statsthrows WHERE id = 1" << true;
        QTest::newRow("dart moved") << "UPDATE statsthrows SET players_id = 4, statstargets_id = 2 WHERE id = 1" << true;
        QTest::newRow("target without darts") << "INSERT INTO statstargets (id, players_id) VALUES (3, 5)" << false;
        QTest::newRow("target with darts") << "INSERT INTO statstargets (id, players_id) VALUES (7, 5)" << true;
        QTest::newRow("target removed") << "DELETE FROM statstargets WHERE id = 2" << true;
        QTest::newRow("target given away") << "UPDATE statstargets SET players_id = 4 WHERE id = 2" << true;
    }

    // The same write on a file and on the server leaves the same players'
    // sums, and drops at least one player's.
    void practiceSumsDropAsInTheFile()
    {
        QFETCH(QString, write);
        QFETCH(bool, drops);
        const auto server = fresh(QStringLiteral("sums"));
        QVERIFY(server);
        ServerDb board(QStringLiteral("board"), *server);
        QCOMPARE(prepared(board.db()), QString());
        QTemporaryDir dir;
        QList<qint64> remaining[2];
        {
            QSqlDatabase file = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("file"));
            file.setDatabaseName(dir.filePath(QStringLiteral("stats.db")));
            QVERIFY(file.open());
            QCOMPARE(sqliteDialect().prepare(file), QString());
            const QSqlDatabase dbs[2] = {file, board.db()};
            for (int i = 0; i < 2; ++i) {
                const QStringList writes = {
                    QStringLiteral("INSERT INTO statstargets (id, players_id) VALUES (1, 1), (2, 2)"),
                    QStringLiteral("INSERT INTO statsthrows (id, players_id, statstargets_id) VALUES (1, 3, 1), (2, 3, 7)"),
                    QStringLiteral("INSERT INTO practicesums (players_id, distcount)"
                                   " VALUES (1, 1), (2, 1), (3, 1), (4, 1), (5, 1)"),
                    write};
                for (const QString &sql : writes)
                    QCOMPARE(execError(dbs[i], sql), QString());
                remaining[i] = remainingSums(dbs[i]);
            }
            file.close();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("file"));
        QCOMPARE(remaining[1], remaining[0]);
        QCOMPARE(remaining[1].size() < 5, drops);
    }

    // A connection the server ended, and a write that met another board's.
    void failuresAreNamed()
    {
        const auto server = fresh(QStringLiteral("failures"));
        QVERIFY(server);
        ServerDb board(QStringLiteral("board"), *server), other(QStringLiteral("other"), *server);
        QCOMPARE(prepared(board.db()), QString());

        QCOMPARE(execError(board.db(), QStringLiteral("BEGIN ISOLATION LEVEL REPEATABLE READ")), QString());
        QVERIFY(sqlValue(board.db(), QStringLiteral("SELECT counter FROM storechanges")).isValid());
        QCOMPARE(execError(other.db(), QStringLiteral("INSERT INTO players (name) VALUES ('Ann')")), QString());
        QSqlQuery collided(board.db());
        QVERIFY(!collided.exec(QStringLiteral("INSERT INTO players (name) VALUES ('Bob')")));
        QCOMPARE(postgresDialect().describeError(collided.lastError(), QStringLiteral("club")),
                 QStringLiteral("another board wrote at the same moment"));
        QCOMPARE(execError(board.db(), QStringLiteral("ROLLBACK")), QString());

        QSqlQuery plain(board.db());
        QVERIFY(!plain.exec(QStringLiteral("SELECT nosuchcolumn FROM players")));
        QCOMPARE(postgresDialect().describeError(plain.lastError(), QStringLiteral("club")),
                 plain.lastError().databaseText());

        const QVariant pid = sqlValue(board.db(), QStringLiteral("SELECT pg_backend_pid()"));
        QVERIFY(sqlValue(other.db(), QStringLiteral("SELECT pg_terminate_backend(%1)").arg(pid.toInt())).toBool());
        QSqlQuery lost(board.db());
        QVERIFY(!lost.exec(QStringLiteral("SELECT 1")));
        QCOMPARE(postgresDialect().describeError(lost.lastError(), QStringLiteral("club")),
                 QStringLiteral("the connection to the club database (club) was lost"));
    }
};

QTEST_GUILESS_MAIN(TestPgDialect)
#include "tst_pg_dialect.moc"
