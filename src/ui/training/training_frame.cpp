#include "ui/training/training_frame.h"

#include "core/training/drill.h"
#include "ui/dialogs/compact_layout.h"
#include "ui/dialogs/fitting_label.h"
#include "ui/dialogs/main_button.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace tavrix {

namespace {

// The target is read from the oche, three metres away: as large as the big
// figures of play mode, larger on a large screen; a long target ("Any
// treble") shrinks to the frame's width.
constexpr int smallestTarget = 56;
constexpr int largestTarget = 96;
constexpr int smallestScore = 32;
constexpr int largestScore = 56;

void setPixelSize(QLabel *label, int pixels, bool bold = true)
{
    QFont font = label->font();
    font.setBold(bold);
    font.setPixelSize(pixels);
    label->setFont(font);
}

QLabel *namedLabel(const char *name, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

TrainingModeFrame::TrainingModeFrame(QWidget *parent)
    : QGroupBox(QStringLiteral("Training Mode"), parent)
{
    setObjectName(QStringLiteral("trainingModeFrame"));
    auto *layout = new QVBoxLayout(this);
    compact(layout, 4);

    choice_ = new QGroupBox(QStringLiteral("Choose a Drill"), this);
    choice_->setObjectName(QStringLiteral("fraDrillChoice"));
    auto *form = compact(new QFormLayout(choice_), 2);
    drillList_ = new QComboBox(choice_);
    drillList_->setObjectName(QStringLiteral("cboDrill"));
    for (const DrillKind kind : allDrills())
        drillList_->addItem(drillName(kind), int(kind));
    // The longest name does not widen the frame; the list shows it whole.
    drillList_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    drillList_->setMinimumContentsLength(12);
    targetList_ = new QComboBox(choice_);
    targetList_->setObjectName(QStringLiteral("cboDrillTarget"));
    for (int number = 1; number <= 20; ++number)
        targetList_->addItem(QString::number(number), number);
    targetList_->addItem(QStringLiteral("Bull"), 25);
    targetList_->setCurrentIndex(targetList_->findData(20));
    // The list takes the whole width: the frame's title names it, and the
    // longest drill's name fits whole on the smallest screen.
    form->addRow(drillList_);
    form->addRow(QStringLiteral("Target:"), targetList_);
    layout->addWidget(choice_);

    start_ = new QPushButton(QStringLiteral("Start Drill"), this);
    start_->setObjectName(QStringLiteral("btnStartDrill"));
    makeMainButton(start_);
    layout->addWidget(start_);

    target_ = new FittingLabel(this);
    target_->setObjectName(QStringLiteral("lblDrillTarget"));
    target_->setAlignment(Qt::AlignCenter);
    target_->setToolTip(QStringLiteral("What to aim at now"));
    target_->setStyleSheet(QStringLiteral("QLabel#lblDrillTarget { color: #14642d; }"));
    setPixelSize(target_, smallestTarget);
    // The line keeps its height while empty, so nothing below it moves.
    target_->setMinimumHeight(target_->fontMetrics().height());
    layout->addWidget(target_);

    auto *scoreRow = new QHBoxLayout;
    scoreRow->setSpacing(6);
    auto *scoreCaption = new QLabel(QStringLiteral("Score:"), this);
    setPixelSize(scoreCaption, 16);
    score_ = new FittingLabel(this);
    score_->setObjectName(QStringLiteral("lblDrillScore"));
    score_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setPixelSize(score_, smallestScore);
    scoreRow->addWidget(scoreCaption);
    scoreRow->addWidget(score_, 1);
    layout->addLayout(scoreRow);

    progress_ = namedLabel("lblDrillProgress", this);
    setPixelSize(progress_, 15);
    layout->addWidget(progress_);
    darts_ = namedLabel("lblDrillDarts", this);
    darts_->setToolTip(QStringLiteral("The darts of this set as the board scored them"));
    // The line keeps its height while empty, so the buttons below stay put.
    darts_->setMinimumHeight(darts_->fontMetrics().height());
    layout->addWidget(darts_);

    confirm_ = new QPushButton(QStringLiteral("Confirm Darts"), this);
    confirm_->setObjectName(QStringLiteral("btnConfirmDrill"));
    makeMainButton(confirm_);
    layout->addWidget(confirm_);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(6);
    undo_ = new QPushButton(QStringLiteral("Undo Dart"), this);
    undo_->setObjectName(QStringLiteral("btnUndoDrillDart"));
    undo_->setToolTip(QStringLiteral("Takes back the last dart marked (Backspace)"));
    quit_ = new QPushButton(QStringLiteral("Quit Drill"), this);
    quit_->setObjectName(QStringLiteral("btnQuitDrill"));
    // Reached with Tab only, never by a click that leaves the focus on it.
    quit_->setFocusPolicy(Qt::TabFocus);
    buttons->addWidget(undo_, 1);
    buttons->addWidget(quit_, 1);
    layout->addLayout(buttons);

    best_ = namedLabel("lblDrillBest", this);
    layout->addWidget(best_);
    result_ = namedLabel("lblDrillResult", this);
    QFont bold = result_->font();
    bold.setBold(true);
    result_->setFont(bold);
    layout->addWidget(result_);
    layout->addStretch();
}

void TrainingModeFrame::resizeEvent(QResizeEvent *event)
{
    QGroupBox::resizeEvent(event);
    // "D16" takes about two em: the target grows with the frame's width.
    const int target = std::clamp(width() / 4, smallestTarget, largestTarget);
    if (target_->font().pixelSize() != target) {
        setPixelSize(target_, target);
        target_->setMinimumHeight(target_->fontMetrics().height());
    }
    const int score = std::clamp(width() / 7, smallestScore, largestScore);
    if (score_->font().pixelSize() != score)
        setPixelSize(score_, score);
}

} // namespace tavrix
