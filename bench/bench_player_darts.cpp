// What reading a player's darts costs at scale: one full read of the
// player's distances, the "You" profile, the per-target counts of review,
// start-up to the idle main window, entering Play and Review with and
// without new darts, and practice (entering it, opening and confirming a
// set with its running totals), each also as a ratio to the full read.
//
// Usage: bench_player_darts [database file] [darts]
// (a new database of 1000000 darts for one player in a temporary folder when
// no file is given; an existing file must hold exactly one player)

#include "../tests/support/fake_messages.h"
#include "bench_support.h"
#include "ui/board/board_picture.h"
#include "core/opponent/skill_profile.h"
#include "ui/practice/practice_controller.h"
#include "core/review/review_rules.h"
#include "ui/startup/darts_window.h"
#include "ui/startup/program.h"
#include "core/stats/stats_store.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>
#include <tuple>

using namespace tavrix;

namespace {

using bench::bestOf;

void line(const char *what, double ms, double scanMs)
{
    bench::ratioLine(what, ms, scanMs);
}

} // namespace

int main(int argc, char *argv[])
{
    bench::offscreenWithoutDisplay();
    QApplication app(argc, argv);
    QTemporaryDir dir;
    const std::optional<bench::BenchFile> file = bench::benchFile(argc, argv, dir, 20261122);
    if (!file)
        return 1;
    const QString path = file->path;
    const qint64 player = file->player;

    const int runs = 3;
    qint64 values = 0;
    const double scanMs = bench::bestFullReadMs(runs, path, player, &values);
    if (scanMs < 0)
        return 1;
    std::printf("player's darts: %lld\n", values);
    line("full read of the distances", scanMs, scanMs);
    line("\"You\" profile, read afresh", bestOf(runs, [&] {
             StatsStore store(QStringLiteral("profile"));
             SkillProfileState state;
             return store.open(path) && buildSkillProfile(state, SkillLevel::You, 0, store, player);
         }), scanMs);
    line("review counts, read afresh", bestOf(runs, [&] {
             StatsStore store(QStringLiteral("counts"));
             return store.open(path) && store.targetCounts(player).has_value();
         }), scanMs);

    FakeMessages messages;
    Program program(messages, path);
    QElapsedTimer timer;
    timer.start();
    if (!program.Main())
        return 1;
    QCoreApplication::processEvents();
    line("start-up to the idle window", timer.nsecsElapsed() / 1e6, scanMs);
    Darts *window = program.window();
    auto enter = [&](Mode mode) {
        return bestOf(1, [&] {
            window->switchMode(mode);
            return true;
        });
    };
    line("enter Review", enter(Mode::Review), scanMs);
    line("enter Play, no new darts", enter(Mode::Play), scanMs);
    line("enter Review, no new darts", enter(Mode::Review), scanMs);
    // Review of the most practised area and of the bull: one plain read of
    // the area's darts and doPlot (read, figures, drawing, skill factors),
    // taken in turns so that both meet the same cache and heap; then a
    // repaint of the board with the plot on it. On the board of an 800 x 600
    // screen and on the larger board of a 1280 x 1024 one.
    for (const QSize windowSize : {QSize(800, 568), QSize(1280, 992)}) {
        window->resize(windowSize);
        QCoreApplication::processEvents();
        std::printf("board of %d px:\n", window->boardInput()->picture()->width());
        for (const auto &[what, ring, segment] :
             {std::tuple{"treble 20", 3, 20}, std::tuple{"the bull", 50, 0}}) {
            const auto area = reviewArea(ring, segment);
            std::size_t count = 0;
            double readMs = -1;
            double plotMs = -1;
            for (int i = 0; i < runs; ++i) {
                const double read = bestOf(1, [&] {
                    const auto darts = program.store().areaDarts(player, area->number, area->ring);
                    count = darts ? darts->practice.size() + darts->game.size() : 0;
                    return darts.has_value();
                });
                const double plot = bestOf(1, [&] {
                    window->doPlot(ring, segment);
                    return true;
                });
                readMs = i == 0 ? read : std::min(readMs, read);
                plotMs = i == 0 ? plot : std::min(plotMs, plot);
            }
            std::printf("%s: %zu darts; doPlot takes %.2f x the read\n", what, count, plotMs / readMs);
            line("  read of the area's darts", readMs, scanMs);
            line("  doPlot", plotMs, scanMs);
            line("  repaint with the plot", bestOf(runs, [&] {
                     window->boardInput()->picture()->repaint();
                     return true;
                 }), scanMs);
        }
    }
    QRandomGenerator random(7);
    std::vector<double> setMicros;
    if (!bench::writePracticeDarts(program.store(), player, 1, random, setMicros))
        return 1;
    line("enter Play after a new set", enter(Mode::Play), scanMs);
    if (!bench::writePracticeDarts(program.store(), player, 1, random, setMicros))
        return 1;
    line("enter Review after a new set", enter(Mode::Review), scanMs);

    // Practice: the file was filled without the kept sums, as an older
    // version of the program leaves it, so the first entry builds them.
    const int readsBefore = program.store().playerReads();
    line("enter Practice, sums built", enter(Mode::Practice), scanMs);
    line("enter Practice, sums kept", enter(Mode::Practice), scanMs);
    PracticeController *practice = window->practiceController();
    // Each set opens and is confirmed once; the slowest of them counts.
    double openMs = 0;
    double confirmMs = 0;
    for (int set = 0; set < 5; ++set) {
        openMs = std::max(openMs, bestOf(1, [&] {
                              practice->goButtonClick();
                              return true;
                          }));
        for (const BoardPoint at : {BoardPoint{0, 150}, BoardPoint{10, 160}, BoardPoint{-8, 140}})
            practice->boardClicked(at, 0);
        confirmMs = std::max(confirmMs, bestOf(1, [&] {
                                 practice->goButtonClick();
                                 return true;
                             }));
    }
    line("open a practice set, slowest of 5", openMs, scanMs);
    line("confirm a practice set, slowest of 5", confirmMs, scanMs);
    std::printf("reads of the player's practice darts in practice: %d\n",
                program.store().playerReads() - readsBefore);
    std::printf("reads of the player's darts by the program: %d\n", program.store().playerReads());
    for (const FakeMessages::Shown &shown : std::as_const(messages.shown)) {
        if (shown.kind == QLatin1String("error")) {
            std::fprintf(stderr, "%s\n", qPrintable(shown.text));
            return 1;
        }
    }
    return 0;
}
