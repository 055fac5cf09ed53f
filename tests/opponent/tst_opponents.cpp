// The computer throwing dart by dart against the game model. Its whole games
// are played through the window in tst_games; a network peer's darts, which
// arrive already placed, in tst_network_game.

#include "../support/board_points.h"
#include "../support/data_table.h"
#include "core/advice/chart_advisor.h"
#include "core/games/game_session.h"
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
    // A computer that never misses, at 40 left: under double out it throws
    // the double 20 and stops; under single out it goes the single-out way.
    // Its darts cannot be taken back in the middle of its turn, and a dart
    // on the area it aimed at earns the harp or the fanfare, waited for.
    void theComputerFinishesByTheOutRule_data()
    {
        addTable<bool, QString>({"doubleOut", "report"},
            {{"double out", true, "\nI threw: Double 20 for 40 points. (dart(s) withheld)\n\n(Click \"Ok\" to continue)"},
             {"single out", false, "\nI threw: Triple 10, and Triple 20 for 90 points. (dart(s) withheld)\n\n(Click \"Ok\" to continue)"}});
    }
    void theComputerFinishesByTheOutRule()
    {
        QFETCH(bool, doubleOut);
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
        QTEST(reported[0][0].toString(), "report");
        QCOMPARE(sounds.played.first(), (std::pair{SoundCue::Splat, true}));
        QCOMPARE(sounds.played.value(1), (std::pair{doubleOut ? SoundCue::Harp : SoundCue::Fanfare, true}));
    }
};

QTEST_GUILESS_MAIN(TestOpponents)
#include "tst_opponents.moc"
