#include "ZkDiscScene.h"

#include <ZkTestMain.h>

#include <ZkInteractiveSegmenter.h>
#include <ZkMatte.h>

#include <opencv2/imgproc.hpp>

using namespace zk::engine;
using zk::test::DiscScene;

namespace {

const cv::Point2d center(150, 80);

cv::Mat dot(const cv::Size &size, const cv::Point &at, int radius)
{
    cv::Mat image = cv::Mat::zeros(size, CV_8U);
    cv::circle(image, at, radius, cv::Scalar(255), cv::FILLED);
    return image;
}

bool isAll(const cv::Mat &matte, int value, const cv::Mat &where)
{
    return cv::countNonZero((matte != value) & (where != 0)) == 0;
}

} // namespace

class ZkInteractiveSegmenterTest : public QObject
{
    Q_OBJECT

private slots:
    void strokeBecomesTheDisc();
    void outlineIsSoft();
    void strokesAreHonoured();
    void removeWinsOverKeep();
    void correctionsAddAndTakeAway();
    void alphaChannelIsIgnored();
    void resultsDependOnNothingElse();
    void nothingComesFromNothing();
    void badArgumentsGiveNothing();
    void oddFramesWork_data();
    void oddFramesWork();
};

void ZkInteractiveSegmenterTest::strokeBecomesTheDisc()
{
    const DiscScene scene;
    InteractiveSegmenter segmenter;
    const cv::Mat matte = segmenter.segment(scene.frame(center), {scene.stroke(center), {}});
    const double iou = intersectionOverUnion(matte, scene.matte(center));
    QVERIFY2(iou > 0.93, qPrintable(QString::number(iou)));
}

void ZkInteractiveSegmenterTest::outlineIsSoft()
{
    const DiscScene scene;
    const cv::Mat matte =
        InteractiveSegmenter().segment(scene.frame(center), {scene.stroke(center), {}});
    const cv::Mat soft = (matte > 20) & (matte < 235);
    QVERIFY(cv::countNonZero(soft) > 60);
    const cv::Mat far = dot(matte.size(), center, 15) | ~dot(matte.size(), center, 60);
    QCOMPARE(cv::countNonZero(soft & far), 0);
}

void ZkInteractiveSegmenterTest::strokesAreHonoured()
{
    const DiscScene scene;
    const cv::Mat keep = scene.stroke(center) | dot({320, 180}, {20, 160}, 3);
    const cv::Mat remove = dot({320, 180}, {150, 95}, 3);
    const cv::Mat matte = InteractiveSegmenter().segment(scene.frame(center), {keep, remove});
    QVERIFY(isAll(matte, 255, keep));
    QVERIFY(isAll(matte, 0, remove));
}

void ZkInteractiveSegmenterTest::removeWinsOverKeep()
{
    const DiscScene scene;
    const cv::Mat both = scene.stroke(center);
    const cv::Mat matte = InteractiveSegmenter().segment(scene.frame(center), {both, both});
    QVERIFY(isAll(matte, 0, both));
}

void ZkInteractiveSegmenterTest::correctionsAddAndTakeAway()
{
    const DiscScene scene;
    const cv::Mat frame = scene.frame(center);
    const cv::Mat truth = scene.matte(center);
    InteractiveSegmenter segmenter;

    cv::Mat left = truth.clone();
    left.colRange(150, 320) = 0;
    const cv::Mat added = segmenter.segment(frame, {dot(truth.size(), {165, 80}, 4), {}}, left);
    QVERIFY(intersectionOverUnion(added, truth) > intersectionOverUnion(left, truth) + 0.3);

    cv::Mat tooMuch = truth.clone();
    tooMuch(cv::Rect(200, 60, 60, 50)) = 255;
    const cv::Mat taken = segmenter.segment(frame, {{}, dot(truth.size(), {230, 85}, 4)}, tooMuch);
    QVERIFY(intersectionOverUnion(taken, truth) > 0.9);
}

void ZkInteractiveSegmenterTest::alphaChannelIsIgnored()
{
    const DiscScene scene;
    const cv::Mat frame = scene.frame(center);
    const Scribbles scribbles {scene.stroke(center), {}};
    cv::Mat withAlpha;
    cv::cvtColor(frame, withAlpha, cv::COLOR_RGB2RGBA);
    cv::RNG random(3);
    for (int y = 0; y < withAlpha.rows; ++y) {
        for (int x = 0; x < withAlpha.cols; ++x)
            withAlpha.at<cv::Vec4b>(y, x)[3] = uchar(random.uniform(0, 256));
    }
    const cv::Mat expected = InteractiveSegmenter().segment(frame, scribbles);
    const cv::Mat actual = InteractiveSegmenter().segment(withAlpha, scribbles);
    QCOMPARE(cv::norm(actual, expected, cv::NORM_INF), 0.0);
}

