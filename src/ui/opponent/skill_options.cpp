#include "ui/opponent/skill_options.h"

#include "core/opponent/skill_profile.h"

#include <QButtonGroup>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace tavrix {

SkillOptions::SkillOptions(QWidget *parent)
    : QGroupBox(QStringLiteral("Skill"), parent)
{
    setObjectName(QStringLiteral("fraSkill"));
    auto *layout = new QVBoxLayout(this);
    auto *group = new QButtonGroup(this);
    const QString captions[] = {QStringLiteral("B-Player"), QStringLiteral("A-Player"),
                                QStringLiteral("Master"), QStringLiteral("\"You\"")};
    for (int i = 0; i < 4; ++i) {
        auto *option = new QRadioButton(captions[i], this);
        option->setObjectName(QStringLiteral("opSkill_%1").arg(i));
        group->addButton(option, i);
        layout->addWidget(option);
        options_.append(option);
    }
    options_.first()->setChecked(true);

    youNeedSamples_ = new QGroupBox(this);
    youNeedSamples_->setObjectName(QStringLiteral("fraYouNeedSamples"));
    youNeedSamples_->setFlat(true);
    auto *needLayout = new QVBoxLayout(youNeedSamples_);
    needLayout->setContentsMargins(18, 0, 0, 0);
    needText_ = new QLabel(QStringLiteral("Not enough samples"), youNeedSamples_);
    needText_->setObjectName(QStringLiteral("Label53"));
    needText_->setWordWrap(true);
    QFont small = needText_->font();
    small.setItalic(true);
    needText_->setFont(small);
    needLayout->addWidget(needText_);
    layout->addWidget(youNeedSamples_);
    youNeedSamples_->hide();
}

void SkillOptions::showYouAvailability(qint64 youSampleCount)
{
    const bool available = youSampleCount >= youMinSamples;
    if (!available)
        needText_->setText(QString::number(youMinSamples - youSampleCount)
                           + QStringLiteral(" more samples needed."));
    youNeedSamples_->setVisible(!available);
    youNeedSamples_->setEnabled(!available);
    options_.last()->setEnabled(available);
    // A level that can no longer be chosen does not stay chosen.
    if (!available && options_.last()->isChecked())
        options_.first()->setChecked(true);
}

void SkillOptions::hideYouAvailability()
{
    youNeedSamples_->hide();
}

} // namespace tavrix
