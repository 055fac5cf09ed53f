// Practice mode through the whole program: sets at chosen targets, the
// read-outs and grouping of a set, the running totals, a count-down, and a
// statistics file that cannot be written.

#include "../support/data_table.h"
#include "../support/lost_file.h"
#include "../support/program_test.h"
#include "core/stats/records.h"
#include "ui/board/dart_marker.h"
#include "ui/practice/practice_controller.h"

#include <QComboBox>
#include <QGroupBox>

using namespace tavrix;

class TestPractice : public ProgramTest {
    Q_OBJECT

    QPushButton *go() const { return control<QPushButton>("goButton"); }
    void choose(const char *list, const QString &item)
    {
        auto *box = control<QComboBox>(list);
        const int index = box->findText(item);
        QVERIFY2(index >= 0, qPrintable(item));
        box->setCurrentIndex(index);
    }
    void clickGo(const QString &caption)
    {
        QCOMPARE(go()->text(), caption);
        QVERIFY(go()->isEnabled());
        QTest::mouseClick(go(), Qt::LeftButton);
    }
    QStringList totals() const
    {
        QStringList texts;
        for (const char *name : {"PctAllHitText", "PctThisHitText", "AvgDistAnyText", "AvgDistThisText",
                                 "pctAnysHitText", "PctDoublesHitText", "PctTriplesHitText"})
            texts << text(name);
        return texts;
    }
    QStringList measures() const { return {text("avgDistText"), text("geomDistText"), text("groupingDistText")}; }

private slots:
    void init()
    {
        startProgram();
        program_->session().random.seed(11);
        action("mnuModePractice")->trigger();
    }
    void cleanup() { program_.reset(); }

    // Double 20 hit once in three darts: the target row at Go, unknown
    // measures until the third dart, the grouping of the three, the darts
    // with their practice scores at "Confirm Darts", and the totals.
    void aSetAtDoubleTwenty()
    {
        const QString na = QStringLiteral("N/A");
        QCOMPARE(totals(), QStringList(7, na));
        choose("RingDrop", QStringLiteral("Double"));
        choose("ScoreDrop", QStringLiteral("20"));
        clickGo(QStringLiteral("Go"));
        QCOMPARE(text("GeneralText"), QStringLiteral("Shoot for Double 20"));
        QVERIFY(!go()->isEnabled());
        QVERIFY(!control<QGroupBox>("Frame3")->isEnabled());
        QCOMPARE(rows(QStringLiteral("SELECT players_id, targetValue, targetRing FROM statstargets")),
                 (QList<QVariantList>{{1, 20, 2}}));

        throwDarts({"D20", "S20"});
        QCOMPARE(measures(), QStringList(3, QStringLiteral("??")));
        QTest::mouseMove(control<BoardPicture>("Picture1"), BoardPicture::pictureFromBoard(at("M")).toPoint());
        throwDarts({"M"});
        QCOMPARE(text("GeneralText"), QStringLiteral("Adjust Darts and \"Confirm\""));
        // Darts at 196, 150 and 240 units up, aimed at 196: 0, 46 and 44
        // units away, 30 on average; their centre 2/3 of a unit above the
        // aim; 30.22 units from it on average.
        QCOMPARE(measures(), (QStringList{QStringLiteral("0.965\""), QStringLiteral("0.021\""),
                                          QStringLiteral("0.972\"")}));
        QCOMPARE(sounds_.played, (QStringList{"splat.wav:wait", "splat.wav:wait", "splat.wav:wait"}));

        // The last dart's hover text stays until its marker is cleared.
        auto *hover = control<QLabel>("ScoreHoverText");
        QVERIFY(hover->isVisible() && hover->text() == QStringLiteral("Missed board"));
        clickGo(QStringLiteral("Confirm Darts"));
        QCOMPARE(messages_.shown.last().text, QStringLiteral("Darts Confirmed."));
        QCOMPARE(messages_.shown.last().title, QStringLiteral("Thank You"));
        QVERIFY(!window()->boardInput()->pips()[0]->isVisible() && !hover->isVisible());
        QCOMPARE(rows(QStringLiteral("SELECT players_id, statstargets_id, seq, x, y, round(dist, 9),"
                                     " score, ring FROM statsthrows ORDER BY id")),
                 (QList<QVariantList>{{1, 1, 0, 0.0, 196.0, 0.0, 20, 2},
                                      {1, 1, 1, 0.0, 150.0, 46.0, 20, 1},
                                      {1, 1, 2, 0.0, 240.0, 44.0, 0, -999}}));
        QCOMPARE(totals(), (QStringList{QStringLiteral("33.33%"), QStringLiteral("33.33"), QStringLiteral("0.965\""),
                                        QStringLiteral("0.965\""), na, QStringLiteral("33.33%"), na}));
    }

