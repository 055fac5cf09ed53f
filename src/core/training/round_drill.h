#pragma once

// A drill of a fixed number of rounds, three darts each: a round ends with
// its third dart or when its set is confirmed, whichever comes first, and
// only then does its failure cost (Bob's 27, Halve-It) or the next round
// begin.

#include "core/training/drill_parts.h"

namespace tavrix {

class RoundDrill : public Drill {
public:
    int round() const override { return round_; }
    int rounds() const override { return rounds_; }
    int dartsLeftInSet() const override { return over_ ? 0 : set_.left(); }
    // "Round 3 of 21 · 2 darts left".
    QString progressText() const override;
    DrillDartOutcome applyDart(const DartScore &dart) final;
    void endSet() final;
    bool over() const override { return over_; }
    int score() const override { return total_; }
    bool completed() const override { return over_; }

protected:
    RoundDrill(int rounds, int start) : rounds_(rounds), total_(start) {}

    // The dart within the round: Hit, Shanghai or None, and its points.
    virtual DrillDartOutcome scoreDart(const DartScore &dart) = 0;
    struct RoundEnd {
        bool failed = false;
        int change = 0; // added to the total when the round ends
    };
    virtual RoundEnd closeRound() { return {}; }
    // Called for every round from the second on; the first is set up by
    // the constructor.
    virtual void startRound() {}
    virtual bool endsEarly() const { return false; }

    int total() const { return total_; }
    // The dart of the round about to be thrown (or, in scoreDart, being
    // scored), 0 to 2.
    int nextDart() const { return set_.accepts() ? set_.thrown() : 0; }
    // Whether a dart of the round now has counted (scoreDart reported it).
    bool roundHit() const { return roundHit_; }

private:
    RoundEnd finishRound();

    int rounds_;
    int total_;
    int round_ = 1;
    bool over_ = false;
    bool roundHit_ = false;
    SetDarts set_;
};

} // namespace tavrix
