#include "ZkTestMain.h"

#include "ZkMediaReader.h"
#include "ZkMediaWriter.h"
#include "ZkTestClips.h"

#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <random>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

using namespace zk::media;
using zk::test::numberedImage;
using zk::test::numberIn;

Q_DECLARE_METATYPE(zk::media::OutputFormat)

namespace {

const QSize Size(96, 54);

// The frame's number in opaque blocks in the upper half; below, colours under every alpha there is.
QImage testFrame(int number, const QSize &size = Size)
{
    QImage image = numberedImage(number, size);
    for (int y = size.height() * 3 / 4; y < size.height(); ++y) {
        uchar *pixel = image.scanLine(y);
        for (int x = 0; x < size.width(); ++x, pixel += 4) {
            pixel[0] = 200;
            pixel[1] = 120;
            pixel[2] = 40;
            pixel[3] = uchar(255 * x / (size.width() - 1));
        }
    }
    return image;
}

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

OutputSettings settingsFor(const QString &path, int frames = 0)
{
    OutputSettings settings;
    formatFor(path, &settings.format, nullptr);
    settings.size = Size;
    settings.frameRateNum = 30000;
    settings.frameRateDen = 1001;
    settings.frameCount = frames;
    return settings;
}

bool writeFrames(MediaWriter *writer, int frames, QString *error, const QSize &size = Size)
{
    for (int i = 0; i < frames; ++i) {
        if (!writer || !writer->write(testFrame(i, size), error))
            return false;
    }
    return true;
}

bool writeWhole(const QString &path, const OutputSettings &settings, int frames, QString *error)
{
    const auto writer = MediaWriter::create(path, settings, error);
    return writeFrames(writer.get(), frames, error, settings.size) && writer->finish(error);
}

QStringList everythingIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

// Does not get smaller by compression.
QImage noise(const QSize &size, unsigned seed)
{
    std::mt19937 random(seed);
    QImage image(size, QImage::Format_RGBA8888);
    std::generate_n(reinterpret_cast<quint32 *>(image.bits()), image.sizeInBytes() / 4, random);
    return image;
}

// What a child process of this test does: writes for as long as it can.
int writeUntilStopped(const QString &path, qint64 maxFileSize)
{
#ifdef Q_OS_UNIX
    if (maxFileSize > 0) {
        // The system then refuses to write, as it does on a full disk, instead of ending the process.
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit {rlim_t(maxFileSize), rlim_t(maxFileSize)};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
#else
    Q_UNUSED(maxFileSize)
#endif
    QString error;
    OutputSettings settings = settingsFor(path);
    const auto writer = MediaWriter::create(path, settings, &error);
    for (unsigned i = 0; writer && i < 100000; ++i) {
        if (!writer->write(noise(settings.size, i), &error))
            break;
    }
    std::fputs(qPrintable(error), stdout);
    return 0;
}

} // namespace

class ZkMediaWriterTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void suffixesPickTheFormat_data();
    void suffixesPickTheFormat();
    void videosReadBack_data();
    void videosReadBack();
    void oddSizes_data();
    void oddSizes();
    void soundGoesAlong_data();
    void soundGoesAlong();
    void soundStaysInStep();
    void sequences();
    void sequenceReplacesALongerOne();
    void nothingIsLeftWithoutFinish_data();
    void nothingIsLeftWithoutFinish();
    void failureKeepsTheOldFile();
    void refusesWhatCannotBeWritten_data();
    void refusesWhatCannotBeWritten();
    void killedWriterLeavesOnlyHiddenParts_data();
    void killedWriterLeavesOnlyHiddenParts();
    void partsOfLivingWritersStay();
    void fullDiskIsToldClearly_data();
    void fullDiskIsToldClearly();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    void addFormats();

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_error;
};

void ZkMediaWriterTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_error.clear();
}

