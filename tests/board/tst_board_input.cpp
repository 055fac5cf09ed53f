// The board picture as input, driven with real mouse events: placing darts,
// the cork, dragging and dropping markers, the hover texts and the sounds.

#include "../support/fake_messages.h"
#include "../support/sound_log.h"
#include "../support/test_home.h"
#include "board/board_input.h"
#include "board/board_picture.h"
#include "board/dart_marker.h"
#include "startup/darts_window.h"
#include "startup/program.h"
#include "startup/sounds.h"

#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace tavrix;

namespace {

struct HandoffLog : BoardHandoffs {
    QStringList calls;
    void show301Scores(const MarkerArray &) override { calls << QStringLiteral("show301Scores"); }
    void showNext01Target() override { calls << QStringLiteral("showNext01Target"); }
    void showCricketScores(const MarkerArray &) override { calls << QStringLiteral("showCricketScores"); }
    void showNextCricketTarget() override { calls << QStringLiteral("showNextCricketTarget"); }
    void doAverageDist() override { calls << QStringLiteral("doAverageDist"); }
    void doPlot(int ring, int segment) override
    {
        calls << QStringLiteral("doPlot %1 %2").arg(ring).arg(segment);
    }
};

// A picture point straight above the bull at the given board radius.
QPoint above(int radius)
{
    return {boardCenter, boardCenter - radius};
}

// A picture pixel on a wire between two segments.
QPoint wirePixel()
{
    for (int column = 300; column < 400; ++column) {
        const BoardPoint at = boardFromPicture(column, 200);
        if (dartDescriptionFromXY(at.x, at.y) == QLatin1String("Bounce-out"))
            return {column, 200};
    }
    return {};
}

} // namespace

class TestBoardInput : public QObject {
    Q_OBJECT

    std::unique_ptr<TestHome> home_;
    FakeMessages messages_;
    SoundLog sounds_;
    HandoffLog handoffs_;
    std::unique_ptr<Program> program_;
    BoardPicture *picture_ = nullptr;
    BoardInput *board_ = nullptr;
    SharedState *state_ = nullptr;

    QLabel *hover() { return program_->window()->findChild<QLabel *>(QStringLiteral("ScoreHoverText")); }
    DartMarker *marker(const char *name)
    {
        return program_->window()->findChild<DartMarker *>(QString::fromLatin1(name));
    }

    void click(QPoint at) { QTest::mouseClick(picture_, Qt::LeftButton, {}, at); }
    void move(QPoint at) { QTest::mouseMove(picture_, at); }
    void drag(QPoint from, QPoint to, Qt::MouseButton button)
    {
        QTest::mousePress(picture_, button, {}, from);
        QTest::mouseMove(picture_, (from + to) / 2);
        QTest::mouseMove(picture_, to);
        QTest::mouseRelease(picture_, button, {}, to);
    }
    void leaveBoard()
    {
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(picture_, &leave);
    }

    // A turn of 501 at the board: the local player throws, nothing placed.
    void startTurn(int phase)
    {
        state_->gameType = 3;
        state_->currentThrower = 2;
        state_->throwPhase = phase;
        state_->pipCount = 0;
        board_->hidePips();
        picture_->setEnabled(true);
    }

private slots:
    void init()
    {
        home_ = std::make_unique<TestHome>(QStringList{QStringLiteral("Ann")});
        sounds_ = {};
        handoffs_ = {};
        program_ = std::make_unique<Program>(messages_, home_->dbPath, &sounds_);
        QVERIFY(program_->Main());
        QVERIFY(QTest::qWaitForWindowExposed(program_->window()));
        picture_ = program_->window()->findChild<BoardPicture *>(QStringLiteral("Picture1"));
        QVERIFY(picture_);
        board_ = program_->window()->boardInput();
        board_->setHandoffs(&handoffs_);
        state_ = &program_->state();
    }
    void cleanup()
    {
        program_.reset();
    }

