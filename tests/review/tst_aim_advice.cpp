// Advice from the player's own darts: the map of where to aim in review and
// the checkout for the player during a turn, both worked out away from the
// window and shown once they are there.

#include "../support/program_test.h"
#include "../support/test_server.h"
#include "core/board/board_geometry.h"
#include "core/games/checkout_chart.h"
#include "ui/advice/aim_advice_service.h"
#include "ui/board/board_picture.h"
#include "ui/review/review_controller.h"

#include <QCheckBox>
#include <QProgressBar>
#include <QRandomGenerator>
#include <QRegularExpression>

using namespace tavrix;

class TestAimAdvice : public ProgramTest {
    Q_OBJECT

    AimAdviceService *aims() const { return window()->aimAdvice(); }
    // Practice darts aimed at the treble 20, scattered round it.
    static void throwPractice(StatsStore &store, int darts)
    {
        QRandomGenerator random(11);
        const BoardPoint aim = aimPoint(3, 20);
        const std::optional<qint64> target = store.insertStatTarget(1, 20, 3);
        QVERIFY(target);
        for (int i = 0; i < darts; ++i) {
            const double x = aim.x + (random.generateDouble() - 0.5) * 24;
            const double y = aim.y + (random.generateDouble() - 0.5) * 24;
            const DartScore score = scoreFromXY(x, y);
            QVERIFY(store.insertStatThrow({1, *target, i % 3, x, y, std::hypot(x - aim.x, y - aim.y),
                                           score.number, score.multiplier}));
        }
    }
    QString yourOut() const { return control<QLabel>("lblYourOut")->text(); }

private slots:
    void cleanup() { program_.reset(); }

    // Too few darts are said; enough darts give the map, the best aim and
    // the three lines, worked out again when darts are added, and not
    // again while nothing changes. The choice is remembered.
    void theMapOfWhereToAim()
    {
        startProgram();
        action("mnuModeReview")->trigger();
        auto *check = control<QCheckBox>("chkAimMap");
        auto *advice = control<QLabel>("lblAimAdvice");
        QVERIFY(!check->isChecked() && advice->isHidden());
        check->click();
        QVERIFY(control<QProgressBar>("barAimBusy")->isVisible());
        aims()->waitForWork();
        QCOMPARE(advice->text(), QStringLiteral("Where to aim needs 30 aimed darts (0 so far)."));
        QVERIFY(!control<QProgressBar>("barAimBusy")->isVisible() && !picture()->showsAimMap());

        throwPractice(program_->store(), 300);
        // Reading the darts in the worker changes nothing the window sees.
        for (int round = 0; round < 2; ++round) {
            window()->reviewController()->doPlot(3, 20);
            aims()->advice(1);
            aims()->waitForWork();
        }
        QVERIFY(!aims()->busy());
        const QStringList lines = advice->text().split('\n');
        QCOMPARE(lines.size(), 3);
        QVERIFY2(QRegularExpression(QStringLiteral("^Best aim: (Triple|Double|Any) \\d+, \\d+\\.\\d points per dart$"))
                     .match(lines[0]).hasMatch(), qPrintable(lines[0]));
        QVERIFY2(QRegularExpression(QStringLiteral("^Treble 20: \\d+\\.\\d points per dart$")).match(lines[1]).hasMatch(),
                 qPrintable(lines[1]));
        QCOMPARE(lines[2], QStringLiteral("From 300 darts (0 wild)"));
        QVERIFY(picture()->showsAimMap());

        check->click();
        QVERIFY(!picture()->showsAimMap() && advice->isHidden());
        check->click();
        restartProgram();
        action("mnuModeReview")->trigger();
        QVERIFY(control<QCheckBox>("chkAimMap")->isChecked());
        action("mnuModePlay")->trigger();
        QVERIFY(!picture()->showsAimMap());
    }

    // During the player's own turn at a finish: the checkout for him, again
    // after each dart and after an undo; nothing for the other player or
    // out of reach. Without enough darts that is said in one turn only.
    void checkoutsForThePlayer()
    {
        startProgram();
        startAgainst(QStringLiteral("Bob"));
        corkAnnFirst();
        playSet({"T20", "T20", "T20"});
        playSet({"M", "M", "M"});
        playSet({"T20", "T20", "T20"});
        QCOMPARE(yourOut(), QString());
        playSet({"M", "M", "M"});
        // 141 left with three darts, and 81 with two: said while the
        // checkout lasts (the cork and six trebles are recorded so far); 80
        // with one dart is out of reach, and the next turn says nothing.
        const QString needs = QStringLiteral("Where to aim needs 30 aimed darts (7 so far).");
        aims()->waitForWork();
        QCOMPARE(yourOut(), needs);
        throwDarts({"T20"});
        QCOMPARE(yourOut(), needs);
        throwDarts({"S1"});
        QCOMPARE(yourOut(), QString());
        press(QStringLiteral("Ok"));
        playSet({"M", "M", "M"});
        aims()->waitForWork();
        QCOMPARE(yourOut(), QString());
        messages_.answers = {true};
        QTest::mouseClick(control<QPushButton>("btnQuitGame"), Qt::LeftButton);

        throwPractice(program_->store(), 300);
        startAgainst(QStringLiteral("Bob"));
        corkAnnFirst();
        playSet({"T20", "T20", "T20"});
        playSet({"M", "M", "M"});
        QCOMPARE(yourOut(), QString());
        playSet({"T20", "T20", "T20"});
        playSet({"M", "M", "M"});
        // 141 left: the advice is worked out while the turn waits.
        aims()->waitForWork();
        const QRegularExpression line(QStringLiteral("^For you: ([STD]\\d+ ){0,2}[SD]\\d+, \\d+\\.\\d% \\(chart: \\d+\\.\\d%\\)$"));
        const QString three = yourOut();
        QVERIFY2(line.match(three).hasMatch(), qPrintable(three));
        throwDarts({"T20"});
        const QString two = yourOut();
        QVERIFY2(line.match(two).hasMatch() && two != three, qPrintable(two));
        key(Qt::Key_Backspace);
        QCOMPARE(yourOut(), three);
        throwDarts({"S1", "S1"});
        QCOMPARE(yourOut(), QString());
    }

    // On a club database the worker opens its own connection to the server
    // the window uses, with the password it was given.
    void theAdviceFromDartsOnAServer()
    {
        StatsStore store(QStringLiteral("aimAdviceServer"));
        QVERIFY2(store.open(TestServer::freshDatabase(QStringLiteral("aim_advice"))), qPrintable(store.lastError()));
        QVERIFY(store.insertPlayer(QStringLiteral("Ann")) == 1);
        throwPractice(store, 300);
        CheckoutChart chart;
        chart.load(*store.outchartRows());
        AimAdviceService service(store, chart);
        service.advice(1);
        service.waitForWork();
        const std::shared_ptr<const PersonalAdvice> advice = service.advice(1);
        QVERIFY(advice);
        QCOMPARE(advice->fit.fitted + advice->fit.wild, qint64(300));
    }
};

QTEST_MAIN(TestAimAdvice)
#include "tst_aim_advice.moc"
