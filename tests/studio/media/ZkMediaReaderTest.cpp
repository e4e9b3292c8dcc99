#include "ZkTestMain.h"

#include "ZkMediaReader.h"
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

    QTemporaryDir m_folder;

    QString path(const QString &name) const { return m_folder.filePath(name); }
    std::unique_ptr<MediaReader> readerOf(const QString &name, const ClipSpec &spec)
    {
        return writeClip(path(name), spec) ? openOrFail(path(name)) : nullptr;
    }

private slots:
    void everyOrderGivesTheSameFrames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<ClipSpec>("spec");
        const auto row = [](const QString &name, const ClipSpec &spec) {
            QTest::newRow(qPrintable(name)) << name << spec;
        };
        ClipSpec spec;
        spec.frames = 200;
        row("long.mp4", spec); // one key frame, reordered
        row("long.mkv", spec);
        row("long.ts", spec);
        row("long.avi", spec); // without time stamps
        row("bare.h264", spec);
        spec.frameRateNum = 30000;
        spec.frameRateDen = 1001;
        spec.keyInterval = 48;
        row("ntsc.mov", spec);
        spec.reorderedFrames = 0;
        spec.encoder = "libvpx-vp9";
        row("vp9.webm", spec);
        spec.encoder = "mpeg2video";
        spec.keyInterval = 15;
        spec.reorderedFrames = 2;
        row("dvd.mpg", spec);
        spec.encoder = "mjpeg";
        spec.pixelFormat = "yuvj420p";
        spec.reorderedFrames = 0;
        row("camera.avi", spec); // key frames only
        spec = ClipSpec();
        spec.frames = 1;
        row("one.mp4", spec);
    }

    void everyOrderGivesTheSameFrames()
    {
        QFETCH(QString, name);
        QFETCH(ClipSpec, spec);
        const auto reader = readerOf(name, spec);
        QVERIFY(reader);
        QCOMPARE(reader->info().frameCount, qint64(spec.frames));
        QVERIFY(!reader->info().isVariableRate);
        if (spec.frames > 1 && !name.endsWith(QLatin1String(".h264")))
            QCOMPARE(reader->info().frameRate(), double(spec.frameRateNum) / spec.frameRateDen);

        for (int i = 0; i < spec.frames; ++i)
            QCOMPARE(numberIn(reader->frameAt(i)), i);
        // Without kept pictures, with a few of them, and with all.
        for (const qint64 bytes : {0, 300000, 1 << 27}) {
            reader->keepPictures(bytes);
            std::mt19937 random(7);
            int wanted = spec.frames - 1;
            for (int i = 0; i < 100; ++i) {
                QCOMPARE(numberIn(reader->frameAt(wanted)), wanted);
                wanted = i % 5 == 0 ? int(random()) : wanted - int(random() % 4) + (i / 50) * 3;
                wanted = int(unsigned(wanted) % unsigned(spec.frames));
            }
        }
        for (const qint64 none : {qint64(-1), qint64(spec.frames), qint64(1) << 62})
            QVERIFY(reader->frameAt(none).isNull());

        const auto fresh = openOrFail(path(name));
        QCOMPARE(numberIn(fresh->frameAt(spec.frames - 1)), spec.frames - 1);
    }

    // Going back decodes a stretch once, and nothing more while its pictures are kept.
    void keepsPicturesThatWereDecodedOnTheWay()
    {
        ClipSpec spec;
        spec.size = {320, 128};
        spec.frames = 240; // more than libav reads at once
        spec.encoder = "mpeg2video";
        spec.keyInterval = 48;
        const auto reader = readerOf("kept.mp4", spec);
        QVERIFY(reader);
        reader->keepPictures(1 << 27);
        for (const int frame : {231, 230})
            QCOMPARE(numberIn(reader->frameAt(frame)), frame);
        QVERIFY(QFile::resize(path("kept.mp4"), 0));
        for (int frame = 229; frame >= 4 * spec.keyInterval; --frame)
            QCOMPARE(numberIn(reader->frameAt(frame)), frame);
        QVERIFY(numberIn(reader->frameAt(20)) != 20);
    }

    // More packets than the probe reads from the start.
    void longClipIsExactAtItsEnd()
    {
        ClipSpec spec;
        spec.size = {64, 16};
        spec.frames = 2600;
        spec.frameRateNum = 24000;
        spec.frameRateDen = 1001;
        for (const char *name : {"film.mp4", "film.mkv", "film.ts"}) {
            const auto reader = readerOf(QLatin1String(name), spec);
            QVERIFY(reader);
            QCOMPARE(reader->info().frameCount, qint64(2600));
            QVERIFY(!reader->info().isVariableRate);
            for (const int frame : {2599, 0, 2100, 2100, 1300})
                QCOMPARE(numberIn(reader->frameAt(frame)), frame % 256);
        }
    }

    void variableRateIsConformed()
    {
        ClipSpec spec;
        spec.times = {0, 1, 2, 5, 6, 10, 11, 12, 13, 20};
        spec.reorderedFrames = 0;
        spec.frames = spec.times.size();
        const auto reader = readerOf("variable.mp4", spec);
        QVERIFY(reader);
        QVERIFY(reader->info().isVariableRate);
        QCOMPARE(reader->info().frameRate(), 25.0);
        QCOMPARE(reader->info().frameCount, qint64(21));
        for (int frame = 20; frame >= 0; --frame) {
            const auto next = std::upper_bound(spec.times.cbegin(), spec.times.cend(), frame);
            QCOMPARE(numberIn(reader->frameAt(frame)), int(next - spec.times.cbegin()) - 1);
        }
    }

    void showsTurnedPicturesUpright()
    {
        ClipSpec spec;
        spec.frames = 12;
        for (const int rotation : {90, 180, 270}) {
            spec.rotation = rotation;
            const auto reader = readerOf("turned.mp4", spec);
            QVERIFY(reader);
            QCOMPARE(reader->info().rotation, rotation);
            QCOMPARE(reader->info().size, rotation == 180 ? spec.size : spec.size.transposed());
            const QImage image = reader->frameAt(11);
            QCOMPARE(image.size(), reader->info().size);
            QCOMPARE(numberIn(image.transformed(QTransform().rotate(-rotation))), 11);
        }
    }

    void pixelsBecomeSquare()
    {
        ClipSpec spec;
        spec.size = {180, 144};
        spec.pixelAspectNum = 64;
        spec.pixelAspectDen = 45;
        const auto reader = readerOf("wide.mp4", spec);
        QVERIFY(reader);
        QCOMPARE(reader->info().size, QSize(256, 144));
        QCOMPARE(reader->frameAt(30).size(), QSize(256, 144));
        QCOMPARE(reader->frameAt(30).format(), QImage::Format_RGBA8888);
        QCOMPARE(numberIn(reader->frameAt(30)), 30);
    }

    void animatedGifHasAllItsFrames()
    {
        ClipSpec spec;
        spec.frames = 15;
        spec.frameRateNum = 10;
        spec.encoder = "gif";
        spec.pixelFormat = "rgb8";
        const auto reader = readerOf("moving.gif", spec);
        QVERIFY(reader);
        QVERIFY(reader->info().isAnimatedGif && !reader->info().isStill);
        QCOMPARE(reader->info().frameRate(), 10.0);
        QCOMPARE(reader->info().frameCount, qint64(15));
        for (const int frame : {0, 1, 14, 3, 7})
            QCOMPARE(numberIn(reader->frameAt(frame)), frame);
    }

    void stillLastsAsLongAsAsked()
    {
        QImage image = numberedImage(77, {50, 30});
        image.setPixelColor(3, 4, QColor(10, 20, 30, 40));
        for (const QString &name : {path("still.png"), path("still.jpg"), path("a picture.bin")}) {
            const bool isJpeg = name.endsWith(QLatin1String("jpg"));
            QVERIFY(image.save(name, isJpeg ? "JPG" : "PNG"));
            QString error;
            const auto reader = MediaReader::open(name, &error, {10, 30000, 1001});
            QVERIFY2(reader, qPrintable(error));
            QVERIFY(reader->info().isStill);
            QCOMPARE(reader->info().frameCount, qint64(10));
            QCOMPARE(reader->info().frameRateNum, 30000);
            QCOMPARE(numberIn(reader->frameAt(9)), 77);
            QCOMPARE(reader->info().hasAlpha, !isJpeg);
            if (!isJpeg)
                QCOMPARE(reader->frameAt(5).pixelColor(3, 4), QColor(10, 20, 30, 40));
            QVERIFY(reader->frameAt(10).isNull());
        }
        QCOMPARE(MediaReader::open(path("still.png"), nullptr)->info().frameCount, qint64(125));
    }

    void refusesBadFiles_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        const auto row = [](const QString &name, const QString &reason) {
            QTest::newRow(qPrintable(name)) << name << reason;
        };
        ClipSpec spec;
        const auto truncated = [&](const QString &name, double share, const QString &reason) {
            const QImage still = numberedImage(77, {300, 200});
            QVERIFY(still.save(path(name)) || writeClip(path(name), spec));
            QVERIFY(truncateFile(path(name), share));
            row(name, reason);
        };
        const auto holding = [&](const QString &name, const QByteArray &text, const QString &why) {
            QFile file(path(name));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
            row(name, why);
        };
        row("missing.mp4", "does not exist");
        row(".", "is a folder");
        holding("empty.mp4", "", "is empty");
        holding("notes.txt", "These are notes.\n", "damaged");
        holding("notes.mp4", QByteArray(5000, 'x'), "damaged");
        truncated("noindex.mp4", 0.6, "damaged");
        truncated("short.mkv", 0.6, "breaks off");
        spec.indexFirst = true;
        truncated("index.mp4", 0.6, "breaks off");
        truncated("half.png", 0.5, "damaged");
        truncated("half.jpg", 0.9, "damaged");
        QVERIFY(zk::test::writeTone(path("tone.wav"), 1));
        row("tone.wav", "no picture");
    }

    void refusesBadFiles()
    {
        QFETCH(QString, name);
        QFETCH(QString, reason);
        const QString file = QDir::cleanPath(path(name));
        QString error;
        QVERIFY(!MediaReader::open(file, &error));
        QVERIFY2(error.contains(reason), qPrintable(error));
        // What is wrong, then what to do, as one sentence that names the file.
        QVERIFY2(error.contains(QLatin1String("; ")) && error.endsWith(QLatin1Char('.')),
                 qPrintable(error));
        QVERIFY2(error.contains(QDir::toNativeSeparators(file)), qPrintable(error));
    }

    void namesAreNotInterpreted()
    {
        QVERIFY(writeClip(path("plain.mp4"), ClipSpec()));
        for (const QString &name : {QStringLiteral("a:b.mp4"),
                                    QStringLiteral("what?x=1&y.mp4"),
                                    QStringLiteral("%05d.mp4"),
                                    QStringLiteral("\u00fcber gro\u00df.mp4")}) {
            if (!QFile::copy(path("plain.mp4"), path(name)))
                continue; // not every system allows every name
            const auto reader = openOrFail(path(name));
            QVERIFY(reader);
            QCOMPARE(numberIn(reader->frameAt(8)), 8);
        }
    }

    void readersWorkSideBySide()
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
};

ZK_TEST_CORE_MAIN(ZkMediaReaderTest)
#include "ZkMediaReaderTest.moc"
