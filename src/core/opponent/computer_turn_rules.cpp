#include "core/opponent/computer_turn_rules.h"

namespace tavrix {

DartScore computerX01Target(bool doubledIn, int remaining, bool doubleOut, const CheckoutChart &chart)
{
    if (!doubledIn)
        return {2, 20};
    const DartRoute route = chart.checkoutDarts(remaining, doubleOut);
    if (!route.isEmpty() && route.first().multiplier > 0)
        return route.first();
    return {3, 20};
}

BoardPoint targetPoint(DartScore target)
{
    return aimPoint(target.multiplier, target.number);
}

DartScore ComputerX01Turn::count(double x, double y, const QString &description)
{
    const DartScore score = scoreFromXY(x, y);
    if (score.multiplier == 2)
        doubledIn = true;
    remaining -= score.points();
    if (doubledIn)
        turnPoints += score.points();
    dartTexts.append(description);
    return score;
}

QString computerTurnReport(const QString &name, const QStringList &dartTexts,
                           std::optional<int> turnPoints)
{
    QString list = joinDartTexts(dartTexts);
    if (turnPoints)
        list += QStringLiteral(" for ") + QString::number(*turnPoints) + QStringLiteral(" points.");
    if (dartTexts.size() < 3)
        list += QStringLiteral(" (dart(s) withheld)");
    return QStringLiteral("\n") + name + QStringLiteral(" threw: ") + list
           + QStringLiteral("\n\n(Click \"Ok\" to continue)");
}

} // namespace tavrix
