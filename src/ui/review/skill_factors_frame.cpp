#include "ui/review/skill_factors_frame.h"

#include "core/board/board_geometry.h"
#include "core/opponent/skill_profile.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace tavrix {

SkillFactorsFrame::SkillFactorsFrame(QWidget *parent)
    : QGroupBox(QStringLiteral("More Info"), parent)
{
    setObjectName(QStringLiteral("fraMoreInfo"));
    auto *layout = new QVBoxLayout(this);
    auto *heading = new QLabel(QStringLiteral("Your Skill factors"), this);
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    layout->addWidget(heading);

    sampleCount_ = new QLabel(QStringLiteral("(nnnnn samples)"), this);
    sampleCount_->setObjectName(QStringLiteral("lblNsamp"));
    layout->addWidget(sampleCount_);

    factors_ = new QWidget(this);
    auto *grid = new QGridLayout(factors_);
    grid->setContentsMargins(0, 0, 0, 0);
    for (int k = 0; k < 4; ++k) {
        grid->addWidget(new QLabel(QStringLiteral("r%1: ").arg(k + 1), factors_), k, 0);
        auto *value = new QLabel(factors_);
        value->setObjectName(QStringLiteral("lblSkillRadii_%1").arg(k));
        grid->addWidget(value, k, 1);
        radii_.append(value);
    }
    grid->addWidget(new QLabel(QStringLiteral("Wildness: "), factors_), 4, 0);
    wildness_ = new QLabel(factors_);
    wildness_->setObjectName(QStringLiteral("lblWildness"));
    grid->addWidget(wildness_, 4, 1);
    grid->setColumnStretch(1, 1);
    layout->addWidget(factors_);

    lowSamples_ = new QGroupBox(this);
    lowSamples_->setObjectName(QStringLiteral("fraLowSamples"));
    lowSamples_->setFlat(true);
    auto *lowLayout = new QVBoxLayout(lowSamples_);
    lowLayout->setContentsMargins(0, 0, 0, 0);
    auto *lowText = new QLabel(QStringLiteral("Insufficent to create profile."), lowSamples_);
    lowText->setWordWrap(true);
    lowLayout->addWidget(lowText);
    layout->addWidget(lowSamples_);
}

void SkillFactorsFrame::showProfile(const SkillProfileState &skill, bool useCms)
{
    sampleCount_->setText(QStringLiteral("(") + QString::number(skill.youSampleCount)
                          + QStringLiteral(" samples") + QStringLiteral(")"));
    const bool enough = skill.youLevelAvailable();
    lowSamples_->setVisible(!enough);
    lowSamples_->setEnabled(!enough);
    factors_->setVisible(enough);
    if (!enough)
        return;
    for (int k = 0; k < 4; ++k)
        radii_[k]->setText(distanceText(skill.profile.skillRadii[k].high, useCms));
    // A plain number, cut to five decimals.
    wildness_->setText(truncatedText(skill.profile.wildness, 100000));
}

} // namespace tavrix
