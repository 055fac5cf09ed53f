#pragma once

// The statistics database: players, games, every recorded dart and the
// checkout chart, in one SQLite file reached through one Qt SQL connection.
// Every value travels as a bound parameter, so names and numbers never become
// statement text and numbers never depend on the locale.

#include "core/stats/game_codes.h"
#include "core/stats/outchart_data.h"
#include "core/stats/practice_sums.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>

#include <array>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <vector>

namespace tavrix {

// One dart of the local player in a game (the cork has set 0, dart 1).
struct GameDart {
    qint64 gameId = 0;
    qint64 playerId = 0;
    int setSeq = 0;
    int dartSeq = 0;
    double x = 0;
    double y = 0;
    double dist = 0;
    int score = 0;
    int ring = 0;
    int targetScore = 0;
    int targetRing = 0;
};

// One practice dart, scored with the practice score pair.
struct PracticeDart {
    qint64 playerId = 0;
    qint64 targetId = 0;
    int seq = 0;
    double x = 0;
    double y = 0;
    double dist = 0;
    int score = 0;
    int ring = 0;
};

// How a game ended, for its row in `games`.
struct GameResult {
    QString result; // "W" or "L"
    int throws = 0;
    int points = 0;
    int bestSet = 0;
    int outSet = 0;
};

struct PlayerRow {
    qint64 id = 0;
    QString name;
    friend bool operator==(const PlayerRow &, const PlayerRow &) = default;
};

// Figures of the player's recorded distances (games and practice together,
// each distinct distance once), from which the "You" profile is cut. Empty
// quarters read as 0.
struct DistanceQuarters {
    qint64 sampleCount = 0;
    double average = 0;
    double tightestMax = 0;              // upper bound of the closest quarter
    double secondMin = 0, secondMax = 0; // the next quarter outwards
    double thirdMin = 0, thirdMax = 0;
    double widestMin = 0, widestMax = 0; // the farthest quarter
    qint64 wildCount = 0;                // distances beyond three times the average
};

// Every distance the player has recorded, in games and in practice, as read:
// unsorted and with repeats; whether an empty one was among them.
struct PlayerDistances {
    std::vector<double> values;
    bool hasNull = false;
};

// The quarters of the distinct distances: the closest quarter and the
// farthest quarter (a quarter rounded up), the rest of each half beyond them,
// the average and the distances beyond three times it. Below `minSamples`
// distinct distances only the count and the average are filled in.
DistanceQuarters distanceQuartersOf(PlayerDistances distances, qint64 minSamples);

// What has changed in the database: commits of other connections and rows
// changed through this one. Equal stamps mean nothing was written between.
struct ChangeStamp {
    qint64 otherConnections = 0;
    qint64 thisConnection = 0;
    friend bool operator==(const ChangeStamp &, const ChangeStamp &) = default;
};

// Darts aimed at each scoring area: [ring - 1][target], target 0 the bull,
// target i = 1..20 the number 21 - i.
using TargetCounts = std::array<std::array<qint64, 21>, 3>;

// The player's record in the games of one type at one skill level.
struct GameRecordFigures {
    static constexpr int noBestLeg = 99;

    int wins = 0;
    int losses = 0;
    int bestLeg = noBestLeg; // fewest darts in a won game
    int bestOut = 0;         // highest finishing set
    friend bool operator==(const GameRecordFigures &, const GameRecordFigures &) = default;
};

struct NewGame {
    qint64 playerId = 0;
    GameType gameType = GameType::None;
    SkillLevel skill = SkillLevel::None;
    QString opponent;
};

class StatsStore {
public:
    static constexpr const char *defaultConnectionName = "statsConnection";
    static constexpr const char *defaultFileName = "tavrix.db";
    static constexpr const char *pathVariable = "TAVRIX_DB";

    // The database file: $TAVRIX_DB when set, otherwise tavrix.db in the
    // working folder.
    static QString defaultDatabasePath();

    explicit StatsStore(QString connectionName = QString::fromLatin1(defaultConnectionName));
    ~StatsStore();
    StatsStore(const StatsStore &) = delete;
    StatsStore &operator=(const StatsStore &) = delete;

    // Opens (and when missing, creates) the database: the six tables, their
    // indexes and the checkout chart. On failure lastError() says why and the
    // store stays closed.
    bool open(const QString &path);
    void close();
    bool isOpen() const;
    QString lastError() const { return lastError_; }
    // Whether the open file can be written now: nothing when it can, else
    // what stops it, naming the file.
    std::optional<QString> writeProblem();
    QString databasePath() const { return path_; }

    // Writers. Each returns false (or no id) and sets lastError() when the
    // database refuses the statement.
    bool insertGameDart(const GameDart &dart);
    std::optional<qint64> insertStatTarget(qint64 playerId, int targetValue, int targetRing);
    bool insertStatThrow(const PracticeDart &dart);
    std::optional<qint64> insertGame(const NewGame &game);
    bool finishGame(qint64 gameId, const GameResult &result);
    std::optional<qint64> insertPlayer(const QString &name);

    // Removes every practice set, practice dart, game dart and game of the
    // player; the player stays.
    bool resetPlayerStats(qint64 playerId);

