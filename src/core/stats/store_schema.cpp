#include "core/stats/store_schema.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace tavrix {

namespace {

const OwnTable ownTableList[] = {
    {"players", {"id", "creationdate", "name"}},
    {"games", {"id", "creationdate", "players_id", "gametype", "skill", "opponent", "result", "throws", "points",
               "bestset", "outset"}},
    {"gamesdarts", {"creationdate", "games_id", "players_id", "setseq", "dartseq", "x", "y", "dist", "score", "ring",
                    "targetscore", "targetring"}},
    {"statstargets", {"id", "creationdate", "players_id", "targetvalue", "targetring"}},
    {"statsthrows", {"id", "players_id", "statstargets_id", "seq", "x", "y", "dist", "score", "ring"}},
    {"outchart", {"points", "singleout", "doubleout"}},
    {"drills", {"id", "players_id", "kind", "target", "startdate", "enddate", "score", "completed", "quit"}, 3},
    {"drilldarts", {"creationdate", "drills_id", "players_id", "setseq", "dartseq", "x", "y", "dist", "score", "ring",
                    "targetscore", "targetring", "aimx", "aimy"}, 3},
    {"matches", {"id", "players_id", "gametype", "skill", "opponent", "kind", "sets", "legs", "startdate", "enddate",
                 "result", "playerlegs", "opponentlegs", "playersets", "opponentsets", "playerpoints", "playerdarts",
                 "opponentpoints", "opponentdarts"}, 4},
    {"matchlegs", {"matches_id", "games_id", "setno", "legno", "firstthrower"}, 4},
};

// Empty fields are stored as empty text, never as NULL.
QString textOrEmpty(const QString &text)
{
    return text.isNull() ? QStringLiteral("") : text;
}

} // namespace

std::span<const OwnTable> ownTables()
{
    return ownTableList;
}

QString runStatements(QSqlDatabase &db, std::span<const char *const> statements)
{
    QSqlQuery query(db);
    for (const char *statement : statements) {
        if (!query.exec(QString::fromLatin1(statement)))
            return query.lastError().text();
    }
    return {};
}

bool chartHasRows(QSqlDatabase &db)
{
    QSqlQuery query(db);
    return query.exec(QStringLiteral("SELECT count(*) FROM outchart")) && query.next() && query.value(0).toInt() > 0;
}

QString insertChartRows(QSqlDatabase &db, const QList<ChartRow> &rows)
{
    QSqlQuery query(db);
    if (!query.prepare(QStringLiteral(
            "INSERT INTO outchart (points, singleout, doubleout) VALUES (?, ?, ?)")))
        return query.lastError().text();
    for (const ChartRow &row : rows) {
        query.addBindValue(row.points);
        query.addBindValue(textOrEmpty(row.singleOut));
        query.addBindValue(textOrEmpty(row.doubleOut));
        if (!query.exec())
            return query.lastError().text();
    }
    return {};
}

QString fillBundledChart(QSqlDatabase &db)
{
    const QList<ChartRow> rows = bundledChartRows();
    if (rows.isEmpty())
        return QStringLiteral("The bundled checkout chart is missing.");
    return insertChartRows(db, rows);
}

QString refusedAsNewer()
{
    return QStringLiteral("it was written by a newer version of Tavrix; this one leaves it as it is");
}

QString refusedAsForeign()
{
    return QStringLiteral("it holds tables of another program; Tavrix leaves it as it is");
}

} // namespace tavrix
