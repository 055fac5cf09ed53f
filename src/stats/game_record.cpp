#include "stats/game_record.h"

namespace tavrix {

QString recordOpponentName(int opponentKind, int skillLevel, bool networkPlay,
                           const QString &opponentName, const QString &playerName)
{
    if (opponentKind != 2) {
        static const char *const levels[] = {"Beginner", "Player", "Pro"};
        const QString level = skillLevel >= 1 && skillLevel <= 3
                                  ? QString::fromLatin1(levels[skillLevel - 1])
                                  : playerName;
        return QStringLiteral("Virtual ") + level;
    }
    return networkPlay ? QStringLiteral("e-") + opponentName : opponentName;
}

namespace {

QString recordText(const QString &opponent, int gameType, int wins, int losses, int bestLeg,
                   int bestOut)
{
    QString text = QStringLiteral("vs ") + opponent + QStringLiteral("\nWon: ") + QString::number(wins)
                   + QStringLiteral("  Lost: ") + QString::number(losses);
    if (gameType > 1)
        text += QStringLiteral("\nBest Leg: ") + QString::number(bestLeg)
                + QStringLiteral("\nBest out: ") + QString::number(bestOut);
    return text;
}

} // namespace

RecordTexts gameRecordTexts(const QString &opponent, int gameType, const LocalTallies &tallies,
                            const GameRecordFigures &overall)
{
    return {recordText(opponent, gameType, tallies.localWins, tallies.localLosses,
                       tallies.localBestLeg, tallies.localBestOut),
            recordText(opponent, gameType, overall.wins, overall.losses, overall.bestLeg,
                       overall.bestOut)};
}

} // namespace tavrix
