#pragma once

// How far from its aiming point a simulated dart lands: four equally likely
// distance bands and the chance of a wild dart. The three fixed levels come
// from a table in inches; the "You" level is cut from the player's own darts.

#include "core/stats/game_codes.h"
#include "core/stats/dart_history.h"

#include <array>
#include <optional>

namespace tavrix {

// Distances from the aiming point, in board units.
struct DistanceBand {
    double low = 0;
    double high = 0;
    friend bool operator==(const DistanceBand &, const DistanceBand &) = default;
};

struct SkillProfile {
    std::array<DistanceBand, 4> skillRadii{};
    double wildness = 0;
};

// Fewest distinct recorded distances from which the "You" profile is built.
inline constexpr qint64 youMinSamples = 200;

// The fixed profile of level 1 to 3, bounds converted to board units.
SkillProfile fixedSkillProfile(SkillLevel skill);

// The "You" profile cut from the quarters of the player's distances; the
// widest band reaches no farther than three times the average distance.
SkillProfile profileFromQuarters(const DistanceQuarters &quarters);

// The profile and the sample count behind the "You" level, kept for the run.
struct SkillProfileState {
    SkillProfile profile;
    qint64 youSampleCount = 0;

    bool youLevelAvailable() const { return youSampleCount >= youMinSamples; }
};

// Loads the profile of a stored skill. Levels 1 to 3 take their fixed
// profile; any other level builds the player's own from the database, which
// with too few samples changes only the sample count. The mood factor is
// handed over with the skill but shapes neither kind of profile. False, with
// the store's lastError(), when the database fails.
bool buildSkillProfile(SkillProfileState &state, SkillLevel skill, double moodFactor, DartHistory &store,
                       qint64 playerId);

} // namespace tavrix
