#pragma once

// The markers laid on the board picture: a dart's flight (60 x 60, blue for
// the local player, black for the opponent, twelve shapes each so successive
// darts look different) or a small 16 x 16 aiming target. A marker always
// stands centred on its point; the pointer passes through it to the board.

#include "board/board_geometry.h"

#include <QWidget>

namespace tavrix {

enum class FinColor { Blue, Black };

// One of the twelve flight pictures (index 0 to 11) of a colour.
QPixmap flightPicture(FinColor color, int index, qreal devicePixelRatio = 1.0);
// The aiming target.
QPixmap targetPicture(qreal devicePixelRatio = 1.0);

class DartMarker : public QWidget {
    Q_OBJECT

public:
    static constexpr int flightSide = flightMarkerSide;
    static constexpr int targetSide = targetMarkerSide;

    // `tag` is "pips", "cpips" or "targ".
    DartMarker(const QString &tag, QWidget *board);

    QString tag() const { return tag_; }
    bool isTarget() const { return tag_ == QLatin1String("targ"); }
    // The flight shown, 0 to 11 (always 0 for a target).
    int flight() const { return flight_; }
    void setFlight(int index);

    // Moves the marker so that its centre lies on the picture point.
    void centreOn(QPointF picturePoint);
    QPointF centre() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString tag_;
    int flight_ = 0;
};

} // namespace tavrix
