#pragma once

// "More Info" in review mode: the player's own skill factors (the outer
// bound of each distance band and the wildness) with the sample count.

#include <QGroupBox>

class QLabel;

namespace tavrix {

struct SkillProfileState;

class SkillFactorsFrame : public QGroupBox {
    Q_OBJECT

public:
    explicit SkillFactorsFrame(QWidget *parent = nullptr);

    // With too few samples only the count and the low-samples note show.
    void showProfile(const SkillProfileState &skill, bool useCms);

private:
    QList<QLabel *> radii_;
    QLabel *wildness_ = nullptr;
    QLabel *sampleCount_ = nullptr;
    QWidget *factors_ = nullptr;
    QGroupBox *lowSamples_ = nullptr;
};

} // namespace tavrix
