#include "core/training/drill.h"
#include "core/training/drill_parts.h"

#include "../support/data_table.h"

#include <QTest>

using namespace tavrix;

namespace {

// A dart in the short form the tables use: "S20", "D16", "T19", "25" (outer
// bull), "50" (bull), "M" (wire or miss), "V" (a void dart in a gap).
DartScore dart(const QString &token)
{
    if (token == QLatin1String("M"))
        return {0, 0};
    if (token == QLatin1String("V"))
        return {1, -999};
    if (token == QLatin1String("25"))
        return {1, 25};
    if (token == QLatin1String("50"))
        return {2, 25};
    const int multiplier = QStringLiteral("SDT").indexOf(token.at(0)) + 1;
    return {multiplier, token.mid(1).toInt()};
}

// Plays a script of darts and "|" (the set confirmed); the outcomes of the
// darts as letters (H hit, S Shanghai, F finished, B bust, R round failed,
// O over, - nothing), "!" after a dart that ends its set; and their points.
struct Played {
    QString events;
    int points = 0;
};
Played play(Drill &drill, const QString &script)
{
    Played played;
    const QString letters = QStringLiteral("-HSFBRO");
    for (const QString &token : script.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (token == QLatin1String("|")) {
            drill.endSet();
            continue;
        }
        const DrillDartOutcome outcome = drill.applyDart(dart(token));
        if (!played.events.isEmpty())
            played.events += QLatin1Char(' ');
        played.events += letters.at(int(outcome.event));
        if (outcome.setEnds)
            played.events += QLatin1Char('!');
        played.points += outcome.points;
    }
    return played;
}

QString times(const QString &script, int count)
{
    QStringList parts;
    for (int i = 0; i < count; ++i)
        parts << script;
    return parts.join(QLatin1Char(' '));
}

// Around the Clock hitting every target with one dart of `prefix` ("S",
// "D", "T"), three to a set, then the outer bull.
QString clockRun(const QString &prefix)
{
    QString script;
    for (int number = 1; number <= 20; ++number)
        script += prefix + QString::number(number) + (number % 3 == 0 ? QStringLiteral(" | ") : QStringLiteral(" "));
    return script + QStringLiteral("25");
}

// The pattern ("D%1 | ") for each number from 1 to 20 in turn.
QString eachNumber(const char *pattern)
{
    QString script;
    for (int n = 1; n <= 20; ++n)
        script += QString::fromLatin1(pattern).arg(n);
    return script;
}

// JDC thrown perfectly: a Shanghai in every Shanghai round, every double.
QString perfectJdc()
{
    QString script;
    auto shanghais = [&script](int from, int to) {
        for (int n = from; n <= to; ++n)
            script += QStringLiteral("S%1 D%1 T%1 | ").arg(n);
    };
    shanghais(10, 15);
    for (int n = 1; n <= 20; ++n)
        script += QStringLiteral("D%1 ").arg(n) + (n % 3 == 0 ? QStringLiteral("| ") : QString());
    script += QStringLiteral("50 | ");
    shanghais(15, 20);
    return script;
}

} // namespace

class TestDrills : public QObject {
    Q_OBJECT

private slots:
    void drillNamesInListOrder()
    {
        QStringList names;
        for (DrillKind kind : allDrills())
            names << drillName(kind);
        QCOMPARE(names, QStringList({"Around the Clock (Any)", "Around the Clock (Doubles)",
                                     "Around the Clock (Trebles)", "Bob's 27", "121", "Catch 40", "Shanghai",
                                     "Halve-It", "JDC Challenge", "99 darts at one target"}));
    }

