// The training drills: a row per drill, its darts set by set, and the
// drills read back for the history and the best score.

#include "core/stats/stats_store.h"

#include "core/stats/sqlite_handle.h"
#include "core/stats/store_dialect.h"
#include "core/stats/store_rows.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

#include <sqlite3.h>

namespace tavrix {

bool holdsTable(sqlite3 *handle, const char *table)
{
    sqlite3_stmt *statement = nullptr;
    bool found = false;
    if (sqlite3_prepare_v2(handle, "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?1", -1,
                           &statement, nullptr)
            == SQLITE_OK
        && sqlite3_bind_text(statement, 1, table, -1, SQLITE_STATIC) == SQLITE_OK)
        found = sqlite3_step(statement) == SQLITE_ROW;
    sqlite3_finalize(statement);
    return found;
}

bool StatsStore::holdsDrillTables()
{
    if (!isOpen())
        return false;
    QSqlDatabase db = connection();
    return dialect().holdsTable(db, "drills") && dialect().holdsTable(db, "drilldarts");
}

bool StatsStore::newerTablesWritable(const QString &what, bool (StatsStore::*holds)(), const QString &things)
{
    if (!isOpen())
        return fail(what, QStringLiteral("the statistics database is not open"));
    if (!writable(what))
        return false;
    if (!(this->*holds)())
        return fail(what, QStringLiteral("the statistics file has no place for %1 yet, because another program "
                                         "held it when Tavrix started; it gets one at the next start")
                              .arg(things));
    return true;
}

bool StatsStore::drillsWritable(const QString &what)
{
    return newerTablesWritable(what, &StatsStore::holdsDrillTables, QStringLiteral("drills"));
}

std::optional<qint64> StatsStore::insertDrill(const NewDrill &drill)
{
    const QString what = QStringLiteral("Cannot record the new drill");
    if (!drillsWritable(what))
        return std::nullopt;
    QSqlQuery *const query =
        prepared(QStringLiteral("drill"),
                 QStringLiteral("INSERT INTO drills (players_id, kind, target, startdate, enddate, score, completed,"
                                " quit) VALUES (?, ?, ?, ?, NULL, 0, 0, 0) RETURNING id"));
    if (!query)
        return std::nullopt;
    query->addBindValue(drill.playerId);
    query->addBindValue(drill.kind);
    query->addBindValue(drill.targetNumber);
    query->addBindValue(storedDateTimeNow());
    return execInsert(*query, what, QStringLiteral("drill"));
}

bool StatsStore::insertDrillSet(const QList<DrillDart> &darts)
{
    const QString what = QStringLiteral("Cannot record the set of the drill");
    if (!drillsWritable(what))
        return false;
    // Inside a caller's transaction the set goes with it, whole or not at all.
    std::optional<Batch> batch;
    if (!inTransaction_) {
        batch.emplace(*this);
        if (!batch->isActive())
            return false;
    }
    QSqlQuery *const query =
        prepared(QStringLiteral("drilldart"),
                 QStringLiteral("INSERT INTO drilldarts (creationdate, drills_id, players_id, setseq, dartseq, x, y,"
                                " dist, score, ring, targetscore, targetring, aimx, aimy)"
                                " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    if (!query)
        return false;
    const QString now = storedDateTimeNow();
    for (const DrillDart &dart : darts) {
        for (const QVariant &value :
             {QVariant(now), QVariant(dart.drillId), QVariant(dart.playerId), QVariant(dart.setSeq),
              QVariant(dart.dartSeq), QVariant(storedCoordinate(dart.x)), QVariant(storedCoordinate(dart.y)),
              QVariant(dart.dist), QVariant(dart.score), QVariant(dart.ring), QVariant(dart.targetScore),
              QVariant(dart.targetRing), QVariant(storedCoordinate(dart.aimX)), QVariant(storedCoordinate(dart.aimY))})
            query->addBindValue(value);
        if (!exec(*query, what))
            return false;
    }
    return !batch || batch->commit();
}

bool StatsStore::finishDrill(qint64 drillId, const DrillEnd &end)
{
    const QString what = QStringLiteral("Cannot record the end of the drill");
    if (!drillsWritable(what))
        return false;
    QSqlQuery query(connection());
    query.prepare(QStringLiteral("UPDATE drills SET enddate = ?, score = ?, completed = ?, quit = ? WHERE id = ?"));
    for (const QVariant &value : {QVariant(storedDateTimeNow()), QVariant(end.score), QVariant(end.completed ? 1 : 0),
                                  QVariant(end.quit ? 1 : 0), QVariant(drillId)})
        query.addBindValue(value);
    return execUpdate(query, what, QStringLiteral("drill"), drillId);
}

std::optional<std::vector<DrillRow>> StatsStore::drillRows(qint64 playerId)
{
    const QString what = QStringLiteral("Cannot read the player's drills");
    if (!isOpen()) {
        fail(what, QStringLiteral("the statistics database is not open"));
        return std::nullopt;
    }
    std::vector<DrillRow> rows;
    QSqlDatabase db = connection();
    sqlite3 *const handle = sqliteHandle(db);
    if (!handle) {
        QSqlError error;
        if (!readEndedDrillRows(db, dialect(), playerId, rows, error)) {
            fail(what, dialect().describeError(error, databasePath()));
            return std::nullopt;
        }
        return rows;
    }
    if (readEndedDrills(handle, playerId, rows) != SQLITE_DONE) {
        fail(what, QString::fromUtf8(sqlite3_errmsg(handle)));
        return std::nullopt;
    }
    return rows;
}

std::optional<std::optional<int>> StatsStore::bestDrillScore(qint64 playerId, int kind, int targetNumber,
                                                              bool lowerIsBetter)
{
    const QString what = QStringLiteral("Cannot read the best score of the drill");
    if (!isOpen()) {
        fail(what, QStringLiteral("the statistics database is not open"));
        return std::nullopt;
    }
    if (!holdsDrillTables())
        return std::optional<std::optional<int>>(std::in_place);
    QSqlQuery query(connection());
    // The aggregate is written into the statement; only values are bound.
    query.prepare(lowerIsBetter ? QStringLiteral("SELECT min(score) FROM drills WHERE players_id = ? AND kind = ?"
                                                 " AND target = ? AND completed = 1 AND quit = 0"
                                                 " AND enddate IS NOT NULL")
                                : QStringLiteral("SELECT max(score) FROM drills WHERE players_id = ? AND kind = ?"
                                                 " AND target = ? AND completed = 1 AND quit = 0"
                                                 " AND enddate IS NOT NULL"));
    query.addBindValue(playerId);
    query.addBindValue(kind);
    query.addBindValue(targetNumber);
    if (!exec(query, what) || !query.next())
        return std::nullopt;
    std::optional<std::optional<int>> best(std::in_place);
    if (!query.value(0).isNull())
        best->emplace(query.value(0).toInt());
    return best;
}

} // namespace tavrix
