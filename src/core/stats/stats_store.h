#pragma once

// The statistics store in one SQLite file reached through one Qt SQL
// connection: players, games, every recorded dart and the checkout chart.
// Every value travels as a bound parameter, so names and numbers never become
// statement text and numbers never depend on the locale. Qt SQL stays out of
// this header: the rest of the program sees the store through its interfaces.

#include "core/stats/chart_store.h"
#include "core/stats/club_store.h"
#include "core/stats/dart_export.h"
#include "core/stats/drill_log.h"
#include "core/stats/game_store.h"
#include "core/stats/player_store.h"
#include "core/stats/practice_log.h"
#include "core/stats/store_address.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

class QSqlDatabase;
class QSqlQuery;

namespace tavrix {

class StoreDialect;

class StatsStore final : public PlayerStore,
                          public GameStore,
                          public PracticeLog,
                          public ChartStore,
                          public DartExport,
                          public DrillLog,
                          public ClubStore {
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

    // Opens the database, creating a missing file, and brings an older file's
    // tables up to this version (sqlite_schema.h). On failure lastError()
    // says why, the store stays closed and the file is as it was.
    bool open(const QString &path);
    // Opens the statistics at `address`: a file as above, or a database on
    // a PostgreSQL server, whose tables are created or brought up to this
    // version as a file's are. `password` is used for a server whose
    // address has none; without either, the server's password file or
    // PGPASSWORD gives it. On failure lastError() says why, naming the
    // server and the cause, and needsPassword() says whether the server
    // asked for a password it was not given or refused the one given.
    bool open(const StoreAddress &address, const QString &password = {});
    bool needsPassword() const { return needsPassword_; }
    // As open(address, password), for a worker's own connection to the
    // statistics another store has open: a file that has gone is not made
    // again, and lastError() says it is gone.
    bool openExisting(const StoreAddress &address, const QString &password);
    // The server whose database is open; nothing for a file.
    const std::optional<ServerAddress> &server() const { return server_; }
    // What open() was given, so that a worker can open its own connection
    // to the same statistics: the file, or the server and its password.
    StoreAddress address() const;
    const QString &serverPassword() const { return password_; }
    void close();
    bool isOpen() const;
    QString lastError() const override { return lastError_; }
    QString whenWritableAgain() const override
    {
        return server_ ? QStringLiteral("the club database can be reached again") : StatsAccess::whenWritableAgain();
    }
    // Whether the open file can be written now: nothing when it can, else
    // what stops it, naming the file.
    std::optional<QString> writeProblem();
    QString databasePath() const { return path_; }
    // Whether the file at databasePath() is still the file that was opened:
    // nothing when it is, else what became of it (deleted or moved away,
    // replaced by another file, or written over), naming the file. Every
    // write asks this first, because the open connection would go on writing
    // into a file nobody can reach any more.
    std::optional<QString> fileProblem() const;

    // Saves the statistics into the file at `path` and goes on with that
    // file: a copy of everything when the file in use can still be read,
    // else a new statistics file (which then lacks what was written before).
    // A file already at `path` is replaced. False, with lastError(), when
    // neither can be made; the store then goes on with the file it had, if
    // it still has one.
    enum class Moved { Copied, NewFile };
    std::optional<Moved> moveTo(const QString &path);
    // Writes a copy of the statistics as they are now (what other programs
    // have committed included) into the file at `path`, replacing a file
    // there; the store goes on with its own file. The copy is made beside
    // `path` and takes its place only once it opens as a whole statistics
    // file. False, with lastError(), when it cannot be made.
    bool backUpTo(const QString &path);
    // The suffix of the file a restore replaced, kept beside it.
    static constexpr const char *beforeRestoreSuffix = ".before-restore";
    // Puts the statistics of the file at `source` in place of the open
    // file's and goes on with them. Only a file that holds every table and
    // column of the program, of this version or older, and is whole, is
    // taken; its copy is brought up to this version before it takes the
    // place. The replaced file is kept beside its own name with
    // beforeRestoreSuffix (replacing one kept before). False, with
    // lastError(), when the file is refused or the restore fails; the store
    // then goes on with the file it had, unchanged.
    bool restoreFrom(const QString &source);
    // Writes the player's row with this id, where no row has it.
    bool restorePlayer(qint64 playerId, const QString &name);

    bool beginTransaction() override;
    bool commitTransaction() override;
    void rollbackTransaction() override;

    std::optional<int> playerCount() override;
    std::optional<QList<PlayerRow>> players() override;
    std::optional<qint64> playerIdByName(const QString &name) override;
    std::optional<QString> playerName(qint64 playerId) override;
    std::optional<qint64> insertPlayer(const QString &name) override;
    bool renamePlayer(qint64 playerId, const QString &name) override;
    bool deletePlayer(qint64 playerId) override;
    bool resetPlayerStats(qint64 playerId) override;

    std::optional<qint64> insertGame(const NewGame &game) override;
    bool insertGameDart(const GameDart &dart) override;
    bool finishGame(qint64 gameId, const GameResult &result) override;
    bool restoreGame(qint64 gameId, const NewGame &game, const QString &playerName) override;

    // Both of these read all of the player's darts; a result is kept and
    // given again until anything in the database changes.
    std::optional<DistanceQuarters> distanceQuarters(qint64 playerId, qint64 minSamples) override;
    std::optional<TargetCounts> targetCounts(qint64 playerId) override;
    std::optional<AreaDarts> areaDarts(qint64 playerId, int targetValue, int targetRing) override;
    std::optional<GameRecordFigures> gameRecord(qint64 playerId, GameType gameType, SkillLevel skill) override;
    // One read of the player's distances, as the quarters start from.
    std::optional<PlayerDistances> playerDistances(qint64 playerId);
    // How often the player's darts were read for the queries above and for
    // the practice darts.
    int playerReads() const { return playerReads_; }

    std::optional<qint64> insertStatTarget(qint64 playerId, int targetValue, int targetRing) override;
    bool insertStatThrow(const PracticeDart &dart) override;
    bool restoreStatTarget(qint64 targetId, qint64 playerId, int targetValue, int targetRing) override;
    std::optional<PracticeSums> keptPracticeSums(qint64 playerId) override;
    bool keepPracticeSums(qint64 playerId, const PracticeSums &sums) override;
    bool keepPracticeSums(qint64 playerId, const PracticeSums &sums, std::pair<int, int> target) override;
    bool readPracticeDarts(qint64 playerId, const PracticeDartTaker &take) override;

    std::optional<qint64> insertMatch(const NewMatch &match) override;
    bool insertMatchLeg(const MatchLeg &leg) override;
    bool finishMatch(qint64 matchId, const MatchEnd &end) override;
    bool restoreMatch(qint64 matchId, const NewMatch &match) override;

    std::optional<qint64> insertDrill(const NewDrill &drill) override;
    bool insertDrillSet(const QList<DrillDart> &darts) override;
    bool finishDrill(qint64 drillId, const DrillEnd &end) override;
    std::optional<std::vector<DrillRow>> drillRows(qint64 playerId) override;
    std::optional<std::optional<int>> bestDrillScore(qint64 playerId, int kind, int targetNumber,
                                                     bool lowerIsBetter) override;

    // Only on a server; on a file they fail with lastError().
    std::optional<std::vector<ClubPlayerRows>> clubRows() override;
    std::optional<bool> isHiddenFromClub(qint64 playerId) override;
    bool setHiddenFromClub(qint64 playerId, bool hidden) override;
    // Copies the games, practice targets, drills and matches of the player
    // `sourcePlayerId` of `source` (a file), with their darts, into this club
    // database as the player `playerId`, in one transaction. What was copied
    // from that player before is left out, so copying again writes only
    // what is new. Nothing, with lastError(), on a file or when a read or a
    // write fails; then nothing is written.
    std::optional<CopiedRows> copyPlayerFrom(StatsStore &source, qint64 sourcePlayerId, qint64 playerId);

    std::optional<QList<ChartRow>> outchartRows() override;
    std::optional<QList<StoredChartRow>> storedOutchartRows() override;
    bool replaceOutchartRows(const QList<qint64> &rowIds, const QList<ChartRow> &rows) override;

    QSqlDatabase connection() const;
    // What differs between the database kinds, for the one open now.
    const StoreDialect &dialect() const { return *dialect_; }

    bool readAimedDarts(qint64 playerId, const AimedDartTaker &take) override;
    std::optional<StatisticsRows> statisticsRows(qint64 playerId) override;
    std::optional<qint64> exportDartCount(std::optional<qint64> playerId) override;
    bool readExportDarts(std::optional<qint64> playerId, const ExportDartTaker &take) override;
    std::optional<StoreVersion> storeVersion() override { return changeStamp(); }

private:
    using ChangeStamp = StoreVersion;
    std::optional<ChangeStamp> changeStamp();

    // The device and inode of the file opened, to tell it from a file put
    // in its place.
    struct FileIdentity {
        quint64 device = 0;
        quint64 inode = 0;
        friend bool operator==(const FileIdentity &, const FileIdentity &) = default;
    };
    // False, with lastError() saying what became of the file, when a write
    // must not go on. Inside a transaction the file was checked at its start.
    static std::optional<FileIdentity> identityOf(const QString &path);
    bool writable(const QString &what);
    // True on a file, and on a server whose connection answers (made again
    // when it was lost); false, with lastError(), when it cannot be. Called
    // where a read or write starts, before any statement is made, because
    // a new connection drops the statements of the old one.
    bool reachServer(const QString &what);
    // Copies everything the open connection reads into a new file at `path`;
    // "" on success, else why not.
    QString copyInto(const QString &path);

    bool fail(const QString &what, const QSqlQuery &query);
    bool fail(const QString &what, const QString &detail);
    bool exec(QSqlQuery &query, const QString &what);
    // Runs an INSERT of a `thing` ("drill"); the new row's id, or nothing
    // (with lastError()) when it fails or the database gives no id.
    std::optional<qint64> execInsert(QSqlQuery &query, const QString &what, const QString &thing);
    // Runs an INSERT of a row with an id the program kept into `table`,
    // then makes sure the table's next new id is above it.
    bool execGivenId(QSqlQuery &query, const QString &what, const char *table);
    // Runs an UPDATE of the `thing` with this id; false (with lastError())
    // when it fails or there is no such row.
    bool execUpdate(QSqlQuery &query, const QString &what, const QString &thing, qint64 id);
    // Runs each statement with the player's id bound, all in one transaction.
    bool runForPlayer(const std::vector<const char *> &statements, qint64 playerId, const QString &what);
    // Whether the file holds the drills' (the matches') tables: a file of a
    // version before them that another program held at start lacks them
    // until a later start.
    // False, with lastError(), on a file or an unreachable server.
    bool clubUsable(const QString &what);
    bool holdsDrillTables();
    bool holdsMatchTables();
    // False, with lastError(), when a drill (a match) cannot be written now.
    bool drillsWritable(const QString &what);
    bool matchesWritable(const QString &what);
    // False, with lastError(), when the file is not open, cannot be written
    // or lacks the tables of `things` ("drills") that `holds` looks for.
    bool newerTablesWritable(const QString &what, bool (StatsStore::*holds)(), const QString &things);
    // The statement prepared once per connection and reused; null (with
    // lastError() set) when it cannot be prepared.
    QSqlQuery *prepared(const QString &key, const QString &statement);

    QString connectionName_;
    const StoreDialect *dialect_;
    QString path_;
    std::optional<ServerAddress> server_;
    // Kept in memory only, to connect again after the server was away.
    QString password_;
    bool needsPassword_ = false;
    // A statement failed on the server: before the next read or write the
    // connection is tried, and made again when it was lost.
    bool connectionSuspect_ = false;
    QString lastError_;
    std::optional<FileIdentity> identity_;
    // The write-ahead log beside the file while it is open. SQLite would
    // read it into whatever file is later opened under the same name.
    std::optional<FileIdentity> logIdentity_;
    bool inTransaction_ = false;
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

} // namespace tavrix
