#include "CommandBench.h"
#include "ZkMediaReader.h"
#include "ZkOnnxWriter.h"
#include "ZkSampleClip.h"

#include <QApplication>
#include <QRegularExpression>

#ifdef Q_OS_UNIX
#include <csignal>
#endif

using namespace zk::app;

namespace {

constexpr int frames = 14;

// Processes whose command line names that path; only where they can be listed.
QVector<qint64> processesAbout(const QString &path)
{
    QVector<qint64> found;
    for (const QString &id : QDir(QStringLiteral("/proc")).entryList({"[0-9]*"}, QDir::Dirs)) {
        QFile commandLine(QStringLiteral("/proc/%1/cmdline").arg(id));
        if (commandLine.open(QIODevice::ReadOnly) && commandLine.readAll().contains(path.toUtf8()))
            found.append(id.toLongLong());
    }
    return found;
}

} // namespace

class TestEraseCommand : public QObject, private zk::test::CommandBench
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const zk::media::SampleClip sample({QSize(192, 108), frames, 24});
        QString error;
        QVERIFY2(sample.write(file("sample.mkv"), file("mattes"), &error, true), qPrintable(error));
        QVERIFY2(sample.writeBackgrounds(file("backgrounds"), &error), qPrintable(error));
        QVERIFY(sample.frame(0).save(file("still.png")));
        writeFile(file("boxes.json"), QJsonDocument(sample.boxes()).toJson());
        writeFile(file("strokes.json"), QJsonDocument(sample.strokes()).toJson());
    }

    void erasesWhatIsSelected_data()
    {
        QTest::addColumn<QString>("arguments"); // @ is the folder
        QTest::newRow("box") << "--boxes @boxes.json --contact-sheet @sheet.png";
        QTest::newRow("strokes") << "--strokes @strokes.json";
        QTest::newRow("mask") << "--mask 7:@mattes/00007.png";
    }
    void erasesWhatIsSelected()
    {
        QFETCH(QString, arguments);
        const QTemporaryDir out;
        const QString video = out.filePath("out.mp4");
        QCOMPARE(erase("sample.mkv", arguments + " --json --truth @ -o " + video), 0);
        const double erased = valueOf("psnr");
        const double unerased = valueOf("psnr_unerased");
        QVERIFY2(erased > unerased + 4, m_out.constData());
        QVERIFY(m_out.trimmed().endsWith("{\"event\":\"done\"}"));
        QString error;
        const auto result = zk::media::MediaReader::open(video, &error);
        QVERIFY2(result, qPrintable(error));
        QCOMPARE(result->info().frameCount, qint64(frames));
        QVERIFY(result->info().hasAudio);
        QCOMPARE(everythingIn(out.path()), QStringList("out.mp4"));
        if (arguments.contains("sheet"))
            QVERIFY(!QImage(file("sheet.png")).isNull());
    }

    void previewsTheSelection()
    {
        const QTemporaryDir out;
        const QString pattern = out.filePath("%05d.png");
        QCOMPARE(erase("sample.mkv", "--boxes @boxes.json --preview -o " + pattern), 0);
        QCOMPARE(everythingIn(out.path()).size(), frames);
        const QImage shown(out.filePath("00013.png"));
        const QImage truth(file("mattes/00013.png"));
        QString error;
        const QImage source = zk::media::MediaReader::open(file("sample.mkv"), &error)->frameAt(13);
        int hits = 0;
        int misses = 0;
        for (int y = 0; y < truth.height(); ++y) {
            for (int x = 0; x < truth.width(); ++x) {
                const bool isShown = shown.pixel(x, y) != source.pixel(x, y);
                if (isShown == (qGray(truth.pixel(x, y)) > 127))
                    ++hits;
                else
                    ++misses;
            }
        }
        QVERIFY2(misses < hits / 20, qPrintable(QString::number(misses)));
    }

    void erasesInAStill()
    {
        const QTemporaryDir out;
        const QString picture = out.filePath("out.png");
        writeFile(file("still.json"), "{\"boxes\":[{\"frame\":0,\"rect\":[25,11,65,88]}]}");
        QCOMPARE(erase("still.png", "--boxes @still.json --json -o " + picture), 0);
        QCOMPARE(everythingIn(out.path()), QStringList("out.png"));
        QCOMPARE(QImage(picture).size(), QSize(192, 108));
        QVERIFY(QImage(picture).pixel(58, 42) != QImage(file("still.png")).pixel(58, 42));
        QCOMPARE(QImage(picture).pixel(186, 102), QImage(file("still.png")).pixel(186, 102));
    }

    void makesUpWithANetwork()
    {
        const zk::test::OnnxWriter network =
            zk::test::OnnxWriter::linear({{{"image", 3}, {"hole", 1}},
                                          "filled",
                                          3,
                                          {0, 0, 0, 0.8f, 0, 0, 0, 0.4f, 0, 0, 0, 0.2f},
                                          0,
                                          false});
        writeFile(file("brown.onnx"), QByteArray::fromStdString(network.file()));
        writeFile(file("still.json"), "{\"boxes\":[{\"frame\":0,\"rect\":[25,11,65,88]}]}");
        const QString picture = file("brown.png");
        const QString arguments = "--boxes @still.json --model @brown.onnx -o " + picture;
        QCOMPARE(erase("still.png", arguments), 0);
        QCOMPARE(QImage(picture).pixel(58, 42), qRgb(204, 102, 51));
        QCOMPARE(QImage(picture).pixel(186, 102), QImage(file("still.png")).pixel(186, 102));
    }

    void explainsMistakes_data()
    {
        QTest::addColumn<QString>("boxes"); // null: those of the sample
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<ExitCode>("code");
        const QString sample;
        const QString good = "--boxes @boxes.json -o @out/out.mkv";
        const auto rect = [](const char *rect) {
            return QStringLiteral("{\"boxes\":[\n{\"frame\":0,\n\"rect\":%1}]}")
                .arg(QLatin1String(rect));
        };
        const QString bad = "--boxes @bad.json -o @out/out.mkv";
        const auto box = [&](const char *text, const QString &boxes) {
            QTest::newRow(text) << boxes << bad << ExitCode::BadStrokes;
        };
        box("bad.json:3: boxes[0].rect: the box lies outside the 192x108", rect("[400,10,50,50]"));
        box("at least 1 pixel", rect("[40,10,0,50]"));
        box("four numbers", rect("[40,10,50]"));
        box("frame 14 is past the end", "{\"boxes\":[{\"frame\":14,\"rect\":[1,1,9,9]}]}");
        box("allowed are frame and rect", "{\"boxes\":[{\"frame\":2,\"box\":[1,1,9,9]}]}");
        const auto row = [&](const char *text, const QString &arguments, ExitCode code) {
            QTest::newRow(text) << sample << arguments << code;
        };
        row("--boxes", "-o @out/out.mkv", ExitCode::Usage);
        row("one -o", good + " -o @out/b.mkv", ExitCode::Usage);
        row(".webm", "--boxes @boxes.json -o @out/out.xyz", ExitCode::Usage);
        row("%05d.png", "--boxes @boxes.json -o @out/out.png", ExitCode::Usage);
        row("overwrite", "--boxes @boxes.json -o @sample.mkv", ExitCode::Usage);
        row("sample.mkv", "--boxes @boxes.json -o @sample.mkv/out.mkv", ExitCode::BadOutput);
        row("leave --preview out", good + " --preview --contact-sheet @out/s.png", ExitCode::Usage);
        row("frame 0", good + " --truth @out", ExitCode::BadInput);
    }
    void explainsMistakes()
    {
        QFETCH(QString, boxes);
        QFETCH(QString, arguments);
        QFETCH(ExitCode, code);
        QVERIFY(QDir(m_folder.path()).mkpath("out"));
        writeFile(file("bad.json"), boxes.toUtf8());
        QCOMPARE(erase("sample.mkv", arguments), int(code));
        QVERIFY2(m_errors.contains(QTest::currentDataTag()), m_errors.constData());
        QFile::remove(file("out/out.mkv")); // of a comparison that failed
        QCOMPARE(everythingIn(file("out")), QStringList());
    }

    void erasesEverythingWhenAsked()
    {
        const QTemporaryDir out;
        writeFile(file("all.json"), "{\"boxes\":[{\"frame\":3,\"rect\":[-10,-10,999,999]}]}");
        QCOMPARE(erase("sample.mkv", "--boxes @all.json -o " + out.filePath("out.mkv")), 0);
        QCOMPARE(everythingIn(out.path()), QStringList("out.mkv"));
    }

