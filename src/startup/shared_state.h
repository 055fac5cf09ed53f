#pragma once

// State shared by the main window, its dialogs and the game code for the
// whole run of the program. One instance lives in the Program; everything
// else holds a reference to it.

#include "opponent/skill_profile.h"
#include "stats/local_tallies.h"
#include "stats/stats_store.h"

#include <QRandomGenerator>
#include <QString>
#include <QStringList>

#include <array>

namespace tavrix {

enum Mode : int { ModePractice = 1, ModeReview = 2, ModePlay = 3 };

struct SharedState {
    int currentMode = ModePlay;
    // 0 no throwing, 1 cork dart awaited, 2 cork dart placed, 3 darts of a turn.
    int throwPhase = 0;
    // Markers placed in the current set, 0 to 3; the board only raises it.
    int pipCount = 0;
    // 1: player 1 (the opponent) throws, 2: the local player.
    int currentThrower = 2;
    // 0 none yet, 1 Cricket, 2 301, 3 501.
    int gameType = 0;
    // The local player's darts of this game are recorded with their targets.
    bool keepStats = false;
    // Cricket marks per player (row = player - 1) on 20 down to 15 and the bull.
    std::array<std::array<int, 7>, 2> cricketMarks{};
    // Aiming point of the practice target, board units.
    double targetX = 0;
    double targetY = 0;
    // The program's one random generator, seeded from the clock when the
    // main window loads; a fixed seed makes a run repeatable.
    QRandomGenerator random;

    // 0 while no player is chosen.
    qint16 currentPlayerId = 0;
    QString currentPlayerName;
    bool useCms = false;

    // The computer's and the player's name in messages of a game against
    // the computer.
    QStringList vsComputerNames{QStringLiteral("I"), QStringLiteral("You")};
    QString opponentName = QStringLiteral("Computer");
    QString lastOpponentName;

    // Practice sequences: the next number of a count-down and a count-up.
    int countdownNext = 21;
    int countupNext = 1;
    bool countdownActive = false;
    bool countupActive = false;

    // The throw model's profile and the "You" sample count.
    SkillProfileState skill;
    // Darts aimed at each scoring area, shown by the review hover.
    TargetCounts reviewCounts{};

    bool shutDownDone = false;
    LocalTallies tallies;
};

} // namespace tavrix
