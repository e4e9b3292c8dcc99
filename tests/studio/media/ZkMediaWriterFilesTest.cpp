// Outputs are complete or absent, whatever happens while they are written.
#include "WriterBench.h"

#include "ZkTestMain.h"

#include <QProcess>

#include <algorithm>
#include <random>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

using namespace zk::media;
using namespace zk::test;

namespace {

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
    const auto writer = MediaWriter::create(path, settingsFor(path), &error);
    QImage noise(Size, QImage::Format_RGBA8888); // does not get smaller by compression
    std::mt19937 random;
    do {
        std::generate_n(reinterpret_cast<quint32 *>(noise.bits()), noise.sizeInBytes() / 4, random);
    } while (writer && writer->write(noise, &error));
    std::fputs(qPrintable(error), stdout);
    return 0;
}

} // namespace

class ZkMediaWriterFilesTest : public QObject, private WriterBench
{
    Q_OBJECT

    void startChild(QProcess *child, const QString &target, const QString &maxFileSize)
    {
        child->start(QCoreApplication::applicationFilePath(),
                     {"--write", path(target), maxFileSize});
    }

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void sequenceReplacesALongerOne()
    {
        const QString pattern = path("new/shot_%04d.png");
        QVERIFY2(writeWhole(pattern, 8), qPrintable(m_error));
        QCOMPARE(everything(), QStringList {"new"});
        QFile other(path("new/notes.txt"));
        QVERIFY(other.open(QIODevice::WriteOnly));
        const auto writer = MediaWriter::create(pattern, settingsFor(pattern), &m_error);
        QVERIFY(writeFrames(writer.get(), 3));
        // Nothing of the old one is touched before the new one is complete.
        QVERIFY(QFile::exists(path("new/shot_0007.png")));
        QVERIFY(writer->finish(&m_error));
        const QStringList files = filesIn(path("new"));
        QCOMPARE(files.join(QLatin1Char(' ')),
                 QStringLiteral("notes.txt shot_0000.png shot_0001.png shot_0002.png"));
        const QImage last(path("new/shot_0002.png"));
        QCOMPARE(last.convertToFormat(QImage::Format_RGBA8888), testFrame(2));
    }

    void nothingIsLeftWithoutFinish_data() { addFormats(); }

    void nothingIsLeftWithoutFinish()
    {
        QFETCH(QString, name);
        const auto begun = [&] {
            auto writer = MediaWriter::create(path(name), settingsFor(name, 5), &m_error);
            return writeFrames(writer.get(), 3) ? std::move(writer) : nullptr;
        };
        auto writer = begun();
        QVERIFY2(writer, qPrintable(m_error));
        QCOMPARE(everything().size(), 1);
        QVERIFY(everything().first().startsWith(QLatin1String(".out")));
        // Three of five frames are no complete output.
        QVERIFY(!writer->finish(&m_error));
        QVERIFY2(m_error.contains(QLatin1String("3 of 5")), qPrintable(m_error));
        QCOMPARE(everything(), QStringList());

        writer = begun();
        writer->abort();
        QCOMPARE(everything(), QStringList());
        QVERIFY(!writer->write(testFrame(2), &m_error) && !writer->finish(&m_error));

        writer = begun();
        writer.reset();
        QCOMPARE(everything(), QStringList());
    }

    void failureKeepsTheOldFile()
    {
        const QString target = path("out.mkv");
        QVERIFY(writeWhole(target, 2));
        const auto writer = MediaWriter::create(target, settingsFor(target), &m_error);
        QVERIFY(writeFrames(writer.get(), 4));
        // A frame of another size ends the output.
        QVERIFY(!writer->write(testFrame(4, {10, 10}), &m_error));
        QVERIFY2(m_error.contains(QLatin1String("10 x 10")), qPrintable(m_error));
        QCOMPARE(framesIn(target), qint64(2));
        QVERIFY(writeWhole(target, 4));
        QCOMPARE(framesIn(target), qint64(4));
        QCOMPARE(everything().size(), 1);
    }

