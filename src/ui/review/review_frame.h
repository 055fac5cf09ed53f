#pragma once

// The "Review Mode" frame: the greeting, how to choose an area, the legend of
// the plot, the figures of the chosen area for practice, for play and in
// total, and the player's own skill factors.

#include <QGroupBox>

#include <array>

class QCheckBox;
class QLabel;
class QProgressBar;

namespace tavrix {

class SkillFactorsFrame;
struct ReviewFigures;

class ReviewFrame : public QGroupBox {
    Q_OBJECT

public:
    // The figure frames, in the order of their index.
    enum Figures { Practice = 0, Play = 1, Total = 2 };

    explicit ReviewFrame(QWidget *parent = nullptr);

    QLabel *greeting() const { return greeting_; }
    SkillFactorsFrame *skillFactors() const { return skillFactors_; }
    // "Show where to aim", and the bar that moves while the advice is
    // worked out.
    QCheckBox *aimMapCheck() const { return aimMapCheck_; }
    QProgressBar *aimBusy() const { return aimBusy_; }

    void setCaption(int index, const QString &caption);
    // No area chosen: the frames' captions and figures as at first.
    void clearFigures();
    void showFigures(int index, const ReviewFigures &figures);

private:
    QLabel *greeting_ = nullptr;
    SkillFactorsFrame *skillFactors_ = nullptr;
    QCheckBox *aimMapCheck_ = nullptr;
    QProgressBar *aimBusy_ = nullptr;
    std::array<QGroupBox *, 3> figureFrames_{};
    // Per frame: darts, hits, percentage, average distance.
    std::array<std::array<QLabel *, 4>, 3> values_{};
};

} // namespace tavrix
