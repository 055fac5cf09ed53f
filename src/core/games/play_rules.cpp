#include "core/games/play_rules.h"

#include <QRandomGenerator>

#include <algorithm>
#include <cmath>

namespace tavrix {

int corkFirstThrower(double distance1, double distance2, bool useCms, int tieWinner)
{
    const double shown1 = shownDistance(distance1, useCms);
    const double shown2 = shownDistance(distance2, useCms);
    if (shown1 < shown2)
        return 1;
    if (shown2 < shown1)
        return 2;
    return tieWinner;
}

int networkCorkFirstThrower(double distance1, double distance2, int clientPlayer)
{
    if (distance1 < distance2)
        return 1;
    if (distance2 < distance1)
        return 2;
    return clientPlayer;
}

QString corkPrompt(const QString &name)
{
    return QStringLiteral("\n") + name
           + QStringLiteral(": Throw the cork.  Mark where your dart went on the board, adjust if "
                            "necessary, and click \"Confirm Dart\"");
}

QString corkResultText(bool vsComputer, const std::array<QString, 2> &names, double distance1,
                       double distance2, bool useCms, int first)
{
    const QString text1 = distanceText(distance1, useCms);
    const QString text2 = distanceText(distance2, useCms);
    if (vsComputer) {
        return QStringLiteral("\nMy dart: ") + text1 + QStringLiteral("\nYour dart: ") + text2
               + QStringLiteral("\n\n")
               + (first == 2 ? QStringLiteral("You go first.") : QStringLiteral("I go first"))
               + QStringLiteral("\n(Click \"Ok\")");
    }
    return QStringLiteral("\n") + names[0] + QStringLiteral("'s dart: ") + text1 + QStringLiteral("\n")
           + names[1] + QStringLiteral("'s dart: ") + text2 + QStringLiteral("\n\n") + names[first - 1]
           + QStringLiteral(" goes first.\n(Click \"Ok\")");
}

RecordedTarget recordedTarget(DartScore target)
{
    if (target.number == 25)
        return {25, 1, BoardPoint{0, 0}};
    return {target.number, target.multiplier, aimPoint(target.multiplier, target.number)};
}

QString alertTitle(AlertKind kind, QRandomGenerator &random)
{
    static const QStringList doubledIn{"Hooray!", "Great!", "Faaan-tastic!", "Game on!", "Yes!"};
    static const QStringList notDoubledIn{"Too bad...", "Nuts!", "Doh!", "Oh well...", "Ha-ha!"};
    static const QStringList bust{"Too bad", "Rats!", "NOOO!!!", "Oh well...", "Ugh."};
    const QStringList &titles = kind == AlertKind::DoubledIn      ? doubledIn
                                : kind == AlertKind::NotDoubledIn ? notDoubledIn
                                                                  : bust;
    return titles[static_cast<int>(random.generateDouble() * titles.size())];
}

GameResult gameResultRow(bool localWon, int lastSetPoints, int localThrows, const LocalFigures &figures)
{
    GameResult result;
    result.result = localWon ? QStringLiteral("W") : QStringLiteral("L");
    if (localWon)
        result.outSet = lastSetPoints;
    result.points = figures.points;
    result.bestSet = figures.bestSet;
    result.throws = localThrows;
    return result;
}

QString gameOverText(const QString &winner)
{
    return QStringLiteral("\n") + winner
           + QStringLiteral(" won that one.\n\nClick \"Play Again\" to play the same game, or "
                            "\"Quit Game\" to change options.");
}

} // namespace tavrix
