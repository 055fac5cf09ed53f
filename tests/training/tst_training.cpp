// Training mode through the whole program: a whole drill of each kind
// played at the board and read back from the store, the personal best, the
// quit and a mode change during a drill, a statistics file that cannot be
// written, the Mode menu, and the frame on the smallest screen.

#include "../support/data_table.h"
#include "../support/program_test.h"
#include "core/training/drill_run.h"
#include "ui/board/dart_marker.h"
#include "ui/statistics/statistics_charts.h"
#include "ui/statistics/statistics_dialog.h"
#include "ui/statistics/statistics_service.h"
#include "ui/training/training_controller.h"

#include <QChartView>
#include <QComboBox>
#include <QGroupBox>
#include <QMenu>
#include <QTableWidget>
#include <QXYSeries>

using namespace tavrix;

namespace {

// Sets of darts by area; "M" misses the board.
using Plan = QList<QStringList>;

// `count` sets of three misses.
Plan misses(int count)
{
    return Plan(count, QStringList(3, QStringLiteral("M")));
}

// Around the Clock in the ring given ("S", "D", "T"): 1 to 20 and the
// bull; with a miss after the 1, the last set is a single dart.
Plan clockPlan(const QString &ring, bool miss)
{
    QStringList darts;
    for (int n = 1; n <= 20; ++n)
        darts << ring + QString::number(n);
    darts << QStringLiteral("OB");
    if (miss)
        darts.insert(1, QStringLiteral("M"));
    Plan plan;
    for (int i = 0; i < darts.size(); i += 3)
        plan.append(darts.mid(i, 3));
    return plan;
}

} // namespace

class TestTraining : public ProgramTest {
    Q_OBJECT

    QPushButton *button(const char *name) const { return control<QPushButton>(name); }
    TrainingController *training() const { return window()->trainingController(); }
    void choose(const char *list, const QString &item)
    {
        auto *box = control<QComboBox>(list);
        const int index = box->findText(item);
        QVERIFY2(index >= 0, qPrintable(item));
        box->setCurrentIndex(index);
    }
    void click(const char *name)
    {
        QVERIFY2(button(name)->isEnabled(), name);
        QTest::mouseClick(button(name), Qt::LeftButton);
    }
    void startDrill(const QString &name, const QString &target = {})
    {
        choose("cboDrill", name);
        QCOMPARE(control<QComboBox>("cboDrillTarget")->isEnabled(), !target.isEmpty());
        if (!target.isEmpty())
            choose("cboDrillTarget", target);
        click("btnStartDrill");
    }
    // Throws and confirms each set of the plan.
    void playSets(const Plan &plan)
    {
        for (const QStringList &darts : plan) {
            QVERIFY(training()->drillRunning());
            throwDarts(darts);
            click("btnConfirmDrill");
        }
    }
    int pipsShown() const
    {
        int shown = 0;
        for (const DartMarker *pip : window()->boardInput()->pips())
            shown += pip->isVisible() ? 1 : 0;
        return shown;
    }

private slots:
    void init()
    {
        startProgram();
        action("mnuModeTraining")->trigger();
    }
    void cleanup() { program_.reset(); }

