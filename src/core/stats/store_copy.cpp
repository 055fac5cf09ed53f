// Copying one player's statistics from a file into the club's database: the
// games, practice targets, drills and matches, each with its darts, under the
// club's player. Every copied game, target, drill and match is noted with
// where it came from, so a second copy writes only what is new.

#include "core/stats/stats_store.h"

#include "core/stats/sqlite_handle.h"
#include "core/stats/store_dialect.h"
#include "core/stats/store_schema.h"

#include <QHash>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>
#include <QVariant>

#include <cmath>
#include <vector>

namespace tavrix {

namespace {

using IdMap = QHash<qint64, qint64>;

// Rows written per statement for the darts: few round trips, each of a
// size the server takes in at once.
constexpr int dartsPerStatement = 2000;

// A table whose rows have ids: the columns copied as they are, after the id.
struct OwnerTable {
    const char *table;
    const char *idColumn; // the column naming the player, or the match
    QStringList columns;
};

// A table of darts (or legs): the column naming its owner and the columns
// copied as they are.
struct DartTable {
    const char *table;
    const char *ownerColumn;
    QStringList columns;
};

const QStringList dartColumns = {QStringLiteral("setseq"), QStringLiteral("dartseq"), QStringLiteral("x"),
                                 QStringLiteral("y"),      QStringLiteral("dist"),    QStringLiteral("score"),
                                 QStringLiteral("ring"),   QStringLiteral("targetscore"), QStringLiteral("targetring")};

const OwnerTable games{"games", "players_id",
                       {QStringLiteral("creationdate"), QStringLiteral("gametype"), QStringLiteral("skill"),
                        QStringLiteral("opponent"), QStringLiteral("result"), QStringLiteral("throws"),
                        QStringLiteral("points"), QStringLiteral("bestset"), QStringLiteral("outset")}};
const DartTable gameDarts{"gamesdarts", "games_id", QStringList{QStringLiteral("creationDate")} + dartColumns};

const OwnerTable targets{"statstargets", "players_id",
                         {QStringLiteral("creationdate"), QStringLiteral("targetValue"), QStringLiteral("targetRing")}};
const DartTable practiceDarts{"statsthrows", "statstargets_id",
                              {QStringLiteral("seq"), QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("dist"),
                               QStringLiteral("score"), QStringLiteral("ring")}};

const OwnerTable drills{"drills", "players_id",
                        {QStringLiteral("kind"), QStringLiteral("target"), QStringLiteral("startdate"),
                         QStringLiteral("enddate"), QStringLiteral("score"), QStringLiteral("completed"),
                         QStringLiteral("quit")}};
const DartTable drillDarts{"drilldarts", "drills_id",
                           QStringList{QStringLiteral("creationdate")} + dartColumns
                               + QStringList{QStringLiteral("aimx"), QStringLiteral("aimy")}};

const OwnerTable matches{
    "matches", "players_id",
    {QStringLiteral("gametype"), QStringLiteral("skill"), QStringLiteral("opponent"), QStringLiteral("kind"),
     QStringLiteral("sets"), QStringLiteral("legs"), QStringLiteral("startdate"), QStringLiteral("enddate"),
     QStringLiteral("result"), QStringLiteral("playerlegs"), QStringLiteral("opponentlegs"),
     QStringLiteral("playersets"), QStringLiteral("opponentsets"), QStringLiteral("playerpoints"),
     QStringLiteral("playerdarts"), QStringLiteral("opponentpoints"), QStringLiteral("opponentdarts")}};

QString placeholders(qsizetype count)
{
    QStringList marks;
    marks.fill(QStringLiteral("?"), count);
    return QLatin1Char('(') + marks.join(QStringLiteral(", ")) + QLatin1Char(')');
}

// Rows written into a table a statement of dartsPerStatement at a time.
// Each column's values travel as one array, which the server takes apart:
// a handful of bound values a statement, however many rows it carries. A
// value the column cannot take fails the statement, with the server's words.
class ColumnBatch {
public:
    ColumnBatch(QSqlDatabase db, const QString &table, const QStringList &columns)
        : db_(std::move(db))
        , values_(columns.size())
    {
        QStringList arrays;
        for (const QString &column : columns) {
            const Kind kind = kindOf(column);
            kinds_ << kind;
            arrays << QStringLiteral("?::%1[]").arg(kind == Kind::Text   ? QStringLiteral("TEXT")
                                                    : kind == Kind::Real ? QStringLiteral("DOUBLE PRECISION")
                                                                         : QStringLiteral("BIGINT"));
        }
        statement_ = QStringLiteral("INSERT INTO %1 (%2) SELECT * FROM unnest(%3)")
                         .arg(table, columns.join(QStringLiteral(", ")), arrays.join(QStringLiteral(", ")));
    }

