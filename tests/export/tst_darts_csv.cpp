// The darts written out as CSV: read back with an RFC 4180 reader and held
// against the darts as they were recorded, in a locale whose decimal
// separator is a comma; a cancelled or failed export; and the command line
// of the program itself.

#include "../support/sql_rows.h"
#include "csv_reader.h"
#include "core/advice/aim_spread.h"
#include "core/export/darts_csv.h"
#include "core/stats/stats_store.h"

#include <QDateTime>
#include <QFile>
#include <QLocale>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <clocale>
#include <cmath>

using namespace tavrix;

namespace {

// A dart as the test recorded it, with the row the file must hold for it.
struct Recorded {
    QString player;
    bool practice = false;
    qint64 game = 0;  // practice: none
    qint64 set = 0;   // set number, or the practice target's id
    int dart = 0;     // 1 to 3
    int targetScore = 0;
    int targetRing = 0;
    std::optional<double> x, y;
    int score = 0;
    int ring = 0;
    bool targetLost = false; // practice: the target's row is not there
};

const QStringList header{"player", "mode",   "date",     "game",     "set",  "dart",   "target_score", "target_ring",
                         "aim_x_mm", "aim_y_mm", "x_mm", "y_mm", "miss_mm", "score", "ring"};

// Millimetres as the file must write them: two decimals after a point.
bool isMillimetres(const QString &field)
{
    static const QRegularExpression form(QStringLiteral("^-?\\d+\\.\\d\\d$"));
    return form.match(field).hasMatch();
}

} // namespace

class TestDartsCsv : public QObject {
    Q_OBJECT

    QTemporaryDir dir_;
    QString dbPath_ = dir_.filePath(QStringLiteral("tavrix.db"));
    // A name a CSV file must quote: a comma, quotes and a line break.
    const QString oddName_ = QStringLiteral("Smith, \"Slim\"\nJim");
    qint64 ann_ = 0;
    qint64 jim_ = 0;
    QList<Recorded> practice_; // in the order recorded
    QList<Recorded> games_;

    void compareRow(const QStringList &row, const Recorded &dart, int line)
    {
        const QByteArray where = QByteArray("row ") + QByteArray::number(line);
        QVERIFY2(row.size() == header.size(), where);
        QCOMPARE(row[0], dart.player);
        QCOMPARE(row[1], dart.practice ? QStringLiteral("practice") : QStringLiteral("game"));
        if (dart.targetLost) {
            // Nothing to say when or at what: those fields stay empty.
            QCOMPARE(row[2] + row[6] + row[7] + row[8] + row[9] + row[12], QString());
            QCOMPARE(row[4], QString::number(dart.set));
            QCOMPARE(row[13], QString::number(dart.score));
            return;
        }
        const QDateTime date = QDateTime::fromString(row[2], Qt::ISODate);
        QVERIFY2(row[2].size() == 19 && row[2][10] == QLatin1Char('T') && date.isValid(), qPrintable(row[2]));
        QVERIFY2(qAbs(date.secsTo(QDateTime::currentDateTime())) < 600, qPrintable(row[2]));
        QCOMPARE(row[3], dart.practice ? QString() : QString::number(dart.game));
        QCOMPARE(row[4], QString::number(dart.set));
        QCOMPARE(row[5], QString::number(dart.dart));
        QCOMPARE(row[6], QString::number(dart.targetScore));
        QCOMPARE(row[7], QString::number(dart.targetRing));
        const auto aim = aimOfTarget(dart.targetScore, dart.targetRing);
        auto mm = [](double units) { return units * 165.1 / 202; };
        auto near = [&](const QString &field, double expected) {
            QVERIFY2(isMillimetres(field), qPrintable(where + ": " + field));
            QVERIFY2(std::abs(field.toDouble() - expected) <= 0.0051, qPrintable(where + ": " + field));
        };
        if (aim) {
            near(row[8], mm(aim->first.x));
            near(row[9], mm(aim->first.y));
        } else {
            QCOMPARE(row[8], QString());
            QCOMPARE(row[9], QString());
        }
        // The store keeps single-precision positions.
        if (dart.x) {
            near(row[10], mm(storedCoordinate(*dart.x)));
            near(row[11], mm(storedCoordinate(*dart.y)));
        } else {
            QCOMPARE(row[10], QString());
            QCOMPARE(row[11], QString());
        }
        if (aim && dart.x)
            near(row[12], mm(std::hypot(storedCoordinate(*dart.x) - aim->first.x,
                                        storedCoordinate(*dart.y) - aim->first.y)));
        else
            QCOMPARE(row[12], QString());
        QCOMPARE(row[13], QString::number(dart.score));
        QCOMPARE(row[14], QString::number(dart.ring));
    }

