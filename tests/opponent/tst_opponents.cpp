// The opponents whose turns show a dart a second, against the game model:
// the computer, and a player whose darts arrive already placed. Quitting
// while the computer throws is played through the window (tst_games).

#include "../support/board_points.h"
#include "games/game_session.h"
#include "opponent/dart_by_dart_opponent.h"
#include "opponent/local_player.h"
#include "session/session.h"
#include "sound/sound_cue.h"

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

    CheckoutChart chart_ = testChart();
    Session session_;
    CueLog sounds_;
    LocalPlayer ann_;

    // Starts a game with Bob as player 1, whose cork comes first or second.
    static void start(GameSession &game, GameType type, OpponentKind opponent, int firstCork)
    {
        GameOptions options;
        options.type = type;
        options.opponent = opponent;
        options.names = {QStringLiteral("Bob"), QStringLiteral("Ann")};
        game.chooseOptions(options);
        game.prepare();
        game.start(options, 1, firstCork);
    }

private slots:
    void init() { sounds_ = {}; }

    // The computer throws its cork when Ann has confirmed hers, then its
    // turn a dart a tick; the report lists exactly the darts it placed, and
    // each landed with a sound that was waited for.
    void theComputerThrowsItsCorkAndTurns()
    {
        SkillProfile master = fixedSkillProfile(SkillLevel::Master);
        session_.random.seed(7);
        ComputerOpponent computer(sounds_, chart_, session_.random, master);
        computer.throwTimer()->setInterval(0);
        QCOMPARE(computer.throwTimer()->objectName(), QStringLiteral("ThrowTimer"));
        GameSession game(chart_, session_);
        game.setThrowers(&computer, &ann_);
        QSignalSpy placed(&game, &GameSession::dartPlaced);
        QSignalSpy reported(&game, &GameSession::turnReported);

        start(game, GameType::X01_501, OpponentKind::Computer, 2);
        game.placeDart(at("M"));
        game.confirmCork();
        QCOMPARE(game.phase(), GamePhase::CorkResult);
        QVERIFY(game.corkDart(1));
        QCOMPARE(sounds_.played, (QList<std::pair<SoundCue, bool>>{{SoundCue::Splat, true}}));
        QVERIFY(game.corkResultText().startsWith(QStringLiteral("\nMy dart: ")));
        QCOMPARE(game.currentThrower(), 1); // Ann's cork was off the board

        sounds_.played.clear();
        placed.clear();
        game.nextTurn();
        QVERIFY(game.placedScores().isEmpty());
        QTRY_COMPARE(reported.count(), 1);
        const QString report = reported[0][0].toString();
        QVERIFY(report.startsWith(QStringLiteral("\nI threw: ")));
        int points = 0;
        QStringList texts;
        for (const DartScore &score : game.placedScores())
            points += score.points();
        for (int i = 0; i < game.dartsPlaced(); ++i)
            texts << dartDescriptionFromXY(game.setDarts()[i]->x, game.setDarts()[i]->y);
        QCOMPARE(placed.count(), game.dartsPlaced());
        QCOMPARE(report, computerTurnReport(QStringLiteral("I"), texts, points));
        int landings = 0;
        for (const auto &[cue, wait] : sounds_.played) {
            QVERIFY(wait);
            landings += cue == SoundCue::Splat || cue == SoundCue::Boing;
        }
        QCOMPARE(landings, game.dartsPlaced());
        QVERIFY(game.canConfirm());
    }

    // A player whose darts arrive placed: the cork is taken when it comes,
    // and a set of two darts is revealed a dart a tick and reported under
    // the player's name, the third dart withheld.
    void placedDartsAreRevealed()
    {
        PlacedDartsOpponent bob(sounds_);
        bob.throwTimer()->setInterval(0);
        GameSession game(chart_, session_);
        game.setThrowers(&bob, &ann_);
        QSignalSpy reported(&game, &GameSession::turnReported);
        start(game, GameType::X01_501, OpponentKind::Human, 1);
        QCOMPARE(game.phase(), GamePhase::CorkAwaited);
        bob.placeCork({0, 3});
        QCOMPARE(game.currentThrower(), 2);
        QCOMPARE(game.phase(), GamePhase::CorkAwaited);
        game.placeDart(at("M"));
        game.confirmCork();
        QCOMPARE(game.currentThrower(), 1);

        sounds_.played.clear();
        bob.setDarts({at("T20"), at("D20")});
        game.nextTurn();
        QTRY_COMPARE(reported.count(), 1);
        QCOMPARE(reported[0][0].toString(), QStringLiteral("\nBob threw: Triple 20, and Double 20 for 100 points. "
                                                           "(dart(s) withheld)\n\n(Click \"Ok\" to continue)"));
        QCOMPARE(game.dartsPlaced(), 2);
        QCOMPARE(sounds_.played, (QList<std::pair<SoundCue, bool>>{{SoundCue::Splat, true}, {SoundCue::Splat, true}}));
        QCOMPARE(game.scoreSet().columnLine, QStringLiteral("\n401"));
    }
};

QTEST_GUILESS_MAIN(TestOpponents)
#include "tst_opponents.moc"
