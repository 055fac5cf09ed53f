// The sides that throw dart by dart against the game model: a player whose
// darts arrive already placed, and the computer. The computer's whole games
// are played through the window in tst_games.

#include "../support/board_points.h"
#include "core/advice/chart_advisor.h"
#include "core/games/game_session.h"
#include "core/net/net_game_rules.h"
#include "core/net/network_peer.h"
#include "core/opponent/dart_by_dart_opponent.h"
#include "core/opponent/local_player.h"
#include "core/session/session.h"
#include "core/sound/sound_cue.h"

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <functional>

using namespace tavrix;

namespace {

struct CueLog : SoundOut {
    QList<std::pair<SoundCue, bool>> played;
    // Runs as each sound plays: in the middle of a turn thrown dart by dart.
    std::function<void()> whilePlaying;
    void play(SoundCue cue, bool wait) override
    {
        played.append({cue, wait});
        if (whilePlaying)
            whilePlaying();
    }
};

// A side that throws its cork and its sets from a script, at once.
struct ScriptedSide : Thrower {
    QList<QStringList> sets;
    bool marksAtThisBoard() const override { return false; }
    void throwCork(GameSession &game, int) override
    {
        game.placeDart({0, 3});
        game.confirmCork();
    }
    void takeTurn(GameSession &game, int) override
    {
        const QStringList set = sets.isEmpty() ? QStringList{} : sets.takeFirst();
        for (const QString &dart : set)
            game.placeDart(at(dart));
        game.reportTurn({});
    }
    void stop() override {}
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
        GameSession game(advisor, session);
        QList<NetMessage> sent;
        NetworkPeer bob(sounds, game, [&sent](const NetMessage &message) {
            sent.append(message);
            return true;
        });
        bob.throwTimer()->setInterval(0);
        game.setThrowers(&bob, &ann);
        QSignalSpy reported(&game, &GameSession::turnReported);
        const GameOptions options{.opponent = OpponentKind::Human, .names = {QStringLiteral("Bob"), QStringLiteral("Ann")},
                                  .netRole = NetRole::Server};
        game.chooseOptions(options);
        game.prepare();
        game.start(options, 1, 1);
        bob.receive(BullMessage{markerPosOf({0, 3})});
        game.placeDart(at("M"));
        bob.corkConfirmed();
        game.confirmCork();
        QCOMPARE(game.currentThrower(), 1);
        // This side's cork went out as the model has it, where its marker stands.
        QCOMPARE(sent.value(0), NetMessage(BullMessage{markerPosOf(onMarkerGrid(at("M"), flightMarkerSide))}));
        // Both sides must click "Ok" before the first turn, whichever is first.
        QSignalSpy agreed(&bob, &NetworkPeer::firstTurnAgreed);
        QVERIFY(!bob.agreeToFirstTurn());
        QVERIFY(bob.awaitingFirstTurn());
        bob.receive(BullOkMessage{});
        QCOMPARE(agreed.count(), 1);

        sounds.played.clear();
        bob.receive(SetMessage{{markerPosOf(at("T20")), markerPosOf(at("D20"))}});
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
        ScriptedSide scripted;
        const SkillProfile neverMisses{};
        ComputerOpponent computer(sounds, session.random, neverMisses);
        computer.throwTimer()->setInterval(0);
        GameSession game(advisor, session);
        QSignalSpy reported(&game, &GameSession::turnReported);
        GameOptions options{.opponent = OpponentKind::Computer, .doubleOut = doubleOut, .names = {}};
        game.setThrowers(&scripted, &ann);
        game.chooseOptions(options);
        game.prepare();
        game.start(options, 1, 1);
        game.placeDart(at("M"));
        game.confirmCork();
        // Player 1 comes down to 40 by placed darts, then the computer takes over.
        scripted.sets = {{"T20", "T20", "T20"}, {"T20", "T20", "T20"}, {"T20", "T13", "D1"}};
        for (int set = 0; set < 3; ++set) {
            game.nextTurn();
            game.scoreSet();
            game.nextTurn();
            game.scoreSet(); // Ann throws nothing
        }
        QCOMPARE(game.glance(1).figure, QStringLiteral("40"));
        game.setThrowers(&computer, &ann);
        sounds.played.clear();
        reported.clear();
        // As each of its darts lands, none of them can be taken back.
        int undoneMidTurn = 0;
        sounds.whilePlaying = [&] { undoneMidTurn += game.canUndoDart() + (game.undoDart() >= 0); };
        game.nextTurn();
        QTRY_COMPARE(reported.count(), 1);
        QCOMPARE(undoneMidTurn, 0);
        QCOMPARE(reported[0][0].toString(), report);
        QCOMPARE(sounds.played.first(), (std::pair{SoundCue::Splat, true}));
        QCOMPARE(sounds.played.value(1), (std::pair{doubleOut ? SoundCue::Harp : SoundCue::Fanfare, true}));
    }
};

QTEST_GUILESS_MAIN(TestOpponents)
#include "tst_opponents.moc"
