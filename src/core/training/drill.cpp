#include "core/training/drill.h"

#include "core/training/around_the_clock.h"
#include "core/training/bobs_27.h"
#include "core/training/catch_40.h"
#include "core/training/drill_parts.h"
#include "core/training/halve_it.h"
#include "core/training/jdc_challenge.h"
#include "core/training/ninety_nine_darts.h"
#include "core/training/one_twenty_one.h"
#include "core/training/shanghai.h"

namespace tavrix {

QString drillName(DrillKind kind)
{
    switch (kind) {
    case DrillKind::AroundTheClockAny: return QStringLiteral("Around the Clock (Any)");
    case DrillKind::AroundTheClockDoubles: return QStringLiteral("Around the Clock (Doubles)");
    case DrillKind::AroundTheClockTrebles: return QStringLiteral("Around the Clock (Trebles)");
    case DrillKind::Bobs27: return QStringLiteral("Bob's 27");
    case DrillKind::OneTwentyOne: return QStringLiteral("121");
    case DrillKind::Catch40: return QStringLiteral("Catch 40");
    case DrillKind::Shanghai: return QStringLiteral("Shanghai");
    case DrillKind::HalveIt: return QStringLiteral("Halve-It");
    case DrillKind::JdcChallenge: return QStringLiteral("JDC Challenge");
    case DrillKind::NinetyNineDarts: return QStringLiteral("99 darts at one target");
    }
    return {};
}

QList<DrillKind> allDrills()
{
    return {DrillKind::AroundTheClockAny, DrillKind::AroundTheClockDoubles, DrillKind::AroundTheClockTrebles,
            DrillKind::Bobs27,            DrillKind::OneTwentyOne,          DrillKind::Catch40,
            DrillKind::Shanghai,          DrillKind::HalveIt,               DrillKind::JdcChallenge,
            DrillKind::NinetyNineDarts};
}

std::unique_ptr<Drill> makeDrill(DrillKind kind, int targetNumber)
{
    switch (kind) {
    case DrillKind::AroundTheClockAny: return std::make_unique<AroundTheClock>(kind, 0);
    case DrillKind::AroundTheClockDoubles: return std::make_unique<AroundTheClock>(kind, 2);
    case DrillKind::AroundTheClockTrebles: return std::make_unique<AroundTheClock>(kind, 3);
    case DrillKind::Bobs27: return std::make_unique<Bobs27>();
    case DrillKind::OneTwentyOne: return std::make_unique<OneTwentyOne>();
    case DrillKind::Catch40: return std::make_unique<Catch40>();
    case DrillKind::Shanghai: return std::make_unique<ShanghaiDrill>();
    case DrillKind::HalveIt: return std::make_unique<HalveIt>();
    case DrillKind::JdcChallenge: return std::make_unique<JdcChallenge>();
    case DrillKind::NinetyNineDarts: {
        // A target that is no area of the board falls back to the 20.
        const bool valid = (targetNumber >= 1 && targetNumber <= 20) || targetNumber == 25;
        return std::make_unique<NinetyNineDarts>(valid ? targetNumber : 20);
    }
    }
    return nullptr;
}

DrillTarget areaTarget(int number, int multiplier)
{
    DrillTarget target;
    target.number = number;
    target.multiplier = multiplier;
    // "Any ring" is aimed at the big single, and recorded as aimed there.
    target.aimNumber = number;
    target.aimMultiplier = multiplier == 0 ? 1 : multiplier;
    if (number == 25) {
        target.text = QStringLiteral("Bull");
        return target; // aimed at the centre
    }
    target.aim = aimPoint(multiplier == 0 ? 1 : multiplier, number);
    static const char *const prefixes[] = {"", "", "D", "T"};
    target.text = QLatin1String(prefixes[multiplier]) + QString::number(number);
    return target;
}

bool hitsArea(const DartScore &dart, int number, int multiplier)
{
    if (dart.number != number || dart.multiplier < 1)
        return false;
    if (number == 25)
        return multiplier == 1 || dart.multiplier == 2;
    return multiplier == 0 || dart.multiplier == multiplier;
}

namespace {

struct Area {
    int number;
    int multiplier;
};

// The first dart of a plain way out of `remaining` (2 or more).
Area wayOutDart(int remaining)
{
    if (remaining == 50)
        return {25, 2};
    if (remaining <= 40 && remaining % 2 == 0)
        return {remaining / 2, 2};
    if (remaining < 32) {
        // An odd finish below 33: a single that leaves the largest power of
        // two below it, which halves down to D1 whatever double is missed
        // into its single.
        int leave = 16;
        while (leave >= remaining)
            leave /= 2;
        return {remaining - leave, 1};
    }
    if (remaining - 32 <= 20)
        return {remaining - 32, 1}; // leaves D16
    if (remaining - 40 <= 20)
        return {remaining - 40, 1}; // leaves D20
    // Above 60 the treble that leaves an even count.
    return remaining % 2 == 0 ? Area{20, 3} : Area{19, 3};
}

} // namespace

DrillTarget checkoutTarget(int remaining)
{
    DrillTarget target;
    target.remaining = remaining;
    target.text = QString::number(remaining);
    if (remaining < 2)
        return target;
    const Area first = wayOutDart(remaining);
    target.aimNumber = first.number;
    target.aimMultiplier = first.multiplier;
    target.aim = aimPoint(first.multiplier, first.number);
    return target;
}

QString dartsLeftText(int darts)
{
    return darts == 1 ? QStringLiteral("1 dart left") : QStringLiteral("%1 darts left").arg(darts);
}

CheckoutCount::Step CheckoutCount::apply(const DartScore &dart)
{
    const int points = dart.points();
    if (points == 0)
        return {};
    const int left = remaining_ - points;
    if (left < 0 || left == 1 || (left == 0 && !dart.isDouble())) {
        remaining_ = setStart_;
        return {DrillEvent::Bust, 0};
    }
    remaining_ = left;
    return {left == 0 ? DrillEvent::Finished : DrillEvent::Hit, points};
}

ShanghaiRound::Step ShanghaiRound::apply(const DartScore &dart)
{
    if (dart.number != number_ || dart.multiplier < 1 || dart.multiplier > 3)
        return {};
    const bool before = rings_[0] && rings_[1] && rings_[2];
    rings_[dart.multiplier - 1] = true;
    const bool after = rings_[0] && rings_[1] && rings_[2];
    return {dart.multiplier * number_, after && !before};
}

DrillDartOutcome shanghaiOutcome(const ShanghaiRound::Step &step, int bonus)
{
    if (step.shanghai)
        return {DrillEvent::Shanghai, step.points + bonus, false};
    if (step.points > 0)
        return {DrillEvent::Hit, step.points, false};
    return {};
}

} // namespace tavrix
