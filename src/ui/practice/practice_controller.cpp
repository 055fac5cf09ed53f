#include "ui/practice/practice_controller.h"

#include "ui/board/board_picture.h"
#include "ui/dialogs/messages.h"
#include "core/games/play_rules.h"
#include "ui/practice/practice_frame.h"
#include "core/practice/practice_totals.h"
#include "core/practice/set_grouping.h"
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
    , board_(context.board)
    , frame_(context.frame)
    , window_(context.window)
{
    connect(frame_.goButton(), &QPushButton::clicked, this, &PracticeController::goButtonClick);
}

void PracticeController::enter()
{
    quitPracticeSequences(state_);
    board_.setMarking(MarkerSet::Local, 0);
    board_.setTargetsMovable(false);
}

void PracticeController::begin()
{
    // A set left open by a mode change is over: its target row stays
    // without darts, which no total counts.
    state_.targetValue = 0;
    state_.targetRing = 0;
    showAtRest();
    frame_.targetChoice()->setEnabled(true);
    updateRunningStats();
}

void PracticeController::showAtRest()
{
    setListsEnabled(true);
    frame_.goButton()->setText(goCaption);
    frame_.goButton()->setEnabled(true);
    frame_.generalText()->setText(atRestText());
}

void PracticeController::setListsEnabled(bool enabled)
{
    frame_.ringDrop()->setEnabled(enabled);
    frame_.scoreDrop()->setEnabled(enabled);
}

void PracticeController::reportStoreError()
{
    messages_.error(window_, QString::fromLatin1(applicationTitle), store_.lastError());
}

void PracticeController::goButtonClick()
{
    const QString caption = frame_.goButton()->text();
    if (caption == goCaption)
        openSet();
    else if (caption == confirmCaption)
        confirmSet();
    else
        quitSequence();
}

bool PracticeController::goCaptionIsSafe() const
{
    const QString caption = frame_.goButton()->text();
    return caption == goCaption || caption == confirmCaption;
}

void PracticeController::openSet()
{
    setListsEnabled(false);
    const PracticeState before = state_;
    const OpenedSet opened = openPracticeSet(state_, frame_.ringDrop()->currentData().toInt(),
                                             frame_.scoreDrop()->currentData().toInt(), session_.random);
    if (opened.alert)
        messages_.alert(opened.alert->text, opened.alert->title);
    // The set's target row is written before any dart; without it no set opens.
    const std::optional<qint64> targetId =
        store_.insertStatTarget(session_.currentPlayerId, state_.targetValue, state_.targetRing);
    if (!targetId) {
        state_ = before;
        setListsEnabled(true);
        reportStoreError();
        return;
    }
    state_.targetId = *targetId;

    QPushButton *go = frame_.goButton();
    if (state_.sequenceActive()) {
        go->setText(quitSequenceCaption(state_));
        go->setEnabled(true);
        frame_.targetChoice()->setEnabled(true);
    } else {
        go->setText(confirmCaption);
        go->setEnabled(false);
        frame_.targetChoice()->setEnabled(false);
    }
    frame_.generalText()->setText(QStringLiteral("Shoot for ") + opened.targetText);
    board_.picture()->setEnabled(true);
    frame_.setResults()->show();
    board_.setMarking(MarkerSet::Local, 0);
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
    PracticeSet set{session_.currentPlayerId, state_.targetId, state_.targetValue, state_.targetRing, {}};
    for (int i = 0; i < 3; ++i) {
        const BoardPoint at = BoardInput::markerPoint(board_.pips()[i]);
        const PracticeScore score = practiceScore(std::sqrt(at.x * at.x + at.y * at.y), angleFromXY(at.x, at.y));
        const double dx = at.x - state_.target.x;
        const double dy = at.y - state_.target.y;
        set.darts[i] = {session_.currentPlayerId, state_.targetId, i, at.x, at.y,
                        std::sqrt(dx * dx + dy * dy), score.score, score.ring};
    }
    // Darts that cannot be written stay on the board, to be confirmed again.
    if (!recordPracticeSet(store_, set)) {
        reportStoreError();
        return;
    }
    if (const std::optional<PracticeAlert> alert = confirmPracticeSet(state_))
        messages_.alert(alert->text, alert->title);
    setListsEnabled(true);
    frame_.goButton()->setText(goCaption);
    frame_.generalText()->setText(atRestText());
    board_.hideMarkersFrom(MarkerSet::Local, 0);
    updateRunningStats();
    if (state_.sequenceActive())
        openSet();
}

void PracticeController::quitSequence()
{
    setListsEnabled(true);
    quitPracticeSequences(state_);
    frame_.goButton()->setText(goCaption);
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
        runningTotalsTexts(*sums, state_.targetValue, state_.targetRing, session_.useCms);
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
    if (board_.placed() < 3)
        return;
    std::array<BoardPoint, 3> darts;
    for (int i = 0; i < 3; ++i)
        darts[i] = BoardInput::markerPoint(board_.pips()[i]);
    const SetGrouping grouping = setGrouping(darts, state_.target);
    frame_.avgDistText->setText(distanceText(grouping.averageDistance, session_.useCms));
    frame_.geomDistText->setText(distanceText(grouping.centreDistance, session_.useCms));
    frame_.groupingDistText->setText(distanceText(grouping.groupingDistance, session_.useCms));
}

// Distance and angle are measured from the practice target, the description
// from the bull.
void PracticeController::readout(int row, BoardPoint pointer)
{
    if (row < 0 || row > 2)
        return;
    const double dx = pointer.x - state_.target.x;
    const double dy = pointer.y - state_.target.y;
    frame_.rdisttext[row]->setText(distanceText(std::hypot(dx, dy), session_.useCms));
    frame_.angleText[row]->setText(degreesText(angleFromXY(dx, dy)));
    frame_.scoreText[row]->setText(dartDescriptionFromXY(pointer.x, pointer.y));
}

void PracticeController::pointerOver(const PointerSpot &spot)
{
    const int placed = board_.placed();
    switch (spot.over) {
    case PointerSpot::Over::Target:
        board_.showMarkerHover(2, spot.pixel, session_.useCms);
        return;
    case PointerSpot::Over::Label:
        if (placed < 3)
            board_.showMarkerHover(0, spot.pixel, session_.useCms);
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
    if (board_.placed() == 3)
        return;
    board_.hideHover();
}

void PracticeController::boardClicked(BoardPoint at, int flight)
{
    const int placed = board_.placed();
    if (placed >= 3)
        return;
    board_.showMarker(MarkerSet::Local, placed, at, flight);
    sounds_.play(landingCue(at), true);
    board_.setMarking(MarkerSet::Local, placed + 1);
    if (placed + 1 < 3)
        return;
    frame_.goButton()->setText(confirmCaption);
    frame_.goButton()->setEnabled(true);
    frame_.targetChoice()->setEnabled(true);
    frame_.generalText()->setText(QStringLiteral("Adjust Darts and \"Confirm\""));
    doAverageDist();
}

bool PracticeController::mayDrag(MarkerSet set, bool rightButton) const
{
    const MarkerKind kind = set == MarkerSet::Target ? MarkerKind::Target : MarkerKind::Dart;
    return dragAllowed(kind, false, board_.placed(), ThrowPhase::None, rightButton);
}

void PracticeController::markerDropped(MarkerSet, int, BoardPoint, QPointF pixel)
{
    const int k = board_.closestIndex(MarkerSet::Local, pixel);
    dragPipIndex_ = k;
    if (k != noMarker)
        readout(k, boardFromPicture(pixel.x(), pixel.y()));
    doAverageDist();
}

} // namespace tavrix
