// The sides that throw dart by dart against the game model: a player whose
// darts arrive already placed, and the computer. The computer's whole games
// are played through the window in tst_games.

#include "../support/board_points.h"
#include "core/advice/chart_advisor.h"
#include "core/games/game_session.h"
#include "core/opponent/dart_by_dart_opponent.h"
#include "core/opponent/local_player.h"
#include "core/session/session.h"
#include "core/sound/sound_cue.h"

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace tavrix;

namespace {

struct CueLog : SoundOut {
    QList<std::pair<SoundCue, bool>> played;
    void play(SoundCue cue, bool wait) override { played.append({cue, wait}); }
};

} // namespace

class TestOpponents : public QObject {
    Q_OBJECT

private slots:
    // The cork is taken when it comes, and a set of two darts is revealed a
    // dart a tick, each landing waited for, and reported under the player's
    // name, the third dart withheld.
    void placedDartsAreRevealed()
    {
        const CheckoutChart chart = testChart();
        const ChartAdvisor advisor(chart);
        Session session;
        CueLog sounds;
        LocalPlayer ann;
        PlacedDartsOpponent bob(sounds);
        bob.throwTimer()->setInterval(0);
        GameSession game(advisor, session);
        game.setThrowers(&bob, &ann);
        QSignalSpy reported(&game, &GameSession::turnReported);
        const GameOptions options{.opponent = OpponentKind::Human, .names = {QStringLiteral("Bob"), QStringLiteral("Ann")}};
        game.chooseOptions(options);
        game.prepare();
        game.start(options, 1, 1);
        bob.placeCork({0, 3});
        game.placeDart(at("M"));
        game.confirmCork();
        QCOMPARE(game.currentThrower(), 1);

        sounds.played.clear();
        bob.setDarts({at("T20"), at("D20")});
        game.nextTurn();
        QTRY_COMPARE(reported.count(), 1);
        QCOMPARE(reported[0][0].toString(), QStringLiteral("\nBob threw: Triple 20, and Double 20 for 100 points. "
                                                           "(dart(s) withheld)\n\n(Click \"Ok\" to continue)"));
        QCOMPARE(sounds.played, (QList<std::pair<SoundCue, bool>>{{SoundCue::Splat, true}, {SoundCue::Splat, true}}));
    }

    // A computer that never misses, at 40 left: under double out it throws
    // the double 20 and stops; under single out it goes the single-out way.
    // Its darts cannot be taken back in the middle of its turn, and a dart
    // on the area it aimed at earns the harp or the fanfare, waited for.
    void theComputerFinishesByTheOutRule_data()
    {
        QTest::addColumn<bool>("doubleOut");
        QTest::addColumn<QString>("report");
        QTest::newRow("double out") << true << "\nI threw: Double 20 for 40 points. (dart(s) withheld)\n\n(Click \"Ok\" to continue)";
        QTest::newRow("single out") << false << "\nI threw: Triple 10, and Triple 20 for 90 points. (dart(s) withheld)\n\n(Click \"Ok\" to continue)";
    }
    void theComputerFinishesByTheOutRule()
    {
        QFETCH(bool, doubleOut);
        QFETCH(QString, report);
        const CheckoutChart chart = testChart();
        const ChartAdvisor advisor(chart);
        Session session;
        CueLog sounds;
        LocalPlayer ann;
        PlacedDartsOpponent scripted(sounds);
        scripted.throwTimer()->setInterval(0);
        const SkillProfile neverMisses{};
        ComputerOpponent computer(sounds, session.random, neverMisses);
        computer.throwTimer()->setInterval(0);
        GameSession game(advisor, session);
        QSignalSpy reported(&game, &GameSession::turnReported);
        GameOptions options{.opponent = OpponentKind::Computer, .doubleOut = doubleOut};
        game.setThrowers(&scripted, &ann);
        game.chooseOptions(options);
        game.prepare();
        game.start(options, 1, 1);
        scripted.placeCork({0, 3});
        game.placeDart(at("M"));
        game.confirmCork();
        // Player 1 comes down to 40 by placed darts, then the computer takes over.
        for (const QStringList &set : {QStringList{"T20", "T20", "T20"}, QStringList{"T20", "T20", "T20"},
                                       QStringList{"T20", "T13", "D1"}}) {
            scripted.setDarts({at(set[0]), at(set[1]), at(set[2])});
            game.nextTurn();
            QTRY_COMPARE(game.canConfirm(), true);
            game.scoreSet();
            game.nextTurn();
            game.scoreSet(); // Ann throws nothing
        }
        QCOMPARE(game.glance(1).figure, QStringLiteral("40"));
        game.setThrowers(&computer, &ann);
        sounds.played.clear();
        reported.clear();
        computer.throwTimer()->setInterval(60000);
        game.nextTurn();
        computer.throwTimer()->setInterval(0);
        QTRY_VERIFY(game.dartsPlaced() >= 1);
        QVERIFY(!game.canUndoDart());
        QCOMPARE(game.undoDart(), -1);
        QTRY_COMPARE(reported.count(), 1);
        QCOMPARE(reported[0][0].toString(), report);
        QCOMPARE(sounds.played.first(), (std::pair{SoundCue::Splat, true}));
        QCOMPARE(sounds.played.value(1), (std::pair{doubleOut ? SoundCue::Harp : SoundCue::Fanfare, true}));
    }
};

QTEST_GUILESS_MAIN(TestOpponents)
#include "tst_opponents.moc"
