#include "core/practice/practice_rules.h"

#include <QRandomGenerator>
#include <QSet>
#include <QTest>

#include <cmath>

using namespace tavrix;

class TestPracticeRules : public QObject {
    Q_OBJECT

    static PracticeScore scoreAt(double x, double y)
    {
        return practiceScore(std::hypot(x, y), angleFromXY(x, y));
    }

private slots:
    // The bull area keeps its ring code as the score; everything else keeps
    // ring and segment; off the board and the gaps of the ring table are
    // ring -999 with no score. (The bull, the outer bull, single and double
    // 20 and a miss are written through the program in tst_practice.)
    void practiceScorePairs()
    {
        QCOMPARE(scoreAt(0, 7.5), (PracticeScore{1, 0}));
        QCOMPARE(scoreAt(0, 19.5), (PracticeScore{0, 20}));
        QCOMPARE(scoreAt(0, 118), (PracticeScore{3, 20}));
        QCOMPARE(scoreAt(0, 7.000005), (PracticeScore{-999, 0}));
    }

    // "-- Random --" in both lists: every number and ring turns up, the bull
    // about one set in 21, always as ring 1.
    void randomTargets()
    {
        PracticeState state;
        QRandomGenerator random(20261123);
        const int sets = 21000;
        int bulls = 0;
        QSet<QPair<int, int>> seen;
        for (int i = 0; i < sets; ++i) {
            openPracticeSet(state, randomChoice, randomChoice, random);
            seen.insert({state.targetValue, state.targetRing});
            bulls += state.targetValue == 25;
        }
        QCOMPARE(seen.size(), 61);
        QVERIFY2(bulls > 850 && bulls < 1150, qPrintable(QString::number(bulls)));
    }

    // A count-down asks for the bull, then 20 down to 1, and ends after 21
    // sets; a count-up asks for 1 up to 20, then the bull; quitting starts
    // both afresh. (A count-down's opening alert, first target and quit
    // caption, and a single set's alert, are checked in tst_practice.)
    void sequences()
    {
        PracticeState state;
        QRandomGenerator random(5);
        OpenedSet set = openPracticeSet(state, 2, countDownChoice, random);
        for (int i = 0; i < 20; ++i) {
            QVERIFY(!confirmPracticeSet(state));
            set = openPracticeSet(state, 2, countDownChoice, random);
        }
        QCOMPARE(set.targetText, QStringLiteral("Double 1"));
        QCOMPARE(confirmPracticeSet(state),
                 (PracticeAlert{QStringLiteral("Countdown Complete."), QStringLiteral("Whew!")}));
        QVERIFY(!state.sequenceActive());

        set = openPracticeSet(state, 3, countUpChoice, random);
        QCOMPARE(set.alert->text, QStringLiteral("Starting count-up with 1"));
        QCOMPARE(set.alert->title, QStringLiteral("Starting Count-up"));
        QCOMPARE(set.targetText, QStringLiteral("Triple 1"));
        QCOMPARE(quitSequenceCaption(state), QStringLiteral("Quit\nCount\nUp"));
        for (int i = 0; i < 20; ++i) {
            QVERIFY(!confirmPracticeSet(state));
            set = openPracticeSet(state, 3, countUpChoice, random);
        }
        QCOMPARE(set.targetText, QStringLiteral("Any 25 or Bull"));
        QCOMPARE(confirmPracticeSet(state)->text, QStringLiteral("Count-up Complete."));

        openPracticeSet(state, 1, countUpChoice, random);
        confirmPracticeSet(state);
        quitPracticeSequences(state);
        QCOMPARE(openPracticeSet(state, 1, countUpChoice, random).targetText, QStringLiteral("Any 1"));
    }
};

QTEST_APPLESS_MAIN(TestPracticeRules)
#include "tst_practice_rules.moc"
