#pragma once

// The board picture as the program's input: the markers on it, what the
// pointer shows while it moves, what a click places, and how markers are
// dragged and dropped. What a placed or moved dart means is handed to the
// mode's own logic through BoardHandoffs.

#include "board/board_geometry.h"
#include "board/pointer_rules.h"

#include <QObject>
#include <QPointer>

#include <array>

class QLabel;
class QMouseEvent;
class QPushButton;
class QWidget;

namespace tavrix {

class BoardPicture;
class DartMarker;
class PracticeFrame;
class Sounds;
struct SharedState;

using MarkerArray = std::array<DartMarker *, 3>;

// The logic of the modes that the board calls when darts are placed or moved.
class BoardHandoffs {
public:
    virtual ~BoardHandoffs() = default;
    virtual void show301Scores(const MarkerArray &markers) = 0;
    virtual void showNext01Target() = 0;
    virtual void showCricketScores(const MarkerArray &markers) = 0;
    virtual void showNextCricketTarget() = 0;
    virtual void doAverageDist() = 0;
    virtual void doPlot(int ring, int segment) = 0;
};

// The controls the board writes to besides its own markers.
struct BoardControls {
    QLabel *scoreHoverText = nullptr;
    // rstatTitleLabel, rstatsText, ostatTitleLabel, ostatsText: on the board,
    // and to the pointer part of it.
    QList<QLabel *> statsLabels;
    PracticeFrame *practice = nullptr;
    QPushButton *btnStartGame = nullptr;
};

class BoardInput : public QObject {
    Q_OBJECT

public:
    BoardInput(BoardPicture *picture, SharedState &state, const BoardControls &controls,
               QObject *parent = nullptr);

    BoardPicture *picture() const { return picture_; }
    void setHandoffs(BoardHandoffs *handoffs) { handoffs_ = handoffs; }
    void setSounds(Sounds *sounds) { sounds_ = sounds; }
    // The chat window, whose area the board leaves to it.
    void setChatWindow(QWidget *chat) { chat_ = chat; }

    const MarkerArray &pips() const { return pips_; }
    const MarkerArray &cpips() const { return cpips_; }
    const MarkerArray &targetPips() const { return targetPips_; }
    // The markers of the current thrower.
    const MarkerArray &throwerPips() const;

    void hidePips();
    // Shows a marker with the given flight centred on a board position,
    // under the targets and the hover text.
    void showMarkerAt(DartMarker *marker, BoardPoint at, int flight);
    // The marker a press at this picture point would drag, or none.
    DartMarker *closestPip(double x, double y) const;
    int closestPipIndex(const MarkerArray &markers, double x, double y) const;
    bool overPip(double x, double y) const;
    bool overLabel(double x, double y) const;
    bool overChat(double x, double y) const;

    // Dart position of a marker's centre, board units, and its score.
    static double pipX(const DartMarker *marker);
    static double pipY(const DartMarker *marker);
    static DartScore pipScore(const DartMarker *marker);

    // Board position of the last pointer position seen.
    double mouseX() const { return mouseX_; }
    double mouseY() const { return mouseY_; }
    // Practice: the marker dropped last.
    int dragPipIndex() const { return dragPipIndex_; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void pointerMoved(QPointF at);
    void pointerLeft();
    void pressed(QPointF at, Qt::MouseButton button);
    void released(QPointF at, Qt::MouseButton button);

    void boardMoved(double x, double y);
    void reviewHover(double radius, double angle, double x, double y);
    void practiceReadout(int row, double radius, double angle);
    void boardClicked();
    void placeMarker(DartMarker *marker, int flight);
    void landingSound();
    void dropped(DartMarker *marker, QPointF at);

    void positionHover(double x, double y);
    void showScoreHover(double x, double y, int kind);
    void setMouse(double x, double y);
    MarkerRects rects(const MarkerArray &markers) const;

    BoardPicture *picture_;
    SharedState &state_;
    BoardControls controls_;
    BoardHandoffs *handoffs_ = nullptr;
    Sounds *sounds_ = nullptr;
    QPointer<QWidget> chat_;

    MarkerArray pips_{};
    MarkerArray cpips_{};
    MarkerArray targetPips_{};

    double mouseX_ = 0;
    double mouseY_ = 0;
    int dragPipIndex_ = 0;

    // The marker being dragged and where it stood before.
    DartMarker *dragging_ = nullptr;
    QPoint dragStart_;
    // A left press on the board that may become a click.
    bool clickPending_ = false;
};

} // namespace tavrix
