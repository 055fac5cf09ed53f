#pragma once

// What the whole program shares for its run: the current player, the unit of
// distances and the one random generator. Games and practice keep their own
// state; this stays small on purpose.

#include <QRandomGenerator>
#include <QString>

namespace tavrix {

struct Session {
    // 0 while no player is chosen.
    qint64 currentPlayerId = 0;
    QString currentPlayerName;
    bool useCms = false;
    // Seeded from the clock when the main window loads; a fixed seed makes a
    // run repeatable.
    QRandomGenerator random;

    // A uniform index below n, as Int(u * n) for u in [0, 1).
    int randomIndex(int n) { return static_cast<int>(random.generateDouble() * n); }
};

} // namespace tavrix
