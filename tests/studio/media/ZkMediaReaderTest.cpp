#include "ZkTestMain.h"

#include "ZkMediaReader.h"
#include "ZkMediaWriter.h"
#include "ZkTestClips.h"

#include <QTemporaryDir>

#include <random>
#include <thread>

using namespace zk::media;
using zk::test::ClipSpec;
using zk::test::numberedImage;
using zk::test::numberIn;
using zk::test::writeClip;

Q_DECLARE_METATYPE(zk::test::ClipSpec)

namespace {

std::unique_ptr<MediaReader> openOrFail(const QString &path)
{
    QString error;
    std::unique_ptr<MediaReader> reader = MediaReader::open(path, &error);
    if (!reader)
        QTest::qFail(qPrintable(error), __FILE__, __LINE__);
    return reader;
}

bool truncateFile(const QString &path, double share)
{
    QFile file(path);
    return file.resize(qint64(double(file.size()) * share));
}

} // namespace

class ZkMediaReaderTest : public QObject
{
    Q_OBJECT

private slots:
    void everyOrderGivesTheSameFrames_data();
    void everyOrderGivesTheSameFrames();
    void longClipIsExactAtItsEnd();
    void variableRateIsConformed();
    void showsTurnedPicturesUpright_data();
    void showsTurnedPicturesUpright();
    void pixelsBecomeSquare();
    void oddSizesStay_data();
    void oddSizesStay();
    void animatedGifHasAllItsFrames();
    void stillLastsAsLongAsAsked();
    void largePictures();
    void soundDoesNotChangeTheLength();
    void refusesOutOfRangeFrames();
    void refusesBadFiles_data();
    void refusesBadFiles();
    void namesAreNotInterpreted();
    void readersWorkSideBySide();

private:
    QString path(const char *name) const { return m_folder.filePath(QLatin1String(name)); }

    QTemporaryDir m_folder;
};

void ZkMediaReaderTest::everyOrderGivesTheSameFrames_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<ClipSpec>("spec");
    ClipSpec spec;
    spec.frames = 200;
    QTest::newRow("mp4, one key frame, reordered") << path("long.mp4") << spec;
    QTest::newRow("mkv") << path("long.mkv") << spec;
    QTest::newRow("transport stream") << path("long.ts") << spec;
    QTest::newRow("avi without time stamps") << path("long.avi") << spec;
    QTest::newRow("bare stream") << path("long.h264") << spec;
    spec.frameRateNum = 30000;
    spec.frameRateDen = 1001;
    spec.keyInterval = 48;
    QTest::newRow("29.97") << path("ntsc.mov") << spec;
    spec.reorderedFrames = 0;
    spec.encoder = "libvpx-vp9";
    QTest::newRow("webm") << path("vp9.webm") << spec;
    spec.encoder = "mpeg2video";
    spec.keyInterval = 15;
    spec.reorderedFrames = 2;
    QTest::newRow("program stream") << path("dvd.mpg") << spec;
    spec.encoder = "mjpeg";
    spec.pixelFormat = "yuvj420p";
    spec.reorderedFrames = 0;
    QTest::newRow("avi of key frames") << path("camera.avi") << spec;
    spec = ClipSpec();
    spec.frames = 1;
    QTest::newRow("one frame") << path("one.mp4") << spec;
}

void ZkMediaReaderTest::everyOrderGivesTheSameFrames()
{
    QFETCH(QString, file);
    QFETCH(ClipSpec, spec);
    QVERIFY(writeClip(file, spec));
    const auto reader = openOrFail(file);
    QVERIFY(reader);
    QCOMPARE(reader->info().frameCount, qint64(spec.frames));
    QVERIFY(!reader->info().isVariableRate);
    if (spec.frames > 1 && !file.endsWith(QLatin1String(".h264")))
        QCOMPARE(reader->info().frameRate(), double(spec.frameRateNum) / spec.frameRateDen);

    for (int i = 0; i < spec.frames; ++i)
        QCOMPARE(numberIn(reader->frameAt(i)), i);
    std::mt19937 random(7);
    for (int i = 0; i < 40; ++i) {
        const int wanted = int(random() % unsigned(spec.frames));
        QCOMPARE(numberIn(reader->frameAt(wanted)), wanted);
    }
    for (int i = spec.frames - 1; i >= qMax(0, spec.frames - 30); --i)
        QCOMPARE(numberIn(reader->frameAt(i)), i);

    const auto fresh = openOrFail(file);
    QCOMPARE(numberIn(fresh->frameAt(spec.frames - 1)), spec.frames - 1);
}

