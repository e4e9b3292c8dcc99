// What erase tasks make: the object is gone, everything else is the source's.
#include "EraseBench.h"
#include "ZkEraseQueue.h"
#include "ZkTestMain.h"

#include <QPainter>

using namespace zk;
using erasing::EraseTask;
using test::psnr;

namespace {

constexpr int frameCount = 16;
const QSize frameSize(160, 120);

// The mask and what around it the eraser may change: 1 % of the height everywhere, 2 % below for shadows,
// and 4 % where something moves along.
QImage grown(const QImage &matte)
{
    constexpr int reach = 8;
    QImage result(matte.size(), QImage::Format_Grayscale8);
    result.fill(0);
    QPainter painter(&result);
    for (int y = 0; y < matte.height(); ++y) {
        for (int x = 0; x < matte.width(); ++x) {
            if (matte.constScanLine(y)[x] > 0)
                painter.fillRect(QRect(x - reach, y - reach, 2 * reach + 1, 2 * reach + 1),
                                 Qt::white);
        }
    }
    return result;
}

} // namespace

class ZkEraseTaskTest : public QObject, private test::EraseBench
{
    Q_OBJECT

    std::unique_ptr<media::SampleClip> m_sample;

private Q_SLOTS:
    void initTestCase() { m_sample = writeSample("clip.mkv", frameSize, frameCount); }

    void erasesTheObjectAndNothingElse_data()
    {
        QTest::addColumn<QString>("output");
        QTest::addColumn<bool>("isForEditing");
        QTest::addColumn<double>("leastOutside"); // dB
        QTest::addColumn<bool>("hasSameSound"); // packet by packet
        QTest::newRow("lossless") << "lossless/out.mkv" << false << 99.0 << true;
        QTest::newRow("for editing") << "editing/out" << true << 38.0 << true;
        QTest::newRow("mp4") << "mp4/out.mp4" << false << 28.0 << false;
        QTest::newRow("pictures") << "pictures/%05d.png" << false << 99.0 << false;
    }
    void erasesTheObjectAndNothingElse()
    {
        QFETCH(QString, output);
        QFETCH(bool, isForEditing);
        QFETCH(double, leastOutside);
        QFETCH(bool, hasSameSound);
        const auto source = media::MediaReader::open(path("clip.mkv"), &m_error);
        erasing::EraseJob job = jobFor("clip.mkv", *m_sample, output);
        if (isForEditing)
            job.output = erasing::EraseOutput::forEditing(path(output), source->info());
        const auto task = taskFor(job);
        QSignalSpy progress(task.get(), &EraseTask::progress);
        QCOMPARE(run(task.get()), EraseTask::Result::Succeeded);
        QCOMPARE(m_lastPercent, 100);
        for (int i = 1; i < progress.size(); ++i)
            QVERIFY(progress.at(i).at(0).toInt() >= progress.at(i - 1).at(0).toInt());

        const bool isSequence = output.endsWith(".png");
        QCOMPARE(filesIn(QFileInfo(output).path()).size(), isSequence ? frameCount : 1);
        std::unique_ptr<media::MediaReader> result;
        if (!isSequence) {
            result = media::MediaReader::open(job.output.path, &m_error);
            QVERIFY2(result, qPrintable(m_error));
            QCOMPARE(result->info().size, frameSize);
            QCOMPARE(result->info().frameCount, qint64(frameCount));
            QCOMPARE(result->info().frameRateNum, 24);
            QVERIFY(result->info().hasAudio);
            const test::Sound sound = test::soundOf(job.output.path);
            const test::Sound before = test::soundOf(path("clip.mkv"));
            QCOMPARE(sound.packets == before.packets, hasSameSound);
            QVERIFY(qAbs(sound.seconds - before.seconds) < 0.05);
        }
        double unerased = 0;
        double erased = 0;
        for (int i = 0; i < frameCount; ++i) {
            const QString name =
                path(output).replace("%05d", QString("%1").arg(i, 5, 10, QChar('0')));
            const QImage frame = isSequence ? QImage(name) : result->frameAt(i);
            const QImage matte = m_sample->matte(i);
            const double outside = psnr(frame, source->frameAt(i), grown(matte), false);
            QVERIFY2(outside >= leastOutside, qPrintable(QString::number(outside)));
            erased += psnr(frame, m_sample->background(i), matte, true) / frameCount;
            unerased += psnr(source->frameAt(i), m_sample->background(i), matte, true) / frameCount;
        }
        QVERIFY2(erased > unerased + 4, qPrintable(QString("%1 %2").arg(erased).arg(unerased)));
    }

