// Checks the bundled checkout chart against the board itself: which darts
// exist is found by scoring points all over the board, and which scores can
// be finished in three darts is worked out from those darts, not copied from
// any table.

#include "board/board_geometry.h"
#include "games/checkout_chart.h"
#include "stats/outchart_data.h"

#include <QSet>
#include <QTest>

#include <array>
#include <cmath>

using namespace tavrix;

namespace tavrix {
// Found by argument-dependent lookup when DartScore goes into a QSet.
size_t qHash(const DartScore &dart, size_t seed = 0)
{
    return ::qHash(dart.multiplier * 100 + dart.number, seed);
}
} // namespace tavrix

namespace {

// Every dart score a dart can make, found by scoring a fine polar grid.
QList<DartScore> dartsOnTheBoard()
{
    QSet<DartScore> found;
    for (double radius = 0; radius <= 202; radius += 0.5) {
        for (double angle = 0; angle < 360; angle += 0.25) {
            const DartScore dart = scoreFromXY(radius * std::cos(angle * radPerDeg),
                                               radius * std::sin(angle * radPerDeg));
            if (dart.points() > 0)
                found.insert(dart);
        }
    }
    return found.values();
}

constexpr int Unreachable = 99;

// Fewest darts that score exactly `points`, the last one a double when
// `doubleOut`; Unreachable beyond three darts.
std::array<std::array<int, 181>, 2> fewestDarts(const QList<DartScore> &darts)
{
    std::array<int, 181> anyDart;
    anyDart.fill(Unreachable);
    anyDart[0] = 0;
    for (int round = 0; round < 3; ++round) {
        std::array<int, 181> next = anyDart;
        for (int total = 0; total <= 180; ++total) {
            if (anyDart[total] != round)
                continue;
            for (const DartScore &dart : darts)
                if (total + dart.points() <= 180)
                    next[total + dart.points()] = std::min(next[total + dart.points()], round + 1);
        }
        anyDart = next;
    }
    std::array<int, 181> endsOnDouble;
    endsOnDouble.fill(Unreachable);
    for (int before = 0; before <= 180; ++before) {
        if (anyDart[before] > 2)
            continue;
        for (const DartScore &dart : darts)
            if (dart.isDouble() && before + dart.points() <= 180)
                endsOnDouble[before + dart.points()] =
                    std::min(endsOnDouble[before + dart.points()], anyDart[before] + 1);
    }
    return {anyDart, endsOnDouble};
}

int routePoints(const DartRoute &route)
{
    int sum = 0;
    for (const DartScore &dart : route)
        sum += dart.points();
    return sum;
}

} // namespace

class TestCheckoutData : public QObject {
    Q_OBJECT

    QList<ChartRow> rows_;
    QList<DartScore> darts_;

private slots:
    void initTestCase()
    {
        rows_ = bundledChartRows();
        darts_ = dartsOnTheBoard();
        // 20 numbers in three rings plus the outer bull and the bull.
        QCOMPARE(darts_.size(), 62);
    }

    // One row per score from 1 to 180, every field readable.
    void everyScoreHasOneReadableRow()
    {
        QCOMPARE(rows_.size(), 180);
        for (int i = 0; i < rows_.size(); ++i) {
            QCOMPARE(rows_[i].points, i + 1);
            QVERIFY2(parseDartCodes(rows_[i].singleOut), qPrintable(rows_[i].singleOut));
            QVERIFY2(parseDartCodes(rows_[i].doubleOut), qPrintable(rows_[i].doubleOut));
        }
    }

    // Each route adds up exactly, uses darts that exist, takes no more darts
    // than needed and, for double out, ends on a double; a field is empty
    // exactly when no three darts can do it.
    void routesAreExactAndShortest()
    {
        const auto fewest = fewestDarts(darts_);
        const QSet<DartScore> onBoard(darts_.cbegin(), darts_.cend());
        for (const ChartRow &row : std::as_const(rows_)) {
            for (int doubleOut = 0; doubleOut < 2; ++doubleOut) {
                const QString field = doubleOut ? row.doubleOut : row.singleOut;
                const DartRoute route = *parseDartCodes(field);
                const QByteArray where = QByteArray::number(row.points) + (doubleOut ? " double out: " : " single out: ")
                                         + field.toUtf8();
                const int needed = fewest[doubleOut][row.points];
                if (needed == Unreachable) {
                    QVERIFY2(route.isEmpty(), where.constData());
                    continue;
                }
                QVERIFY2(route.size() == needed, where.constData());
                QVERIFY2(routePoints(route) == row.points, where.constData());
                for (const DartScore &dart : route)
                    QVERIFY2(onBoard.contains(dart), where.constData());
                if (doubleOut)
                    QVERIFY2(route.last().isDouble(), where.constData());
            }
        }
    }

    // The well-known impossible double-out finishes, and the single-out ones.
    void impossibleFinishesAreEmpty()
    {
        QList<int> noDoubleOut;
        QList<int> noSingleOut;
        for (const ChartRow &row : std::as_const(rows_)) {
            if (row.points >= 2 && row.points <= 170 && row.doubleOut.isEmpty())
                noDoubleOut.append(row.points);
            if (row.singleOut.isEmpty())
                noSingleOut.append(row.points);
        }
        QCOMPARE(noDoubleOut, QList<int>({159, 162, 163, 165, 166, 168, 169}));
        QCOMPARE(noSingleOut, QList<int>({163, 166, 169, 172, 173, 175, 176, 178, 179}));
    }

    // Where a player has a choice, the chart takes the finishes good players
    // throw: treble 20 or 19 to set up, D20, D16, D8 or the bull to finish.
    void routesPreferTheUsualFinishes()
    {
        QCOMPARE(rows_[169].doubleOut, QStringLiteral("T20,T20,D25"));
        QCOMPARE(rows_[179].singleOut, QStringLiteral("T20,T20,T20"));

        // A two-dart finish that could set up with a single, a treble 20 or a
        // treble 19 and leave D20, D16 or D8 does so.
        const QList<int> favourites{20, 16, 8};
        auto easySetUp = [](int points) {
            return (points >= 1 && points <= 20) || points == 60 || points == 57;
        };
        for (const ChartRow &row : std::as_const(rows_)) {
            const DartRoute route = *parseDartCodes(row.doubleOut);
            if (route.size() != 2)
                continue;
            const bool favouritePossible = std::any_of(
                favourites.cbegin(), favourites.cend(),
                [&](int number) { return easySetUp(row.points - 2 * number); });
            if (favouritePossible)
                QVERIFY2(favourites.contains(route.last().number), qPrintable(row.doubleOut));
        }
        // Three-dart finishes open with a treble 20 or 19 whenever they can.
        for (const ChartRow &row : std::as_const(rows_)) {
            const DartRoute route = *parseDartCodes(row.doubleOut);
            if (route.size() == 3 && row.points >= 101)
                QVERIFY2(route.first() == DartScore(3, 20) || route.first() == DartScore(3, 19),
                         qPrintable(row.doubleOut));
        }
    }
};

QTEST_APPLESS_MAIN(TestCheckoutData)
#include "tst_checkout_data.moc"
