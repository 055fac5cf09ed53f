#pragma once

// The rules of 301 and 501: doubling in, counting the darts of a set,
// busts and wins, the best set, the texts and advice of a turn, and the
// computer's aim.

#include "core/games/advisor.h"
#include "core/games/game_rules.h"

#include <QList>
#include <QString>

#include <array>
#include <optional>

namespace tavrix {

// How the darts of a set are read. A confirmed set is scored: the double of
// a numbered segment or the bull doubles in, and the darts after the score
// reaches 1 or less are not dealt with. While darts are being thrown, the
// live text, the advice and the computer read them as thrown: any dart in
// the double ring doubles in, a wire between two doubles too, and every dart
// counts.
enum class X01Reading { Scored, AsThrown };

// Whether a dart doubles in a player who has not yet.
bool doublesIn(DartScore score, X01Reading reading);

struct X01Count {
    // Whether the player is doubled in after the darts.
    bool doubledIn = false;
    // The darts dealt with, in order.
    QList<int> darts;
    int remaining = 0;  // before any bust is undone
    int points = 0;     // of the counted darts: from the doubling dart on
    int lastMultiplier = 0;
};

// Counts the darts of a set from `remaining`; a player not yet doubled in
// counts from the doubling dart on, or nothing without one.
X01Count countX01Set(const SetDarts &darts, int remaining, bool doubledIn, X01Reading reading);

enum class X01Outcome { Continue, Bust, Win };

// A set that leaves less than 0, exactly 1, or (double out) 0 without a
// double last is a bust; 0 with a double last, or without double out, wins.
X01Outcome x01Outcome(int remaining, bool doubleOut, int lastMultiplier);

// Whether the set's points count towards the player's best set: any set
// that leaves 0 or more than 1, and one that leaves exactly 1 under single
// out, although that is a bust.
bool countsForBestSet(int remaining, bool doubleOut);

// The line added to a score column after a set: the new score on a line of
// its own, or "*" when the score did not change.
QString scoreColumnLine(int remaining, int previous);

class X01Rules : public GameRules {
public:
    explicit X01Rules(GameType type, const Advisor &advisor);

    GameType type() const override { return type_; }
    void start(const GameOptions &options) override;
    ScoredSet scoreSet(int player, const SetDarts &darts) override;
    LocalFigures localFigures(bool localWon) const override;
    using GameRules::glance;
    GlanceFigures glance(int player, const SetDarts &turn) const override;
    QString turnPrompt(const QString &name, int player) const override;
    QString liveText(const QString &name, int player, const SetDarts &darts, int placed) const override;
    std::optional<BoardPoint> advice(int player, const SetDarts &darts) const override;
    bool advisesFirstDart(int) const override { return true; }
    std::optional<ComputerAim> computerAim(int player, const SetDarts &darts) const override;
    bool turnDecided(int player, const SetDarts &darts) const override;
    bool turnEndsWithLastSentDart() const override { return true; }
    std::optional<int> reportedPoints(int player, const SetDarts &darts) const override;
    std::optional<SoundCue> hitCue(int player, DartScore scored, std::optional<DartScore> aimedAt,
                                   bool atThisBoard) const override;

    int startScore() const { return startScore_; }
    // The score left after the player's last confirmed set.
    int remaining(int player) const { return history_[player - 1].last(); }
    bool doubledIn(int player) const { return doubledIn_[player - 1]; }

private:
    // The darts thrown so far in a turn, read as thrown.
    X01Count asThrown(int player, const SetDarts &darts) const;
    X01Standing standing(const X01Count &count) const;

    GameType type_;
    const Advisor &advisor_;
    bool doubleOut_ = true;
    int startScore_ = 501;
    std::array<QList<int>, 2> history_;
    std::array<bool, 2> doubledIn_{};
    // Darts of each player's confirmed sets that were dealt with.
    std::array<int, 2> dartsThrown_{};
    int localBestSet_ = 0;
    int winner_ = 0;
};

} // namespace tavrix