    // The rows of the file at `path`, header first, read as RFC 4180.
    QList<QStringList> readBack(const QString &path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return {};
        const CsvFile csv = readCsv(file.readAll());
        if (!csv.error.isEmpty())
            qWarning("%s", qPrintable(csv.error));
        return csv.records;
    }

private slots:
    void initTestCase()
    {
        // Numbers must not follow the locale: German writes 1,5.
        QLocale::setDefault(QLocale(QLocale::German));
        if (!std::setlocale(LC_NUMERIC, "de_DE.UTF-8"))
            qInfo("de_DE.UTF-8 is not installed; the C library keeps its own numbers");

        StatsStore store(QStringLiteral("fill"));
        QVERIFY(store.open(dbPath_));
        ann_ = store.insertPlayer(QStringLiteral("Ann")).value();
        jim_ = store.insertPlayer(oddName_).value();
        const qint64 game = store.insertGame({ann_, GameType::X01_501, SkillLevel::APlayer, QStringLiteral("Bo")}).value();
        const BoardPoint t20 = aimPoint(3, 20);
        auto gameDart = [&](qint64 player, const QString &name, qint64 id, int set, int seq, int ts, int tr,
                            double x, double y, int score, int ring) {
            QVERIFY(store.insertGameDart({id, player, set, seq, x, y, 0, score, ring, ts, tr}));
            // The cork is dart 1 of set 0 as stored; set darts are stored from 0.
            games_.append({name, false, id, set, set == 0 ? seq : seq + 1, ts, tr, x, y, score, ring});
        };
        gameDart(ann_, QStringLiteral("Ann"), game, 0, 1, 25, 1, 3.3, -4.4, 50, 50);
        gameDart(ann_, QStringLiteral("Ann"), game, 1, 0, 20, 3, t20.x + 1.25, t20.y - 2.5, 20, 3);
        gameDart(ann_, QStringLiteral("Ann"), game, 1, 1, 20, 3, -30.123, 150.777, 1, 1);
        // No target: a miss of the chart's advice records target 0.
        gameDart(ann_, QStringLiteral("Ann"), game, 1, 2, 0, 0, 190.5, -0.001, 6, 2);
        const qint64 jimGame = store.insertGame({jim_, GameType::Cricket, SkillLevel::You, QStringLiteral("Al")}).value();
        gameDart(jim_, oddName_, jimGame, 1, 0, 19, 1, -100, -100, 16, 1);
        // Enough darts that the export hands them on in several parts.
        {
            StatsStore::Batch batch(store);
            for (int i = 0; i < 1200; ++i)
                gameDart(jim_, oddName_, jimGame, 2 + i / 3, i % 3, 19, 1, i % 50, -(i % 70), 16, 1);
            QVERIFY(batch.commit());
        }

        auto practiceSet = [&](qint64 player, const QString &name, int value, int ring,
                               std::initializer_list<std::pair<double, double>> darts) {
            const qint64 target = store.insertStatTarget(player, value, ring).value();
            int seq = 0;
            for (const auto &[x, y] : darts) {
                QVERIFY(store.insertStatThrow({player, target, seq, x, y, 0, 7, 1}));
                practice_.append({name, true, 0, target, seq + 1, value, ring, x, y, 7, 1});
                ++seq;
            }
        };
        practiceSet(ann_, QStringLiteral("Ann"), 19, 2, {{-10, -180}, {0.004, -0.004}, {55.5, 66.6}});
        practiceSet(jim_, oddName_, 25, 1, {{1, 1}});
        practiceSet(ann_, QStringLiteral("Ann"), 6, 3, {{120, 0}, {118, 3}, {-2, 2}});
        // A dart written later for an earlier target, and one whose target
        // is gone.
        Recorded late = practice_[0];
        late.dart = 4;
        QVERIFY(store.insertStatThrow({ann_, late.set, 3, *late.x, *late.y, 0, 7, 1}));
        practice_.append(late);
        QVERIFY(store.insertStatThrow({ann_, 9999, 0, 5, 5, 0, 7, 1}));
        practice_.append({QStringLiteral("Ann"), true, 0, 9999, 1, 0, 0, 5.0, 5.0, 7, 1, true});
        // A dart whose position was lost to another program's edit: its
        // place stays, the fields that need it are empty.
        OtherConnection other(dbPath_);
        QVERIFY(other.exec({QStringLiteral("UPDATE gamesdarts SET x = NULL, y = NULL WHERE setseq = 1 AND dartseq = 1")}));
        games_[2].x.reset();
        games_[2].y.reset();
    }

    void cleanupTestCase() { QLocale::setDefault(QLocale::c()); }

    // Every dart of the chosen players, practice first, each table in the
    // order recorded, with every field as recorded.
    void everyRowMatchesTheDartsRecorded()
    {
        StatsStore store(QStringLiteral("export"));
        QVERIFY(store.open(dbPath_));
        for (const std::optional<qint64> player : {std::optional<qint64>(), std::optional<qint64>(ann_),
                                                   std::optional<qint64>(jim_)}) {
            QList<Recorded> expected;
            for (const QList<Recorded> *table : {&practice_, &games_}) {
                for (const Recorded &dart : *table) {
                    const QString name = player == ann_ ? QStringLiteral("Ann") : oddName_;
                    if (!player || dart.player == name)
                        expected.append(dart);
                }
            }
            const QString path = dir_.filePath(QStringLiteral("darts.csv"));
            const ExportOutcome outcome = exportDartsCsv(store, player, path);
            QVERIFY2(outcome.end == ExportEnd::Written, qPrintable(outcome.error));
            QCOMPARE(outcome.rows, qint64(expected.size()));
            const QList<QStringList> rows = readBack(path);
            QCOMPARE(rows.size(), expected.size() + 1);
            QCOMPARE(rows[0], header);
            for (int i = 0; i < expected.size(); ++i) {
                compareRow(rows[i + 1], expected[i], i + 1);
                if (QTest::currentTestFailed())
                    return;
            }
        }
    }