#ifdef Q_OS_LINUX
    void leavesNothingWhenItEnds_data()
    {
        QTest::addColumn<int>("signal");
        QTest::addColumn<bool>("isWorker"); // that gets it
        QTest::addColumn<int>("code"); // -1: killed
        QTest::newRow("interrupted") << SIGINT << false << int(ExitCode::Interrupted);
        QTest::newRow("killed") << SIGKILL << false << -1;
        QTest::newRow("worker killed") << SIGKILL << true << int(ExitCode::InternalError);
    }
    void leavesNothingWhenItEnds()
    {
        QFETCH(int, signal);
        QFETCH(bool, isWorker);
        QFETCH(int, code);
        const QTemporaryDir out;
        QProcess program;
        program.start(
            ZKSTUDIO_PROGRAM,
            arguments("sample.mkv", "--boxes @boxes.json --json -o " + out.filePath("out.mkv")));
        const QRegularExpression erasing("\"percent\":([3-9]|[1-9]\\d),\"stage\":\"erase\"");
        QString seen;
        while (!seen.contains(erasing) && program.waitForReadyRead(timeoutMs))
            seen += QString::fromUtf8(program.readAllStandardOutput());
        const QString part = out.filePath(everythingIn(out.path()).value(0));
        const QVector<qint64> workers = processesAbout(part);
        QCOMPARE(workers.size(), 1);
        ::kill(pid_t(isWorker ? workers.constFirst() : program.processId()), signal);
        QVERIFY(program.waitForFinished(timeoutMs));
        QCOMPARE(program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1, code);
        if (isWorker)
            QVERIFY(program.readAllStandardOutput().contains("signal 9"));
        QTRY_COMPARE_WITH_TIMEOUT(everythingIn(out.path()), QStringList(), 10000);
        QTRY_COMPARE_WITH_TIMEOUT(processesAbout(part).size(), 0, 10000);
    }
#endif

private:
    QStringList arguments(const QString &clip, QString more) const
    {
        more.replace('@', m_folder.path() + '/');
        return QStringList {"erase", file(clip)} + more.split(' ');
    }
    int erase(const QString &clip, const QString &more)
    {
        return run(arguments(clip, more));
    }
};

ZK_TEST_MAIN(TestEraseCommand)
#include "tst_erase_command.moc"
