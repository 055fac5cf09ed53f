// The drawn board must agree with scoring: a point inside a bed shows that
// bed's colour. A dart's landing point stays in sight on every bed, over
// its target and beside the other darts of its set.

#include "ui/board/board_input.h"
#include "ui/board/board_picture.h"
#include "ui/board/plot_layer.h"

#include "../support/data_table.h"

#include <QImage>
#include <QLabel>
#include <QRandomGenerator>
#include <QTest>

#include <cmath>

using namespace tavrix;

namespace {

double luminance(QColor c)
{
    auto linear = [](double v) { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(c.redF()) + 0.7152 * linear(c.greenF()) + 0.0722 * linear(c.blueF());
}

double contrast(QColor a, QColor b)
{
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

// The 3 x 3 pixels round a pixel, or round a board position.
QList<QRgb> pixelsAround(const QImage &image, QPoint middle)
{
    QList<QRgb> pixels;
    for (int dy = -1; dy <= 1; ++dy) {
        for (int dx = -1; dx <= 1; ++dx)
            pixels << image.pixel(middle + QPoint(dx, dy));
    }
    return pixels;
}

QList<QRgb> pixelsAround(const QImage &image, BoardPoint at)
{
    return pixelsAround(image, BoardPicture::pictureFromBoard(at).toPoint());
}

} // namespace

class TestBoardPicture : public QObject {
    Q_OBJECT

private slots:
    void bedsLieWhereScoringPutsThem()
    {
        BoardPicture picture;
        const QImage image = picture.grab().toImage();
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
                             qPrintable(QStringLiteral("%1 at r %2: %3").arg(number).arg(radius).arg(drawn.name())));
                }
            }
        }
    }

    // On the black single 20 and the red treble 20, the opponent's dart
    // and the local one alike show a high-contrast pixel on the exact
    // landing point; a target on the same spot and two more darts of the
    // set crowding the treble leave each dart's middle pixels as they were.
    void dartPointsStayInSight_data()
    {
        const BoardPoint single{0, 150}, treble{0, 119};
        addTable<MarkerSet, BoardPoint>({"set", "bed"},
            {{"opponent's on S20", MarkerSet::Opponent, single}, {"opponent's on T20", MarkerSet::Opponent, treble},
             {"local on S20", MarkerSet::Local, single}, {"local on T20", MarkerSet::Local, treble}});
    }
    void dartPointsStayInSight()
    {
        QFETCH(MarkerSet, set);
        QFETCH(BoardPoint, bed);
        BoardPicture picture;
        QLabel hover(&picture);
        hover.hide();
        QRandomGenerator random(1);
        BoardInput board(&picture, random, &hover, {});
        picture.show();
        QVERIFY(QTest::qWaitForWindowExposed(&picture));
        const QColor bedColour = bedColor(ringFromXY(bed.x, bed.y), 20);
        board.showMarker(set, 0, bed, 5);
        const QImage alone = picture.grab().toImage();
        const QPoint pixel = BoardPicture::pictureFromBoard(bed).toPoint();
        const double ratio = contrast(alone.pixelColor(pixel), bedColour);
        QVERIFY2(ratio >= 4.5, qPrintable(QStringLiteral("%1: %2").arg(bedColour.name()).arg(ratio)));

        board.placeTarget(0, bed, true);
        board.showMarker(set, 1, {bed.x - 7, bed.y}, 8);
        board.showMarker(set, 2, {bed.x + 7, bed.y}, 1);
        const QImage crowded = picture.grab().toImage();
        QCOMPARE(pixelsAround(crowded, bed), pixelsAround(alone, bed));
    }

    // Plotted darts, at one and at two screen pixels per picture pixel:
    // each dot in its colour on its point, the later set over the earlier,
    // nothing beyond its rim; a set's cross on its mean and its ellipse turned
    // counter-clockwise on the board.
    void plotLayer_data() { addTable<qreal>({"ratio"}, {{"one pixel each", 1.0}, {"two pixels each", 2.0}}); }
    void plotLayer()
    {
        QFETCH(qreal, ratio);
        const QColor red(240, 0, 0);
        const PlotSet black{Qt::black, {{0, 150}, {0.2, 150.1}, {100, 0}}, {}, {}};
        const PlotSet reds{red, {{100, 0}, {-50, -50}}, BoardPoint{0, -100}, PlotEllipse{50, 20, 30}};
        const QImage layer = renderPlotLayer({black, reds}, BoardPicture::side, ratio);
        auto at = [&](BoardPoint p) {
            const QPointF pixel = BoardPicture::pictureFromBoard(p) * ratio;
            return layer.pixelColor(int(pixel.x()), int(pixel.y()));
        };
        QCOMPARE(at({0, 150}), QColor(Qt::black));
        QCOMPARE(at({100, 0}), red);
        QCOMPARE(at({-50, -50}), red);
        QCOMPARE(at({0, 156}).alpha(), 0);
        // The major axis points up and to the right, 30 degrees over the
        // horizontal; its mirror image below stays clear.
        const QColor tip = at({43.3, -100 + 25});
        QVERIFY2(tip.alpha() > 0, qPrintable(tip.name(QColor::HexArgb)));
        QCOMPARE(at({43.3, -100 - 25}).alpha(), 0);
        const QColor cross = at({0, -100});
        QVERIFY2(cross.red() > 150 && cross.green() < 120, qPrintable(cross.name(QColor::HexArgb)));
    }

    // Review pips on the beds where they are hardest to see, a practice pip
    // on the black single 20 and game pips on the red treble and double 20,
    // under both sets' ellipses and a cross: each keeps its colour on its
    // middle 3 x 3 pixels and a rim that stands out from the bed.
    void plottedPipsStayVisible()
    {
        const QColor red(240, 0, 0);
        const BoardPoint single{0, 150}, treble{0, 119.5}, dbl{0, 195.5};
        const BoardPoint mean{0, 157.5};
        const PlotSet practice{Qt::black, {single}, mean, PlotEllipse{38, 38, 0}};
        const PlotSet game{red, {treble, dbl}, mean, PlotEllipse{38, 5, 90}};
        BoardPicture picture;
        picture.setPlots({practice, game});
        const QImage image = picture.grab().toImage();
        const struct {
            BoardPoint at;
            QColor colour;
        } pips[] = {{single, Qt::black}, {treble, red}, {dbl, red}};
        for (const auto &pip : pips) {
            const QPoint middle(int(std::floor(boardCenter + pip.at.x)), int(std::floor(boardCenter - pip.at.y)));
            const QString where = QStringLiteral("pip at %1").arg(pip.at.y);
            for (QRgb pixel : pixelsAround(image, middle))
                QVERIFY2(QColor(pixel) == pip.colour, qPrintable(where + QStringLiteral(": ") + QColor(pixel).name()));
            const QColor bed = bedColor(ringFromXY(pip.at.x, pip.at.y), 20);
            for (QPoint rim : {QPoint(3, 0), QPoint(-3, 0)}) {
                const double ratio = contrast(image.pixelColor(middle + rim), bed);
                QVERIFY2(ratio >= 3, qPrintable(where + QStringLiteral(": rim contrast %1").arg(ratio)));
            }
        }
    }
};

QTEST_MAIN(TestBoardPicture)
#include "tst_board_picture.moc"
