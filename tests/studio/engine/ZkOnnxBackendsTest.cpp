#include "ZkDiscScene.h"
#include "ZkEraseScene.h"

#include <ZkOnnxWriter.h>
#include <ZkTestMain.h>

#include <ZkMatte.h>
#include <backend/ZkOnnxBackends.h>

#include <thread>

using namespace zk::engine;
using zk::test::DiscScene;
using zk::test::EraseScene;
using zk::test::OnnxWriter;
using Kind = ModelProblem::Kind;
using Linear = OnnxWriter::Linear;

Q_DECLARE_METATYPE(ModelProblem::Kind)

namespace {

const cv::Point2d center(150, 80);

// What is a quarter more red than green is the object; the other inputs do not matter.
Linear redNetwork(const std::vector<std::pair<std::string, int>> &others)
{
    Linear network {{{"image", 3}}, "matte", 1, {40, -40, 0}, -10};
    for (const auto &input : others) {
        network.inputs.push_back(input);
        network.weights.resize(network.weights.size() + std::size_t(input.second));
    }
    return network;
}

Linear segmentation()
{
    return redNetwork({{"keep", 1}, {"remove", 1}, {"previous", 1}});
}

Linear tracking()
{
    return redNetwork({{"previous_matte", 1}, {"first_image", 3}});
}

// Dark grey, and a tenth of what it sees.
Linear inpainting()
{
    const std::vector<float> weights {.1f, 0, 0, 0, 0, .1f, 0, 0, 0, 0, .1f, 0};
    return {{{"image", 3}, {"hole", 1}}, "filled", 3, weights, 0.25f, false};
}

// Gives no numbers where the picture has no red at all, and is the same elsewhere.
std::string failingWithoutRed(Linear network)
{
    const std::string output = std::exchange(network.output, "inner");
    std::vector<float> red;
    for (int i = 0; i < network.channels; ++i)
        red.insert(red.end(), {1, 0, 0});
    return OnnxWriter::linear(network)
        .constant("red", {network.channels, 3, 1, 1}, red)
        .node("Conv", {"image", "red"}, "reds", {OnnxWriter::integers("kernel_shape", {1, 1})})
        .node("Div", {"reds", "reds"}, "ones")
        .node("Mul", {"inner", "ones"}, output)
        .output(output, {1, network.channels, 0, 0})
        .file();
}

OnnxModelPtr loaded(const std::string &file)
{
    ModelProblem problem;
    const OnnxModelPtr model = OnnxModel::load(file.data(), file.size(), &problem);
    if (problem)
        qWarning("%d: %s %s", int(problem.kind), problem.tensor.c_str(), problem.found.c_str());
    return model;
}

OnnxModelPtr loaded(const Linear &network)
{
    return loaded(OnnxWriter::linear(network).file());
}

bool areSame(const cv::Mat &a, const cv::Mat &b)
{
    return a.size() == b.size() && cv::norm(a, b, cv::NORM_INF) == 0.0;
}

TrackedFrame step(TrackingBackend *tracker, PreparedFrame *at, const cv::Mat &frame)
{
    *at = tracker->prepare(*at, frame);
    return tracker->advance(*at);
}

} // namespace

class ZkOnnxBackendsTest : public QObject
{
    Q_OBJECT

private slots:
    void whatIsWrongWithAFileIsSaid_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<ModelProblem::Kind>("kind");
        QTest::addColumn<QString>("where");
        const auto add =
            [](const char *name, Kind kind, const char *where, const OnnxWriter &network) {
                QTest::newRow(name) << QByteArray::fromStdString(network.file()) << kind << where;
            };
        const auto renamed = [](Linear network, int input, const char *name) {
            network.inputs[std::size_t(input)].first = name;
            return OnnxWriter::linear(network);
        };
        const auto withOutput = [](const char *output) {
            Linear network = tracking();
            network.output = output;
            return OnnxWriter::linear(network);
        };
        const auto network = [] { return OnnxWriter::linear(segmentation()); };
        Linear wide = segmentation(), halfFixed = wide, raw = tracking();
        wide.inputs[1].second = 3;
        halfFixed.width = 64;
        raw.isSigmoid = false;
        OnnxWriter foreign, flat, pooled = withOutput("x"), endless = withOutput("x");
        foreign.input("photo", {1, 3, 0, 0}).node("Relu", {"photo"}, "x");
        flat.input("hole", {1, 0, 0}).input("image", {1, 3, 0, 0}).node("Relu", {"image"}, "x");
        const auto two = {OnnxWriter::integers("kernel_shape", {2, 2}),
                          OnnxWriter::integers("strides", {2, 2})};
        pooled.node("AveragePool", {"x"}, "matte", two).output("matte", {});
        endless.node("Sub", {"x", "x"}, "zero").node("Div", {"x", "zero"}, "matte");
        const QByteArray good = QByteArray::fromStdString(network().file());

