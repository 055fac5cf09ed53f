#pragma once

// The landing points of the shown darts, drawn over the whole board picture
// above every flight and target: where three darts crowd one treble, each
// point and its dart's number (1 to 3) stay in sight. The layer follows the
// markers it watches and lets the pointer through to the board.

#include <QList>
#include <QWidget>

namespace tavrix {

class DartMarker;

class LandingPoints : public QWidget {
    Q_OBJECT

public:
    explicit LandingPoints(QWidget *picture);

    // Watches a dart marker, numbered 1 to 3 within its set.
    void watch(DartMarker *marker, int number);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    struct Dart {
        DartMarker *marker;
        int number;
    };
    QList<Dart> darts_;
};

} // namespace tavrix
