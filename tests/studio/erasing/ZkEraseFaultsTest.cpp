// Everything that goes wrong with an erase task: it says what, and leaves nothing.
#include "EraseBench.h"
#include "ZkTestMain.h"

#include <QElapsedTimer>

#ifdef Q_OS_UNIX
#include <csignal>
#endif

using namespace zk;
using erasing::EraseTask;

namespace {

constexpr int cancelLimitMs = 200;
constexpr int hostGoneLimitMs = 4000; // before it is ended by force

bool append(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::Append) && file.write("more") == 4;
}

} // namespace

class ZkEraseFaultsTest : public QObject, private test::EraseBench
{
    Q_OBJECT

    std::unique_ptr<media::SampleClip> m_sample;

    // A job that takes seconds, on a file of its own.
    erasing::EraseJob longJob()
    {
        QFile::remove(path("copy.mkv"));
        if (!QFile::copy(path("clip.mkv"), path("copy.mkv")))
            qFatal("no copy");
        return jobFor("copy.mkv", *m_sample, "out/out.mkv");
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_sample = writeSample("clip.mkv", QSize(320, 240), 30);
        QVERIFY(QDir(m_folder.path()).mkdir("out"));
    }
    void cleanup() { QCOMPARE(filesIn("out"), QStringList()); }

