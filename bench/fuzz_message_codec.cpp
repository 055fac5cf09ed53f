// Feeds the game message decoder random streams: valid games, damaged copies
// (flipped bits, cuts, repeats, splices, stray terminators, noise) and
// oversized frames, each in random pieces. Checks after every stream that
// valid input decodes to what was sent, that the pending bytes stay within
// their bound and that no message carries an impossible coordinate. Meant
// for long runs in the sanitizer build; prints the count, the time and the
// failures (at most 20 shown), and exits with 1 when there were any.
//
//   fuzz_message_codec [inputs, default 10000000] [seed]

#include "../tests/support/net_message_samples.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>

using namespace tavrix;

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const qint64 inputs = argc > 1 ? std::max(1LL, QString::fromLocal8Bit(argv[1]).toLongLong()) : 10000000;
    const quint32 seed = argc > 2 ? QString::fromLocal8Bit(argv[2]).toUInt() : 20240517;

    QRandomGenerator rng(seed);
    qint64 failures = 0;
    QElapsedTimer timer;
    timer.start();
    for (qint64 i = 0; i < inputs; ++i) {
        const QString failure = samples::fuzzOnce(rng);
        if (failure.isEmpty())
            continue;
        if (++failures <= 20)
            std::printf("input %lld: %s\n", i, qPrintable(failure));
    }
    const double seconds = timer.elapsed() / 1000.0;
    std::printf("%lld inputs, seed %u, %.1f s (%.0f inputs/s), %lld invariant failures\n", inputs,
                seed, seconds, inputs / std::max(seconds, 0.001), failures);
    return failures == 0 ? 0 : 1;
}
