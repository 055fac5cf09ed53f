#pragma once

// A simulated dart: aimed at a point, it lands at a distance drawn from the
// skill profile in a direction drawn uniformly round the full circle.

#include "core/opponent/skill_profile.h"

#include <QRandomGenerator>
#include <QString>

namespace tavrix {

struct SimulatedDart {
    double x = 0;
    double y = 0;
    // As dartDescriptionFromXY gives it: "Triple 20", "Bounce-out", ...
    QString description;
};

// Draws from `random`, in this order: whether the dart is wild (u <= the
// profile's wildness), then for a normal dart its band (one of four, equally
// likely) and its distance within the band, or for a wild dart its distance
// out to one board radius; last the direction. A fixed seed therefore
// repeats a game dart for dart.
SimulatedDart simulateThrow(const SkillProfile &profile, QRandomGenerator &random, double aimX,
                            double aimY);

} // namespace tavrix
