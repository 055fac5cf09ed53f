// The board picture as input, driven with real mouse events. The board only
// reports what the pointer did; in play and practice the mode's
// controller decides what that means: darts, the cork, drags and drops, the
// hover texts and the sounds.

#include "../support/program_test.h"
#include "ui/board/dart_marker.h"

#include <QComboBox>
#include <QPushButton>
#include <QTest>

using namespace tavrix;

namespace {

// A picture point straight above the bull at the given board radius.
QPoint above(int radius)
{
    return {boardCenter, boardCenter - radius};
}

// The picture pixel on the wire between the 20 and the 1, in the single.
QPoint wirePixel()
{
    const double a = 81 * radPerDeg;
    return BoardPicture::pictureFromBoard({150 * std::cos(a), 150 * std::sin(a)}).toPoint();
}

} // namespace

class TestBoardInput : public ProgramTest {
    Q_OBJECT

    BoardPicture *picture_ = nullptr;

    QLabel *hover() { return control<QLabel>("ScoreHoverText"); }
    DartMarker *marker(const char *name) { return control<DartMarker>(name); }
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

private slots:
    void init()
    {
        startProgram();
        QVERIFY(QTest::qWaitForWindowExposed(window()));
        picture_ = control<BoardPicture>("Picture1");
    }
    void cleanup() { program_.reset(); }

    // The cork: the distance from the bull above the pointer; marker 0 of
    // the thrower, the start button enabled, a second click ignored; its
    // marker drags with the left button.
    void theCork()
    {
        startAgainst(QStringLiteral("Bob"));
        move(above(100));
        QCOMPARE(hover()->text(), distanceText(100, false) + QStringLiteral(" from bull."));
        QCOMPARE(hover()->geometry().bottom(), above(100).y() - 2);
        sounds_.played.clear();
        click(QPoint(280, 250));
        QVERIFY(!marker("CPips_0")->isHidden() && marker("Pips_0")->isHidden());
        QCOMPARE(sounds_.played, QStringList{"splat.wav:wait"});
        click(QPoint(200, 200));
        QVERIFY(marker("CPips_1")->isHidden());
        drag(QPoint(280, 250), QPoint(250, 240), Qt::LeftButton);
        QCOMPARE(marker("CPips_0")->centre(), QPointF(250, 240));
        QCOMPARE(*game().corkDart(1), (BoardPoint{-10, 20}));
    }

    // Three darts of a turn: each click places the next marker centred on
    // it with its sounds, the live text and the advice for the next; a wire
    // still counts; a fourth click does nothing. A dart drags only with the
    // right button until the third; a dropped target snaps to its area's
    // aiming point. The hover texts: the right edge, the dart under the
    // pointer, what stays after the third dart. (Review's captions are tested
    // with the pointer rules.)
    void aTurnOfThreeDarts()
    {
        startAgainst(QStringLiteral("Bob"));
        corkAnnFirst();
        sounds_.played.clear();
        click(above(118));
        QVERIFY(!marker("Pips_0")->isHidden());
        QCOMPARE(marker("Pips_0")->centre(), QPointF(above(118)));
        QCOMPARE(sounds_.played, (QStringList{"splat.wav:wait", "fanfare.wav"}));
        QVERIFY(text("gameText").startsWith(QStringLiteral("\nAnn threw: Triple 20")));

        move(QPoint(515, 260));
        QVERIFY(!hover()->isHidden() && hover()->geometry().right() < picture_->width());
        leaveBoard();
        QVERIFY(hover()->isHidden());

        drag(above(118), QPoint(320, 330), Qt::RightButton);
        QCOMPARE(marker("Pips_0")->centre(), QPointF(320, 330));
        QCOMPARE(*game().setDarts()[0], (BoardPoint{60, -70}));
        // The drop says where the dart now is.
        QCOMPARE(hover()->text(), dartDescriptionFromXY(60, -70));
        QVERIFY(!hover()->isHidden());
        // With the left button the drag is refused: a second dart where it ends.
        drag(QPoint(320, 330), QPoint(300, 200), Qt::LeftButton);
        QCOMPARE(marker("Pips_0")->centre(), QPointF(320, 330));
        move(QPoint(302, 203));
        QCOMPARE(hover()->text(), QStringLiteral("Dart 2: ") + dartDescriptionFromXY(42, 57));

        click(wirePixel());
        QVERIFY(!marker("Pips_2")->isHidden());
        QCOMPARE(sounds_.played.last(), QStringLiteral("boing2.wav:wait"));
        const QPointF third = marker("Pips_2")->centre();
        const int soundsBefore = sounds_.played.size();
        click(QPoint(100, 400));
        QCOMPARE(game().dartsPlaced(), 3);
        QCOMPARE(marker("Pips_2")->centre(), third);
        QCOMPARE(sounds_.played.size(), soundsBefore);
        // Dropped outside the picture, a dart goes back where it was.
        drag(third.toPoint(), QPoint(700, 230), Qt::LeftButton);
        QCOMPARE(marker("Pips_2")->centre(), third);

        move(QPoint(400, 150));
        QVERIFY(hover()->isHidden());
        hover()->show();
        const QString last = hover()->text();
        leaveBoard();
        QVERIFY(!hover()->isHidden());
        QCOMPARE(hover()->text(), last);

        // All three targets stand on the treble 20; the last one is taken.
        DartMarker *target = marker("TargetPips_2");
        const QPointF double20 = BoardPicture::pictureFromBoard(aimPoint(2, 20));
        drag(QPoint(260, 142), (double20 + QPointF(3, -2)).toPoint(), Qt::LeftButton);
        QCOMPARE(target->centre(), double20);
        QCOMPARE(game().targetScore(2), (DartScore{2, 20}));
        drag(double20.toPoint(), QPoint(8, 8), Qt::LeftButton);
        QCOMPARE(target->centre(), QPointF(260, 260));
        QCOMPARE(marker("TargetPips_0")->centre(), QPointF(260, 142));
    }

    // Practice: the read-outs follow the pointer, measured from the target.
    // (Placing and confirming practice darts, and review's clicks, are driven
    // by the practice and review tests.)
    void practiceReadOutFollowsThePointer()
    {
        window()->switchMode(Mode::Practice);
        control<QComboBox>("RingDrop")->setCurrentIndex(3);
        control<QComboBox>("ScoreDrop")->setCurrentIndex(4);
        QTest::mouseClick(control<QPushButton>("goButton"), Qt::LeftButton);
        QCOMPARE(text("GeneralText"), QStringLiteral("Shoot for Triple 20"));
        move(above(100));
        QCOMPARE(text("rdisttext_0"), distanceText(18, false));
    }
};

QTEST_MAIN(TestBoardInput)
#include "tst_board_input.moc"
