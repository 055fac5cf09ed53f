// The server dialect on a throw-away PostgreSQL database: its tables made
// once however many boards start together, a later start writing nothing
// but a chart someone emptied; databases that are not ours left alone; the
// change stamp moving with committed writes only; and the words for a lost
// connection and a write that collided with another board's. What the store
// writes and reads there, given ids and the practice-sums triggers among it,
// is compared with a file's in tst_store_on_server.

#include "core/stats/outchart_data.h"
#include "core/stats/server_connection.h"
#include "core/stats/store_dialect.h"
#include "core/stats/store_schema.h"

#include "../support/sql_rows.h"
#include "../support/test_server.h"

#include <QTest>

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

    // Boards that start at the same moment take the steps in turn: both
    // succeed and the second finds them done. A later start writes nothing,
    // and fills a chart someone emptied again.
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
            const QString chartCount = QStringLiteral("SELECT count(*) FROM outchart");
            QCOMPARE(sqlValue(check.db(), QStringLiteral("SELECT count(*) FROM schemaversions")).toInt(), 6);
            QCOMPARE(sqlValue(check.db(), chartCount).toInt(), bundledChartRows().size());

            const qint64 before = stamp(check.db());
            QCOMPARE(prepared(check.db()), QString());
            QCOMPARE(stamp(check.db()), before);
            QCOMPARE(execError(check.db(), QStringLiteral("DELETE FROM outchart")), QString());
            QCOMPARE(prepared(check.db()), QString());
            QCOMPARE(sqlValue(check.db(), chartCount).toInt(), bundledChartRows().size());
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
    // board's as soon as they are written, each write of its transaction. A write that met another board's
    // and a connection the server ended are named as such; other failures
    // keep the server's words.
    void stampAndFailuresBetweenTwoBoards()
    {
        const auto server = fresh(QStringLiteral("stamp"));
        QVERIFY(server);
        ServerDb board(QStringLiteral("board"), *server), other(QStringLiteral("other"), *server);
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

        // In a transaction, each of the board's writes moves its own stamp,
        // while the counter the other boards read moves once, at the commit.
        QSqlDatabase boardDb = board.db();
        QString error;
        const qint64 counter = stamp(boardDb);
        QCOMPARE(execError(boardDb, QStringLiteral("BEGIN")), QString());
        std::optional<StoreVersion> seen = postgresDialect().changeStamp(boardDb, error);
        for (int write = 0; write < 3; ++write) {
            QCOMPARE(execError(boardDb, QStringLiteral("INSERT INTO players (name) VALUES ('Cy')")), QString());
            const std::optional<StoreVersion> now = postgresDialect().changeStamp(boardDb, error);
            QVERIFY(now && seen && !(*now == *seen));
            seen = now;
        }
        QCOMPARE(stamp(other.db()), counter);
        QCOMPARE(execError(boardDb, QStringLiteral("COMMIT")), QString());
        QCOMPARE(stamp(boardDb), counter + 1);
        QCOMPARE(stamp(other.db()), counter + 1);

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