void ZkMediaWriterTest::addFormats()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"out.mov", "out.webm", "out.mkv", "out.mp4", "out/%05d.png"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void ZkMediaWriterTest::suffixesPickTheFormat_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isKnown");
    QTest::addColumn<OutputFormat>("format");
    QTest::addColumn<bool>("hasAlpha");
    QTest::newRow("mov") << "a.mov" << true << OutputFormat::ProRes4444Mov << true;
    QTest::newRow("upper case") << "A.WEBM" << true << OutputFormat::Vp9Webm << true;
    QTest::newRow("mkv") << "dir.mov/a.mkv" << true << OutputFormat::Ffv1Mkv << true;
    QTest::newRow("mp4") << "a.mp4" << true << OutputFormat::H264Mp4 << false;
    QTest::newRow("sequence") << "d/%05d.png" << true << OutputFormat::PngSequence << true;
    QTest::newRow("named sequence")
        << "d/shot_%4d.png" << true << OutputFormat::PngSequence << true;
    QTest::newRow("one png") << "a.png" << false << OutputFormat::PngSequence << true;
    QTest::newRow("folder pattern") << "%05d/a.png" << false << OutputFormat::PngSequence << true;
    QTest::newRow("unknown") << "a.avi" << false << OutputFormat::H264Mp4 << false;
    QTest::newRow("none") << "mov" << false << OutputFormat::H264Mp4 << false;
}

void ZkMediaWriterTest::suffixesPickTheFormat()
{
    QFETCH(QString, name);
    QFETCH(bool, isKnown);
    QFETCH(OutputFormat, format);
    QFETCH(bool, hasAlpha);
    OutputFormat found {};
    QCOMPARE(formatFor(name, &found, &m_error), isKnown);
    QCOMPARE(m_error.contains(QLatin1String("%05d.png")), !isKnown);
    if (isKnown) {
        QCOMPARE(found, format);
        QCOMPARE(supportsAlpha(found), hasAlpha);
        QCOMPARE(supportsAudio(found), format != OutputFormat::PngSequence);
    }
}

void ZkMediaWriterTest::videosReadBack_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("colourTolerance");
    QTest::addColumn<int>("alphaTolerance"); // negative: the format has none
    QTest::newRow("mov") << "out.mov" << 2 << 1;
    QTest::newRow("webm") << "out.webm" << 16 << 4;
    QTest::newRow("mkv") << "out.mkv" << 0 << 0;
    QTest::newRow("mp4") << "out.mp4" << 16 << -1;
}

void ZkMediaWriterTest::videosReadBack()
{
    QFETCH(QString, name);
    QFETCH(int, colourTolerance);
    QFETCH(int, alphaTolerance);
    QVERIFY2(writeWhole(path(name), settingsFor(name, 40), 40, &m_error), qPrintable(m_error));
    QCOMPARE(everythingIn(m_folder->path()), QStringList {name});

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

void ZkMediaWriterTest::oddSizes_data()
{
    addFormats();
}

void ZkMediaWriterTest::oddSizes()
{
    QFETCH(QString, name);
    OutputSettings settings = settingsFor(name);
    settings.size = {101, 57};
    QVERIFY2(writeWhole(path(name), settings, 3, &m_error), qPrintable(m_error));
    const QString file = name.contains(QLatin1Char('%')) ? QStringLiteral("out/00002.png") : name;
    const auto reader = MediaReader::open(path(file), &m_error);
    QVERIFY2(reader, qPrintable(m_error));
    QCOMPARE(reader->info().size, encodedSize(settings.format, settings.size));
    QCOMPARE(numberIn(reader->frameAt(2)), 2);
    if (settings.format != OutputFormat::H264Mp4)
        return;
    QCOMPARE(reader->info().size, QSize(102, 58));
    const QImage image = reader->frameAt(2);
    QVERIFY(qAbs(qRed(image.pixel(101, 57)) - qRed(image.pixel(100, 56))) < 24);
}

void ZkMediaWriterTest::soundGoesAlong_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("codec");
    QTest::newRow("mov") << "out.mov"
                         << "pcm_s16le";
    QTest::newRow("webm") << "out.webm"
                          << "opus";
    QTest::newRow("mkv") << "out.mkv"
                         << "pcm_s16le";
    QTest::newRow("mp4") << "out.mp4"
                         << "aac";
}

