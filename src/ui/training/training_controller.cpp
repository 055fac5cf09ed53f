#include "ui/training/training_controller.h"

#include "core/games/game_rules.h"
#include "core/session/session.h"
#include "core/sound/sound_cue.h"
#include "core/stats/drill_log.h"
#include "ui/board/board_picture.h"
#include "ui/dialogs/messages.h"
#include "ui/dialogs/stats_rescue.h"
#include "ui/training/training_frame.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>

namespace tavrix {

namespace {

const QString quitTitle = QStringLiteral("Quit Drill?");

QString scoreText(int score)
{
    return QString::number(score);
}

} // namespace

TrainingController::TrainingController(const Context &context, QObject *parent)
    : QObject(parent)
    , session_(context.session)
    , store_(context.store)
    , sounds_(context.sounds)
    , messages_(context.messages)
    , rescue_(context.rescue)
    , board_(context.board)
    , frame_(context.frame)
    , window_(context.window)
{
    connect(frame_.startButton(), &QPushButton::clicked, this, &TrainingController::startDrill);
    connect(frame_.confirmButton(), &QPushButton::clicked, this, &TrainingController::confirmDarts);
    connect(frame_.undoButton(), &QPushButton::clicked, this, &TrainingController::undoDart);
    connect(frame_.quitButton(), &QPushButton::clicked, this, &TrainingController::quitDrill);
    // As in play: Backspace or the system's Undo keys take back a dart,
    // while the frame is shown.
    auto *undoKeys = new QShortcut(&frame_);
    undoKeys->setObjectName(QStringLiteral("undoDrillDartShortcut"));
    undoKeys->setContext(Qt::WindowShortcut);
    undoKeys->setKeys(QKeySequence::keyBindings(QKeySequence::Undo) << QKeySequence(Qt::Key_Backspace));
    connect(undoKeys, &QShortcut::activated, this, &TrainingController::undoDart);
    // Only 99 darts has a target to choose.
    connect(frame_.drillList(), &QComboBox::currentIndexChanged, this, [this] {
        frame_.targetList()->setEnabled(!drillRunning()
                                        && frame_.drillList()->currentData().toInt()
                                               == int(DrillKind::NinetyNineDarts));
    });
}

void TrainingController::enter()
{
    if (drillRunning())
        recordQuit();
    run_.reset();
    board_.setMarking(MarkerSet::Local, 0);
    board_.setTargetsMovable(false);
}

void TrainingController::begin()
{
    frame_.targetText()->clear();
    frame_.scoreText()->clear();
    frame_.progressText()->setText(QStringLiteral("Choose a drill and click \"Start Drill\""));
    frame_.dartsText()->clear();
    frame_.bestText()->clear();
    frame_.resultText()->clear();
    showIdle();
}

void TrainingController::showIdle()
{
    frame_.drillChoice()->setEnabled(true);
    frame_.drillList()->setEnabled(true);
    frame_.targetList()->setEnabled(frame_.drillList()->currentData().toInt() == int(DrillKind::NinetyNineDarts));
    frame_.startButton()->setEnabled(true);
    for (QPushButton *button : {frame_.confirmButton(), frame_.undoButton(), frame_.quitButton()})
        button->setEnabled(false);
    board_.picture()->setEnabled(false);
    board_.setMarking(MarkerSet::Local, 0);
}

void TrainingController::reportStoreError()
{
    rescue_.reportFailure(window_, store_.lastError());
}

void TrainingController::startDrill()
{
    if (drillRunning())
        return;
    const auto kind = DrillKind(frame_.drillList()->currentData().toInt());
    const int target = kind == DrillKind::NinetyNineDarts ? frame_.targetList()->currentData().toInt() : 0;
    const qint64 player = session_.currentPlayerId;
    // The best is read before the drill's row is written, which it must not count.
    const std::optional<std::optional<int>> best =
        store_.bestDrillScore(player, int(kind), target, drillLowerIsBetter(kind));
    if (!best) {
        reportStoreError();
        return;
    }
    const std::optional<qint64> id = store_.insertDrill({player, int(kind), target});
    if (!id) {
        reportStoreError();
        return;
    }
    best_ = *best;
    drillId_ = *id;
    run_ = std::make_unique<DrillRun>(kind, target);
    board_.hidePips();
    board_.hideHover();
    frame_.drillChoice()->setEnabled(false);
    frame_.startButton()->setEnabled(false);
    frame_.quitButton()->setEnabled(true);
    frame_.bestText()->setText(bestText());
    frame_.resultText()->clear();
    board_.picture()->setEnabled(true);
    showDrill();
}

QString TrainingController::bestText() const
{
    return QStringLiteral("Personal best: ") + (best_ ? scoreText(*best_) : QStringLiteral("N/A"));
}

// The drill as it stands with the darts marked: what to aim at next, the
// running score and where the drill is.
void TrainingController::showDrill()
{
    // Once the drill has ended only its confirmed sets count.
    const Drill &drill = drillRunning() ? run_->preview() : run_->drill();
    const bool open = drillRunning() && !drill.over();
    const DrillTarget target = drill.target();
    frame_.targetText()->setText(open ? target.text : QString());
    frame_.scoreText()->setText(scoreText(drill.score()));
    frame_.progressText()->setText(drill.progressText());
    QStringList darts;
    for (const MarkedDrillDart &dart : run_->marked()) {
        if (drillRunning())
            darts << dartCode(dart.score);
    }
    frame_.dartsText()->setText(darts.isEmpty() ? QString() : QStringLiteral("Darts: ") + darts.join(QStringLiteral("  ")));
    // The point to aim at, where the round names one area.
    if (open && target.aimNumber != 0)
        board_.placeTarget(0, target.aim, true);
    else
        board_.hideMarkersFrom(MarkerSet::Target, 0);
    frame_.confirmButton()->setEnabled(drillRunning() && run_->setMarked());
    frame_.undoButton()->setEnabled(drillRunning() && run_->dartCount() > 0);
    board_.setMarking(MarkerSet::Local, run_->dartCount());
}

void TrainingController::boardClicked(BoardPoint at, int flight)
{
    if (!drillRunning())
        return;
    const int index = run_->placeDart(at);
    if (index < 0)
        return;
    board_.showMarker(MarkerSet::Local, index, at, flight);
    sounds_.play(landingCue(at), true);
    showDrill();
}

void TrainingController::undoDart()
{
    if (!drillRunning())
        return;
    const int index = run_->undoDart();
    if (index < 0)
        return;
    board_.hideMarkersFrom(MarkerSet::Local, index);
    board_.hideHover();
    showDrill();
}

void TrainingController::confirmDarts()
{
    if (!drillRunning() || !run_->setMarked())
        return;
    // Darts that cannot be written stay on the board, to be confirmed again.
    if (!store_.insertDrillSet(run_->setRows(drillId_, session_.currentPlayerId))) {
        reportStoreError();
        return;
    }
    const std::vector<DrillDartOutcome> outcomes = run_->confirmSet();
    board_.hideMarkersFrom(MarkerSet::Local, 0);
    board_.hideHover();
    showDrill();
    announce(outcomes);
    if (run_->drill().over())
        finishDrill();
}

void TrainingController::announce(const std::vector<DrillDartOutcome> &outcomes)
{
    for (const DrillDartOutcome &outcome : outcomes) {
        switch (outcome.event) {
        case DrillEvent::Shanghai:
            sounds_.play(SoundCue::Fanfare, false);
            messages_.alert(QStringLiteral("Shanghai! A single, a double and a treble of the number."),
                            QStringLiteral("Shanghai!"));
            break;
        case DrillEvent::Finished:
            sounds_.play(SoundCue::Applause100, false);
            messages_.alert(QStringLiteral("Checked out! The target is finished."), QStringLiteral("Finished!"));
            break;
        case DrillEvent::Bust:
            sounds_.play(SoundCue::Awwww, false);
            break;
        case DrillEvent::None:
        case DrillEvent::Hit:
        case DrillEvent::RoundFailed:
        case DrillEvent::Over:
            break;
        }
    }
}

void TrainingController::finishDrill()
{
    const Drill &drill = run_->drill();
    const int score = drill.score();
    const bool completed = drill.completed();
    const qint64 id = drillId_;
    drillId_ = 0;
    if (!store_.finishDrill(id, {score, completed, false}))
        reportStoreError();

    const bool beaten = completed && best_ && beatsBest(score, best_, drill.lowerIsBetter());
    QString result;
    QString title = QStringLiteral("Drill Over");
    if (!completed) {
        result = QStringLiteral("The drill ended early with a score of %1. An unfinished drill sets no "
                                "personal best (%2).")
                     .arg(scoreText(score), best_ ? scoreText(*best_) : QStringLiteral("none yet"));
    } else if (!best_) {
        result = QStringLiteral("Score: %1. Your first, and so your personal best.").arg(scoreText(score));
    } else if (beaten) {
        title = QStringLiteral("New Personal Best!");
        result = QStringLiteral("Score: %1. New personal best! The best was %2.").arg(scoreText(score), scoreText(*best_));
    } else {
        result = QStringLiteral("Score: %1. Personal best: %2, not beaten.").arg(scoreText(score), scoreText(*best_));
    }
    if (completed && beatsBest(score, best_, drill.lowerIsBetter()))
        best_ = score;
    frame_.bestText()->setText(bestText());
    frame_.resultText()->setText(result);
    showDrill();
    showIdle();
    if (beaten)
        sounds_.play(SoundCue::ApplauseWin, false);
    messages_.alert(result, title);
}

void TrainingController::quitDrill()
{
    if (!drillRunning())
        return;
    if (!messages_.askYesNo(window_, quitTitle, QStringLiteral("Quit the drill? It is recorded as quit.")))
        return;
    recordQuit();
    board_.hidePips();
    board_.hideHover();
    showDrill();
    showIdle();
    frame_.resultText()->setText(QStringLiteral("Drill quit with a score of %1.").arg(scoreText(run_->drill().score())));
}

void TrainingController::recordQuit()
{
    const qint64 id = drillId_;
    drillId_ = 0;
    const Drill &drill = run_->drill();
    // The darts of the set not confirmed are not written; the drill ends
    // where its confirmed sets left it.
    if (!store_.finishDrill(id, {drill.score(), false, true}))
        reportStoreError();
}

void TrainingController::pointerOver(const PointerSpot &spot)
{
    if (!drillRunning())
        return;
    const bool full = run_->setMarked();
    switch (spot.over) {
    case PointerSpot::Over::Target:
        board_.showMarkerHover({HoverKind::Target}, spot.pixel, session_.useCms);
        return;
    case PointerSpot::Over::Label:
        if (!full)
            board_.showMarkerHover({HoverKind::Keep}, spot.pixel, session_.useCms);
        return;
    case PointerSpot::Over::Dart:
    case PointerSpot::Over::Board:
        if (full)
            return;
        break;
    }
    board_.showHover(dartDescriptionFromXY(spot.at.x, spot.at.y), spot.pixel);
}

void TrainingController::pointerLeft()
{
    // After the last dart of a set its text stays.
    if (drillRunning() && run_->setMarked())
        return;
    board_.hideHover();
}

bool TrainingController::mayDrag(MarkerSet set, bool rightButton) const
{
    if (!drillRunning() || set != MarkerSet::Local)
        return false;
    // A set ended early by a bust or a finish is as complete as one of three.
    const int placed = run_->setMarked() ? 3 : run_->dartCount();
    return dragAllowed(MarkerKind::Dart, false, placed, ThrowPhase::None, rightButton);
}

void TrainingController::markerDropped(MarkerSet set, int index, BoardPoint at, QPointF)
{
    if (set != MarkerSet::Local || !drillRunning())
        return;
    run_->moveDart(index, at);
    showDrill();
}

} // namespace tavrix