// More packets than the probe reads from the start.
void ZkMediaReaderTest::longClipIsExactAtItsEnd()
{
    ClipSpec spec;
    spec.size = {64, 16};
    spec.frames = 2600;
    spec.frameRateNum = 24000;
    spec.frameRateDen = 1001;
    for (const char *name : {"film.mp4", "film.mkv", "film.ts"}) {
        QVERIFY(writeClip(path(name), spec));
        const auto reader = openOrFail(path(name));
        QVERIFY(reader);
        QCOMPARE(reader->info().frameCount, qint64(2600));
        QVERIFY(!reader->info().isVariableRate);
        for (const int frame : {2599, 0, 2100, 2100, 1300})
            QCOMPARE(numberIn(reader->frameAt(frame)), frame % 256);
    }
}

void ZkMediaReaderTest::variableRateIsConformed()
{
    ClipSpec spec;
    spec.times = {0, 1, 2, 5, 6, 10, 11, 12, 13, 20};
    spec.reorderedFrames = 0;
    spec.frames = spec.times.size();
    QVERIFY(writeClip(path("variable.mp4"), spec));
    const auto reader = openOrFail(path("variable.mp4"));
    QVERIFY(reader);
    QVERIFY(reader->info().isVariableRate);
    QCOMPARE(reader->info().frameRate(), 25.0);
    QCOMPARE(reader->info().frameCount, qint64(21));
    for (int frame = 20; frame >= 0; --frame) {
        const auto next = std::upper_bound(spec.times.cbegin(), spec.times.cend(), frame);
        QCOMPARE(numberIn(reader->frameAt(frame)), int(next - spec.times.cbegin()) - 1);
    }
}

void ZkMediaReaderTest::showsTurnedPicturesUpright_data()
{
    QTest::addColumn<int>("rotation");
    QTest::newRow("90") << 90;
    QTest::newRow("180") << 180;
    QTest::newRow("270") << 270;
}

void ZkMediaReaderTest::showsTurnedPicturesUpright()
{
    QFETCH(int, rotation);
    ClipSpec spec;
    spec.frames = 12;
    spec.rotation = rotation;
    QVERIFY(writeClip(path("turned.mp4"), spec));
    const auto reader = openOrFail(path("turned.mp4"));
    QVERIFY(reader);
    QCOMPARE(reader->info().rotation, rotation);
    QCOMPARE(reader->info().size, rotation == 180 ? spec.size : spec.size.transposed());
    const QImage image = reader->frameAt(11);
    QCOMPARE(image.size(), reader->info().size);
    QCOMPARE(numberIn(image.transformed(QTransform().rotate(-rotation))), 11);
}

void ZkMediaReaderTest::pixelsBecomeSquare()
{
    ClipSpec spec;
    spec.size = {180, 144};
    spec.pixelAspectNum = 64;
    spec.pixelAspectDen = 45;
    QVERIFY(writeClip(path("wide.mp4"), spec));
    const auto reader = openOrFail(path("wide.mp4"));
    QVERIFY(reader);
    QCOMPARE(reader->info().size, QSize(256, 144));
    QCOMPARE(reader->frameAt(30).size(), QSize(256, 144));
    QCOMPARE(numberIn(reader->frameAt(30)), 30);
}

void ZkMediaReaderTest::oddSizesStay_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QSize>("size");
    QTest::newRow("853 x 479") << path("odd.mkv") << QSize(853, 479);
    QTest::newRow("narrow") << path("narrow.mkv") << QSize(17, 31);
    QTest::newRow("webm") << path("odd.webm") << QSize(321, 181);
}

