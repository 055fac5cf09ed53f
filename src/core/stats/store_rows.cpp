#include "core/stats/store_rows.h"

#include "core/stats/store_dialect.h"

#include <QDateTime>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

#include <sqlite3.h>

#include <limits>

namespace tavrix {

namespace {

// The aimed darts a file reads as one union, as two statements: a server
// may hand out a union's rows in any order.
constexpr const char *aimedPracticeDartsStatement =
    "SELECT ta.targetValue * 8 + ta.targetRing, th.x, th.y"
    " FROM statstargets ta JOIN statsthrows th ON th.statstargets_id = ta.id WHERE +ta.players_id = ?1";
constexpr const char *aimedGameDartsStatement =
    "SELECT targetscore * 8 + targetring, x, y FROM gamesdarts WHERE players_id = ?1";

// The export's practice darts, each with its target's date, value and ring
// (nulls for a target that is not there).
constexpr const char *exportPracticeColumns =
    "SELECT th.players_id, th.statstargets_id, th.seq, th.x, th.y, th.score, th.ring,"
    " ta.creationdate, ta.targetValue, ta.targetRing"
    " FROM statsthrows th LEFT JOIN statstargets ta ON ta.id = th.statstargets_id";

bool isWholeType(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Bool: return true;
    default: return false;
    }
}

// The value's text as SQLite gives it; a null array for a null.
QByteArray textOf(const QVariant &value)
{
    if (value.isNull())
        return {};
    if (isWholeType(value))
        return QByteArray::number(value.toLongLong());
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float: return sqliteRealText(value.toDouble());
    case QMetaType::QByteArray: return value.toByteArray();
    case QMetaType::QDateTime: return value.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")).toUtf8();
    default: return value.toString().toUtf8();
    }
}

// SQLite's whole number of a text: its leading digits after blanks and a
// sign, held at the ends of the range; 0 without digits.
qint64 leadingWhole(const QByteArray &text)
{
    qsizetype i = 0;
    while (i < text.size() && (text[i] == ' ' || (text[i] >= '\t' && text[i] <= '\r')))
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+'))
        negative = text[i++] == '-';
    quint64 magnitude = 0;
    bool over = false;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        if (magnitude > (std::numeric_limits<quint64>::max() - 9) / 10)
            over = true;
        else
            magnitude = magnitude * 10 + quint64(text[i] - '0');
    }
    constexpr quint64 top = quint64(std::numeric_limits<qint64>::max());
    if (negative)
        return over || magnitude > top ? std::numeric_limits<qint64>::min() : -qint64(magnitude);
    return over || magnitude > top ? std::numeric_limits<qint64>::max() : qint64(magnitude);
}

// SQLite's real number of a text: its longest leading part that reads as
// one; 0 without one.
double leadingReal(const QByteArray &text)
{
    qsizetype start = 0;
    while (start < text.size() && (text[start] == ' ' || (text[start] >= '\t' && text[start] <= '\r')))
        ++start;
    qsizetype i = start;
    const auto digitsFrom = [&](qsizetype from) {
        while (i < text.size() && text[i] >= '0' && text[i] <= '9')
            ++i;
        return i > from;
    };
    if (i < text.size() && (text[i] == '-' || text[i] == '+'))
        ++i;
    bool any = digitsFrom(i);
    if (i < text.size() && text[i] == '.') {
        ++i;
        any = digitsFrom(i) || any;
    }
    if (!any)
        return 0;
    const qsizetype mantissaEnd = i;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        ++i;
        if (i < text.size() && (text[i] == '-' || text[i] == '+'))
            ++i;
        if (!digitsFrom(i))
            i = mantissaEnd;
    }
    return text.mid(start, i - start).toDouble();
}

// SQLite's conversion of a real to a whole number: truncated, held at the
// ends of the range.
qint64 wholeOfReal(double value)
{
    if (value != value)
        return 0;
    if (value <= double(std::numeric_limits<qint64>::min()))
        return std::numeric_limits<qint64>::min();
    if (value >= double(std::numeric_limits<qint64>::max()))
        return std::numeric_limits<qint64>::max();
    return qint64(value);
}

QByteArrayView viewOf(const QByteArray &text)
{
    return text.isNull() ? QByteArrayView() : QByteArrayView(text.constData(), text.size());
}

// An export field from a value, its text kept in `text` while the row is
// handed over.
StoredField fieldOf(const QVariant &value, QByteArray &text)
{
    if (value.isNull())
        return {};
    if (isWholeType(value))
        return {{}, value.toLongLong()};
    text = textOf(value);
    std::optional<qint64> whole;
    if (value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float) {
        const double number = value.toDouble();
        if (number > -1e15 && number < 1e15 && number == double(qint64(number)))
            whole = qint64(number);
    }
    return {viewOf(text), whole};
}

