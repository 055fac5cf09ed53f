#pragma once

// The players' standing in figures large enough to read from the oche:
// player 1 on the left, player 2 on the right, as in the score columns
// below, each under the player's name. The panel of the player whose turn it
// is stands out in colour, and turns red while the darts marked bust the
// turn. Under the panels, the finish advised to the thrower.

#include "core/games/game_rules.h"

#include <QFrame>

#include <array>

class QLabel;
class QVBoxLayout;

namespace tavrix {

class FittingLabel;

class ScoreGlance : public QFrame {
    Q_OBJECT

public:
    explicit ScoreGlance(QWidget *parent = nullptr);

    void showName(int player, const QString &name);
    void showFigures(int player, const GlanceFigures &figures);
    // 0 when nobody is throwing (the cork, the end of a game).
    void markThrower(int player);
    // The checkout for the thrower from his own darts ("" hides the line).
    void showYourOut(const QString &text);
    // A match's score and who threw first in the leg; both "" hide them.
    void showMatch(const QString &score, const QString &starter);
    int markedThrower() const { return thrower_; }
    QLabel *figure(int player) const { return figures_[player - 1]; }
    QLabel *detail(int player) const { return details_[player - 1]; }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void buildMatchLine(QVBoxLayout *column);
    // Colours the panels and the finish line after the thrower and a bust.
    void restyle();

    std::array<QFrame *, 2> panels_{};
    std::array<FittingLabel *, 2> names_{};
    std::array<QLabel *, 2> figures_{};
    std::array<QLabel *, 2> details_{};
    FittingLabel *finish_ = nullptr;
    FittingLabel *yourOut_ = nullptr;
    QWidget *matchLine_ = nullptr;
    FittingLabel *matchScore_ = nullptr;
    FittingLabel *legStarter_ = nullptr;
    std::array<GlanceFigures, 2> shown_{};
    int thrower_ = 0;
};

} // namespace tavrix
