// The eraser on a scene whose hidden background is known.
#include "ZkEraseScene.h"

#include <ZkTestMain.h>

#include <opencv2/photo.hpp>

#include <chrono>
#include <cmath>

using namespace zk::engine;
using zk::test::EraseScene;

namespace {

cv::Mat grown(const cv::Mat &mask, int pixels)
{
    const int side = 2 * pixels + 1;
    cv::Mat result;
    cv::dilate(mask, result, cv::getStructuringElement(cv::MORPH_RECT, {side, side}));
    return result;
}

int growOf(const EraseScene &scene)
{
    return int(std::lround(EraserOptions().grow * scene.size.height));
}

// Mean squared error inside the mask, as decibels.
double psnr(const cv::Mat &a, const cv::Mat &b, const cv::Mat &mask)
{
    const double sum = cv::norm(a, b, cv::NORM_L2SQR, mask);
    return 10.0 * std::log10(65025.0 / std::max(1e-3, sum / (3.0 * cv::countNonZero(mask))));
}

double meanDifference(const cv::Mat &a, const cv::Mat &b, const cv::Mat &mask)
{
    cv::Mat difference;
    cv::absdiff(a, b, difference);
    const cv::Scalar mean = cv::mean(difference, mask);
    return (mean[0] + mean[1] + mean[2]) / 3.0;
}

bool sameOutside(const cv::Mat &a, const cv::Mat &b, const cv::Mat &mask)
{
    cv::Mat one = a.clone(), other = b.clone();
    one.setTo(0, mask);
    other.setTo(0, mask);
    return cv::norm(one, other, cv::NORM_INF) == 0.0;
}

EraseResult erase(EraseScene &scene, const EraserOptions &options = {})
{
    return ObjectEraser(options).run(scene, scene);
}

struct Difficult
{
    const char *name;
    cv::Size size;
    int count;
    void (*change)(EraseScene &);
};

const Difficult difficult[] = {
    {"odd size", {161, 91}, 6, [](EraseScene &) {}},
    {"16x16", {16, 16}, 5, [](EraseScene &) {}},
    {"three columns", {3, 60}, 3, [](EraseScene &) {}},
    {"one frame", {160, 90}, 1, [](EraseScene &) {}},
    {"nothing revealed", {160, 90}, 12, [](EraseScene &s) { s.still = true, s.pan = 0.0; }},
    {"one frame all masked", {160, 90}, 8, [](EraseScene &s) { s.maskAllAt = 3; }},
    {"cut", {160, 90}, 12, [](EraseScene &s) { s.cutAt = 6; }},
    {"mask ends", {160, 90}, 12, [](EraseScene &s) { s.maskUntil = 5; }},
    {"longer than the window", {160, 90}, 30, [](EraseScene &) {}},
};

} // namespace

class ZkObjectEraserTest : public QObject
{
    Q_OBJECT

private slots:
    void bringsTheHiddenBackground()
    {
        EraseScene scene({240, 136}, 20);
        QCOMPARE(erase(scene), EraseResult::Done);
        double ours = 0.0, inpainted = 0.0;
        for (int i = 0; i < scene.count; ++i) {
            const cv::Mat mask = scene.mask(i), truth = scene.background(i);
            cv::Mat other;
            cv::inpaint(scene.frame(i), grown(mask, 1), other, 5.0, cv::INPAINT_TELEA);
            ours += psnr(scene.result[std::size_t(i)], truth, mask) / scene.count;
            inpainted += psnr(other, truth, mask) / scene.count;
        }
        QVERIFY2(ours > inpainted + 8.0,
                 qPrintable(QStringLiteral("%1 against %2").arg(ours).arg(inpainted)));
    }

    // Whatever the input: all frames come, in order, the object is gone, and no pixel outside of the
    // grown mask has changed.
    void difficultInput_data()
    {
        QTest::addColumn<int>("which");
        for (int i = 0; i < int(std::size(difficult)); ++i)
            QTest::newRow(difficult[i].name) << i;
    }
    void difficultInput()
    {
        QFETCH(int, which);
        const Difficult &input = difficult[which];
        EraseScene scene(input.size, input.count);
        input.change(scene);
        EraserOptions options;
        options.windowFrames = 8;
        QCOMPARE(erase(scene, options), EraseResult::Done);
        QCOMPARE(int(scene.result.size()), scene.count);
        QVERIFY(scene.inOrder);
        for (int i = 0; i < scene.count; ++i) {
            const cv::Mat &result = scene.result[std::size_t(i)];
            const cv::Mat mask = scene.mask(i);
            if (mask.empty()) {
                QVERIFY(cv::norm(result, scene.frame(i), cv::NORM_INF) == 0.0);
                continue;
            }
            QVERIFY(sameOutside(result, scene.frame(i), grown(mask, growOf(scene))));
            cv::Mat red;
            cv::inRange(result, cv::Scalar(0, 0, 215), cv::Scalar(40, 40, 245), red);
            QVERIFY2(cv::countNonZero(red & mask) * 50 <= cv::countNonZero(mask),
                     qPrintable(QStringLiteral("frame %1").arg(i)));
        }
    }

