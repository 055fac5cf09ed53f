// A drill as the training mode runs it: darts marked, moved and taken back
// before the set is confirmed, what each aimed at, the set ended early by a
// finish, and the darts as the store keeps them.

#include "core/training/drill_run.h"

#include "../support/board_points.h"
#include "../support/data_table.h"

#include <QTest>

using namespace tavrix;

Q_DECLARE_METATYPE(std::optional<int>)

namespace {

void mark(DrillRun &run, const QStringList &codes)
{
    for (const QString &code : codes)
        QVERIFY2(run.placeDart(at(code)) >= 0, qPrintable(code));
}

QStringList aims(const DrillRun &run)
{
    QStringList texts;
    for (const MarkedDrillDart &dart : run.marked())
        texts << dart.aim.text;
    return texts;
}

} // namespace

class TestDrillRun : public QObject {
    Q_OBJECT

private slots:
    // Around the Clock: each dart aims at the number the darts before it
    // left; moving or taking back a dart changes what the later ones aimed
    // at, and the drill itself moves only when the set is confirmed.
    void marksAreRethrownWhenTheyChange()
    {
        DrillRun run(DrillKind::AroundTheClockAny, 20);
        QCOMPARE(run.targetNumber(), 0);
        mark(run, {"S1", "M", "S2"});
        QCOMPARE(aims(run), (QStringList{"1", "2", "2"}));
        QCOMPARE(run.preview().target().text, QStringLiteral("3"));
        QCOMPARE(run.drill().target().text, QStringLiteral("1"));
        QVERIFY(run.setMarked());
        QCOMPARE(run.placeDart(at("S3")), -1);

        run.moveDart(0, at("S5"));
        QCOMPARE(aims(run), (QStringList{"1", "1", "1"}));
        QCOMPARE(run.preview().target().text, QStringLiteral("1"));
        QCOMPARE(run.undoDart(), 2);
        QVERIFY(!run.setMarked());
        QCOMPARE(run.placeDart(at("S1")), 2);
        QCOMPARE(run.undoDart(), 2);
        QCOMPARE(run.undoDart(), 1);
        QCOMPARE(run.undoDart(), 0);
        QCOMPARE(run.undoDart(), -1);

        mark(run, {"S1", "S2", "S3"});
        const std::vector<DrillDartOutcome> outcomes = run.confirmSet();
        QCOMPARE(outcomes.size(), size_t(3));
        QCOMPARE(run.dartCount(), 0);
        QCOMPARE(run.confirmedSets(), 1);
        QCOMPARE(run.drill().target().text, QStringLiteral("4"));
        QCOMPARE(run.drill().score(), 3);
    }

    // 121 finished with the second dart: the set is marked at once and a
    // third dart is refused; the finishing dart dragged off its double
    // opens the set again. Only the darts that count are written.
    void aFinishEndsTheSetEarly()
    {
        DrillRun run(DrillKind::OneTwentyOne, 20);
        mark(run, {"T20", "S11"});
        QVERIFY(!run.setMarked());
        QCOMPARE(run.preview().target().remaining, 50);
        QVERIFY(run.placeDart(at("B")) == 2);
        QVERIFY(run.setMarked());
        QCOMPARE(run.marked()[2].outcome.event, DrillEvent::Finished);

        run.undoDart();
        run.moveDart(1, at("T17"));
        run.placeDart(at("D5"));
        // 121 - 60 - 51 = 10 finished on double 5 with the third dart.
        QCOMPARE(run.marked()[2].outcome.event, DrillEvent::Finished);
        run.moveDart(1, at("S17"));
        // Now 44 left after two darts, so double 5 leaves 34.
        QCOMPARE(run.marked()[2].outcome.event, DrillEvent::Hit);
        QCOMPARE(run.countingDarts(), 3);

        DrillRun early(DrillKind::OneTwentyOne, 20);
        mark(early, {"T20", "T20"}); // 1 left: a bust
        QCOMPARE(early.marked()[1].outcome.event, DrillEvent::Bust);
        QVERIFY(early.setMarked());
        QCOMPARE(early.placeDart(at("S1")), -1);
        QCOMPARE(early.setRows(7, 3).size(), 2);
    }

    // The rows of a set: its sequence, each dart's aim and the distance
    // from it, and the score in the games' convention (0 and 0 off the
    // board or on a wire, the bull 25 with 2).
    void setRowsKeepTheAimAndTheScore()
    {
        DrillRun run(DrillKind::NinetyNineDarts, 25);
        QCOMPARE(run.targetNumber(), 25);
        mark(run, {"B", "OB", "M"});
        run.confirmSet();
        mark(run, {"WD", "S20", "B"});
        const QList<DrillDart> rows = run.setRows(7, 3);
        QCOMPARE(rows.size(), 3);
        const BoardPoint aim = run.drill().target().aim;
        const QList<QList<double>> got = [&] {
            QList<QList<double>> list;
            for (const DrillDart &row : rows)
                list.append({double(row.drillId), double(row.playerId), double(row.setSeq), double(row.dartSeq),
                             double(row.score), double(row.ring), double(row.targetScore), double(row.targetRing),
                             row.aimX, row.aimY});
            return list;
        }();
        const QList<QList<double>> expected{{7, 3, 2, 0, 0, 0, 25, 1, aim.x, aim.y},
                                            {7, 3, 2, 1, 20, 1, 25, 1, aim.x, aim.y},
                                            {7, 3, 2, 2, 25, 2, 25, 1, aim.x, aim.y}};
        QCOMPARE(got, expected);
        const BoardPoint s20 = at("S20");
        QCOMPARE(rows[1].x, s20.x);
        QCOMPARE(rows[1].dist, std::hypot(s20.x - aim.x, s20.y - aim.y));
    }

    void beatingTheBest_data()
    {
        addTable<int, std::optional<int>, bool, bool>(
            {"score", "best", "lowerIsBetter", "beats"},
            {{"first", 5, std::nullopt, false, true}, {"higher", 61, 60, false, true},
             {"equal is no record", 60, 60, false, false}, {"fewer darts", 30, 31, true, true},
             {"more darts", 32, 31, true, false}});
    }
    void beatingTheBest()
    {
        QFETCH(int, score);
        QFETCH(std::optional<int>, best);
        QFETCH(bool, lowerIsBetter);
        QTEST(beatsBest(score, best, lowerIsBetter), "beats");
    }

    void codesOfDarts()
    {
        QStringList codes;
        for (const char *code : {"T20", "D16", "S5", "B", "OB", "M", "WD"})
            codes << dartCode(scoreOf(QLatin1String(code)));
        QCOMPARE(codes, (QStringList{"T20", "D16", "5", "Bull", "25", "Miss", "Miss"}));
    }
};

QTEST_GUILESS_MAIN(TestDrillRun)
#include "tst_drill_run.moc"
