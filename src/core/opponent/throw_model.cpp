#include "core/opponent/throw_model.h"

#include "core/board/board_geometry.h"

#include <cmath>

namespace tavrix {

SimulatedDart simulateThrow(const SkillProfile &profile, QRandomGenerator &random, double aimX,
                            double aimY)
{
    double distance = 0;
    if (random.generateDouble() > profile.wildness) {
        const int band = std::min(3, static_cast<int>(4 * random.generateDouble()));
        const DistanceBand &radii = profile.skillRadii[band];
        distance = radii.low + (radii.high - radii.low) * random.generateDouble();
    } else {
        // A wild dart lands anywhere out to one board radius, whatever the skill.
        distance = 202 * random.generateDouble();
    }
    const double theta = random.generateDouble() * 360 * radPerDeg;
    SimulatedDart dart;
    dart.x = aimX + distance * std::cos(theta);
    dart.y = aimY + distance * std::sin(theta);
    dart.description = dartDescriptionFromXY(dart.x, dart.y);
    return dart;
}

} // namespace tavrix
