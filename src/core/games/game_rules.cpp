#include "core/games/game_rules.h"

#include "core/games/cricket_rules.h"
#include "core/games/x01_rules.h"

#include <QStringList>

namespace tavrix {

std::unique_ptr<GameRules> makeGameRules(GameType type, const Advisor &advisor)
{
    if (type == GameType::Cricket)
        return std::make_unique<CricketRules>(advisor);
    return std::make_unique<X01Rules>(type == GameType::X01_301 ? GameType::X01_301 : GameType::X01_501, advisor);
}

SoundCue landingCue(BoardPoint at)
{
    return dartDescriptionFromXY(at.x, at.y) == QLatin1String("Bounce-out") ? SoundCue::Boing
                                                                            : SoundCue::Splat;
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

QString turnPrompt(const QString &name)
{
    return QStringLiteral("\n") + name
           + QStringLiteral(": Throw your darts, mark the board, adjust if necessary, and click \"Ok\"");
}

QString adjustDartsText()
{
    return QStringLiteral("\n\nAdjust darts if necessary and click \"Ok\" to continue.");
}

} // namespace tavrix
