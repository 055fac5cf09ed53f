// The file under the statistics store: what its errors mean, whether it is
// still the file that was opened, and saving its statistics into another one.

#include "core/stats/stats_store.h"

#include "core/stats/sqlite_schema.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>
#include <utility>

namespace tavrix {

namespace {

// SQLite's primary result code of a failure: the driver's native code when it
// kept one, else found by SQLite's own text, which is all Qt's driver keeps
// of a failed COMMIT.
std::optional<int> resultCode(const QSqlError &error)
{
    bool ok = false;
    const int code = error.nativeErrorCode().toInt(&ok);
    if (ok)
        return code & 0xff;
    static constexpr std::pair<const char *, int> byText[] = {
        {"database is locked", 5},
        {"database table is locked", 6},
        {"attempt to write a readonly database", 8},
        {"disk I/O error", 10},
        {"database disk image is malformed", 11},
        {"database or disk is full", 13},
        {"unable to open database file", 14},
        {"file is not a database", 26},
    };
    const QString text = error.databaseText() + QLatin1Char(' ') + error.driverText();
    for (const auto &[words, byCode] : byText) {
        if (text.contains(QLatin1String(words), Qt::CaseInsensitive))
            return byCode;
    }
    return std::nullopt;
}

// What has become read-only of the file at `path` and its folder; "" when
// neither has, or nothing is known of the file.
QString readOnlyPart(const QString &path)
{
    if (path.isEmpty())
        return {};
    const QFileInfo file(path);
    if (file.exists() && !file.isWritable())
        return QStringLiteral("it is read-only");
    if (!QFileInfo(file.absolutePath()).isWritable())
        return QStringLiteral("its folder %1 is read-only").arg(QDir::toNativeSeparators(file.absolutePath()));
    return {};
}

} // namespace

// What SQLite's error means for the user, in words: the commonest causes by
// their result code, else SQLite's own text.
QString describeDatabaseError(const QSqlError &error, const QString &path)
{
    const std::optional<int> code = resultCode(error);
    if (!code)
        return error.text();
    switch (*code) {
    case 5: // SQLITE_BUSY
    case 6: // SQLITE_LOCKED
        return QStringLiteral("the statistics file is in use by another program");
    case 8: // SQLITE_READONLY
        if (const QString part = readOnlyPart(path); !part.isEmpty())
            return QStringLiteral("the statistics file cannot be written: ") + part;
        return QStringLiteral("the statistics file cannot be written (it or its folder is read-only)");
    case 10: // SQLITE_IOERR: a file or folder made read-only while open shows as this
        if (const QString part = readOnlyPart(path); !part.isEmpty())
            return QStringLiteral("the statistics file could not be written: ") + part;
        return QStringLiteral("the statistics file could not be written (the disk reported an error)");
    case 11: // SQLITE_CORRUPT
    case 26: // SQLITE_NOTADB
        return QStringLiteral("the statistics file is damaged or is not a statistics file");
    case 13: // SQLITE_FULL
        return QStringLiteral("the disk is full");
    case 14: // SQLITE_CANTOPEN
        return QStringLiteral("the statistics file cannot be opened");
    default:
        return error.text();
    }
}

namespace {

QString nativePath(const QString &path)
{
    return QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
}

// Whether the file begins as every SQLite database does ("SQLite format 3"
// and a zero byte); nothing when it cannot be read.
std::optional<bool> hasSqliteHeader(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    static constexpr char header[] = "SQLite format 3";
    static_assert(sizeof header == 16);
    return file.read(16) == QByteArray(header, sizeof header);
}

// A new file holds what an open store reads: a copy of the statistics, or
// an empty statistics file. Both are made under a name of their own beside
// the chosen file, and take its place only once complete.
QString partName(const QString &path)
{
    return QFileInfo(path).absoluteFilePath() + QStringLiteral(".saving");
}

void removeWithCompanions(const QString &path)
{
    for (const char *suffix : {"", "-wal", "-shm", "-journal"})
        QFile::remove(path + QLatin1String(suffix));
}

// Whether the database file at `path` opens as a whole statistics file; ""
// when it does, else why not.
QString checkCopy(const QString &path, const QString &connectionName)
{
    StatsStore probe(connectionName);
    if (!probe.open(path))
        return probe.lastError();
    QSqlQuery query(probe.connection());
    if (!query.exec(QStringLiteral("PRAGMA quick_check")) || !query.next()
        || query.value(0).toString() != QLatin1String("ok"))
        return QStringLiteral("the copy is damaged");
    return {};
}

// Why the file operations do not apply to a club database.
QString serverKeepsItsOwn()
{
    return QStringLiteral("the statistics are in the club database, which its server keeps and backs up "
                          "(with pg_dump); Tavrix copies and restores only a statistics file");
}

} // namespace

std::optional<StatsStore::FileIdentity> StatsStore::identityOf(const QString &path)
{
    struct stat info {};
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return std::nullopt;
    return FileIdentity{static_cast<quint64>(info.st_dev), static_cast<quint64>(info.st_ino)};
}

std::optional<QString> StatsStore::fileProblem() const
{
    if (!identity_)
        return std::nullopt;
    const QString file = QStringLiteral("the statistics file %1").arg(nativePath(path_));
    struct stat info {};
    if (::stat(QFile::encodeName(path_).constData(), &info) != 0) {
        // A folder that cannot be searched says nothing about the file.
        if (errno == ENOENT || errno == ENOTDIR)
            return file + QStringLiteral(" was deleted or moved away");
        return std::nullopt;
    }
    if (FileIdentity{static_cast<quint64>(info.st_dev), static_cast<quint64>(info.st_ino)} != *identity_)
        return file + QStringLiteral(" was replaced by another file");
    if (hasSqliteHeader(path_) == false)
        return file + QStringLiteral(" was written over and is no longer a statistics file");
    return std::nullopt;
}

bool StatsStore::writable(const QString &what)
{
    if (inTransaction_)
        return true;
    if (!reachServer(what))
        return false;
    if (const std::optional<QString> problem = fileProblem())
        return fail(what, *problem);
    return true;
}

QString StatsStore::copyInto(const QString &path)
{
    QSqlQuery query(connection());
    // The file name is a bound value, so any character in it is safe.
    if (!query.prepare(QStringLiteral("VACUUM INTO ?")))
        return describeDatabaseError(query.lastError(), path);
    query.addBindValue(path);
    if (!query.exec())
        return describeDatabaseError(query.lastError(), path);
    return {};
}

std::optional<StatsStore::Moved> StatsStore::moveTo(const QString &path)
{
    const QString target = QFileInfo(path).absoluteFilePath();
    const QString what = QStringLiteral("Cannot save the statistics into %1").arg(nativePath(target));
    if (server_) {
        fail(what, serverKeepsItsOwn());
        return std::nullopt;
    }
    if (!QFileInfo(target).absoluteDir().exists()) {
        fail(what, QStringLiteral("its folder does not exist"));
        return std::nullopt;
    }
    if (isOpen() && !fileProblem() && identity_ && identityOf(target) == identity_) {
        fail(what, QStringLiteral("it is the file in use now"));
        return std::nullopt;
    }
    const QString part = partName(target);
    removeWithCompanions(part);
    // What the connection still reads of a file written over may mix old
    // and new bytes, so such a file is not copied.
    const bool writtenOver = identity_ && identityOf(path_) == identity_ && hasSqliteHeader(path_) == false;
    Moved moved = Moved::Copied;
    QString error = isOpen() && !writtenOver ? copyInto(part) : QStringLiteral("nothing to copy");
    if (error.isEmpty())
        error = checkCopy(part, connectionName_ + QStringLiteral("-check"));
    // A file still in place keeps everything: a copy that fails (a full
    // disk) must not become a new file that lacks it.
    if (!error.isEmpty() && isOpen() && !fileProblem()) {
        removeWithCompanions(part);
        fail(what, error);
        return std::nullopt;
    }
    if (!error.isEmpty()) {
        removeWithCompanions(part);
        moved = Moved::NewFile;
        StatsStore fresh(connectionName_ + QStringLiteral("-new"));
        if (!fresh.open(part)) {
            const QString why = fresh.lastError();
            fresh.close();
            removeWithCompanions(part);
            fail(what, why);
            return std::nullopt;
        }
    }
    if (std::rename(QFile::encodeName(part).constData(), QFile::encodeName(target).constData()) != 0) {
        const QString why = QString::fromLocal8Bit(std::strerror(errno));
        removeWithCompanions(part);
        fail(what, why);
        return std::nullopt;
    }
    // A journal left beside the chosen name belongs to the file replaced
    // there, or to the one closed here; SQLite would read it into the new
    // file.
    close();
    for (const char *suffix : {"-wal", "-shm", "-journal"})
        QFile::remove(target + QLatin1String(suffix));
    if (!open(target))
        return std::nullopt;
    return moved;
}

namespace {

bool renameFile(const QString &from, const QString &to, QString &why)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0)
        return true;
    why = QString::fromLocal8Bit(std::strerror(errno));
    return false;
}