void ZkMediaReaderTest::oddSizesStay()
{
    QFETCH(QString, file);
    QFETCH(QSize, size);
    ClipSpec spec;
    spec.size = size;
    spec.frames = 5;
    spec.encoder = file.endsWith(QLatin1String("webm")) ? "libvpx-vp9" : "ffv1";
    QVERIFY(writeClip(file, spec));
    const auto reader = openOrFail(file);
    QVERIFY(reader);
    QCOMPARE(reader->info().size, size);
    QCOMPARE(reader->frameAt(4).size(), size);
    QCOMPARE(reader->frameAt(4).format(), QImage::Format_RGBA8888);
    QCOMPARE(numberIn(reader->frameAt(4)), 4);
}

void ZkMediaReaderTest::animatedGifHasAllItsFrames()
{
    ClipSpec spec;
    spec.frames = 15;
    spec.frameRateNum = 10;
    spec.encoder = "gif";
    spec.pixelFormat = "rgb8";
    QVERIFY(writeClip(path("moving.gif"), spec));
    const auto reader = openOrFail(path("moving.gif"));
    QVERIFY(reader);
    QVERIFY(reader->info().isAnimatedGif);
    QVERIFY(!reader->info().isStill);
    QCOMPARE(reader->info().frameRate(), 10.0);
    QCOMPARE(reader->info().frameCount, qint64(15));
    for (const int frame : {0, 1, 14, 3, 7})
        QCOMPARE(numberIn(reader->frameAt(frame)), frame);
}

void ZkMediaReaderTest::stillLastsAsLongAsAsked()
{
    QImage image = numberedImage(77, {50, 30});
    image.setPixelColor(3, 4, QColor(10, 20, 30, 40));
    for (const char *name : {"still.png", "still.jpg", "a picture.bin"}) {
        QVERIFY(image.save(path(name), QByteArray(name).endsWith("jpg") ? "JPG" : "PNG"));
        QString error;
        const auto reader = MediaReader::open(path(name), &error, {10, 30000, 1001});
        QVERIFY2(reader, qPrintable(error));
        QVERIFY(reader->info().isStill);
        QCOMPARE(reader->info().frameCount, qint64(10));
        QCOMPARE(reader->info().frameRateNum, 30000);
        QCOMPARE(numberIn(reader->frameAt(9)), 77);
        QCOMPARE(reader->info().hasAlpha, !QByteArray(name).endsWith("jpg"));
        if (reader->info().hasAlpha)
            QCOMPARE(reader->frameAt(5).pixelColor(3, 4), QColor(10, 20, 30, 40));
        QVERIFY(reader->frameAt(10).isNull());
    }
    QCOMPARE(MediaReader::open(path("still.png"), nullptr)->info().frameCount, qint64(125));
}

void ZkMediaReaderTest::largePictures()
{
    ClipSpec spec;
    spec.size = {3840, 2160};
    spec.frames = 3;
    QVERIFY(writeClip(path("large.mp4"), spec));
    const auto reader = openOrFail(path("large.mp4"));
    QVERIFY(reader);
    QCOMPARE(reader->frameAt(2).size(), spec.size);
    QCOMPARE(numberIn(reader->frameAt(2)), 2);
}

void ZkMediaReaderTest::soundDoesNotChangeTheLength()
{
    QVERIFY(writeClip(path("silent.mp4"), ClipSpec()));
    QVERIFY(!openOrFail(path("silent.mp4"))->info().hasAudio);

    // The sound of a video may last longer than its pictures: here it is put in a file by itself first.
    QVERIFY(zk::test::writeTone(path("tone.wav"), 2));
    OutputSettings settings;
    settings.size = {160, 64};
    settings.audioSourcePath = path("tone.wav");
    QString error;
    const auto writer = MediaWriter::create(path("sounding.mov"), settings, &error);
    QVERIFY2(writer, qPrintable(error));
    for (int i = 0; i < 12; ++i)
        QVERIFY(writer->write(numberedImage(i, settings.size), &error));
    QVERIFY(writer->finish(&error));
    const auto reader = openOrFail(path("sounding.mov"));
    QVERIFY(reader->info().hasAudio);
    QCOMPARE(reader->info().frameCount, qint64(12));
}

void ZkMediaReaderTest::refusesOutOfRangeFrames()
{
    QVERIFY(writeClip(path("range.mp4"), ClipSpec()));
    const auto reader = openOrFail(path("range.mp4"));
    for (const qint64 frame : {qint64(-1), qint64(60), std::numeric_limits<qint64>::max()})
        QVERIFY(reader->frameAt(frame).isNull());
    QCOMPARE(numberIn(reader->frameAt(59)), 59);
}