    void refusesWhatCannotBeWritten_data()
    {
        QTest::addColumn<QString>("target"); // %1: the test's folder
        QTest::addColumn<QString>("reason");
        const auto row = [](const QString &target, const QString &reason) {
            QTest::newRow(qPrintable(target)) << target << reason;
        };
        row("%1/none/out.mov", "does not exist");
        row("%1/file/out.mov", "does not exist");
        row("%1/none/new/%05d.png", "does not exist");
        row("%1/folder.mkv", "is a folder");
#ifdef Q_OS_LINUX
        row("/proc/out.webm", "Nothing can be written");
#endif
    }

    void refusesWhatCannotBeWritten()
    {
        QFETCH(QString, target);
        QFETCH(QString, reason);
        target.replace(QLatin1String("%1"), m_folder->path());
        QFile file(path("file"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(QDir(m_folder->path()).mkdir("folder.mkv"));
        QVERIFY(!MediaWriter::create(target, settingsFor(target), &m_error));
        QVERIFY2(m_error.contains(reason), qPrintable(m_error));
        QVERIFY2(m_error.contains(QLatin1String("; ")), qPrintable(m_error));
        QCOMPARE(everything().size(), 2);

        OutputSettings empty = settingsFor(target);
        empty.size = {0, 20};
        QVERIFY(!MediaWriter::create(path("out.mov"), empty, &m_error));
        QVERIFY2(m_error.contains(QLatin1String("0 x 20")), qPrintable(m_error));
    }

    void killedWriterLeavesOnlyHiddenParts_data()
    {
        addFormats();
    }

    void killedWriterLeavesOnlyHiddenParts()
    {
        QFETCH(QString, name);
        QProcess child;
        startChild(&child, name, "0");
        QTRY_VERIFY(!everything().isEmpty());
        QTest::qWait(150);
        child.kill();
        QVERIFY(child.waitForFinished());
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);
        QCOMPARE(everything().size(), 1);
        QVERIFY(everything().first().startsWith(QLatin1String(".out")));

        QVERIFY2(writeWhole(path(name), 2), qPrintable(m_error));
        QCOMPARE(everything(), QStringList {name.section(QLatin1Char('/'), 0, 0)});
    }

    void partsOfLivingWritersStay()
    {
        const QString target = path("out.mkv");
        QFile neighbour(path(".other.mkv.part-1-1.mkv"));
        QVERIFY(neighbour.open(QIODevice::WriteOnly));
        // As a process with our number, but before us, would have left it.
        const qint64 own = QCoreApplication::applicationPid();
        QFile stale(path(QStringLiteral(".out.mkv.part-%1-9999.mkv").arg(own)));
        QVERIFY(stale.open(QIODevice::WriteOnly));
        const auto first = MediaWriter::create(target, settingsFor(target), &m_error);
        const auto second = MediaWriter::create(target, settingsFor(target), &m_error);
        removeStaleParts(target);
        QCOMPARE(everything().size(), 3);
        QVERIFY(!stale.exists());
        QVERIFY(writeFrames(first.get(), 2) && first->finish(&m_error));
        QVERIFY(writeFrames(second.get(), 3) && second->finish(&m_error));
        QCOMPARE(framesIn(target), qint64(3));
    }

    void fullDiskIsToldClearly_data()
    {
        addFormats();
    }

    void fullDiskIsToldClearly()
    {
#ifdef Q_OS_UNIX
        QFETCH(QString, name);
        QProcess child;
        startChild(&child, name, "2000");
        QVERIFY(child.waitForFinished(20000));
        QCOMPARE(child.exitStatus(), QProcess::NormalExit);
        const QString said = QString::fromLocal8Bit(child.readAllStandardOutput());
        QVERIFY2(said.contains(QLatin1String("choose another folder")), qPrintable(said));
        QCOMPARE(everything(), QStringList());
#else
        QSKIP("The size of a file can be limited on Unix only.");
#endif
    }
};

int main(int argc, char **argv)
{
    return zk::test::runMain(argc, argv, [](int count, char **values) {
        const QCoreApplication application(count, values);
        if (count == 4 && qstrcmp(values[1], "--write") == 0)
            return writeUntilStopped(QString::fromLocal8Bit(values[2]),
                                     QByteArray(values[3]).toLongLong());
        ZkMediaWriterFilesTest object;
        return QTest::qExec(&object, count, values);
    });
}

#include "ZkMediaWriterFilesTest.moc"
