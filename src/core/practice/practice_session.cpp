#include "core/practice/practice_session.h"

#include <QRandomGenerator>

#include <cmath>

namespace tavrix {

namespace {

// The step of a count-down or count-up that asks for the bull.
constexpr int bullStep = 21;

QString bullText()
{
    return QStringLiteral("25 or Bull");
}

} // namespace

PracticeStage PracticeSession::stage() const
{
    if (!setOpen_)
        return PracticeStage::AtRest;
    if (dartCount_ >= 3)
        return PracticeStage::SetComplete;
    return sequence_ == PracticeSequence::None ? PracticeStage::AwaitingDarts : PracticeStage::SequenceRunning;
}

void PracticeSession::reset()
{
    *this = PracticeSession();
}

SetDraw PracticeSession::drawSet(int ringItem, int scoreItem, QRandomGenerator &random) const
{
    // A draw below n, as the whole part of n times a number in [0, 1).
    const auto draw = [&random](int n) { return static_cast<int>(random.generateDouble() * n); };
    SetDraw drawn;
    drawn.sequence = sequence_;
    int value = scoreItem == itemData(TargetItem::Random) ? 1 + draw(21) : scoreItem;
    if (value == itemData(TargetItem::Bull)) {
        // The bull is any ring, so the ring list is not read.
        drawn.target.value = 25;
        drawn.target.ring = 1;
        drawn.targetText = bullText();
        return drawn;
    }
    int ring = ringItem == itemData(TargetItem::Random) ? 1 + draw(3) : ringItem;
    bool bull = false;
    if (value == itemData(TargetItem::CountDown)) {
        if (countdownNext_ == bullStep) {
            drawn.alert = PracticeAlert{QStringLiteral("Starting countdown with bull"),
                                        QStringLiteral("Starting Countdown")};
            drawn.sequence = PracticeSequence::CountDown;
            bull = true;
        } else {
            value = countdownNext_;
        }
    } else if (value == itemData(TargetItem::CountUp)) {
        if (countupNext_ == 1) {
            drawn.alert = PracticeAlert{QStringLiteral("Starting count-up with 1"),
                                        QStringLiteral("Starting Count-up")};
            drawn.sequence = PracticeSequence::CountUp;
        }
        if (countupNext_ == bullStep)
            bull = true;
        else
            value = countupNext_;
    }
    if (bull) {
        value = 25;
        ring = 1;
    }
    drawn.target.value = value;
    drawn.target.ring = ring;
    drawn.target.aim = value == 25 ? BoardPoint{} : aimPoint(ring, value);
    drawn.targetText = targetRingWord(ring) + QStringLiteral(" ") + (bull ? bullText() : QString::number(value));
    return drawn;
}

void PracticeSession::openSet(const SetDraw &draw, qint64 targetId)
{
    target_ = draw.target;
    target_.id = targetId;
    sequence_ = draw.sequence;
    setOpen_ = true;
    darts_ = {};
    dartCount_ = 0;
}

int PracticeSession::placeDart(BoardPoint at)
{
    if (!setOpen_ || dartCount_ >= 3)
        return -1;
    // Scored and measured where the marker stands.
    darts_[dartCount_] = at;
    return dartCount_++;
}

void PracticeSession::moveDart(int index, BoardPoint at)
{
    if (index >= 0 && index < dartCount_)
        darts_[index] = at;
}

std::optional<SetGrouping> PracticeSession::grouping() const
{
    if (dartCount_ < 3)
        return std::nullopt;
    return setGrouping(darts_, target_.aim);
}

std::optional<SetConfirmation> PracticeSession::confirmation(qint64 playerId) const
{
    if (stage() != PracticeStage::SetComplete)
        return std::nullopt;
    SetConfirmation confirmed;
    confirmed.rows = {playerId, target_.id, target_.value, target_.ring, {}};
    for (int i = 0; i < 3; ++i) {
        const BoardPoint at = darts_[i];
        const PracticeScore score = practiceScore(std::sqrt(at.x * at.x + at.y * at.y), angleFromXY(at.x, at.y));
        const double dx = at.x - target_.aim.x;
        const double dy = at.y - target_.aim.y;
        confirmed.rows.darts[i] = {playerId, target_.id, i, at.x, at.y, std::sqrt(dx * dx + dy * dy), score.score,
                                   score.ring};
    }
    Progress next = progress();
    confirmed.alert = advance(next);
    return confirmed;
}

void PracticeSession::confirmSet()
{
    if (stage() != PracticeStage::SetComplete)
        return;
    Progress next = progress();
    advance(next);
    sequence_ = next.sequence;
    countdownNext_ = next.countdownNext;
    countupNext_ = next.countupNext;
    setOpen_ = false;
}

std::optional<PracticeAlert> PracticeSession::advance(Progress &progress)
{
    const QString whew = QStringLiteral("Whew!");
    switch (progress.sequence) {
    case PracticeSequence::CountDown:
        if (--progress.countdownNext > 0)
            return std::nullopt;
        progress = {PracticeSequence::None, bullStep, progress.countupNext};
        return PracticeAlert{QStringLiteral("Countdown Complete."), whew};
    case PracticeSequence::CountUp:
        if (++progress.countupNext <= bullStep)
            return std::nullopt;
        progress = {PracticeSequence::None, progress.countdownNext, 1};
        return PracticeAlert{QStringLiteral("Count-up Complete."), whew};
    case PracticeSequence::None:
        break;
    }
    return PracticeAlert{QStringLiteral("Darts Confirmed."), QStringLiteral("Thank You")};
}

void PracticeSession::quitSequence()
{
    sequence_ = PracticeSequence::None;
    countupNext_ = 1;
    countdownNext_ = bullStep;
    setOpen_ = false;
}

QString PracticeSession::quitCaption() const
{
    return QStringLiteral("Quit\nCount\n")
           + (sequence_ == PracticeSequence::CountDown ? QStringLiteral("Down") : QStringLiteral("Up"));
}

} // namespace tavrix
