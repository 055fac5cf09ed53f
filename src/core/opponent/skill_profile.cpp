#include "core/opponent/skill_profile.h"

#include "core/board/board_geometry.h"

#include <algorithm>

namespace tavrix {

namespace {

struct InchProfile {
    double bands[4][2];
    double wildness;
};

// Each band starts just above the previous one's end, so none overlap.
constexpr InchProfile fixedProfiles[] = {
    {{{0, 1.0}, {1.0001, 1.5}, {1.5001, 2.0}, {2.0001, 3.0}}, 0.1},     // B-Player
    {{{0, 0.75}, {0.75001, 1.0}, {1.0001, 1.5}, {1.5001, 2.0}}, 0.02},  // A-Player
    {{{0, 0.25}, {0.25001, 0.5}, {0.50001, 0.75}, {0.75001, 1.5}}, 0.005}, // Master
};

} // namespace

SkillProfile fixedSkillProfile(SkillLevel skill)
{
    const InchProfile &inches = fixedProfiles[std::clamp(code(skill), 1, 3) - 1];
    SkillProfile profile;
    for (int k = 0; k < 4; ++k)
        profile.skillRadii[k] = {inches.bands[k][0] / inchesPerUnit, inches.bands[k][1] / inchesPerUnit};
    profile.wildness = inches.wildness;
    return profile;
}

SkillProfile profileFromQuarters(const DistanceQuarters &q)
{
    SkillProfile profile;
    profile.skillRadii[0] = {0, q.tightestMax};
    profile.skillRadii[1] = {q.secondMin, q.secondMax};
    profile.skillRadii[2] = {q.thirdMin, q.thirdMax};
    profile.skillRadii[3] = {q.widestMin, std::min(q.widestMax, 3 * q.average)};
    profile.wildness = q.sampleCount > 0 ? double(q.wildCount) / double(q.sampleCount) : 0.0;
    return profile;
}

bool buildSkillProfile(SkillProfileState &state, SkillLevel skill, double /*moodFactor*/, DartHistory &store,
                       qint64 playerId)
{
    if (skill == SkillLevel::BPlayer || skill == SkillLevel::APlayer || skill == SkillLevel::Master) {
        state.profile = fixedSkillProfile(skill);
        return true;
    }
    const std::optional<DistanceQuarters> quarters = store.distanceQuarters(playerId, youMinSamples);
    if (!quarters)
        return false;
    state.youSampleCount = quarters->sampleCount;
    if (state.youLevelAvailable())
        state.profile = profileFromQuarters(*quarters);
    return true;
}

} // namespace tavrix