    // Each drill's rules as the score, the end and the target after a
    // script; every figure worked out by hand from the rules.
    void scoresAfterScript_data()
    {
        using K = DrillKind;
        const QString skipTarget = QStringLiteral("| |"); // a Catch 40 target given up
        addTable<DrillKind, int, QString, int, bool, bool, int, QString>(
            {"kind", "number", "script", "score", "over", "completed", "shanghais", "target"},
            {{"clock any, one dart a target", K::AroundTheClockAny, 0, clockRun("S"), 21, true, true, 0, "Bull"},
             {"clock trebles take the outer bull last", K::AroundTheClockTrebles, 0, clockRun("T"), 21, true, true, 0,
              "Bull"},
             {"clock doubles ignore a single of the target", K::AroundTheClockDoubles, 0, "S1 T1 M", 3, false, false, 0,
              "D1"},
             {"clock moves on within the set", K::AroundTheClockDoubles, 0, "D1 D2 S3", 3, false, false, 0, "D3"},
             {"clock counts no given-up dart", K::AroundTheClockAny, 0, "S1 | D2 | M |", 3, false, false, 0, "3"},
             {"clock ignores a fourth dart", K::AroundTheClockAny, 0, "M M M S1", 3, false, false, 0, "1"},
             {"bob's 27 four rounds missed", K::Bobs27, 0, "| | | |", 7, false, false, 0, "D5"},
             {"bob's 27 below zero in D5", K::Bobs27, 0, "| | | | |", 0, true, false, 0, "D5"},
             {"bob's 27 three misses a round", K::Bobs27, 0, times("M M M |", 5), 0, true, false, 0, "D5"},
             {"bob's 27 two hits", K::Bobs27, 0, "D1 D1 M | S2 D2 |", 35, false, false, 0, "D3"},
             {"bob's 27 every double, outer bulls", K::Bobs27, 0, eachNumber("D%1 | ") + "25 25 25", 397, true, true, 0,
              "Bull"},
             {"bob's 27 every double and the bull", K::Bobs27, 0, eachNumber("D%1 | ") + "M 50", 497, false, false, 0,
              "Bull"},
             {"121 finished, then 122", K::OneTwentyOne, 0, "T20 T19 D2 |", 121, false, false, 0, "122"},
             {"121 with the bull as the double", K::OneTwentyOne, 0, "T20 S11 50 |", 121, false, false, 0, "122"},
             {"122 failed, back to 121", K::OneTwentyOne, 0, "T20 T19 D2 | M M M | M M M | T20 M V", 121, false,
              false, 0, "121"},
             {"121 bust goes back to the set's start", K::OneTwentyOne, 0, "S1 | T20 T20 T20", 0, false, false, 0,
              "120"},
             {"121 bust at 0 without a double", K::OneTwentyOne, 0, "T20 T19 S4 |", 0, false, false, 0, "121"},
             {"121 bust leaving 1 ends the set", K::OneTwentyOne, 0, "T20 T20 S20 | T20", 0, false, false, 0, "61"},
             {"121 bust below 0", K::OneTwentyOne, 0, "T20 S20 | T20 T20", 0, false, false, 0, "41"},
             {"121 ten attempts given up", K::OneTwentyOne, 0, times("| | |", 10), 0, true, true, 0, "121"},
             {"catch 40: 61 in 2", K::Catch40, 0, "T15 D8", 3, false, false, 0, "62"},
             {"catch 40: 62 in 3", K::Catch40, 0, skipTarget + " S10 T12 D8", 2, false, false, 0, "63"},
             {"catch 40: 61 in 4", K::Catch40, 0, "S20 S1 M | D20", 1, false, false, 0, "62"},
             {"catch 40: a given-up dart counts", K::Catch40, 0, "S20 S1 | D20", 1, false, false, 0, "62"},
             {"catch 40: 61 in 6", K::Catch40, 0, "M M M | M T15 D8", 1, false, false, 0, "62"},
             {"catch 40: 98 in 3 scores 2", K::Catch40, 0, times(skipTarget, 37) + " T20 S6 D16", 2, false, false, 0,
              "99"},
             {"catch 40: 99 in 3 scores 3", K::Catch40, 0, times(skipTarget, 38) + " T19 S10 D16", 3, false, false, 0,
              "100"},
             {"catch 40: 99 in 4 scores 1", K::Catch40, 0, times(skipTarget, 38) + " T19 S10 M | D16", 1, false, false,
              0, "100"},
             {"catch 40: 100 last", K::Catch40, 0, times(skipTarget, 39) + " T20 D20", 3, true, true, 0, "100"},
             {"catch 40 all missed", K::Catch40, 0, times(skipTarget, 40), 0, true, true, 0, "100"},
             {"shanghai only the round's number", K::Shanghai, 0, "T20 S1 D2 |", 1, false, false, 0, "2"},
             {"shanghai in round 2", K::Shanghai, 0, "| T2 S2 D2", 12, false, false, 1, "3"},
             {"no shanghai without the double", K::Shanghai, 0, "| S2 S2 T2", 10, false, false, 0, "3"},
             {"shanghai trebles throughout", K::Shanghai, 0, eachNumber("T%1 | "), 630, true, true, 0, "20"},
             {"halve-it halves an odd total down", K::HalveIt, 0, "S20 | S19 | M |", 19, false, false, 0,
              "18"},
             {"halve-it bull 50 is any double", K::HalveIt, 0, "| | 50 |", 50, false, false, 0, "18"},
             {"halve-it every round hit", K::HalveIt, 0, "T20 | T19 | D16 | T18 | T17 | T17 | T16 | T15 | 50 |", 448,
              true, true, 0, "Bull"},
             {"halve-it any treble", K::HalveIt, 0, "S20 | S19 | D1 | S18 | S1 D2 T5 |", 74, false, false, 0, "17"},
             {"halve-it from 0", K::HalveIt, 0, times("|", 9), 0, true, true, 0, "Bull"},
             {"jdc shanghai earns 100", K::JdcChallenge, 0, "S10 D10 T10", 160, false, false, 1, "11"},
             {"jdc doubles one dart each", K::JdcChallenge, 0, times("|", 6) + " D1 D2 D3 | D4 M D6", 250, false,
              false, 0, "D7"},
             {"jdc doubles given up with the set", K::JdcChallenge, 0, times("|", 6) + " D1 | D4", 100, false, false, 0,
              "D5"},
             {"jdc only the bull ends the doubles", K::JdcChallenge, 0, times("|", 12) + " D19 D20 25", 100, false,
              false, 0, "15"},
             {"jdc thrown perfectly", K::JdcChallenge, 0, perfectJdc(), 3330, true, true, 12, "20"},
             {"99 darts at the bull area", K::NinetyNineDarts, 25, "25 50 S20 | 50 50 50", 9, false, false, 0, "Bull"},
             {"99 darts at 19", K::NinetyNineDarts, 19, "S19 D19 T19 | T20 S3", 6, false, false, 0, "19"},
             {"99 darts all trebles", K::NinetyNineDarts, 20, times("T20 T20 T20 |", 33), 297, true, true, 0, "20"},
             {"99 darts at no area aims at 20", K::NinetyNineDarts, 0, "S20 D1", 1, false, false, 0, "20"}});
    }
    void scoresAfterScript()
    {
        QFETCH(DrillKind, kind);
        QFETCH(int, number);
        QFETCH(QString, script);
        const auto drill = makeDrill(kind, number);
        play(*drill, script);
        QTEST(drill->score(), "score");
        QTEST(drill->over(), "over");
        QTEST(drill->completed(), "completed");
        QTEST(drill->shanghais(), "shanghais");
        QTEST(drill->target().text, "target");
    }

