#pragma once

// The PostgreSQL server of the tests: the one TAVRIX_TEST_PG names (the test
// script starts one for the whole run), else a throw-away cluster started
// here on first use and stopped when the test program ends. Each test gets
// a database of its own on it, made empty, named after the test program's
// process so that tests running side by side never share one.

#include "core/stats/store_address.h"

#include <QCoreApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include <optional>

#ifndef TAVRIX_SOURCE_DIR
#error "tests using the test server need TAVRIX_SOURCE_DIR"
#endif

class TestServer {
public:
    // The server's address; nothing (with `error`) when none can be had.
    static std::optional<tavrix::ServerAddress> address(QString &error)
    {
        TestServer &server = instance();
        if (!server.address_)
            error = server.error_;
        return server.address_;
    }

    // An empty database `name` (made unique to this process) on the server,
    // dropped first when it is there; its address, or nothing (with
    // `error`).
    static std::optional<tavrix::ServerAddress> freshDatabase(const QString &name, QString &error)
    {
        std::optional<tavrix::ServerAddress> server = address(error);
        if (!server)
            return std::nullopt;
        const QString database = QStringLiteral("t%1_%2").arg(QCoreApplication::applicationPid()).arg(name).toLower();
        const QString connection = QStringLiteral("testServerAdmin");
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), connection);
            db.setHostName(server->host);
            db.setPort(server->port);
            db.setUserName(server->user);
            db.setDatabaseName(server->databaseName());
            db.setConnectOptions(tavrix::connectOptions(*server));
            if (!db.open()) {
                error = db.lastError().text();
            } else {
                QSqlQuery query(db);
                // The name is made here of letters, digits and _ only.
                if (!query.exec(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(database))
                    || !query.exec(QStringLiteral("CREATE DATABASE %1").arg(database)))
                    error = query.lastError().text();
            }
        }
        QSqlDatabase::removeDatabase(connection);
        if (!error.isEmpty())
            return std::nullopt;
        server->database = database;
        return server;
    }

    // As above, for a test that cannot go on without it: the test program
    // stops with the reason when there is none.
    static tavrix::ServerAddress freshDatabase(const QString &name)
    {
        QString error;
        const std::optional<tavrix::ServerAddress> server = freshDatabase(name, error);
        if (!server)
            qFatal("%s", qPrintable(error));
        return *server;
    }

private:
    TestServer()
    {
        QString uri = qEnvironmentVariable("TAVRIX_TEST_PG");
        if (uri.isEmpty() && !startCluster(uri, startedDir_, error_))
            return;
        const auto read = tavrix::readStoreAddress(uri);
        const auto *store = std::get_if<tavrix::StoreAddress>(&read);
        const auto *server = store ? std::get_if<tavrix::ServerAddress>(store) : nullptr;
        if (server)
            address_ = *server;
        else
            error_ = QStringLiteral("TAVRIX_TEST_PG is no server URI: ") + uri;
    }
    ~TestServer() { clusterCommand(QStringLiteral("stop"), startedDir_); }

public:
    // Starts a throw-away cluster of its own, which asks for `password`
    // when one is given: its URI and folder, or false with `error`.
    static bool startCluster(QString &uri, QString &dir, QString &error, const QString &password = {})
    {
        QProcess start;
        QStringList arguments{QStringLiteral(TAVRIX_SOURCE_DIR "/scripts/pg_test_cluster.sh"),
                              password.isEmpty() ? QStringLiteral("start") : QStringLiteral("start-with-password")};
        if (!password.isEmpty())
            arguments << password;
        start.start(QStringLiteral("bash"), arguments);
        if (!start.waitForFinished(120000) || start.exitCode() != 0) {
            error = QStringLiteral("the test server did not start: ") + QString::fromUtf8(start.readAllStandardError());
            return false;
        }
        const QString out = QString::fromUtf8(start.readAllStandardOutput());
        uri = QRegularExpression(QStringLiteral("TAVRIX_TEST_PG='([^']*)'")).match(out).captured(1);
        dir = QRegularExpression(QStringLiteral("TAVRIX_TEST_PG_DIR='([^']*)'")).match(out).captured(1);
        return true;
    }
    // "stop", "halt" or "resume" the cluster in `dir`; true when done.
    static bool clusterCommand(const QString &command, const QString &dir)
    {
        return !dir.isEmpty()
               && QProcess::execute(QStringLiteral("bash"),
                                    {QStringLiteral(TAVRIX_SOURCE_DIR "/scripts/pg_test_cluster.sh"), command, dir})
                      == 0;
    }

private:
    static TestServer &instance()
    {
        static TestServer server;
        return server;
    }

    std::optional<tavrix::ServerAddress> address_;
    QString error_;
    QString startedDir_;
};