std::optional<double> numberOf(const QVariant &value)
{
    if (value.isNull()
        || !(isWholeType(value) || value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float))
        return std::nullopt;
    return value.toDouble();
}

// Runs a read with the player's id bound at each ?1 (none when `playerId`
// is empty), in `order` when one is given, handing each row to `take`
// while it returns true. False, with `error`, when it fails.
template <typename Take>
bool readRows(QSqlDatabase &db, QString statement, const QString &order, std::optional<qint64> playerId,
              QSqlError &error, Take take)
{
    const qsizetype marks = statement.count(QLatin1String("?1"));
    statement.replace(QLatin1String("?1"), QLatin1String("?"));
    if (!order.isEmpty())
        statement += QStringLiteral(" ORDER BY ") + order;
    QSqlQuery query(db);
    query.setForwardOnly(true);
    if (!query.prepare(statement)) {
        error = query.lastError();
        return false;
    }
    for (qsizetype i = 0; i < marks && playerId; ++i)
        query.addBindValue(*playerId);
    if (!query.exec()) {
        error = query.lastError();
        return false;
    }
    const QueryRow row(query);
    while (query.next()) {
        if (!take(row, query))
            return true;
    }
    if (query.lastError().isValid()) {
        error = query.lastError();
        return false;
    }
    return true;
}

template <typename Take>
bool readPlayerRows(QSqlDatabase &db, const char *statement, const QString &order, qint64 playerId,
                    QSqlError &error, Take take)
{
    return readRows(db, QString::fromLatin1(statement), order, playerId, error,
                    [&](const QueryRow &row, const QSqlQuery &) {
                        take(row);
                        return true;
                    });
}

} // namespace

GameType gameTypeFrom(int stored)
{
    switch (stored) {
    case code(GameType::Cricket): return GameType::Cricket;
    case code(GameType::X01_301): return GameType::X01_301;
    case code(GameType::X01_501): return GameType::X01_501;
    default: return GameType::None;
    }
}

QByteArray sqliteRealText(double value)
{
    char text[64];
    sqlite3_snprintf(int(sizeof text), text, "%!.15g", value);
    return QByteArray(text);
}

qint64 QueryRow::int64(int column) const
{
    const QVariant value = query_.value(column);
    if (value.isNull())
        return 0;
    if (isWholeType(value))
        return value.toLongLong();
    if (value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float)
        return wholeOfReal(value.toDouble());
    return leadingWhole(textOf(value));
}

double QueryRow::real(int column) const
{
    const QVariant value = query_.value(column);
    if (value.isNull())
        return 0;
    if (isWholeType(value) || value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float)
        return value.toDouble();
    return leadingReal(textOf(value));
}

std::optional<qint64> QueryRow::seconds(int column) const
{
    const QByteArray text = textOf(query_.value(column));
    if (text.isNull())
        return std::nullopt;
    return localSeconds(std::string_view(text.constData(), std::size_t(text.size())));
}

char QueryRow::letter(int column) const
{
    const QByteArray text = textOf(query_.value(column));
    return text.size() == 1 ? text[0] : 0;
}

bool readAimedDartRows(QSqlDatabase &db, const StoreDialect &dialect, qint64 playerId,
                       const DartHistory::AimedDartTaker &take, QSqlError &error)
{
    const QString byIndex = QStringLiteral("targetring, targetscore, ") + dialect.writeOrder();
    const auto takeDart = [&](const QueryRow &row) { takeAimedDart(row, take); };
    return readPlayerRows(db, aimedPracticeDartsStatement, QStringLiteral("th.statstargets_id, th.id"), playerId,
                          error, takeDart)
           && readPlayerRows(db, aimedGameDartsStatement, byIndex, playerId, error, takeDart)
           && (!dialect.holdsTable(db, "drilldarts")
               || readPlayerRows(db, aimedDrillDartsStatement, byIndex, playerId, error, takeDart));
}

bool readEndedDrillRows(QSqlDatabase &db, const StoreDialect &dialect, qint64 playerId, std::vector<DrillRow> &rows,
                        QSqlError &error)
{
    return !dialect.holdsTable(db, "drills")
           || readPlayerRows(db, endedDrillsStatement, {}, playerId, error,
                             [&](const QueryRow &row) { rows.push_back(drillFrom(row)); });
}