// First encoded as the container needs it, then kept from a file that has it already.
void ZkMediaWriterTest::soundGoesAlong()
{
    QFETCH(QString, name);
    QFETCH(QString, codec);
    QVERIFY(zk::test::writeTone(path(QStringLiteral("tone.wav")), 3, 0.7));
    QString source = path(QStringLiteral("tone.wav"));
    for (const char *prefix : {"first-", "second-"}) {
        const QString target = path(QString::fromLatin1(prefix) + name);
        OutputSettings settings = settingsFor(target, 60);
        settings.audioSourcePath = source;
        QVERIFY2(writeWhole(target, settings, 60, &m_error), qPrintable(m_error));
        const zk::test::Sound sound = zk::test::soundOf(target);
        QCOMPARE(sound.codec, codec);
        QVERIFY2(std::abs(sound.seconds - 2.002) < 0.05,
                 qPrintable(QString::number(sound.seconds)));
        QVERIFY2(std::abs(sound.onset - 0.7) < 0.03, qPrintable(QString::number(sound.onset)));
        QCOMPARE(MediaReader::open(target, &m_error)->info().frameCount, qint64(60));
        source = target;
    }
    OutputSettings settings = settingsFor(name);
    settings.audioSourcePath = path(QStringLiteral("missing.wav"));
    QVERIFY(!MediaWriter::create(path(name), settings, &m_error));
    QVERIFY2(m_error.contains(QLatin1String("missing.wav")), qPrintable(m_error));
}

// From a container whose sound has to be decoded first, at another rate, and a source without sound.
void ZkMediaWriterTest::soundStaysInStep()
{
    QVERIFY(zk::test::writeTone(path(QStringLiteral("tone.wav")), 3, 1.3));
    const QString lossy = path(QStringLiteral("lossy.webm"));
    OutputSettings settings = settingsFor(lossy);
    settings.audioSourcePath = path(QStringLiteral("tone.wav"));
    QVERIFY2(writeWhole(lossy, settings, 90, &m_error), qPrintable(m_error));
    const QString again = path(QStringLiteral("again.mp4"));
    settings.format = OutputFormat::H264Mp4;
    settings.audioSourcePath = lossy;
    QVERIFY2(writeWhole(again, settings, 90, &m_error), qPrintable(m_error));
    QVERIFY(std::abs(zk::test::soundOf(again).onset - 1.3) < 0.03);

    const QString silent = path(QStringLiteral("silent.mkv"));
    settings = settingsFor(silent);
    QVERIFY2(writeWhole(silent, settings, 10, &m_error), qPrintable(m_error));
    settings.format = OutputFormat::H264Mp4;
    settings.audioSourcePath = silent;
    QVERIFY2(writeWhole(again, settings, 10, &m_error), qPrintable(m_error));
    QCOMPARE(zk::test::soundOf(again).codec, QString());
}

void ZkMediaWriterTest::sequences()
{
    const QString pattern = path(QStringLiteral("new/shot_%04d.png"));
    QVERIFY2(writeWhole(pattern, settingsFor(pattern), 12, &m_error), qPrintable(m_error));
    QCOMPARE(everythingIn(m_folder->path()), QStringList {QStringLiteral("new")});
    QCOMPARE(everythingIn(path(QStringLiteral("new"))).size(), 12);
    for (const int frame : {0, 11}) {
        const QString name = QStringLiteral("new/shot_%1.png").arg(frame, 4, 10, QLatin1Char('0'));
        QCOMPARE(QImage(path(name)).convertToFormat(QImage::Format_RGBA8888), testFrame(frame));
    }
}

