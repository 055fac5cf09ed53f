#pragma once

// The reads of a player's every dart, as statement texts and as decoders of
// their rows, shared by two ways of running them: SQLite's own calls on a
// file's connection (fast at a million rows), and Qt SQL on any connection,
// which a server needs. A decoder takes its columns from a row source: an
// SQLite statement's current row, or a QSqlQuery's (QueryRow below). The
// Qt-path readers are free functions of a connection and its dialect, so
// they can be run on a file as well and compared with the fast path.

#include "core/stats/dart_export.h"
#include "core/stats/dart_history.h"

#include <QByteArray>
#include <QHash>
#include <QSqlError>
#include <QString>

#include <optional>
#include <vector>

class QSqlDatabase;
class QSqlQuery;
class QVariant;

namespace tavrix {

class StoreDialect;

// The statements of the statistics rows. ?1 is the player's id wherever it
// appears; the Qt path binds it once per mark. A file gives each read's rows
// in the order of the index it runs on; the Qt path asks for that order.
inline constexpr const char *gamesStatement =
    "SELECT id, creationdate, gametype, result, throws, points, outset FROM games WHERE players_id = ?1";
inline constexpr const char *gameDartsStatement =
    "SELECT games_id, setseq, dartseq, score, ring, targetscore, targetring FROM gamesdarts WHERE players_id = ?1";
inline constexpr const char *practiceSetsStatement =
    "SELECT id, creationdate, targetValue, targetRing FROM statstargets WHERE players_id = ?1";
// The player's sets by their own index, each set's darts through the
// statsthrows_target index.
inline constexpr const char *practiceDartsStatement =
    "SELECT th.statstargets_id, th.score, th.ring"
    " FROM statstargets ta JOIN statsthrows th ON th.statstargets_id = ta.id WHERE +ta.players_id = ?1";
// The player's ended drills, oldest end first: the stored texts sort as
// the times they name.
inline constexpr const char *endedDrillsStatement =
    "SELECT id, kind, target, startdate, enddate, score, completed, quit FROM drills"
    " WHERE players_id = ?1 AND enddate IS NOT NULL ORDER BY enddate, id";
// The drill darts at a double or the bull, from the index of their targets.
inline constexpr const char *drillDoubleDartsStatement =
    "SELECT creationdate, score, ring, targetscore, targetring FROM drilldarts"
    " WHERE players_id = ?1 AND targetring = 2 AND targetscore > 0";
// The player's ended matches.
inline constexpr const char *endedMatchesStatement =
    "SELECT id, gametype, enddate, result, playerpoints, playerdarts, opponentpoints, opponentdarts FROM matches"
    " WHERE players_id = ?1 AND enddate IS NOT NULL";

// Practice darts by their set's target, then game darts by their own; the
// target's value and ring travel as one number, value * 8 + ring.
inline constexpr const char *aimedDartsStatement =
    "SELECT ta.targetValue * 8 + ta.targetRing, th.x, th.y"
    " FROM statstargets ta JOIN statsthrows th ON th.statstargets_id = ta.id WHERE +ta.players_id = ?1"
    " UNION ALL SELECT targetscore * 8 + targetring, x, y FROM gamesdarts WHERE players_id = ?1";
// Then the drill darts that name an area; those of rounds at no single
// area (any double, a checkout total) carry none.
inline constexpr const char *aimedDrillDartsStatement =
    "SELECT targetscore * 8 + targetring, x, y FROM drilldarts WHERE players_id = ?1 AND targetscore > 0";

GameType gameTypeFrom(int stored);

// The columns of the rows below are those of the statements above, in
// their order. `letter` is a text's only character (0 for any other text
// or none); `seconds` a stored time (localSeconds).
template <typename Row>
StatsGame gameFrom(const Row &row)
{
    const char result = row.letter(3);
    return {row.int64(0),
            row.seconds(1),
            gameTypeFrom(row.int32(2)),
            result == 'W'   ? GameEnd::Won
            : result == 'L' ? GameEnd::Lost
                            : GameEnd::Unfinished,
            row.int32(4),
            row.int32(5),
            row.int32(6)};
}

template <typename Row>
StatsGameDart gameDartFrom(const Row &row)
{
    return {row.int64(0), row.int32(1), row.int32(2), row.int32(3), row.int32(4), row.int32(5), row.int32(6)};
}

template <typename Row>
StatsPracticeSet practiceSetFrom(const Row &row)
{
    return {row.int64(0), row.seconds(1), row.int32(2), row.int32(3)};
}

template <typename Row>
StatsPracticeDart practiceDartFrom(const Row &row)
{
    return {row.int64(0), row.int32(1), row.int32(2)};
}

template <typename Row>
DrillRow drillFrom(const Row &row)
{
    return {row.int64(0),       row.int32(1),      row.int32(2),      row.seconds(3),
            row.seconds(4),     row.int32(5),      row.int32(6) != 0, row.int32(7) != 0};
}

template <typename Row>
StatsDrillDart drillDartFrom(const Row &row)
{
    return {row.seconds(0), row.int32(1), row.int32(2), row.int32(3), row.int32(4)};
}

template <typename Row>
StatsMatch matchFrom(const Row &row)
{
    MatchResult result = MatchResult::Other;
    switch (row.letter(3)) {
    case 'W': result = MatchResult::Won; break;
    case 'L': result = MatchResult::Lost; break;
    case 'A': result = MatchResult::Abandoned; break;
    default: break;
    }
    return {row.int64(0), gameTypeFrom(row.int32(1)), row.seconds(2), result,
            row.int64(4), row.int64(5),               row.int64(6),   row.int64(7)};
}

template <typename Row>
void takeAimedDart(const Row &row, const DartHistory::AimedDartTaker &take)
{
    // Rings are 0 to 3; a negative code keeps its ring below 8 too.
    const qint64 target = row.int64(0);
    const int ring = int(((target % 8) + 8) % 8);
    take(int((target - ring) / 8), ring, row.real(1), row.real(2));
}

// The current row of a Qt query as a row source, its values read as SQLite
// reads the same values: a whole number from a real by truncation, from a
// text by its leading digits, 0 from a null.
class QueryRow {
public:
    explicit QueryRow(const QSqlQuery &query) : query_(query) {}
    qint64 int64(int column) const;
    int int32(int column) const { return int(int64(column)); }
    double real(int column) const;
    std::optional<qint64> seconds(int column) const;
    char letter(int column) const;

private:
    const QSqlQuery &query_;
};

// A real number as SQLite writes it in text ("1.5", "2.0", "1.0e+20").
QByteArray sqliteRealText(double value);

// The Qt-path reads. Each gives false (or nothing) with `error` set when
// the database cannot be read; the tables a database may lack yet (the
// drills', the matches') are asked of `dialect` and read as empty.
bool readAimedDartRows(QSqlDatabase &db, const StoreDialect &dialect, qint64 playerId,
                       const DartHistory::AimedDartTaker &take, QSqlError &error);
std::optional<StatisticsRows> readStatisticsRows(QSqlDatabase &db, const StoreDialect &dialect, qint64 playerId,
                                                 QSqlError &error);
bool readEndedDrillRows(QSqlDatabase &db, const StoreDialect &dialect, qint64 playerId, std::vector<DrillRow> &rows,
                        QSqlError &error);
// The darts to write out, the thrower's name taken from `names` (UTF-8, ""
// for an id with none). Stops, as a success, when `take` returns false.
bool readExportDartRows(QSqlDatabase &db, const StoreDialect &dialect, std::optional<qint64> playerId,
                        const QHash<qint64, QByteArray> &names, const DartExport::ExportDartTaker &take,
                        QSqlError &error);

// The export's game darts of one player (?1) or of all, in the order written.
QByteArray exportGameDartsStatement(const StoreDialect &dialect, bool ofPlayer);

} // namespace tavrix
