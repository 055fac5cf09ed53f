#include "ui/practice/practice_controller.h"

#include "ui/board/board_picture.h"
#include "ui/dialogs/messages.h"
#include "ui/dialogs/stats_rescue.h"
#include "core/games/play_rules.h"
#include "core/practice/practice_totals.h"
#include "ui/practice/practice_frame.h"
#include "core/session/session.h"
#include "core/sound/sound_cue.h"
#include "core/stats/practice_log.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include <cmath>

namespace tavrix {

namespace {

const QString goCaption = QStringLiteral("Go");
const QString confirmCaption = QStringLiteral("Confirm Darts");

QString atRestText()
{
    return QStringLiteral("Click \"Go\" to begin");
}

} // namespace

PracticeController::PracticeController(const Context &context, QObject *parent)
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
    connect(frame_.goButton(), &QPushButton::clicked, this, &PracticeController::goButtonClick);
    // The darts of a set open are written with its target's id.
    rescue_.setPracticeRestore([this] {
        const PracticeStage stage = model_.stage();
        if (stage != PracticeStage::AwaitingDarts && stage != PracticeStage::SetComplete)
            return true;
        const PracticeTarget &target = model_.target();
        return store_.restoreStatTarget(target.id, session_.currentPlayerId, target.value, target.ring);
    });
}

void PracticeController::enter()
{
    model_.reset();
    board_.setMarking(MarkerSet::Local, 0);
    board_.setTargetsMovable(false);
}

void PracticeController::begin()
{
    // A set left open by a mode change is over (enter() closed it): its
    // target row stays without darts, which no total counts.
    showStage();
    frame_.generalText()->setText(atRestText());
    updateRunningStats();
}

void PracticeController::showStage()
{
    const PracticeStage stage = model_.stage();
    setListsEnabled(stage == PracticeStage::AtRest);
    QPushButton *go = frame_.goButton();
    switch (stage) {
    case PracticeStage::AtRest:
        go->setText(goCaption);
        break;
    case PracticeStage::AwaitingDarts:
    case PracticeStage::SetComplete:
        go->setText(confirmCaption);
        break;
    case PracticeStage::SequenceRunning:
        go->setText(model_.quitCaption());
        break;
    }
    // A single set is confirmed only once its three darts are marked.
    const bool awaiting = stage == PracticeStage::AwaitingDarts;
    go->setEnabled(!awaiting);
    frame_.targetChoice()->setEnabled(!awaiting);
}

void PracticeController::setListsEnabled(bool enabled)
{
    frame_.ringDrop()->setEnabled(enabled);
    frame_.scoreDrop()->setEnabled(enabled);
}

void PracticeController::reportStoreError()
{
    rescue_.reportFailure(window_, store_.lastError());
}

void PracticeController::goButtonClick()
{
    switch (model_.stage()) {
    case PracticeStage::AtRest:
        openSet();
        break;
    case PracticeStage::SetComplete:
        confirmSet();
        break;
    case PracticeStage::SequenceRunning:
        quitSequence();
        break;
    case PracticeStage::AwaitingDarts:
        break;
    }
}

bool PracticeController::goCaptionIsSafe() const
{
    return model_.stage() != PracticeStage::SequenceRunning;
}

void PracticeController::openSet()
{
    setListsEnabled(false);
    const SetDraw drawn = model_.drawSet(frame_.ringDrop()->currentData().toInt(),
                                        frame_.scoreDrop()->currentData().toInt(), session_.random);
    if (drawn.alert)
        messages_.alert(drawn.alert->text, drawn.alert->title);
    // The set's target row is written before any dart; without it no set opens.
    const std::optional<qint64> targetId =
        store_.insertStatTarget(session_.currentPlayerId, drawn.target.value, drawn.target.ring);
    if (!targetId) {
        setListsEnabled(true);
        reportStoreError();
        return;
    }
    model_.openSet(drawn, *targetId);
    showStage();
    frame_.generalText()->setText(QStringLiteral("Shoot for ") + drawn.targetText);
    board_.picture()->setEnabled(true);
    frame_.setResults()->show();
    board_.setMarking(MarkerSet::Local, model_.dartCount());
    updateRunningStats();
    const QString unknown = QStringLiteral("??");
    for (int i = 0; i < 3; ++i) {
        frame_.rdisttext[i]->setText(unknown);
        frame_.angleText[i]->setText(unknown);
        frame_.scoreText[i]->setText(unknown);
    }
    for (QLabel *label : {frame_.avgDistText, frame_.geomDistText, frame_.groupingDistText})
        label->setText(unknown);
}

