// The game model without any widget: a scripted opponent plays whole games
// through the Thrower interface against darts entered for the local player,
// as the play controller enters them.

#include "../support/board_points.h"
#include "core/advice/chart_advisor.h"
#include "core/games/game_session.h"
#include "core/games/thrower.h"
#include "core/opponent/local_player.h"
#include "core/session/session.h"

#include <QTest>

using namespace tavrix;

namespace {

// An opponent that throws its cork and its sets from a script, at once.
struct ScriptedOpponent : Thrower {
    BoardPoint cork;
    QList<QStringList> sets;
    bool marksAtThisBoard() const override { return false; }
    void throwCork(GameSession &game, int) override
    {
        game.placeDart(cork);
        game.confirmCork();
    }
    void takeTurn(GameSession &game, int) override
    {
        const QStringList set = sets.isEmpty() ? QStringList{} : sets.takeFirst();
        for (const QString &dart : set)
            game.placeDart(at(dart));
        game.reportTurn(QStringLiteral("threw ") + set.join(QLatin1Char(',')));
    }
    void stop() override {}
};

// Against Bob at this board; 301 doubles in, every game doubles out.
GameOptions options(GameType type, bool keepStats = false)
{
    return {.type = type, .opponent = OpponentKind::Human, .doubleIn = type == GameType::X01_301,
            .keepStats = keepStats, .names = {QStringLiteral("Bob"), QStringLiteral("Ann")}};
}

} // namespace

class TestGameSession : public QObject {
    Q_OBJECT

    CheckoutChart chart_ = testChart();
    ChartAdvisor advisor_{chart_};
    Session session_;
    ScriptedOpponent bob_;
    LocalPlayer ann_;
    std::unique_ptr<GameSession> game_;

    // Bob's cork comes first; with Ann's at `annCork` the first turn begins.
    void start(const GameOptions &options, std::optional<BoardPoint> annCork = std::nullopt)
    {
        game_->chooseOptions(options);
        game_->prepare();
        game_->start(options, 7, 2);
        if (annCork) {
            game_->placeDart(*annCork);
            game_->confirmCork();
            game_->nextTurn();
        }
    }
    // Ann marks a set as the board would, aiming every dart at `target`.
    void annThrows(const QStringList &darts, const QString &target = QStringLiteral("T20"))
    {
        QCOMPARE(game_->currentThrower(), 2);
        for (int i = 0; i < darts.size(); ++i) {
            game_->setTarget(i, at(target));
            QCOMPARE(game_->placeDart(at(darts[i])), i);
        }
    }

private slots:
    void init()
    {
        session_.currentPlayerId = 3;
        bob_ = ScriptedOpponent{};
        game_ = std::make_unique<GameSession>(advisor_, session_);
        game_->setThrowers(&bob_, &ann_);
    }