    // What each dart reports, after a script played before it.
    void dartOutcomes_data()
    {
        using K = DrillKind;
        addTable<DrillKind, QString, QString, QString, int>(
            {"kind", "before", "script", "events", "points"},
            {{"clock doubles", K::AroundTheClockDoubles, "", "S1 D1 D2", "- H H!", 0},
             {"clock bull ends it", K::AroundTheClockDoubles, clockRun("D").chopped(2) + "|", "M 50 S1", "- O! -", 0},
             {"bob's 27 round failed", K::Bobs27, "", "M M M M", "- - R! -", -2},
             {"bob's 27 below zero", K::Bobs27, "| | | |", "M M M S1", "- - O! -", -10},
             {"bob's 27 hit", K::Bobs27, "", "D1 S1 D1", "H - H!", 4},
             {"121 bust ends the set", K::OneTwentyOne, "", "T20 T20 M", "H B! -", 60},
             {"121 finish", K::OneTwentyOne, "", "T20 T19 D2 S1", "H H F! -", 121},
             {"121 last attempt", K::OneTwentyOne, times("| | |", 9), "M M M | M M M | M V M S1",
              "- - -! - - -! - - O! -", 0},
             {"121 attempt failed", K::OneTwentyOne, "", "M M M | M M M | M M M", "- - -! - - -! - - R!", 0},
             {"catch 40 last target", K::Catch40, times("| |", 39), "T20 D20", "H O!", 100},
             {"catch 40 target missed", K::Catch40, "M M M |", "M M M", "- - R!", 0},
             {"shanghai", K::Shanghai, "", "S1 D1 T1", "H H S!", 6},
             {"shanghai in the last round", K::Shanghai, times("|", 19), "S20 D20", "H H", 60},
             {"jdc shanghai", K::JdcChallenge, "", "T10 S10 D10", "H H S!", 160},
             {"halve-it halved", K::HalveIt, "S20 S20 S1 |", "M M M", "- - R!", -20},
             {"99 darts last set", K::NinetyNineDarts, times("|", 32), "D20 M T20 S20", "H - O! -", 5}});
    }
    void dartOutcomes()
    {
        QFETCH(DrillKind, kind);
        QFETCH(QString, before);
        QFETCH(QString, script);
        const auto drill = makeDrill(kind);
        play(*drill, before);
        const Played played = play(*drill, script);
        QTEST(played.events, "events");
        QTEST(played.points, "points");
    }

