#include "ui/startup/game_choices.h"

#include "ui/opponent/skill_options.h"
#include "ui/play/game_frame.h"
#include "ui/startup/darts_window.h"
#include "core/games/match_rules.h"
#include "core/startup/settings.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QSpinBox>

namespace tavrix {

namespace {

std::optional<int> storedOption(const char *name, const QList<QAbstractButton *> &group)
{
    return optionFromSetting(getSetting(QString::fromLatin1(name)), static_cast<int>(group.size()));
}

void saveOption(const char *name, const QList<QAbstractButton *> &group)
{
    if (const int option = selectedOption(group))
        saveSetting(QString::fromLatin1(name), QString::number(option));
}

void saveNumber(const char *name, int number)
{
    saveSetting(QString::fromLatin1(name), QString::number(number));
}

std::optional<int> storedNumber(const char *name, int lowest, int highest)
{
    return numberFromSetting(getSetting(QString::fromLatin1(name)), lowest, highest);
}

} // namespace

GameChoices::GameChoices(GameFrame &frame, QObject *parent)
    : QObject(parent)
    , frame_(frame)
{
    QList<QAbstractButton *> choices =
        frame_.opGame + frame_.opOpponent + frame_.fraSkill->options() + frame_.opCricketOptions;
    choices << frame_.chkKeep01stats << frame_.chkKeepCricketStats;
    for (QAbstractButton *choice : std::as_const(choices))
        connect(choice, &QAbstractButton::clicked, this, &GameChoices::save);
    // Only the user's own changes: `activated` comes from the list, and
    // `editingFinished` when the user leaves a spin box or presses Enter in
    // it; a format the program shows raises neither.
    connect(frame_.cboMatchFormat, &QComboBox::activated, this, &GameChoices::saveMatchFormat);
    connect(frame_.spnLegs, &QSpinBox::editingFinished, this, &GameChoices::saveMatchLegs);
    connect(frame_.spnSets, &QSpinBox::editingFinished, this, &GameChoices::saveMatchSets);
}

void GameChoices::restore()
{
    restoring_ = true;
    // The skill before the opponent: a person as opponent disables the skills.
    const std::pair<const char *, QList<QAbstractButton *>> clicked[] = {
        {gameSetting, frame_.opGame},
        {skillSetting, frame_.fraSkill->options()},
        {opponentSetting, frame_.opOpponent}};
    for (const auto &[name, group] : clicked) {
        if (const std::optional<int> option = storedOption(name, group)) {
            // A disabled option ("You" without enough darts) ignores the click.
            QAbstractButton *button = group[*option - 1];
            if (!button->isChecked())
                button->click();
        }
    }
    // These have no handler of their own; their frame may be disabled now.
    if (const std::optional<int> rules = storedOption(cricketOptionsSetting, frame_.opCricketOptions))
        frame_.opCricketOptions[*rules - 1]->setChecked(true);
    if (const std::optional<bool> keep = switchFromSetting(getSetting(QString::fromLatin1(keepStatsSetting)))) {
        frame_.chkKeep01stats->setChecked(*keep);
        frame_.chkKeepCricketStats->setChecked(*keep);
    }
    restoreMatch();
    restoring_ = false;
}

void GameChoices::restoreMatch()
{
    // The numbers first, while the frame still offers a single game and the
    // legs their widest range; a format of sets then cuts the legs to its
    // own bound, as when the user chooses it.
    if (const std::optional<int> legs = storedNumber(matchLegsSetting, MatchFormat::MinLegs, MatchFormat::MaxLegs))
        frame_.spnLegs->setValue(*legs);
    if (const std::optional<int> sets = storedNumber(matchSetsSetting, MatchFormat::MinSets, MatchFormat::MaxSets))
        frame_.spnSets->setValue(*sets);
    if (const std::optional<int> format = optionFromSetting(getSetting(QString::fromLatin1(matchFormatSetting)),
                                                            frame_.cboMatchFormat->count()))
        frame_.cboMatchFormat->setCurrentIndex(*format - 1);
}

void GameChoices::saveMatchFormat() const
{
    if (!restoring_)
        saveNumber(matchFormatSetting, frame_.cboMatchFormat->currentIndex() + 1);
}

void GameChoices::saveMatchLegs() const
{
    if (!restoring_)
        saveNumber(matchLegsSetting, frame_.spnLegs->value());
}

void GameChoices::saveMatchSets() const
{
    if (!restoring_)
        saveNumber(matchSetsSetting, frame_.spnSets->value());
}

void GameChoices::save() const
{
    if (restoring_)
        return;
    saveOption(gameSetting, frame_.opGame);
    saveOption(opponentSetting, frame_.opOpponent);
    saveOption(skillSetting, frame_.fraSkill->options());
    saveOption(cricketOptionsSetting, frame_.opCricketOptions);
    saveSetting(QString::fromLatin1(keepStatsSetting),
                frame_.chkKeep01stats->isChecked() ? QStringLiteral("on") : QStringLiteral("off"));
}

} // namespace tavrix
