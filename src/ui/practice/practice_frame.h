#pragma once

// The "Practice Mode" frame: target choice, the Go button, the instruction
// line, the read-outs of the three darts of a set and the running totals.

#include <QGroupBox>

#include <array>

class QComboBox;
class QLabel;
class QPushButton;

namespace tavrix {

class PracticeFrame : public QGroupBox {
    Q_OBJECT

public:
    explicit PracticeFrame(QWidget *parent = nullptr);

    QGroupBox *targetChoice() const { return frame3_; }
    QComboBox *ringDrop() const { return ringDrop_; }
    QComboBox *scoreDrop() const { return scoreDrop_; }
    QPushButton *goButton() const { return goButton_; }
    QLabel *generalText() const { return generalText_; }

    // Per dart of the set: distance and angle from the target, and the score.
    std::array<QLabel *, 3> rdisttext{};
    std::array<QLabel *, 3> angleText{};
    std::array<QLabel *, 3> scoreText{};
    // How the set's darts lie: mean distance to the target, the distance of
    // their centre, their spread about that centre.
    QLabel *avgDistText = nullptr;
    QLabel *geomDistText = nullptr;
    QLabel *groupingDistText = nullptr;
    // The running totals.
    QLabel *pctAllHitText = nullptr;
    QLabel *pctThisHitText = nullptr;
    QLabel *avgDistAnyText = nullptr;
    QLabel *avgDistThisText = nullptr;
    QLabel *pctAnysHitText = nullptr;
    QLabel *pctDoublesHitText = nullptr;
    QLabel *pctTriplesHitText = nullptr;
    QGroupBox *setResults() const { return frame1_; }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QGroupBox *frame3_ = nullptr;
    QGroupBox *frame1_ = nullptr;
    QComboBox *ringDrop_ = nullptr;
    QComboBox *scoreDrop_ = nullptr;
    QPushButton *goButton_ = nullptr;
    QLabel *generalText_ = nullptr;
};

} // namespace tavrix