// Whether the file at `path` may replace the statistics: "" when it holds
// every table and column of ours, is of this version or older, and is whole;
// else why not. Read through a connection that cannot write, so nothing of
// it changes; on success its copy is at `copyPath`.
QString copyRestorable(const QString &path, const QString &copyPath, const QString &connectionName)
{
    const std::optional<bool> header = hasSqliteHeader(path);
    if (!header)
        return QStringLiteral("it cannot be read");
    if (!*header)
        return QStringLiteral("it is not a statistics file");
    QString error;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
        db.setDatabaseName(path);
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=300"));
        QSqlQuery query(db);
        if (!db.open())
            error = describeDatabaseError(db.lastError(), path);
        else if (!query.exec(QStringLiteral("PRAGMA quick_check")) || !query.next())
            error = describeDatabaseError(query.lastError(), path);
        else if (query.value(0).toString() != QLatin1String("ok"))
            error = QStringLiteral("it is damaged");
        else if (error = checkOwnColumns(db); !error.isEmpty()) {
            error = QStringLiteral("it is not a Tavrix statistics file (%1)").arg(error);
        } else if (!query.exec(QStringLiteral("PRAGMA user_version")) || !query.next())
            error = describeDatabaseError(query.lastError(), path);
        else if (query.value(0).toInt() > newestSchemaVersion())
            error = QStringLiteral("it was written by a newer version of Tavrix");
        else if (!query.prepare(QStringLiteral("VACUUM INTO ?")))
            error = describeDatabaseError(query.lastError(), copyPath);
        else {
            query.addBindValue(copyPath);
            if (!query.exec())
                error = describeDatabaseError(query.lastError(), copyPath);
        }
        query.finish();
        db.close();
    }
    QSqlDatabase::removeDatabase(connectionName);
    return error;
}

} // namespace