void ZkMediaWriterTest::sequenceReplacesALongerOne()
{
    const QString pattern = path(QStringLiteral("%05d.png"));
    QVERIFY2(writeWhole(pattern, settingsFor(pattern), 8, &m_error), qPrintable(m_error));
    QFile other(path(QStringLiteral("notes.txt")));
    QVERIFY(other.open(QIODevice::WriteOnly));
    const auto writer = MediaWriter::create(pattern, settingsFor(pattern), &m_error);
    QVERIFY(writeFrames(writer.get(), 3, &m_error));
    // Nothing of the old one is touched before the new one is complete.
    QVERIFY(QFile::exists(path(QStringLiteral("00007.png"))));
    QVERIFY(writer->finish(&m_error));
    const QStringList expected {QStringLiteral("00000.png"),
                                QStringLiteral("00001.png"),
                                QStringLiteral("00002.png"),
                                QStringLiteral("notes.txt")};
    QCOMPARE(everythingIn(m_folder->path()), expected);
}

void ZkMediaWriterTest::nothingIsLeftWithoutFinish_data()
{
    addFormats();
}

void ZkMediaWriterTest::nothingIsLeftWithoutFinish()
{
    QFETCH(QString, name);
    const OutputSettings settings = settingsFor(name, 5);
    auto writer = MediaWriter::create(path(name), settings, &m_error);
    QVERIFY(writeFrames(writer.get(), 3, &m_error));
    const QStringList growing = everythingIn(m_folder->path());
    QCOMPARE(growing.size(), 1);
    QVERIFY(growing.first().startsWith(QLatin1String(".out")));
    // Three of five frames are no complete output.
    QVERIFY(!writer->finish(&m_error));
    QVERIFY2(m_error.contains(QLatin1String("3 of 5")), qPrintable(m_error));
    QCOMPARE(everythingIn(m_folder->path()), QStringList());

    writer = MediaWriter::create(path(name), settings, &m_error);
    QVERIFY(writeFrames(writer.get(), 2, &m_error));
    writer->abort();
    QCOMPARE(everythingIn(m_folder->path()), QStringList());
    QVERIFY(!writer->write(testFrame(2), &m_error));
    QVERIFY(!writer->finish(&m_error));

    writer = MediaWriter::create(path(name), settings, &m_error);
    QVERIFY(writeFrames(writer.get(), 2, &m_error));
    writer.reset();
    QCOMPARE(everythingIn(m_folder->path()), QStringList());
}

void ZkMediaWriterTest::failureKeepsTheOldFile()
{
    const QString target = path(QStringLiteral("out.mkv"));
    QVERIFY(writeWhole(target, settingsFor(target), 2, &m_error));
    const auto writer = MediaWriter::create(target, settingsFor(target), &m_error);
    QVERIFY(writeFrames(writer.get(), 4, &m_error));
    // A frame of another size ends the output.
    QVERIFY(!writer->write(testFrame(4, {10, 10}), &m_error));
    QVERIFY2(m_error.contains(QLatin1String("10 x 10")), qPrintable(m_error));
    QCOMPARE(MediaReader::open(target, &m_error)->info().frameCount, qint64(2));
    QVERIFY(writeWhole(target, settingsFor(target), 4, &m_error));
    QCOMPARE(MediaReader::open(target, &m_error)->info().frameCount, qint64(4));
    QCOMPARE(everythingIn(m_folder->path()).size(), 1);
}

void ZkMediaWriterTest::refusesWhatCannotBeWritten_data()
{
    QTest::addColumn<QString>("target"); // %1: the test's folder
    QTest::addColumn<QString>("reason");
    QTest::newRow("no folder") << "%1/none/out.mov"
                               << "does not exist";
    QTest::newRow("file as folder") << "%1/file/out.mov"
                                    << "does not exist";
    QTest::newRow("no folder for a sequence") << "%1/none/new/%05d.png"
                                              << "does not exist";
    QTest::newRow("folder as file") << "%1/folder.mkv"
                                    << "is a folder";
#ifdef Q_OS_LINUX
    QTest::newRow("folder of the system") << "/proc/out.webm"
                                          << "Nothing can be written";
#endif
}