    // Three darts of a turn: each click places the next marker centred on
    // it with its sound and hand-offs; a wire still counts; a fourth click
    // does nothing.
    void threeClicksPlaceThreeDartsAndAFourthDoesNothing()
    {
        startTurn(3);
        // The advice for the first dart is the treble 20.
        marker("TargetPips_0")->centreOn(above(118));
        marker("TargetPips_0")->show();

        click(above(118));
        DartMarker *first = marker("Pips_0");
        QVERIFY(!first->isHidden());
        QCOMPARE(first->centre(), QPointF(above(118)));
        QCOMPARE(Darts::pipScore(first), (DartScore{3, 20}));
        QVERIFY(program_->window()->findChild<QPushButton *>(QStringLiteral("btnStartGame"))->isEnabled());
        QCOMPARE(sounds_.played, (QStringList{"splat.wav:wait", "fanfare.wav"}));
        QCOMPARE(handoffs_.calls, (QStringList{"show301Scores", "showNext01Target"}));

        const QPoint wire = wirePixel();
        QVERIFY(!wire.isNull());
        click(wire);
        QCOMPARE(state_->pipCount, 2);
        QVERIFY(!marker("Pips_1")->isHidden());
        QCOMPARE(sounds_.played.last(), QStringLiteral("boing2.wav:wait"));

        click(QPoint(300, 300));
        QCOMPARE(state_->pipCount, 3);
        // No advice is asked for after the third dart.
        QCOMPARE(handoffs_.calls.count(QStringLiteral("showNext01Target")), 2);
        QCOMPARE(handoffs_.calls.count(QStringLiteral("show301Scores")), 3);

        const QPointF third = marker("Pips_2")->centre();
        const int soundsBefore = sounds_.played.size();
        click(QPoint(100, 400));
        QCOMPARE(state_->pipCount, 3);
        QCOMPARE(marker("Pips_2")->centre(), third);
        QCOMPARE(sounds_.played.size(), soundsBefore);

        // No game chosen: clicks place nothing.
        startTurn(3);
        state_->gameType = 0;
        click(QPoint(300, 300));
        QCOMPARE(state_->pipCount, 0);
        QVERIFY(marker("Pips_0")->isHidden());
    }

    // The cork: marker 0 of the thrower, the start button enabled, a second
    // click ignored; its marker drags with the left button. During a turn a
    // marker drags only with the right button until the third dart.
    void corkAndDragRules()
    {
        startTurn(1);
        state_->currentThrower = 1;
        click(QPoint(280, 250));
        QCOMPARE(state_->throwPhase, 2);
        QCOMPARE(state_->pipCount, 1);
        QVERIFY(!marker("CPips_0")->isHidden());
        QVERIFY(marker("Pips_0")->isHidden());
        QCOMPARE(sounds_.played, QStringList{"splat.wav:wait"});
        click(QPoint(200, 200));
        QVERIFY(marker("CPips_1")->isHidden());
        QCOMPARE(state_->pipCount, 1);

        drag(QPoint(280, 250), QPoint(250, 240), Qt::LeftButton);
        QCOMPARE(marker("CPips_0")->centre(), QPointF(250, 240));

        startTurn(3);
        click(QPoint(300, 300));
        drag(QPoint(300, 300), QPoint(320, 330), Qt::LeftButton);
        QCOMPARE(marker("Pips_0")->centre(), QPointF(300, 300));
        drag(QPoint(300, 300), QPoint(320, 330), Qt::RightButton);
        QCOMPARE(marker("Pips_0")->centre(), QPointF(320, 330));
        // The drop says where the dart now is.
        QCOMPARE(hover()->text(), dartDescriptionFromXY(60, -70));
        QVERIFY(!hover()->isHidden());
        // Dropped outside the board picture, a marker goes back.
        drag(QPoint(320, 330), QPoint(700, 330), Qt::RightButton);
        QCOMPARE(marker("Pips_0")->centre(), QPointF(320, 330));
    }

