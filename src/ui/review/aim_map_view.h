#pragma once

// "Show where to aim" in review: while it is checked, the board shows the
// map of the points per dart the player can expect wherever the dart is
// aimed, worked out from the player's own darts, and in its upper left
// corner where the best aim is. The choice is remembered in the settings.

#include <QFont>
#include <QObject>

class QLabel;

namespace tavrix {

class AimAdviceService;
class BoardPicture;
class ReviewFrame;
struct Session;

class AimMapView : public QObject {
    Q_OBJECT

public:
    AimMapView(AimAdviceService &aims, const Session &session, BoardPicture &picture, ReviewFrame &frame,
               QObject *parent = nullptr);

    // Review mode shown or left; the map goes with it.
    void setActive(bool active);
    // Shows the map and the advice as they now stand (the player may have
    // changed, or his darts).
    void refresh();

    QLabel *adviceLabel() const { return advice_; }

private:
    // The advice keeps the corner and grows with the board.
    void placeAdvice();

    AimAdviceService &aims_;
    const Session &session_;
    BoardPicture &picture_;
    ReviewFrame &frame_;
    QLabel *advice_ = nullptr;
    QFont adviceFont_;
    bool active_ = false;
};

} // namespace tavrix
