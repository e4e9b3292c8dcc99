#include "EditBench.h"
#include "ZkTestMain.h"
#include "segmentation/ZkMatteTrack.h"
#include "segmentation/ZkStrokeMap.h"
#include "tracking/ZkTrackingPlan.h"

#include <QRandomGenerator>

using namespace zk::datamodel;
using namespace zk::test;

namespace {

QImage greyBox(const QRect &box, int value, const QSize &size = QSize(40, 30))
{
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(0);
    for (int y = box.top(); y <= box.bottom(); ++y)
        std::fill_n(image.scanLine(y) + box.left(), box.width(), uchar(value));
    return image;
}

SegmentNodePtr nodeWith(const QImage &result)
{
    const auto node = QSharedPointer<SegmentNode>::create();
    node->result = EncodedMatte(result);
    node->revision = Segments::nextRevision();
    return node;
}

TrackedSide side(int value, float confidence, qint64 seed, const Segments &segments)
{
    const SegmentNodePtr node = segments.node(seed);
    return {EncodedMatte(greyBox(QRect(5, 5, 10, 10), value)),
            confidence,
            seed,
            node ? node->revision : 0,
            Segments::nextRevision()};
}

int valueAt(const Segments &segments, qint64 frame)
{
    const QImage matte = segments.matteAt(frame);
    return matte.isNull() ? -1 : matte.constScanLine(8)[8];
}

QString legsText(const QVector<TrackingLeg> &legs)
{
    QStringList parts;
    for (const TrackingLeg &leg : legs)
        parts.append(QStringLiteral("%1-%2").arg(leg.seed).arg(leg.last));
    return parts.join(QLatin1Char(' '));
}

} // namespace

class ZkSegmentsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void strokesCoverTheFrame_data();
    void strokesCoverTheFrame();
    void thinStrokesDoNotVanish();
    void paintedPixels_data();
    void paintedPixels();
    void encodedMattes_data();
    void encodedMattes();
    void damagedMatteTrack();
    void nodeBeatsTracking();
    void runsThatMetAreBlended();
    void changedNodeEndsBlending();
    void snapshotsStayAsTheyAre();
    void plans_data();
    void plans();
};

void ZkSegmentsTest::strokesCoverTheFrame_data()
{
    QTest::addColumn<QSize>("imageSize");
    QTest::newRow("same size") << QSize(160, 90);
    QTest::newRow("twice") << QSize(320, 180);
    QTest::newRow("finer, odd") << QSize(480, 270);
    QTest::newRow("half") << QSize(80, 45);
    QTest::newRow("a quarter across") << QSize(40, 90);
}

// A box whose borders are on pixel borders of both resolutions comes out exactly.
void ZkSegmentsTest::strokesCoverTheFrame()
{
    QFETCH(QSize, imageSize);
    const QRect box(24, 10, 64, 40);
    const QSize frame(160, 90);
    QCOMPARE(strokeMap(strokeOn(box, imageSize, frame), frame), greyBox(box, 255, frame));
}

void ZkSegmentsTest::thinStrokesDoNotVanish()
{
    QImage strokes(1600, 900, QImage::Format_ARGB32);
    strokes.fill(Qt::transparent);
    strokes.setPixelColor(805, 455, QColor(0, 0, 0, 1)); // a hundredth of a pixel, hardly opaque
    const QImage map = strokeMap(strokes, QSize(160, 90));
    QCOMPARE(map, greyBox(QRect(80, 45, 1, 1), 255, QSize(160, 90)));
    QVERIFY(strokeMap(QImage(), QSize(4, 4)).isNull());
    QVERIFY(strokeMap(strokes, QSize()).isNull());
}

void ZkSegmentsTest::paintedPixels_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<QColor>("colour");
    QTest::addColumn<bool>("isPainted");
    const QColor faint(10, 0, 0, 1);
    QTest::newRow("faint alpha") << int(QImage::Format_ARGB32) << faint << true;
    QTest::newRow("black, opaque") << int(QImage::Format_RGBA8888) << QColor(Qt::black) << true;
    QTest::newRow("no alpha, black") << int(QImage::Format_RGB32) << QColor(Qt::black) << false;
    QTest::newRow("no alpha, dark") << int(QImage::Format_RGB888) << QColor(0, 0, 1) << true;
    QTest::newRow("grey") << int(QImage::Format_Grayscale8) << QColor(1, 1, 1) << true;
}

