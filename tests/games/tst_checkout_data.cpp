// Checks the bundled checkout chart against the board itself: which darts
// exist is found by scoring points all over the board, and which scores can
// be finished in three darts is worked out from those darts, not copied from
// any table.

#include "core/board/board_geometry.h"
#include "core/games/checkout_chart.h"
#include "core/stats/outchart_data.h"

#include <QTest>

#include <array>
#include <cmath>

using namespace tavrix;

namespace {

// Every dart score a dart can make, found by scoring a fine polar grid.
QList<DartScore> dartsOnTheBoard()
{
    QList<DartScore> found;
    for (double radius = 0; radius <= 202; radius += 0.5) {
        for (double angle = 0; angle < 360; angle += 0.25) {
            const DartScore dart = scoreFromXY(radius * std::cos(angle * radPerDeg),
                                               radius * std::sin(angle * radPerDeg));
            if (dart.points() > 0 && !found.contains(dart))
                found.append(dart);
        }
    }
    return found;
}

constexpr int Unreachable = 99;

// Fewest darts that score exactly `points`, the last one a double when
// `doubleOut`; Unreachable beyond three darts.
std::array<std::array<int, 181>, 2> fewestDarts(const QList<DartScore> &darts)
{
    std::array<std::array<int, 181>, 2> fewest;
    for (auto &counts : fewest)
        counts.fill(Unreachable);
    fewest[0][0] = 0;
    for (int round = 0; round < 3; ++round) {
        const auto before = fewest[0];
        for (int total = 0; total <= 180; ++total) {
            if (before[total] != round)
                continue;
            for (const DartScore &dart : darts) {
                const int sum = total + dart.points();
                if (sum > 180)
                    continue;
                fewest[0][sum] = std::min(fewest[0][sum], round + 1);
                if (dart.isDouble())
                    fewest[1][sum] = std::min(fewest[1][sum], round + 1);
            }
        }
    }
    return fewest;
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
    }

    // One row per score from 1 to 180. Each route is readable, adds up
    // exactly, uses darts that exist, takes no more darts than needed and,
    // for double out, ends on a double; a field is empty exactly when no
    // three darts can do it (for double out from 2 to 170: 159, 162, 163,
    // 165, 166, 168 and 169). Every wrong field is named, not just the first.
    void routesAreExactAndShortest()
    {
        const auto fewest = fewestDarts(darts_);
        QCOMPARE(rows_.size(), 180);
        const auto problem = [&](int points, bool doubleOut, const QString &field) -> QString {
            const std::optional<DartRoute> route = parseDartCodes(field);
            if (!route)
                return QStringLiteral("unreadable");
            const int needed = fewest[doubleOut][points];
            if (route->size() != (needed == Unreachable ? 0 : needed))
                return QStringLiteral("%1 darts where %2 do").arg(route->size()).arg(needed == Unreachable ? 0 : needed);
            int sum = 0;
            for (const DartScore &dart : *route) {
                if (!darts_.contains(dart))
                    return QStringLiteral("a dart the board lacks");
                sum += dart.points();
            }
            if (!route->isEmpty() && sum != points)
                return QStringLiteral("adds up to %1").arg(sum);
            if (doubleOut && !route->isEmpty() && !route->last().isDouble())
                return QStringLiteral("ends on no double");
            return {};
        };
        QStringList failures;
        QList<int> noDoubleOut;
        for (int i = 0; i < rows_.size(); ++i) {
            const ChartRow &row = rows_[i];
            if (row.points != i + 1)
                failures << QStringLiteral("row %1 holds %2").arg(i + 1).arg(row.points);
            for (const bool doubleOut : {false, true}) {
                const QString field = doubleOut ? row.doubleOut : row.singleOut;
                const QString wrong = problem(i + 1, doubleOut, field);
                if (!wrong.isEmpty())
                    failures << QStringLiteral("%1 %2 out \"%3\": %4")
                                    .arg(i + 1).arg(doubleOut ? "double" : "single", field, wrong);
            }
            if (row.points >= 2 && row.points <= 170 && row.doubleOut.isEmpty())
                noDoubleOut.append(row.points);
        }
        QVERIFY2(failures.isEmpty(), qPrintable(failures.join(QLatin1Char('\n'))));
        QCOMPARE(noDoubleOut, QList<int>({159, 162, 163, 165, 166, 168, 169}));
    }
};

QTEST_APPLESS_MAIN(TestCheckoutData)
#include "tst_checkout_data.moc"
