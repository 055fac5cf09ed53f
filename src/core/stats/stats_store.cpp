#include "core/stats/stats_store.h"

#include "core/stats/sqlite_handle.h"
#include "core/stats/server_connection.h"
#include "core/stats/sqlite_schema.h"
#include "core/stats/store_dialect.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <iterator>
#include <limits>
#include <utility>

namespace tavrix {

namespace {

} // namespace

QString storedDateTimeNow()
{
    return QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

struct StatsStore::PreparedStatements {
    QHash<QString, QSqlQuery> byKey;
};

QString StatsStore::defaultDatabasePath()
{
    const QString fromEnvironment = qEnvironmentVariable(pathVariable);
    if (!fromEnvironment.isEmpty())
        return fromEnvironment;
    return QDir::current().filePath(QString::fromLatin1(defaultFileName));
}

StatsStore::StatsStore(QString connectionName)
    : connectionName_(std::move(connectionName))
    , dialect_(&sqliteDialect())
    , statements_(std::make_unique<PreparedStatements>())
{
}

StatsStore::~StatsStore()
{
    close();
}

QSqlDatabase StatsStore::connection() const
{
    return QSqlDatabase::database(connectionName_, false);
}

bool StatsStore::isOpen() const
{
    return QSqlDatabase::contains(connectionName_) && connection().isOpen();
}

bool StatsStore::open(const QString &path)
{
    close();
    dialect_ = &sqliteDialect();
    path_ = path;
    lastError_.clear();

    const QFileInfo file(path);
    if (!file.absoluteDir().exists())
        return fail(QStringLiteral("The folder of the statistics database does not exist"),
                    QDir::toNativeSeparators(file.absolutePath()));
    // SQLite keeps its journal beside the file, so the folder must take
    // new files as well as the file changes.
    const QString cannotOpen = QStringLiteral("Cannot open the statistics database %1")
                                   .arg(QDir::toNativeSeparators(file.absoluteFilePath()));
    if (!QFileInfo(file.absolutePath()).isWritable())
        return fail(cannotOpen, QStringLiteral("the folder %1 is read-only")
                                    .arg(QDir::toNativeSeparators(file.absolutePath())));
    if (file.exists() && !file.isWritable())
        return fail(cannotOpen, QStringLiteral("the file is read-only"));
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE")))
        return fail(QStringLiteral("The SQLite driver for Qt is not installed"), QString());

    QString error;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName_);
        db.setDatabaseName(path);
        // Another program may hold a write lock for a moment; longer than
        // that, a write fails and what it held is kept for later.
        db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=300"));
        error = db.open() ? dialect_->prepare(db) : db.lastError().text();
    }
    if (!error.isEmpty()) {
        close();
        return fail(QStringLiteral("Cannot open the statistics database %1")
                        .arg(QDir::toNativeSeparators(path)),
                    error);
    }
    identity_ = identityOf(path);
    // The log exists from the first read on.
    QSqlQuery(connection()).exec(QStringLiteral("SELECT count(*) FROM sqlite_master"));
    logIdentity_ = identityOf(path + QStringLiteral("-wal"));
    return true;
}

bool StatsStore::open(const StoreAddress &address, const QString &password)
{
    if (const QString *path = std::get_if<QString>(&address))
        return open(*path);
    const ServerAddress &server = std::get<ServerAddress>(address);
    close();
    lastError_.clear();
    if (const std::optional<ServerFailure> failure = openServerConnection(connectionName_, server, password)) {
        needsPassword_ = failure->needsPassword;
        lastError_ = failure->message;
        return false;
    }
    dialect_ = &postgresDialect();
    server_ = server;
    password_ = password;
    path_ = describeServer(server);
    QString error;
    {
        QSqlDatabase db = connection();
        error = dialect_->prepare(db);
    }
    if (!error.isEmpty()) {
        close();
        return fail(QStringLiteral("Cannot use the club database (%1)").arg(describeServer(server)), error);
    }
    return true;
}

bool StatsStore::openExisting(const StoreAddress &address, const QString &password)
{
    if (const QString *path = std::get_if<QString>(&address); path && !QFileInfo::exists(*path)) {
        close();
        lastError_ = QStringLiteral("The statistics file %1 is gone.").arg(*path);
        return false;
    }
    return open(address, password);
}

StoreAddress StatsStore::address() const
{
    if (server_)
        return *server_;
    return path_;
}

