#include "ui/play/game_setup_form.h"

#include "ui/opponent/skill_options.h"
#include "ui/play/game_frame.h"
#include "core/games/match_play.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QSpinBox>

#include <array>

namespace tavrix {

namespace {

// The values of the option buttons, in the order the frame shows them.
constexpr std::array<GameType, 3> gameOrder{GameType::Cricket, GameType::X01_301, GameType::X01_501};
constexpr std::array<OpponentKind, 2> opponentOrder{OpponentKind::Computer, OpponentKind::Human};
constexpr std::array<SkillLevel, 4> skillOrder{SkillLevel::BPlayer, SkillLevel::APlayer, SkillLevel::Master,
                                               SkillLevel::You};

template <typename Value, std::size_t N>
QList<std::pair<QAbstractButton *, Value>> paired(const QList<QAbstractButton *> &buttons,
                                                  const std::array<Value, N> &values)
{
    QList<std::pair<QAbstractButton *, Value>> pairs;
    for (std::size_t i = 0; i < N && qsizetype(i) < buttons.size(); ++i)
        pairs.append({buttons[qsizetype(i)], values[i]});
    return pairs;
}

// The value of the checked button; `none` when no button is checked.
template <typename Value>
Value checkedValue(const QList<std::pair<QAbstractButton *, Value>> &pairs, Value none)
{
    for (const auto &[button, value] : pairs) {
        if (button->isChecked())
            return value;
    }
    return none;
}

} // namespace

GameSetupForm::GameSetupForm(GameFrame &frame)
    : frame_(frame)
{
}

QList<std::pair<QAbstractButton *, GameType>> GameSetupForm::gameButtons() const
{
    return paired(frame_.opGame, gameOrder);
}

QList<std::pair<QAbstractButton *, OpponentKind>> GameSetupForm::opponentButtons() const
{
    return paired(frame_.opOpponent, opponentOrder);
}

QList<std::pair<QAbstractButton *, SkillLevel>> GameSetupForm::skillButtons() const
{
    return paired(frame_.fraSkill->options(), skillOrder);
}

GameType GameSetupForm::gameType() const
{
    return checkedValue(gameButtons(), GameType::None);
}

OpponentKind GameSetupForm::opponent() const
{
    return checkedValue(opponentButtons(), OpponentKind::None);
}

SkillLevel GameSetupForm::skill() const
{
    return checkedValue(skillButtons(), SkillLevel::None);
}

GameOptions GameSetupForm::choices(GameOptions base) const
{
    base.type = gameType();
    base.skill = skill();
    base.opponent = opponent();
    return base;
}

GameOptions GameSetupForm::gameOptions(GameOptions base) const
{
    if (base.type == GameType::Cricket) {
        base.keepStats = frame_.chkKeepCricketStats->isChecked();
        base.simpleCricket = frame_.opCricketOptions[0]->isChecked();
    } else {
        base.keepStats = frame_.chkKeep01stats->isChecked();
        base.doubleIn = frame_.chkDoubleIn->isChecked();
        base.doubleOut = frame_.chkDoubleOut->isChecked();
    }
    return base;
}

void GameSetupForm::chooseGame(GameType type)
{
    for (const auto &[button, value] : gameButtons()) {
        if (value == type)
            button->setChecked(true);
    }
}

void GameSetupForm::showGameOptions(const GameOptions &options)
{
    if (options.type == GameType::Cricket) {
        frame_.opCricketOptions[options.simpleCricket ? 0 : 1]->setChecked(true);
    } else {
        frame_.chkDoubleIn->setChecked(options.doubleIn);
        frame_.chkDoubleOut->setChecked(options.doubleOut);
    }
}

void GameSetupForm::chooseOpponent(OpponentKind kind)
{
    for (const auto &[button, value] : opponentButtons()) {
        if (value == kind)
            button->setChecked(true);
    }
}

MatchFormat GameSetupForm::matchFormat() const
{
    return formatOfChoice(frame_.cboMatchFormat->currentIndex(), frame_.spnLegs->value(), frame_.spnSets->value());
}

void GameSetupForm::showMatchFormat(const MatchFormat &format)
{
    const MatchFormat shown = format.clamped();
    frame_.cboMatchFormat->setCurrentIndex(int(choiceOfFormat(shown)));
    if (shown.kind != MatchKind::SingleGame)
        frame_.spnLegs->setValue(shown.legs);
    if (shown.kind == MatchKind::Sets)
        frame_.spnSets->setValue(shown.sets);
}

} // namespace tavrix
