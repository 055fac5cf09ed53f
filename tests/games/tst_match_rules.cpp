// The rules of a match of legs and sets: the format's bounds, the score, who
// throws first in each leg, the end of the match and its figures. Players
// are written A (0) and B (1); every expectation was worked out by hand.

#include "../support/data_table.h"
#include "core/games/match_rules.h"

#include <QTest>

using namespace tavrix;

Q_DECLARE_METATYPE(tavrix::MatchFormat)
Q_DECLARE_METATYPE(tavrix::LegFigures)

namespace {

int player(QChar c) { return c == u'B' ? 1 : 0; }
QChar letter(int p) { return p == 1 ? u'B' : u'A'; }

// Plays the legs won as `winners` says, each leg 300 points in 15 darts for
// both players; returns what each leg did: Leg, Set or Match won.
QString play(Match &match, const QString &winners)
{
    QString outcomes;
    for (QChar w : winners) {
        switch (match.recordLeg(player(w), {{300, 300}, {15, 15}})) {
        case LegOutcome::LegWon: outcomes += u'L'; break;
        case LegOutcome::SetWon: outcomes += u'S'; break;
        case LegOutcome::MatchWon: outcomes += u'M'; break;
        default: outcomes += u'?';
        }
    }
    return outcomes;
}

} // namespace

class TestMatchRules : public QObject {
    Q_OBJECT

private slots:
    // The format's bounds: a format out of them is named wrong and clamped
    // to the nearest one, which a match then plays.
    void formatBounds_data()
    {
        addTable<MatchFormat, bool, QString>(
            {"format", "valid", "clampedText"},
            {{"single game", MatchFormat::singleGame(), true, "Single game"},
             {"2 legs", MatchFormat::firstToLegs(2), true, "First to 2 legs"},
             {"11 legs", MatchFormat::firstToLegs(11), true, "First to 11 legs"},
             {"1 leg", MatchFormat::firstToLegs(1), false, "First to 2 legs"},
             {"12 legs", MatchFormat::firstToLegs(12), false, "First to 11 legs"},
             {"negative legs", MatchFormat::firstToLegs(-5), false, "First to 2 legs"},
             {"2 sets of 3", MatchFormat::firstToSets(2, 3), true, "First to 2 sets of 3 legs"},
             {"7 sets of 5", MatchFormat::firstToSets(7, 5), true, "First to 7 sets of 5 legs"},
             {"8 sets", MatchFormat::firstToSets(8, 3), false, "First to 7 sets of 3 legs"},
             {"1 set", MatchFormat::firstToSets(1, 2), false, "First to 2 sets of 2 legs"},
             {"sets of 6", MatchFormat::firstToSets(3, 6), false, "First to 3 sets of 5 legs"},
             {"sets of 1", MatchFormat::firstToSets(3, 1), false, "First to 3 sets of 2 legs"},
             {"single game of 5 legs", {MatchKind::SingleGame, 5, 1}, false, "Single game"},
             {"legs match with sets", {MatchKind::Legs, 3, 2}, false, "First to 3 legs"},
             {"unknown kind", {static_cast<MatchKind>(9), 3, 3}, false, "Single game"}});
    }
    void formatBounds()
    {
        QFETCH(MatchFormat, format);
        QFETCH(bool, valid);
        QFETCH(QString, clampedText);

        QCOMPARE(format.isValid(), valid);
        QCOMPARE(format.problem().isEmpty(), valid);
        QCOMPARE(format.clamped().text(), clampedText);
        QVERIFY(format.clamped().isValid());
        QCOMPARE(Match(format).format(), format.clamped());
    }

    // Who throws first in each leg and in which set it is: the cork winner
    // begins, the throw alternates leg by leg, and each set is begun by the
    // player who did not begin the one before, even where plain alternation
    // would give the other (a set of 2 or 4 legs).
    void firstThrowers_data()
    {
        addTable<MatchFormat, int, QString, QString, QString>(
            {"format", "cork", "winners", "firsts", "sets"},
            {{"single game", MatchFormat::singleGame(), 1, "A", "B", "1"},
             {"legs, cork A", MatchFormat::firstToLegs(3), 0, "ABABA", "ABABA", "11111"},
             {"legs, cork B", MatchFormat::firstToLegs(3), 1, "AAA", "BAB", "111"},
             {"sets of 2 legs", MatchFormat::firstToSets(2, 2), 0, "AA" "BAB" "AA", "AB" "BAB" "AB", "11" "222" "33"},
             {"sets of 3 legs", MatchFormat::firstToSets(2, 3), 1, "ABAA" "BBAB" "BBB", "BABA" "ABAB" "BAB",
              "1111" "2222" "333"}});
    }
    void firstThrowers()
    {
        QFETCH(MatchFormat, format);
        QFETCH(int, cork);
        QFETCH(QString, winners);
        QFETCH(QString, firsts);
        QFETCH(QString, sets);

        Match match(format, cork);
        play(match, winners);
        QString recorded, setNumbers;
        for (const LegRecord &leg : match.legs()) {
            recorded += letter(leg.firstThrower);
            setNumbers += QString::number(leg.set);
        }
        QCOMPARE(recorded, firsts);
        QCOMPARE(setNumbers, sets);
        QVERIFY(match.isOver());
        QCOMPARE(match.nextFirstThrower(), std::nullopt);
    }