bool StatsStore::backUpTo(const QString &path)
{
    const QString target = QFileInfo(path).absoluteFilePath();
    const QString what = QStringLiteral("Cannot back up the statistics into %1").arg(nativePath(target));
    if (server_)
        return fail(what, serverKeepsItsOwn());
    if (!isOpen())
        return fail(what, QStringLiteral("the statistics database is not open"));
    if (!QFileInfo(target).absoluteDir().exists())
        return fail(what, QStringLiteral("its folder does not exist"));
    if (identity_ && identityOf(target) == identity_)
        return fail(what, QStringLiteral("it is the statistics file in use now"));
    if (identity_ && identityOf(path_) == identity_ && hasSqliteHeader(path_) == false)
        return fail(what, *fileProblem());
    const QString part = partName(target);
    removeWithCompanions(part);
    QString error = copyInto(part);
    if (error.isEmpty())
        error = checkCopy(part, connectionName_ + QStringLiteral("-check"));
    if (error.isEmpty() && renameFile(part, target, error)) {
        // A journal beside the chosen name belongs to the file replaced
        // there; SQLite would read it into the copy.
        for (const char *suffix : {"-wal", "-shm", "-journal"})
            QFile::remove(target + QLatin1String(suffix));
        return true;
    }
    removeWithCompanions(part);
    return fail(what, error);
}

bool StatsStore::restoreFrom(const QString &source)
{
    const QString what = QStringLiteral("Cannot restore the statistics from %1").arg(nativePath(source));
    if (server_)
        return fail(what, serverKeepsItsOwn());
    if (!isOpen())
        return fail(what, QStringLiteral("the statistics database is not open"));
    if (!QFileInfo::exists(source))
        return fail(what, QStringLiteral("it does not exist"));
    if (identity_ && identityOf(source) == identity_)
        return fail(what, QStringLiteral("it is the statistics file in use now"));
    if (const std::optional<QString> problem = fileProblem())
        return fail(what, *problem);
    const QString path = path_;
    const QString part = partName(path);
    const QString kept = path + QLatin1String(beforeRestoreSuffix);
    removeWithCompanions(part);
    QString error = copyRestorable(source, part, connectionName_ + QStringLiteral("-restore"));
    // Opening the copy brings its tables up to this version.
    if (error.isEmpty())
        error = checkCopy(part, connectionName_ + QStringLiteral("-check"));
    if (!error.isEmpty()) {
        removeWithCompanions(part);
        return fail(what, error);
    }

    // Everything of the file in use goes into it before it is put aside.
    QSqlQuery(connection()).exec(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
    close();
    removeWithCompanions(kept);
    auto reopenOld = [&](const QString &why) {
        open(path);
        return fail(what, why);
    };
    if (!renameFile(path, kept, error))
        return reopenOld(error);
    // A log another program still holds goes with its file.
    for (const char *suffix : {"-wal", "-shm"}) {
        QString ignored;
        if (QFile::exists(path + QLatin1String(suffix)))
            renameFile(path + QLatin1String(suffix), kept + QLatin1String(suffix), ignored);
    }
    if (!renameFile(part, path, error) || !open(path)) {
        const QString why = error.isEmpty() ? lastError_ : error;
        close();
        removeWithCompanions(part);
        QFile::remove(path);
        for (const char *suffix : {"", "-wal", "-shm"}) {
            QString ignored;
            if (QFile::exists(kept + QLatin1String(suffix)))
                renameFile(kept + QLatin1String(suffix), path + QLatin1String(suffix), ignored);
        }
        return reopenOld(why);
    }
    return true;
}

} // namespace tavrix