void ZkMediaReaderTest::refusesBadFiles_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("reason");
    ClipSpec spec;
    const auto truncated = [&](const char *name) {
        const bool isWritten = writeClip(path(name), spec) && truncateFile(path(name), 0.6);
        return isWritten ? path(name) : QString();
    };
    const auto holding = [this](const char *name, const QByteArray &content) {
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? path(name)
                                                                                        : QString();
    };
    const QString damaged = QStringLiteral("damaged");
    const QString brokenOff = QStringLiteral("breaks off");
    QTest::newRow("missing") << path("missing.mp4") << QStringLiteral("does not exist");
    QTest::newRow("folder") << m_folder.path() << QStringLiteral("is a folder");
    QTest::newRow("empty") << holding("empty.mp4", "") << QStringLiteral("is empty");
    QTest::newRow("text") << holding("notes.txt", "These are notes.\n") << damaged;
    QTest::newRow("text named mp4") << holding("notes.mp4", QByteArray(5000, 'x')) << damaged;
    QTest::newRow("mp4 without its index") << truncated("noindex.mp4") << damaged;
    QTest::newRow("mkv") << truncated("short.mkv") << brokenOff;
    spec.indexFirst = true;
    QTest::newRow("mp4 with its index") << truncated("index.mp4") << brokenOff;
    QVERIFY(numberedImage(77, {300, 200}).save(path("half.png"))
            && truncateFile(path("half.png"), 0.5));
    QTest::newRow("png") << path("half.png") << damaged;
    QVERIFY(numberedImage(77, {300, 200}).save(path("half.jpg"))
            && truncateFile(path("half.jpg"), 0.9));
    QTest::newRow("jpeg") << path("half.jpg") << damaged;
    QVERIFY(zk::test::writeTone(path("tone.wav"), 1));
    QTest::newRow("sound") << path("tone.wav") << QStringLiteral("no picture");
}

void ZkMediaReaderTest::refusesBadFiles()
{
    QFETCH(QString, file);
    QFETCH(QString, reason);
    QString error;
    QVERIFY(!file.isEmpty());
    QVERIFY(!MediaReader::open(file, &error));
    QVERIFY2(error.contains(reason), qPrintable(error));
    // What is wrong, then what to do, as one sentence that names the file.
    QVERIFY2(error.contains(QLatin1String("; ")) && error.endsWith(QLatin1Char('.')),
             qPrintable(error));
    QVERIFY2(error.contains(QDir::toNativeSeparators(file)), qPrintable(error));
}

void ZkMediaReaderTest::namesAreNotInterpreted()
{
    QVERIFY(writeClip(path("plain.mp4"), ClipSpec()));
    const QStringList names {QStringLiteral("a:b.mp4"),
                             QStringLiteral("what?x=1&y.mp4"),
                             QStringLiteral("%05d.mp4"),
                             QStringLiteral("\u00fcber gro\u00df.mp4")};
    for (const QString &name : names) {
        if (!QFile::copy(path("plain.mp4"), m_folder.filePath(name)))
            continue; // not every system allows every name
        const auto reader = openOrFail(m_folder.filePath(name));
        QVERIFY(reader);
        QCOMPARE(numberIn(reader->frameAt(8)), 8);
    }
}

void ZkMediaReaderTest::readersWorkSideBySide()
{
    QVERIFY(writeClip(path("shared.mp4"), ClipSpec()));
    std::vector<std::thread> threads;
    std::atomic<int> wrong {0};
    for (unsigned seed = 0; seed < 6; ++seed) {
        threads.emplace_back([this, seed, &wrong] {
            const auto reader = MediaReader::open(path("shared.mp4"), nullptr);
            std::mt19937 random(seed);
            for (int i = 0; i < 20; ++i) {
                const int frame = int(random() % 60);
                if (!reader || numberIn(reader->frameAt(frame)) != frame)
                    ++wrong;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(wrong.load(), 0);
}

ZK_TEST_CORE_MAIN(ZkMediaReaderTest)
#include "ZkMediaReaderTest.moc"