    // A count-down at trebles: the bull first, then 20 and 19, each set
    // opening as soon as the last is confirmed (from the keyboard too); quitting leaves the open
    // set's target row without darts and starts afresh.
    void aCountDownAndItsQuit()
    {
        choose("RingDrop", QStringLiteral("Triple!"));
        choose("ScoreDrop", QStringLiteral("-- Count Down  --"));
        clickGo(QStringLiteral("Go"));
        QCOMPARE(messages_.shown.last().text, QStringLiteral("Starting countdown with bull"));
        QCOMPARE(messages_.shown.last().title, QStringLiteral("Starting Countdown"));
        QCOMPARE(text("GeneralText"), QStringLiteral("Shoot for Any 25 or Bull"));
        const QString quit = QStringLiteral("Quit\nCount\nDown");
        QVERIFY(control<QGroupBox>("Frame3")->isEnabled());

        // Enter confirms a set but never quits the sequence (the caption
        // is still the quit one at the end).
        key(Qt::Key_Return);
        throwDarts({"OB", "B", "S20"});
        const int shown = messages_.shown.size();
        key(Qt::Key_Return);
        QCOMPARE(messages_.shown.size(), shown);
        QCOMPARE(text("GeneralText"), QStringLiteral("Shoot for Triple 20"));
        throwDarts({"T20", "T20", "S20"});
        clickGo(QStringLiteral("Confirm Darts"));

        clickGo(quit);
        QCOMPARE(text("GeneralText"), QStringLiteral("Click \"Go\" to begin"));
        QVERIFY(!control<BoardPicture>("Picture1")->isEnabled());
        QCOMPARE(rows(QStringLiteral("SELECT ta.targetValue, ta.targetRing, count(th.id) FROM statstargets ta"
                                     " LEFT JOIN statsthrows th ON th.statstargets_id = ta.id"
                                     " GROUP BY ta.id ORDER BY ta.id")),
                 (QList<QVariantList>{{25, 1, 3}, {20, 3, 3}, {19, 3, 0}}));
        QCOMPARE(rows(QStringLiteral("SELECT score, ring FROM statsthrows WHERE statstargets_id = 1 ORDER BY seq")),
                 (QList<QVariantList>{{25, 1}, {50, 1}, {20, 1}}));
        clickGo(QStringLiteral("Go"));
        QCOMPARE(messages_.shown.last().text, QStringLiteral("Starting countdown with bull"));

        // Leaving practice with a set open ends it.
        action("mnuModeReview")->trigger();
        action("mnuModePractice")->trigger();
        QCOMPARE(go()->text(), QStringLiteral("Go"));
        QVERIFY(go()->isEnabled());
    }

    // On a large screen the board is drawn larger and marks finer: a click
    // or a drop stands on the screen pixel under the pointer, between
    // picture units, and each dart is recorded where its marker stands.
    void dartsAreRecordedWhereTheirMarkersStand()
    {
        resizeWindow(1280, 1024 - 32);
        const double scale = picture()->scale();
        QVERIFY2(scale > 1.5, qPrintable(QString::number(scale)));
        choose("RingDrop", QStringLiteral("Triple!"));
        choose("ScoreDrop", QStringLiteral("20"));
        clickGo(QStringLiteral("Go"));
        auto pixel = [&](BoardPoint at) { return picture()->pixelFromBoard(at).toPoint(); };
        auto onPixel = [&](QPoint p) { return boardFromPicture(p.x() / scale, p.y() / scale); };
        const BoardPoint aims[] = {{12.37, 150.5}, {-33.5, 97.49}, {0.5, 117.5}};
        for (const BoardPoint at : aims)
            QTest::mouseClick(picture(), Qt::LeftButton, {}, pixel(at));
        const QString measured = text("avgDistText");
        const QPoint to = pixel({20, 110});
        QTest::mousePress(picture(), Qt::LeftButton, {}, pixel(aims[0]));
        QTest::mouseMove(picture(), to);
        QTest::mouseRelease(picture(), Qt::LeftButton, {}, to);
        QVERIFY(text("avgDistText") != measured);

        QList<QVariantList> shown;
        for (const DartMarker *pip : window()->boardInput()->pips()) {
            const BoardPoint at = BoardInput::markerPoint(pip);
            shown.append({at.x, at.y});
        }
        const BoardPoint expected[] = {onPixel(to), onPixel(pixel(aims[1])), onPixel(pixel(aims[2]))};
        QList<QVariantList> clicked;
        for (const BoardPoint at : expected)
            clicked.append({at.x, at.y});
        QCOMPARE(shown, clicked);
        QVERIFY(expected[1].x != std::round(expected[1].x) || expected[1].y != std::round(expected[1].y));
        clickGo(QStringLiteral("Confirm Darts"));
        QList<QVariantList> stored;
        for (const BoardPoint at : expected)
            stored.append({storedCoordinate(at.x), storedCoordinate(at.y)});
        QCOMPARE(rows(QStringLiteral("SELECT x, y FROM statsthrows ORDER BY seq")), stored);
    }

