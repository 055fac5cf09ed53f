// The statistics window's figures from hand-built rows: each case is a few
// games whose figures are worked out by hand in the comment beside it.

#include "core/statistics/player_statistics.h"

#include <QDateTime>
#include <QTest>

using namespace tavrix;

Q_DECLARE_METATYPE(tavrix::StatisticsRows)
Q_DECLARE_METATYPE(tavrix::StatsPeriod)

namespace {

// A dart by its area: "T20", "D12", "S5", "B" the bull, "OB" the outer bull,
// "W" a wire.
StatsGameDart dart(const QString &code)
{
    StatsGameDart d;
    d.targetScore = 20;
    d.targetRing = 3;
    if (code == QLatin1String("B")) {
        d.score = 25;
        d.ring = 2;
    } else if (code == QLatin1String("OB")) {
        d.score = 25;
        d.ring = 1;
    } else if (code != QLatin1String("W")) {
        d.ring = QStringLiteral("SDT").indexOf(code[0]) + 1;
        d.score = code.mid(1).toInt();
    }
    return d;
}

const qint64 day = 86400;
const qint64 march31Noon = *localSeconds("2026-03-31 12:00:00");

// A finished game with its row; `sets` the kept darts, sets split by "|"
// ("" when none were kept). Sets are numbered 2, 4, 6... as when the other
// player marks at this board too, and a cork dart comes first.
void addGame(StatisticsRows &rows, GameType type, GameEnd end, int throws, int points, int outSet,
             const QString &sets, std::optional<qint64> playedAt = march31Noon)
{
    const qint64 id = qint64(rows.games.size()) + 1;
    rows.games.push_back({id, playedAt, type, end, throws, points, outSet});
    if (sets.isEmpty())
        return;
    StatsGameDart cork = dart(QStringLiteral("OB"));
    cork.gameId = id;
    cork.dartSeq = 1;
    cork.targetScore = 25;
    cork.targetRing = 1;
    rows.gameDarts.push_back(cork);
    const QStringList setTexts = sets.split(QLatin1Char('|'));
    for (int s = 0; s < setTexts.size(); ++s) {
        const QStringList codes = setTexts[s].split(QLatin1Char(' '), Qt::SkipEmptyParts);
        for (int d = 0; d < codes.size(); ++d) {
            StatsGameDart row = dart(codes[d]);
            row.gameId = id;
            row.setSeq = 2 * (s + 1);
            row.dartSeq = d;
            rows.gameDarts.push_back(row);
        }
    }
}

} // namespace

class TestPlayerStatistics : public QObject {
    Q_OBJECT

private slots:
    // Stored times turn into seconds that compare as the texts do; anything
    // else is no time.
    void storedTimesAreRead()
    {
        const auto utc = [](const char *text) {
            return QDateTime::fromString(QString::fromLatin1(text), Qt::ISODate).toSecsSinceEpoch();
        };
        QCOMPARE(localSeconds("2026-11-22 21:05:09"), utc("2026-11-22T21:05:09Z"));
        QCOMPARE(localSeconds("1969-12-31 23:59:59"), qint64(-1));
        QCOMPARE(localSeconds("2024-02-29"), utc("2024-02-29T00:00:00Z"));
        QCOMPARE(localDay(-1), qint64(-1));
        for (const char *bad : {"", "2026-11-22 21:05", "2026-13-01 00:00:00", "2026-11-22 24:00:00", "22.11.2026",
                                "2026-11-2x 21:05:09"})
            QVERIFY2(!localSeconds(bad), bad);
    }

