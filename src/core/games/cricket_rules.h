#pragma once

// The rules of Cricket: marks and points of a set, the win, the texts and
// advice of a turn, and the computer's aim. Simple Cricket only closes
// numbers; Standard scores the marks past three on a number the opponent
// still has open, and wins only with at least as many points.

#include "core/games/game_rules.h"

namespace tavrix {

class CricketRules : public GameRules {
public:
    explicit CricketRules(const Advisor &advisor);

    GameType type() const override { return GameType::Cricket; }
    void start(const GameOptions &options) override;
    ScoredSet scoreSet(int player, const SetDarts &darts) override;
    LocalFigures localFigures(bool localWon) const override;
    using GameRules::glance;
    GlanceFigures glance(int player, const SetDarts &turn) const override;
    std::array<bool, 7> closedNumbers() const override { return closedByBoth(marks_); }
    QString turnPrompt(const QString &name, int player) const override;
    QString liveText(const QString &name, int player, const SetDarts &darts, int placed) const override;
    std::optional<BoardPoint> advice(int player, const SetDarts &darts) const override;
    // Only the local player is advised where to aim the first dart.
    bool advisesFirstDart(int player) const override { return player == 2; }
    std::optional<ComputerAim> computerAim(int player, const SetDarts &darts) const override;
    bool turnDecided(int, const SetDarts &) const override { return false; }
    bool turnEndsWithLastSentDart() const override { return false; }
    std::optional<int> reportedPoints(int, const SetDarts &) const override { return std::nullopt; }
    std::optional<SoundCue> hitCue(int player, DartScore scored, std::optional<DartScore> aimedAt,
                                   bool atThisBoard) const override;

    const CricketMarks &marks() const { return marks_; }

private:
    const Advisor &advisor_;
    bool simple_ = false;
    CricketMarks marks_{};
    // Points as the totals show them: set when a dart scores.
    std::array<int, 2> shownPoints_{};
};

} // namespace tavrix
