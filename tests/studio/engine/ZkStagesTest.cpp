// The stages of the engine one by one.
#include "ZkDiscScene.h"

#include <ZkTestMain.h>

#include <ZkFrameFeatures.h>
#include <ZkGeodesicDistance.h>
#include <ZkGraphCut.h>
#include <ZkLabelTransfer.h>
#include <ZkMatte.h>
#include <ZkMatteRefiner.h>
#include <ZkMatteWarp.h>
#include <ZkMotion.h>
#include <ZkMotionEvidence.h>
#include <ZkPixelNetwork.h>

#include <opencv2/imgproc.hpp>

#include <cmath>
#include <limits>

using namespace zk::engine;
using zk::test::DiscScene;

namespace {

const cv::Point2d center(150, 80);

// The cost that cutGraph() minimises for a picture of one colour, where every link has its full price.
double evenCost(const cv::Mat &logits, const cv::Mat &labels, double smoothness)
{
    const auto label = [&](int y, int x) { return labels.at<uchar>(y, x) != 0; };
    double cost = 0.0;
    for (int y = 0; y < logits.rows; ++y) {
        for (int x = 0; x < logits.cols; ++x) {
            const float logit = logits.at<float>(y, x);
            cost += label(y, x) ? std::max(0.0f, -logit) : std::max(0.0f, logit);
            for (const cv::Point &step : {cv::Point(1, 0), {0, 1}, {1, 1}, {-1, 1}}) {
                const cv::Point other(x + step.x, y + step.y);
                if (!cv::Rect({0, 0}, logits.size()).contains(other))
                    continue;
                if (label(y, x) != label(other.y, other.x))
                    cost += smoothness / std::hypot(step.x, step.y);
            }
        }
    }
    return cost;
}

// A matte as shares 0 .. 1, and back.
cv::Mat asShare(const cv::Mat &matte)
{
    return cv::Mat_<float>(matte) / 255.0;
}

cv::Mat asMatte(const cv::Mat &share)
{
    return cv::Mat_<uchar>(share * 255.0);
}

} // namespace

class ZkStagesTest : public QObject
{
    Q_OBJECT

private slots:
    void mattesAndSizes()
    {
        const cv::Mat full(4, 4, CV_8U, cv::Scalar(255));
        cv::Mat half = full.clone();
        half.rowRange(0, 2) = 127;
        const cv::Mat none = cv::Mat::zeros(4, 4, CV_8U);
        QCOMPARE(intersectionOverUnion(full, half), 0.5);
        QCOMPARE(intersectionOverUnion(none, none), 1.0);
        QCOMPARE(intersectionOverUnion(full, half.rowRange(0, 3)), 0.0);
        QCOMPARE(workingSize({64, 33}, 427 * 240), cv::Size(64, 33));
        QCOMPARE(workingSize({480, 854}, 427 * 240), cv::Size(240, 427));
        QCOMPARE(workingSize({400000, 1}, 427 * 240).height, 1);
    }

    void cutIsTheCheapestOfAll()
    {
        const cv::Size size(4, 3);
        const cv::Mat lab(size, CV_8UC3, cv::Scalar(100, 128, 128));
        cv::Mat labels(size, CV_8U);
        cv::RNG random(7);
        for (int round = 0; round < 40; ++round) {
            cv::Mat logits(size, CV_32F);
            random.fill(logits, cv::RNG::UNIFORM, -3.0, 3.0);
            const double smoothness = random.uniform(0.0, 1.5);
            double cheapest = std::numeric_limits<double>::max();
            for (int bits = 0; bits < 1 << size.area(); ++bits) {
                for (int i = 0; i < size.area(); ++i)
                    labels.data[i] = uchar(bits >> i & 1);
                cheapest = std::min(cheapest, evenCost(logits, labels, smoothness));
            }
            const cv::Mat cut = cutGraph(logits, lab, {smoothness, 1.0});
            const double cost = evenCost(logits, cut, smoothness);
            // Prices are counted in 1/256 of a logit.
            QVERIFY2(cost < cheapest + 0.15, qPrintable(QString::number(cost - cheapest)));
        }
    }

