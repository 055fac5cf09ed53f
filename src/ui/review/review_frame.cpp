#include "ui/review/review_frame.h"

#include "ui/dialogs/compact_layout.h"
#include "ui/dialogs/fitting_label.h"
#include "core/review/review_rules.h"
#include "ui/review/skill_factors_frame.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QProgressBar>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace tavrix {

namespace {

QLabel *wrapped(const char *text, QWidget *parent)
{
    auto *label = new QLabel(QString::fromLatin1(text), parent);
    label->setWordWrap(true);
    return label;
}

} // namespace

ReviewFrame::ReviewFrame(QWidget *parent)
    : QGroupBox(QStringLiteral("Review Mode"), parent)
{
    setObjectName(QStringLiteral("ReviewModeFrame"));
    auto *layout = compact(new QVBoxLayout(this), 1);

    auto *greeting = new FittingLabel(this);
    greeting->setObjectName(QStringLiteral("playerNameText_review"));
    greeting_ = greeting;
    layout->addWidget(greeting_);
    layout->addWidget(wrapped("Select scoring area to view by clicking on the corresponding section of "
                              "the dartboard image.",
                              this));

    const char *const frameNames[] = {"fraPracticeStats", "fraPlayStats", "FraTotalStats"};
    const std::pair<const char *, const char *> readouts[] = {
        {"# darts thrown:", "numThrowsText"},
        {"# Hits:", "numHitsText"},
        {"Hit Pctg:", "pctHitsText"},
        {"Avg. Dist to Target:", "avgDistText_review"}};
    for (int i = 0; i < 3; ++i) {
        auto *frame = new QGroupBox(QStringLiteral("Scoring Area"), this);
        frame->setObjectName(QString::fromLatin1(frameNames[i]));
        auto *grid = compact(new QGridLayout(frame));
        grid->setHorizontalSpacing(4);
        for (int k = 0; k < 4; ++k) {
            grid->addWidget(new QLabel(QString::fromLatin1(readouts[k].first), frame), k, 0);
            auto *value = new QLabel(frame);
            value->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(readouts[k].second)).arg(i));
            value->setTextInteractionFlags(Qt::TextSelectableByMouse);
            grid->addWidget(value, k, 1);
            values_[i][k] = value;
        }
        grid->setColumnStretch(1, 1);
        figureFrames_[i] = frame;
        layout->addWidget(frame);
    }

    // The legend of the plot beside the skill factors: both are narrow, and
    // side by side they leave the figures room on a small screen.
    auto *bottom = new QHBoxLayout;
    bottom->setSpacing(6);
    auto *legend = new QVBoxLayout;
    legend->setSpacing(3);
    for (const char *text : {"Black pips mark darts thrown during practice.",
                             "Red pips mark darts thrown during game play.",
                             "Crosses mark the centres; rings hold about two thirds of the darts."})
        legend->addWidget(wrapped(text, this));
    legend->addStretch();
    bottom->addLayout(legend, 1);
    skillFactors_ = new SkillFactorsFrame(this);
    bottom->addWidget(skillFactors_, 0, Qt::AlignTop);
    layout->addLayout(bottom);

    // The map and its advice are shown on the board; here only the switch,
    // and a bar that moves while the advice is worked out.
    auto *aimRow = new QHBoxLayout;
    aimRow->setSpacing(6);
    aimMapCheck_ = new QCheckBox(QStringLiteral("Show where to aim"), this);
    aimMapCheck_->setObjectName(QStringLiteral("chkAimMap"));
    aimRow->addWidget(aimMapCheck_);
    aimBusy_ = new QProgressBar(this);
    aimBusy_->setObjectName(QStringLiteral("barAimBusy"));
    aimBusy_->setRange(0, 0);
    aimBusy_->setTextVisible(false);
    aimBusy_->setMaximumHeight(10);
    aimBusy_->setToolTip(QStringLiteral("Working out where to aim from your darts"));
    // The row keeps its height whether the bar shows or not.
    QSizePolicy keep = aimBusy_->sizePolicy();
    keep.setRetainSizeWhenHidden(true);
    aimBusy_->setSizePolicy(keep);
    aimBusy_->hide();
    aimRow->addWidget(aimBusy_, 1);
    layout->addLayout(aimRow);
    layout->addStretch();
}

void ReviewFrame::setCaption(int index, const QString &caption)
{
    figureFrames_[index]->setTitle(caption);
}

void ReviewFrame::clearFigures()
{
    for (int index = 0; index < 3; ++index) {
        setCaption(index, QStringLiteral("Scoring Area"));
        for (QLabel *value : values_[index])
            value->clear();
    }
}

void ReviewFrame::showFigures(int index, const ReviewFigures &figures)
{
    const QString texts[] = {figures.darts, figures.hits, figures.percentage, figures.average};
    for (int k = 0; k < 4; ++k)
        values_[index][k]->setText(texts[k]);
}

} // namespace tavrix