    void x01Figures_data()
    {
        QTest::addColumn<StatisticsRows>("rows");
        QTest::addColumn<QStringList>("expected"); // games won average first9 checkout 100+ 140+ 180 bestleg highout

        StatisticsRows bust;
        // 301: 180 (121 left); T20 T20 leaves 1, a bust, its third dart not
        // dealt with; 40 (81 left). Lost: 220 points in 8 darts.
        addGame(bust, GameType::X01_301, GameEnd::Lost, 8, 220, 0, QStringLiteral("T20 T20 T20|T20 T20|S20 S1 S19"));
        QTest::newRow("a bust set counts its darts and no points")
            << bust << QStringList{"1", "0", "82.50", "82.50", "N/A", "0", "0", "1", "N/A", "N/A"};

        StatisticsRows firstDart;
        // 301: 180 (121), 119 (2, after 61 and 4: one dart at a finish), D1
        // with the first dart of the set. Won in 7 darts, two at a finish.
        addGame(firstDart, GameType::X01_301, GameEnd::Won, 7, 301, 2, QStringLiteral("T20 T20 T20|T20 T19 S2|D1"));
        QTest::newRow("a finish on the first dart of a set")
            << firstDart << QStringList{"1", "1", "129.00", "129.00", "50.0%", "1", "0", "1", "7", "2"};

        StatisticsRows unkept;
        addGame(unkept, GameType::X01_501, GameEnd::Won, 15, 501, 81, QString());
        QTest::newRow("a game without kept darts counts from its row")
            << unkept << QStringList{"1", "1", "100.20", "N/A", "N/A", "N/A", "N/A", "N/A", "15", "81"};

        StatisticsRows both = firstDart;
        addGame(both, GameType::X01_501, GameEnd::Won, 15, 501, 81, QString());
        // (301 + 501) x 3 / (7 + 15) = 109.36; the rest from the kept game.
        QTest::newRow("kept and unkept games together")
            << both << QStringList{"2", "2", "109.36", "129.00", "50.0%", "1", "0", "1", "7", "81"};

        StatisticsRows doubleIn;
        // Double in: nothing counts before D10, then 20 + 20 = 40 in 6 darts.
        addGame(doubleIn, GameType::X01_301, GameEnd::Lost, 6, 40, 0, QStringLiteral("S20 S20 S20|S20 D10 S20"));
        QTest::newRow("darts before doubling in score nothing")
            << doubleIn << QStringList{"1", "0", "20.00", "20.00", "N/A", "0", "0", "0", "N/A", "N/A"};

        StatisticsRows singleOut;
        // 121 finished with S4 as the last set of a won game: single out (a ton).
        addGame(singleOut, GameType::X01_301, GameEnd::Won, 6, 301, 121, QStringLiteral("T20 T20 T20|T20 T19 S4"));
        QTest::newRow("a single out finish")
            << singleOut << QStringList{"1", "1", "150.50", "150.50", "100.0%", "1", "0", "1", "6", "121"};

        StatisticsRows zeroBust;
        // The same 121 to 0 without a double, and the game goes on: a bust
        // under double out; then 3 (118 left). 183 points in 9 darts.
        addGame(zeroBust, GameType::X01_301, GameEnd::Lost, 9, 183, 0,
                QStringLiteral("T20 T20 T20|T20 T19 S4|S1 S1 S1"));
        QTest::newRow("reaching 0 without a double busts")
            << zeroBust << QStringList{"1", "0", "61.00", "61.00", "0.0%", "0", "0", "1", "N/A", "N/A"};

        StatisticsRows mismatch;
        // Three kept darts for a row of nine: they are not that game's darts.
        addGame(mismatch, GameType::X01_501, GameEnd::Lost, 9, 180, 0, QStringLiteral("T20 T20 T20"));
        QTest::newRow("kept darts that do not add up to the row")
            << mismatch << QStringList{"1", "0", "60.00", "N/A", "N/A", "N/A", "N/A", "N/A", "N/A", "N/A"};

        StatisticsRows unfinished;
        addGame(unfinished, GameType::X01_501, GameEnd::Unfinished, 0, 0, 0, QStringLiteral("T20 T20 T20"));
        addGame(unfinished, GameType::Cricket, GameEnd::Won, 3, 0, 0, QStringLiteral("T20 T20 T20"));
        QTest::newRow("unfinished games and Cricket are no 301/501 games")
            << unfinished << QStringList{"0", "0", "N/A", "N/A", "N/A", "N/A", "N/A", "N/A", "N/A", "N/A"};
    }
    void x01Figures()
    {
        QFETCH(StatisticsRows, rows);
        QFETCH(QStringList, expected);
        const StatisticsTexts texts = statisticsTexts(playerStatistics(rows, std::nullopt));
        const QStringList shown{texts.games,  texts.won,     texts.average, texts.firstNine, texts.checkout,
                                texts.tons,   texts.tons140, texts.tons180, texts.bestLeg,   texts.highOut};
        QCOMPARE(shown, expected);
    }