    // A dropped target snaps to the aiming point of its area, or to the
    // bull's centre off the board.
    void targetsSnapToTheirAimingPoint()
    {
        startTurn(3);
        state_->keepStats = true;
        state_->pipCount = 3;
        DartMarker *target = marker("TargetPips_0");
        target->centreOn(QPointF(100, 100));
        target->show();
        drag(QPoint(100, 100), QPoint(263, 139), Qt::LeftButton);
        QCOMPARE(target->centre(), QPointF(260, 142));
        drag(QPoint(260, 142), QPoint(8, 8), Qt::LeftButton);
        QCOMPARE(target->centre(), QPointF(260, 260));
    }

    // Hover texts: the cork's distance, the right edge, what stays after the
    // third dart, and review's dart counts.
    void hoverTexts()
    {
        startTurn(1);
        move(above(100));
        QCOMPARE(hover()->text(), distanceText(100, false) + QStringLiteral(" from bull."));
        QCOMPARE(hover()->geometry().bottom(), above(100).y() - 2);

        startTurn(3);
        move(QPoint(515, 260));
        QVERIFY(!hover()->isHidden());
        QVERIFY(hover()->geometry().right() < picture_->width());
        leaveBoard();
        QVERIFY(hover()->isHidden());

        for (const QPoint at : {QPoint(200, 300), QPoint(210, 300), QPoint(220, 300)})
            click(at);
        move(QPoint(400, 150));
        QVERIFY(hover()->isHidden());
        hover()->show();
        const QString last = hover()->text();
        leaveBoard();
        QVERIFY(!hover()->isHidden());
        QCOMPARE(hover()->text(), last);

        // Over the second marker in play the hover names it.
        startTurn(3);
        click(QPoint(200, 300));
        click(QPoint(300, 200));
        move(QPoint(302, 203));
        QCOMPARE(hover()->text(), QStringLiteral("Dart 2: ") + dartDescriptionFromXY(42, 57));

        program_->window()->switchMode(ModeReview);
        state_->reviewCounts = {};
        state_->reviewCounts[0][0] = 1;
        state_->reviewCounts[2][1] = 7;
        move(QPoint(260, 260));
        QCOMPARE(hover()->text(), QStringLiteral("25/Bull -- 1 dart."));
        move(above(118));
        QCOMPARE(hover()->text(), QStringLiteral("Triple 20 -- 7 darts."));
        move(above(104));
        QVERIFY(hover()->isHidden());
    }

    // Practice: read-outs follow the pointer, the third dart asks for
    // confirmation; review clicks plot the area under the pointer.
    void practiceAndReviewClicks()
    {
        program_->window()->switchMode(ModePractice);
        state_->pipCount = 0;
        state_->targetX = 0;
        state_->targetY = 118;
        picture_->setEnabled(true);
        auto *go = program_->window()->findChild<QPushButton *>(QStringLiteral("goButton"));
        go->setEnabled(false);
        move(above(100));
        QCOMPARE(program_->window()->findChild<QLabel *>(QStringLiteral("rdisttext_0"))->text(),
                 distanceText(18, false));
        for (const QPoint at : {QPoint(250, 150), QPoint(270, 150)})
            click(at);
        QVERIFY(!go->isEnabled());
        click(QPoint(260, 135));
        QCOMPARE(go->text(), QStringLiteral("Confirm Darts"));
        QVERIFY(go->isEnabled());
        QCOMPARE(program_->window()->findChild<QLabel *>(QStringLiteral("GeneralText"))->text(),
                 QStringLiteral("Adjust Darts and \"Confirm\""));
        QCOMPARE(handoffs_.calls, QStringList{"doAverageDist"});

        program_->window()->switchMode(ModeReview);
        handoffs_.calls.clear();
        click(above(118));
        click(QPoint(5, 5));
        QCOMPARE(handoffs_.calls, QStringList{"doPlot 3 20"});
        QVERIFY(hover()->isHidden());
    }
};

QTEST_MAIN(TestBoardInput)
#include "tst_board_input.moc"
