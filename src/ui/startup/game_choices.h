#pragma once

// Keeps the play set-up across runs: the game, the opponent, the skill, the
// Cricket rules and "Keep Target Stats" are stored each time the user
// changes one, and chosen again at the next start.

#include <QObject>

namespace tavrix {

class GameFrame;

class GameChoices : public QObject {
    Q_OBJECT

public:
    GameChoices(GameFrame &frame, QObject *parent);

    // Chooses the stored game, skill and opponent with the same clicks as the
    // user's, so the frames follow; a missing or garbled value, or a skill
    // that cannot be chosen now, keeps what is chosen.
    void restore();

private:
    void save() const;

    GameFrame &frame_;
    bool restoring_ = false;
};

} // namespace tavrix
