#pragma once

// The report of a turn thrown dart by dart, by the computer or by a player
// whose darts arrive from another copy of the program.

#include <QString>
#include <QStringList>

#include <optional>

namespace tavrix {

// Who threw what, the points in 301/501 (none for Cricket), a note when
// fewer than three darts were thrown, and the request to click "Ok".
QString computerTurnReport(const QString &name, const QStringList &dartTexts,
                           std::optional<int> turnPoints);

} // namespace tavrix
