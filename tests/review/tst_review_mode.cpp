// Review mode through the real program: a click on the board plots the
// darts aimed at that area and fills the three figure frames.

#include "../support/program_test.h"

#include <QGroupBox>
#include <QTest>

using namespace tavrix;

class TestReviewMode : public ProgramTest {
    Q_OBJECT

    BoardPicture *picture() const { return control<BoardPicture>("Picture1"); }
    void clickAt(QPoint pixel) { QTest::mouseClick(picture(), Qt::LeftButton, {}, pixel); }
    void clickAt(BoardPoint at) { clickAt(BoardPicture::pictureFromBoard(at).toPoint()); }
    QStringList captions() const
    {
        QStringList list;
        for (const char *frame : {"fraPracticeStats", "fraPlayStats", "FraTotalStats"})
            list << control<QGroupBox>(frame)->title();
        return list;
    }
    QStringList figures(int index) const
    {
        QStringList list;
        for (const char *name : {"numThrowsText_%1", "numHitsText_%1", "pctHitsText_%1", "avgDistText_review_%1"})
            list << text(qPrintable(QString::fromLatin1(name).arg(index)));
        return list;
    }
    // Each plotted set: its colour and how many dots it has.
    QList<std::pair<QColor, int>> plots() const
    {
        QList<std::pair<QColor, int>> list;
        for (const PlotSet &set : picture()->plots())
            list.append({set.color, int(set.dots.size())});
        return list;
    }

private slots:
    void init() { startProgram(); }
    void cleanup() { program_.reset(); }

    // Ann's darts at treble 20, written once review is open: three in
    // practice, 0, 12 and 9 units from the aim, two of them trebles; two in
    // a game, 10 and 18 units off, one a treble. Darts aimed at the Any 20
    // are not shown. Wires and misses change nothing; the outer bull shows
    // the bull area, never practised; leaving review clears the plot.
    // A failed read is reported.
    void clickingAnAreaPlotsItsDarts()
    {
        action("mnuModeReview")->trigger();
        StatsStore &store = program_->store();
        const qint64 t20 = *store.insertStatTarget(1, 20, 3);
        const qint64 any20 = *store.insertStatTarget(1, 20, 1);
        for (const PracticeDart &d : {PracticeDart{1, t20, 0, 0, 118, 0, 20, 3}, PracticeDart{1, any20, 0, 5, 150, 5, 20, 1},
                                      PracticeDart{1, t20, 1, 0, 130, 12, 20, 1}, PracticeDart{1, t20, 2, -9, 118, 9, 20, 3}})
            QVERIFY(store.insertStatThrow(d));
        const qint64 game = *store.insertGame({1, GameType::X01_501, SkillLevel::Master, QStringLiteral("Computer")});
        for (const GameDart &d : {GameDart{game, 1, 1, 0, 10, 118, 10, 20, 3, 20, 3}, GameDart{game, 1, 1, 1, 0, 100, 18, 20, 1, 20, 3},
                                  GameDart{game, 1, 1, 2, 0, 140, 7, 20, 1, 20, 1}})
            QVERIFY(store.insertGameDart(d));

        clickAt(aimPoint(3, 20));
        QCOMPARE(captions(), (QStringList{"Practice: Triple 20", "Play: Triple 20", "Totals: Triple 20"}));
        // Averages of 7, 14 and 49 / 5 units.
        QCOMPARE(figures(0), (QStringList{"3", "2", "66.66%", "0.225\""}));
        QCOMPARE(figures(1), (QStringList{"2", "1", "50%", "0.45\""}));
        QCOMPARE(figures(2), (QStringList{"5", "3", "60%", "0.315\""}));
        QCOMPARE(plots(), (QList<std::pair<QColor, int>>{{Qt::black, 3}, {QColor(240, 0, 0), 2}}));
        // The skill factors count the distinct distances written since.
        QCOMPARE(text("lblNsamp"), QStringLiteral("(7 samples)"));

        // A ring wire, a wire between segments, a click off the board.
        const QStringList before = captions() + figures(0) + figures(1) + figures(2);
        for (const QPoint pixel : {QPoint(290, 151), QPoint(283, 112), QPoint(5, 5)})
            clickAt(pixel);
        QCOMPARE(captions() + figures(0) + figures(1) + figures(2), before);
        QCOMPARE(plots().value(1).second, 2);

        QVERIFY(store.insertGameDart({game, 1, 2, 0, 0, 3, 3, 25, 2, 25, 1}));
        clickAt(BoardPoint{0, 13});
        QCOMPARE(captions(), (QStringList{"Practice:  25/Bull", "Play:  25/Bull", "Totals:  25/Bull"}));
        QCOMPARE(figures(0), (QStringList{"0", "0", "N/A", "N/A"}));
        QCOMPARE(figures(1), (QStringList{"1", "1", "100%", "0.096\""}));
        QCOMPARE(figures(2), figures(1));
        QCOMPARE(plots(), (QList<std::pair<QColor, int>>{{Qt::black, 0}, {QColor(240, 0, 0), 1}}));

        action("mnuModePlay")->trigger();
        QVERIFY(plots().isEmpty());

        // Back in review no area is chosen yet; a read that fails is
        // reported and empties the figures.
        action("mnuModeReview")->trigger();
        QCOMPARE(captions()[2], QStringLiteral("Scoring Area"));
        QCOMPARE(figures(0), (QStringList{"", "", "", ""}));
        program_->store().close();
        clickAt(aimPoint(2, 20));
        QCOMPARE(messages_.shown.size(), 1);
        QCOMPARE(messages_.shown[0].kind, QStringLiteral("error"));
        QVERIFY(messages_.shown[0].text.contains(QStringLiteral("not open")));
        QCOMPARE(captions()[0], QStringLiteral("Practice: Double 20"));
        QCOMPARE(figures(1), (QStringList{"", "", "", ""}));
        QVERIFY(plots().isEmpty());
    }
};

QTEST_MAIN(TestReviewMode)
#include "tst_review_mode.moc"