    // Masks that leave out the outline of the disc leave it in the picture, unless what moves along goes too;
    // and nothing goes that is further away.
    void followsWhatMovesAlong()
    {
        double left[2] = {};
        for (const bool follows : {false, true}) {
            EraseScene scene({240, 136}, 40);
            scene.missed = 4;
            EraserOptions options;
            options.follow = follows ? 0.06 : 0.0;
            QCOMPARE(erase(scene, options), EraseResult::Done);
            for (int i = 2; i < scene.count - 2; ++i) {
                cv::Mat red;
                const cv::Mat &result = scene.result[std::size_t(i)];
                cv::inRange(result, cv::Scalar(0, 0, 180), cv::Scalar(80, 80, 255), red);
                left[follows] += cv::countNonZero(red & scene.mask(i));
                QVERIFY(sameOutside(result, scene.frame(i), grown(scene.mask(i), 8)));
            }
        }
        QVERIFY2(left[0] > 1000 && left[1] < 0.3 * left[0],
                 qPrintable(QStringLiteral("%1 of %2").arg(left[1]).arg(left[0])));
    }

    void nothingFlickersWhereNothingIsShown()
    {
        EraseScene scene({160, 90}, 30);
        scene.still = true;
        scene.pan = 0.0;
        EraserOptions options;
        options.windowFrames = 8;
        QCOMPARE(erase(scene, options), EraseResult::Done);
        for (std::size_t i = 1; i < scene.result.size(); ++i)
            QVERIFY(meanDifference(scene.result[i], scene.result[i - 1], scene.mask(0)) < 1.0);
    }

    // Where one window ends the picture must not jump more than inside of it.
    void windowsJoin()
    {
        EraseScene scene({240, 136}, 40);
        EraserOptions options;
        options.windowFrames = 12;
        QCOMPARE(erase(scene, options), EraseResult::Done);
        for (int i = 0; i < scene.count; ++i) {
            const double error =
                meanDifference(scene.result[std::size_t(i)], scene.background(i), scene.mask(i));
            QVERIFY2(error < 12.0, qPrintable(QStringLiteral("%1 at %2").arg(error).arg(i)));
        }
    }

    void everythingMaskedStays()
    {
        EraseScene scene({64, 48}, 4);
        scene.maskAll = true;
        QCOMPARE(erase(scene), EraseResult::Done);
        for (int i = 0; i < scene.count; ++i)
            QVERIFY(cv::norm(scene.result[std::size_t(i)], scene.frame(i), cv::NORM_INF) == 0.0);
    }

    void threadsDoNotMatter()
    {
        std::vector<cv::Mat> first;
        for (const int threads : {1, 2, 5}) {
            cv::setNumThreads(threads == 1 ? 1 : 2);
            EraseScene scene({161, 91}, 14);
            scene.still = true;
            scene.missed = 3;
            EraserOptions options;
            options.threads = threads;
            options.follow = 0.05;
            options.windowFrames = 8;
            options.workingPixels = 100 * 57;
            QCOMPARE(erase(scene, options), EraseResult::Done);
            if (first.empty())
                first = scene.result;
            for (std::size_t i = 0; i < first.size(); ++i)
                QVERIFY(cv::norm(first[i], scene.result[i], cv::NORM_INF) == 0.0);
        }
        cv::setNumThreads(-1);
    }

    void faultsOfSourceAndSink()
    {
        EraseScene unreadable({64, 48}, 9), otherSize({64, 48}, 9), full({64, 48}, 9);
        unreadable.unreadableAt = 5;
        QCOMPARE(erase(unreadable), EraseResult::SourceFailed);
        otherSize.otherSizeAt = 5;
        QCOMPARE(erase(otherSize), EraseResult::SourceFailed);
        full.unwritableAt = 2;
        QCOMPARE(erase(full), EraseResult::SinkFailed);
        QCOMPARE(int(full.result.size()), 3);
    }

    void progressAndCancel()
    {
        EraseScene scene({854, 480}, 12);
        double last = 0.0;
        bool fell = false;
        const auto watch = [&](double progress) {
            fell = fell || progress < last || progress > 1.0;
            last = progress;
            return true;
        };
        EraseScene small({96, 64}, 20);
        QCOMPARE(ObjectEraser().run(small, small, watch), EraseResult::Done);
        QVERIFY(!fell);
        QCOMPARE(last, 1.0);

        // Wherever it stands: the run ends soon after the caller said no.
        for (const double at : {0.0, 0.02, 0.3, 0.5, 0.7}) {
            using Clock = std::chrono::steady_clock;
            Clock::time_point asked;
            const auto goOn = [&](double progress) {
                if (progress < at || asked != Clock::time_point())
                    return asked == Clock::time_point();
                asked = Clock::now();
                return false;
            };
            QCOMPARE(ObjectEraser().run(scene, scene, goOn), EraseResult::Cancelled);
            const std::chrono::duration<double> taken = Clock::now() - asked;
            QVERIFY2(taken.count() < 0.2, qPrintable(QString::number(taken.count())));
        }
    }

    void stills()
    {
        const EraseScene scene({200, 120}, 1);
        const cv::Mat result = eraseFromStill(scene.frame(0), scene.mask(0));
        QCOMPARE(result.size(), scene.size);
        QVERIFY(sameOutside(result, scene.frame(0), grown(scene.mask(0), growOf(scene))));
        // As much contrast as what surrounds it: no smear.
        cv::Scalar mean, inside, outside;
        cv::meanStdDev(result, mean, inside, scene.mask(0));
        cv::meanStdDev(scene.background(0), mean, outside);
        QVERIFY2(inside[0] > 0.6 * outside[0], qPrintable(QString::number(inside[0])));
        QVERIFY(eraseFromStill({}, {}).empty());
        QVERIFY(eraseFromStill(scene.frame(0), scene.mask(0), {}, [](double) {
                    return false;
                }).empty());
    }
};

ZK_TEST_CORE_MAIN(ZkObjectEraserTest)
#include "ZkObjectEraserTest.moc"