void ZkSegmentsTest::paintedPixels()
{
    QFETCH(int, format);
    QFETCH(QColor, colour);
    QImage strokes(6, 6, QImage::Format_ARGB32);
    strokes.fill(colour);
    const QImage map = strokeMap(strokes.convertToFormat(QImage::Format(format)), QSize(3, 3));
    QTEST(map.constScanLine(1)[1] == 255, "isPainted");
}

void ZkSegmentsTest::encodedMattes_data()
{
    QTest::addColumn<QImage>("mask");
    QTest::addColumn<int>("objectPixels");
    QTest::newRow("empty") << greyBox(QRect(), 0) << 0;
    QTest::newRow("faint") << greyBox(QRect(2, 3, 4, 5), 127) << 0;
    QTest::newRow("box") << greyBox(QRect(30, 20, 10, 10), 200) << 100;
    QTest::newRow("full, odd size") << greyBox(QRect(0, 0, 41, 1), 255, QSize(41, 1)) << 41;
    QImage noise(33, 17, QImage::Format_Grayscale8);
    QRandomGenerator generator(7);
    int objectPixels = 0;
    for (int y = 0; y < noise.height(); ++y) {
        for (int x = 0; x < noise.width(); ++x) {
            noise.scanLine(y)[x] = uchar(generator.bounded(256));
            objectPixels += noise.scanLine(y)[x] >= 128 ? 1 : 0;
        }
    }
    QTest::newRow("noise") << noise << objectPixels;
}

void ZkSegmentsTest::encodedMattes()
{
    QFETCH(QImage, mask);
    const EncodedMatte matte(mask);
    QCOMPARE(matte.decoded(), mask);
    QTEST(matte.objectPixels(), "objectPixels");
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << matte;
    QDataStream in(bytes);
    EncodedMatte read;
    in >> read;
    QVERIFY(read == matte);
    QCOMPARE(read.decoded(), mask);
}

void ZkSegmentsTest::damagedMatteTrack()
{
    const QImage box = greyBox(QRect(1, 1, 9, 9), 255);
    const MatteTrack track({EncodedMatte(box), EncodedMatte(greyBox(QRect(), 0))});
    const QByteArray data = track.serialised();
    const auto copy = MatteTrack::fromSerialised(data);
    QVERIFY(copy);
    QCOMPARE(copy->frameCount(), qint64(2));
    QCOMPARE(copy->matteAt(0), box);
    QVERIFY(copy->matteAt(2).isNull() && copy->matteAt(-1).isNull());
    for (int length = 0; length < data.size(); ++length)
        QVERIFY(!MatteTrack::fromSerialised(data.left(length)));
    QVERIFY(!MatteTrack::fromSerialised(data + '\0'));
    // A box that is not inside the frame must not be written there.
    QByteArray outside = data;
    outside[12 + 8 + 8 + 3] = char(200); // right border of the first box
    QVERIFY(!MatteTrack::fromSerialised(outside));
}

void ZkSegmentsTest::nodeBeatsTracking()
{
    Segments segments;
    QVERIFY(segments.matteAt(3).isNull() && !segments.hasMask(3));
    segments.setTracked(3, true, side(100, 1, -1, segments));
    QCOMPARE(valueAt(segments, 3), 100);
    QVERIFY(segments.hasAnything(3) && !segments.hasObject(3));
    segments.setTracked(3, false, side(210, 1, -1, segments)); // the later run
    QCOMPARE(valueAt(segments, 3), 210);
    segments.setNode(3, nodeWith(greyBox(QRect(5, 5, 10, 10), 50)));
    QCOMPARE(valueAt(segments, 3), 50);
    segments.setNode(3, {});
    QCOMPARE(valueAt(segments, 3), 210);
}

