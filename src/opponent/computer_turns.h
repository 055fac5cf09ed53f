#pragma once

// Player 1's darts shown one per second: the computer throwing through the
// throw model, or a remote player's darts (already placed from the network)
// being revealed. Each turn ends with a report and the "Ok" button enabled;
// scoring the turn is left to the game flow.

#include "opponent/computer_turn_rules.h"
#include "opponent/throw_model.h"

#include <QObject>

#include <functional>
#include <optional>

class QTimer;

namespace tavrix {

class BoardInput;
class CheckoutChart;
class DartMarker;
class GameFrame;
class Sounds;
struct SharedState;

class ComputerTurns : public QObject {
    Q_OBJECT

public:
    static constexpr int throwIntervalMs = 1000;

    struct X01Standing {
        int remaining = 0;
        bool doubledIn = false;
    };
    struct Context {
        SharedState &state;
        Sounds &sounds;
        const CheckoutChart &chart;
        BoardInput &board;
        GameFrame &frame;
        // Player 1's score and doubled-in state when a 301/501 turn starts.
        std::function<X01Standing()> x01Standing;
        std::function<bool()> simpleCricket;
    };
    explicit ComputerTurns(const Context &context, QObject *parent = nullptr);

    QTimer *throwTimer() const { return throwTimer_; }

    // Called once to start a turn (the timer is off) and then by every tick
    // of the timer, each of which handles one dart.
    void computer01Turn();
    void computerCricketTurn();

    // A remote player's darts: the first `count` of player 1's markers have
    // been placed, hidden, and the turn reveals them under `name`.
    void setRemoteDarts(int count, const QString &name);
    // Stops a turn in progress (the game was quit).
    void stop();

private:
    void ThrowTimer_Timer();
    bool remoteTurn() const { return remoteName_.has_value(); }
    // Where player 1's next dart landed: thrown at `aim`, or read back from
    // its placed marker.
    SimulatedDart nextDart(std::optional<BoardPoint> aim);
    void showDart(int index, const SimulatedDart &dart);
    // The landing sound, and for a computer dart on the double or treble it
    // aimed at, the harp or the fanfare.
    void landingSounds(const QString &description, bool hitAimedDouble, bool hitAimedTreble);
    void report(const QStringList &texts, std::optional<int> turnPoints);
    void hideFrom(int index);

    Context c_;
    QTimer *throwTimer_;
    std::optional<ComputerX01Turn> x01_;
    QStringList cricketTexts_;
    int computerDartCount_ = 0;
    int remoteDarts_ = 0;
    std::optional<QString> remoteName_;
};

} // namespace tavrix
