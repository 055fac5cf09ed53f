// A PostgreSQL server reached through its URI: what the driver says when
// TLS is refused, nothing answers, the host is unknown, the role or the
// database is not there, or a password is missing or wrong. (A server that
// answers is connected to, and given quotes as data, in tst_store_on_server
// and tst_club_database.)

#include "core/stats/server_connection.h"
#include "core/stats/store_address.h"

#include "../support/test_server.h"

#include <QScopeGuard>
#include <QSqlDatabase>
#include <QTest>

using namespace tavrix;

class TestServerConnection : public QObject {
    Q_OBJECT

    ServerAddress server_;

private slots:
    void initTestCase()
    {
        QVERIFY2(QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL")), "Qt's PostgreSQL driver is not installed");
        QString error;
        const std::optional<ServerAddress> server = TestServer::address(error);
        QVERIFY2(server, qPrintable(error));
        server_ = *server;
    }

    // The test server offers no TLS: asked for, it is refused. Each failure
    // names the server and its cause in words, and only a refused or
    // missing password asks for one.
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
        ServerAddress noDatabase = server_;
        noDatabase.database = QStringLiteral("no_such_db");
        const std::pair<ServerAddress, QString> cases[] = {
            {tls, QStringLiteral("the encrypted (TLS) connection could not be made")},
            {closed, QStringLiteral("127.0.0.1, port 1: nothing answers there (the server may be stopped")},
            {unknown, QStringLiteral("no-such-host.invalid, port %1: the name no-such-host.invalid is not known")
                          .arg(server_.port)},
            {stranger, QStringLiteral(": the server has no user nobody_here")},
            {noDatabase, QStringLiteral(": the server has no database no_such_db")}};
        for (const auto &[server, cause] : cases) {
            const std::optional<ServerFailure> failure = testServerConnection(server);
            QVERIFY(failure);
            QVERIFY2(failure->message.startsWith(QLatin1String("Cannot reach the club database at ")),
                     qPrintable(failure->message));
            QVERIFY2(failure->message.contains(cause), qPrintable(failure->message));
            QVERIFY(!failure->needsPassword);
        }
        QVERIFY(QSqlDatabase::connectionNames().isEmpty());
        const ServerFailure asked = describeServerFailure(server_, QStringLiteral("fe_sendauth: no password supplied"));
        QVERIFY(asked.needsPassword);
        QVERIFY2(asked.message.endsWith(QLatin1String("the server asks for the password of tavrix")),
                 qPrintable(asked.message));
        QVERIFY(describeServerFailure(server_, QStringLiteral("FATAL: password authentication failed for user"))
                    .needsPassword);
    }

    // A server that asks for a password: none given asks for one, a wrong
    // one is refused and asked again, the right one (with a quote in it)
    // lets in.
    void aPasswordIsAskedForAndChecked()
    {
        QString uri, dir, error;
        const QString password = QStringLiteral("s3cret'pw");
        QVERIFY2(TestServer::startCluster(uri, dir, error, password), qPrintable(error));
        const auto cleanup = qScopeGuard([&] { TestServer::clusterCommand(QStringLiteral("stop"), dir); });
        const auto read = readStoreAddress(uri);
        const ServerAddress server = std::get<ServerAddress>(std::get<StoreAddress>(read));
        qunsetenv("PGPASSWORD");
        const std::optional<ServerFailure> none = testServerConnection(server);
        QVERIFY(none && none->needsPassword);
        QVERIFY2(none->message.contains(QLatin1String("asks for the password of tavrix")), qPrintable(none->message));
        const std::optional<ServerFailure> wrong = testServerConnection(server, QStringLiteral("nope"));
        QVERIFY(wrong && wrong->needsPassword);
        QVERIFY2(wrong->message.contains(QLatin1String("refused the password of tavrix")), qPrintable(wrong->message));
        QVERIFY(!testServerConnection(server, password));
    }
};

QTEST_GUILESS_MAIN(TestServerConnection)
#include "tst_server_connection.moc"
