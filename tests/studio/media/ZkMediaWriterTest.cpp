// What is in the outputs: pictures, alpha, sound.
#include "WriterBench.h"

#include "ZkTestMain.h"

#include <cmath>

using namespace zk::media;
using namespace zk::test;

namespace {

// The largest difference of a channel along the lowest row.
int largestDifference(const QImage &image, const QImage &wanted, int channel)
{
    const int y = wanted.height() - 1;
    int largest = 0;
    for (int x = 0; x < wanted.width(); ++x) {
        const int a = image.constScanLine(y)[4 * x + channel];
        const int b = wanted.constScanLine(y)[4 * x + channel];
        largest = qMax(largest, qAbs(a - b));
    }
    return largest;
}

} // namespace

class ZkMediaWriterTest : public QObject, private WriterBench
{
    Q_OBJECT

    // An output with the sound of that file.
    bool writeSounding(const QString &target, const QString &source, int frames)
    {
        OutputSettings settings = settingsFor(target, frames);
        settings.audioSourcePath = source;
        return writeWhole(target, settings, frames);
    }

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void suffixesPickTheFormat()
    {
        OutputFormat found {};
        QVERIFY(formatFor("dir.mov/A.WEBM", &found, &m_error));
        QCOMPARE(found, OutputFormat::Vp9Webm);
        QVERIFY(formatFor("d/shot_%4d.png", &found, &m_error));
        QCOMPARE(found, OutputFormat::PngSequence);
        for (const char *unknown : {"a.png", "%05d/a.png", "a.avi", "mov"}) {
            m_error.clear();
            QVERIFY(!formatFor(QLatin1String(unknown), &found, &m_error));
            QVERIFY(m_error.contains(QLatin1String("%05d.png")));
        }
    }

    void videosReadBack_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("colourTolerance");
        QTest::addColumn<int>("alphaTolerance"); // negative: the format has none
        QTest::newRow("mov") << "out.mov" << 2 << 1;
        QTest::newRow("webm") << "out.webm" << 16 << 4;
        QTest::newRow("mkv") << "out.mkv" << 0 << 0;
        QTest::newRow("mp4") << "out.mp4" << 16 << -1;
    }

    void videosReadBack()
    {
        QFETCH(QString, name);
        QFETCH(int, colourTolerance);
        QFETCH(int, alphaTolerance);
        QVERIFY2(writeWhole(path(name), 40), qPrintable(m_error));
        QCOMPARE(everything(), QStringList {name});

        const auto reader = MediaReader::open(path(name), &m_error);
        QVERIFY2(reader, qPrintable(m_error));
        QCOMPARE(reader->info().frameCount, qint64(40));
        QCOMPARE(reader->info().frameRateNum, 30000);
        QCOMPARE(reader->info().frameRateDen, 1001);
        QCOMPARE(reader->info().size, Size);
        QCOMPARE(reader->info().hasAlpha, alphaTolerance >= 0);
        QVERIFY(!reader->info().hasAudio);
        for (const int frame : {0, 39, 17}) {
            const QImage image = reader->frameAt(frame);
            QCOMPARE(numberIn(image), frame);
            for (int channel = 0; channel < 3; ++channel)
                QVERIFY(largestDifference(image, testFrame(frame), channel) <= colourTolerance);
            if (alphaTolerance >= 0)
                QVERIFY(largestDifference(image, testFrame(frame), 3) <= alphaTolerance);
            else
                QCOMPARE(qAlpha(image.pixel(0, Size.height() - 1)), 255);
        }
    }

    void oddSizes_data() { addFormats(); }

    void oddSizes()
    {
        QFETCH(QString, name);
        OutputSettings settings = settingsFor(name);
        settings.size = {101, 57};
        QVERIFY2(writeWhole(path(name), settings, 3), qPrintable(m_error));
        const QString file = name.contains(QLatin1Char('%')) ? "out/00002.png" : name;
        const auto reader = MediaReader::open(path(file), &m_error);
        QVERIFY2(reader, qPrintable(m_error));
        const bool isDoubled = settings.format == OutputFormat::H264Mp4;
        QCOMPARE(reader->info().size, isDoubled ? QSize(102, 58) : settings.size);
        QCOMPARE(reader->info().size, encodedSize(settings.format, settings.size));
        const QImage image = reader->frameAt(2);
        QCOMPARE(numberIn(image), 2);
        if (isDoubled)
            QVERIFY(qAbs(qRed(image.pixel(101, 57)) - qRed(image.pixel(100, 56))) < 24);
    }

    void soundGoesAlong_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("codec");
        const auto row = [](const QString &suffix, const QString &codec) {
            QTest::newRow(qPrintable(suffix)) << "out." + suffix << codec;
        };
        row("mov", "pcm_s16le");
        row("webm", "opus");
        row("mkv", "pcm_s16le");
        row("mp4", "aac");
    }

    // First encoded as the container needs it, then kept from a file that has it already.
    void soundGoesAlong()
    {
        QFETCH(QString, name);
        QFETCH(QString, codec);
        QString source = path("tone.wav");
        QVERIFY(writeTone(source, 3, 0.7));
        for (const char *prefix : {"first-", "second-"}) {
            const QString target = path(QLatin1String(prefix) + name);
            QVERIFY2(writeSounding(target, source, 60), qPrintable(m_error));
            const Sound sound = soundOf(target);
            QCOMPARE(sound.codec, codec);
            QVERIFY2(std::abs(sound.seconds - 2.002) < 0.05,
                     qPrintable(QString::number(sound.seconds)));
            QVERIFY2(std::abs(sound.onset - 0.7) < 0.03, qPrintable(QString::number(sound.onset)));
            QCOMPARE(framesIn(target), qint64(60));
            QVERIFY(MediaReader::open(target, &m_error)->info().hasAudio);
            source = target;
        }
        QVERIFY(!writeSounding(path(name), path("missing.wav"), 1));
        QVERIFY2(m_error.contains(QLatin1String("missing.wav")), qPrintable(m_error));
    }

    // From a container whose sound has to be decoded first, at another rate, and a source without
    // sound.
    void soundStaysInStep()
    {
        QVERIFY(writeTone(path("tone.wav"), 3, 1.3));
        QVERIFY2(writeSounding(path("lossy.webm"), path("tone.wav"), 90), qPrintable(m_error));
        QVERIFY2(writeSounding(path("a.mp4"), path("lossy.webm"), 90), qPrintable(m_error));
        QVERIFY(std::abs(soundOf(path("a.mp4")).onset - 1.3) < 0.03);

        QVERIFY2(writeSounding(path("silent.mkv"), QString(), 10), qPrintable(m_error));
        QVERIFY2(writeSounding(path("b.mp4"), path("silent.mkv"), 10), qPrintable(m_error));
        QCOMPARE(soundOf(path("b.mp4")).codec, QString());
    }
};

ZK_TEST_CORE_MAIN(ZkMediaWriterTest)
#include "ZkMediaWriterTest.moc"
