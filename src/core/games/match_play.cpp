#include "core/games/match_play.h"

namespace tavrix {

namespace {

const QString dash = QStringLiteral("\u2013");

QString pair(int first, int second)
{
    return QString::number(first) + dash + QString::number(second);
}

// "Computer 1, Ann 2": a figure of each player, player 1's first.
QString byName(const std::array<QString, 2> &names, int first, int second)
{
    return names[0] + QLatin1Char(' ') + QString::number(first) + QStringLiteral(", ") + names[1]
           + QLatin1Char(' ') + QString::number(second);
}

bool setMatch(const Match &match) { return match.format().kind == MatchKind::Sets; }

QString legPlace(const Match &match)
{
    if (setMatch(match))
        return QStringLiteral("Set %1, leg %2").arg(match.setNumber()).arg(match.legNumber());
    return QStringLiteral("Leg %1").arg(match.legNumber());
}

QString average(double value) { return QString::number(value, 'f', 2); }

} // namespace

MatchFormat formatOfChoice(int choice, int legs, int sets)
{
    switch (MatchChoice(choice)) {
    case MatchChoice::Legs:
        return MatchFormat::firstToLegs(legs).clamped();
    case MatchChoice::Sets:
        return MatchFormat::firstToSets(sets, legs).clamped();
    case MatchChoice::SingleGame:
        break;
    }
    return MatchFormat::singleGame();
}

MatchChoice choiceOfFormat(const MatchFormat &format)
{
    switch (format.kind) {
    case MatchKind::Legs:
        return MatchChoice::Legs;
    case MatchKind::Sets:
        return MatchChoice::Sets;
    case MatchKind::SingleGame:
        break;
    }
    return MatchChoice::SingleGame;
}

QString matchScoreText(const Match &match)
{
    const QString legs = QStringLiteral("Legs ") + pair(match.setLegs(0), match.setLegs(1));
    if (!setMatch(match))
        return legs;
    return QStringLiteral("Sets ") + pair(match.setsWon(0), match.setsWon(1)) + QStringLiteral(" \u00b7 ") + legs;
}

QString legStarterText(const Match &match, const std::array<QString, 2> &names, bool legInPlay)
{
    // Until the leg in play is recorded, the match's next leg is that leg.
    const std::optional<int> first = match.nextFirstThrower();
    if (!first)
        return {};
    if (legInPlay)
        return legPlace(match) + QStringLiteral(": ") + names[*first] + QStringLiteral(" threw first");
    QString place = legPlace(match);
    place[0] = place[0].toLower();
    return QStringLiteral("Next, ") + place + QStringLiteral(": ") + names[*first] + QStringLiteral(" throws first");
}

QString legOverTitle(LegOutcome outcome)
{
    return outcome == LegOutcome::SetWon ? QStringLiteral("Set Over") : QStringLiteral("Leg Over");
}

QString legOverText(const Match &match, LegOutcome outcome, const QString &winnerName,
                    const std::array<QString, 2> &names)
{
    const QString sets = QStringLiteral("Sets: ") + byName(names, match.setsWon(0), match.setsWon(1));
    if (outcome == LegOutcome::SetWon)
        return winnerName + QStringLiteral(" won the set!\r\n\r\n") + sets;
    QString text = winnerName + QStringLiteral(" won the leg!\r\n\r\n");
    if (!setMatch(match))
        return text + QStringLiteral("Legs: ") + byName(names, match.setLegs(0), match.setLegs(1));
    return text + QStringLiteral("Legs in this set: ") + byName(names, match.setLegs(0), match.setLegs(1))
           + QStringLiteral("\r\n") + sets;
}

QString matchOverText(const Match &match, const QString &winnerName, const std::array<QString, 2> &names,
                      bool cricket)
{
    const int winner = match.winner().value_or(0);
    const int loser = 1 - winner;
    const bool sets = setMatch(match);
    const int won = sets ? match.setsWon(winner) : match.legsWon(winner);
    const int lost = sets ? match.setsWon(loser) : match.legsWon(loser);
    const QString unit = sets ? QStringLiteral("sets") : QStringLiteral("legs");
    const QString figures = cricket ? QStringLiteral("Marks per round: ") : QStringLiteral("Match averages: ");
    return winnerName + QStringLiteral(" won the match by %1 %2 to %3!\r\n\r\n").arg(won).arg(unit).arg(lost)
           + figures + names[0] + QLatin1Char(' ') + average(match.average(0)) + QStringLiteral(", ") + names[1]
           + QLatin1Char(' ') + average(match.average(1));
}

QString nextLegText(const QString &winner)
{
    return QStringLiteral("\n") + winner
           + QStringLiteral(" won that leg.\n\nClick \"Next Leg\" to play the next one, or "
                            "\"Quit Game\" to end the match.");
}

QString nextLegConsentText(const QString &name)
{
    return QStringLiteral("\n") + name + QStringLiteral(" wants to play the next leg.\n\nClick \"Next Leg\" to consent.");
}

std::pair<int, int> wireFormat(const MatchFormat &format)
{
    switch (format.kind) {
    case MatchKind::Legs:
        return {1, format.legs};
    case MatchKind::Sets:
        return {format.sets, format.legs};
    case MatchKind::SingleGame:
        break;
    }
    return {1, 1};
}

std::optional<MatchFormat> formatFromWire(int sets, int legs)
{
    MatchFormat format = MatchFormat::singleGame();
    if (sets == 1 && legs != 1)
        format = MatchFormat::firstToLegs(legs);
    else if (sets != 1)
        format = MatchFormat::firstToSets(sets, legs);
    if (!format.isValid())
        return std::nullopt;
    return format;
}

} // namespace tavrix
