#pragma once

// Opponents whose turn is shown a dart a second: the computer, which throws
// each dart through the throw model, and the player at another copy of the
// program (NetworkPeer), whose darts arrive already placed. Each
// dart lands with its sound; the turn ends with a report of what was thrown,
// after which the person at this board confirms it with "Ok".

#include "core/board/board_geometry.h"
#include "core/games/thrower.h"
#include "core/opponent/throw_model.h"

#include <QList>
#include <QObject>
#include <QPointer>

#include <optional>

class QTimer;

namespace tavrix {

class GameSession;
class SoundOut;

class DartByDartOpponent : public QObject, public Thrower {
    Q_OBJECT

public:
    static constexpr int throwIntervalMs = 1000;

    DartByDartOpponent(SoundOut &sounds, QObject *parent = nullptr);

    // "ThrowTimer": one dart each time it fires.
    QTimer *throwTimer() const { return throwTimer_; }

    bool marksAtThisBoard() const override { return false; }
    void takeTurn(GameSession &game, int player) override;
    void stop() override;

protected:
    struct NextDart {
        SimulatedDart landed;
        // The area aimed at, when the dart was aimed.
        std::optional<DartScore> aimedAt;
    };
    // Dart `index` of the turn, or nothing when no more darts come.
    virtual std::optional<NextDart> nextDart(const GameSession &game, int index) = 0;
    // Whether dart `index` will come; where the rules end a turn with the
    // last dart a side sends, the turn is reported with the dart before.
    virtual bool hasDart(int) const { return true; }

    SoundOut &sounds_;

private:
    void ThrowTimer_Timer();
    void report();

    QTimer *throwTimer_;
    QPointer<GameSession> game_;
    int player_ = 1;
    // How each dart of the turn is described in the report.
    QStringList dartTexts_;
};

// The computer: aims where the game's rules and advisor say (in 301/501
// double 20 until it has doubled in, then the checkout chart's first dart,
// else treble 20; in Cricket the advice); its cork at the bull.
class ComputerOpponent : public DartByDartOpponent {
    Q_OBJECT

public:
    ComputerOpponent(SoundOut &sounds, QRandomGenerator &random, const SkillProfile &profile,
                     QObject *parent = nullptr);

    void throwCork(GameSession &game, int player) override;

protected:
    std::optional<NextDart> nextDart(const GameSession &game, int index) override;

private:
    QRandomGenerator &random_;
    const SkillProfile &profile_;
};

} // namespace tavrix
