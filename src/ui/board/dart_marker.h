#pragma once

// The markers laid on the board picture: a dart's flight (60 x 60 picture
// units, blue for the local player, black for the opponent, twelve shapes
// each so successive darts look different) or a small 16 x 16 aiming
// target; both grow with the picture. A marker always
// stands centred on its point; the pointer passes through it to the board.
//
// Every flight carries a light halo round a dark edge, so it stands out on
// the black and cream beds and on the red and green rings alike. The exact
// landing point is a white dot in the flight's dark edge colour and light
// halo (drawDartPoint), readable on any bed; LandingPoints draws those dots
// again above every flight and target, so nothing covers them. The target
// is an outline with an open centre.

#include "core/board/board_geometry.h"

#include <QWidget>

class QPainter;

namespace tavrix {

enum class FinColor { Blue, Black };

// The landing point of a dart shown at widget pixel `at`, on a picture of
// `scale` pixels per unit: a dot of radius dartPointRadius units round the
// middle of the pixel whose top left corner is `at` (a point between pixels
// keeps the same half-pixel offset).
inline constexpr double dartPointRadius = 4.5;
void drawDartPoint(QPainter &painter, QPointF at, FinColor color, double scale = 1);
// A dart's number within its set (1 to 3), centred on a widget pixel.
void drawDartNumber(QPainter &painter, QPointF middle, int number, double scale = 1);

class DartMarker : public QWidget {
    Q_OBJECT

public:
    static constexpr int flightSide = flightMarkerSide;
    static constexpr int targetSide = targetMarkerSide;

    // `tag` is "pips", "cpips" or "targ".
    DartMarker(const QString &tag, QWidget *board);

    QString tag() const { return tag_; }
    bool isTarget() const { return tag_ == QLatin1String("targ"); }
    FinColor finColor() const { return tag_ == QLatin1String("pips") ? FinColor::Blue : FinColor::Black; }
    // The flight shown, 0 to 11 (always 0 for a target).
    int flight() const { return flight_; }
    void setFlight(int index);

    // The marker's side in picture units.
    int side() const { return isTarget() ? targetSide : flightSide; }
    // Moves the marker so that its centre lies on the picture point (in
    // picture units), which need not be a whole pixel: the marker keeps the
    // point exactly, and its widget stands on the nearest whole pixels with
    // the picture drawn at the point.
    void centreOn(QPointF picturePoint);
    QPointF centre() const { return centre_; }
    // The marker's rectangle round its exact centre, in picture units.
    QRectF area() const;
    // Takes the size and place the picture's present scale gives it.
    void rescale();

signals:
    // The centre moved, also within the same whole pixel.
    void centreMoved();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString tag_;
    int flight_ = 0;
    QPointF centre_;
};

} // namespace tavrix