    // The first dart of each checkout is aimed so that what it leaves is
    // even, and not 1: a double can always follow.
    void checkoutAimLeavesADouble()
    {
        for (int remaining = 2; remaining <= 130; ++remaining) {
            const DrillTarget target = checkoutTarget(remaining);
            const DartScore first{target.aimMultiplier, target.aimNumber};
            const int left = remaining - first.points();
            QVERIFY2(left >= 0 && left != 1 && left % 2 == 0 && (left > 0 || first.isDouble()),
                     qPrintable(QString::number(remaining)));
            QCOMPARE(target.aim, aimPoint(first.multiplier, first.number));
        }
    }
    void checkoutAim_data()
    {
        addTable<int, int, int>({"remaining", "number", "multiplier"},
                                {{"40", 40, 20, 2}, {"50", 50, 25, 2}, {"41", 41, 9, 1}, {"57", 57, 17, 1},
                                 {"60", 60, 20, 1}, {"33", 33, 1, 1}, {"17", 17, 1, 1}, {"121", 121, 19, 3},
                                 {"100", 100, 20, 3}});
    }
    void checkoutAim()
    {
        QFETCH(int, remaining);
        const DrillTarget target = checkoutTarget(remaining);
        QTEST(target.aimNumber, "number");
        QTEST(target.aimMultiplier, "multiplier");
        QCOMPARE(target.remaining, remaining);
        QCOMPARE(target.text, QString::number(remaining));
    }

    void progressTexts_data()
    {
        using K = DrillKind;
        addTable<DrillKind, QString, QString>(
            {"kind", "script", "text"},
            {{"bob's 27 fresh", K::Bobs27, "", "Round 1 of 21 · 3 darts left"},
             {"bob's 27 one thrown", K::Bobs27, "| | M", "Round 3 of 21 · 2 darts left"},
             {"121 after a set", K::OneTwentyOne, "S1 |", "Target 121 · attempt 1 of 10 · 6 darts left"},
             {"121 after a finish", K::OneTwentyOne, "T20 T19 D2", "Target 122 · attempt 2 of 10 · 9 darts left"},
             {"catch 40 fresh", K::Catch40, "M", "Target 61 · 5 darts left"},
             {"clock", K::AroundTheClockAny, "S1 M |", "Target 2 · 2 darts used"},
             {"halve-it", K::HalveIt, "| |", "Round 3 of 9 · 3 darts left"}});
    }
    void progressTexts()
    {
        QFETCH(DrillKind, kind);
        QFETCH(QString, script);
        const auto drill = makeDrill(kind);
        play(*drill, script);
        QTEST(drill->progressText(), "text");
    }

    // Targets name their area and the point to aim at: the bull area is
    // aimed at the centre, an "any" round at no one area.
    void targetsOfRounds()
    {
        const auto bobs = makeDrill(DrillKind::Bobs27);
        QCOMPARE(bobs->target().aim, aimPoint(2, 1));
        play(*bobs, eachNumber("D%1 | "));
        QCOMPARE(bobs->target().number, 25);
        QCOMPARE(bobs->target().multiplier, 2);
        QCOMPARE(bobs->target().aim, BoardPoint{});

        const auto halveIt = makeDrill(DrillKind::HalveIt);
        play(*halveIt, "| | | |");
        QCOMPARE(halveIt->target().text, QStringLiteral("Any treble"));
        QCOMPARE(halveIt->target().anyOfMultiplier, 3);
        QCOMPARE(halveIt->target().aimNumber, 0);

        QCOMPARE(makeDrill(DrillKind::AroundTheClockTrebles)->target().text, QStringLiteral("T1"));
        QVERIFY(makeDrill(DrillKind::AroundTheClockAny)->lowerIsBetter());
        QVERIFY(!makeDrill(DrillKind::Bobs27)->lowerIsBetter());
    }
};

QTEST_GUILESS_MAIN(TestDrills)
#include "tst_drills.moc"
