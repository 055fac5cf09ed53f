#pragma once

// A training drill: rounds of darts at targets, a score to beat. Each drill
// is one small class behind this interface; the training mode asks it what
// the round is, hands it each dart as the board scored it, and shows its
// score. Nothing here knows of widgets or of the store.

#include "core/board/board_geometry.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace tavrix {

// The drills in the order the training list shows them. The numbers are
// stored with each drill: never renumber, only add.
enum class DrillKind {
    AroundTheClockAny = 1,
    AroundTheClockDoubles = 2,
    AroundTheClockTrebles = 3,
    Bobs27 = 4,
    OneTwentyOne = 5,
    Catch40 = 6,
    Shanghai = 7,
    HalveIt = 8,
    JdcChallenge = 9,
    NinetyNineDarts = 10,
};

// Whether a lower score is the better one (defined below).
constexpr bool drillLowerIsBetter(DrillKind kind);

// What the drill wants hit now: one area of the board ("D16", "T20", the
// bull area) or a class of areas (any double, any treble), or a checkout
// total (121, Catch 40), each with the point to aim at.
struct DrillTarget {
    // An area: number 1 to 20, or 25 for the bull area; multiplier 1 to 3
    // (for the bull area 1: 25 or 50 both count, 2: only 50 counts), 0 for
    // "any ring of this number".
    int number = 0;
    int multiplier = 0;
    // Set instead for "any double" / "any treble" rounds (Halve-It): the
    // multiplier that counts on any number; number stays 0.
    int anyOfMultiplier = 0;
    // Set instead for checkout rounds: the points still to score, double out.
    int remaining = 0;
    // Where to aim, in board units, and the area that is there (number and
    // multiplier as above; 0 and 0 when the round names no one area, as
    // "any double"): aimPoint of the area; for a checkout, the first dart
    // of a plain way out (the double at an even finish up to 40, the bull
    // at 50, a single that leaves 32 or 40, treble 20 or 19 above that).
    BoardPoint aim;
    int aimNumber = 0;
    int aimMultiplier = 0;
    // As shown in large type: "20", "D16", "T20", "Bull", "Any double",
    // "Any treble", "121".
    QString text;
};

// What a dart did, for the mode to announce.
enum class DrillEvent {
    None,
    Hit,           // the dart counted
    Shanghai,      // a single, a double and a treble of the round's number
    Finished,      // a checkout target finished (121, Catch 40)
    Bust,          // a checkout round bust: the rest of its set is void
    RoundFailed,   // Bob's 27 / Halve-It: the round ended without a hit;
                   // 121 / Catch 40: the attempt's last dart, no finish
    Over,          // the dart ended the drill (reported instead of its own event)
};

struct DrillDartOutcome {
    DrillEvent event = DrillEvent::None;
    // What the dart added to the score (may be negative: the cost of a
    // round it ended without a hit); in a checkout, what it took off the
    // count.
    int points = 0;
    bool setEnds = false;  // no more darts in this set (bust, finish, round over)
};

// Whether a lower score is the better one: Around the Clock counts darts.
inline constexpr bool drillLowerIsBetter(DrillKind kind)
{
    return kind == DrillKind::AroundTheClockAny || kind == DrillKind::AroundTheClockDoubles
           || kind == DrillKind::AroundTheClockTrebles;
}

class Drill {
public:
    virtual ~Drill() = default;

    virtual DrillKind kind() const = 0;
    // The round now, 1-based, and how many rounds the drill has: 121 counts
    // its attempts, Catch 40 its targets; Around the Clock has no fixed
    // number (0) and counts its sets.
    virtual int round() const = 0;
    virtual int rounds() const = 0;
    virtual DrillTarget target() const = 0;
    // Darts the player may still throw in the current set (1 to 3), 0 when over.
    virtual int dartsLeftInSet() const = 0;
    // The drill's own words for where it stands: "Round 3 of 21 · 2 darts
    // left", "Target 63 · attempt 2 of 10 · 4 darts left".
    virtual QString progressText() const = 0;

    // One dart as the board scored it. A round ends with its last dart or
    // when its set is confirmed, whichever comes first; target() then names
    // the next one. Beyond the set's darts, or once over, nothing changes.
    virtual DrillDartOutcome applyDart(const DartScore &dart) = 0;
    // The set is confirmed: darts not thrown in it are given up (a round
    // of three ends even if fewer were marked); moves to the next round or
    // target where the set ends one.
    virtual void endSet() = 0;

    virtual bool over() const = 0;
    virtual int score() const = 0;
    // Whether the drill ran to its end (Bob's 27 below zero did not).
    virtual bool completed() const = 0;
    bool lowerIsBetter() const { return drillLowerIsBetter(kind()); }
    // Shanghais so far (Shanghai and JDC).
    virtual int shanghais() const { return 0; }
};

// The drill's name as the list shows it: "Around the Clock (Any)", "Around
// the Clock (Doubles)", "Around the Clock (Trebles)", "Bob's 27", "121",
// "Catch 40", "Shanghai", "Halve-It", "JDC Challenge", "99 darts at one
// target".
QString drillName(DrillKind kind);
QList<DrillKind> allDrills();
// A new drill; `targetNumber` is the chosen target of 99 darts (1 to 20, or
// 25 for the bull area) and ignored by the others.
std::unique_ptr<Drill> makeDrill(DrillKind kind, int targetNumber = 20);

} // namespace tavrix
