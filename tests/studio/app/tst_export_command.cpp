// A saved project is exported, by the program and by the task that dialogs use.
#include "CommandBench.h"
#include "ZkExportOptions.h"
#include "ZkExporter.h"
#include "ZkMediaReader.h"
#include "ZkSampleClip.h"
#include "project/ZkProject.h"
#include "timeline/ZkStudioTimeline.h"

#include <QApplication>
#include <QSignalSpy>

#include <cstring>

using namespace zk::app;

namespace {

constexpr int frames = 12;

// Makes the true mattes the clip's cutout.
bool cutOut(const zk::datamodel::ProjectClip *clip, const zk::media::SampleClip &sample)
{
    IZkSmartKeyingEditController *controller = createSmartKeyingEditController();
    qint64 start = 0;
    bool isGood = controller->initialise(clip->clip(), nullptr, &start, ZKSMARTKEYING::SmartCutout);
    if (isGood)
        controller->editClip()->smartKeyingService(ZKSMARTKEYING::SmartCutout)->setEnabled(true);
    for (int frame = 0; frame < frames && isGood; ++frame)
        isGood = controller->setMatte(frame, sample.matte(frame));
    controller->apply();
    isGood = isGood && QTest::qWaitFor([clip] { return clip->isCutOut(); }, 10000);
    releaseSmartKeyingEditController(controller);
    return isGood;
}

} // namespace

