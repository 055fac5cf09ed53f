// The recorded darts as stored, streamed for writing them out: a file's read
// through SQLite's own calls on the store's connection, as readAimedDarts
// does, so a million rows cost about one plain read and no more memory than
// one row; a server's through Qt SQL (store_rows.h).

#include "core/stats/stats_store.h"

#include "core/stats/sqlite_handle.h"
#include "core/stats/sqlite_schema.h"
#include "core/stats/store_dialect.h"
#include "core/stats/store_rows.h"

#include <QHash>
#include <QSqlQuery>
#include <QVariant>

#include <sqlite3.h>

#include <memory>
#include <optional>

namespace tavrix {

namespace {

// Each table in the order its rows were recorded, read in the table's own
// order: other players' rows are passed over, which costs less than going
// through the player index and back to the table for each row (the "+"
// keeps SQLite off the index). The game darts' statement is
// exportGameDartsStatement.
constexpr const char *practiceOfPlayer =
    "SELECT players_id, statstargets_id, seq, x, y, score, ring FROM statsthrows"
    " WHERE +players_id = ?1 ORDER BY id";
constexpr const char *practiceOfAll =
    "SELECT players_id, statstargets_id, seq, x, y, score, ring FROM statsthrows ORDER BY id";

struct Finalize {
    void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

Statement prepareRaw(sqlite3 *handle, const char *text)
{
    sqlite3_stmt *statement = nullptr;
    sqlite3_prepare_v2(handle, text, -1, &statement, nullptr);
    return Statement(statement);
}

// Values are taken through sqlite3_column_value: one call to the
// statement for each column, where the typed column calls make two. (Using
// the value so is safe only on a connection one thread uses at a time, as
// the store's is.)
QByteArrayView textOf(sqlite3_value *value)
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(value));
    return text ? QByteArrayView(text, sqlite3_value_bytes(value)) : QByteArrayView();
}

QByteArrayView textAt(sqlite3_stmt *statement, int column)
{
    return textOf(sqlite3_column_value(statement, column));
}

StoredField fieldAt(sqlite3_stmt *statement, int column)
{
    // A whole number travels as the number: SQLite's text of it would cost
    // an allocation per field.
    sqlite3_value *const value = sqlite3_column_value(statement, column);
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
        return {{}, sqlite3_value_int64(value)};
    case SQLITE_FLOAT: {
        const double number = sqlite3_value_double(value);
        std::optional<qint64> whole;
        if (number > -1e15 && number < 1e15 && number == double(qint64(number)))
            whole = qint64(number);
        return {textOf(value), whole};
    }
    default:
        return {textOf(value), std::nullopt};
    }
}

std::optional<double> numberAt(sqlite3_stmt *statement, int column)
{
    sqlite3_value *const value = sqlite3_column_value(statement, column);
    const int type = sqlite3_value_type(value);
    if (type != SQLITE_INTEGER && type != SQLITE_FLOAT)
        return std::nullopt;
    return sqlite3_value_double(value);
}

// The practice targets, found for throw after throw. Throws follow their
// targets, so one pass over the targets in id order finds nearly every one;
// a throw that names an earlier target, or one that is not there, is looked
// up on its own. A target's row holds its id, date, value and ring.
class TargetFinder {
public:
    explicit TargetFinder(sqlite3 *handle)
        : pass_(prepareRaw(handle, "SELECT id, creationdate, targetValue, targetRing FROM statstargets ORDER BY id")),
          lookUp_(prepareRaw(handle, "SELECT id, creationdate, targetValue, targetRing FROM statstargets WHERE id = ?1"))
    {
        if (pass_ && lookUp_)
            step();
        else
            failed_ = true;
    }
    bool failed() const { return failed_; }

    // The target's row, valid until the next call; none when no target has
    // that id.
    sqlite3_stmt *find(sqlite3_value *id)
    {
        if (sqlite3_value_type(id) != SQLITE_INTEGER)
            return nullptr;
        const qint64 wanted = sqlite3_value_int64(id);
        while (passRow_ && passId_ < wanted)
            step();
        if (passRow_ && passId_ == wanted)
            return pass_.get();
        sqlite3_reset(lookUp_.get());
        sqlite3_bind_int64(lookUp_.get(), 1, wanted);
        const int code = sqlite3_step(lookUp_.get());
        if (code != SQLITE_ROW && code != SQLITE_DONE)
            failed_ = true;
        return code == SQLITE_ROW ? lookUp_.get() : nullptr;
    }

private:
    void step()
    {
        const int code = sqlite3_step(pass_.get());
        passRow_ = code == SQLITE_ROW;
        failed_ = failed_ || (code != SQLITE_ROW && code != SQLITE_DONE);
        if (passRow_)
            passId_ = sqlite3_column_int64(pass_.get(), 0);
    }

