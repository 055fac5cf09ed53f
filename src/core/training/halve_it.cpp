#include "core/training/halve_it.h"

#include <array>

namespace tavrix {

namespace {

// Each round's number (0 for "any"), and the multiplier it asks for: 0 any
// ring of the number, or for "any" rounds the ring on any number.
struct HalveItRound {
    int number;
    int multiplier;
};
constexpr std::array<HalveItRound, 9> halveItRounds{
    {{20, 0}, {19, 0}, {0, 2}, {18, 0}, {0, 3}, {17, 0}, {16, 0}, {15, 0}, {25, 1}}};

} // namespace

DrillTarget HalveIt::target() const
{
    const HalveItRound now = halveItRounds[round() - 1];
    if (now.number != 0)
        return areaTarget(now.number, now.multiplier);
    DrillTarget any;
    any.anyOfMultiplier = now.multiplier;
    any.text = now.multiplier == 2 ? QStringLiteral("Any double") : QStringLiteral("Any treble");
    return any;
}

DrillDartOutcome HalveIt::scoreDart(const DartScore &dart)
{
    const HalveItRound now = halveItRounds[round() - 1];
    // The bull is the double of the bull area and so counts as any double.
    const bool hit = now.number != 0 ? hitsArea(dart, now.number, now.multiplier)
                                     : dart.multiplier == now.multiplier && dart.points() > 0;
    if (!hit)
        return {};
    return {DrillEvent::Hit, dart.points(), false};
}

HalveIt::RoundEnd HalveIt::closeRound()
{
    if (roundHit())
        return {};
    return {true, total() / 2 - total()};
}

} // namespace tavrix
