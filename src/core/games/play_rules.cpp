#include "core/games/play_rules.h"

#include "core/games/x01_rules.h"

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

SoundCue landingCue(BoardPoint at)
{
    return dartDescriptionFromXY(at.x, at.y) == QLatin1String("Bounce-out") ? SoundCue::Boing
                                                                            : SoundCue::Splat;
}

std::optional<SoundCue> x01HitCue(DartScore score, DartScore target)
{
    if (score != target)
        return std::nullopt;
    return score.multiplier == 3 ? SoundCue::Fanfare : SoundCue::Harp;
}

std::optional<SoundCue> cricketHitCue(DartScore score, const CricketRow &otherPlayer)
{
    const int slot = cricketSlot(score.number);
    if (slot < 0 || otherPlayer[slot] >= 3)
        return std::nullopt;
    if (score.multiplier == 2)
        return SoundCue::Harp;
    if (score.multiplier == 3)
        return SoundCue::Fanfare;
    return std::nullopt;
}

std::optional<SoundCue> applauseCue(GameType type, int turnPoints, int turnMarks)
{
    const bool x01 = isX01(type);
    const int amount = x01 ? turnPoints : turnMarks;
    const std::array<int, 3> steps = x01 ? std::array<int, 3>{140, 100, 60} : std::array<int, 3>{8, 6, 3};
    if (amount >= steps[0])
        return SoundCue::Applause140;
    if (amount >= steps[1])
        return SoundCue::Applause100;
    if (amount >= steps[2])
        return SoundCue::Applause60;
    return std::nullopt;
}

RecordedTarget recordedTarget(DartScore target)
{
    if (target.number == 25)
        return {25, 1, BoardPoint{0, 0}};
    return {target.number, target.multiplier, aimPoint(target.multiplier, target.number)};
}

QString scoreColumnLine(int remaining, int previous)
{
    return remaining != previous ? QStringLiteral("\n") + QString::number(remaining) : QStringLiteral("*");
}

QString turnPrompt(const QString &name)
{
    return QStringLiteral("\n") + name
           + QStringLiteral(": Throw your darts, mark the board, adjust if necessary, and click \"Ok\"");
}

QString x01TurnPrompt(const QString &name, int remaining, bool doubledIn, bool doubleOut,
                      const CheckoutChart &chart)
{
    const QString bestOut = remaining <= 180 ? chart.routeText(remaining, doubleOut) : QString();
    QString text = turnPrompt(name);
    if (!bestOut.isEmpty())
        text += QStringLiteral("\n\nBest Out: ") + bestOut;
    else if (doubledIn)
        text += QStringLiteral("\n\nRecommend T20 next.");
    if (!doubledIn)
        text += QStringLiteral("\n\nYou have not yet doubled in.");
    return text;
}

QString cricketLiveText(const QString &name, const std::array<std::optional<BoardPoint>, 3> &darts,
                        int marked)
{
    if (!darts[0] && !darts[1] && !darts[2])
        return {};
    QString text = QStringLiteral("\n") + name + QStringLiteral(" threw: ") + dartListText(darts);
    if (marked >= 3)
        text += QStringLiteral("\n\nAdjust darts if necessary and click \"Ok\" to continue.");
    return text;
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

GameResult gameResultRow(const GameEnd &end)
{
    GameResult result;
    const bool won = end.winner == 2;
    result.result = won ? QStringLiteral("W") : QStringLiteral("L");
    if (won)
        result.outSet = end.lastSetPoints;
    if (end.type == GameType::Cricket) {
        result.points = end.simpleCricket ? 0 : end.localCricketPoints;
        result.bestSet = 0;
    } else {
        result.points = end.startScore - (won ? 0 : end.localRemaining);
        result.bestSet = end.bestSet;
    }
    result.throws = end.localThrows;
    return result;
}

QString gameOverText(const QString &winner)
{
    return QStringLiteral("\n") + winner
           + QStringLiteral(" won that one.\n\nClick \"Play Again\" to play the same game, or "
                            "\"Quit Game\" to change options.");
}

GlanceFigures x01Glance(int left, std::optional<double> average)
{
    return {QString::number(left),
            QStringLiteral("Avg ") + (average ? QString::number(*average, 'f', 2) : QStringLiteral("-"))};
}

namespace {

int closedSlots(const CricketRow &row)
{
    return int(std::count_if(row.begin(), row.end(), [](int marks) { return marks >= 3; }));
}

} // namespace

GlanceFigures cricketGlance(const CricketRow &row, bool simple, int points)
{
    const QString closed = QString::number(closedSlots(row)) + QStringLiteral("/7");
    if (simple)
        return {closed, QStringLiteral("closed")};
    return {QString::number(points), closed + QStringLiteral(" closed")};
}

std::array<bool, 7> closedByBoth(const CricketMarks &marks)
{
    std::array<bool, 7> both{};
    for (int slot = 0; slot < 7; ++slot)
        both[slot] = marks[0][slot] >= 3 && marks[1][slot] >= 3;
    return both;
}

} // namespace tavrix
