#pragma once

// The "Skill" frame of the play set-up: the four skill options and, under
// the "You" option, how many more recorded darts that level still needs.

#include <QGroupBox>

class QAbstractButton;
class QLabel;

namespace tavrix {

class SkillOptions : public QGroupBox {
    Q_OBJECT

public:
    explicit SkillOptions(QWidget *parent = nullptr);

    // opSkill_0 .. opSkill_3; "B-Player" is chosen at first.
    QList<QAbstractButton *> options() const { return options_; }

    // Enables "You" with enough samples; otherwise disables it and says how
    // many more are needed.
    void showYouAvailability(qint64 youSampleCount);
    // Hides what "You" still needs (the skills are not asked for).
    void hideYouAvailability();

private:
    QList<QAbstractButton *> options_;
    QGroupBox *youNeedSamples_ = nullptr;
    QLabel *needText_ = nullptr;
};

} // namespace tavrix