    // The score in legs and sets, and the winner: a set won by the player
    // who trails in legs overall, and a match not yet won.
    void score_data()
    {
        addTable<MatchFormat, QString, QString, int, QList<int>>(
            {"format", "winners", "outcomes", "winner", "legsSetsSetLegs"},
            {{"single game", MatchFormat::singleGame(), "B", "M", 1, {0, 1, 0, 0, 0, 1}},
             {"legs 3-2", MatchFormat::firstToLegs(3), "ABBAA", "LLLLM", 0, {3, 2, 0, 0, 3, 2}},
             {"sets 3-1 of 3 legs", MatchFormat::firstToSets(3, 3), "AAA" "BBAB" "ABAA" "AABA", "LLS" "LLLS" "LLLS" "LLLM",
              0, {10, 5, 3, 1, 3, 1}},
             {"set to the trailer", MatchFormat::firstToSets(2, 3), "AAA" "ABABB", "LLS" "LLLLS", -1, {5, 3, 1, 1, 0, 0}}});
    }
    void score()
    {
        QFETCH(MatchFormat, format);
        QFETCH(QString, winners);
        QFETCH(QString, outcomes);
        QFETCH(int, winner);
        QFETCH(QList<int>, legsSetsSetLegs);

        Match match(format, 0);
        QCOMPARE(play(match, winners), outcomes);
        QCOMPARE(match.winner().value_or(-1), winner);
        QCOMPARE(match.isOver(), winner >= 0);
        QCOMPARE((QList<int>{match.legsWon(0), match.legsWon(1), match.setsWon(0), match.setsWon(1), match.setLegs(0),
                             match.setLegs(1)}),
                 legsSetsSetLegs);
    }

    // A leg that cannot be recorded is refused with its reason and changes
    // nothing; 180 in three darts is the most a leg's figures allow.
    void refusedLegs_data()
    {
        addTable<QString, int, LegFigures, QString>(
            {"before", "winner", "figures", "problem"},
            {{"180 in 3 darts", "A", 1, {{120, 180}, {3, 3}}, ""},
             {"after the match is won", "AA", 0, {{300, 300}, {15, 15}}, "The match is over: no more legs are played."},
             {"winner 2", "A", 2, {{300, 300}, {15, 15}}, "A leg is won by one of the two players."},
             {"winner -1", "A", -1, {{300, 300}, {15, 15}}, "A leg is won by one of the two players."},
             {"negative darts", "A", 1, {{0, 300}, {-3, 15}}, "Points and darts cannot be negative."},
             {"181 in 3 darts", "A", 1, {{120, 181}, {3, 3}}, "No dart scores more than 60 points."},
             {"winner without darts", "A", 1, {{300, 0}, {15, 0}}, "The winner of a leg has thrown at least one dart."}});
    }
    void refusedLegs()
    {
        QFETCH(QString, before);
        QFETCH(int, winner);
        QFETCH(LegFigures, figures);
        QFETCH(QString, problem);

        Match match(MatchFormat::firstToLegs(2), 0);
        play(match, before);
        const auto first = match.nextFirstThrower();
        QCOMPARE(match.legProblem(winner, figures), problem);
        const LegOutcome outcome = match.recordLeg(winner, figures);
        if (!problem.isEmpty()) {
            QCOMPARE(outcome, LegOutcome::Refused);
            QCOMPARE(match.legs().size(), before.size());
            QCOMPARE(match.legsWon(0) + match.legsWon(1), int(before.size()));
            QCOMPARE(match.nextFirstThrower(), first);
            QCOMPARE(match.darts(0), 15 * int(before.size()));
        } else {
            QCOMPARE(outcome, LegOutcome::LegWon);
        }
    }

    // The averages sum points and darts over the legs: 1422 points in 42
    // darts and 1201 in 42; each leg keeps its winner and the winner's darts.
    void averagesOverTheMatch()
    {
        Match match(MatchFormat::firstToLegs(2), 0);
        QCOMPARE(match.average(0), 0.0);
        QCOMPARE(match.recordLeg(0, {{501, 400}, {15, 15}}), LegOutcome::LegWon);
        QCOMPARE(match.recordLeg(1, {{420, 501}, {15, 18}}), LegOutcome::LegWon);
        QCOMPARE(match.recordLeg(0, {{501, 300}, {12, 9}}), LegOutcome::MatchWon);
        QCOMPARE(match.average(0), 1422.0 / 14);
        QCOMPARE(match.average(1), 1201.0 / 14);
        QList<int> legs;
        for (const LegRecord &leg : match.legs())
            legs << *leg.winner << leg.winningDarts();
        QCOMPARE(legs, (QList<int>{0, 15, 1, 18, 0, 12}));
    }

    // An abandoned leg ends the match with no winner; its darts count in the
    // averages (601 points in 21 darts, 440 in 21), and nothing follows it.
    void abandonedMatch()
    {
        Match match(MatchFormat::firstToLegs(3), 1);
        match.recordLeg(0, {{501, 300}, {15, 15}});
        QCOMPARE(match.abandonLeg({{100, 140}, {6, 6}}), LegOutcome::Abandoned);
        QVERIFY(match.isOver());
        QVERIFY(match.isAbandoned());
        QCOMPARE(match.winner(), std::nullopt);
        QCOMPARE(match.nextFirstThrower(), std::nullopt);
        QVERIFY(match.legs().last().abandoned());
        QCOMPARE(match.legs().last().firstThrower, 0);
        QCOMPARE(match.average(0), 601.0 / 7);
        QCOMPARE(match.average(1), 440.0 / 7);
        QCOMPARE(match.recordLeg(1, {{300, 300}, {15, 15}}), LegOutcome::Refused);
        QCOMPARE(match.abandonLeg({}), LegOutcome::Refused);
        QCOMPARE(match.legs().size(), 2);
    }
};


QTEST_GUILESS_MAIN(TestMatchRules)
#include "tst_match_rules.moc"
