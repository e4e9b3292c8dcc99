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

std::vector<cv::Mat> trackedMattes(const DiscScene &scene, int frames)
{
    std::vector<cv::Mat> mattes;
    ObjectTracker tracker;
    tracker.start(scene.frame(placeAt(0)), scene.matte(placeAt(0)));
    for (int i = 1; i <= frames; ++i)
        mattes.push_back(step(tracker, scene.frame(placeAt(i))).matte);
    return mattes;
}

} // namespace

class ZkObjectTrackerTest : public QObject
{
    Q_OBJECT

private slots:
    void followsTheDisc();
    void pipelineGivesTheSame();
    void resultsDependOnNoThreads();
    void losesWhatVanishesAndFindsItAgain();
    void skippedFramesAreMeasured();
    void correctionChangesWhatFollows();
    void emptyCorrectionHidesTheObject();
    void refusesWhatDoesNotFit();
    void oddObjectsWork_data();
    void oddObjectsWork();
};

void ZkObjectTrackerTest::followsTheDisc()
{
    const DiscScene scene;
    ObjectTracker tracker;
    QVERIFY(!tracker.isStarted());
    QVERIFY(tracker.start(scene.frame(placeAt(0)), scene.matte(placeAt(0))));
    for (int i = 1; i <= 10; ++i) {
        const TrackedFrame tracked = step(tracker, scene.frame(placeAt(i)));
        const double iou = intersectionOverUnion(tracked.matte, scene.matte(placeAt(i)));
        QVERIFY2(iou > 0.88, qPrintable(QStringLiteral("frame %1: %2").arg(i).arg(iou)));
        QVERIFY(tracked.confidence > 0.5 && tracked.confidence <= 1.0);
    }
}

void ZkObjectTrackerTest::pipelineGivesTheSame()
{
    const DiscScene scene;
    const std::vector<cv::Mat> expected = trackedMattes(scene, 4);
    ObjectTracker tracker;
    tracker.start(scene.frame(placeAt(0)), scene.matte(placeAt(0)));
    PreparedFrame next = tracker.prepare(tracker.current(), scene.frame(placeAt(1)));
    for (int i = 1; i <= 4; ++i) {
        auto ahead = std::async(std::launch::async, [&tracker, &scene, next, i] {
            return tracker.prepare(next, scene.frame(placeAt(i + 1)));
        });
        const TrackedFrame tracked = tracker.advance(next);
        next = ahead.get();
        QCOMPARE(cv::norm(tracked.matte, expected[i - 1], cv::NORM_INF), 0.0);
    }
}

void ZkObjectTrackerTest::resultsDependOnNoThreads()
{
    const DiscScene scene({480, 270}, 40.0);
    const std::vector<cv::Mat> expected = trackedMattes(scene, 3);
    const int threads = cv::getNumThreads();
    cv::setNumThreads(threads > 1 ? 1 : 2);
    const std::vector<cv::Mat> actual = trackedMattes(scene, 3);
    cv::setNumThreads(threads);
    for (std::size_t i = 0; i < expected.size(); ++i)
        QCOMPARE(cv::norm(actual[i], expected[i], cv::NORM_INF), 0.0);
}

