// The drawn board must agree with scoring: a point inside a bed shows that
// bed's colour.

#include "board/board_picture.h"

#include <QImage>
#include <QTest>

#include <cmath>

using namespace tavrix;

class TestBoardPicture : public QObject {
    Q_OBJECT

private slots:
    void bedsLieWhereScoringPutsThem()
    {
        BoardPicture picture;
        const QImage image = picture.grab().toImage();
        QCOMPARE(image.size(), QSize(520, 520));
        // The middle of each bed, away from the wires either side.
        const double radii[] = {3, 13.5, 66, 119.5, 157, 195.5};
        for (double radius : radii) {
            for (int number = 1; number <= 20; ++number) {
                for (double offset : {-6.0, 0.0, 6.0}) {
                    const double a = (segmentAngle[number] + offset) * radPerDeg;
                    const BoardPoint p{radius * std::cos(a), radius * std::sin(a)};
                    const DartScore score = scoreFromXY(p.x, p.y);
                    const int ring = ringFromXY(p.x, p.y);
                    const QPointF at = BoardPicture::pictureFromBoard(p);
                    const QColor drawn = image.pixelColor(int(at.x()), int(at.y()));
                    QVERIFY2(drawn == bedColor(ring, score.number),
                             qPrintable(QStringLiteral("%1 at r %2: %3")
                                            .arg(number)
                                            .arg(radius)
                                            .arg(drawn.name())));
                }
            }
        }
    }

    // Neighbouring numbers alternate dark and light, as on every board.
    void neighboursAlternate()
    {
        const int clockwise[] = {20, 1, 18, 4, 13, 6, 10, 15, 2, 17, 3, 19, 7, 16, 8, 11, 14, 9, 12, 5};
        for (int i = 0; i < 20; ++i) {
            const int here = clockwise[i];
            const int next = clockwise[(i + 1) % 20];
            QVERIFY(bedColor(RingSingle, here) != bedColor(RingSingle, next));
            QVERIFY(bedColor(RingDouble, here) != bedColor(RingDouble, next));
            QCOMPARE(bedColor(RingTriple, here), bedColor(RingDouble, here));
        }
        QVERIFY(bedColor(RingBull, 25) != bedColor(RingOuterBull, 25));
    }
};

QTEST_MAIN(TestBoardPicture)
#include "tst_board_picture.moc"
