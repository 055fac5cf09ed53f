// The reads of a player's every dart through Qt SQL, which a server needs,
// against the reads through SQLite's own calls on one file with varied rows:
// the same aimed darts, statistics rows, drills and export darts, value for
// value and in the same order. (The same reads on a server are compared with
// a file's in tst_store_on_server.)

#include "../support/sql_rows.h"
#include "../support/statistics_rows_text.h"
#include "core/stats/store_dialect.h"
#include "core/stats/store_rows.h"
#include "core/stats/stats_store.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrix;

namespace {

QString fieldText(const StoredField &field)
{
    return QStringLiteral("%1/%2/%3")
        .arg(field.text.isNull() ? QStringLiteral("null") : QString::fromUtf8(field.text))
        .arg(field.whole ? QString::number(*field.whole) : QStringLiteral("-"))
        .arg(field.isInteger());
}

QString numberText(const std::optional<double> &number)
{
    return number ? QString::number(*number, 'g', 17) : QStringLiteral("-");
}

class Readers {
public:
    Readers(QSqlDatabase db, const StoreDialect &dialect) : db_(db), dialect_(dialect) {}

    QStringList aimed(qint64 player, QString &error)
    {
        QStringList out;
        QSqlError failure;
        if (!readAimedDartRows(db_, dialect_, player, [&](int value, int ring, double x, double y) {
                out << QStringLiteral("%1 %2 %3 %4").arg(value).arg(ring).arg(x, 0, 'g', 17).arg(y, 0, 'g', 17);
            }, failure))
            error = failure.text();
        return out;
    }
    std::optional<StatisticsRows> statistics(qint64 player, QString &error)
    {
        QSqlError failure;
        std::optional<StatisticsRows> rows = readStatisticsRows(db_, dialect_, player, failure);
        if (!rows)
            error = failure.text();
        return rows;
    }
    QStringList exported(std::optional<qint64> player, QString &error, int stopAfter = -1)
    {
        QHash<qint64, QByteArray> names;
        for (const QVariantList &row : sqlRows(db_, QStringLiteral("SELECT id, name FROM players")))
            names.insert(row[0].toLongLong(), row[1].toString().toUtf8());
        QStringList out;
        QSqlError failure;
        if (!readExportDartRows(db_, dialect_, player, names, [&](const ExportDart &d) {
                out << exportText(d);
                return out.size() != stopAfter;
            }, failure))
            error = failure.text();
        return out;
    }

    static QString exportText(const ExportDart &d)
    {
        return QStringList{QString::number(d.practice), QString::fromUtf8(d.player),
                           d.date.isNull() ? QStringLiteral("null") : QString::fromUtf8(d.date), fieldText(d.game),
                           fieldText(d.set), fieldText(d.dart), fieldText(d.targetScore), fieldText(d.targetRing),
                           numberText(d.x), numberText(d.y), fieldText(d.score), fieldText(d.ring)}
            .join(QLatin1Char(' '));
    }

private:
    QSqlDatabase db_;
    const StoreDialect &dialect_;
};

} // namespace

class TestStoreRows : public QObject {
    Q_OBJECT

    QTemporaryDir dir_;
    QString path_;
    StatsStore store_{QStringLiteral("storeRows")};
    qint64 ann_ = 0;
    qint64 quoted_ = 0;
    qint64 bob_ = 0;

