#include "core/practice/practice_rules.h"

namespace tavrix {

namespace {

// The bull area, where practice stores the ring code as the score.
constexpr double bullAreaRadius = 19.0;

QString percentOrNa(qint64 hits, qint64 darts, const QString &sign)
{
    const QString text = hitPercentText(hits, darts);
    return darts > 0 ? text + sign : text;
}

QString averageOrNa(double sum, qint64 count, bool useCms)
{
    return count > 0 ? distanceText(sum / double(count), useCms) : QStringLiteral("N/A");
}

} // namespace

QString targetRingWord(int ring)
{
    switch (ring) {
    case 1: return QStringLiteral("Any");
    case 2: return QStringLiteral("Double");
    case 3: return QStringLiteral("Triple");
    default: return {};
    }
}

PracticeScore practiceScore(double radius, double angle)
{
    const int ring = ringFromRadius(radius);
    if (ring == NoMatch)
        return {NoMatch, 0};
    if (radius <= bullAreaRadius)
        return {RingSingle, ring};
    return {ring, segmentFromAngle(angle)};
}

bool practiceHit(int targetValue, int targetRing, int score, int ring)
{
    if (score == unreadableValue || score != targetValue)
        return false;
    return targetRing == 1 || ring == targetRing;
}

QString hitPercentText(qint64 hits, qint64 darts)
{
    if (darts <= 0)
        return QStringLiteral("N/A");
    // Whole hundredths of a percent, counted exactly, then shown as a percent.
    const qint64 hundredths = 10000 * hits / darts;
    return truncatedText(double(hundredths) / 100.0, 100);
}

RunningTotalsTexts runningTotalsTexts(const PracticeSums &sums, int targetValue, int targetRing,
                                      bool useCms)
{
    std::array<TargetTally, 4> byRing{};
    for (const auto &[key, tally] : sums.targets) {
        if (key.second >= 1 && key.second <= 3) {
            byRing[key.second].throws += tally.throws;
            byRing[key.second].hits += tally.hits;
        }
    }
    TargetTally all;
    for (int ring = 1; ring <= 3; ++ring) {
        all.throws += byRing[ring].throws;
        all.hits += byRing[ring].hits;
    }
    const auto found = sums.targets.find({targetValue, targetRing});
    const TargetTally thisTarget = found != sums.targets.end() ? found->second : TargetTally{};
    const QString percent = QStringLiteral("%");
    return {percentOrNa(all.hits, all.throws, percent),
            hitPercentText(thisTarget.hits, thisTarget.throws),
            averageOrNa(sums.distSum, sums.distCount, useCms),
            averageOrNa(thisTarget.distSum, thisTarget.distCount, useCms),
            percentOrNa(byRing[1].hits, byRing[1].throws, percent),
            percentOrNa(byRing[2].hits, byRing[2].throws, percent),
            percentOrNa(byRing[3].hits, byRing[3].throws, percent)};
}

} // namespace tavrix