    // Each drill played to its end with darts whose score is worked out by
    // hand: the drill's row (kind, target, score, completed), its darts
    // (how many, in how many sets) and the first dart's aim and score, the
    // moments cheered, and the end said in the frame and an alert.
    void aWholeDrillOfEachKind_data()
    {
        using L = QVariantList;
        // row: kind, target, score, completed, quit; darts: how many, in how many
        // sets; firstDart: aimed number and ring (0: any ring of it), score, ring.
        addTable<QString, QString, Plan, L, L, L, QStringList>(
            {"drill", "target", "plan", "row", "darts", "firstDart", "cheers"},
            // 1 to 20 and the bull, the first with one miss: 22 darts.
            {{"around the clock, any", "Around the Clock (Any)", "", clockPlan("S", true), L{1, 0, 22, 1, 0}, L{22, 8},
              L{1, 1, 1, 1}, {}},
             {"around the clock, doubles", "Around the Clock (Doubles)", "", clockPlan("D", false), L{2, 0, 21, 1, 0},
              L{21, 7}, L{1, 2, 1, 2}, {}},
             {"around the clock, trebles", "Around the Clock (Trebles)", "", clockPlan("T", false), L{3, 0, 21, 1, 0},
              L{21, 7}, L{1, 3, 1, 3}, {}},
             // 27 + 2, then D2 to D6 missed: 29 - 4 - 6 - 8 - 10 - 12 = -11,
             // over and not completed; a total below zero scores 0.
             {"Bob's 27 below zero", "Bob's 27", "", Plan{{"D1", "M", "M"}} + misses(5), L{4, 0, 0, 0, 0}, L{18, 6},
              L{1, 2, 1, 2}, {}},
             // 121 out in three darts (T20 T11 D14), then nine attempts missed.
             {"121", "121", "", Plan{{"T20", "T11", "D14"}} + misses(27), L{5, 0, 121, 1, 0}, L{84, 28},
              L{19, 3, 20, 3}, {"Finished!"}},
             // 61 out in two darts (T15 D8) for 3 points; 62 to 100 missed.
             {"Catch 40", "Catch 40", "", Plan{{"T15", "D8"}} + misses(78), L{6, 0, 3, 1, 0}, L{236, 79},
              L{19, 3, 15, 3}, {"Finished!"}},
             // A Shanghai of 1 (6) and two single 2s (4).
             {"Shanghai", "Shanghai", "", Plan{{"S1", "D1", "T1"}, {"S2", "S2", "M"}} + misses(18), L{7, 0, 10, 1, 0},
              L{60, 20}, L{1, 1, 1, 1}, {"Shanghai!"}},
             // 80, halved 40, +32 = 72, +18 = 90, +57 = 147, halved 73, halved
             // 36, +15 = 51, +50 = 101.
             {"Halve-It", "Halve-It", "",
              Plan{{"T20", "S20", "M"}, {"M", "M", "M"}, {"D16", "M", "M"}, {"S18", "M", "M"}, {"T19", "M", "M"},
                   {"M", "M", "M"}, {"M", "M", "M"}, {"S15", "M", "M"}, {"B", "M", "M"}},
              L{8, 0, 101, 1, 0}, L{27, 9}, L{20, 1, 20, 3}, {}},
             // A Shanghai of 10 (60 + 100), then D1 of the doubles (50).
             {"JDC Challenge", "JDC Challenge", "",
              Plan{{"S10", "D10", "T10"}} + misses(5) + Plan{{"D1", "M", "M"}} + misses(12), L{9, 0, 210, 1, 0},
              L{57, 19}, L{10, 1, 10, 1}, {"Shanghai!"}},
             // Treble, double and single 19: 6 marks.
             {"99 darts at 19", "99 darts at one target", "19", Plan{{"T19", "D19", "S19"}} + misses(32),
              L{10, 19, 6, 1, 0}, L{99, 33}, L{19, 1, 19, 3}, {}}});
    }
    void aWholeDrillOfEachKind()
    {
        QFETCH(QString, drill);
        QFETCH(QString, target);
        QFETCH(Plan, plan);
        QFETCH(QVariantList, row);
        QFETCH(QVariantList, darts);
        QFETCH(QVariantList, firstDart);
        QFETCH(QStringList, cheers);
        startDrill(drill, target);
        QVERIFY(!button("btnStartDrill")->isEnabled() && !button("btnConfirmDrill")->isEnabled());
        QVERIFY(!text("lblDrillTarget").isEmpty());
        QCOMPARE(text("lblDrillScore"), drill == QStringLiteral("Bob's 27") ? QStringLiteral("27") : QStringLiteral("0"));
        playSets(plan);

        QVERIFY(!training()->drillRunning());
        QCOMPARE(rows(QStringLiteral("SELECT kind, target, score, completed, quit FROM drills")),
                 QList<QVariantList>{row});
        QCOMPARE(rows(QStringLiteral("SELECT count(*), count(DISTINCT setseq) FROM drilldarts")),
                 QList<QVariantList>{darts});
        QCOMPARE(rows(QStringLiteral("SELECT targetscore, targetring, score, ring FROM drilldarts"
                                     " WHERE setseq = 1 AND dartseq = 0")),
                 QList<QVariantList>{firstDart});
        QStringList alerts = messages_.titles();
        QCOMPARE(alerts.takeLast(), QStringLiteral("Drill Over"));
        QCOMPARE(alerts, cheers);
        const QString score = row[2].toString();
        QCOMPARE(text("lblDrillScore"), score);
        QVERIFY2(text("lblDrillResult").contains(score), qPrintable(text("lblDrillResult")));
        QCOMPARE(messages_.shown.last().text, text("lblDrillResult"));
        QVERIFY(text("lblDrillTarget").isEmpty());
        QVERIFY(button("btnStartDrill")->isEnabled() && control<QGroupBox>("fraDrillChoice")->isEnabled());
    }