void ZkObjectTrackerTest::losesWhatVanishesAndFindsItAgain()
{
    const DiscScene scene;
    ObjectTracker tracker;
    tracker.start(scene.frame(placeAt(0)), scene.matte(placeAt(0)));
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

void ZkObjectTrackerTest::skippedFramesAreMeasured()
{
    const DiscScene scene;
    ObjectTracker tracker;
    tracker.start(scene.frame(placeAt(0)), scene.matte(placeAt(0)));
    const PreparedFrame second = tracker.prepare(tracker.current(), scene.frame(placeAt(1)));
    const PreparedFrame third = tracker.prepare(second, scene.frame(placeAt(2)));
    // Prepared against the second frame, but the tracker never saw that one.
    const TrackedFrame tracked = tracker.advance(third);
    QVERIFY(intersectionOverUnion(tracked.matte, scene.matte(placeAt(2))) > 0.88);
    QCOMPARE(tracker.current().data(), third.data());
}

void ZkObjectTrackerTest::correctionChangesWhatFollows()
{
    const DiscScene scene;
    cv::Mat wrong = cv::Mat::zeros(180, 320, CV_8U);
    wrong(cv::Rect(200, 20, 60, 60)) = 255;
    ObjectTracker tracker;
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

void ZkObjectTrackerTest::emptyCorrectionHidesTheObject()
{
    const DiscScene scene;
    ObjectTracker tracker;
    tracker.start(scene.frame(placeAt(0)), scene.matte(placeAt(0)));
    const PreparedFrame next = tracker.prepare(tracker.current(), scene.empty());
    QVERIFY(tracker.correct(next, cv::Mat::zeros(180, 320, CV_8U)));
    const TrackedFrame hidden = step(tracker, scene.empty());
    QCOMPARE(objectArea(hidden.matte), 0);
    QCOMPARE(hidden.confidence, 0.0);
    const TrackedFrame back = step(tracker, scene.frame(placeAt(2)));
    QVERIFY(intersectionOverUnion(back.matte, scene.matte(placeAt(2))) > 0.8);
}

void ZkObjectTrackerTest::refusesWhatDoesNotFit()
{
    const DiscScene scene;
    const cv::Mat frame = scene.frame(placeAt(0));
    const cv::Mat matte = scene.matte(placeAt(0));
    ObjectTracker tracker;
    QVERIFY(tracker.advance(tracker.prepareFirst(frame)).matte.empty());
    QVERIFY(!tracker.correct(tracker.prepareFirst(frame), matte));
    QVERIFY(tracker.current().isEmpty());
    QVERIFY(!tracker.start(frame, cv::Mat::zeros(matte.size(), CV_8U)));
    QVERIFY(!tracker.start(frame, matte.rowRange(0, 100)));
    QVERIFY(!tracker.start(cv::Mat(), matte));
    QVERIFY(!tracker.isStarted());

    QVERIFY(tracker.start(frame, matte));
    const PreparedFrame first = tracker.current();
    QVERIFY(tracker.prepare(first, frame.rowRange(0, 100)).isEmpty());
    QVERIFY(tracker.prepare({}, frame).isEmpty());
    QVERIFY(tracker.prepare(first, {}).isEmpty());
    QVERIFY(tracker.advance({}).matte.empty());
    QVERIFY(!tracker.correct(first, matte.colRange(0, 10)));
    QCOMPARE(tracker.current().data(), first.data());
}

void ZkObjectTrackerTest::oddObjectsWork_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<QRect>("object");
    QTest::newRow("one pixel frame") << 1 << 1 << QRect(0, 0, 1, 1);
    QTest::newRow("one row") << 41 << 1 << QRect(3, 0, 9, 1);
    QTest::newRow("odd size") << 75 << 51 << QRect(20, 20, 11, 9);
    QTest::newRow("fills everything") << 64 << 48 << QRect(0, 0, 64, 48);
    QTest::newRow("touches the border") << 64 << 48 << QRect(0, 30, 20, 18);
    QTest::newRow("one pixel object") << 900 << 500 << QRect(450, 250, 1, 1);
}

void ZkObjectTrackerTest::oddObjectsWork()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(QRect, object);
    const cv::Mat black = cv::Mat::zeros(height, width, CV_8UC3);
    cv::Mat matte = cv::Mat::zeros(black.size(), CV_8U);
    matte(cv::Rect(object.x(), object.y(), object.width(), object.height())) = 255;
    ObjectTracker tracker;
    QVERIFY(tracker.start(black, matte));
    for (int i = 0; i < 3; ++i) {
        const TrackedFrame tracked = step(tracker, black);
        QCOMPARE(tracked.matte.size(), black.size());
        QVERIFY(tracked.confidence >= 0.0 && tracked.confidence <= 1.0);
        QVERIFY(objectArea(tracked.matte) > 0 || tracked.confidence == 0.0);
    }
    if (object.size() == QSize(width, height))
        QCOMPARE(objectArea(step(tracker, black).matte), width * height);
}

ZK_TEST_CORE_MAIN(ZkObjectTrackerTest)
#include "ZkObjectTrackerTest.moc"