std::optional<QString> StatsStore::writeProblem()
{
    // A server's tables were written by this copy when it opened them.
    if (server_)
        return std::nullopt;
    QSqlQuery query(connection());
    // Takes the write lock and gives it back at once, changing nothing.
    if (query.exec(QStringLiteral("BEGIN IMMEDIATE"))) {
        query.exec(QStringLiteral("ROLLBACK"));
        return std::nullopt;
    }
    return QStringLiteral("The statistics file %1 cannot be written: %2. Games and practice will not be "
                          "saved until it can.")
        .arg(QDir::toNativeSeparators(path_), describeDatabaseError(query.lastError(), path_));
}

void StatsStore::close()
{
    statements_->byKey.clear();
    // SQLite does not move the log of a file deleted, moved away or replaced
    // into it on close, and leaves the log behind, where it would be read
    // into the next file of that name. So the log is moved into the file
    // here, which a file moved away keeps, and then removed.
    const bool leavesLog = identity_ && identityOf(path_) != identity_ && logIdentity_
                           && identityOf(path_ + QStringLiteral("-wal")) == logIdentity_;
    if (leavesLog && isOpen())
        QSqlQuery(connection()).exec(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
    identity_.reset();
    logIdentity_.reset();
    inTransaction_ = false;
    // A result kept for this file means nothing for the next one.
    quartersMemo_.reset();
    countsMemo_.reset();
    needsPassword_ = false;
    server_.reset();
    password_.clear();
    connectionSuspect_ = false;
    if (!QSqlDatabase::contains(connectionName_))
        return;
    {
        QSqlDatabase db = QSqlDatabase::database(connectionName_, false);
        if (db.isOpen())
            db.close();
    }
    QSqlDatabase::removeDatabase(connectionName_);
    if (leavesLog) {
        for (const char *suffix : {"-wal", "-shm"})
            QFile::remove(path_ + QLatin1String(suffix));
    }
}

bool StatsStore::fail(const QString &what, const QString &detail)
{
    lastError_ = detail.trimmed().isEmpty() ? what + QLatin1Char('.')
                                            : what + QStringLiteral(": ") + detail.trimmed();
    return false;
}

bool StatsStore::fail(const QString &what, const QSqlQuery &query)
{
    // A server's connection may have gone with the failure: it is looked at
    // before the next read or write.
    connectionSuspect_ = server_.has_value();
    return fail(what, dialect_->describeError(query.lastError(), path_));
}

bool StatsStore::reachServer(const QString &what)
{
    if (!server_ || !connectionSuspect_)
        return true;
    if (QSqlQuery probe(connection()); probe.exec(QStringLiteral("SELECT 1"))) {
        connectionSuspect_ = false;
        return true;
    }
    // The server went away or restarted: a new connection, with the
    // password given when the store opened.
    statements_->byKey.clear();
    {
        QSqlDatabase db = QSqlDatabase::database(connectionName_, false);
        db.close();
    }
    QSqlDatabase::removeDatabase(connectionName_);
    if (const std::optional<ServerFailure> failure = openServerConnection(connectionName_, *server_, password_))
        return fail(what, failure->message);
    connectionSuspect_ = false;
    return true;
}

bool StatsStore::exec(QSqlQuery &query, const QString &what)
{
    if (!isOpen())
        return fail(what, QStringLiteral("the statistics database is not open"));
    if (query.exec())
        return true;
    // A statement that could not be prepared fails here in Qt's own words
    // ("No query", "Parameter count mismatch"); preparing it again tells why.
    if (query.lastError().nativeErrorCode().isEmpty() && !query.lastQuery().isEmpty()) {
        QSqlQuery probe(connection());
        if (!probe.prepare(query.lastQuery()))
            return fail(what, dialect_->describeError(probe.lastError(), path_));
    }
    return fail(what, query);
}

std::optional<qint64> StatsStore::execInsert(QSqlQuery &query, const QString &what, const QString &thing)
{
    if (!exec(query, what))
        return std::nullopt;
    // The statement returns the new row's id; the statement is finished at
    // once, because an SQLite statement left open would hold its write
    // uncommitted.
    std::optional<qint64> id;
    if (query.next()) {
        bool ok = false;
        const qint64 value = query.value(0).toLongLong(&ok);
        if (ok)
            id = value;
    }
    query.finish();
    if (!id)
        fail(what, QStringLiteral("the database gave the %1 no id").arg(thing));
    return id;
}

bool StatsStore::execGivenId(QSqlQuery &query, const QString &what, const char *table)
{
    if (!exec(query, what))
        return false;
    QSqlDatabase db = connection();
    const QString error = dialect_->afterGivenIds(db, table);
    return error.isEmpty() || fail(what, error);
}

bool StatsStore::execUpdate(QSqlQuery &query, const QString &what, const QString &thing, qint64 id)
{
    if (!exec(query, what))
        return false;
    if (query.numRowsAffected() == 0)
        return fail(what, QStringLiteral("there is no %1 %2 in the statistics").arg(thing).arg(id));
    return true;
}

QSqlQuery *StatsStore::prepared(const QString &key, const QString &statement)
{
    if (!reachServer(QStringLiteral("Cannot use the statistics")))
        return nullptr;
    if (!isOpen()) {
        fail(QStringLiteral("Cannot use the statistics"),
             QStringLiteral("the statistics database is not open"));
        return nullptr;
    }
    auto found = statements_->byKey.find(key);
    if (found == statements_->byKey.end()) {
        QSqlQuery query(connection());
        if (!query.prepare(statement)) {
            fail(QStringLiteral("Cannot prepare a statistics statement"), query);
            return nullptr;
        }
        found = statements_->byKey.insert(key, query);
    }
    return &*found;
}

bool StatsStore::insertGameDart(const GameDart &dart)
{
    if (!writable(QStringLiteral("Cannot record the game dart")))
        return false;
    QSqlQuery *const query = prepared(
        QStringLiteral("gamedart"),
        QStringLiteral("INSERT INTO gamesdarts (creationDate, games_id, players_id, setseq,"
                       " dartseq, x, y, dist, score, ring, targetscore, targetring)"
                       " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    if (!query)
        return {};
    query->addBindValue(storedDateTimeNow());
    query->addBindValue(dart.gameId);
    query->addBindValue(dart.playerId);
    query->addBindValue(dart.setSeq);
    query->addBindValue(dart.dartSeq);
    query->addBindValue(storedCoordinate(dart.x));
    query->addBindValue(storedCoordinate(dart.y));
    query->addBindValue(dart.dist);
    query->addBindValue(dart.score);
    query->addBindValue(dart.ring);
    query->addBindValue(dart.targetScore);
    query->addBindValue(dart.targetRing);
    return exec(*query, QStringLiteral("Cannot record the game dart"));
}

std::optional<qint64> StatsStore::insertStatTarget(qint64 playerId, int targetValue,
                                                   int targetRing)
{
    if (!writable(QStringLiteral("Cannot record the practice target")))
        return std::nullopt;
    QSqlQuery *const query = prepared(
        QStringLiteral("stattarget"),
        QStringLiteral("INSERT INTO statstargets (creationdate, players_id, targetValue,"
                       " targetRing) VALUES (?, ?, ?, ?) RETURNING id"));
    if (!query)
        return {};
    query->addBindValue(storedDateTimeNow());
    query->addBindValue(playerId);
    query->addBindValue(targetValue);
    query->addBindValue(targetRing);
    // The id just assigned is the player's newest target, whoever writes next.
    return execInsert(*query, QStringLiteral("Cannot record the practice target"), QStringLiteral("target"));
}

bool StatsStore::restoreStatTarget(qint64 targetId, qint64 playerId, int targetValue, int targetRing)
{
    const QString what = QStringLiteral("Cannot record the practice target");
    if (!writable(what))
        return false;
    QSqlQuery query(connection());
    query.prepare(QStringLiteral("INSERT INTO statstargets (id, creationdate, players_id, targetValue,"
                                 " targetRing) VALUES (?, ?, ?, ?, ?) ON CONFLICT DO NOTHING"));
    for (const QVariant &value : {QVariant(targetId), QVariant(storedDateTimeNow()), QVariant(playerId),
                                  QVariant(targetValue), QVariant(targetRing)})
        query.addBindValue(value);
    return execGivenId(query, what, "statstargets");
}

bool StatsStore::insertStatThrow(const PracticeDart &dart)
{
    if (!writable(QStringLiteral("Cannot record the practice dart")))
        return false;
    QSqlQuery *const query = prepared(
        QStringLiteral("statthrow"),
        QStringLiteral("INSERT INTO statsthrows (players_id, statstargets_id, seq, x, y, dist,"
                       " score, ring) VALUES (?, ?, ?, ?, ?, ?, ?, ?)"));
    if (!query)
        return {};
    query->addBindValue(dart.playerId);
    query->addBindValue(dart.targetId);
    query->addBindValue(dart.seq);
    query->addBindValue(storedCoordinate(dart.x));
    query->addBindValue(storedCoordinate(dart.y));
    query->addBindValue(dart.dist);
    query->addBindValue(dart.score);
    query->addBindValue(dart.ring);
    return exec(*query, QStringLiteral("Cannot record the practice dart"));
}

std::optional<qint64> StatsStore::insertGame(const NewGame &game)
{
    if (!writable(QStringLiteral("Cannot record the new game")))
        return std::nullopt;
    QSqlQuery *const query = prepared(
        QStringLiteral("game"),
        QStringLiteral("INSERT INTO games (creationdate, players_id, gametype, skill, opponent,"
                       " result, throws, points, bestset, outset)"
                       " VALUES (?, ?, ?, ?, ?, '', 0, 0, 0, 0) RETURNING id"));
    if (!query)
        return {};
    query->addBindValue(storedDateTimeNow());
    query->addBindValue(game.playerId);
    query->addBindValue(code(game.gameType));
    query->addBindValue(code(game.skill));
    query->addBindValue(game.opponent);
    return execInsert(*query, QStringLiteral("Cannot record the new game"), QStringLiteral("game"));
}

bool StatsStore::restorePlayer(qint64 playerId, const QString &name)
{
    const QString what = QStringLiteral("Cannot record the player");
    if (!writable(what))
        return false;
    QSqlQuery query(connection());
    query.prepare(QStringLiteral("INSERT INTO players (id, creationdate, name) VALUES (?, ?, ?) ON CONFLICT DO NOTHING"));
    query.addBindValue(playerId);
    query.addBindValue(storedDateTimeNow());
    query.addBindValue(name);
    return execGivenId(query, what, "players");
}

bool StatsStore::restoreGame(qint64 gameId, const NewGame &game, const QString &playerName)
{
    const QString what = QStringLiteral("Cannot record the game");
    if (!restorePlayer(game.playerId, playerName) || !writable(what))
        return false;
    QSqlQuery query(connection());
    query.prepare(QStringLiteral("INSERT INTO games (id, creationdate, players_id, gametype, skill,"
                                 " opponent, result, throws, points, bestset, outset)"
                                 " VALUES (?, ?, ?, ?, ?, ?, '', 0, 0, 0, 0) ON CONFLICT DO NOTHING"));
    for (const QVariant &value : {QVariant(gameId), QVariant(storedDateTimeNow()), QVariant(game.playerId),
                                  QVariant(code(game.gameType)), QVariant(code(game.skill)),
                                  QVariant(game.opponent)})
        query.addBindValue(value);
    return execGivenId(query, what, "games");
}

bool StatsStore::finishGame(qint64 gameId, const GameResult &result)
{
    if (!writable(QStringLiteral("Cannot record the end of the game")))
        return false;
    QSqlQuery query(connection());
    query.prepare(QStringLiteral("UPDATE games SET result = ?, throws = ?, points = ?, bestset = ?,"
                                 " outset = ? WHERE id = ?"));
    for (const QVariant &value : {QVariant(result.result), QVariant(result.throws),
                                  QVariant(result.points), QVariant(result.bestSet),
                                  QVariant(result.outSet), QVariant(gameId)})
        query.addBindValue(value);
    return exec(query, QStringLiteral("Cannot record the end of the game"));
}

std::optional<qint64> StatsStore::insertPlayer(const QString &name)
{
    if (!writable(QStringLiteral("Cannot record the new player")))
        return std::nullopt;
    QSqlQuery *const query = prepared(
        QStringLiteral("player"),
        QStringLiteral("INSERT INTO players (creationdate, name) VALUES (?, ?) RETURNING id"));
    if (!query)
        return {};
    query->addBindValue(storedDateTimeNow());
    query->addBindValue(name);
    return execInsert(*query, QStringLiteral("Cannot record the new player"), QStringLiteral("player"));
}

bool StatsStore::resetPlayerStats(qint64 playerId)
{
    // Game darts are found through their games, so they go before the games.
    std::vector<const char *> statements{"DELETE FROM statstargets WHERE players_id = ?",
                                         "DELETE FROM statsthrows WHERE players_id = ?",
                                         "DELETE FROM gamesdarts WHERE EXISTS (SELECT * FROM games"
                                         " WHERE games.id = gamesdarts.games_id AND games.players_id = ?)",
                                         "DELETE FROM games WHERE players_id = ?"};
    if (holdsDrillTables())
        statements.insert(statements.end(), std::begin(deleteDrillsStatements), std::end(deleteDrillsStatements));
    if (holdsMatchTables())
        statements.insert(statements.end(), std::begin(deleteMatchesStatements), std::end(deleteMatchesStatements));
    // What was copied into the player may be copied again.
    if (server_)
        statements.push_back("DELETE FROM clubcopies WHERE players_id = ?");
    return runForPlayer(statements, playerId, QStringLiteral("Cannot delete the statistics"));
}

bool StatsStore::runForPlayer(const std::vector<const char *> &statements, qint64 playerId, const QString &what)
{
    Batch batch(*this);
    if (!batch.isActive())
        return false;
    for (const char *statement : statements) {
        QSqlQuery query(connection());
        query.prepare(QString::fromLatin1(statement));
        query.addBindValue(playerId);
        if (!exec(query, what))
            return false;
    }
    return batch.commit();
}

std::optional<QList<ChartRow>> StatsStore::outchartRows()
{
    const std::optional<QList<StoredChartRow>> stored = storedOutchartRows();
    if (!stored)
        return std::nullopt;
    QList<ChartRow> rows;
    rows.reserve(stored->size());
    for (const StoredChartRow &row : *stored)
        rows.append(row.row);
    return rows;
}

std::optional<QList<StoredChartRow>> StatsStore::storedOutchartRows()
{
    QSqlQuery query(connection());
    query.prepare(QStringLiteral("SELECT %1, points, singleout, doubleout FROM outchart ORDER BY points, %1")
                      .arg(dialect_->writeOrder()));
    if (!exec(query, QStringLiteral("Cannot read the checkout chart")))
        return std::nullopt;
    QList<StoredChartRow> rows;
    while (query.next()) {
        // The column's integer affinity stores every whole number as an
        // integer, so anything else here is not one (a server's integer
        // column holds nothing else).
        const QVariant points = query.value(1);
        const bool whole = (points.typeId() == QMetaType::LongLong || points.typeId() == QMetaType::Int)
                           && points.toLongLong() >= std::numeric_limits<int>::min()
                           && points.toLongLong() <= std::numeric_limits<int>::max();
        rows.append({query.value(0).toLongLong(),
                     {whole ? points.toInt() : 0, query.value(2).toString(),
                      query.value(3).toString()}});
    }
    return rows;
}

bool StatsStore::replaceOutchartRows(const QList<qint64> &rowIds, const QList<ChartRow> &rows)
{
    const QString what = QStringLiteral("Cannot repair the checkout chart");
    Batch batch(*this);
    if (!batch.isActive())
        return false;
    QSqlQuery remove(connection());
    remove.prepare(QStringLiteral("DELETE FROM outchart WHERE %1 = ?").arg(dialect_->writeOrder()));
    for (const qint64 rowId : rowIds) {
        remove.addBindValue(rowId);
        if (!exec(remove, what))
            return false;
    }
    QSqlDatabase db = connection();
    const QString error = insertChartRows(db, rows);
    if (!error.isEmpty())
        return fail(what, error);
    return batch.commit();
}

bool StatsStore::beginTransaction()
{
    if (!reachServer(QStringLiteral("Cannot start writing statistics")))
        return false;
    if (!isOpen())
        return fail(QStringLiteral("Cannot write statistics"), QStringLiteral("the statistics database is not open"));
    if (!writable(QStringLiteral("Cannot start writing statistics")))
        return false;
    QSqlDatabase db = connection();
    if (!db.transaction()) {
        connectionSuspect_ = server_.has_value();
        return fail(QStringLiteral("Cannot start writing statistics"), dialect_->describeError(db.lastError(), path_));
    }
    inTransaction_ = true;
    return true;
}

bool StatsStore::commitTransaction()
{
    inTransaction_ = false;
    QSqlDatabase db = connection();
    if (db.commit())
        return true;
    connectionSuspect_ = server_.has_value();
    fail(QStringLiteral("Cannot save statistics"), dialect_->describeError(db.lastError(), path_));
    db.rollback();
    return false;
}

void StatsStore::rollbackTransaction()
{
    inTransaction_ = false;
    connection().rollback();
}

} // namespace tavrix
