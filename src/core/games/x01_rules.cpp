#include "core/games/x01_rules.h"

namespace tavrix {

int findDoubleIn(const SetDarts &darts)
{
    for (int i = 0; i < 3; ++i) {
        // A dart not on the board lies off it and cannot double in.
        const BoardPoint at = darts[i].value_or(BoardPoint{1000, 1000});
        const int ring = ringFromXY(at.x, at.y);
        if ((ring == RingDouble && segmentFromXY(at.x, at.y) > 0) || ring == RingBull)
            return i;
    }
    return -1;
}

X01Set scoreX01Set(const SetDarts &darts, int remaining, bool doubledIn)
{
    X01Set set;
    int firstCounted = 0;
    if (!doubledIn) {
        const int k = findDoubleIn(darts);
        set.doubledIn = k >= 0;
        firstCounted = k >= 0 ? k : 3;
    }
    set.remaining = remaining;
    for (int i = 0; i < 3; ++i) {
        if (!darts[i])
            continue;
        const DartScore score = scoreFromXY(darts[i]->x, darts[i]->y);
        set.lastMultiplier = score.multiplier;
        set.darts.append(i);
        if (i >= firstCounted) {
            set.remaining -= score.multiplier * score.number;
            set.turnPoints += score.multiplier * score.number;
            if (set.remaining <= 1)
                break;
        }
    }
    return set;
}

X01Outcome x01Outcome(int remaining, bool doubleOut, int lastMultiplier)
{
    if (remaining < 0 || remaining == 1 || (doubleOut && remaining == 0 && lastMultiplier != 2))
        return X01Outcome::Bust;
    if (remaining == 0 && (lastMultiplier == 2 || !doubleOut))
        return X01Outcome::Win;
    return X01Outcome::Continue;
}

bool countsForBestSet(int remaining, bool doubleOut)
{
    return remaining == 0 || remaining > 1 || (remaining == 1 && !doubleOut);
}

DartScore nextX01Aim(const QList<DartScore> &placed, int remaining, bool doubledIn,
                     bool doubleOut, const CheckoutChart &chart)
{
    for (const DartScore &dart : placed) {
        if (dart.multiplier == 2)
            doubledIn = true;
        if (doubledIn)
            remaining -= dart.multiplier * dart.number;
    }
    if (!doubledIn)
        return {2, 20};
    const DartRoute route = chart.checkoutDarts(remaining, doubleOut);
    return route.isEmpty() ? DartScore{} : route.first();
}

QString joinDartTexts(const QStringList &texts)
{
    QString list;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        if (i > 0)
            list += i == texts.size() - 1 ? QStringLiteral(", and ") : QStringLiteral(", ");
        list += texts[i];
    }
    return list;
}

QString dartListText(const SetDarts &darts)
{
    QStringList texts;
    for (const std::optional<BoardPoint> &dart : darts) {
        if (dart)
            texts.append(dartDescriptionFromXY(dart->x, dart->y));
    }
    return joinDartTexts(texts);
}

QString x01LiveText(const QString &name, const SetDarts &darts, int pipCount, int remaining,
                    bool doubledIn, bool doubleOut, const CheckoutChart &chart)
{
    QString text;
    QString recommendation;
    int points = 0;
    bool any = false;
    for (int i = 0; i < 3; ++i) {
        if (!darts[i])
            continue;
        any = true;
        const DartScore score = scoreFromXY(darts[i]->x, darts[i]->y);
        // The live advice takes any multiplier 2 as a double, wire or not.
        if (!doubledIn && score.multiplier == 2)
            doubledIn = true;
        if (doubledIn)
            points += score.multiplier * score.number;
        text = QStringLiteral("\n") + name + QStringLiteral(" threw: ") + dartListText(darts)
               + QStringLiteral(" for ") + QString::number(points) + QStringLiteral(" points.");
        if (pipCount >= 3) {
            text += QStringLiteral("\n\nAdjust darts if necessary and click \"Ok\" to continue.");
        } else if (doubledIn) {
            remaining -= score.multiplier * score.number;
            const DartRoute route = chart.checkoutDarts(remaining, doubleOut);
            const DartScore next = route.isEmpty() ? DartScore{} : route.first();
            recommendation = next.multiplier == 0
                                 ? QString()
                                 : QStringLiteral("SDT").mid(next.multiplier - 1, 1)
                                       + QString::number(next.number);
        } else {
            recommendation = QStringLiteral("D20");
        }
    }
    if (any && pipCount < 3) {
        if (recommendation.isEmpty())
            text += remaining == 0 ? QStringLiteral("\n\nGame over?")
                                   : QStringLiteral("\n\nNo recommendations.");
        else
            text += QStringLiteral("\n\nRecommend ") + recommendation + QStringLiteral(" next.");
    }
    return text;
}

} // namespace tavrix