    QString failed;

    bool add(const QVariantList &row)
    {
        for (qsizetype column = 0; column < row.size(); ++column)
            values_[column] << element(row[column], kinds_[column]);
        return ++pending_ < dartsPerStatement || flush();
    }

    bool flush()
    {
        if (pending_ == 0)
            return true;
        if (!prepared_) {
            query_ = QSqlQuery(db_);
            if (!query_.prepare(statement_))
                return fail();
            prepared_ = true;
        }
        for (QStringList &column : values_) {
            query_.addBindValue(QLatin1Char('{') + column.join(QLatin1Char(',')) + QLatin1Char('}'));
            column.clear();
        }
        pending_ = 0;
        return query_.exec() || fail();
    }

private:
    enum class Kind { Integer, Real, Text };
    static Kind kindOf(const QString &column)
    {
        static const QStringList reals = {QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("dist"),
                                          QStringLiteral("aimx"), QStringLiteral("aimy")};
        if (column.compare(QStringLiteral("creationdate"), Qt::CaseInsensitive) == 0)
            return Kind::Text;
        return reals.contains(column) ? Kind::Real : Kind::Integer;
    }
    // A value as an element of an array's text: numbers in full, text
    // quoted, an empty field NULL. A file's whole number kept as a real
    // goes into an integer column as the number.
    static QString element(const QVariant &value, Kind kind)
    {
        if (value.isNull())
            return QStringLiteral("NULL");
        bool number = false;
        if (kind == Kind::Real) {
            const double real = value.toDouble(&number);
            if (number)
                return QString::number(real, 'g', 17);
        } else if (kind == Kind::Integer) {
            const qint64 whole = value.toLongLong(&number);
            if (number)
                return QString::number(whole);
            const double real = value.toDouble(&number);
            if (number && real == std::floor(real) && std::abs(real) < 9e15)
                return QString::number(qint64(real));
        }
        QString text = value.toString();
        text.replace(QLatin1Char('\\'), QStringLiteral("\\\\")).replace(QLatin1Char('"'), QStringLiteral("\\\""));
        return QLatin1Char('"') + text + QLatin1Char('"');
    }
    bool fail()
    {
        failed = query_.lastError().text();
        return false;
    }

    QSqlDatabase db_;
    QString statement_;
    QList<Kind> kinds_;
    std::vector<QStringList> values_;
    int pending_ = 0;
    QSqlQuery query_;
    bool prepared_ = false;
};

// The copy in progress: reads from the file, writes into the club's
// database inside the caller's transaction. The first failure stops it
// and is kept in `error`.
class PlayerCopy {
public:
    PlayerCopy(QSqlDatabase from, const StoreDialect &fromDialect, QSqlDatabase to, qint64 sourcePlayer,
               qint64 player)
        : from_(std::move(from))
        , fromDialect_(fromDialect)
        , to_(std::move(to))
        , sourcePlayer_(sourcePlayer)
        , player_(player)
    {
    }

    QString error;
    CopiedRows copied;