std::optional<StatisticsRows> readStatisticsRows(QSqlDatabase &db, const StoreDialect &dialect, qint64 playerId,
                                                 QSqlError &error)
{
    const QString written = dialect.writeOrder();
    StatisticsRows rows;
    const bool read =
        readPlayerRows(db, gamesStatement, QStringLiteral("gametype, skill, result, throws, outset, id"), playerId,
                       error, [&](const QueryRow &row) { rows.games.push_back(gameFrom(row)); })
        && readPlayerRows(db, gameDartsStatement, QStringLiteral("targetring, targetscore, ") + written, playerId,
                          error, [&](const QueryRow &row) { rows.gameDarts.push_back(gameDartFrom(row)); })
        && readPlayerRows(db, practiceSetsStatement, QStringLiteral("targetRing, targetValue, id"), playerId, error,
                          [&](const QueryRow &row) { rows.practiceSets.push_back(practiceSetFrom(row)); })
        && readPlayerRows(db, practiceDartsStatement, QStringLiteral("th.statstargets_id, th.id"), playerId, error,
                          [&](const QueryRow &row) { rows.practiceDarts.push_back(practiceDartFrom(row)); })
        && readEndedDrillRows(db, dialect, playerId, rows.drills, error)
        && (!dialect.holdsTable(db, "drilldarts")
            || readPlayerRows(db, drillDoubleDartsStatement, QStringLiteral("targetscore, ") + written, playerId,
                              error,
                              [&](const QueryRow &row) { rows.drillDoubleDarts.push_back(drillDartFrom(row)); }))
        && (!dialect.holdsTable(db, "matches")
            || readPlayerRows(db, endedMatchesStatement, QStringLiteral("enddate, id"), playerId, error,
                              [&](const QueryRow &row) { rows.matches.push_back(matchFrom(row)); }));
    if (!read)
        return std::nullopt;
    return rows;
}

QByteArray exportGameDartsStatement(const StoreDialect &dialect, bool ofPlayer)
{
    // Each table in the order its rows were recorded, read in the table's
    // own order: other players' rows are passed over, which costs a file
    // less than going through the player index and back to the table for
    // each row (the "+" keeps SQLite off the index).
    return QByteArrayLiteral("SELECT players_id, creationDate, games_id, setseq, dartseq, targetscore, targetring,"
                             " x, y, score, ring FROM gamesdarts")
           + (ofPlayer ? QByteArrayLiteral(" WHERE +players_id = ?1") : QByteArray()) + " ORDER BY "
           + dialect.writeOrder().toLatin1();
}

bool readExportDartRows(QSqlDatabase &db, const StoreDialect &dialect, std::optional<qint64> playerId,
                        const QHash<qint64, QByteArray> &names, const DartExport::ExportDartTaker &take,
                        QSqlError &error)
{
    // Where each table's statement has the columns of a dart; -1 for none.
    struct Columns {
        int date, game, set, dart, targetScore, targetRing, rest;
    };
    constexpr Columns practiceColumns{7, -1, 1, 2, 8, 9, 3};
    constexpr Columns gameColumns{1, 2, 3, 4, 5, 6, 7};
    ExportDart dart;
    // The texts the row's views show, until the next row.
    QByteArray texts[10];
    const auto takeRow = [&](const Columns &at) {
        return [&](const QueryRow &row, const QSqlQuery &query) {
            int slot = 0;
            const auto field = [&](int column) {
                return column < 0 ? StoredField{} : fieldOf(query.value(column), texts[slot++]);
            };
            texts[slot] = names.value(row.int64(0), QByteArrayLiteral(""));
            dart.player = viewOf(texts[slot++]);
            texts[slot] = textOf(query.value(at.date));
            dart.date = viewOf(texts[slot++]);
            dart.game = field(at.game);
            dart.set = field(at.set);
            dart.dart = field(at.dart);
            dart.targetScore = field(at.targetScore);
            dart.targetRing = field(at.targetRing);
            dart.x = numberOf(query.value(at.rest));
            dart.y = numberOf(query.value(at.rest + 1));
            dart.score = field(at.rest + 2);
            dart.ring = field(at.rest + 3);
            return take(dart);
        };
    };
    bool goOn = true;
    const auto practiceRow = takeRow(practiceColumns);
    dart.practice = true;
    const QString practice = QString::fromLatin1(exportPracticeColumns)
                             + (playerId ? QStringLiteral(" WHERE th.players_id = ?1") : QString());
    if (!readRows(db, practice, QStringLiteral("th.id"), playerId, error,
                  [&](const QueryRow &row, const QSqlQuery &query) { return goOn = practiceRow(row, query); }))
        return false;
    if (!goOn)
        return true;
    dart.practice = false;
    return readRows(db, QString::fromLatin1(exportGameDartsStatement(dialect, playerId.has_value())), {}, playerId,
                    error, takeRow(gameColumns));
}

} // namespace tavrix