void ZkMediaWriterTest::refusesWhatCannotBeWritten()
{
    QFETCH(QString, target);
    QFETCH(QString, reason);
    target.replace(QLatin1String("%1"), m_folder->path());
    QFile file(path(QStringLiteral("file")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("folder.mkv")));
    QVERIFY(!MediaWriter::create(target, settingsFor(target), &m_error));
    QVERIFY2(m_error.contains(reason), qPrintable(m_error));
    QVERIFY2(m_error.contains(QLatin1String("; ")), qPrintable(m_error));
    QCOMPARE(everythingIn(m_folder->path()).size(), 2);

    OutputSettings empty = settingsFor(target);
    empty.size = {0, 20};
    QVERIFY(!MediaWriter::create(path(QStringLiteral("out.mov")), empty, &m_error));
    QVERIFY2(m_error.contains(QLatin1String("0 x 20")), qPrintable(m_error));
}

void ZkMediaWriterTest::killedWriterLeavesOnlyHiddenParts_data()
{
    addFormats();
}

void ZkMediaWriterTest::killedWriterLeavesOnlyHiddenParts()
{
    QFETCH(QString, name);
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--write"), path(name), QStringLiteral("0")});
    QTRY_VERIFY(!everythingIn(m_folder->path()).isEmpty());
    QTest::qWait(150);
    child.kill();
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::CrashExit);
    const QStringList left = everythingIn(m_folder->path());
    QCOMPARE(left.size(), 1);
    QVERIFY(left.first().startsWith(QLatin1String(".out")));

    QVERIFY2(writeWhole(path(name), settingsFor(name), 2, &m_error), qPrintable(m_error));
    QCOMPARE(everythingIn(m_folder->path()).size(), 1);
    QVERIFY(!everythingIn(m_folder->path()).first().startsWith(QLatin1Char('.')));
}

void ZkMediaWriterTest::partsOfLivingWritersStay()
{
    const QString target = path(QStringLiteral("out.mkv"));
    QFile neighbour(path(QStringLiteral(".other.mkv.part-1-1.mkv")));
    QVERIFY(neighbour.open(QIODevice::WriteOnly));
    // As a process with our number, but before us, would have left it.
    QFile stale(
        path(QStringLiteral(".out.mkv.part-%1-9999.mkv").arg(QCoreApplication::applicationPid())));
    QVERIFY(stale.open(QIODevice::WriteOnly));
    const auto first = MediaWriter::create(target, settingsFor(target), &m_error);
    const auto second = MediaWriter::create(target, settingsFor(target), &m_error);
    removeStaleParts(target);
    QCOMPARE(everythingIn(m_folder->path()).size(), 3);
    QVERIFY(!stale.exists());
    QVERIFY(writeFrames(first.get(), 2, &m_error) && first->finish(&m_error));
    QVERIFY(writeFrames(second.get(), 3, &m_error) && second->finish(&m_error));
    QCOMPARE(MediaReader::open(target, &m_error)->info().frameCount, qint64(3));
}

void ZkMediaWriterTest::fullDiskIsToldClearly_data()
{
    addFormats();
}

void ZkMediaWriterTest::fullDiskIsToldClearly()
{
#ifdef Q_OS_UNIX
    QFETCH(QString, name);
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--write"), path(name), QStringLiteral("2000")});
    QVERIFY(child.waitForFinished(20000));
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    const QString said = QString::fromLocal8Bit(child.readAllStandardOutput());
    QVERIFY2(said.contains(QLatin1String("choose another folder")), qPrintable(said));
    QCOMPARE(everythingIn(m_folder->path()), QStringList());
#else
    QSKIP("The size of a file can be limited on Unix only.");
#endif
}

int main(int argc, char **argv)
{
    if (argc == 4 && qstrcmp(argv[1], "--write") == 0) {
        const QCoreApplication application(argc, argv);
        return writeUntilStopped(QString::fromLocal8Bit(argv[2]), QByteArray(argv[3]).toLongLong());
    }
    return zk::test::runMain(argc, argv, [](int count, char **values) {
        const QCoreApplication application(count, values);
        ZkMediaWriterTest object;
        return QTest::qExec(&object, count, values);
    });
}

#include "ZkMediaWriterTest.moc"