    // A whole 501, double out: the cork, sets that score, a bust that keeps
    // the score, the finish on a double; the averages; the sets numbered for
    // Ann only; the tallies, kept while the options stay. (The game's row,
    // its darts' rows and the texts at its end are read from the window in
    // tst_games.)
    void aScriptedOpponentPlaysA501()
    {
        bob_.cork = {0, 50};
        bob_.sets = {{"S1", "S1", "S1"}, {"M", "M", "M"}, {"S5", "S5", "S5"}};
        start(options(GameType::X01_501, true));
        game_->placeDart({0, 10});
        game_->confirmCork();
        // Bob's cork came from the script; Ann's was nearer. (The phases and
        // the cork's row are checked through the window, in tst_games.)
        QCOMPARE(game_->corkResultText(),
                 QStringLiteral("\nBob's dart: 1.608\"\nAnn's dart: 0.321\"\n\nAnn goes first.\n(Click \"Ok\")"));
        QCOMPARE(game_->corkRows().value(0).dist, 10.0);

        QStringList column;
        QList<GameDart> rows;
        auto confirm = [&] {
            const SetOutcome outcome = game_->scoreSet();
            column << (outcome.won ? QStringLiteral("won") : outcome.columnLine);
            rows << outcome.rows;
            if (!outcome.won)
                game_->nextTurn();
            return outcome;
        };
        game_->nextTurn();
        annThrows({"T20", "T20", "T20"});
        QCOMPARE(confirm().applause, std::optional(SoundCue::Applause140));
        confirm();
        annThrows({"T20", "T20", "T20"});
        confirm();
        confirm(); // Bob misses
        annThrows({"T20", "T20", "D20"});
        QVERIFY(confirm().bust);
        confirm();
        annThrows({"T20", "T19", "D12"}, QStringLiteral("D12"));
        QVERIFY(confirm().won);
        QCOMPARE(column, (QStringList{"\n321", "\n498", "\n141", "*", "*", "\n483", "won"}));
        const LocalTallies &tallies = game_->tallies();
        QCOMPARE((QList<int>{tallies.localWins, tallies.localBestOut, tallies.localBestLeg}), (QList<int>{1, 141, 12}));
        // Three-dart averages: Ann's bust counts as darts, her finish in
        // full; Bob's misses count as darts.
        QCOMPARE(game_->glance(2).detail, QStringLiteral("Avg 125.25"));
        QCOMPARE(game_->glance(1).detail, QStringLiteral("Avg 6.00"));
        // What a match counts of the leg: the bust scores nothing.
        QCOMPARE(game_->legFigures().points, (std::array<int, 2>{18, 501}));
        QCOMPARE(game_->legFigures().darts, (std::array<int, 2>{9, 12}));

        // Ann's sets are numbered 1 to 4; Bob's turns are not hers to record.
        QList<int> sets;
        for (const GameDart &dart : std::as_const(rows))
            sets << dart.setSeq;
        QCOMPARE(sets, (QList<int>{1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4}));
        // Aimed at the double's centre, it stands on the nearest whole pixel.
        QVERIFY(rows.last().dist < 0.71);

        // A match's next leg starts without a cork, its figures anew.
        game_->startLeg(options(GameType::X01_501, true), 8, 1);
        QCOMPARE(game_->phase(), GamePhase::CorkResult);
        QCOMPARE(game_->currentThrower(), 1);
        QCOMPARE(game_->legFigures().darts, (std::array<int, 2>{0, 0}));

        // The tallies stay for the same options and go with other ones.
        start(options(GameType::X01_501, true));
        QCOMPARE(game_->tallies().localWins, 1);
        QCOMPARE(game_->glance(2).detail, QStringLiteral("Avg -"));
        start(options(GameType::X01_301, true));
        QCOMPARE(game_->tallies().localWins, 0);
    }

    // Cricket: marks for the thrower, a win once everything is closed.
    // Without "Keep" nothing is recorded. The corks are equally far from the
    // bull: against a person at this board the local player throws first.
    // (Double in is played through the window, in tst_games.)
    void cricketToTheEnd()
    {
        bob_.cork = {30, 40};
        start(options(GameType::Cricket), BoardPoint{-50, 0});
        QVERIFY(game_->corkRows().isEmpty());
        const QList<QStringList> annSets{{"T20", "T19", "T18"}, {"T17", "T16", "T15"}, {"B", "B", "OB"}};
        for (int i = 0; i < annSets.size(); ++i) {
            annThrows(annSets[i]);
            const SetOutcome outcome = game_->scoreSet();
            QVERIFY(outcome.rows.isEmpty());
            QCOMPARE(outcome.won, i == 2);
            if (i < 2) {
                game_->nextTurn();
                game_->scoreSet(); // Bob's miss
                game_->nextTurn();
            }
        }
        QCOMPARE(game_->glance(2).figure + ' ' + game_->glance(2).detail, QStringLiteral("50 7/7 closed"));
        // A match counts Cricket's marks: 9, 9, then 2 + 2 + 1.
        QCOMPARE(game_->legFigures().points[1], 23);
        QVERIFY(game_->gameOverText().startsWith(QStringLiteral("\nAnn won that ")));
    }

    // Equally far corks against the computer: it throws first. No dart is
    // taken once the side throwing has reported. (Clicks before the game, a
    // second cork dart, a fourth dart and moved darts are played in
    // tst_board_input.)
    void aTiedCorkAgainstTheComputerAndNoDartAfterItsReport()
    {
        GameOptions tie = options(GameType::X01_501);
        tie.opponent = OpponentKind::Computer;
        bob_.cork = {30, 40};
        start(tie, BoardPoint{-50, 0});
        QCOMPARE(game_->currentThrower(), 1);
        QCOMPARE(game_->placeDart(at("S1")), -1); // Bob has reported
    }
};

QTEST_GUILESS_MAIN(TestGameSession)
#include "tst_game_session.moc"
