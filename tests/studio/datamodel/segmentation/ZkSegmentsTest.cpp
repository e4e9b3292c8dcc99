#include "EditBench.h"
#include "ZkTestMain.h"
#include "segmentation/ZkDoubt.h"
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
    void strokesCoverTheFrame()
    {
        // A box whose borders are on pixel borders of both resolutions comes out exactly.
        const QRect painted(24, 10, 64, 40);
        for (const QSize &size : {EditClip::size, QSize(480, 270), QSize(80, 45), QSize(40, 90)})
            QCOMPARE(strokeMap(strokeOn(painted, size), EditClip::size).pixels, maskOf(painted));
        // A hundredth of a pixel that is hardly opaque does not vanish.
        QImage strokes(1600, 900, QImage::Format_ARGB32);
        strokes.fill(Qt::transparent);
        strokes.setPixelColor(805, 455, QColor(0, 0, 0, 1));
        QCOMPARE(strokeMap(strokes, EditClip::size).pixels, maskOf(QRect(80, 45, 1, 1)));
        // Without alpha, black is not painted.
        strokes.fill(Qt::black);
        const auto isPainted = [&](QImage::Format format) {
            return strokeMap(strokes.convertToFormat(format), QSize(1, 1))
                       .pixels.constScanLine(0)[0]
                > 0;
        };
        QVERIFY(isPainted(QImage::Format_RGBA8888) && !isPainted(QImage::Format_RGB32));
        strokes.fill(QColor(0, 0, 1));
        QVERIFY(isPainted(QImage::Format_RGB888));
    }

    void encodedMattes()
    {
        const auto objectPixels = [](const QImage &mask) {
            const EncodedMatte matte(mask);
            return matte.decoded() == mask ? matte.objectPixels() : -1;
        };
        QCOMPARE(objectPixels(maskOf(QRect(), 0)), 0);
        QCOMPARE(objectPixels(maskOf(QRect(2, 3, 4, 5), 127)), 0);
        QCOMPARE(objectPixels(maskOf(QRect(150, 80, 10, 10), 200)), 100);
        QCOMPARE(objectPixels(maskOf(QRect(0, 0, 41, 1), 255, QSize(41, 1))), 41);
        int painted = 0;
        const QImage image = noise();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                painted += image.constScanLine(y)[x] >= 128 ? 1 : 0;
        }
        QCOMPARE(objectPixels(image), painted);
    }

    void matteTracks()
    {
        const MatteTrack track({EncodedMatte(maskOf(box)), EncodedMatte(noise())});
        QCOMPARE(track.matteAt(0), maskOf(box));
        QCOMPARE(track.matteAt(1), noise());
        QVERIFY(track.matteAt(2).isNull() && track.matteAt(-1).isNull());
    }

    void partsOfAFile()
    {
        const EncodedMatte whole(maskOf(box));
        const auto matteOf = [&whole](const QRect &place, const QByteArray &data) {
            EncodedMatte matte(noise());
            const bool isGood =
                EncodedMatte::fromParts(whole.size(), place, whole.objectPixels(), data, &matte);
            return isGood ? matte.decoded() : QImage();
        };
        QCOMPARE(matteOf(whole.box(), whole.data()), maskOf(box));
        QVERIFY(matteOf(whole.box().translated(whole.size().width(), 0), whole.data()).isNull());
        QVERIFY(matteOf(QRect(), whole.data()).isNull());
        QVERIFY(matteOf(whole.box(), whole.data().left(3)).isNull());
        QTest::ignoreMessage(QtWarningMsg, "qUncompress: Z_DATA_ERROR: Input data is corrupted");
        QVERIFY(matteOf(whole.box(), whole.data().chopped(1)).isNull());
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

    void theSurerRunCountsMore()
    {
        Segments segments = trackedFromBothSides();
        segments.setTracked(5, false, sideOf(100, segments, 10, 0.25F));
        QCOMPARE(valueAt(segments, 5), 180); // 4 : 1
        segments.setTracked(2, false, sideOf(100, segments, 10, 0.25F));
        QCOMPARE(valueAt(segments, 2), 194); // 4 * 8 : 2
        segments.removeTracked(2, 5, true);
        QCOMPARE(valueAt(segments, 5), 100);
        QCOMPARE(valueAt(segments, 6), 140);
        segments.removeTracked(0, 5, false);
        QVERIFY(!segments.hasMask(5) && !segments.tracked().contains(2) && segments.hasMask(1));
    }

    // Each character is a frame: a node, no mask, or confidence in tenths; lower case letters are tenths
    // of runs that came from behind.
    void frameToCorrectIsWhereAnErrorBegins_data()
    {
        QTest::addColumn<QString>("frames");
        QTest::addColumn<qint64>("worst");
        const auto row = [](const char *frames, int worst) {
            QTest::newRow(frames) << QString::fromLatin1(frames) << qint64(worst);
        };
        row("", -1);
        row("N99998888", -1);
        row("N99998866", -1); // a little doubt is none
        row("N9999222222", 5); // the first of a stretch
        row("N99976543219", 8); // halfway down
        row("N999000000000", 4); // lost
        row("N999444999999933333333", 14); // the stretch with most in it
        row("N99909999999999444", 4); // a lost one outweighs a little doubt
        row("N9993349933", 4); // a short recovery does not end it
        row("N2222N2222N", 2); // not beside a node
        row("N22N0N", -1);
        row("N9990  0", 4);
        row("  0000999N", 2);
        row("ccccjjjjjjN", 3); // backward: the last one
        row("jjjjaaaajjjN", 7);
        row("caj", 1); // going on from where a run was stopped
    }
    void frameToCorrectIsWhereAnErrorBegins()
    {
        QFETCH(QString, frames);
        QFETCH(qint64, worst);
        Segments segments;
        for (int i = 0; i < frames.size(); ++i) {
            if (frames.at(i) == QLatin1Char('N'))
                segments.setNode(i, nodeOf(255));
        }
        qint64 node = -1;
        for (int i = 0; i < frames.size(); ++i) {
            const QChar sign = frames.at(i);
            if (sign == QLatin1Char('N'))
                node = i;
            else if (sign.isDigit())
                segments.setTracked(
                    i, true, sideOf(255, segments, node, float(sign.digitValue()) / 10));
            else if (sign.isLower())
                segments.setTracked(i,
                                    false,
                                    sideOf(255,
                                           segments,
                                           frames.indexOf(QLatin1Char('N'), i),
                                           float(sign.unicode() - 'a') / 10));
        }
        QCOMPARE(frameToCorrect(segments), worst);
    }

    void frameToCorrectBetweenNodes()
    {
        Segments segments = trackedFromBothSides();
        const QVector<float> confidences {1, 1, 0.6F, 0.5F, 0.3F, 0.4F, 0.6F, 1, 1};
        for (int i = 0; i < confidences.size(); ++i) {
            segments.setTracked(i + 1, true, sideOf(200, segments, 0, confidences.at(i)));
            segments.setTracked(i + 1, false, sideOf(100, segments, 10, 0.2F));
        }
        QCOMPARE(frameToCorrect(segments), qint64(5)); // the worst
        QCOMPARE(frameToCorrect(segments, {{3, 0.6F}}), qint64(-1)); // in doubt together
        QCOMPARE(frameToCorrect(segments, {{3, 0.5F}, {1, 1.0F}}), qint64(5));
        // What was tracked before the node changed has to be tracked again first.
        segments.setNode(0, nodeOf(254));
        segments.setNode(10, nodeOf(254));
        QCOMPARE(frameToCorrect(segments), qint64(-1));
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

    // Nodes (negative: with an empty mask), tracked frames, frame, direction and type of the request.
    void plans()
    {
        const auto plan = [](const Frames &nodes,
                             const Frames &tracked,
                             qint64 frame,
                             ZKSMARTKEYING::ZkSegmentToTrackDirect direction,
                             ZKSMARTKEYING::ZkSegmentToTrackType type =
                                 ZKSMARTKEYING::TrackToClipEnd) {
            Segments segments;
            for (qint64 node : nodes)
                segments.setNode(qAbs(node), nodeOf(node < 0 ? 0 : 255));
            for (qint64 done : tracked)
                segments.setTracked(done, true, sideOf(255, segments));
            QString legs;
            for (const TrackingLeg &leg : trackingPlan(segments, 10, frame, direction, type))
                legs += QStringLiteral("%1-%2 ").arg(leg.seed).arg(leg.last);
            return legs.trimmed();
        };
        const auto forward = ZKSMARTKEYING::TrackForward;
        const auto backward = ZKSMARTKEYING::TrackBackward;
        const auto both = ZKSMARTKEYING::TrackBoth;
        QCOMPARE(plan({}, {}, 3, both), QString());
        QCOMPARE(plan({3}, {}, 3, both), QStringLiteral("3-9 3-0"));
        QCOMPARE(plan({0}, {}, 0, both), QStringLiteral("0-9"));
        QCOMPARE(plan({9}, {}, 9, forward), QString()); // no frame left
        QCOMPARE(plan({2, 8}, {}, 5, forward), QStringLiteral("2-9"));
        QCOMPARE(plan({2, 7}, {}, 5, backward), QStringLiteral("7-0"));
        QCOMPARE(plan({7}, {}, 5, forward), QString()); // on the wrong side
        QCOMPARE(plan({1, 6}, {}, 5, both), QStringLiteral("6-9 6-0"));
        QCOMPARE(plan({1}, {1, 2, 3}, 3, forward), QStringLiteral("3-9"));
        QCOMPARE(plan({-4, 2}, {}, 4, forward), QStringLiteral("2-9"));
        const auto whole = ZKSMARTKEYING::TrackWholeClip;
        QCOMPARE(plan({2, 5}, {0, 9}, 7, backward, whole), QStringLiteral("2-9 5-0"));
        QCOMPARE(plan({0}, {}, 0, forward, whole), QStringLiteral("0-9"));
    }

    // Beyond the next node nothing changes, as long as everything there came from the nodes as they are.
    void correctionsReachTheNextNode()
    {
        Segments segments;
        for (const qint64 node : {2, 6, 12})
            segments.setNode(node, nodeOf(255));
        for (qint64 frame = 0; frame < 20; ++frame) {
            const auto after = segments.nodes().upperBound(frame);
            if (after != segments.nodes().constBegin())
                segments.setTracked(frame, true, sideOf(255, segments, std::prev(after).key()));
            if (after != segments.nodes().constEnd())
                segments.setTracked(frame, false, sideOf(255, segments, after.key()));
        }
        const auto plan = [&](qint64 frame) {
            QString legs;
            for (const TrackingLeg &leg : trackingPlan(
                     segments, 20, frame, ZKSMARTKEYING::TrackBoth, ZKSMARTKEYING::TrackToClipEnd))
                legs += QStringLiteral("%1-%2 ").arg(leg.seed).arg(leg.last);
            return legs.trimmed();
        };
        QCOMPARE(plan(6), QStringLiteral("6-19 6-0")); // nothing was corrected
        segments.setNode(9, nodeOf(255));
        QCOMPARE(plan(9), QStringLiteral("9-12 9-6"));
        QCOMPARE(memoryOf(segments, {9, 19}), Frames({2, 6, 12}));
        QCOMPARE(memoryOf(segments, {6, 0}), Frames({12, 9, 2}));
        segments.removeTracked(15, 15, true);
        QCOMPARE(plan(9), QStringLiteral("9-19 9-6"));
        segments.setNode(6, nodeOf(254));
        QCOMPARE(plan(9), QStringLiteral("9-19 9-2"));
        segments.setNode(6, nodeOf(0)); // nothing to learn from
        QCOMPARE(memoryOf(segments, {9, 19}), Frames({2, 12}));
        segments.setSingleObject(false);
        QCOMPARE(memoryOf(segments, {9, 19}), Frames());
    }
};

ZK_TEST_CORE_MAIN(ZkSegmentsTest)
#include "ZkSegmentsTest.moc"