    // Players, in the order the table keeps them. Names are compared exactly
    // as stored: case, blanks and quotes all count.
    std::optional<int> playerCount();
    std::optional<QList<PlayerRow>> players();
    std::optional<qint64> playerIdByName(const QString &name);
    std::optional<QString> playerName(qint64 playerId);
    bool renamePlayer(qint64 playerId, const QString &name);
    // Removes the player with its practice targets and throws; its games and
    // game darts stay.
    bool deletePlayer(qint64 playerId);
    // The checkout chart in ascending order of points, rows of equal points
    // in the order they were added. A points value that is no whole number
    // (text, a fraction, NULL) reads as 0, which is no score.
    std::optional<QList<ChartRow>> outchartRows();
    std::optional<QList<StoredChartRow>> storedOutchartRows();
    // Removes the rows with these rowids and adds `rows`, in one transaction:
    // either all of it is written or nothing is.
    bool replaceOutchartRows(const QList<qint64> &rowIds, const QList<ChartRow> &rows);

    // The player's distances in quarters; the quarters are read only when
    // there are at least minSamples distinct distances.
    // Both of these read all of the player's darts; a result is kept and
    // given again until anything in the database changes.
    std::optional<DistanceQuarters> distanceQuarters(qint64 playerId, qint64 minSamples);
    // Won and lost games of one type and skill level (the skill is stored
    // whatever the opponent, so it filters games against people too). Best
    // leg and best out are read for 301 and 501 only.
    std::optional<GameRecordFigures> gameRecord(qint64 playerId, GameType gameType, SkillLevel skill);
    // Practice and game darts aimed at each scoring area.
    std::optional<TargetCounts> targetCounts(qint64 playerId);
    // One read of the player's distances, as the two above start from.
    std::optional<PlayerDistances> playerDistances(qint64 playerId);
    // How often the player's darts were read for the queries above.
    int playerReads() const { return playerReads_; }
    std::optional<ChangeStamp> changeStamp();

    // The practice sums kept for the player; none when none are kept (never
    // built, or dropped because darts or targets changed since) or they
    // cannot be read.
    std::optional<PracticeSums> keptPracticeSums(qint64 playerId);
    // Keeps the player's sums in place of the old ones, inside the caller's
    // transaction: all of them, or the player's figures and those of one
    // target only.
    bool keepPracticeSums(qint64 playerId, const PracticeSums &sums);
    bool keepPracticeSums(qint64 playerId, const PracticeSums &sums, std::pair<int, int> target);
    // Every dart of the player's practice targets (whoever threw it) with
    // its target's value and ring, by target id and then by dart id: one
    // read of the player's practice darts. Only the target, thrower,
    // position, score and ring of a dart are read.
    using PracticeDartTaker = std::function<void(int targetValue, int targetRing, const PracticeDart &)>;
    bool readPracticeDarts(qint64 playerId, const PracticeDartTaker &take);

    // Review of one area: the player's practice darts aimed at the target
    // (value, ring), by practice set and then dart, and the game darts aimed
    // at the same number and multiplier, in the order they were recorded.
    struct AreaDart {
        double x = 0;
        double y = 0;
        int score = 0;
        int ring = 0;
        friend bool operator==(const AreaDart &, const AreaDart &) = default;
    };
    struct AreaDarts {
        std::vector<AreaDart> practice;
        std::vector<AreaDart> game;
    };
    std::optional<AreaDarts> areaDarts(qint64 playerId, int targetValue, int targetRing);

    // Writes grouped in one transaction: begin, write, commit. A batch that is
    // not committed is rolled back when it goes out of scope.
    class Batch {
    public:
        explicit Batch(StatsStore &store);
        ~Batch();
        Batch(const Batch &) = delete;
        Batch &operator=(const Batch &) = delete;
        bool isActive() const { return active_; }
        bool commit();

    private:
        StatsStore &store_;
        bool active_ = false;
    };

    QSqlDatabase connection() const;

private:
    bool fail(const QString &what, const QSqlQuery &query);
    bool fail(const QString &what, const QString &detail);
    bool exec(QSqlQuery &query, const QString &what);
    // Runs each statement with the player's id bound, all in one transaction.
    bool runForPlayer(std::initializer_list<const char *> statements, qint64 playerId,
                      const QString &what);
    // The statement prepared once per connection and reused; null (with
    // lastError() set) when it cannot be prepared.
    QSqlQuery *prepared(const QString &key, const QString &statement);

    QString connectionName_;
    QString path_;
    QString lastError_;
    struct QuartersMemo {
        ChangeStamp stamp;
        qint64 playerId = 0;
        qint64 minSamples = 0;
        DistanceQuarters quarters;
    };
    struct CountsMemo {
        ChangeStamp stamp;
        qint64 playerId = 0;
        TargetCounts counts{};
    };
    std::optional<QuartersMemo> quartersMemo_;
    std::optional<CountsMemo> countsMemo_;
    int playerReads_ = 0;
    struct PreparedStatements;
    std::unique_ptr<PreparedStatements> statements_;
};

// A dart's x or y as the database keeps it: a single-precision value.
double storedCoordinate(double value);

// What a database error means, in words a user understands.
QString describeDatabaseError(const QSqlError &error);

// The text in which dates and times are stored: SQLite's own form, read back as
// the same local date and time.
QString storedDateTimeNow();

} // namespace tavrix
