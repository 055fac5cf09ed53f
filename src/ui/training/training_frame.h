#pragma once

// The "Training Mode" frame: the drill list and the target of 99 darts, the
// Start button, the round's target in type read from the oche, the score,
// where the drill stands, the darts of the set, and the buttons that
// confirm a set, take a dart back and quit.

#include <QGroupBox>

class QComboBox;
class QLabel;
class QPushButton;

namespace tavrix {

class TrainingModeFrame : public QGroupBox {
    Q_OBJECT

public:
    explicit TrainingModeFrame(QWidget *parent = nullptr);

    QGroupBox *drillChoice() const { return choice_; }
    QComboBox *drillList() const { return drillList_; }
    QComboBox *targetList() const { return targetList_; }
    QPushButton *startButton() const { return start_; }
    QPushButton *confirmButton() const { return confirm_; }
    QPushButton *undoButton() const { return undo_; }
    QPushButton *quitButton() const { return quit_; }
    QLabel *targetText() const { return target_; }
    QLabel *scoreText() const { return score_; }
    QLabel *progressText() const { return progress_; }
    QLabel *dartsText() const { return darts_; }
    QLabel *bestText() const { return best_; }
    QLabel *resultText() const { return result_; }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QGroupBox *choice_ = nullptr;
    QComboBox *drillList_ = nullptr;
    QComboBox *targetList_ = nullptr;
    QPushButton *start_ = nullptr;
    QPushButton *confirm_ = nullptr;
    QPushButton *undo_ = nullptr;
    QPushButton *quit_ = nullptr;
    QLabel *target_ = nullptr;
    QLabel *score_ = nullptr;
    QLabel *progress_ = nullptr;
    QLabel *darts_ = nullptr;
    QLabel *best_ = nullptr;
    QLabel *result_ = nullptr;
};

} // namespace tavrix
