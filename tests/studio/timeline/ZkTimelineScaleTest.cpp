#include "ZkTimelineScale.h"
#include "ZkTestMain.h"
#include "ZkTimelineRuler.h"

#include <cmath>

using namespace zk::timeline;

class ZkTimelineScaleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void framesAndPlacesAgree()
    {
        for (const qint64 frames : {1, 16, 300, 5000000}) {
            for (const int zoom : {0, 37, 100})
                checkPlaces(frames, zoom);
        }
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

    // Labels of 76 pixels and a gap of 24: one every 100 pixels or more, and other marks every 6 or more.
    void rulerFitsItsLabels()
    {
        struct
        {
            double rate, pixels;
            qint64 major, minor;
        } const rows[] = {{24, 100, 1, 1},
                          {24, 16, 8, 1},
                          {25, 16, 25, 1}, // 25 has few parts
                          {30, 2, 60, 3},
                          {29.97, 2, 60, 3},
                          {25, 0.05, 3000, 125},
                          {1, 0.00001, 14400, 14400}}; // longer than any step
        for (const auto &row : rows) {
            const RulerSteps steps = rulerSteps(row.rate, row.pixels, 76);
            QCOMPARE(steps.major, row.major);
            QCOMPARE(steps.minor, row.minor);
        }
    }

    void timeCodes()
    {
        QCOMPARE(timeCode(0, 24), QStringLiteral("00:00:00:00"));
        QCOMPARE(timeCode(3661 * 24 + 23, 24), QStringLiteral("01:01:01:23"));
        QCOMPARE(timeCode(30, 29.97), QStringLiteral("00:00:01:00"));
        QCOMPARE(timeCode(7, 0), QStringLiteral("00:00:07:00"));
    }

private:
    static void checkPlaces(qint64 frames, int zoom)
    {
        TimelineScale scale;
        scale.setFrameCount(frames);
        scale.setWidth(800);
        scale.setZoomValue(zoom, 400);
        QCOMPARE(scale.zoomValue(), frames == 1 ? 0 : zoom);
        for (const double offset : {0.0, scale.maximumOffset() / 3, 1e12, -5.0}) {
            scale.setOffset(offset);
            // A pixel shows several frames of a long clip.
            for (const qint64 frame : {qint64(0), frames / 2, frames - 1})
                QVERIFY(std::abs(scale.frameAt(scale.centreOf(frame)) - frame)
                        <= 1e-6 / scale.pixelsPerFrame());
        }
        QVERIFY(scale.frameAt(-1e9) == 0 && scale.frameAt(1e9) == frames - 1);
    }
};

ZK_TEST_CORE_MAIN(ZkTimelineScaleTest)
#include "ZkTimelineScaleTest.moc"