    // One line says how many games had no kept darts, per kind of game.
    void theNoteNamesGamesWithoutDarts()
    {
        StatisticsRows rows;
        addGame(rows, GameType::X01_301, GameEnd::Won, 7, 301, 2, QStringLiteral("T20 T20 T20|T20 T19 S2|D1"));
        QCOMPARE(statisticsTexts(playerStatistics(rows, std::nullopt)).note, QString());
        addGame(rows, GameType::X01_501, GameEnd::Lost, 30, 400, 0, QString());
        QCOMPARE(statisticsTexts(playerStatistics(rows, std::nullopt)).note,
                 QStringLiteral("No darts kept in 1 of 2 301/501 games: First 9, checkout rate and 100+/140+/180 "
                                "count only the other games."));
        // Cricket: T20 S19 OB | D15 S5 W = 3 + 1 + 1 + 2 marks in 6 darts.
        addGame(rows, GameType::Cricket, GameEnd::Won, 6, 0, 0, QStringLiteral("T20 S19 OB|D15 S5 W"));
        addGame(rows, GameType::Cricket, GameEnd::Lost, 24, 0, 0, QString());
        const StatisticsTexts texts = statisticsTexts(playerStatistics(rows, std::nullopt));
        QCOMPARE(texts.marksPerRound, QStringLiteral("3.50"));
        QCOMPARE(texts.note, QStringLiteral("No darts kept in 1 of 2 301/501 games and 1 of 2 Cricket games: First 9, "
                                            "checkout rate and 100+/140+/180 and marks per round count only the "
                                            "other games."));
    }

    // A period starts at its first second: a game exactly then counts, one a
    // second earlier does not; a game without a time counts in all time only.
    void periodEdges_data()
    {
        QTest::addColumn<StatsPeriod>("period");
        QTest::addColumn<int>("games");
        QTest::addColumn<int>("practiceDarts");
        QTest::newRow("all time") << StatsPeriod::AllTime << 4 << 3;
        QTest::newRow("365 days") << StatsPeriod::Last365Days << 3 << 2;
        QTest::newRow("30 days") << StatsPeriod::Last30Days << 2 << 1;
        QTest::newRow("7 days") << StatsPeriod::Last7Days << 1 << 0;
    }
    void periodEdges()
    {
        QFETCH(StatsPeriod, period);
        QFETCH(int, games);
        QFETCH(int, practiceDarts);
        const qint64 now = march31Noon;
        StatisticsRows rows;
        for (const std::optional<qint64> at :
             {std::optional(now - 7 * day), std::optional(now - 7 * day - 1), std::optional(now - 365 * day),
              std::optional<qint64>()})
            addGame(rows, GameType::X01_501, GameEnd::Lost, 3, 60, 0, QString(), at);
        for (const qint64 at : {now - 30 * day, now - 30 * day - 1, now - 365 * day - 1}) {
            const qint64 id = qint64(rows.practiceSets.size()) + 1;
            rows.practiceSets.push_back({id, at, 20, 1});
            rows.practiceDarts.push_back({id, 20, 1});
        }
        const PlayerStatistics statistics = playerStatistics(rows, periodStart(period, now));
        QCOMPARE(statistics.x01.games, games);
        qint64 darts = 0;
        for (const WeekRate &week : statistics.practiceWeeks)
            darts += week.darts;
        QCOMPARE(darts, qint64(practiceDarts));
    }