    void distanceGoesRoundWalls()
    {
        cv::Mat lab(40, 40, CV_8UC3, cv::Scalar(50, 128, 128));
        lab(cv::Rect(20, 0, 2, 35)) = cv::Scalar(250, 128, 128);
        cv::Mat seeds = cv::Mat::zeros(lab.size(), CV_8U);
        seeds.at<uchar>(5, 10) = 255;
        const cv::Mat distance = geodesicDistance(lab, seeds, {1.0, 2});
        QCOMPARE(distance.at<float>(5, 10), 0.0f);
        QCOMPARE(distance.at<float>(5, 15), 5.0f);
        const float round = distance.at<float>(5, 30);
        QVERIFY2(round > 55.0f && round < 75.0f, qPrintable(QString::number(double(round))));
        const cv::Mat nothing = geodesicDistance(lab, cv::Mat::zeros(lab.size(), CV_8U));
        QVERIFY(nothing.at<float>(0, 0) >= 1e6f);
    }

    void networkLearnsAndRepeats()
    {
        const FrameFeatures features = computeFeatures(scene.frame(center));
        const cv::Mat truth = hardMatte(scene.matte(center));
        const cv::Rect everything({0, 0}, features.size());
        TrainingSet set;
        for (int i = 0; i < everything.area(); i += 37) {
            const bool inside = truth.at<uchar>(i / truth.cols, i % truth.cols) != 0;
            set.append(features, {i}, inside ? 1.0f : 0.0f, 1.0f);
        }
        PixelNetwork network;
        network.train(set, 6);
        const cv::Mat logits = network.logits(features, everything);
        QVERIFY(intersectionOverUnion(logits > 0.0f, truth) > 0.85);

        PixelNetwork again;
        again.train(set, 6);
        QCOMPARE(cv::norm(again.logits(features, everything), logits, cv::NORM_INF), 0.0);
        // An area gives the same as the whole, also where it ends in the middle of a block.
        const cv::Rect part(41, 17, 131, 60);
        QCOMPARE(cv::norm(network.logits(features, part), logits(part), cv::NORM_INF), 0.0);
    }

    void motionIsMeasured()
    {
        const cv::Point2d later = center + cv::Point2d(6, -3);
        const cv::Mat before = motionImage(scene.frame(center));
        const cv::Mat after = motionImage(scene.frame(later));
        const MotionField motion = measureMotion(before, after, before.size());
        const auto meanInside = [](const cv::Mat &field, const cv::Point2d &at, int reach) {
            const cv::Scalar mean = cv::mean(
                field(cv::Rect(int(at.x) - reach, int(at.y) - reach, 2 * reach, 2 * reach)));
            return cv::Vec2d(mean[0], mean[1]);
        };
        QVERIFY(cv::norm(meanInside(motion.forward, center, 12) - cv::Vec2d(6, -3)) < 1.0);
        QVERIFY(cv::norm(meanInside(motion.backward, later, 12) - cv::Vec2d(-6, 3)) < 1.0);
        // Half the working size, half the pixels of motion.
        const MotionField half = measureMotion(before, after, before.size() / 2);
        QVERIFY(cv::norm(meanInside(half.forward, center / 2, 6) - cv::Vec2d(3, -1.5)) < 0.7);
    }

    void warpFollowsTheDisc()
    {
        const cv::Vec2f step(9, -5);
        const cv::Point2d later(center.x + 9, center.y - 5);
        const cv::Mat matte = scene.matte(center);
        MotionField motion {cv::Mat::zeros(matte.size(), CV_32FC2),
                            cv::Mat::zeros(matte.size(), CV_32FC2)};
        motion.forward.setTo(cv::Scalar(step[0], step[1]), matte);
        motion.backward.setTo(cv::Scalar(-step[0], -step[1]), scene.matte(later));
        const WarpedMatte warped = warpMatte(asShare(matte), motion);
        const double iou = intersectionOverUnion(asMatte(warped.object), scene.matte(later));
        QVERIFY2(iou > 0.98, qPrintable(QString::number(iou)));
        QVERIFY(cv::norm(warped.objectFlow.at<cv::Vec2f>(cv::Point(later)) + step) < 0.1);
    }