        QTest::newRow("empty") << QByteArray() << Kind::NotOnnx << ": ";
        QTest::newRow("text") << QByteArray("not a network") << Kind::NotOnnx << ": ";
        QTest::newRow("cut off") << good.left(good.size() - 9) << Kind::NotOnnx << ": ";
        add("another purpose", Kind::UnknownRole, ": photo", foreign);
        add("no image",
            Kind::MissingInput,
            "image: picture, keep, remove, previous",
            renamed(segmentation(), 0, "picture"));
        add("unknown input", Kind::UnknownInput, "speed: ", renamed(tracking(), 2, "speed"));
        add("unused", Kind::UnusedInput, "before: ", network().input("before", {1, 3, 0, 0}));
        add("no matte", Kind::MissingOutput, "matte: mask", withOutput("mask"));
        add("bytes",
            Kind::WrongType,
            "after: ",
            network().input("after", {1, 3, 0, 0}, OnnxWriter::Byte));
        add("channels", Kind::WrongShape, "keep: 1x3x?x?", OnnxWriter::linear(wide));
        add("two sizes",
            Kind::WrongShape,
            "after: 1x3x64x64",
            network().input("after", {1, 3, 64, 64}));
        add("one side", Kind::WrongShape, "image: 1x3x?x64", OnnxWriter::linear(halfFixed));
        add("three dimensions", Kind::WrongShape, "hole: 1x?x?", flat);
        add("half the size", Kind::WrongShape, "matte: 1x1x32x48", pooled);
        add("operator",
            Kind::Unsupported,
            "Frobnicate: Can't create layer",
            network().node("Frobnicate", {"sum"}, "x"));
        add("no numbers", Kind::NotFinite, "matte: ", endless.output("matte", {}));
        add("no sigmoid", Kind::OutOfRange, "matte: -14 .. -10", OnnxWriter::linear(raw));
    }
    void whatIsWrongWithAFileIsSaid()
    {
        QFETCH(QByteArray, file);
        QFETCH(ModelProblem::Kind, kind);
        QFETCH(QString, where);
        ModelProblem problem;
        QVERIFY(!OnnxModel::load(file.constData(), std::size_t(file.size()), &problem));
        QCOMPARE(int(problem.kind), int(kind));
        const std::string found = problem.tensor + ": " + problem.found;
        QVERIFY2(QString::fromStdString(found).startsWith(where), found.c_str());
    }

    void rolesShowInTheNames()
    {
        const OnnxModelPtr any = loaded(segmentation());
        QCOMPARE(int(any->role()), int(EngineRole::Segmentation));
        QVERIFY(any->fixedSize().empty() && any->takes("previous") && !any->takes("before"));
        QCOMPARE(int(loaded(inpainting())->role()), int(EngineRole::Inpainting));
        Linear fixed = tracking();
        fixed.width = 160;
        fixed.height = 96;
        QCOMPARE(int(loaded(fixed)->role()), int(EngineRole::Tracking));
        QCOMPARE(loaded(fixed)->fixedSize(), cv::Size(160, 96));
    }

    void segmentsWithTheNetwork_data()
    {
        QTest::addColumn<QSize>("pictures"); // of the network
        QTest::addColumn<int>("scale"); // of the frame
        QTest::newRow("any size") << QSize(0, 0) << 1;
        QTest::newRow("any size, large frame") << QSize(0, 0) << 5;
        QTest::newRow("small and upright") << QSize(120, 200) << 1;
        QTest::newRow("larger than the frame") << QSize(640, 480) << 1;
    }
    void segmentsWithTheNetwork()
    {
        QFETCH(QSize, pictures);
        QFETCH(int, scale);
        Linear network = segmentation();
        network.width = pictures.width();
        network.height = pictures.height();
        const auto segmenter = onnxBackends({loaded(network), {}, {}})->createSegmenter();
        const DiscScene scene(cv::Size(320, 180) * scale, 30.0 * scale);
        cv::Mat frame = scene.frame(center * scale);
        const Scribbles against {scene.stroke({50, 30}), scene.stroke(center * scale)};
        const cv::Mat matte = segmenter->segment(frame, against);
        // Strokes are obeyed whatever the network says, and elsewhere it is the network that says.
        QCOMPARE(cv::countNonZero(matte & against.remove), 0);
        QCOMPARE(cv::countNonZero((matte != 255) & against.keep), 0);
        const cv::Mat free = ~(against.keep | against.remove);
        const double iou = intersectionOverUnion(matte & free, scene.matte(center * scale) & free);
        QVERIFY2(iou > 0.9, qPrintable(QString::number(iou)));
        cv::cvtColor(frame, frame, cv::COLOR_RGB2RGBA);
        QVERIFY(areSame(segmenter->segment(frame, against), matte));
        QVERIFY(segmenter->segment(frame, {{}, against.remove}).empty());
    }

    void everyInputArrives()
    {
        // keep, without what is removed, or previous, or what is red only before, or only after.
        Linear network =
            redNetwork({{"keep", 1}, {"remove", 1}, {"previous", 1}, {"before", 3}, {"after", 3}});
        network.weights = {0, 0, 0, 40, -40, 40, 20, 0, 0, 20, 0, 0};
        network.bias = -10;
        const auto segmenter = onnxBackends({loaded(network), {}, {}})->createSegmenter();
        const auto at = [](int column, int type) {
            cv::Mat picture = cv::Mat::zeros(64, 96, type);
            picture.colRange(16 * column, 16 * column + 16) = cv::Scalar::all(255);
            return picture;
        };
        const Scribbles scribbles {at(0, CV_8U) | at(1, CV_8U), at(1, CV_8U)};
        const cv::Mat matte = segmenter->segment(
            at(5, CV_8UC3), scribbles, at(2, CV_8U), {at(3, CV_8UC3), at(4, CV_8UC3)});
        QVERIFY(areSame(matte >= matteThreshold, ~(at(1, CV_8U) | at(5, CV_8U))));
        QVERIFY(segmenter->looksAtNeighbours());
        const cv::Mat alone = segmenter->segment(at(5, CV_8UC3), scribbles, {}, {cv::Mat(), {}});
        QVERIFY(areSame(alone >= matteThreshold, at(0, CV_8U) | at(5, CV_8U)));
    }

    void tracksWithTheNetwork()
    {
        // The matte of before moves a pixel to the right, where there is anything red.
        Linear network {{{"image", 3}, {"previous_matte", 1}},
                        "matte",
                        1,
                        std::vector<float>(36),
                        -15,
                        true,
                        0,
                        0,
                        3};
        network.weights[4] = 10; // red, here
        network.weights[27 + 3] = 10; // before, to the left
        const auto tracker = onnxBackends({{}, loaded(network), {}})->createTracker();
        const cv::Mat red(60, 100, CV_8UC3, cv::Scalar(255, 0, 0));
        cv::Mat matte = cv::Mat::zeros(red.size(), CV_8U);
        matte(cv::Rect(10, 10, 20, 20)) = 255;
        PreparedFrame at = tracker->prepareFirst(red);
        QVERIFY(!tracker->correct(at, matte)); // not started
        QVERIFY(tracker->start(at, matte));
        QCOMPARE(cv::boundingRect(step(tracker.get(), &at, red).matte >= matteThreshold),
                 cv::Rect(11, 10, 20, 20));
        const TrackedFrame hidden = step(tracker.get(), &at, cv::Mat::zeros(red.size(), CV_8UC3));
        QCOMPARE(hidden.confidence, 0.0);
        QCOMPARE(cv::countNonZero(hidden.matte), 0);
        // It is found again from where it was seen last.
        const TrackedFrame found = step(tracker.get(), &at, red);
        QCOMPARE(cv::boundingRect(found.matte >= matteThreshold), cv::Rect(12, 10, 20, 20));
        QVERIFY(found.confidence > 0.5 && found.confidence <= 1.0);
        QVERIFY(tracker->correct(at, matte));
        QCOMPARE(cv::boundingRect(step(tracker.get(), &at, red).matte >= matteThreshold),
                 cv::Rect(11, 10, 20, 20));
        QVERIFY(tracker->prepare(at, red(cv::Rect(0, 0, 50, 50))).isEmpty());
    }

    void standsAtACut()
    {
        const auto tracker = onnxBackends({{}, loaded(tracking()), {}})->createTracker();
        const DiscScene scene, other({320, 180}, 50.0, {60, 60, 160}, 5);
        PreparedFrame at = tracker->prepareFirst(scene.frame(center));
        QVERIFY(tracker->start(at, scene.matte(center)));
        for (int i = 0; i < 2; ++i) {
            const TrackedFrame cut = step(tracker.get(), &at, other.frame(center));
            QVERIFY(cut.sceneCut && cut.confidence == 0.0);
            QCOMPARE(cv::countNonZero(cut.matte), 0);
        }
        const TrackedFrame back = step(tracker.get(), &at, scene.frame(center));
        QVERIFY(!back.sceneCut && objectArea(back.matte) > 0);
    }

    void makesUpWithTheNetwork()
    {
        EraseScene scene({160, 96}, 6);
        scene.still = true;
        scene.pan = 0;
        const auto eraser = onnxBackends({{}, {}, loaded(inpainting())})->createEraser({});
        QCOMPARE(int(eraser->run(scene, scene)), int(EraseResult::Done));
        for (int i = 0; i < scene.count; ++i) {
            const cv::Mat &result = scene.result[std::size_t(i)];
            QVERIFY(areSame(result.row(0), scene.frame(i).row(0)));
            cv::Scalar mean, deviation;
            cv::meanStdDev(result, mean, deviation, scene.mask(i));
            // Where nothing is seen the network sees black.
            QVERIFY(std::abs(mean[0] - 64) < 3 && std::abs(mean[2] - 64) < 3 && deviation[1] < 3);
        }
    }

    void theBuiltInEngineTakesOver()
    {
        std::vector<EngineRole> told;
        const auto backends = onnxBackends({loaded(failingWithoutRed(segmentation())),
                                            loaded(failingWithoutRed(tracking())),
                                            loaded(failingWithoutRed(inpainting()))},
                                           [&](const BackendFailure &failure) {
                                               QVERIFY(failure.problem.kind == Kind::NotFinite);
                                               told.push_back(failure.role);
                                           });
        const DiscScene scene;
        cv::Mat good = scene.frame(center), bad = scene.frame(center + cv::Point2d(2, 1));
        cv::max(good, cv::Scalar(1, 0, 0), good);
        bad(cv::Rect(0, 0, 4, 4)).setTo(0);
        const Scribbles scribbles {scene.stroke(center), {}};
        const auto segmenter = backends->createSegmenter();
        for (int i = 0; i < 2; ++i)
            QVERIFY(areSame(segmenter->segment(bad, scribbles),
                            InteractiveSegmenter().segment(bad, scribbles)));
        QCOMPARE(int(told.size()), 1);

        const auto tracker = backends->createTracker();
        PreparedFrame at = tracker->prepareFirst(good);
        ObjectTracker expected;
        expected.start(good, scene.matte(center));
        QVERIFY(tracker->start(at, scene.matte(center)));
        for (const cv::Mat &frame : {bad, good})
            QVERIFY(areSame(step(tracker.get(), &at, frame).matte,
                            expected.advance(expected.prepare(expected.current(), frame)).matte));

        EraseScene erased({160, 96}, 4), byBuiltIn({160, 96}, 4);
        erased.still = byBuiltIn.still = true;
        QCOMPARE(int(backends->createEraser({})->run(erased, erased)), int(EraseResult::Done));
        ObjectEraser().run(byBuiltIn, byBuiltIn);
        for (std::size_t i = 0; i < 4; ++i)
            QVERIFY(areSame(erased.result[i], byBuiltIn.result[i]));
        QVERIFY(told
                == std::vector<EngineRole>(
                    {EngineRole::Segmentation, EngineRole::Tracking, EngineRole::Inpainting}));
    }

    void emptyResultsAreLeftToTheBuiltInEngine()
    {
        Linear network = segmentation();
        network.bias = -60;
        const DiscScene scene;
        const Scribbles scribbles {scene.stroke(center), {}};
        const auto segmenter = onnxBackends({loaded(network), {}, {}})->createSegmenter();
        QVERIFY(areSame(segmenter->segment(scene.frame(center), scribbles),
                        InteractiveSegmenter().segment(scene.frame(center), scribbles)));
    }

    void threadsDoNotMatter()
    {
        const auto backends = onnxBackends({loaded(segmentation()), {}, {}});
        const DiscScene scene;
        const auto segmented = [&](int i) {
            const cv::Point2d at = center + cv::Point2d(i, i);
            return backends->createSegmenter()->segment(scene.frame(at), {scene.stroke(at), {}});
        };
        const int before = cv::getNumThreads();
        cv::setNumThreads(1);
        std::vector<cv::Mat> expected, results(4);
        for (int i = 0; i < 4; ++i)
            expected.push_back(segmented(i));
        cv::setNumThreads(2);
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([&, i] { results[std::size_t(i)] = segmented(i); });
        for (std::thread &thread : threads)
            thread.join();
        cv::setNumThreads(before);
        for (std::size_t i = 0; i < 4; ++i)
            QVERIFY(areSame(results[i], expected[i]));
    }
};

ZK_TEST_CORE_MAIN(ZkOnnxBackendsTest)
#include "ZkOnnxBackendsTest.moc"