    // Each game's average by time, and the mean of it and the nine before.
    void averagesOverTime()
    {
        StatisticsRows rows;
        // Game k (1..12) averages 10 k; stored in reverse order of time.
        for (int k = 12; k >= 1; --k)
            addGame(rows, GameType::X01_501, GameEnd::Lost, 3, 10 * k, 0, QString(), march31Noon + k * 60);
        addGame(rows, GameType::X01_501, GameEnd::Lost, 3, 500, 0, QString(), std::nullopt);
        const std::vector<GameAveragePoint> points = playerStatistics(rows, std::nullopt).averages;
        QCOMPARE(points.size(), std::size_t(12));
        QCOMPARE(points[0].playedAt, march31Noon + 60);
        QCOMPARE(points[0].average, 10.0);
        QCOMPARE(points[0].movingAverage, 10.0);
        QCOMPARE(points[9].movingAverage, 55.0);  // 10..100
        QCOMPARE(points[11].movingAverage, 75.0); // 30..120
    }

    // Darts aimed at a double (or the bull) in games and practice, and those
    // in it; practice darts per week from Monday.
    void doublesAndPracticeWeeks()
    {
        StatisticsRows rows;
        addGame(rows, GameType::X01_501, GameEnd::Unfinished, 0, 0, 0, QStringLiteral("D16 S16 D8"));
        for (StatsGameDart &d : rows.gameDarts) {
            if (d.setSeq > 0) {
                d.targetScore = 16;
                d.targetRing = 2;
            }
        }
        // The cork is aimed at the bull: an outer bull, no hit; one more in it.
        StatsGameDart bull = dart(QStringLiteral("B"));
        bull.gameId = 1;
        bull.setSeq = 4;
        bull.targetScore = 25;
        bull.targetRing = 1;
        rows.gameDarts.push_back(bull);
        // Monday 2026-03-23 and Sunday 2026-03-29 are one week, Monday
        // 2026-03-30 the next.
        rows.practiceSets.push_back({1, localSeconds("2026-03-23 00:00:00"), 16, 2});
        rows.practiceSets.push_back({2, localSeconds("2026-03-29 23:59:59"), 25, 1});
        rows.practiceSets.push_back({3, localSeconds("2026-03-30 08:00:00"), 20, 3});
        rows.practiceDarts = {{1, 16, 2}, {1, 16, 1}, {2, 50, 1}, {2, 25, 1}, {3, 20, 3}, {3, 1, 1}, {99, 16, 2}};
        const PlayerStatistics statistics = playerStatistics(rows, std::nullopt);
        QCOMPARE(statistics.doubles[15].aimed, qint64(5));
        QCOMPARE(statistics.doubles[15].hit, qint64(2));
        QCOMPARE(statistics.doubles[20].aimed, qint64(4));
        QCOMPARE(statistics.doubles[20].hit, qint64(2));
        QCOMPARE(statistics.doubles[19].aimed, qint64(0));
        QCOMPARE(statistics.practiceWeeks.size(), std::size_t(2));
        QCOMPARE(statistics.practiceWeeks[0].weekStart, *localSeconds("2026-03-23"));
        // The practice bull counts the outer bull (practice_rules.h).
        QCOMPARE(statistics.practiceWeeks[0].darts, qint64(4));
        QCOMPARE(statistics.practiceWeeks[0].hits, qint64(2));
        QCOMPARE(statistics.practiceWeeks[1].weekStart, *localSeconds("2026-03-30"));
        QCOMPARE(statistics.practiceWeeks[1].hits, qint64(1));
    }