    void fill()
    {
        StatsStore &s = store_;
        ann_ = *s.insertPlayer(QStringLiteral("Ann"));
        quoted_ = *s.insertPlayer(QStringLiteral("O'Neil \"Ace\""));
        bob_ = *s.insertPlayer(QStringLiteral("Bob"));
        int n = 0;
        for (const qint64 player : {ann_, quoted_, bob_}) {
            for (const GameType type : {GameType::X01_501, GameType::X01_301, GameType::Cricket}) {
                for (int end = 0; end < 3; ++end) {
                    const qint64 game = *s.insertGame({player, type, SkillLevel(1 + n % 4), QStringLiteral("Computer")});
                    s.insertGameDart({game, player, 0, 1, 0.5, -0.5, 0.7, 25, 1, 25, 1});
                    for (int set = 1; set <= 3; ++set) {
                        for (int dart = 0; dart < 3; ++dart) {
                            ++n;
                            s.insertGameDart({game, player, set, dart, n * 0.37 - 20, 13 - n * 0.11, n * 0.05,
                                              1 + n % 20, n % 4, n % 7 == 0 ? 25 : 1 + (n * 3) % 20,
                                              n % 5 == 0 ? 2 : 1 + n % 3});
                        }
                    }
                    if (end < 2)
                        s.finishGame(game, {end == 0 ? QStringLiteral("W") : QStringLiteral("L"), 9, 60 + n, 41,
                                            end == 0 ? 40 : 0});
                }
            }
            for (int set = 0; set < 4; ++set) {
                const qint64 target = *s.insertStatTarget(player, set == 3 ? 25 : 20 - set, 1 + set % 3);
                for (int seq = 0; seq < 3; ++seq)
                    s.insertStatThrow({player, target, seq, 1.0 * seq - set, 2.5 + set, 1.25, 20 - set, 1 + seq % 3});
            }
            for (int drill = 0; drill < 3; ++drill) {
                const qint64 id = *s.insertDrill({player, 1 + drill, drill == 1 ? 20 : 0});
                QList<DrillDart> darts;
                for (int dart = 0; dart < 3; ++dart)
                    darts.append({id, player, 1, dart, 1.5 * dart, -2.0, 3.0, 20 - drill, 2 - dart % 2,
                                  drill == 2 ? 0 : 20 - drill, drill == 2 ? 0 : 2, 0, 0});
                s.insertDrillSet(darts);
                if (drill < 2)
                    s.finishDrill(id, {40 + drill, drill == 0, drill == 1});
            }
            for (const char *result : {"W", "L", "A", ""}) {
                const qint64 match = *s.insertMatch({player, GameType::X01_501, SkillLevel::APlayer,
                                                     QStringLiteral("Computer"), 0, 1, 3});
                if (*result)
                    s.finishMatch(match, {QString::fromLatin1(result), 2, 1, 1, 0, 1002, 45, 980, 48});
            }
        }
        // What older programs and hand edits leave: no distance or place,
        // times of other forms, a throw whose set is gone, results no
        // program writes, a real or a text where whole numbers belong.
        const OtherConnection other(path_, QStringLiteral("edits"));
        QVERIFY(other.exec({
            QStringLiteral("UPDATE gamesdarts SET dist = NULL, x = NULL WHERE rowid % 5 = 0"),
            QStringLiteral("UPDATE gamesdarts SET targetring = -3 WHERE rowid = 9"),
            QStringLiteral("UPDATE games SET creationdate = '2026-03-01' WHERE id = 2"),
            QStringLiteral("UPDATE games SET creationdate = NULL, result = 'WL', gametype = 9 WHERE id = 3"),
            QStringLiteral("UPDATE statstargets SET creationdate = 'soon' WHERE id = 2"),
            QStringLiteral("UPDATE statsthrows SET statstargets_id = 999, y = NULL WHERE id = 4"),
            QStringLiteral("UPDATE drills SET enddate = '2026-01-01 00:00:00' WHERE id = 2"),
            QStringLiteral("UPDATE matches SET result = 'X' WHERE id = 2"),
            QStringLiteral("UPDATE gamesdarts SET score = 3.75 WHERE rowid = 7"),
            QStringLiteral("UPDATE gamesdarts SET ring = ' 2x', targetscore = 1e20 WHERE rowid = 8"),
            QStringLiteral("UPDATE gamesdarts SET y = '1.5e2z' WHERE rowid = 9"),
            QStringLiteral("UPDATE statsthrows SET ring = '-07', score = -2.5 WHERE id = 5"),
        }));
    }

private slots:
    void initTestCase()
    {
        path_ = dir_.filePath(QStringLiteral("rows.db"));
        QVERIFY2(store_.open(path_), qPrintable(store_.lastError()));
        fill();
    }