    void warpContinuesMotionPastTheOutline()
    {
        cv::Mat field(60, 80, CV_32FC2, cv::Scalar(-3, 4));
        cv::Mat weight = cv::Mat::zeros(field.size(), CV_32F);
        const cv::Rect known(30, 20, 15, 15);
        field(known) = cv::Scalar(7, 1);
        weight(known) = 1.0f;
        const cv::Mat filled = continuedField(field, weight);
        for (const cv::Point &at : {cv::Point(37, 27), {28, 20}, {0, 0}, {79, 59}})
            QVERIFY(cv::norm(filled.at<cv::Vec2f>(at) - cv::Vec2f(7, 1)) < 0.1);
    }

    // A square that moves before a landscape that moves otherwise, then with it.
    void motionTellsTheObjectFromTheLandscape()
    {
        const cv::Size size(80, 60);
        const cv::Rect square(30, 20, 20, 16);
        MotionField motion {cv::Mat(size, CV_32FC2, cv::Scalar(1, 0)),
                            cv::Mat(size, CV_32FC2, cv::Scalar(-1, 0))};
        WarpedMatte warped {cv::Mat::zeros(size, CV_32F),
                            cv::Mat(size, CV_32FC2, cv::Scalar(3, -1))};
        warped.object(square) = 1.0f;
        motion.backward(square) = cv::Scalar(3, -1);
        motion.forward.setTo(cv::Scalar(-3, 1), warped.object > 0.0f);
        cv::Mat evidence = motionEvidence(motion, warped, {20, 10, 40, 40});
        QVERIFY(evidence.at<float>(18, 20) > 0.8f);
        QVERIFY(evidence.at<float>(3, 3) < -0.8f);

        motion.forward = cv::Scalar(9, 9); // nothing leads back
        evidence = motionEvidence(motion, warped, {20, 10, 40, 40});
        QVERIFY(cv::norm(evidence, cv::NORM_INF) < 0.01);
        warped.objectFlow = cv::Scalar(-1, 0);
        motion = {cv::Mat(size, CV_32FC2, cv::Scalar(1, 0)),
                  cv::Mat(size, CV_32FC2, cv::Scalar(-1, 0))};
        QVERIFY(cv::norm(motionEvidence(motion, warped, square), cv::NORM_INF) < 0.01);
    }

    void transferFindsWhereLabelsWent()
    {
        const cv::Point2d later = center + cv::Point2d(6, 4);
        const FrameFeatures from = computeFeatures(scene.frame(center));
        const FrameFeatures to = computeFeatures(scene.frame(later));
        const cv::Rect area(60, 10, 180, 150);
        const auto transferred = [&](const cv::Point &shift, const LabelTransferOptions &options) {
            const cv::Mat labels = transferLabels(
                describe(from), asShare(scene.matte(center)), describe(to), area, shift, options);
            return intersectionOverUnion(asMatte(labels), scene.matte(later)(area));
        };
        QVERIFY(transferred({0, 0}, {12, 2, 2, 40.0}) > 0.9);
        QVERIFY(transferred({-6, -4}, {2, 1, 1, 40.0}) > 0.95);
        // Nothing comes from outside the frame, wherever the search is sent.
        QVERIFY(transferred({10000, -10000}, {12, 2, 2, 40.0}) <= 0.5);
    }

    void refinerLaysTheOutlineOnTheEdge()
    {
        const DiscScene scene({960, 540}, 150.0);
        const cv::Point2d middle(480, 270);
        const cv::Mat truth = scene.matte(middle);
        cv::Mat coarse;
        cv::resize(truth, coarse, {160, 90}, 0, 0, cv::INTER_AREA);
        coarse = hardMatte(coarse);
        const cv::Mat matte = refineMatte(scene.frame(middle), coarse);
        QCOMPARE(matte.size(), truth.size());
        QVERIFY(intersectionOverUnion(matte, truth) > 0.97);
        const int soft = cv::countNonZero((matte > 20) & (matte < 235));
        QVERIFY2(soft > 500, qPrintable(QString::number(soft)));
        QVERIFY(refineMatte({}, coarse).empty());
        QVERIFY(refineMatte(scene.frame(middle), {}).empty());
        QVERIFY(refineMatte(scene.frame(middle), cv::Mat(541, 960, CV_8U)).empty());
    }

private:
    const DiscScene scene;
};

ZK_TEST_CORE_MAIN(ZkStagesTest)
#include "ZkStagesTest.moc"