    // A drill is in the period by its end; each kind (and each target of 99
    // darts) counts its drills ended, finished or quit, and the scores of
    // the completed ones: the best (the lowest where lower is better) and
    // the mean of the last ten, oldest first whatever order they come in.
    void drillHistory_data()
    {
        QTest::addColumn<StatsPeriod>("period");
        QTest::addColumn<QStringList>("expected"); // kind/target count best average scores
        QTest::newRow("all time") << StatsPeriod::AllTime
                                  << QStringList{"1/0 3 30 43.3 30,40,60",
                                                 "4/0 14 210 165.0 100,110,120,130,140,150,160,170,180,190,200,210",
                                                 "10/19 1 - - ", "10/20 1 300 300.0 300"};
        QTest::newRow("7 days") << StatsPeriod::Last7Days
                                << QStringList{"1/0 1 60 60.0 60",
                                               "4/0 14 210 165.0 100,110,120,130,140,150,160,170,180,190,200,210",
                                               "10/19 1 - - "};
    }
    void drillHistory()
    {
        QFETCH(StatsPeriod, period);
        QFETCH(QStringList, expected);
        const qint64 now = march31Noon;
        StatisticsRows rows;
        const auto drill = [&](int kind, int target, std::optional<qint64> endedAt, int score, bool completed,
                               bool quit = false) {
            rows.drills.push_back({qint64(rows.drills.size()) + 1, kind, target, endedAt, endedAt, score, completed,
                                   quit});
        };
        // Bob's 27: twelve scores 100 to 210, newest first; one quit, one
        // below zero. The last ten are 120 to 210: 165 on average.
        for (int k = 1; k <= 12; ++k)
            drill(4, 0, now - k * 3600, 100 + 10 * (12 - k), true);
        drill(4, 0, now - 5400, 999, false, true);
        drill(4, 0, now - 1800, -5, false);
        // Around the Clock at the edge of 7 days, and once with no time.
        drill(1, 0, now - 7 * day, 60, true);
        drill(1, 0, now - 7 * day - 1, 40, true);
        drill(1, 0, std::nullopt, 30, true);
        drill(10, 20, now - 8 * day, 300, true);
        drill(10, 19, now - day, 500, false, true);

        QStringList shown;
        for (const DrillHistory &history : playerStatistics(rows, periodStart(period, now)).drills) {
            QStringList scores;
            for (const DrillScorePoint &point : history.scores)
                scores << QString::number(point.score);
            shown << QStringLiteral("%1/%2 %3 %4 %5 %6")
                         .arg(history.kind)
                         .arg(history.targetNumber)
                         .arg(history.count)
                         .arg(history.best ? QString::number(*history.best) : QStringLiteral("-"),
                              history.lastTenAverage ? QString::number(*history.lastTenAverage, 'f', 1)
                                                     : QStringLiteral("-"),
                              scores.join(QLatin1Char(',')));
        }
        QCOMPARE(shown, expected);
        const PlayerStatistics all = playerStatistics(rows, std::nullopt);
        const std::vector<DrillScorePoint> &bobs = all.drills[1].scores;
        QCOMPARE(bobs.front().endedAt, now - 12 * 3600);
        QCOMPARE(bobs.back().endedAt, now - 3600);
    }