    // Each reader, through Qt SQL on the store's own file, gives what the
    // store's reads through SQLite's calls give, row for row.
    void qtReadsMatchTheFile_data()
    {
        QTest::addColumn<QString>("player");
        QTest::newRow("first player") << QStringLiteral("Ann");
        QTest::newRow("a name with quotes") << QStringLiteral("O'Neil \"Ace\"");
        QTest::newRow("the last player") << QStringLiteral("Bob");
        QTest::newRow("no such player") << QString();
    }
    void qtReadsMatchTheFile()
    {
        QFETCH(QString, player);
        const qint64 id = player.isEmpty() ? 999 : store_.playerIdByName(player).value_or(0);
        Readers qt(store_.connection(), sqliteDialect());
        QString error;

        QStringList aimed;
        QVERIFY(store_.readAimedDarts(id, [&](int value, int ring, double x, double y) {
            aimed << QStringLiteral("%1 %2 %3 %4").arg(value).arg(ring).arg(x, 0, 'g', 17).arg(y, 0, 'g', 17);
        }));
        QCOMPARE(qt.aimed(id, error), aimed);
        QCOMPARE(error, QString());
        QCOMPARE(aimed.isEmpty(), player.isEmpty());

        const std::optional<StatisticsRows> fast = store_.statisticsRows(id);
        QVERIFY(fast);
        const std::optional<StatisticsRows> rows = qt.statistics(id, error);
        QVERIFY2(rows, qPrintable(error));
        QCOMPARE(rowsText(*rows), rowsText(*fast));

        QStringList exported;
        QVERIFY(store_.readExportDarts(id, [&](const ExportDart &d) {
            exported << Readers::exportText(d);
            return true;
        }));
        QCOMPARE(qt.exported(id, error), exported);
        QCOMPARE(error, QString());
        QCOMPARE(qint64(exported.size()), store_.exportDartCount(id).value_or(-1));
    }

    // Everybody's darts, and a taker that stops: a stop is no failure.
    void qtExportOfAllMatchesTheFile()
    {
        QStringList all;
        QVERIFY(store_.readExportDarts(std::nullopt, [&](const ExportDart &d) {
            all << Readers::exportText(d);
            return true;
        }));
        Readers qt(store_.connection(), sqliteDialect());
        QString error;
        QCOMPARE(qt.exported(std::nullopt, error), all);
        const int practiceDarts = int(all.filter(QRegularExpression(QStringLiteral("^1 "))).size());
        QCOMPARE(qt.exported(std::nullopt, error, practiceDarts), all.mid(0, practiceDarts));
        QCOMPARE(qt.exported(std::nullopt, error, practiceDarts + 2), all.mid(0, practiceDarts + 2));
        QCOMPARE(error, QString());
    }

    // A file another program held at start lacks the newer tables: no
    // drills, matches or drill darts, and no failure. A file without a
    // table every program has gives a failure, not a crash.
    void qtReadsOfFilesWithoutTables()
    {
        const QString copy = dir_.filePath(QStringLiteral("older.db"));
        QVERIFY(store_.backUpTo(copy));
        const OtherConnection older(copy, QStringLiteral("older"));
        QVERIFY(older.exec({QStringLiteral("DROP TABLE matchlegs"), QStringLiteral("DROP TABLE matches"),
                            QStringLiteral("DROP TABLE drilldarts"), QStringLiteral("DROP TABLE drills")}));
        Readers qt(older.db(), sqliteDialect());
        QString error;
        const std::optional<StatisticsRows> rows = qt.statistics(ann_, error);
        QVERIFY2(rows, qPrintable(error));
        QVERIFY(rows->drills.empty() && rows->matches.empty() && rows->drillDoubleDarts.empty());
        QVERIFY(!rows->games.empty() && !rows->practiceDarts.empty());
        const QStringList aimed = Readers(store_.connection(), sqliteDialect()).aimed(ann_, error);
        const qsizetype drillDarts = sqlValue(store_.connection(), QStringLiteral("SELECT count(*) FROM drilldarts"
                                                                                  " WHERE players_id = %1 AND targetscore > 0")
                                                                       .arg(ann_))
                                         .toLongLong();
        QVERIFY(drillDarts > 0);
        QCOMPARE(qt.aimed(ann_, error), aimed.mid(0, aimed.size() - drillDarts));
        QCOMPARE(error, QString());

        QVERIFY(older.exec({QStringLiteral("DROP TABLE gamesdarts")}));
        QVERIFY(!qt.statistics(ann_, error));
        QVERIFY(error.contains(QLatin1String("gamesdarts")));
        error.clear();
        QVERIFY(qt.aimed(ann_, error).size() <= 12);
        QVERIFY(!error.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestStoreRows)
#include "tst_store_rows.moc"