void ZkSegmentsTest::runsThatMetAreBlended()
{
    Segments segments;
    for (qint64 node : {0, 10})
        segments.setNode(node, nodeWith(greyBox(QRect(5, 5, 10, 10), 255)));
    for (qint64 frame = 1; frame < 10; ++frame) {
        segments.setTracked(frame, true, side(200, 1, 0, segments));
        segments.setTracked(frame, false, side(100, frame == 4 ? 0.f : 1.f, 10, segments));
    }
    QCOMPARE(valueAt(segments, 1), 190);
    QCOMPARE(valueAt(segments, 5), 150);
    QCOMPARE(valueAt(segments, 9), 110);
    QCOMPARE(valueAt(segments, 4), 200); // the run that lost the object there has no say
    QVERIFY(segments.storedAt(5).isNull() && !segments.storedAt(4).isNull());
}

void ZkSegmentsTest::changedNodeEndsBlending()
{
    Segments segments;
    for (qint64 node : {0, 10})
        segments.setNode(node, nodeWith(greyBox(QRect(5, 5, 10, 10), 255)));
    for (qint64 frame = 1; frame < 10; ++frame) {
        segments.setTracked(frame, true, side(200, 1, 0, segments));
        segments.setTracked(frame, false, side(100, 1, 10, segments));
    }
    Segments changed = segments;
    changed.setNode(10, nodeWith(greyBox(QRect(5, 5, 10, 10), 254)));
    QCOMPARE(valueAt(changed, 5), 200);
    changed = segments;
    changed.setNode(3, nodeWith(greyBox(QRect(5, 5, 10, 10), 1))); // between: cuts off frame 5
    QCOMPARE(valueAt(changed, 5), 100);
    QCOMPARE(valueAt(changed, 2), 200);
    QCOMPARE(valueAt(segments, 5), 150);
}

void ZkSegmentsTest::snapshotsStayAsTheyAre()
{
    Segments segments;
    segments.setTracked(1, true, side(100, 1, -1, segments));
    const Segments snapshot = segments;
    segments.setTracked(1, true, side(200, 1, -1, segments));
    segments.setTracked(2, true, side(200, 1, -1, segments));
    QCOMPARE(valueAt(snapshot, 1), 100);
    QVERIFY(!snapshot.hasMask(2));
}

void ZkSegmentsTest::plans_data()
{
    QTest::addColumn<QVector<qint64>>("nodes");
    QTest::addColumn<QVector<qint64>>("tracked");
    QTest::addColumn<int>("frame");
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("legs");
    using Frames = QVector<qint64>;
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
    QTest::newRow("tracked seed") << Frames {1} << Frames {1, 2, 3, 4} << 4 << 1 << 1 << "4-9";
    QTest::newRow("empty mask is no seed") << Frames {-4, 2} << none << 4 << 1 << 1 << "2-9";
    QTest::newRow("whole clip") << Frames {2, 5} << Frames {0, 9} << 7 << 2 << 0 << "2-9 5-0";
    QTest::newRow("whole, one node at 0") << Frames {0} << none << 0 << 1 << 0 << "0-9";
}

void ZkSegmentsTest::plans()
{
    QFETCH(QVector<qint64>, nodes);
    QFETCH(QVector<qint64>, tracked);
    QFETCH(int, frame);
    QFETCH(int, direction);
    QFETCH(int, type);
    Segments segments;
    for (qint64 node : qAsConst(nodes)) // negative: with an empty mask
        segments.setNode(qAbs(node), nodeWith(greyBox(QRect(5, 5, 10, 10), node < 0 ? 0 : 255)));
    for (qint64 frame : qAsConst(tracked))
        segments.setTracked(frame, true, side(255, 1, -1, segments));
    QTEST(legsText(trackingPlan(segments,
                                10,
                                frame,
                                ZKSMARTKEYING::ZkSegmentToTrackDirect(direction),
                                ZKSMARTKEYING::ZkSegmentToTrackType(type))),
          "legs");
}

ZK_TEST_CORE_MAIN(ZkSegmentsTest)
#include "ZkSegmentsTest.moc"
