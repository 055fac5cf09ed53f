#include "core/practice/practice_rules.h"

#include <QRandomGenerator>

namespace tavrix {

namespace {

// The bull area, where practice stores the ring code as the score.
constexpr double bullAreaRadius = 19.0;

QString bullText()
{
    return QStringLiteral("25 or Bull");
}

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

OpenedSet openPracticeSet(PracticeState &state, int ringChoice, int scoreChoice, QRandomGenerator &random)
{
    // A draw below n, as the whole part of n times a number in [0, 1).
    const auto draw = [&random](int n) { return static_cast<int>(random.generateDouble() * n); };
    OpenedSet opened;
    int value = scoreChoice == randomChoice ? 1 + draw(21) : scoreChoice;
    if (value == bullChoice) {
        state.targetValue = 25;
        state.targetRing = 1;
        state.target = {};
        opened.targetText = bullText();
        return opened;
    }
    int ring = ringChoice == randomChoice ? 1 + draw(3) : ringChoice;
    bool bull = false;
    if (value == countDownChoice) {
        if (state.countdownNext == 21) {
            opened.alert = PracticeAlert{QStringLiteral("Starting countdown with bull"),
                                         QStringLiteral("Starting Countdown")};
            state.countdownActive = true;
            state.countupActive = false;
            bull = true;
        } else {
            value = state.countdownNext;
        }
    } else if (value == countUpChoice) {
        if (state.countupNext == 1) {
            opened.alert = PracticeAlert{QStringLiteral("Starting count-up with 1"),
                                         QStringLiteral("Starting Count-up")};
            state.countupActive = true;
            state.countdownActive = false;
        }
        if (state.countupNext == 21)
            bull = true;
        else
            value = state.countupNext;
    }
    if (bull) {
        value = 25;
        ring = 1;
    }
    state.targetValue = value;
    state.targetRing = ring;
    state.target = value == 25 ? BoardPoint{} : aimPoint(ring, value);
    opened.targetText = targetRingWord(ring) + QStringLiteral(" ") + (bull ? bullText() : QString::number(value));
    return opened;
}

QString quitSequenceCaption(const PracticeState &state)
{
    return QStringLiteral("Quit\nCount\n") + (state.countdownActive ? QStringLiteral("Down") : QStringLiteral("Up"));
}

std::optional<PracticeAlert> confirmPracticeSet(PracticeState &state)
{
    const QString whew = QStringLiteral("Whew!");
    if (state.countdownActive) {
        if (--state.countdownNext > 0)
            return std::nullopt;
        state.countdownActive = false;
        state.countdownNext = 21;
        return PracticeAlert{QStringLiteral("Countdown Complete."), whew};
    }
    if (state.countupActive) {
        if (++state.countupNext <= 21)
            return std::nullopt;
        state.countupActive = false;
        state.countupNext = 1;
        return PracticeAlert{QStringLiteral("Count-up Complete."), whew};
    }
    return PracticeAlert{QStringLiteral("Darts Confirmed."), QStringLiteral("Thank You")};
}

void quitPracticeSequences(PracticeState &state)
{
    state.countdownActive = false;
    state.countupActive = false;
    state.countupNext = 1;
    state.countdownNext = 21;
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
