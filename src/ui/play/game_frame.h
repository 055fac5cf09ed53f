#pragma once

// The "Play Mode" frame: the game options, the messages of a game, the two
// score boards (X01 columns and the Cricket marks) and the game buttons.

#include <QGroupBox>

#include <array>

class QAbstractButton;
class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QSlider;
class QSpinBox;
class QVBoxLayout;

namespace tavrix {

class ScoreGlance;
class SkillOptions;

// The Cricket mark symbols for 1, 2 and 3 marks (index 0 to 2).
QPixmap cricketHash(int index, qreal devicePixelRatio = 1.0);

class GameFrame : public QGroupBox {
    Q_OBJECT

public:
    explicit GameFrame(QWidget *parent = nullptr);

    QLabel *playerNameText = nullptr;
    QLabel *lblGameStartup = nullptr;
    QLabel *gameText = nullptr;

    QGroupBox *fraGame = nullptr;
    QList<QAbstractButton *> opGame;
    QGroupBox *fraOpponent = nullptr;
    QList<QAbstractButton *> opOpponent;
    SkillOptions *fraSkill = nullptr;
    QGroupBox *fraMoodFactor = nullptr;
    QSlider *slider1 = nullptr;
    QGroupBox *fraCricketOptions = nullptr;
    QList<QAbstractButton *> opCricketOptions;
    QCheckBox *chkKeepCricketStats = nullptr;
    QGroupBox *fra01Options = nullptr;
    QCheckBox *chkDoubleIn = nullptr;
    QCheckBox *chkDoubleOut = nullptr;
    QCheckBox *chkKeep01stats = nullptr;
    // A single game, or a match of legs or of sets: first to [legs] legs, or
    // first to [sets] sets of [legs] legs.
    QGroupBox *fraMatch = nullptr;
    QComboBox *cboMatchFormat = nullptr;
    QSpinBox *spnLegs = nullptr;
    QSpinBox *spnSets = nullptr;
    QLabel *lblMatchSetsOf = nullptr;
    QLabel *lblMatchLegs = nullptr;

    QGroupBox *fraCricketScore = nullptr;
    QLabel *player1Text = nullptr;
    QLabel *player2Text = nullptr;
    // Indexed by slot: 0 the bull, 1 to 6 the numbers 20 down to 15.
    std::array<QLabel *, 7> p1ScoreImage{};
    std::array<QLabel *, 7> p2ScoreImage{};
    std::array<QLabel *, 7> lblP1Points{};
    std::array<QLabel *, 7> lblP2Points{};
    QLabel *lblP1TotalPts = nullptr;
    QLabel *lblP2TotalPts = nullptr;
    QLabel *lblTotalPts = nullptr;
    // "Bull", "20" ... "15", by slot; greyed once both players closed them.
    std::array<QLabel *, 7> cricketNumbers{};

    QGroupBox *fra01Score = nullptr;
    QLabel *player1Text01 = nullptr;
    QLabel *player2Text01 = nullptr;
    QLabel *p1ScoreText = nullptr;
    QLabel *p2scoretext = nullptr;

    // Each player's standing in large figures, during a game.
    ScoreGlance *scoreGlance = nullptr;

    // "Network Connection Active", while another copy is connected.
    QLabel *lblNetworkActive = nullptr;
    QPushButton *btnStartGame = nullptr;
    QPushButton *btnQuitGame = nullptr;
    // Takes back the last dart marked in a set.
    QPushButton *btnUndoDart = nullptr;

    // Shows `marks` (capped at 3) on a slot of a player's marks column.
    void showMarks(int player, int slot, int marks);
    // Greys the numbers both players have closed, by slot.
    void showClosedNumbers(const std::array<bool, 7> &closed);
    // White behind the thrower's name labels, light grey behind the other's.
    void colourThrower(int player);
    // The match's spin boxes as its format list says: shown for the format
    // chosen, within its bounds.
    void showMatchBounds();

private:
    void buildOptions(QVBoxLayout *layout);
    QGroupBox *buildMatchOptions();
    void buildCricketScore(QVBoxLayout *layout);
    void build01Score(QVBoxLayout *layout);
};

} // namespace tavrix