    // Drill darts aimed at a double count in its rate by when they were
    // thrown, beside the game darts; the bull's is a dart in the inner bull.
    void drillDartsCountInTheDoublesRate()
    {
        const qint64 now = march31Noon;
        StatisticsRows rows;
        addGame(rows, GameType::X01_501, GameEnd::Unfinished, 0, 0, 0, QStringLiteral("D16"), now - day);
        rows.gameDarts.back().targetScore = 16;
        rows.gameDarts.back().targetRing = 2;
        rows.drillDoubleDarts = {{now - day, 16, 2, 16, 2},      {now - day, 8, 2, 16, 2},
                                 {now - 8 * day, 16, 2, 16, 2},  {std::nullopt, 16, 2, 16, 2},
                                 {now, 25, 2, 25, 2},            {now, 25, 1, 25, 2}};
        const PlayerStatistics week = playerStatistics(rows, periodStart(StatsPeriod::Last7Days, now));
        QCOMPARE(week.doubles[15].aimed, qint64(3));
        QCOMPARE(week.doubles[15].hit, qint64(2));
        // The game's cork is aimed at the bull too.
        QCOMPARE(week.doubles[20].aimed, qint64(3));
        QCOMPARE(week.doubles[20].hit, qint64(1));
        const PlayerStatistics all = playerStatistics(rows, std::nullopt);
        QCOMPARE(all.doubles[15].aimed, qint64(5));
        QCOMPARE(all.doubles[15].hit, qint64(4));
    }

    // A match counts in the period by its end: played when won or lost,
    // abandoned otherwise, a result of no meaning nowhere. The averages
    // (the player's and the opponents') are over the 301/501 matches
    // played; Cricket's marks and abandoned matches stay out of them.
    void matchFigures_data()
    {
        QTest::addColumn<StatsPeriod>("period");
        QTest::addColumn<QStringList>("expected"); // played won/lost abandoned average opponents
        // (1002 + 602 + 501) x 3 / (45 + 30 + 20) = 66.47; (900 + 700 + 400) x 3 / (42 + 27 + 30) = 60.61.
        QTest::newRow("all time") << StatsPeriod::AllTime << QStringList{"4", "3 / 1", "1", "66.47", "60.61"};
        // 1002 x 3 / 45 = 66.80; 900 x 3 / 42 = 64.29.
        QTest::newRow("7 days") << StatsPeriod::Last7Days << QStringList{"2", "2 / 0", "1", "66.80", "64.29"};
    }
    void matchFigures()
    {
        QFETCH(StatsPeriod, period);
        QFETCH(QStringList, expected);
        const qint64 now = march31Noon;
        StatisticsRows rows;
        const auto match = [&](GameType type, std::optional<qint64> endedAt, MatchResult result,
                               std::array<qint64, 4> figures) {
            rows.matches.push_back({qint64(rows.matches.size()) + 1, type, endedAt, result, figures[0], figures[1],
                                    figures[2], figures[3]});
        };
        match(GameType::X01_501, now - day, MatchResult::Won, {1002, 45, 900, 42});
        match(GameType::X01_301, now - 8 * day, MatchResult::Lost, {602, 30, 700, 27});
        match(GameType::Cricket, now - 2 * day, MatchResult::Won, {40, 30, 20, 27});
        match(GameType::X01_501, now - 3600, MatchResult::Abandoned, {300, 12, 280, 12});
        match(GameType::X01_501, now, MatchResult::Other, {501, 9, 0, 9});
        match(GameType::X01_501, std::nullopt, MatchResult::Won, {501, 20, 400, 30});

        const StatisticsTexts texts = statisticsTexts(playerStatistics(rows, periodStart(period, now)));
        QCOMPARE((QStringList{texts.matchesPlayed, texts.matchesWonLost, texts.matchesAbandoned, texts.matchAverage,
                              texts.matchOpponentAverage}),
                 expected);
        QVERIFY(playerStatistics(rows, periodStart(period, now)).matches.anyEver);
        // Matches of other periods only: the block stays, with nothing in it.
        const PlayerStatistics later = playerStatistics(rows, now + 2 * day);
        QVERIFY(later.matches.anyEver);
        QCOMPARE(statisticsTexts(later).matchAverage, QStringLiteral("N/A"));
        // A match with a result of no meaning alone shows no block.
        rows.matches = {rows.matches[4]};
        QVERIFY(!playerStatistics(rows, std::nullopt).matches.anyEver);
    }
};

QTEST_GUILESS_MAIN(TestPlayerStatistics)
#include "tst_player_statistics.moc"