    // Nothing is left at the chosen name but what was there before: not on
    // cancel, not when the file cannot be written, not for a lost player.
    void aCancelledOrFailedExportLeavesNoFile()
    {
        StatsStore store(QStringLiteral("export"));
        QVERIFY(store.open(dbPath_));
        const QString path = dir_.filePath(QStringLiteral("cancelled.csv"));
        int reports = 0;
        ExportOutcome outcome = exportDartsCsv(store, std::nullopt, path, [&](qint64, qint64 total) {
            ++reports;
            return total != practice_.size() + games_.size();
        });
        QCOMPARE(outcome.end, ExportEnd::Cancelled);
        QCOMPARE(reports, 1);
        QVERIFY(!QFile::exists(path));

        QFile before(path);
        QVERIFY(before.open(QIODevice::WriteOnly));
        before.write("kept\n");
        before.close();
        outcome = exportDartsCsv(store, std::nullopt, path, [](qint64, qint64) { return false; });
        QCOMPARE(outcome.end, ExportEnd::Cancelled);
        QFile after(path);
        QVERIFY(after.open(QIODevice::ReadOnly));
        QCOMPARE(after.readAll(), QByteArray("kept\n"));
        QCOMPARE(QDir(dir_.path()).entryList(QDir::Files).filter(QStringLiteral("cancelled")),
                 QStringList{QStringLiteral("cancelled.csv")});

        // A file inside a file: no folder to write in, whoever runs this.
        const QString inside = path + QStringLiteral("/darts.csv");
        outcome = exportDartsCsv(store, std::nullopt, inside);
        QCOMPARE(outcome.end, ExportEnd::Failed);
        QVERIFY2(outcome.error.contains(QStringLiteral("cancelled.csv")), qPrintable(outcome.error));
    }

    // tavrix --export-csv FILE [--player NAME], against the file TAVRIX_DB
    // names: 0 when written, 1 with a message on standard error otherwise,
    // and a statistics file that is not there is not made.
    void theCommandLineExportsWithoutAWindow()
    {
        const QString csv = dir_.filePath(QStringLiteral("command.csv"));
        auto run = [&](const QString &database, const QStringList &arguments, QByteArray &err) {
            QProcess process;
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert(QStringLiteral("TAVRIX_DB"), database);
            environment.remove(QStringLiteral("DISPLAY"));
            environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
            environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
            process.setProcessEnvironment(environment);
            process.start(QStringLiteral(TAVRIX_BINARY), arguments);
            if (!process.waitForFinished(60000))
                return -1;
            err = process.readAllStandardError();
            return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        };
        QByteArray err;
        QCOMPARE(run(dbPath_, {QStringLiteral("--export-csv"), csv, QStringLiteral("--player"), QStringLiteral("Zed")}, err), 1);
        QVERIFY2(err.contains("Zed"), err);
        QVERIFY(!QFile::exists(csv));

        QCOMPARE(run(dbPath_, {QStringLiteral("--export-csv"), dbPath_ + QStringLiteral("/x.csv")}, err), 1);
        QVERIFY2(err.contains("Cannot write"), err);

        const QString missing = dir_.filePath(QStringLiteral("none.db"));
        QCOMPARE(run(missing, {QStringLiteral("--export-csv"), csv}, err), 1);
        QVERIFY2(err.contains("none.db"), err);
        QVERIFY(!QFile::exists(missing));

        QCOMPARE(run(dbPath_, {QStringLiteral("--export-csv"), csv, QStringLiteral("--player"), oddName_}, err), 0);
        QList<QStringList> rows = readBack(csv);
        QCOMPARE(rows.size(), 1 + 1 + 1 + 1200); // Jim's one practice dart and game darts
        QCOMPARE(rows[1][0], oddName_);
        QCOMPARE(run(dbPath_, {QStringLiteral("--export-csv=") + csv}, err), 0);
        QCOMPARE(readBack(csv).size(), 1 + practice_.size() + games_.size());

        // --player alone, and --export-csv without a file, are refused as
        // any other line the program does not take.
        QCOMPARE(run(dbPath_, {QStringLiteral("--player"), QStringLiteral("Ann")}, err), 2);
        QCOMPARE(run(dbPath_, {QStringLiteral("--export-csv")}, err), 2);
    }
};

QTEST_GUILESS_MAIN(TestDartsCsv)
#include "tst_darts_csv.moc"
