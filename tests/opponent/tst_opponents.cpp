// A player whose darts arrive already placed, against the game model. The
// computer's turns, shown the same way a dart a tick, are played through the
// window in tst_games.

#include "../support/board_points.h"
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
        Session session;
        CueLog sounds;
        LocalPlayer ann;
        PlacedDartsOpponent bob(sounds);
        bob.throwTimer()->setInterval(0);
        GameSession game(chart, session);
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
};

QTEST_GUILESS_MAIN(TestOpponents)
#include "tst_opponents.moc"
