#pragma once

// Board points by the name of their area, for tests that throw darts.

#include "core/board/board_geometry.h"
#include "core/games/checkout_chart.h"
#include "core/games/game_rules.h"

#include <QStringList>

#include <cmath>

// A board point inside the area: "T20", "D16", "S5", "B" (bull), "OB"
// (outer bull), "M" (a miss off the board), "WD" (the wire between the
// doubles of 6 and 13).
inline tavrix::BoardPoint at(const QString &code)
{
    if (code == QLatin1String("B"))
        return {0, 0};
    if (code == QLatin1String("OB"))
        return {0, 13};
    if (code == QLatin1String("M"))
        return {0, 240};
    if (code == QLatin1String("WD"))
        return {196 * std::cos(9 * tavrix::radPerDeg), 196 * std::sin(9 * tavrix::radPerDeg)};
    const int multiplier = QStringLiteral("SDT").indexOf(code[0]) + 1;
    return tavrix::aimPoint(multiplier, code.mid(1).toInt());
}

inline tavrix::SetDarts set(const QStringList &codes)
{
    tavrix::SetDarts darts{};
    for (int i = 0; i < codes.size(); ++i) {
        if (!codes[i].isEmpty())
            darts[i] = at(codes[i]);
    }
    return darts;
}

inline tavrix::DartScore scoreOf(const QString &code)
{
    const tavrix::BoardPoint p = at(code);
    return tavrix::scoreFromXY(p.x, p.y);
}

// A small chart: enough rows to test advice without the database.
inline tavrix::CheckoutChart testChart()
{
    tavrix::CheckoutChart chart;
    chart.load({{40, QStringLiteral("T10,D5"), QStringLiteral("D20")},
                {32, QStringLiteral("D16"), QStringLiteral("D16")},
                {60, QStringLiteral("S20,D20"), QStringLiteral("S20,D20")}});
    return chart;
}