class TestExportCommand : public QObject, private zk::test::CommandBench
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const zk::media::SampleClip sample({QSize(160, 90), frames, 24});
        QString error;
        QVERIFY2(sample.write(file("clip.mkv"), file("mattes"), &error), qPrintable(error));
        QVERIFY(sample.frame(0).save(file("still.png")));
        const qint64 media = m_project.importMedia(file("clip.mkv"), &error);
        QVERIFY2(cutOut(m_project.addClip(media), sample), "no cutout");
        QVERIFY(m_project.save(file("one.zkproj"), &error));
        QVERIFY(m_project.addClip(m_project.importMedia(file("still.png"), &error)));
        QVERIFY(m_project.save(file("two.zkproj"), &error));
        zk::datamodel::Project offline;
        QVERIFY(QFile::copy(file("still.png"), file("gone.png")));
        offline.addClip(offline.importMedia(file("gone.png"), &error));
        QVERIFY(offline.save(file("offline.zkproj"), &error) && QFile::remove(file("gone.png")));
    }

    void writesTheCutoutThatWasSaved()
    {
        QCOMPARE(exported(QStringLiteral("one.zkproj --json -o cut.mkv")), 0);
        QVERIFY2(m_out.contains("\"percent\":100") && m_out.trimmed().endsWith("\"done\"}"), m_out);
        QCOMPARE(exported(QStringLiteral("two.zkproj --clip 1 --matte -o written/%05d.png")), 0);
        QString error;
        const auto reader = zk::media::MediaReader::open(file("cut.mkv"), &error);
        QVERIFY2(reader, qPrintable(error));
        QCOMPARE(reader->info().frameCount, qint64(frames));
        for (int frame = 0; frame < frames; ++frame) {
            const QString name = QStringLiteral("/%1.png").arg(frame, 5, 10, QLatin1Char('0'));
            const QImage truth = grey(QImage(file("mattes") + name));
            QCOMPARE(grey(QImage(file("written") + name)), truth);
            const QImage alpha = reader->frameAt(frame).convertToFormat(QImage::Format_Alpha8);
            for (int y = 0; y < truth.height(); ++y)
                QVERIFY(!std::memcmp(alpha.constScanLine(y), truth.constScanLine(y), 160));
        }
    }

    void givesEveryClipAFile()
    {
        QVERIFY(QDir(m_folder.path()).mkdir(QStringLiteral("all")));
        QCOMPARE(exported(QStringLiteral(
                     "two.zkproj --format mp4 --background #204060 -o all -o all/n%02d.webm")),
                 0);
        QCOMPARE(QDir(file("all")).entryList(QDir::Files),
                 QStringList({"clip-01.mp4", "n01.webm", "n02.webm", "still-02.mp4"}));

        ExportOptions options;
        QStringList paths;
        QString error;
        options.outputs = QStringList {"a/%02d/%05d.png", "b/%05d.png", "c%03d.mov"};
        QVERIFY(options.outputsFor(7, QStringLiteral("x"), 1, &paths, &error));
        QCOMPARE(paths, QStringList({"a/07/%05d.png", "b/%05d.png", "c007.mov"}));
        QVERIFY(
            !options.outputsFor(7, QStringLiteral("x"), 2, &paths, &error)); // "b" has no number
    }

    void explainsWhatIsWrong_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<ExitCode>("code");
        const auto row = [](const char *text, const char *arguments, ExitCode code) {
            QTest::newRow(text) << QString::fromLatin1(arguments) << code;
        };
        row("exactly one project", "-o bad/out.mov", ExitCode::Usage);
        row("say where", "two.zkproj", ExitCode::Usage);
        row("number of a clip", "two.zkproj --clip 0 -o bad/out.mov", ExitCode::Usage);
        row("there is no clip 3", "two.zkproj --clip 3 -o bad/out.mov", ExitCode::Usage);
        row("name with %02d", "two.zkproj -o bad/out.mov", ExitCode::Usage);
        row("--format", "two.zkproj --format avi -o bad", ExitCode::Usage);
        row("overwrite", "two.zkproj --clip 1 -o clip.mkv", ExitCode::Usage);
        row("does not exist", "none.zkproj -o bad/out.mov", ExitCode::BadInput);
        row("not a project", "clip.mkv -o bad/out.mov", ExitCode::BadInput);
        row("is missing", "offline.zkproj -o bad/out.mov", ExitCode::BadInput);
        row("folder", "one.zkproj -o none/out.mov", ExitCode::BadOutput);
    }
    void explainsWhatIsWrong()
    {
        QFETCH(QString, arguments);
        QFETCH(ExitCode, code);
        QDir(m_folder.path()).mkdir(QStringLiteral("bad"));
        QCOMPARE(exported(arguments), int(code));
        QVERIFY2(m_errors.contains(QTest::currentDataTag()), m_errors.constData());
        QVERIFY(everythingIn(file("bad")).isEmpty());
    }

    void runsInAThreadAndStops()
    {
        const zk::datamodel::RenderSnapshot snapshot(*m_project.clipAt(0)->timeline());
        ExportSettings settings;
        settings.outputs = QStringList {file("task/out.mkv")};
        QVERIFY(QDir(m_folder.path()).mkdir(QStringLiteral("task")));
        ExportTask task;
        QSignalSpy finished(&task, &ExportTask::finished);
        QSignalSpy progress(&task, &ExportTask::progress);
        connect(&task, &ExportTask::progress, &task, &ExportTask::cancel);
        QVERIFY(task.start(snapshot, settings) && !task.start(snapshot, settings));
        task.cancel();
        QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, 10000);
        QCOMPARE(finished.at(0).at(0).value<ExportOutcome>().code, ExitCode::Interrupted);
        QVERIFY(everythingIn(file("task")).isEmpty());

        task.disconnect(&task);
        progress.clear();
        QVERIFY(!task.isRunning() && task.start(snapshot, settings));
        QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 2, 10000);
        const auto outcome = finished.at(1).at(0).value<ExportOutcome>();
        QVERIFY2(outcome.code == ExitCode::Success, qPrintable(outcome.message));
        QCOMPARE(outcome.written, settings.outputs);
        QCOMPARE(progress.count(), frames);
        QCOMPARE(progress.last().at(0).toInt(), 100);
        QCOMPARE(progress.last().at(1).toLongLong(), qint64(0)); // ms left
    }

private:
    static QImage grey(const QImage &image)
    {
        return image.convertToFormat(QImage::Format_Grayscale8);
    }
    int exported(const QString &arguments)
    {
        return run((QStringLiteral("export ") + arguments).split(QLatin1Char(' ')));
    }

    zk::datamodel::Project m_project;
};

ZK_TEST_MAIN(TestExportCommand)
#include "tst_export_command.moc"