// Neither on the frames before, nor on a buffer that is used again, nor on the number of threads.
void ZkInteractiveSegmenterTest::resultsDependOnNothingElse()
{
    const DiscScene scene;
    const cv::Point2d other(90, 100);
    const Scribbles scribbles {scene.stroke(other), {}};
    const cv::Mat expected = InteractiveSegmenter().segment(scene.frame(other), scribbles);

    InteractiveSegmenter segmenter;
    cv::Mat buffer = scene.frame(center);
    segmenter.segment(buffer, {scene.stroke(center), {}});
    scene.frame(other).copyTo(buffer);
    const cv::Mat reused = segmenter.segment(buffer, scribbles);
    QCOMPARE(cv::norm(reused, expected, cv::NORM_INF), 0.0);

    const int threads = cv::getNumThreads();
    cv::setNumThreads(threads > 1 ? 1 : 2);
    const cv::Mat elsewhere = InteractiveSegmenter().segment(scene.frame(other), scribbles);
    cv::setNumThreads(threads);
    QCOMPARE(cv::norm(elsewhere, expected, cv::NORM_INF), 0.0);
}

void ZkInteractiveSegmenterTest::nothingComesFromNothing()
{
    const DiscScene scene;
    const cv::Mat frame = scene.frame(center);
    InteractiveSegmenter segmenter;
    QVERIFY(segmenter.segment(frame, {}).empty());
    QVERIFY(segmenter.segment(frame, {cv::Mat::zeros(frame.size(), CV_8U), {}}).empty());
    QVERIFY(segmenter.segment(frame, {{}, scene.stroke(center)}).empty());
}

void ZkInteractiveSegmenterTest::badArgumentsGiveNothing()
{
    const DiscScene scene;
    const cv::Mat frame = scene.frame(center);
    const cv::Mat stroke = scene.stroke(center);
    cv::Mat gray, small, wide;
    cv::cvtColor(frame, gray, cv::COLOR_RGB2GRAY);
    cv::resize(stroke, small, {100, 50});
    stroke.convertTo(wide, CV_16U);
    InteractiveSegmenter segmenter;
    QVERIFY(segmenter.segment({}, {stroke, {}}).empty());
    QVERIFY(segmenter.segment(gray, {stroke, {}}).empty());
    QVERIFY(segmenter.segment(frame, {small, {}}).empty());
    QVERIFY(segmenter.segment(frame, {stroke, small}).empty());
    QVERIFY(segmenter.segment(frame, {wide, {}}).empty());
    QVERIFY(segmenter.segment(frame, {stroke, {}}, small).empty());
}

void ZkInteractiveSegmenterTest::oddFramesWork_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("fullStroke");
    QTest::newRow("one pixel") << 1 << 1 << true;
    QTest::newRow("one row") << 37 << 1 << false;
    QTest::newRow("one column") << 1 << 53 << false;
    QTest::newRow("odd") << 33 << 47 << false;
    QTest::newRow("painted all over") << 50 << 40 << true;
    QTest::newRow("large and thin") << 3001 << 7 << false;
}

void ZkInteractiveSegmenterTest::oddFramesWork()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(bool, fullStroke);
    const cv::Mat black = cv::Mat::zeros(height, width, CV_8UC3);
    cv::Mat keep = cv::Mat::zeros(black.size(), CV_8U);
    if (fullStroke)
        keep.setTo(255);
    else
        keep.at<uchar>(height / 2, width / 2) = 255;
    const cv::Mat remove = cv::Mat::zeros(black.size(), CV_8U);
    const cv::Mat matte = InteractiveSegmenter().segment(black, {keep, remove});
    QCOMPARE(matte.size(), black.size());
    QVERIFY(isAll(matte, 255, keep));
    const cv::Mat again = InteractiveSegmenter().segment(black, {keep, remove}, matte);
    QVERIFY(isAll(again, 255, keep));
}

ZK_TEST_CORE_MAIN(ZkInteractiveSegmenterTest)
#include "ZkInteractiveSegmenterTest.moc"
