#include "core/training/jdc_challenge.h"

namespace tavrix {

namespace {

constexpr int firstDoublesRound = 7; // after the Shanghai rounds 10 to 15
constexpr int lastDoublesRound = 13; // D19, D20 and the bull
constexpr int shanghaiBonus = 100;
constexpr int doublePoints = 50;

} // namespace

int JdcChallenge::shanghaiNumber() const
{
    if (round() < firstDoublesRound)
        return round() + 9;
    if (round() > lastDoublesRound)
        return round() + 1;
    return 0;
}

int JdcChallenge::doubleNumber(int dart) const
{
    const int step = (round() - firstDoublesRound) * 3 + dart + 1;
    return step > 20 ? 25 : step;
}

DrillTarget JdcChallenge::target() const
{
    if (shanghaiNumber() != 0)
        return areaTarget(shanghaiNumber(), 0);
    return areaTarget(doubleNumber(nextDart()), 2);
}

DrillDartOutcome JdcChallenge::scoreDart(const DartScore &dart)
{
    if (shanghaiNumber() == 0) {
        if (hitsArea(dart, doubleNumber(nextDart()), 2))
            return {DrillEvent::Hit, doublePoints, false};
        return {};
    }
    const ShanghaiRound::Step step = shanghai_.apply(dart);
    if (step.shanghai)
        ++shanghais_;
    return shanghaiOutcome(step, step.shanghai ? shanghaiBonus : 0);
}

void JdcChallenge::startRound()
{
    shanghai_ = ShanghaiRound(shanghaiNumber());
}

} // namespace tavrix