    void explainsWhatIsWrongFromTheStart_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("missing") << QStringLiteral("put it back");
        QTest::newRow("changed") << QStringLiteral("check the selection");
        QTest::newRow("no folder") << QStringLiteral("create it or choose another");
        QTest::newRow("in a file") << QStringLiteral("create it or choose another");
        QTest::newRow("is a folder") << QStringLiteral("choose a file name");
        QTest::newRow("too many masks") << QStringLiteral("all the frames");
        QTest::newRow("masks of another size") << QStringLiteral("erase again");
        QTest::newRow("no video") << QStringLiteral("clip");
        QTest::newRow("no program") << QStringLiteral("install the program again");
        QTest::newRow("other program") << QStringLiteral("without a result");
    }
    void explainsWhatIsWrongFromTheStart()
    {
        const QString kind = QString::fromLatin1(QTest::currentDataTag());
        QFETCH(QString, text);
        erasing::EraseJob job = longJob();
        if (kind == "missing") {
            QVERIFY(QFile::remove(job.mediaPath));
        } else if (kind == "changed") {
            QVERIFY(append(job.mediaPath));
        } else if (kind == "no folder") {
            job.output.path = path("nowhere/out.mkv");
        } else if (kind == "in a file") {
            job.output.path = path("clip.mkv/out.mkv");
        } else if (kind == "is a folder") {
            job.output.path = path("out");
        } else if (kind == "too many masks") {
            job.masks += job.masks;
        } else if (kind == "masks of another size") {
            job.masks.fill(datamodel::EncodedMatte(QImage(9, 9, QImage::Format_Grayscale8)));
        } else if (kind == "no video") {
            QFile file(path("clip.txt"));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no clip") > 0);
            file.close();
            job.mediaPath = file.fileName();
            job.fingerprint = erasing::Fingerprint::of(job.mediaPath);
        }
        const auto task = taskFor(job);
        if (kind.endsWith("program"))
            task->setProgram(kind == "no program" ? path("nothing") : QString("/bin/true"));
        QCOMPARE(run(task.get()), EraseTask::Result::Failed);
        QVERIFY2(m_reason.contains(text), qPrintable(m_reason));
    }

    void noticesWhatBecomesOfTheSource_data()
    {
        QTest::addColumn<bool>("isRemoved");
        QTest::addColumn<QString>("text");
        QTest::newRow("removed") << true << "put it back";
        QTest::newRow("changed") << false << "check the selection";
    }
    void noticesWhatBecomesOfTheSource()
    {
        QFETCH(bool, isRemoved);
        QFETCH(QString, text);
        const erasing::EraseJob job = longJob();
        const auto task = taskFor(job);
        QSignalSpy finished(task.get(), &EraseTask::finished);
        QVERIFY(startErasing(task.get()));
        QVERIFY(isRemoved ? QFile::remove(job.mediaPath) : append(job.mediaPath));
        QCOMPARE(await(task.get(), &finished), EraseTask::Result::Failed);
        QVERIFY2(m_reason.contains(text), qPrintable(m_reason));
    }

    void cancelsAtOnce()
    {
        const auto task = taskFor(longJob());
        QSignalSpy finished(task.get(), &EraseTask::finished);
        QVERIFY(startErasing(task.get()));
        QElapsedTimer clock;
        clock.start();
        task->cancel();
        QCOMPARE(finished.count(), 0); // never from inside
        QCOMPARE(await(task.get(), &finished), EraseTask::Result::Cancelled);
        QVERIFY2(clock.elapsed() < cancelLimitMs, qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(task->processId(), qint64(0));
        QCOMPARE(filesIn("out"), QStringList());

        const auto early = taskFor(longJob());
        QSignalSpy earlyFinished(early.get(), &EraseTask::finished);
        early->cancel();
        early->start();
        QCOMPARE(await(early.get(), &earlyFinished), EraseTask::Result::Cancelled);

        const auto dropped = taskFor(longJob());
        QVERIFY(startErasing(dropped.get())); // and goes, with its process
    }

    // A file of that name is replaced at the end or not at all.
    void keepsTheOldFileUntilTheEnd()
    {
        const erasing::EraseJob job = longJob();
        QVERIFY(append(job.output.path));
        const auto task = taskFor(job);
        QSignalSpy finished(task.get(), &EraseTask::finished);
        QVERIFY(startErasing(task.get()));
        task->cancel();
        QCOMPARE(await(task.get(), &finished), EraseTask::Result::Cancelled);
        QCOMPARE(QFileInfo(job.output.path).size(), qint64(4));
        QVERIFY(QFile::remove(job.output.path));
    }

#ifdef Q_OS_UNIX
    void saysThatTheWorkerWasKilled()
    {
        const auto task = taskFor(longJob());
        QSignalSpy finished(task.get(), &EraseTask::finished);
        QVERIFY(startErasing(task.get()));
        QVERIFY(::kill(pid_t(task->processId()), SIGKILL) == 0);
        QCOMPARE(await(task.get(), &finished), EraseTask::Result::Failed);
        QVERIFY2(m_reason.contains("signal 9") && m_reason.contains("memory"),
                 qPrintable(m_reason));
    }

    // The limit of a file's size stands for the end of the disk: writing fails in the same place.
    void saysThatTheDiskIsFull_data()
    {
        QTest::addColumn<QString>("output");
        QTest::newRow("video") << "out/out.mkv";
        QTest::newRow("pictures") << "out/%05d.png";
    }
    void saysThatTheDiskIsFull()
    {
        QFETCH(QString, output);
        QFile script(path("limited"));
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\ntrap '' XFSZ\nulimit -f 20\nexec " ZKSTUDIO_PROGRAM " \"$@\"\n");
        script.close();
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        erasing::EraseJob job = longJob();
        QVERIFY(
            erasing::EraseOutput::forPath(path(output), job.masks.size(), &job.output, &m_error));
        const auto task = taskFor(job);
        task->setProgram(script.fileName());
        QCOMPARE(run(task.get()), EraseTask::Result::Failed);
        QVERIFY2(m_reason.contains("choose another folder"), qPrintable(m_reason));
    }

    // When a host is killed, all that its worker sees is that its standard input closes.
    void workerEndsWithItsHost()
    {
        const auto task = taskFor(longJob());
        QVERIFY(startErasing(task.get()));
        const QString folder = path("out/" + filesIn("out").constFirst());
        const QString copy = path("orphan");
        QVERIFY(QDir().mkdir(copy));
        for (const QString &name : QStringList {"job.json", "masks"})
            QVERIFY(QFile::copy(folder + '/' + name, copy + '/' + name));
        QProcess worker;
        worker.start(ZKSTUDIO_PROGRAM, {"erase-worker", copy});
        QByteArray lines;
        while (!lines.contains("\"stage\":1") && worker.waitForReadyRead(test::patienceMs))
            lines += worker.readAllStandardOutput();
        QVERIFY2(lines.contains("\"stage\":1"), lines.constData());
        worker.closeWriteChannel();
        QVERIFY(worker.waitForFinished(hostGoneLimitMs));
        QCOMPARE(worker.exitStatus(), QProcess::NormalExit);
        QVERIFY(worker.exitCode() != 0);
        QVERIFY(!QFileInfo::exists(copy));
    }
#endif
};

ZK_TEST_MAIN(ZkEraseFaultsTest)
#include "ZkEraseFaultsTest.moc"
