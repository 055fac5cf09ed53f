// A PostgreSQL server reached through its URI: a throw-away cluster (the
// one in TAVRIX_TEST_PG, or one started here), connected to with the
// options the address gives the driver, a value with a quote written and
// read back as a bound parameter, and what the driver says when TLS is
// refused, nothing answers, the host is unknown or the role is not there.

#include "core/stats/store_address.h"

#include <QProcess>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTest>

using namespace tavrix;

namespace {

// The error of opening a connection to `server`; "" when it opened.
QString openError(const ServerAddress &server, const QString &name, QSqlDatabase *keep = nullptr)
{
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name);
    db.setHostName(server.host);
    db.setPort(server.port);
    db.setUserName(server.user);
    db.setDatabaseName(server.databaseName());
    db.setConnectOptions(connectOptions(server));
    const bool opened = db.open();
    const QString error = opened ? QString() : db.lastError().databaseText();
    if (keep)
        *keep = db;
    return error;
}

} // namespace

class TestServerConnection : public QObject {
    Q_OBJECT

    ServerAddress server_;
    QString startedDir_;

private slots:
    void initTestCase()
    {
        QVERIFY2(QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL")), "Qt's PostgreSQL driver is not installed");
        QString uri = qEnvironmentVariable("TAVRIX_TEST_PG");
        if (uri.isEmpty()) {
            QProcess start;
            start.start(QStringLiteral("bash"), {QStringLiteral(TAVRIX_SOURCE_DIR "/scripts/pg_test_cluster.sh"),
                                                 QStringLiteral("start")});
            QVERIFY(start.waitForFinished(60000));
            const QString out = QString::fromUtf8(start.readAllStandardOutput());
            QVERIFY2(start.exitCode() == 0, qPrintable(QString::fromUtf8(start.readAllStandardError())));
            uri = QRegularExpression(QStringLiteral("TAVRIX_TEST_PG='([^']*)'")).match(out).captured(1);
            startedDir_ = QRegularExpression(QStringLiteral("TAVRIX_TEST_PG_DIR='([^']*)'")).match(out).captured(1);
        }
        const auto read = readStoreAddress(uri);
        QVERIFY2(std::holds_alternative<StoreAddress>(read), qPrintable(uri));
        const auto *server = std::get_if<ServerAddress>(&std::get<StoreAddress>(read));
        QVERIFY2(server, qPrintable(uri));
        server_ = *server;
    }
    void cleanupTestCase()
    {
        for (const QString &name : QSqlDatabase::connectionNames())
            QSqlDatabase::removeDatabase(name);
        if (!startedDir_.isEmpty())
            QProcess::execute(QStringLiteral("bash"), {QStringLiteral(TAVRIX_SOURCE_DIR "/scripts/pg_test_cluster.sh"),
                                                       QStringLiteral("stop"), startedDir_});
    }

    void connectsAndKeepsAQuoteAsData()
    {
        QSqlDatabase db;
        QCOMPARE(openError(server_, QStringLiteral("good"), &db), QString());
        {
            QSqlQuery query(db);
            QVERIFY(query.exec(QStringLiteral("CREATE TEMPORARY TABLE names (name TEXT)")));
            QVERIFY(query.prepare(QStringLiteral("INSERT INTO names (name) VALUES (?)")));
            query.addBindValue(QStringLiteral("Bob O'Neil'); DROP TABLE names; --"));
            QVERIFY2(query.exec(), qPrintable(query.lastError().text()));
            QVERIFY(query.exec(QStringLiteral("SELECT name, current_database() FROM names")) && query.next());
            QCOMPARE(query.value(0).toString(), QStringLiteral("Bob O'Neil'); DROP TABLE names; --"));
            QCOMPARE(query.value(1).toString(), QStringLiteral("tavrix_test"));
        }
        db.close();
    }

    // The test server offers no TLS: asked for, it is refused. Each failure
    // names its cause in words.
    void failuresNameTheirCause()
    {
        ServerAddress tls = server_;
        tls.tls = TlsMode::Require;
        ServerAddress closed = server_;
        closed.port = 1;
        ServerAddress unknown = server_;
        unknown.host = QStringLiteral("no-such-host.invalid");
        ServerAddress stranger = server_;
        stranger.user = QStringLiteral("nobody_here");
        const std::pair<ServerAddress, const char *> cases[] = {
            {tls, "SSL"}, {closed, "refused"}, {unknown, "no-such-host.invalid"}, {stranger, "nobody_here"}};
        int i = 0;
        for (const auto &[server, cause] : cases) {
            const QString error = openError(server, QStringLiteral("bad%1").arg(i++));
            QVERIFY2(error.contains(QLatin1String(cause)), qPrintable(error));
        }
    }
};

QTEST_GUILESS_MAIN(TestServerConnection)
#include "tst_server_connection.moc"