    bool run()
    {
        if (!readSource() || !readCopiedBefore())
            return false;
        if (!copyOwners(games, sourcePlayer_, newGames_, copied.games)
            || !copyDarts(gameDarts, newGames_, copied.gameDarts))
            return false;
        IdMap newTargets;
        if (!copyOwners(targets, sourcePlayer_, newTargets, copied.targets)
            || !copyDarts(practiceDarts, newTargets, copied.practiceDarts))
            return false;
        if (!fromDialect_.holdsTable(from_, "drills"))
            return true;
        IdMap newDrills;
        if (!copyOwners(drills, sourcePlayer_, newDrills, copied.drills)
            || !copyDarts(drillDarts, newDrills, copied.drillDarts))
            return false;
        if (!fromDialect_.holdsTable(from_, "matches"))
            return true;
        IdMap newMatches;
        return copyOwners(matches, sourcePlayer_, newMatches, copied.matches) && copyLegs(newMatches);
    }

private:
    bool readFailed(const QSqlQuery &query)
    {
        error = QStringLiteral("the statistics file could not be read: ") + query.lastError().text();
        return false;
    }
    bool writeFailed(const QSqlQuery &query) { return writeFailed(query.lastError().text()); }
    bool writeFailed(const QString &why)
    {
        error = why;
        return false;
    }

    // The file's player as the club's database knows where rows came from:
    // the player's id and creation in that file, which a rename keeps and a
    // copy or a restore of the file keeps too.
    bool readSource()
    {
        QSqlQuery query(from_);
        query.prepare(QStringLiteral("SELECT creationdate, name FROM players WHERE id = ?"));
        query.addBindValue(sourcePlayer_);
        if (!query.exec())
            return readFailed(query);
        if (!query.next()) {
            error = QStringLiteral("the statistics file has no such player");
            return false;
        }
        const QString created = query.value(0).toString();
        source_ = QStringLiteral("%1 %2").arg(sourcePlayer_).arg(created.isEmpty() ? query.value(1).toString() : created);
        return true;
    }

    bool readCopiedBefore()
    {
        QSqlQuery query(to_);
        query.prepare(QStringLiteral("SELECT kind, sourceid, copiedid FROM clubcopies"
                                     " WHERE source = ? AND players_id = ?"));
        query.addBindValue(source_);
        query.addBindValue(player_);
        if (!query.exec())
            return writeFailed(query);
        while (query.next())
            copiedBefore_[query.value(0).toString()].insert(query.value(1).toLongLong(), query.value(2).toLongLong());
        return true;
    }

    // Copies the owner's rows of `table` that were not copied before; `made`
    // maps their ids in the file to the new ids.
    bool copyOwners(const OwnerTable &table, qint64 owner, IdMap &made, qint64 &count)
    {
        const QString kind = QString::fromLatin1(table.table);
        QSqlQuery read(from_);
        read.setForwardOnly(true);
        read.prepare(QStringLiteral("SELECT id, %1 FROM %2 WHERE %3 = ? ORDER BY id")
                         .arg(table.columns.join(QStringLiteral(", ")), kind, QString::fromLatin1(table.idColumn)));
        read.addBindValue(owner);
        if (!read.exec())
            return readFailed(read);
        QSqlQuery write(to_);
        write.prepare(QStringLiteral("INSERT INTO %1 (%2, %3) VALUES %4 RETURNING id")
                          .arg(kind, QString::fromLatin1(table.idColumn), table.columns.join(QStringLiteral(", ")),
                               placeholders(table.columns.size() + 1)));
        QSqlQuery note(to_);
        note.prepare(QStringLiteral("INSERT INTO clubcopies (players_id, source, kind, sourceid, copiedid,"
                                    " copied) VALUES (?, ?, ?, ?, ?, ?)"));
        const IdMap &before = copiedBefore_[kind];
        const QString now = storedDateTimeNow();
        while (read.next()) {
            const qint64 sourceId = read.value(0).toLongLong();
            if (before.contains(sourceId)) {
                ++copied.copiedBefore;
                continue;
            }
            write.addBindValue(player_);
            for (int column = 1; column <= table.columns.size(); ++column)
                write.addBindValue(read.value(column));
            if (!write.exec() || !write.next())
                return writeFailed(write);
            const qint64 id = write.value(0).toLongLong();
            write.finish();
            for (const QVariant &value : {QVariant(player_), QVariant(source_), QVariant(kind), QVariant(sourceId), QVariant(id),
                                          QVariant(now)})
                note.addBindValue(value);
            if (!note.exec())
                return writeFailed(note);
            made.insert(sourceId, id);
            ++count;
        }
        if (read.lastError().isValid())
            return readFailed(read);
        return true;
    }

