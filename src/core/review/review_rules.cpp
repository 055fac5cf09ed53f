#include "core/review/review_rules.h"

#include "core/practice/practice_rules.h"

#include <cmath>

namespace tavrix {

std::optional<ReviewArea> reviewArea(int ringCode, int segmentCode)
{
    ReviewArea area;
    if (ringCode > 20) {
        area.number = 25;
        area.ring = RingSingle;
        area.bull = true;
        area.name = QStringLiteral("25/Bull");
        return area;
    }
    if (ringCode < RingSingle || ringCode > RingTriple || segmentCode < 1 || segmentCode > 20)
        return std::nullopt;
    area.number = segmentCode;
    area.ring = ringCode;
    area.name = QString::number(segmentCode);
    area.ringWord = targetRingWord(ringCode);
    area.aim = aimPoint(ringCode, segmentCode);
    return area;
}

QString reviewCaption(const QString &frame, const ReviewArea &area)
{
    return frame + QStringLiteral(": ") + area.ringWord + QLatin1Char(' ') + area.name;
}

bool reviewHit(const ReviewArea &area, int score, int ring)
{
    if (area.number == 25 && score == 50)
        return true;
    return score == area.number && (area.ring == RingSingle || ring == area.ring);
}

ReviewTally &ReviewTally::operator+=(const ReviewTally &other)
{
    darts += other.darts;
    hits += other.hits;
    distanceSum += other.distanceSum;
    return *this;
}

ReviewTally reviewTally(const ReviewArea &area, const std::vector<AreaDart> &darts)
{
    ReviewTally tally;
    for (const AreaDart &dart : darts) {
        ++tally.darts;
        if (reviewHit(area, dart.score, dart.ring))
            ++tally.hits;
        const double dx = dart.x - area.aim.x;
        const double dy = dart.y - area.aim.y;
        tally.distanceSum += std::sqrt(dx * dx + dy * dy);
    }
    return tally;
}

ReviewFigures reviewFigures(const ReviewTally &tally, bool useCms)
{
    const QString none = QStringLiteral("N/A");
    if (tally.darts <= 0)
        return {QStringLiteral("0"), QString::number(tally.hits), none, none};
    return {QString::number(tally.darts), QString::number(tally.hits),
            hitPercentText(tally.hits, tally.darts) + QLatin1Char('%'),
            distanceText(tally.distanceSum / double(tally.darts), useCms)};
}

} // namespace tavrix
