#include "ZkDiscScene.h"

#include <ZkTestMain.h>

#include <ZkBoxSegmenter.h>
#include <ZkInteractiveSegmenter.h>
#include <ZkMatte.h>

#include <opencv2/imgproc.hpp>

using namespace zk::engine;
using zk::test::DiscScene;

namespace {

const cv::Point2d center(150, 80);

cv::Mat dot(const cv::Point &at, int radius)
{
    cv::Mat image = cv::Mat::zeros(180, 320, CV_8U);
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
    void strokeBecomesTheDisc()
    {
        const cv::Mat matte = InteractiveSegmenter().segment(frame, {stroke, {}});
        const double iou = intersectionOverUnion(matte, truth);
        QVERIFY2(iou > 0.93, qPrintable(QString::number(iou)));
        // Soft along the outline, and nowhere else.
        const cv::Mat soft = (matte > 20) & (matte < 235);
        QVERIFY(cv::countNonZero(soft) > 60);
        const cv::Mat far = dot(center, 15) | ~dot(center, 60);
        QCOMPARE(cv::countNonZero(soft & far), 0);
    }

    void strokesAreHonoured()
    {
        const cv::Mat keep = stroke | dot({20, 160}, 3);
        const cv::Mat remove = dot({150, 95}, 3);
        const cv::Mat matte = InteractiveSegmenter().segment(frame, {keep, remove});
        QVERIFY(isAll(matte, 255, keep));
        QVERIFY(isAll(matte, 0, remove));
        // Removing wins.
        QVERIFY(isAll(InteractiveSegmenter().segment(frame, {stroke, stroke}), 0, stroke));
    }

    void correctionsAddAndTakeAway()
    {
        InteractiveSegmenter segmenter;
        cv::Mat left = truth.clone();
        left.colRange(150, 320) = 0;
        const cv::Mat added = segmenter.segment(frame, {dot({165, 80}, 4), {}}, left);
        QVERIFY(intersectionOverUnion(added, truth) > intersectionOverUnion(left, truth) + 0.3);

        cv::Mat tooMuch = truth.clone();
        tooMuch(cv::Rect(200, 60, 60, 50)) = 255;
        const cv::Mat taken = segmenter.segment(frame, {{}, dot({230, 85}, 4)}, tooMuch);
        QVERIFY(intersectionOverUnion(taken, truth) > 0.9);
    }

    void boxBecomesTheDisc()
    {
        const cv::Rect box = cv::boundingRect(truth) + cv::Size(8, 8) - cv::Point(4, 4);
        const double iou = intersectionOverUnion(segmentBox(frame, box), truth);
        QVERIFY2(iou > 0.9, qPrintable(QString::number(iou)));
        // Nothing but what is in the box; what reaches over the border does not count.
        const cv::Rect half(box.x, -50, box.width / 2, 1000);
        cv::Mat matte = segmentBox(frame, half);
        matte(half & cv::Rect({0, 0}, frame.size())) = 0;
        QCOMPARE(cv::countNonZero(matte), 0);
        // Where nothing stands out, all of the box.
        const cv::Mat even(frame.size(), CV_8UC3, cv::Scalar(90, 90, 90));
        cv::Mat expected = cv::Mat::zeros(frame.size(), CV_8U);
        expected(box) = 255;
        QCOMPARE(cv::norm(segmentBox(even, box), expected, cv::NORM_INF), 0.0);
        QVERIFY(isAll(segmentBox(frame, {{0, 0}, frame.size()}),
                      255,
                      cv::Mat(frame.size(), CV_8U, cv::Scalar(1))));
        QVERIFY(segmentBox(frame, {-9, 0, 9, 9}).empty() && segmentBox({}, box).empty());
        for (const cv::Size &size : {cv::Size(1, 1), {1, 53}, {33, 2}}) {
            const cv::Mat tiny = cv::Mat::zeros(size, CV_8UC3);
            QCOMPARE(segmentBox(tiny, {0, 0, 1, 1}).size(), size);
        }
    }

    // A part between the colours of the object and of its surroundings goes with what is around it; alone,
    // the middle of a box is no object.
    void middleOfABoxCounts()
    {
        const cv::Rect box = cv::boundingRect(truth) + cv::Size(8, 8) - cv::Point(4, 4);
        const cv::Rect stripe(box.x + box.width / 2, box.y, box.width / 4, box.height);
        cv::Mat striped = frame.clone();
        cv::addWeighted(scene.empty()(stripe), 0.6, frame(stripe), 0.4, 0, striped(stripe));
        BoxSegmenterOptions options;
        options.middle = 0;
        QVERIFY(intersectionOverUnion(segmentBox(striped, box, options), truth) < 0.8);
        options.middle = 4;
        QVERIFY(intersectionOverUnion(segmentBox(striped, box, options), truth) > 0.95);
        const cv::Mat even(frame.size(), CV_8UC3, cv::Scalar(90, 90, 90));
        QVERIFY(isAll(segmentBox(even, box, options)(box), 255, truth(box) + 255));
    }

    // Half of the disc looks like what is behind it, but goes with the other half.
    void motionTellsTheObject()
    {
        const cv::Rect box = cv::boundingRect(truth) + cv::Size(8, 8) - cv::Point(4, 4);
        const cv::Mat now = camouflaged(center.x);
        const std::vector<cv::Mat> around {camouflaged(center.x - 5), camouflaged(center.x + 5)};
        QVERIFY(intersectionOverUnion(segmentBox(now, box), truth) < 0.7);
        const double iou = intersectionOverUnion(segmentBox(now, box, {}, around), truth);
        QVERIFY2(iou > 0.85, qPrintable(QString::number(iou)));
        // Pictures of another size say nothing.
        const std::vector<cv::Mat> others {cv::Mat::zeros(9, 9, CV_8UC3), cv::Mat()};
        QCOMPARE(cv::norm(segmentBox(now, box, {}, others), segmentBox(now, box), cv::NORM_INF),
                 0.0);
        // So it does for a stroke over both halves.
        const Scribbles scribbles {dot(center, 8), {}};
        InteractiveSegmenter segmenter;
        const cv::Mat still = segmenter.segment(now, scribbles, {}, others);
        QVERIFY2(intersectionOverUnion(still, truth) < 0.8,
                 qPrintable(QString::number(intersectionOverUnion(still, truth))));
        const double moved =
            intersectionOverUnion(segmenter.segment(now, scribbles, {}, around), truth);
        QVERIFY2(moved > 0.9, qPrintable(QString::number(moved)));
        QCOMPARE(cv::norm(segmenter.segment(now, scribbles), still, cv::NORM_INF), 0.0);
    }

    // Not on alpha, the frames before or a buffer that is used again, nor on the number of threads.
    void resultsDependOnNothingElse()
    {
        const Scribbles scribbles {stroke, {}};
        const cv::Mat expected = InteractiveSegmenter().segment(frame, scribbles);
        const cv::Point2d other(90, 100);
        InteractiveSegmenter segmenter;
        cv::Mat buffer;
        cv::cvtColor(scene.frame(other), buffer, cv::COLOR_RGB2RGBA);
        segmenter.segment(buffer, {scene.stroke(other), {}});
        cv::RNG(3).fill(buffer, cv::RNG::UNIFORM, 0, 256); // alpha, and what is covered next
        cv::mixChannels(frame, buffer, {0, 0, 1, 1, 2, 2});
        const cv::Mat reused = segmenter.segment(buffer, scribbles);
        QCOMPARE(cv::norm(reused, expected, cv::NORM_INF), 0.0);

        const int threads = cv::getNumThreads();
        cv::setNumThreads(threads > 1 ? 1 : 2);
        const cv::Mat elsewhere = InteractiveSegmenter().segment(frame, scribbles);
        cv::setNumThreads(threads);
        QCOMPARE(cv::norm(elsewhere, expected, cv::NORM_INF), 0.0);
    }

    void badArgumentsGiveNothing()
    {
        cv::Mat gray, small, wide;
        cv::cvtColor(frame, gray, cv::COLOR_RGB2GRAY);
        cv::resize(stroke, small, {100, 50});
        stroke.convertTo(wide, CV_16U);
        InteractiveSegmenter segmenter;
        QVERIFY(segmenter.segment(frame, {}).empty());
        QVERIFY(segmenter.segment(frame, {{}, stroke}).empty()); // nothing kept
        QVERIFY(segmenter.segment({}, {stroke, {}}).empty());
        QVERIFY(segmenter.segment(gray, {stroke, {}}).empty());
        QVERIFY(segmenter.segment(frame, {stroke, small}).empty());
        QVERIFY(segmenter.segment(frame, {wide, {}}).empty());
        QVERIFY(segmenter.segment(frame, {stroke, {}}, small).empty());
    }

    void oddFramesWork()
    {
        for (const cv::Size &size : {cv::Size(1, 1), {37, 1}, {1, 53}, {33, 47}, {3001, 7}}) {
            const cv::Mat black = cv::Mat::zeros(size, CV_8UC3);
            cv::Mat point = cv::Mat::zeros(size, CV_8U);
            point.at<uchar>(size.height / 2, size.width / 2) = 255;
            for (const cv::Mat &keep : {point, cv::Mat(size, CV_8U, cv::Scalar(255))}) {
                const cv::Mat matte = InteractiveSegmenter().segment(black, {keep, {}});
                QCOMPARE(matte.size(), size);
                QVERIFY(isAll(matte, 255, keep));
                const cv::Mat again = InteractiveSegmenter().segment(black, {keep, {}}, matte);
                QVERIFY(isAll(again, 255, keep));
            }
        }
    }

private:
    // The disc, its left half in the colours of what is behind it.
    cv::Mat camouflaged(double x) const
    {
        cv::Mat result = scene.frame({x, center.y}), other;
        const cv::Matx23d shift(1, 0, x + 71, 0, 1, 40);
        cv::warpAffine(scene.empty(), other, shift, result.size(), 1, cv::BORDER_WRAP);
        cv::Mat half = scene.matte({x, center.y}) >= 128;
        half.colRange(0, int(x)) = 0;
        other.copyTo(result, half);
        return result;
    }

    const DiscScene scene;
    const cv::Mat frame = scene.frame(center);
    const cv::Mat truth = scene.matte(center);
    const cv::Mat stroke = scene.stroke(center);
};

ZK_TEST_CORE_MAIN(ZkInteractiveSegmenterTest)
#include "ZkInteractiveSegmenterTest.moc"