    void keepsOddSizesRatesAndColours_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QString>("matrix");
        QTest::addColumn<QString>("range");
        const auto row = [](const char *name, QSize size, const QString &matrix, bool isFull) {
            QTest::newRow(name) << size << matrix << QString(isFull ? "pc" : "tv");
        };
        row("odd", {101, 75}, "smpte170m", false);
        row("full range", {96, 64}, "bt709", true);
        row("halved colour", {96, 64}, "smpte170m", false);
        row("tiny", {16, 16}, "bt470bg", false);
    }
    void keepsOddSizesRatesAndColours()
    {
        QFETCH(QSize, size);
        QFETCH(QString, matrix);
        QFETCH(QString, range);
        const QByteArray matrixName = matrix.toLatin1();
        const QByteArray rangeName = range.toLatin1();
        test::ClipSpec spec;
        spec.size = size;
        spec.frames = 5;
        spec.frameRateNum = 30000;
        spec.frameRateDen = 1001;
        spec.pixelFormat = matrix == "smpte170m" && size.width() % 2 == 0 ? "yuv420p" : "yuv444p";
        spec.matrix = matrixName.constData();
        spec.range = rangeName.constData();
        const QString clip = QString::fromLatin1(QTest::currentDataTag()) + ".mkv";
        QVERIFY(test::writeClip(path(clip), spec));
        const auto source = media::MediaReader::open(path(clip), &m_error);
        erasing::EraseJob job = jobFor(clip, *m_sample, "colours/out.mkv");
        QImage mask(size, QImage::Format_Grayscale8);
        mask.fill(0);
        QPainter(&mask).fillRect(QRect(4, 4, 6, 6), Qt::white);
        job.masks = QVector<datamodel::EncodedMatte>(5, datamodel::EncodedMatte(mask));
        job.masks[2] = datamodel::EncodedMatte(); // this frame stays as it is
        job.output = erasing::EraseOutput::forEditing(path("colours/" + clip), source->info());
        QCOMPARE(run(job), EraseTask::Result::Succeeded);
        const auto result = media::MediaReader::open(job.output.path, &m_error);
        QVERIFY2(result, qPrintable(m_error));
        QCOMPARE(result->info().size, size);
        QCOMPARE(result->info().frameRateNum, 30000);
        QCOMPARE(test::colourTagsOf(job.output.path), test::colourTagsOf(path(clip)));
        QVERIFY(psnr(result->frameAt(2), source->frameAt(2), mask, false) > 40);
        QVERIFY(psnr(result->frameAt(3), source->frameAt(3), grown(mask), false) > 30);
    }

    // Sound and pictures of a stretch stay in step.
    void erasesInAStretchOfTheFile()
    {
        QVERIFY(test::writeTone(path("tone.wav"), 2, 1.0));
        media::OutputSettings settings;
        settings.format = media::OutputFormat::H264Mkv;
        settings.size = frameSize;
        settings.frameRateNum = 8;
        settings.audioSourcePath = path("tone.wav");
        const auto writer = media::MediaWriter::create(path("late.mkv"), settings, &m_error);
        for (int i = 0; i < frameCount; ++i)
            QVERIFY(writer->write(m_sample->frame(i), &m_error));
        QVERIFY2(writer->finish(&m_error), qPrintable(m_error));
        erasing::EraseJob job = jobFor("late.mkv", *m_sample, "stretch/out.mkv");
        job.inFrame = 5;
        job.masks = job.masks.mid(5, 8);
        QCOMPARE(run(job), EraseTask::Result::Succeeded);
        const auto result = media::MediaReader::open(job.output.path, &m_error);
        QCOMPARE(result->info().frameCount, qint64(8));
        const auto source = media::MediaReader::open(path("late.mkv"), &m_error);
        QVERIFY(psnr(result->frameAt(0), source->frameAt(5), grown(m_sample->matte(5)), false)
                > 99);
        const test::Sound sound = test::soundOf(job.output.path);
        QVERIFY2(qAbs(sound.onset - (1.0 - 5 / 8.0)) < 0.06,
                 qPrintable(QString::number(sound.onset)));
        QVERIFY2(qAbs(sound.seconds - 1.0) < 0.15, qPrintable(QString::number(sound.seconds)));
    }

    void erasesInPicturesWithTransparency()
    {
        QImage still = m_sample->frame(0);
        QPainter painter(&still);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(QRect(0, 0, 80, 120), Qt::transparent);
        painter.fillRect(QRect(20, 40, 20, 20), Qt::red); // on nothing
        painter.fillRect(QRect(110, 80, 20, 20), Qt::red); // on the landscape
        painter.end();
        QVERIFY(still.save(path("still.png")));
        QImage mask(frameSize, QImage::Format_Grayscale8);
        mask.fill(0);
        QPainter masked(&mask);
        masked.fillRect(QRect(20, 40, 20, 20), Qt::white);
        masked.fillRect(QRect(110, 80, 20, 20), Qt::white);
        masked.end();
        erasing::EraseJob job = jobFor("still.png", *m_sample, "still/out.png");
        job.masks = {datamodel::EncodedMatte(mask)};
        QVERIFY(erasing::EraseOutput::forPath(path("still/out.png"), 1, &job.output, &m_error));
        QCOMPARE(run(job), EraseTask::Result::Succeeded);
        QCOMPARE(filesIn("still"), QStringList("out.png"));
        const QImage result(path("still/out.png"));
        QCOMPARE(result.size(), frameSize);
        QCOMPARE(qAlpha(result.pixel(30, 50)), 0);
        QCOMPARE(qAlpha(result.pixel(120, 90)), 255);
        const QColor filled = result.pixelColor(120, 90);
        QVERIFY(filled.red() < 240 || filled.green() > 40);
        QCOMPARE(result.pixel(150, 10), still.pixel(150, 10));
    }

    // There is nothing to take from: defined results, no crash.
    void endsWellWhereNothingIsRevealed_data()
    {
        QTest::addColumn<int>("frames");
        QTest::addColumn<QRect>("hole");
        QTest::newRow("everything") << 4 << QRect(QPoint(), frameSize);
        QTest::newRow("never moves") << 6 << QRect(50, 40, 40, 40);
        QTest::newRow("one frame") << 1 << QRect(50, 40, 40, 40);
        QTest::newRow("nothing") << 3 << QRect();
    }
    void endsWellWhereNothingIsRevealed()
    {
        QFETCH(int, frames);
        QFETCH(QRect, hole);
        const QString clip = QString::fromLatin1(QTest::currentDataTag()) + ".mkv";
        const auto sample = writeSample(clip, frameSize, frames);
        erasing::EraseJob job = jobFor(clip, *sample, "revealed/out.mkv");
        QImage mask(frameSize, QImage::Format_Grayscale8);
        mask.fill(0);
        if (!hole.isNull())
            QPainter(&mask).fillRect(hole, Qt::white);
        job.masks.fill(datamodel::EncodedMatte(mask));
        QCOMPARE(run(job), EraseTask::Result::Succeeded);
        const auto result = media::MediaReader::open(job.output.path, &m_error);
        QCOMPARE(result->info().frameCount, qint64(frames));
        const QImage last = result->frameAt(frames - 1);
        QVERIFY(hole.isNull() || hole.contains(0, 0)
                || psnr(last, sample->frame(frames - 1), mask, true) < 50);
        QVERIFY(psnr(last, sample->frame(frames - 1), grown(mask), false)
                >= (hole.contains(0, 0) ? 0 : 99));
    }

    void goesOnWithoutItsNetwork()
    {
        erasing::EraseJob job = jobFor("clip.mkv", *m_sample, "network/out.mkv");
        job.masks = job.masks.mid(0, 3);
        job.modelPath = path("gone.onnx");
        const auto task = taskFor(job);
        const QSignalSpy notes(task.get(), &EraseTask::noted);
        QCOMPARE(run(task.get()), EraseTask::Result::Succeeded);
        QCOMPARE(notes.size(), 1);
        QVERIFY(notes.at(0).at(0).toString().contains("gone.onnx cannot be read"));
    }

    void tasksQueue()
    {
        erasing::EraseQueue queue;
        QStringList order;
        std::vector<std::unique_ptr<EraseTask>> tasks;
        for (const QString &name : QStringList {"a", "b", "c", "d"}) {
            tasks.push_back(taskFor(jobFor("clip.mkv", *m_sample, "queue/" + name + ".mkv")));
            connect(tasks.back().get(), &EraseTask::finished, this, [&order, name](auto result) {
                order.append(name + QString::number(int(result)));
            });
            queue.add(tasks.back().get());
        }
        QVERIFY(tasks[0]->hasStarted() && !tasks[1]->hasStarted());
        tasks[1]->cancel();
        tasks[2].reset();
        QTRY_COMPARE_WITH_TIMEOUT(queue.tasks().size(), 0, test::patienceMs);
        QCOMPARE(order, (QStringList {"b2", "a0", "d0"}));
        QCOMPARE(filesIn("queue"), (QStringList {"a.mkv", "d.mkv"}));
    }
};

ZK_TEST_MAIN(ZkEraseTaskTest)
#include "ZkEraseTaskTest.moc"
