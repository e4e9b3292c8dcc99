#include "EditBench.h"
#include "ZkTestMain.h"
#include "segmentation/ZkMatteTrack.h"
#include "segmentation/ZkStrokeMap.h"
#include "tracking/ZkTrackingPlan.h"

#include <QRandomGenerator>

using namespace zk::datamodel;
using namespace zk::test;

namespace {

using Frames = QVector<qint64>;
const QRect box(5, 5, 10, 10);

SegmentNodePtr nodeOf(int value)
{
    const auto node = QSharedPointer<SegmentNode>::create();
    node->result = EncodedMatte(maskOf(box, value));
    node->revision = Segments::nextRevision();
    return node;
}

TrackedSide sideOf(int value, const Segments &segments, qint64 seed = -1, float confidence = 1)
{
    const SegmentNodePtr node = segments.node(seed);
    const quint64 revision = node ? node->revision : 0;
    return {EncodedMatte(maskOf(box, value)), confidence, seed, revision, Segments::nextRevision()};
}

// The frames 1 .. 9 were reached from nodes at 0 and 10; the run from 10 lost the object at frame 4.
Segments trackedFromBothSides()
{
    Segments segments;
    segments.setNode(0, nodeOf(255));
    segments.setNode(10, nodeOf(255));
    for (qint64 frame = 1; frame < 10; ++frame) {
        segments.setTracked(frame, true, sideOf(200, segments, 0));
        segments.setTracked(frame, false, sideOf(100, segments, 10, frame == 4 ? 0 : 1));
    }
    return segments;
}

int valueAt(const Segments &segments, qint64 frame)
{
    const QImage matte = segments.matteAt(frame);
    return matte.isNull() ? -1 : matte.constScanLine(8)[8];
}

QImage noise()
{
    QImage image(33, 17, QImage::Format_Grayscale8);
    QRandomGenerator generator(7);
    for (int y = 0; y < image.height(); ++y)
        std::generate_n(image.scanLine(y), 33, [&] { return uchar(generator.bounded(256)); });
    return image;
}

} // namespace

class ZkSegmentsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void strokesCoverTheFrame_data()
    {
        QTest::addColumn<QSize>("imageSize");
        QTest::newRow("same size") << QSize(160, 90);
        QTest::newRow("twice") << QSize(320, 180);
        QTest::newRow("finer, odd") << QSize(480, 270);
        QTest::newRow("half") << QSize(80, 45);
        QTest::newRow("a quarter across") << QSize(40, 90);
    }
    // A box whose borders are on pixel borders of both resolutions comes out exactly.
    void strokesCoverTheFrame()
    {
        QFETCH(QSize, imageSize);
        const QRect painted(24, 10, 64, 40);
        QCOMPARE(strokeMap(strokeOn(painted, imageSize), EditClip::size), maskOf(painted));
    }

    void thinStrokesDoNotVanish()
    {
        QImage strokes(1600, 900, QImage::Format_ARGB32);
        strokes.fill(Qt::transparent);
        strokes.setPixelColor(
            805, 455, QColor(0, 0, 0, 1)); // a hundredth of a pixel, hardly opaque
        QCOMPARE(strokeMap(strokes, EditClip::size), maskOf(QRect(80, 45, 1, 1)));
        QVERIFY(strokeMap(QImage(), QSize(4, 4)).isNull());
        QVERIFY(strokeMap(strokes, QSize()).isNull());
    }

    void paintedPixels_data()
    {
        QTest::addColumn<int>("format");
        QTest::addColumn<QColor>("colour");
        QTest::addColumn<bool>("isPainted");
        QTest::newRow("black, opaque") << int(QImage::Format_RGBA8888) << QColor(Qt::black) << true;
        QTest::newRow("no alpha, black") << int(QImage::Format_RGB32) << QColor(Qt::black) << false;
        QTest::newRow("no alpha, dark") << int(QImage::Format_RGB888) << QColor(0, 0, 1) << true;
        QTest::newRow("grey") << int(QImage::Format_Grayscale8) << QColor(1, 1, 1) << true;
    }
    void paintedPixels()
    {
        QFETCH(int, format);
        QFETCH(QColor, colour);
        QImage strokes(6, 6, QImage::Format_ARGB32);
        strokes.fill(colour);
        const QImage map = strokeMap(strokes.convertToFormat(QImage::Format(format)), QSize(3, 3));
        QTEST(map.constScanLine(1)[1] == 255, "isPainted");
    }

    void encodedMattes_data()
    {
        QTest::addColumn<QImage>("mask");
        QTest::addColumn<int>("objectPixels");
        QTest::newRow("empty") << maskOf(QRect(), 0) << 0;
        QTest::newRow("faint") << maskOf(QRect(2, 3, 4, 5), 127) << 0;
        QTest::newRow("box") << maskOf(QRect(150, 80, 10, 10), 200) << 100;
        QTest::newRow("full, odd size") << maskOf(QRect(0, 0, 41, 1), 255, QSize(41, 1)) << 41;
        const QImage image = noise();
        int objectPixels = 0;
        for (int y = 0; y < image.height(); ++y) {
            const uchar *line = image.constScanLine(y);
            objectPixels += int(std::count_if(
                line, line + image.width(), [](uchar value) { return value >= 128; }));
        }
        QTest::newRow("noise") << image << objectPixels;
    }
    void encodedMattes()
    {
        QFETCH(QImage, mask);
        const EncodedMatte matte(mask);
        QCOMPARE(matte.decoded(), mask);
        QTEST(matte.objectPixels(), "objectPixels");
    }

    void matteTracks()
    {
        const QByteArray data =
            MatteTrack({EncodedMatte(maskOf(box)), EncodedMatte(noise())}).serialised();
        const auto track = MatteTrack::fromSerialised(data);
        QVERIFY(track);
        QCOMPARE(track->matteAt(0), maskOf(box));
        QCOMPARE(track->matteAt(1), noise());
        QVERIFY(track->matteAt(2).isNull() && track->matteAt(-1).isNull());
        for (int length = 0; length < data.size(); ++length)
            QVERIFY(!MatteTrack::fromSerialised(data.left(length)));
        QByteArray outside = data;
        outside[12 + 8 + 8 + 3] = char(200); // right border of the first box
        QVERIFY(!MatteTrack::fromSerialised(outside));
    }

    void nodeBeatsTracking()
    {
        Segments segments;
        QVERIFY(segments.matteAt(3).isNull() && !segments.hasMask(3));
        segments.setTracked(3, true, sideOf(100, segments));
        const Segments snapshot = segments;
        QVERIFY(segments.hasAnything(3) && !segments.hasObject(3));
        segments.setTracked(3, false, sideOf(210, segments)); // the later run
        QCOMPARE(valueAt(segments, 3), 210);
        segments.setNode(3, nodeOf(50));
        QCOMPARE(valueAt(segments, 3), 50);
        segments.setNode(3, {});
        QCOMPARE(valueAt(segments, 3), 210);
        QCOMPARE(valueAt(snapshot, 3), 100);
    }

    void runsThatMetAreBlended()
    {
        const Segments segments = trackedFromBothSides();
        QCOMPARE(valueAt(segments, 1), 190);
        QCOMPARE(valueAt(segments, 5), 150);
        QCOMPARE(valueAt(segments, 9), 110);
        QCOMPARE(valueAt(segments, 4), 200);
        QVERIFY(segments.storedAt(5).isNull() && !segments.storedAt(4).isNull());
    }

    void changedNodeEndsBlending()
    {
        Segments changed = trackedFromBothSides();
        changed.setNode(10, nodeOf(254));
        QCOMPARE(valueAt(changed, 5), 200);
        changed = trackedFromBothSides();
        changed.setNode(3, nodeOf(1)); // between: cuts frame 5 off from 0, and 2 from 10
        QCOMPARE(valueAt(changed, 5), 100);
        QCOMPARE(valueAt(changed, 2), 200);
    }

    void plans_data()
    {
        QTest::addColumn<Frames>("nodes"); // negative: with an empty mask
        QTest::addColumn<Frames>("tracked");
        QTest::addColumn<int>("frame");
        QTest::addColumn<int>("direction");
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("plan");
        const Frames none;
        QTest::newRow("no mask") << none << none << 3 << 3 << 1 << "";
        QTest::newRow("forward") << Frames {3} << none << 3 << 1 << 1 << "3-9";
        QTest::newRow("backward") << Frames {3} << none << 3 << 2 << 1 << "3-0";
        QTest::newRow("both") << Frames {3} << none << 3 << 3 << 1 << "3-9 3-0";
        QTest::newRow("both, at an end") << Frames {0} << none << 0 << 3 << 1 << "0-9";
        QTest::newRow("no frame left") << Frames {9} << none << 9 << 1 << 1 << "";
        QTest::newRow("seed before") << Frames {2, 8} << none << 5 << 1 << 1 << "2-9";
        QTest::newRow("seed after") << Frames {2, 7} << none << 5 << 2 << 1 << "7-0";
        QTest::newRow("seed on the wrong side") << Frames {7} << none << 5 << 1 << 1 << "";
        QTest::newRow("nearest for both") << Frames {1, 6} << none << 5 << 3 << 1 << "6-9 6-0";
        QTest::newRow("tracked seed") << Frames {1} << Frames {1, 2, 3} << 3 << 1 << 1 << "3-9";
        QTest::newRow("empty mask") << Frames {-4, 2} << none << 4 << 1 << 1 << "2-9";
        QTest::newRow("whole clip") << Frames {2, 5} << Frames {0, 9} << 7 << 2 << 0 << "2-9 5-0";
        QTest::newRow("whole, node at 0") << Frames {0} << none << 0 << 1 << 0 << "0-9";
    }
    void plans()
    {
        QFETCH(Frames, nodes);
        QFETCH(Frames, tracked);
        QFETCH(int, frame);
        QFETCH(int, direction);
        QFETCH(int, type);
        Segments segments;
        for (qint64 node : qAsConst(nodes))
            segments.setNode(qAbs(node), nodeOf(node < 0 ? 0 : 255));
        for (qint64 done : qAsConst(tracked))
            segments.setTracked(done, true, sideOf(255, segments));
        QStringList plan;
        for (const TrackingLeg &leg : trackingPlan(segments,
                                                   10,
                                                   frame,
                                                   ZKSMARTKEYING::ZkSegmentToTrackDirect(direction),
                                                   ZKSMARTKEYING::ZkSegmentToTrackType(type)))
            plan.append(QStringLiteral("%1-%2").arg(leg.seed).arg(leg.last));
        QTEST(plan.join(QLatin1Char(' ')), "plan");
    }
};

ZK_TEST_CORE_MAIN(ZkSegmentsTest)
#include "ZkSegmentsTest.moc"