    // The best is that of the completed drills of the kind: the first sets
    // it, an equal one leaves it, a better one beats it with applause; the
    // statistics window lists each drill with its best, the average of the
    // last ten and the count, and charts the chosen drill's scores.
    void thePersonalBestAndTheTrainingTab()
    {
        // 22 darts, 22 again, then 21: fewer is better.
        QStringList results;
        for (const Plan &plan : {clockPlan("S", true), clockPlan("S", true), clockPlan("S", false)}) {
            startDrill(QStringLiteral("Around the Clock (Any)"));
            results << text("lblDrillBest");
            sounds_.played.clear();
            playSets(plan);
            results << messages_.shown.last().title + '|' + text("lblDrillBest");
        }
        QCOMPARE(results, (QStringList{"Personal best: N/A", "Drill Over|Personal best: 22",
                                       "Personal best: 22", "Drill Over|Personal best: 22",
                                       "Personal best: 22", "New Personal Best!|Personal best: 21"}));
        QVERIFY(sounds_.played.contains(QStringLiteral("applausewin.wav")));
        QVERIFY(text("lblDrillResult").contains(QStringLiteral("22")));

        action("mnuStatisticsShow")->trigger();
        StatisticsDialog *dialog = window()->statisticsDialog();
        dialog->service()->waitForWork();
        QTableWidget *table = dialog->charts()->drillTable();
        QCOMPARE(table->objectName(), QStringLiteral("tblDrillHistory"));
        QList<QStringList> shown;
        for (int row = 0; row < table->rowCount(); ++row) {
            shown.append(QStringList());
            for (int column = 0; column < table->columnCount(); ++column)
                shown.last() << table->item(row, column)->text();
        }
        QCOMPARE(shown, (QList<QStringList>{{"Around the Clock (Any)", "21", "21.7", "3"}}));
        auto *chart = findControl<QChartView>(dialog, "chartDrillScores");
        QCOMPARE(static_cast<QXYSeries *>(chart->chart()->series().first())->count(), 3);
    }

    // "Quit Drill" asks first: No keeps the drill and its darts; Yes
    // records it as quit with the confirmed sets only. Changing mode asks
    // the same.
    void quittingADrill()
    {
        startDrill(QStringLiteral("Shanghai"));
        playSets({{"S1", "S1", "M"}});
        throwDarts({"S2", "S2"});
        messages_.answers = {false};
        click("btnQuitDrill");
        QCOMPARE(messages_.shown.last().kind, QStringLiteral("question"));
        QCOMPARE(messages_.shown.last().text, QStringLiteral("Quit the drill? It is recorded as quit."));
        QVERIFY(training()->drillRunning());
        QCOMPARE(pipsShown(), 2);
        QCOMPARE(text("lblDrillScore"), QStringLiteral("6"));
        messages_.answers = {true};
        click("btnQuitDrill");
        QVERIFY(!training()->drillRunning());
        QCOMPARE(pipsShown(), 0);
        QCOMPARE(text("lblDrillScore"), QStringLiteral("2"));
        QCOMPARE(rows(QStringLiteral("SELECT kind, score, completed, quit FROM drills")),
                 (QList<QVariantList>{{7, 2, 0, 1}}));
        QCOMPARE(rows(QStringLiteral("SELECT count(*) FROM drilldarts")), (QList<QVariantList>{{3}}));

        startDrill(QStringLiteral("Bob's 27"));
        messages_.answers = {false};
        action("mnuModePractice")->trigger();
        QCOMPARE(window()->currentMode(), Mode::Training);
        QVERIFY(training()->drillRunning());
        QVERIFY(action("mnuModeTraining")->isChecked() && !action("mnuModePractice")->isChecked());
        messages_.answers = {true};
        action("mnuModePlay")->trigger();
        QCOMPARE(messages_.shown.last().title, QStringLiteral("Quit Drill?"));
        QCOMPARE(window()->currentMode(), Mode::Play);
        QCOMPARE(rows(QStringLiteral("SELECT kind, score, completed, quit FROM drills ORDER BY id")),
                 (QList<QVariantList>{{7, 2, 0, 1}, {4, 27, 0, 1}}));
    }

    // While another program holds the file no drill starts, and a set that
    // cannot be written stays on the board to be confirmed again.
    void aHeldFileLosesNothing()
    {
        auto locker = std::make_unique<OtherConnection>(home_->dbPath);
        QVERIFY(locker->exec({QStringLiteral("BEGIN EXCLUSIVE")}));
        startDrill(QStringLiteral("Halve-It"));
        QCOMPARE(messages_.shown.last().kind, QStringLiteral("error"));
        QVERIFY(!training()->drillRunning() && button("btnStartDrill")->isEnabled());
        locker.reset();

        startDrill(QStringLiteral("Halve-It"));
        throwDarts({"T20", "S20", "S20"});
        locker = std::make_unique<OtherConnection>(home_->dbPath);
        QVERIFY(locker->exec({QStringLiteral("BEGIN EXCLUSIVE")}));
        const int said = int(messages_.shown.size());
        click("btnConfirmDrill");
        QCOMPARE(messages_.shown.size(), said + 1);
        QCOMPARE(messages_.shown.last().kind, QStringLiteral("error"));
        QCOMPARE(pipsShown(), 3);
        QCOMPARE(text("lblDrillScore"), QStringLiteral("100"));
        locker.reset();
        click("btnConfirmDrill");
        QCOMPARE(pipsShown(), 0);
        QCOMPARE(rows(QStringLiteral("SELECT count(*), sum(score * ring) FROM drilldarts")),
                 (QList<QVariantList>{{3, 100}}));
        QCOMPARE(text("lblDrillScore"), QStringLiteral("100"));
    }