    // Copies the player's darts of `table` whose owners were copied now, in
    // the order they were written.
    bool copyDarts(const DartTable &table, const IdMap &owners, qint64 &count)
    {
        if (owners.isEmpty())
            return true;
        QSqlQuery read(from_);
        read.setForwardOnly(true);
        read.prepare(QStringLiteral("SELECT %1, %2 FROM %3 WHERE players_id = ? ORDER BY %4")
                         .arg(QString::fromLatin1(table.ownerColumn), table.columns.join(QStringLiteral(", ")),
                              QString::fromLatin1(table.table), fromDialect_.writeOrder()));
        read.addBindValue(sourcePlayer_);
        if (!read.exec())
            return readFailed(read);
        ColumnBatch rows(to_, QString::fromLatin1(table.table),
                         QStringList{QStringLiteral("players_id"), QString::fromLatin1(table.ownerColumn)}
                             + table.columns);
        while (read.next()) {
            const auto owner = owners.constFind(read.value(0).toLongLong());
            if (owner == owners.constEnd())
                continue;
            QVariantList values{QVariant(player_), QVariant(*owner)};
            for (int column = 1; column <= table.columns.size(); ++column)
                values << read.value(column);
            if (!rows.add(std::move(values)))
                return writeFailed(rows.failed);
            ++count;
        }
        if (read.lastError().isValid())
            return readFailed(read);
        return rows.flush() || writeFailed(rows.failed);
    }

    // The legs of the matches copied now, naming the games as the club's
    // database knows them.
    bool copyLegs(const IdMap &newMatches)
    {
        if (newMatches.isEmpty())
            return true;
        QSqlQuery read(from_);
        read.prepare(QStringLiteral("SELECT l.matches_id, l.games_id, l.setno, l.legno, l.firstthrower"
                                    " FROM matchlegs l JOIN matches m ON m.id = l.matches_id"
                                    " WHERE m.players_id = ? ORDER BY l.%1")
                         .arg(fromDialect_.writeOrder()));
        read.addBindValue(sourcePlayer_);
        if (!read.exec())
            return readFailed(read);
        const IdMap &copiedGames = copiedBefore_[QStringLiteral("games")];
        ColumnBatch rows(to_, QStringLiteral("matchlegs"),
                         {QStringLiteral("matches_id"), QStringLiteral("games_id"), QStringLiteral("setno"),
                          QStringLiteral("legno"), QStringLiteral("firstthrower")});
        while (read.next()) {
            const auto match = newMatches.constFind(read.value(0).toLongLong());
            if (match == newMatches.constEnd())
                continue;
            const qint64 sourceGame = read.value(1).toLongLong();
            const qint64 game = newGames_.value(sourceGame, copiedGames.value(sourceGame));
            if (!rows.add({QVariant(*match), game ? QVariant(game) : QVariant(), read.value(2), read.value(3),
                           read.value(4)}))
                return writeFailed(rows.failed);
        }
        return rows.flush() || writeFailed(rows.failed);
    }

    QSqlDatabase from_;
    const StoreDialect &fromDialect_;
    QSqlDatabase to_;
    qint64 sourcePlayer_;
    qint64 player_;
    QString source_;
    QHash<QString, IdMap> copiedBefore_;
    // The games copied now, for their darts and for the legs of the matches.
    IdMap newGames_;
};

} // namespace

std::optional<CopiedRows> StatsStore::copyPlayerFrom(StatsStore &source, qint64 sourcePlayerId, qint64 playerId)
{
    const QString what = QStringLiteral("Cannot copy the statistics into the club database");
    if (!server_) {
        fail(what, QStringLiteral("the statistics are not kept in a club database"));
        return std::nullopt;
    }
    if (!source.isOpen()) {
        fail(what, QStringLiteral("the statistics file is not open"));
        return std::nullopt;
    }
    Batch batch(*this);
    if (!batch.isActive())
        return std::nullopt;
    PlayerCopy copy(source.connection(), source.dialect(), connection(), sourcePlayerId, playerId);
    if (!copy.run()) {
        fail(what, copy.error);
        return std::nullopt;
    }
    if (!batch.commit())
        return std::nullopt;
    return copy.copied;
}

} // namespace tavrix
