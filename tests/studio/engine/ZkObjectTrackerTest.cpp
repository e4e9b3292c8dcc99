#include "ZkDiscScene.h"

#include <ZkTestMain.h>

#include <ZkMatte.h>
#include <ZkObjectTracker.h>

#include <future>
#include <vector>

using namespace zk::engine;
using zk::test::DiscScene;

namespace {

cv::Point2d placeAt(int frame)
{
    return {60.0 + 6.0 * frame, 80.0 + 2.0 * frame};
}

// Advances over one more frame.
TrackedFrame step(ObjectTracker &tracker, const cv::Mat &frame)
{
    return tracker.advance(tracker.prepare(tracker.current(), frame));
}

} // namespace

class ZkObjectTrackerTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        tracker = {};
        tracker.start(scene.frame(placeAt(0)), scene.matte(placeAt(0)));
    }

    void followsTheDisc()
    {
        for (int i = 1; i <= 10; ++i) {
            const TrackedFrame tracked = step(tracker, scene.frame(placeAt(i)));
            const double iou = intersectionOverUnion(tracked.matte, scene.matte(placeAt(i)));
            QVERIFY2(iou > 0.88, qPrintable(QStringLiteral("frame %1: %2").arg(i).arg(iou)));
            QVERIFY(tracked.confidence > 0.5 && tracked.confidence <= 1.0);
        }
    }

    // The next frame prepared meanwhile, and another number of threads.
    void pipelineGivesTheSame()
    {
        std::vector<cv::Mat> expected;
        for (int i = 1; i <= 4; ++i)
            expected.push_back(step(tracker, scene.frame(placeAt(i))).matte);
        init();
        const int threads = cv::getNumThreads();
        cv::setNumThreads(threads > 1 ? 1 : 2);
        PreparedFrame next = tracker.prepare(tracker.current(), scene.frame(placeAt(1)));
        std::vector<cv::Mat> actual;
        for (int i = 1; i <= 4; ++i) {
            auto ahead = std::async(std::launch::async, [this, next, i] {
                return tracker.prepare(next, scene.frame(placeAt(i + 1)));
            });
            actual.push_back(tracker.advance(next).matte);
            next = ahead.get();
        }
        cv::setNumThreads(threads);
        for (std::size_t i = 0; i < expected.size(); ++i)
            QCOMPARE(cv::norm(actual[i], expected[i], cv::NORM_INF), 0.0);
    }

    void losesWhatVanishesAndFindsItAgain()
    {
        for (int i = 1; i <= 4; ++i)
            QVERIFY(step(tracker, scene.frame(placeAt(i))).confidence > 0.5);
        for (int i = 5; i <= 8; ++i) {
            const TrackedFrame hidden = step(tracker, scene.empty());
            QVERIFY2(hidden.confidence < 0.2, qPrintable(QString::number(hidden.confidence)));
            QVERIFY(objectArea(hidden.matte) < objectArea(scene.matte(placeAt(i))) / 4);
        }
        TrackedFrame found;
        for (int i = 9; i <= 12; ++i)
            found = step(tracker, scene.frame(placeAt(i)));
        QVERIFY(found.confidence > 0.5);
        QVERIFY(intersectionOverUnion(found.matte, scene.matte(placeAt(12))) > 0.85);
    }

    // A post passes before it: what it lets go on the other side belongs to the object again at once.
    void takesBackWhatAPostHid()
    {
        const DiscScene large({320, 180}, 50.0);
        const cv::Point2d middle(160.0, 90.0);
        tracker.start(large.frame(middle), large.matte(middle));
        for (int x = 80; x <= 200; x += 12) {
            const cv::Rect post(x, 0, 24, 180);
            cv::Mat frame = large.frame(middle), visible = large.matte(middle);
            frame(post) = cv::Scalar(40, 40, 45);
            visible(post) = 0;
            const double iou = intersectionOverUnion(step(tracker, frame).matte, visible);
            QVERIFY2(iou > 0.75, qPrintable(QStringLiteral("post at %1: %2").arg(x).arg(iou)));
        }
    }

    // A frame of another shot is told apart, and the tracker goes on where its own continues.
    void standsAtACut()
    {
        const DiscScene other({320, 180}, 50.0, {60, 60, 160}, 5);
        QVERIFY(!step(tracker, scene.frame(placeAt(1))).sceneCut);
        const PreparedFrame before = tracker.current();
        for (int i = 2; i <= 3; ++i) {
            const TrackedFrame cut = step(tracker, other.frame(placeAt(8 + i)));
            QVERIFY(cut.sceneCut);
            QCOMPARE(cut.confidence, 0.0);
            QCOMPARE(cut.matte.size(), before.size());
            QCOMPARE(cv::countNonZero(cut.matte), 0);
            QCOMPARE(tracker.current().data(), before.data());
        }
        const TrackedFrame back = step(tracker, scene.frame(placeAt(2)));
        QVERIFY(!back.sceneCut);
        QVERIFY(intersectionOverUnion(back.matte, scene.matte(placeAt(2))) > 0.85);
    }

    // Light, fast motion and an object that comes and goes do not make another shot.
    void noCutWhereThereIsNone()
    {
        const std::vector<cv::Mat> frames {scene.frame(placeAt(0)) * 0.6,
                                           scene.frame(placeAt(0)) + cv::Scalar::all(40),
                                           scene.empty(),
                                           scene.frame({250.0, 100.0})};
        for (const cv::Mat &frame : frames)
            QVERIFY(!tracker.advance(tracker.prepare(tracker.current(), frame)).sceneCut);
    }

    void skippedFramesAreMeasured()
    {
        const PreparedFrame second = tracker.prepare(tracker.current(), scene.frame(placeAt(1)));
        const PreparedFrame third = tracker.prepare(second, scene.frame(placeAt(2)));
        // Prepared against the second frame, but the tracker never saw that one.
        const TrackedFrame tracked = tracker.advance(third);
        QVERIFY(intersectionOverUnion(tracked.matte, scene.matte(placeAt(2))) > 0.88);
        QCOMPARE(tracker.current().data(), third.data());
    }

    void correctionChangesWhatFollows()
    {
        cv::Mat wrong = cv::Mat::zeros(180, 320, CV_8U);
        wrong(cv::Rect(200, 20, 60, 60)) = 255;
        tracker.start(scene.frame(placeAt(0)), wrong);
        const TrackedFrame before = step(tracker, scene.frame(placeAt(1)));
        QVERIFY(intersectionOverUnion(before.matte, scene.matte(placeAt(1))) < 0.3);

        QVERIFY(tracker.correct(tracker.current(), scene.matte(placeAt(1))));
        TrackedFrame after;
        for (int i = 2; i <= 5; ++i)
            after = step(tracker, scene.frame(placeAt(i)));
        const double iou = intersectionOverUnion(after.matte, scene.matte(placeAt(5)));
        QVERIFY2(iou > 0.85, qPrintable(QString::number(iou)));
    }

    void emptyCorrectionHidesTheObject()
    {
        const PreparedFrame next = tracker.prepare(tracker.current(), scene.empty());
        QVERIFY(tracker.correct(next, cv::Mat::zeros(180, 320, CV_8U)));
        const TrackedFrame hidden = step(tracker, scene.empty());
        QCOMPARE(objectArea(hidden.matte), 0);
        QCOMPARE(hidden.confidence, 0.0);
        const TrackedFrame back = step(tracker, scene.frame(placeAt(2)));
        QVERIFY(intersectionOverUnion(back.matte, scene.matte(placeAt(2))) > 0.8);
    }

    void refusesWhatDoesNotFit()
    {
        const cv::Mat frame = scene.frame(placeAt(0));
        const cv::Mat matte = scene.matte(placeAt(0));
        ObjectTracker idle;
        QVERIFY(idle.advance(idle.prepareFirst(frame)).matte.empty());
        QVERIFY(!idle.correct(idle.prepareFirst(frame), matte));
        QVERIFY(!idle.start(frame, cv::Mat::zeros(matte.size(), CV_8U)));
        QVERIFY(!idle.start(frame, matte.rowRange(0, 100)));
        QVERIFY(!idle.start(cv::Mat(), matte));
        QVERIFY(!idle.isStarted());

        const PreparedFrame first = tracker.current();
        QVERIFY(tracker.prepare(first, frame.rowRange(0, 100)).isEmpty());
        QVERIFY(tracker.prepare({}, frame).isEmpty());
        QVERIFY(tracker.prepare(first, {}).isEmpty());
        QVERIFY(tracker.advance({}).matte.empty());
        QVERIFY(!tracker.correct(first, matte.colRange(0, 10)));
        QCOMPARE(tracker.current().data(), first.data());
    }

    void oddObjectsWork_data()
    {
        QTest::addColumn<QString>("content");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QRect>("object");
        const auto row = [](const char *name, const QString &content, QSize size, QRect object) {
            QTest::newRow(name) << content << size << object;
        };
        row("one pixel", "black", {1, 1}, {0, 0, 1, 1});
        row("one row", "black", {41, 1}, {3, 0, 9, 1});
        row("black, filled", "black", {64, 48}, {0, 0, 64, 48});
        row("odd sides", "black", {63, 47}, {0, 30, 20, 17});
        row("a speck", "black", {900, 500}, {450, 250, 1, 1});
        row("white", "white", {320, 180}, {100, 60, 80, 50});
        row("noise", "noise", {320, 180}, {100, 60, 80, 50});
        row("noise, filled", "noise", {320, 180}, {0, 0, 320, 180});
        row("16 x 16", "noise", {16, 16}, {4, 4, 8, 8});
        row("8K", "black", {7680, 4320}, {2000, 1500, 3000, 1800});
    }
    // Frames that hold nothing to go by: no result is senseless, and what fills the frame stays.
    void oddObjectsWork()
    {
        QFETCH(QString, content);
        QFETCH(QSize, size);
        QFETCH(QRect, object);
        const cv::Size frameSize(size.width(), size.height());
        cv::RNG random(7);
        cv::Mat matte = cv::Mat::zeros(frameSize, CV_8U), frame(frameSize, CV_8UC3);
        matte(cv::Rect(object.x(), object.y(), object.width(), object.height())) = 255;
        TrackedFrame tracked;
        const int last = size.width() > 1000 ? 1 : 3;
        for (int i = 0; i <= last; ++i) {
            frame = cv::Mat(
                frameSize, CV_8UC3, cv::Scalar::all(content == QLatin1String("white") ? 255 : 0));
            if (content == QLatin1String("noise"))
                random.fill(frame, cv::RNG::UNIFORM, 0, 256);
            if (i == 0) {
                QVERIFY(tracker.start(frame, matte));
                continue;
            }
            tracked = step(tracker, frame);
            QCOMPARE(tracked.matte.size(), frameSize);
            QVERIFY(tracked.confidence >= 0.0 && tracked.confidence <= 1.0);
            QVERIFY(objectArea(tracked.matte) > 0 || tracked.confidence == 0.0);
            QVERIFY(!tracked.sceneCut);
        }
        if (object.size() == size
            && content == QLatin1String("black")) // nothing else is there to be lost to
            QCOMPARE(objectArea(tracked.matte), frameSize.area());
    }

private:
    const DiscScene scene;
    ObjectTracker tracker; // stands on the first frame
};

ZK_TEST_CORE_MAIN(ZkObjectTrackerTest)
#include "ZkObjectTrackerTest.moc"
