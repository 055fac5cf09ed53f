// The computer playing 501 (double out) against itself at each fixed level,
// through the rules alone: the same aim, throw model, turn and set scoring
// the game uses, without widgets or timers. Prints games per second, the
// darts the winner needed per leg and the three-dart average.
//
//   bench_computer_games [games per level] [seed]

#include "core/advice/chart_advisor.h"
#include "core/opponent/self_play.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>

using namespace tavrix;

namespace {

struct LevelFigures {
    qint64 legDarts = 0;    // darts of the winners
    qint64 thrown = 0;      // darts of both sides
    qint64 scored = 0;      // points that stayed on the board (busts score 0)
    int longestLeg = 0;
};

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const int games = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 20000;
    const quint32 seed = argc > 2 ? QString::fromLocal8Bit(argv[2]).toUInt() : 20261123;
    CheckoutChart chart;
    chart.load(bundledChartRows());
    const ChartAdvisor advisor(chart);

    std::printf("501, double out, computer against itself, %d games per level, seed %u\n", games,
                seed);
    std::printf("%-9s %12s %14s %12s %12s\n", "level", "games/s", "darts/leg", "longest", "3-dart avg");
    const char *const names[] = {"B-Player", "A-Player", "Master"};
    for (const SkillLevel skill : {SkillLevel::BPlayer, SkillLevel::APlayer, SkillLevel::Master}) {
        const SkillProfile profile = fixedSkillProfile(skill);
        QRandomGenerator random(seed);
        LevelFigures figures;
        QElapsedTimer timer;
        timer.start();
        for (int g = 0; g < games; ++g) {
            const SelfPlayLeg leg = playSelfPlayLeg(profile, advisor, random, g % 2);
            figures.legDarts += leg.winnerDarts;
            figures.thrown += leg.thrown;
            figures.scored += leg.scored;
            figures.longestLeg = std::max(figures.longestLeg, leg.winnerDarts);
        }
        const double seconds = timer.nsecsElapsed() / 1e9;
        std::printf("%-9s %12.0f %14.2f %12d %12.2f\n", names[code(skill) - 1], games / seconds,
                    double(figures.legDarts) / games, figures.longestLeg,
                    3.0 * double(figures.scored) / double(figures.thrown));
    }
    return 0;
}
