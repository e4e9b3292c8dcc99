#include <ZkModelChoice.h>
#include <ZkOnnxWriter.h>
#include <ZkTestMain.h>

#include <QSignalSpy>
#include <QTemporaryDir>

#include <thread>

using namespace zk::engine;
using zk::models::ModelChoice;
using zk::models::ModelFile;
using zk::test::OnnxWriter;

namespace {

constexpr int timeoutMs = 10000;

// Divides by the red of the picture.
std::string dividing()
{
    return OnnxWriter::linear({{{"image", 3}, {"keep", 1}}, "red", 1, {1, 0, 0, 0}, 0, false})
        .node("Div", {"red", "red"}, "matte")
        .output("matte", {})
        .file();
}

} // namespace

class ZkModelChoiceTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const OnnxWriter good = OnnxWriter::linear(
            {{{"image", 3}, {"keep", 1}}, "matte", 1, std::vector<float>(4), 10});
        write(path("good.onnx"), QByteArray::fromStdString(good.file()));
        write(path("dividing.onnx"), QByteArray::fromStdString(dividing()));
        write(path("text.onnx"), "no network");
    }

    void readsInTheBackground()
    {
        ModelChoice choice;
        const QSignalSpy failures(&choice, &ModelChoice::failed);
        choice.readLater(EngineRole::Segmentation, path("good.onnx"));
        choice.readLater(EngineRole::Tracking, path("good.onnx"));
        choice.readLater(EngineRole::Inpainting, path("gone.onnx"));
        QCOMPARE(choice.path(EngineRole::Inpainting), path("gone.onnx"));
        const cv::Mat all = segmented(choice.engine());
        QCOMPARE(cv::countNonZero(all), int(all.total()));
        QCOMPARE(choice.engine(), choice.engine());
        QVERIFY(failures.isEmpty());
        QTRY_COMPARE_WITH_TIMEOUT(failures.size(), 2, timeoutMs);
        QVERIFY(failures[0][0].toString().contains("another purpose (Segmentation)"));
        QVERIFY(failures[1][0].toString().contains(path("gone.onnx") + " cannot be read"));
    }

    void changesWithTheChoice()
    {
        ModelChoice choice;
        QString error;
        QVERIFY(choice.add(path("good.onnx"), &error));
        QVERIFY(!choice.add(path("dividing.onnx"), &error));
        QVERIFY2(error.contains("the same purpose (Segmentation)"), qPrintable(error));
        QVERIFY(!choice.add(path("text.onnx"), &error));
        const EngineBackendsPtr before = choice.engine();
        choice.choose(EngineRole::Segmentation, {});
        QVERIFY(choice.engine() != before);
        QVERIFY(cv::norm(segmented(choice.engine()), segmented(before)) > 0);
    }

    void tellsOnceOfANetworkThatFails()
    {
        auto choice = std::make_unique<ModelChoice>();
        QStringList notices;
        connect(choice.get(), &ModelChoice::failed, [&](const QString &notice) {
            QCOMPARE(QThread::currentThread(), thread());
            notices.append(notice);
        });
        QString error;
        QVERIFY(choice->add(path("dividing.onnx"), &error));
        const EngineBackendsPtr engine = choice->engine();
        std::thread([&] {
            segmented(engine);
            segmented(engine);
        }).join();
        QVERIFY(notices.isEmpty());
        QTRY_COMPARE_WITH_TIMEOUT(notices.size(), 1, timeoutMs);
        QVERIFY2(notices[0].contains("\"matte\" has values that are no numbers"),
                 qPrintable(notices[0]));
        choice->choose(EngineRole::Segmentation, choice->file(EngineRole::Segmentation));
        const EngineBackendsPtr again = choice->engine();
        choice.reset();
        segmented(again); // there is nobody left to tell
    }

private:
    static void write(const QString &name, const QByteArray &bytes)
    {
        QFile file(name);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write a test file");
    }
    // A picture without red, with a stroke.
    static cv::Mat segmented(const EngineBackendsPtr &engine)
    {
        const cv::Mat picture(40, 60, CV_8UC3, cv::Scalar(0, 90, 40));
        cv::Mat stroke = cv::Mat::zeros(picture.size(), CV_8U);
        stroke(cv::Rect(10, 10, 4, 4)) = 255;
        return engine->createSegmenter()->segment(picture, {stroke, {}});
    }
    QString path(const char *name) const { return m_folder.filePath(QLatin1String(name)); }

    QTemporaryDir m_folder;
};

ZK_TEST_CORE_MAIN(ZkModelChoiceTest)
#include "ZkModelChoiceTest.moc"
