// The practice model: which target a set aims at, what the Go button offers
// as the set fills, where its darts are kept, and the sequences round the
// board.

#include "core/practice/practice_session.h"

#include "../support/data_table.h"

#include <QRandomGenerator>
#include <QSet>
#include <QTest>

using namespace tavrix;

Q_DECLARE_METATYPE(tavrix::BoardPoint)

namespace {

constexpr int randomItem = itemData(TargetItem::Random);
constexpr int countDownItem = itemData(TargetItem::CountDown);
constexpr int countUpItem = itemData(TargetItem::CountUp);
constexpr int bullItem = itemData(TargetItem::Bull);

// Draws and opens a set, its target row numbered `id`.
SetDraw open(PracticeSession &session, int ringItem, int scoreItem, qint64 id = 1)
{
    QRandomGenerator random(3);
    const SetDraw drawn = session.drawSet(ringItem, scoreItem, random);
    session.openSet(drawn, id);
    return drawn;
}

void placeThree(PracticeSession &session, BoardPoint at)
{
    for (int i = 0; i < 3; ++i)
        session.placeDart(at);
}

} // namespace

class TestPracticeSession : public QObject {
    Q_OBJECT

private slots:
    // What each choice of the two lists aims at, and what it says first.
    void targetOfAChoice_data()
    {
        addTable<int, int, QString, int, int, BoardPoint, QString>({"ringItem", "scoreItem", "text", "value", "ring", "aim", "alert"},
            {{"Double 17", 2, 17, "Double 17", 17, 2, aimPoint(2, 17), ""}, {"Any 20", 1, 20, "Any 20", 20, 1, aimPoint(1, 20), ""},
             {"bull ignores the ring", 3, bullItem, "25 or Bull", 25, 1, {}, ""},
             {"count-down opens at the bull", 3, countDownItem, "Any 25 or Bull", 25, 1, {}, "Starting countdown with bull"},
             {"count-up opens at 1", 3, countUpItem, "Triple 1", 1, 3, aimPoint(3, 1), "Starting count-up with 1"}});
    }
    void targetOfAChoice()
    {
        QFETCH(int, ringItem);
        QFETCH(int, scoreItem);
        PracticeSession session;
        const SetDraw drawn = open(session, ringItem, scoreItem, 7);
        QTEST(drawn.targetText, "text");
        QTEST(session.target().value, "value");
        QTEST(session.target().ring, "ring");
        QTEST(session.target().aim, "aim");
        QCOMPARE(session.target().id, 7);
        QTEST(drawn.alert ? drawn.alert->text : QString(), "alert");
    }

    // "-- Random --" in both lists: every number and ring turns up, the bull
    // about one set in 21, always as ring 1.
    void randomTargets()
    {
        PracticeSession session;
        QRandomGenerator random(20261123);
        const int sets = 21000;
        int bulls = 0;
        QSet<QPair<int, int>> seen;
        for (int i = 0; i < sets; ++i) {
            const PracticeTarget target = session.drawSet(randomItem, randomItem, random).target;
            seen.insert({target.value, target.ring});
            bulls += target.value == 25;
        }
        QCOMPARE(seen.size(), 61);
        QVERIFY2(bulls > 850 && bulls < 1150, qPrintable(QString::number(bulls)));
    }

    // A single set: its button waits for three darts, a fourth is not
    // taken, and confirming says thank you and closes the set; a set that
    // was drawn but never opened (its row not written) changes nothing.
    void aSingleSetFromGoToConfirm()
    {
        PracticeSession session;
        QRandomGenerator random(1);
        session.drawSet(2, countDownItem, random);
        QCOMPARE(session.stage(), PracticeStage::AtRest);
        QCOMPARE(session.sequence(), PracticeSequence::None);
        QCOMPARE(session.placeDart({0, 0}), -1);
        open(session, 2, 20);
        QCOMPARE(session.stage(), PracticeStage::AwaitingDarts);
        QCOMPARE(session.placeDart({0, 196}), 0);
        QCOMPARE(session.placeDart({0, 150}), 1);
        QVERIFY(!session.confirmation(1));
        QCOMPARE(session.placeDart({0, 240}), 2);
        QCOMPARE(session.stage(), PracticeStage::SetComplete);
        QCOMPARE(session.placeDart({0, 0}), -1);
        QCOMPARE(session.dart(2), (BoardPoint{0, 240}));

        QVERIFY(session.confirmation(5));
        session.confirmSet();
        QCOMPARE(session.stage(), PracticeStage::AtRest);
        QCOMPARE(session.placeDart({0, 0}), -1);
    }

    // A count-down asks for the bull, then 20 down to 1, and ends after 21
    // sets; a count-up asks for 1 up to 20, then the bull. While a set of
    // either awaits its darts the button quits it; with three darts it
    // confirms.
    void sequencesWalkRoundTheBoard_data()
    {
        QList<int> down{25}, up;
        for (int n = 1; n <= 20; ++n)
            down << 21 - n, up << n;
        addTable<int, QList<int>, QString, QString>({"scoreItem", "values", "quit", "end"},
            {{"count-down", countDownItem, down, "Quit\nCount\nDown", "Countdown Complete."},
             {"count-up", countUpItem, up << 25, "Quit\nCount\nUp", "Count-up Complete."}});
    }
    void sequencesWalkRoundTheBoard()
    {
        QFETCH(int, scoreItem);
        QFETCH(QList<int>, values);
        PracticeSession session;
        QList<int> asked;
        std::optional<PracticeAlert> last;
        for (int set = 0; set < 21; ++set) {
            open(session, 2, scoreItem, set + 1);
            QCOMPARE(session.stage(), PracticeStage::SequenceRunning);
            QTEST(session.quitCaption(), "quit");
            asked << session.target().value;
            placeThree(session, session.target().aim);
            QCOMPARE(session.stage(), PracticeStage::SetComplete);
            last = session.confirmation(1)->alert;
            session.confirmSet();
            QCOMPARE(!last, set < 20);
        }
        QCOMPARE(asked, values);
        QTEST(last->text, "end");
        QCOMPARE(last->title, QStringLiteral("Whew!"));
        QCOMPARE(session.sequence(), PracticeSequence::None);
        QCOMPARE(session.stage(), PracticeStage::AtRest);
    }

    // Quitting a sequence part way, or a reset, starts both afresh.
    void quittingStartsAfresh()
    {
        PracticeSession session;
        open(session, 1, countUpItem);
        placeThree(session, {});
        session.confirmSet();
        QCOMPARE(open(session, 1, countUpItem).targetText, QStringLiteral("Any 2"));
        session.quitSequence();
        QCOMPARE(session.stage(), PracticeStage::AtRest);
        QCOMPARE(open(session, 1, countUpItem).alert->text, QStringLiteral("Starting count-up with 1"));
        session.reset();
        QCOMPARE(open(session, 1, countDownItem).alert->text, QStringLiteral("Starting countdown with bull"));
    }
};

QTEST_GUILESS_MAIN(TestPracticeSession)
#include "tst_practice_session.moc"
