#pragma once

// Keeps the play set-up across runs: the game, the opponent, the skill, the
// Cricket rules, "Keep Target Stats" and the match (its format, legs and
// sets) are stored each time the user changes one, and chosen again at the
// next start. A match format the program writes on the frame (a network
// server's) is not the user's choice and is not stored.

#include <QObject>

namespace tavrix {

class GameFrame;

class GameChoices : public QObject {
    Q_OBJECT

public:
    GameChoices(GameFrame &frame, QObject *parent);

    // Chooses the stored game, skill and opponent with the same clicks as the
    // user's, so the frames follow; a missing or garbled value, or a skill
    // that cannot be chosen now, keeps what is chosen. So does a match value
    // that no format allows.
    void restore();

private:
    void save() const;
    // Each saves what the user changed in the "Match" box, and nothing else.
    void saveMatchFormat() const;
    void saveMatchLegs() const;
    void saveMatchSets() const;
    void restoreMatch();

    GameFrame &frame_;
    bool restoring_ = false;
};

} // namespace tavrix
