#pragma once

// Opponents whose turn is shown a dart a second: the computer, which throws
// each dart through the throw model, and a player whose darts arrive already
// placed (from another copy of the program), revealed the same way. Each
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

// A player whose darts arrive already placed (from another copy of the
// program): its turn waits until the set of up to three darts is handed over,
// and its cork dart is taken whenever it comes.
class PlacedDartsOpponent : public DartByDartOpponent {
    Q_OBJECT

public:
    using DartByDartOpponent::DartByDartOpponent;

    // The darts of this side's turn (fewer than three when the rest were
    // withheld): revealed at once when the turn has started, else when it
    // does.
    void setDarts(const QList<BoardPoint> &darts);
    // The cork dart: placed and confirmed when the game awaits it, else kept
    // until it does. It lands with the sound of where it landed.
    void placeCork(BoardPoint at);

    void throwCork(GameSession &game, int player) override;
    void takeTurn(GameSession &game, int player) override;
    void stop() override;

protected:
    std::optional<NextDart> nextDart(const GameSession &game, int index) override;
    bool hasDart(int index) const override { return index < darts_.size(); }

private:
    void deliverCork();

    QList<BoardPoint> darts_;
    // Darts handed over for a turn not yet started.
    bool dartsWaiting_ = false;
    // A turn started before its darts came.
    QPointer<GameSession> turnGame_;
    int turnPlayer_ = 1;
    std::optional<BoardPoint> cork_;
    QPointer<GameSession> corkGame_;
};

} // namespace tavrix
