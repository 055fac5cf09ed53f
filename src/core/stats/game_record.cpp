#include "core/stats/game_record.h"

namespace tavrix {

QString recordOpponentName(OpponentKind opponentKind, SkillLevel skillLevel, bool networkPlay,
                           const QString &opponentName, const QString &playerName)
{
    if (opponentKind != OpponentKind::Human) {
        static const char *const levels[] = {"Beginner", "Player", "Pro"};
        const int level = code(skillLevel);
        const QString name = level >= 1 && level <= 3 ? QString::fromLatin1(levels[level - 1])
                                  : playerName;
        return QStringLiteral("Virtual ") + name;
    }
    return networkPlay ? QStringLiteral("e-") + opponentName : opponentName;
}

namespace {

QString recordText(const QString &opponent, GameType gameType, int wins, int losses, int bestLeg,
                   int bestOut)
{
    QString text = QStringLiteral("vs ") + opponent + QStringLiteral("\nWon: ") + QString::number(wins)
                   + QStringLiteral("  Lost: ") + QString::number(losses);
    if (isX01(gameType))
        text += QStringLiteral("\nBest Leg: ") + QString::number(bestLeg)
                + QStringLiteral("\nBest out: ") + QString::number(bestOut);
    return text;
}

} // namespace

RecordTexts gameRecordTexts(const QString &opponent, GameType gameType, const LocalTallies &tallies,
                            const GameRecordFigures &overall)
{
    return {recordText(opponent, gameType, tallies.localWins, tallies.localLosses,
                       tallies.localBestLeg, tallies.localBestOut),
            recordText(opponent, gameType, overall.wins, overall.losses, overall.bestLeg,
                       overall.bestOut)};
}

} // namespace tavrix