    Statement pass_;
    Statement lookUp_;
    bool passRow_ = false;
    qint64 passId_ = 0;
    bool failed_ = false;
};

} // namespace

std::optional<qint64> StatsStore::exportDartCount(std::optional<qint64> playerId)
{
    QSqlQuery query(connection());
    query.prepare(playerId ? QStringLiteral("SELECT (SELECT count(*) FROM statsthrows WHERE players_id = ?)"
                                            " + (SELECT count(*) FROM gamesdarts WHERE players_id = ?)")
                           : QStringLiteral("SELECT (SELECT count(*) FROM statsthrows)"
                                            " + (SELECT count(*) FROM gamesdarts)"));
    if (playerId) {
        query.addBindValue(*playerId);
        query.addBindValue(*playerId);
    }
    if (!exec(query, QStringLiteral("Cannot count the darts")) || !query.next())
        return std::nullopt;
    return query.value(0).toLongLong();
}

bool StatsStore::readExportDarts(std::optional<qint64> playerId, const ExportDartTaker &take)
{
    const QString what = QStringLiteral("Cannot read the darts");
    // The names are few; each row takes its own from here.
    QHash<qint64, QByteArray> names;
    {
        QSqlQuery query(connection());
        query.setForwardOnly(true);
        query.prepare(QStringLiteral("SELECT id, name FROM players"));
        if (!exec(query, what))
            return false;
        while (query.next())
            names.insert(query.value(0).toLongLong(), query.value(1).toString().toUtf8());
    }
    QSqlDatabase db = connection();
    sqlite3 *const handle = sqliteHandle(db);
    if (!handle) {
        QSqlError error;
        return readExportDartRows(db, dialect(), playerId, names, take, error)
               || fail(what, dialect().describeError(error, databasePath()));
    }

    ExportDart dart;
    qint64 namedId = 0;
    QByteArray name;
    auto nameOf = [&](qint64 player) {
        if (player != namedId || name.isNull()) {
            namedId = player;
            name = names.value(player, QByteArray(""));
        }
        return QByteArrayView(name);
    };
    for (const bool practice : {true, false}) {
        const Statement statement =
            prepareRaw(handle, practice ? (playerId ? practiceOfPlayer : practiceOfAll)
                                        : exportGameDartsStatement(dialect(), playerId.has_value()).constData());
        std::optional<TargetFinder> targets;
        if (practice)
            targets.emplace(handle);
        sqlite3_stmt *const row = statement.get();
        int code = row ? SQLITE_OK : SQLITE_ERROR;
        if (row && playerId)
            code = sqlite3_bind_int64(row, 1, *playerId);
        bool goOn = true;
        if (code == SQLITE_OK && !(targets && targets->failed())) {
            dart.practice = practice;
            while (goOn && (code = sqlite3_step(row)) == SQLITE_ROW) {
                dart.player = nameOf(sqlite3_column_int64(row, 0));
                if (practice) {
                    sqlite3_stmt *const target = targets->find(sqlite3_column_value(row, 1));
                    if (targets->failed()) {
                        code = SQLITE_ERROR;
                        break;
                    }
                    dart.date = target ? textAt(target, 1) : QByteArrayView();
                    dart.set = fieldAt(row, 1);
                    dart.dart = fieldAt(row, 2);
                    dart.targetScore = target ? fieldAt(target, 2) : StoredField{};
                    dart.targetRing = target ? fieldAt(target, 3) : StoredField{};
                } else {
                    dart.date = textAt(row, 1);
                    dart.game = fieldAt(row, 2);
                    dart.set = fieldAt(row, 3);
                    dart.dart = fieldAt(row, 4);
                    dart.targetScore = fieldAt(row, 5);
                    dart.targetRing = fieldAt(row, 6);
                }
                const int rest = practice ? 3 : 7;
                dart.x = numberAt(row, rest);
                dart.y = numberAt(row, rest + 1);
                dart.score = fieldAt(row, rest + 2);
                dart.ring = fieldAt(row, rest + 3);
                goOn = take(dart);
            }
        } else if (code == SQLITE_OK) {
            code = SQLITE_ERROR;
        }
        if (!goOn)
            return true;
        if (code != SQLITE_DONE)
            return fail(what, QString::fromUtf8(sqlite3_errmsg(handle)));
    }
    return true;
}

} // namespace tavrix
