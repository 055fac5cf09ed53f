#include "opponent/computer_turns.h"

#include "board/board_input.h"
#include "board/dart_marker.h"
#include "games/cricket_rules.h"
#include "games/game_frame.h"
#include "startup/shared_state.h"
#include "startup/sounds.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

namespace tavrix {

namespace {

const QString bounceOut = QStringLiteral("Bounce-out");

} // namespace

ComputerTurns::ComputerTurns(const Context &context, QObject *parent)
    : QObject(parent)
    , c_(context)
    , throwTimer_(new QTimer(this))
{
    throwTimer_->setObjectName(QStringLiteral("ThrowTimer"));
    throwTimer_->setInterval(throwIntervalMs);
    connect(throwTimer_, &QTimer::timeout, this, &ComputerTurns::ThrowTimer_Timer);
}

void ComputerTurns::setRemoteDarts(int count, const QString &name)
{
    remoteDarts_ = std::clamp(count, 0, 3);
    remoteName_ = name;
}

void ComputerTurns::stop()
{
    throwTimer_->stop();
    x01_.reset();
    remoteName_.reset();
}

void ComputerTurns::ThrowTimer_Timer()
{
    if (c_.state.gameType == 1)
        computerCricketTurn();
    else if (c_.state.gameType == 2 || c_.state.gameType == 3)
        computer01Turn();
}

void ComputerTurns::hideFrom(int index)
{
    const MarkerArray &markers = c_.board.cpips();
    for (int i = index; i < 3; ++i) {
        markers[i]->hide();
        markers[i]->setEnabled(false);
        markers[i]->move(-1, -1);
    }
}

SimulatedDart ComputerTurns::nextDart(std::optional<BoardPoint> aim)
{
    if (!aim) {
        const DartMarker *marker = c_.board.cpips()[computerDartCount_];
        const double x = BoardInput::pipX(marker);
        const double y = BoardInput::pipY(marker);
        return {x, y, dartDescriptionFromXY(x, y)};
    }
    return simulateThrow(c_.state.skill.profile, c_.state.random, aim->x, aim->y);
}

void ComputerTurns::showDart(int index, const SimulatedDart &dart)
{
    const int flight = static_cast<int>(c_.state.random.generateDouble() * 12);
    c_.board.showMarkerAt(c_.board.cpips()[index], {dart.x, dart.y}, flight);
    c_.board.cpips()[index]->repaint();
}

void ComputerTurns::landingSounds(const QString &description, bool hitAimedDouble,
                                  bool hitAimedTreble)
{
    if (description == bounceOut) {
        c_.sounds.playBoing(true);
        return;
    }
    c_.sounds.playDefaultSound(true);
    if (hitAimedTreble)
        c_.sounds.playFanfare(true);
    else if (hitAimedDouble)
        c_.sounds.playHarp(true);
}

void ComputerTurns::report(const QStringList &texts, std::optional<int> turnPoints)
{
    const QString name = remoteName_.value_or(c_.state.vsComputerNames[0]);
    c_.frame.gameText->setText(computerTurnReport(name, texts, turnPoints));
    c_.frame.btnStartGame->setEnabled(true);
    remoteName_.reset();
}

void ComputerTurns::computer01Turn()
{
    if (!throwTimer_->isActive()) {
        const X01Standing standing = c_.x01Standing();
        x01_.emplace(standing.remaining, standing.doubledIn);
        computerDartCount_ = 0;
        if (!remoteTurn())
            hideFrom(0);
        throwTimer_->start();
        return;
    }
    throwTimer_->stop();
    if (!x01_)
        return;
    if (x01_->dartCount() < 3) {
        std::optional<DartScore> target;
        if (!remoteTurn())
            target = computerX01Target(x01_->doubledIn, x01_->remaining,
                                       c_.frame.chkDoubleOut->isChecked(), c_.chart);
        const SimulatedDart dart =
            nextDart(target ? std::optional<BoardPoint>(targetPoint(*target)) : std::nullopt);
        const DartScore scored = x01_->count(dart.x, dart.y, dart.description);
        showDart(computerDartCount_, dart);
        const bool hit = target && scored == *target;
        landingSounds(dart.description, hit && scored.multiplier == 2, hit && scored.multiplier == 3);
        ++computerDartCount_;
        // A remote player's set may hold fewer darts than three.
        const bool remoteDone = remoteTurn() && computerDartCount_ >= remoteDarts_;
        if (!x01_->over() && !remoteDone) {
            throwTimer_->start();
            return;
        }
    }
    report(x01_->dartTexts, x01_->turnPoints);
    x01_.reset();
}

void ComputerTurns::computerCricketTurn()
{
    const MarkerArray &markers = c_.board.cpips();
    if (!throwTimer_->isActive()) {
        computerDartCount_ = 0;
        cricketTexts_.clear();
        if (!remoteTurn())
            hideFrom(0);
        throwTimer_->start();
        return;
    }
    throwTimer_->stop();
    bool noDart = computerDartCount_ >= 3;
    if (!noDart) {
        std::optional<BoardPoint> aim;
        if (remoteTurn()) {
            noDart = computerDartCount_ >= remoteDarts_;
        } else {
            QList<DartScore> placed;
            for (int i = 0; i < computerDartCount_; ++i)
                placed.append(BoardInput::pipScore(markers[i]));
            aim = nextCricketTarget(c_.state.cricketMarks, 1, placed, c_.simpleCricket());
            noDart = !aim;
        }
        if (noDart) {
            hideFrom(computerDartCount_);
        } else {
            const SimulatedDart dart = nextDart(aim);
            showDart(computerDartCount_, dart);
            cricketTexts_.append(dart.description);
            landingSounds(dart.description, false, false);
            ++computerDartCount_;
        }
    }
    if (computerDartCount_ < 3 && !noDart) {
        throwTimer_->start();
        return;
    }
    report(cricketTexts_, std::nullopt);
}

} // namespace tavrix
