#pragma once

// The board picture as the program's input: the markers on it and what the
// pointer does there. The board says what happened, in board positions: the
// pointer is over the board, a dart or a target; the board was clicked; a
// marker was dropped somewhere else. What that means is for the controller of
// the current mode to decide; it tells the board back which markers are being
// marked and shows markers and hover texts through it.

#include "core/board/board_geometry.h"
#include "core/board/pointer_rules.h"

#include <QFont>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <array>

class QLabel;
class QRandomGenerator;

namespace tavrix {

class BoardPicture;
class DartMarker;
class LandingPoints;

using MarkerArray = std::array<DartMarker *, 3>;

// Pips (the local player, and practice), CPips (the opponent), TargetPips.
enum class MarkerSet { Local, Opponent, Target };

// What the pointer is over.
struct PointerSpot {
    enum class Over { Board, Dart, Target, Label };
    Over over = Over::Board;
    BoardPoint at;  // board position of the pointer
    QPointF pixel;  // the same, in picture units
    // Over a dart: whose marker, and the index of the nearest marker of
    // that set under the pointer (noMarker when none counts).
    MarkerSet set = MarkerSet::Local;
    int index = noMarker;
};

class BoardController {
public:
    virtual ~BoardController() = default;
    virtual void pointerOver(const PointerSpot &spot) = 0;
    // The pointer left the picture.
    virtual void pointerLeft() = 0;
    // A left click on the picture; `flight` is the flight picture drawn for it.
    virtual void boardClicked(BoardPoint at, int flight) = 0;
    // Whether pressing a marker of `set` may drag it now.
    virtual bool mayDrag(MarkerSet set, bool rightButton) const = 0;
    // A dragged marker was dropped on the picture and now stands at `at`.
    virtual void markerDropped(MarkerSet set, int index, BoardPoint at, QPointF pixel) = 0;
};

class BoardInput : public QObject {
    Q_OBJECT

public:
    // `random` draws the flight of every click; `statsLabels` are the record
    // labels lying on the board (rstatTitleLabel, rstatsText, ostatTitleLabel,
    // ostatsText).
    BoardInput(BoardPicture *picture, QRandomGenerator &random, QLabel *scoreHoverText,
               const QList<QLabel *> &statsLabels, QObject *parent = nullptr);

    BoardPicture *picture() const { return picture_; }
    void setController(BoardController *controller) { controller_ = controller; }
    // The chat window, whose area the board leaves to it.
    void setChatWindow(QWidget *chat) { chat_ = chat; }

    const MarkerArray &markers(MarkerSet set) const;
    const MarkerArray &pips() const { return pips_; }
    const MarkerArray &cpips() const { return cpips_; }
    const MarkerArray &targetPips() const { return targetPips_; }

    // The set whose markers are being marked and may be dragged, and how many
    // of them are placed; whether the targets may be dragged too.
    void setMarking(MarkerSet set, int placed);
    void setTargetsMovable(bool movable) { targetsMovable_ = movable; }
    int placed() const { return placed_; }

    void hidePips();
    // Shows a marker with the given flight centred on a board position,
    // under the targets, the darts' points and the hover text.
    void showMarker(MarkerSet set, int index, BoardPoint at, int flight);
    // Shows (or only moves, when `visible` is false) a target marker.
    void placeTarget(int index, BoardPoint at, bool visible);
    void hideMarkersFrom(MarkerSet set, int index);

    // The hover text: at a picture point (in picture units), kept inside
    // the picture's right edge; over a marker or label, with the caption of
    // markerHoverCaption. It grows with the picture.
    void showHover(const QString &text, QPointF point);
    void showMarkerHover(MarkerHover hover, QPointF point, bool useCms);
    void hideHover();

    // The marker a press at this picture point (in units) would drag, or none.
    DartMarker *closestPip(double x, double y) const;
    // The index of the nearest marker of a set under a picture point, among
    // the placed ones; noMarker when none.
    int closestIndex(MarkerSet set, QPointF pixel) const;
    bool overLabel(double x, double y) const;
    bool overChat(double x, double y) const;

    // Board position of a marker's centre.
    static BoardPoint markerPoint(const DartMarker *marker);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Pointer positions come in widget pixels, except for `pressed`.
    void pointerMoved(QPointF pixel);
    void pointerLeft();
    void pressed(QPointF at, Qt::MouseButton button);
    void released(QPointF pixel, Qt::MouseButton button);
    // Markers, record labels and the hover text follow the picture's size.
    void rescale();
    // A record label's rectangle in picture units.
    QRectF labelArea(const QLabel *label) const;
    // Puts the landing points and the hover text back on top.
    void restack();
    MarkerRects rects(const MarkerArray &markers) const;
    int closestPipIndex(const MarkerArray &markers, double x, double y) const;
    MarkerSet setOf(const DartMarker *marker) const;
    int indexOf(const DartMarker *marker) const;

    BoardPicture *picture_;
    QRandomGenerator &random_;
    QLabel *scoreHoverText_;
    QList<QLabel *> statsLabels_;
    // The record labels' places and fonts, and the hover text's font, at
    // one pixel per unit.
    struct LabelPlace {
        QRectF place;
        QFont font;
    };
    QList<LabelPlace> statsPlaces_;
    QFont hoverFont_;
    BoardController *controller_ = nullptr;
    QPointer<QWidget> chat_;

    MarkerArray pips_{};
    MarkerArray cpips_{};
    MarkerArray targetPips_{};
    LandingPoints *landingPoints_ = nullptr;
    MarkerSet marking_ = MarkerSet::Local;
    int placed_ = 0;
    bool targetsMovable_ = false;

    // The marker being dragged and the centre it had before.
    DartMarker *dragging_ = nullptr;
    QPointF dragStart_;
    // A left press on the board that may become a click.
    bool clickPending_ = false;
};

} // namespace tavrix