    // A file lost during practice is said once, with the offer to save into
    // another file. Said later, each set that cannot be confirmed says why
    // and stays on the board; saved at once, the set is confirmed into the
    // copy, or into a new file made from a file written over, with the
    // target it was opened at.
    void aLostFileIsSaidAndTheSetKept_data()
    {
        addTable<Loss, bool, QString>({"loss", "saveAtOnce", "said"},
                                      {{"deleted, said later", Loss::Deleted, false, "was deleted or moved away"},
                                       {"deleted, saved at once", Loss::Deleted, true, "was deleted or moved away"},
                                       {"written over, saved at once", Loss::WrittenOver, true, "was written over"}});
    }
    void aLostFileIsSaidAndTheSetKept()
    {
        QFETCH(Loss, loss);
        QFETCH(bool, saveAtOnce);
        QFETCH(QString, said);
        choose("RingDrop", QStringLiteral("Any"));
        choose("ScoreDrop", QStringLiteral("Bull"));
        clickGo(QStringLiteral("Go"));
        throwDarts({"B", "B", "B"});
        loseFile(home_->dbPath, loss);
        const QString saved = home_->dir.filePath(QStringLiteral("saved.db"));
        messages_.choices = {saveAtOnce ? 0 : 1};
        messages_.savePaths = {saved};
        clickGo(QStringLiteral("Confirm Darts"));
        QCOMPARE(messages_.shown.last().kind, saveAtOnce ? QStringLiteral("notice") : QStringLiteral("choice"));
        QVERIFY(messages_.texts(QStringLiteral("choice"))[0].contains(said));
        QVERIFY(window()->boardInput()->pips()[2]->isVisible());

        clickGo(QStringLiteral("Confirm Darts"));
        QCOMPARE(messages_.texts(QStringLiteral("choice")).size(), 1);
        if (!saveAtOnce) {
            QCOMPARE(messages_.shown.last().kind, QStringLiteral("error"));
            QVERIFY(messages_.shown.last().text.contains(said));
            QVERIFY(window()->boardInput()->pips()[2]->isVisible());
            return;
        }
        QCOMPARE(OtherConnection(saved).rows(QStringLiteral(
                     "SELECT ta.targetValue, ta.players_id, th.seq FROM statsthrows th"
                     " JOIN statstargets ta ON ta.id = th.statstargets_id")),
                 (QList<QVariantList>{{25, 1, 0}, {25, 1, 1}, {25, 1, 2}}));
    }

    // While another program holds the file no set opens, and darts that
    // cannot be written stay on the board to be confirmed again.
    void aHeldFileLosesNothing()
    {
        choose("RingDrop", QStringLiteral("Any"));
        choose("ScoreDrop", QStringLiteral("Bull"));
        auto locker = std::make_unique<OtherConnection>(home_->dbPath);
        QVERIFY(locker->exec({QStringLiteral("BEGIN EXCLUSIVE")}));
        clickGo(QStringLiteral("Go"));
        QCOMPARE(messages_.shown.last().kind, QStringLiteral("error"));
        locker.reset();

        clickGo(QStringLiteral("Go"));
        QCOMPARE(text("GeneralText"), QStringLiteral("Shoot for 25 or Bull"));
        throwDarts({"B", "B", "B"});
        QCOMPARE(measures(), QStringList(3, QStringLiteral("0\"")));
        locker = std::make_unique<OtherConnection>(home_->dbPath);
        QVERIFY(locker->exec({QStringLiteral("BEGIN EXCLUSIVE")}));
        clickGo(QStringLiteral("Confirm Darts"));
        QCOMPARE(messages_.shown.last().kind, QStringLiteral("error"));
        QVERIFY(window()->boardInput()->pips()[2]->isVisible());
        locker.reset();
        clickGo(QStringLiteral("Confirm Darts"));
        QCOMPARE(rows(QStringLiteral("SELECT count(*) FROM statsthrows")), (QList<QVariantList>{{3}}));
        QCOMPARE(text("PctThisHitText"), QStringLiteral("0"));
    }
};

QTEST_MAIN(TestPractice)
#include "tst_practice.moc"