    // Enter starts a drill; marked darts are taken back with the button or
    // Backspace; a set is confirmed only once marked, with the button or
    // Enter, which never quits the drill.
    void undoAndTheKeys()
    {
        choose("cboDrill", QStringLiteral("99 darts at one target"));
        choose("cboDrillTarget", QStringLiteral("Bull"));
        key(Qt::Key_Return);
        QVERIFY(training()->drillRunning());
        QCOMPARE(text("lblDrillTarget"), QStringLiteral("Bull"));
        key(Qt::Key_Return);
        QVERIFY(training()->drillRunning());
        QCOMPARE(messages_.shown.size(), 0);
        throwDarts({"B", "OB"});
        QCOMPARE(text("lblDrillScore"), QStringLiteral("3"));
        QVERIFY(!button("btnConfirmDrill")->isEnabled());
        click("btnUndoDrillDart");
        key(Qt::Key_Backspace);
        QCOMPARE(pipsShown(), 0);
        QCOMPARE(text("lblDrillScore"), QStringLiteral("0"));
        QVERIFY(!button("btnUndoDrillDart")->isEnabled());
        throwDarts({"OB", "OB", "M"});
        key(Qt::Key_Return);
        QCOMPARE(rows(QStringLiteral("SELECT count(*), sum(ring) FROM drilldarts")), (QList<QVariantList>{{3, 2}}));
        QCOMPARE(text("lblDrillScore"), QStringLiteral("2"));
    }

    // Training is the fourth entry of the Mode menu; the current mode's
    // entry is checked and disabled, the others unchecked and enabled; F1
    // opens the drills' help.
    void theModeMenu()
    {
        const char *entries[] = {"mnuModePractice", "mnuModeReview", "mnuModePlay", "mnuModeTraining"};
        QCOMPARE(action("mnuModeTraining")->text(), QStringLiteral("Training"));
        QCOMPARE(control<QMenu>("mnuMode")->actions().last(), action("mnuModeTraining"));
        for (const char *current : entries) {
            action(current)->trigger();
            for (const char *entry : entries) {
                const bool chosen = qstrcmp(entry, current) == 0;
                QVERIFY2(action(entry)->isChecked() == chosen && action(entry)->isEnabled() == !chosen, entry);
            }
        }
        QCOMPARE(window()->currentMode(), Mode::Training);
    }

    // On the smallest screen the frame fits beside the board, which keeps
    // its least size in every mode, and nothing of the frame is cut off.
    void theFrameFitsTheSmallestScreen()
    {
        startDrill(QStringLiteral("Catch 40"));
        throwDarts({"T19", "S20"});
        for (int level = 0; level < 8; ++level)
            QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QCOMPARE(picture()->size(), QSize(BoardPicture::side, BoardPicture::side));
        auto *frame = control<QGroupBox>("trainingModeFrame");
        const QSize least = window()->minimumSizeHint();
        QVERIFY2(least.width() <= 800 && least.height() <= 568,
                 qPrintable(QStringLiteral("%1 x %2").arg(least.width()).arg(least.height())));
        QVERIFY(frame->minimumSizeHint().height() <= frame->height());
        const QRect inside = frame->rect();
        for (const char *name : {"cboDrill", "btnStartDrill", "lblDrillTarget", "lblDrillScore", "lblDrillProgress",
                                 "btnConfirmDrill", "btnQuitDrill", "lblDrillBest"}) {
            auto *widget = control<QWidget>(name);
            const QRect place(widget->mapTo(frame, QPoint(0, 0)), widget->size());
            QVERIFY2(inside.contains(place), name);
        }
        QVERIFY(control<QLabel>("lblDrillTarget")->font().pixelSize() >= 48);
        for (const char *mode : {"mnuModePlay", "mnuModePractice", "mnuModeReview"}) {
            messages_.answers = {true};
            action(mode)->trigger();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
            QCOMPARE(picture()->size(), QSize(BoardPicture::side, BoardPicture::side));
        }
    }
};

QTEST_MAIN(TestTraining)
#include "tst_training.moc"
