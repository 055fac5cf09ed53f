#include "core/opponent/computer_turn_rules.h"

#include "core/games/game_rules.h"

namespace tavrix {

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