void PracticeController::confirmSet()
{
    const std::optional<SetConfirmation> confirmed = model_.confirmation(session_.currentPlayerId);
    if (!confirmed)
        return;
    // Darts that cannot be written stay on the board, to be confirmed again.
    if (!recordPracticeSet(store_, confirmed->rows)) {
        reportStoreError();
        return;
    }
    if (confirmed->alert)
        messages_.alert(confirmed->alert->text, confirmed->alert->title);
    model_.confirmSet();
    showStage();
    frame_.generalText()->setText(atRestText());
    // The hover text of the last dart goes with the darts.
    board_.hideMarkersFrom(MarkerSet::Local, 0);
    board_.hideHover();
    updateRunningStats();
    if (model_.sequence() != PracticeSequence::None)
        openSet();
}

void PracticeController::quitSequence()
{
    model_.quitSequence();
    showStage();
    emit reenterRequested();
}

void PracticeController::updateRunningStats()
{
    const std::optional<PracticeSums> sums = practiceSums(store_, session_.currentPlayerId);
    if (!sums) {
        reportStoreError();
        return;
    }
    const RunningTotalsTexts texts =
        runningTotalsTexts(*sums, model_.target().value, model_.target().ring, session_.useCms);
    frame_.pctAllHitText->setText(texts.pctAll);
    frame_.pctThisHitText->setText(texts.pctThis);
    frame_.avgDistAnyText->setText(texts.avgDistAny);
    frame_.avgDistThisText->setText(texts.avgDistThis);
    frame_.pctAnysHitText->setText(texts.pctAnys);
    frame_.pctDoublesHitText->setText(texts.pctDoubles);
    frame_.pctTriplesHitText->setText(texts.pctTriples);
}

void PracticeController::doAverageDist()
{
    // Until the third dart is marked the measures stay unknown.
    const std::optional<SetGrouping> grouping = model_.grouping();
    if (!grouping)
        return;
    frame_.avgDistText->setText(distanceText(grouping->averageDistance, session_.useCms));
    frame_.geomDistText->setText(distanceText(grouping->centreDistance, session_.useCms));
    frame_.groupingDistText->setText(distanceText(grouping->groupingDistance, session_.useCms));
}

// Distance and angle are measured from the practice target, the description
// from the bull.
void PracticeController::readout(int row, BoardPoint pointer)
{
    if (row < 0 || row > 2)
        return;
    const double dx = pointer.x - model_.target().aim.x;
    const double dy = pointer.y - model_.target().aim.y;
    frame_.rdisttext[row]->setText(distanceText(std::hypot(dx, dy), session_.useCms));
    frame_.angleText[row]->setText(degreesText(angleFromXY(dx, dy)));
    frame_.scoreText[row]->setText(dartDescriptionFromXY(pointer.x, pointer.y));
}

void PracticeController::pointerOver(const PointerSpot &spot)
{
    const int placed = model_.dartCount();
    switch (spot.over) {
    case PointerSpot::Over::Target:
        board_.showMarkerHover({HoverKind::Target}, spot.pixel, session_.useCms);
        return;
    case PointerSpot::Over::Label:
        if (placed < 3)
            board_.showMarkerHover({HoverKind::Keep}, spot.pixel, session_.useCms);
        return;
    case PointerSpot::Over::Dart:
        // Over a marked dart the read-outs go on while the set is open.
        if (placed >= 3)
            return;
        break;
    case PointerSpot::Over::Board:
        if (placed >= 3)
            return;
        break;
    }
    readout(placed, spot.at);
    board_.showHover(dartDescriptionFromXY(spot.at.x, spot.at.y), spot.pixel);
}

void PracticeController::pointerLeft()
{
    // After the last dart of a set the last text stays.
    if (model_.dartCount() == 3)
        return;
    board_.hideHover();
}

void PracticeController::boardClicked(BoardPoint at, int flight)
{
    const int index = model_.placeDart(at);
    if (index < 0)
        return;
    board_.showMarker(MarkerSet::Local, index, at, flight);
    sounds_.play(landingCue(at), true);
    board_.setMarking(MarkerSet::Local, model_.dartCount());
    if (model_.dartCount() < 3)
        return;
    showStage();
    frame_.generalText()->setText(QStringLiteral("Adjust Darts and \"Confirm\""));
    doAverageDist();
}

bool PracticeController::mayDrag(MarkerSet set, bool rightButton) const
{
    const MarkerKind kind = set == MarkerSet::Target ? MarkerKind::Target : MarkerKind::Dart;
    return dragAllowed(kind, false, model_.dartCount(), ThrowPhase::None, rightButton);
}

void PracticeController::markerDropped(MarkerSet set, int index, BoardPoint at, QPointF pixel)
{
    if (set == MarkerSet::Local)
        model_.moveDart(index, at);
    // The read-out row is that of the marker nearest the drop, which need
    // not be the marker dropped when it lands on another.
    const int k = board_.closestIndex(MarkerSet::Local, pixel);
    dragPipIndex_ = k;
    if (k != noMarker)
        readout(k, boardFromPicture(pixel.x(), pixel.y()));
    doAverageDist();
}

} // namespace tavrix
