#include "ZkTimelineScale.h"
#include "ZkTestMain.h"
#include "ZkTimelineRuler.h"

#include <cmath>

using namespace zk::timeline;

class ZkTimelineScaleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void framesAndPlacesAgree_data()
    {
        QTest::addColumn<qint64>("frames");
        QTest::addColumn<double>("width");
        QTest::addColumn<int>("zoom");
        for (const qint64 frames : {1, 16, 300, 5000000}) {
            for (const int zoom : {0, 37, 100})
                QTest::addRow("%lld frames, zoom %d", frames, zoom) << frames << 800.0 << zoom;
        }
        QTest::newRow("no room") << qint64(16) << 3.0 << 50;
    }

    void framesAndPlacesAgree()
    {
        QFETCH(qint64, frames);
        QFETCH(double, width);
        QFETCH(int, zoom);
        TimelineScale scale;
        scale.setFrameCount(frames);
        scale.setWidth(width);
        scale.setZoomValue(zoom, width / 2);
        QCOMPARE(scale.zoomValue(), frames == 1 ? 0 : zoom);
        for (const double offset : {0.0, scale.maximumOffset() / 3, 1e12, -5.0}) {
            scale.setOffset(offset);
            for (const qint64 frame : {qint64(0), frames / 2, frames - 1}) {
                // A pixel shows several frames of a long clip.
                QVERIFY(std::abs(scale.frameAt(scale.centreOf(frame)) - frame)
                        <= 1e-6 / scale.pixelsPerFrame());
            }
        }
        QCOMPARE(scale.frameAt(-1e9), 0);
        QCOMPARE(scale.frameAt(1e9), frames - 1);
    }

    void zoomsAboutTheAnchor()
    {
        TimelineScale scale;
        scale.setWidth(828); // 800 for the frames
        scale.setFrameCount(400);
        QCOMPARE(scale.pixelsPerFrame(), 2.0);
        QVERIFY(scale.isFitted() && scale.isVisible(0) && scale.isVisible(399));
        const double anchor = scale.centreOf(150);
        for (const double pixels : {3.0, 9.0, 27.0, 5000.0}) {
            scale.zoomTo(pixels, anchor);
            QVERIFY(std::abs(scale.centreOf(150) - anchor) < scale.pixelsPerFrame());
            QCOMPARE(scale.frameAt(anchor), 150);
        }
        QCOMPARE(scale.pixelsPerFrame(), TimelineScale::closest);
        scale.setWidth(400); // keeps the scale, as it is not fitted
        QCOMPARE(scale.pixelsPerFrame(), TimelineScale::closest);
        scale.zoomTo(0.001, 0);
        QVERIFY(scale.isFitted() && scale.maximumOffset() == 0);
        scale.setWidth(1628);
        QCOMPARE(scale.pixelsPerFrame(), 4.0);
    }

    void rulerFitsItsLabels_data()
    {
        QTest::addColumn<double>("rate");
        QTest::addColumn<double>("pixels");
        QTest::addColumn<qint64>("major");
        QTest::addColumn<qint64>("minor");
        // Labels of 76 pixels and a gap of 24: a mark every 100 pixels or more.
        QTest::newRow("frame by frame") << 24.0 << 100.0 << qint64(1) << qint64(1);
        QTest::newRow("parts of a second") << 24.0 << 16.0 << qint64(8) << qint64(1);
        QTest::newRow("25 has few parts") << 25.0 << 16.0 << qint64(25) << qint64(1);
        QTest::newRow("seconds") << 30.0 << 2.0 << qint64(60) << qint64(3);
        QTest::newRow("29.97 counts 30") << 29.97 << 2.0 << qint64(60) << qint64(3);
        QTest::newRow("minutes") << 25.0 << 0.05 << qint64(3000) << qint64(125);
        QTest::newRow("longer than any step") << 1.0 << 0.00001 << qint64(14400) << qint64(14400);
    }

    void rulerFitsItsLabels()
    {
        QFETCH(double, rate);
        QFETCH(double, pixels);
        const RulerSteps steps = rulerSteps(rate, pixels, 76);
        QTEST(steps.major, "major");
        QTEST(steps.minor, "minor");
    }

    void timeCodes()
    {
        QCOMPARE(timeCode(0, 24), QStringLiteral("00:00:00:00"));
        QCOMPARE(timeCode(3661 * 24 + 23, 24), QStringLiteral("01:01:01:23"));
        QCOMPARE(timeCode(30, 29.97), QStringLiteral("00:00:01:00"));
        QCOMPARE(timeCode(7, 0), QStringLiteral("00:00:07:00"));
    }
};

ZK_TEST_CORE_MAIN(ZkTimelineScaleTest)
#include "ZkTimelineScaleTest.moc"
