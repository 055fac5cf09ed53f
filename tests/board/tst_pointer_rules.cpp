// Pointer rules over the board picture, without widgets.

#include "core/board/pointer_rules.h"

#include "../support/data_table.h"

#include <QTest>

using namespace tavrix;

class TestPointerRules : public QObject {
    Q_OBJECT

private slots:
    // Overlapping markers: the nearest centre wins, a tie keeps the later
    // dart, edges count, and markers beyond the darts placed are ignored.
    void closestMarkerAmongOverlappingOnes()
    {
        MarkerRects rects;
        rects[0] = QRectF(100, 100, 60, 60);
        rects[1] = QRectF(120, 100, 60, 60);
        rects[2] = QRectF(110, 100, 60, 60);
        QCOMPARE(closestMarkerIndex(rects, 3, 150, 130), 1);
        QCOMPARE(closestMarkerIndex(rects, 3, 140, 130), 2);
        // Equally near the centres of 0 and 2: 2 is searched first and kept.
        QCOMPARE(closestMarkerIndex(rects, 3, 135, 130), 2);
        QCOMPARE(closestMarkerIndex(rects, 1, 150, 130), 1);
        QCOMPARE(closestMarkerIndex(rects, 0, 150, 130), 0);
        QCOMPARE(closestMarkerIndex(rects, 3, 180, 160), 1); // corner, edge included
        QCOMPARE(closestMarkerIndex(rects, 3, 181, 130), noMarker);
        rects[1].reset();
        QCOMPARE(closestMarkerIndex(rects, 3, 165, 130), 2);
        QVERIFY(onMarker(rects, 0, 100, 100));
        QVERIFY(!onMarker(rects, 0, 175, 130));
    }

    // Captions over a marker or label; the point is 150 or 118 board units
    // above the bull, and 100 for the distances.
    void markerCaptions_data()
    {
        addTable<HoverKind, int, double, bool, QString>({"kind", "dart", "radius", "useCms", "caption"},
            {{"first dart", HoverKind::Dart, 1, 150, false, "Dart 1: Single 20"},
             {"third dart", HoverKind::Dart, 3, 118, false, "Dart 3: Triple 20"},
             {"target", HoverKind::Target, 0, 118, false, "Target: Triple 20"},
             {"description", HoverKind::Description, 0, 150, false, "Single 20"},
             {"inches from bull", HoverKind::DistanceFromBull, 0, 100, false, "3.217\" from bull."},
             {"cm from bull", HoverKind::DistanceFromBull, 0, 100, true, "8.173 cm from bull."},
             {"kept", HoverKind::Keep, 0, 150, false, "before"}});
    }
    void markerCaptions()
    {
        QFETCH(HoverKind, kind);
        QFETCH(int, dart);
        QFETCH(double, radius);
        QFETCH(bool, useCms);
        QTEST(markerHoverCaption({kind, dart}, radius, 90, useCms, QStringLiteral("before")), "caption");
    }

    // Over a statistics label the caption follows where the game stands.
    void labelCaptionsFollowTheThrowPhase_data()
    {
        addTable<ThrowPhase, QString>({"phase", "caption"},
            {{"no game", ThrowPhase::None, "before"}, {"cork awaited", ThrowPhase::CorkAwaited, "3.217\" from bull."},
             {"cork placed", ThrowPhase::CorkPlaced, "Target: Single 20"}, {"turn", ThrowPhase::TurnDarts, "Single 20"}});
    }
    void labelCaptionsFollowTheThrowPhase()
    {
        QFETCH(ThrowPhase, phase);
        QTEST(markerHoverCaption({labelHoverKind(phase)}, 100, 90, false, QStringLiteral("before")), "caption");
    }

    // Captions for the area under the pointer, from its dart counts.
    void reviewCaptions()
    {
        std::array<std::array<qint64, 21>, 3> counts{};
        counts[0][0] = 1;
        counts[2][1] = 12;
        counts[0][1] = 2;
        const struct { double radius, angle; const char *caption; } rows[] = {
            {3, 10, "25/Bull -- 1 dart."}, {15, 200, "25/Bull -- 1 dart."}, // the outer bull counts as the bull
            {7.5, 10, ""}, {118, 90, "Triple 20 -- 12 darts."}, {150, 90, "Single/Any 20 -- 2 darts."},
            {195, 0, ""}, {150, 99.5, ""}, {230, 90, ""}}; // no darts at double 6; a wire; off the board
        for (const auto &row : rows)
            QCOMPARE(reviewHoverCaption(row.radius, row.angle, counts).value_or(QString()), QString::fromUtf8(row.caption));
    }

    void dragRules()
    {
        // (Darts in play, the cork and a target after the set are dragged
        // with the mouse in the board input test.) A dart outside play, with
        // the left button.
        QVERIFY(dragAllowed(MarkerKind::Dart, false, 3, ThrowPhase::None, false));
        // Targets: only in play, once the set is complete or with the right
        // button during a turn.
        QVERIFY(!dragAllowed(MarkerKind::Target, false, 3, ThrowPhase::None, true));
        QVERIFY(!dragAllowed(MarkerKind::Target, true, 1, ThrowPhase::CorkPlaced, true));
        QVERIFY(dragAllowed(MarkerKind::Target, true, 1, ThrowPhase::TurnDarts, true));
        QVERIFY(!dragAllowed(MarkerKind::Target, true, 1, ThrowPhase::TurnDarts, false));
    }
};

QTEST_GUILESS_MAIN(TestPointerRules)
#include "tst_pointer_rules.moc"
