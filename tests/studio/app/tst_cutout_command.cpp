#include "CommandBench.h"
#include "ZkCutClip.h"
#include "ZkMediaReader.h"
#include "ZkOnnxWriter.h"
#include "ZkSampleClip.h"

#include <QApplication>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/stat.h>
#include <unistd.h>
#endif

using zk::app::ExitCode;

#ifdef Q_OS_UNIX
namespace {

// The program run by a user without rights: nothing is forbidden to root.
class ProgramOfNobody : public QProcess
{
protected:
    void setupChildProcess() override
    {
        constexpr int nobodyId = 65534;
        if (geteuid() == 0 && (setgid(nobodyId) != 0 || setuid(nobodyId) != 0))
            _exit(99);
    }
};
} // namespace
#endif

class TestCutoutCommand : public QObject, private zk::test::CommandBench
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        zk::media::SampleOptions options;
        options.size = QSize(320, 180);
        options.frames = 24;
        const zk::media::SampleClip sample(options);
        QString error;
        QVERIFY2(sample.write(file("sample.mkv"), file("mattes"), &error, true), qPrintable(error));
        writeFile(file("strokes.json"), QJsonDocument(sample.strokes()).toJson());
        const auto write = [this](const char *name, const zk::test::OnnxWriter::Linear &network) {
            writeFile(file(QLatin1String(name)),
                      QByteArray::fromStdString(zk::test::OnnxWriter::linear(network).file()));
        };
        const std::vector<float> nothing(4);
        write("all.onnx", {{{"image", 3}, {"keep", 1}}, "matte", 1, nothing, 10});
        write("still.onnx",
              {{{"image", 3}, {"previous_matte", 1}}, "matte", 1, {0, 0, 0, 40}, -20});
        write("grey.onnx", {{{"image", 3}, {"hole", 1}}, "filled", 3, std::vector<float>(12), 0});
    }

    void cutsTheSampleOut()
    {
        const QString video = file("cut.mkv");
        const QString sheet = file("sheet.png");
        QStringList more =
            QStringLiteral("--json --preset solid-border --truth").split(QLatin1Char(' '));
        more << file("mattes") << "--contact-sheet" << sheet;
        more << "-o" << video << "-o" << file("cut/%05d.png");
        QCOMPARE(run(cutout(more)), 0);
        QVERIFY(m_out.trimmed().endsWith("{\"event\":\"done\"}"));
        QVERIFY2(valueOf("iou") >= 0.9, m_out.constData());
        QString error;
        const auto reader = zk::media::MediaReader::open(video, &error);
        QVERIFY2(reader, qPrintable(error));
        QCOMPARE(reader->info().frameCount, qint64(24));
        QVERIFY(reader->info().hasAlpha && reader->info().hasAudio);
        QCOMPARE(QDir(file("cut")).entryList(QDir::Files).size(), 24);
        // The border stands outside the object: more is opaque than the matte alone.
        const QImage first(file("cut/00000.png"));
        QCOMPARE(reader->frameAt(0).convertToFormat(QImage::Format_ARGB32),
                 first.convertToFormat(QImage::Format_ARGB32));
        QVERIFY(!QImage(sheet).isNull());
    }

    void worksWithNetworks()
    {
        const QStringList networks {"--model", file("still.onnx"), "--model", file("all.onnx")};
        const QStringList more {"--matte", "-o", file("networks/%05d.png")};
        QCOMPARE(run(cutout(networks + more)), 0);
        const QImage first(file("networks/00000.png"));
        QCOMPARE(QImage(file("networks/00023.png")), first);
        QCOMPARE(qGray(first.pixel(2, 178)), 255); // all but the strokes that remove
        QCOMPARE(run(cutout({"--matte", "-o", file("built_in/%05d.png")})), 0);
        QVERIFY(QImage(file("built_in/00000.png")) != first);
    }

    void startsFromAGivenMatte()
    {
        const QString mattes = file("tracked/%05d.png");
        QStringList arguments = cutout({"--matte", "--direction", "backward", "-o", mattes});
        arguments[arguments.indexOf(QStringLiteral("--strokes"))] = QStringLiteral("--mask");
        arguments[arguments.indexOf(file("strokes.json"))] =
            QStringLiteral("12:") + file("mattes/00012.png");
        QCOMPARE(run(arguments), 0);
        const auto hasObject = [this](int frame) {
            const QImage matte(
                file(QStringLiteral("tracked/000%1.png").arg(frame, 2, 10, QLatin1Char('0'))));
            QImage black(matte.size(), matte.format());
            black.fill(Qt::black);
            return matte != black;
        };
        QVERIFY(hasObject(0) && hasObject(12));
        QVERIFY(!hasObject(13)); // only backward from frame 12
    }

    void stopsAtAnotherScene()
    {
        const QString clip = file("scenes.mkv");
        zk::test::CutClip(QSize(320, 180), 12, 8).write(clip);
        QStringList arguments = cutout({"-o", file("scenes/%05d.png")});
        arguments[1] = clip;
        QCOMPARE(run(arguments), 0);
        QVERIFY2(m_errors.contains("the scene changes at frame 8"), m_errors.constData());
        QVERIFY2(m_errors.contains("8 of 12 frames were tracked"), m_errors.constData());
    }

    // What the parts of the program find is told on the error stream, with their exit codes.
    void explainsBadInput_data()
    {
        QTest::addColumn<QString>("clip"); // content of clip.mp4; null: the sample; "-": missing
        QTest::addColumn<QString>("strokes"); // null: those of the sample
        QTest::addColumn<QStringList>("more");
        QTest::addColumn<ExitCode>("code");
        QTest::addColumn<QByteArray>("text");
        const QStringList none;
        const QString sample;
        const auto stroke = [](const char *mode) {
            return QStringLiteral(
                       R"({"strokes":[{"frame":0,"mode":"%1","width":5,"points":[[9,9]]}]})")
                .arg(QLatin1String(mode));
        };
        const auto row = [](const char *name,
                            ExitCode code,
                            const QByteArray &text,
                            const QString &clip,
                            const QString &strokes,
                            const QStringList &more) {
            QTest::newRow(name) << clip << strokes << more << code << text;
        };
        row("missing", ExitCode::BadInput, "clip.mp4", "-", sample, none);
        row("empty", ExitCode::BadInput, "clip.mp4", "", sample, none);
        row("no video", ExitCode::BadInput, "clip.mp4", "text", sample, none);
        const auto marked = [&](const char *name, ExitCode code, const char *text) {
            row(name, code, text, sample, stroke(name), none);
        };
        marked("kepp", ExitCode::BadStrokes, "strokes.json:1: strokes[0].mode");
        marked("erase", ExitCode::BadStrokes, "no mask to erase");
        marked("remove", ExitCode::NothingFound, "keep stroke");
        const auto asked = [&](const QStringList &more, ExitCode code, const char *text) {
            row(text, code, text, sample, sample, more);
        };
        asked({"--preset", "nonesuch"}, ExitCode::BadPreset, "nonesuch");
        asked({"--preset-server", "http://127.0.0.1:9"}, ExitCode::BadPreset, "127.0.0.1");
        asked({"-o", file("sample.mkv/out.mkv")}, ExitCode::BadOutput, "sample.mkv");
        asked({"--background", "blurple"}, ExitCode::Usage, "colour");
        const auto model = [&](const char *name, const char *text) {
            asked({"--model", file(QLatin1String(name)), "--model", file("all.onnx")},
                  ExitCode::BadModel,
                  text);
        };
        model("strokes.json", "strokes.json: this is no ONNX file");
        model("none.onnx", "none.onnx cannot be read");
        model("all.onnx", "the same purpose (Segmentation)");
        model("grey.onnx", "another purpose (Inpainting)");
    }
    void explainsBadInput()
    {
        QFETCH(QString, clip);
        QFETCH(QString, strokes);
        QFETCH(QStringList, more);
        QFETCH(ExitCode, code);
        QFETCH(QByteArray, text);
        const QTemporaryDir folder;
        QStringList arguments = cutout({"-o", folder.filePath("out/out.mkv")}) + more;
        QVERIFY(QDir(folder.path()).mkdir("out"));
        if (!clip.isNull()) {
            arguments[1] = folder.filePath("clip.mp4");
            if (clip != QLatin1String("-"))
                writeFile(arguments.at(1), clip.toUtf8());
        }
        if (!strokes.isNull()) {
            const QString path = folder.filePath("strokes.json");
            writeFile(path, strokes.toUtf8());
            arguments[arguments.indexOf(file("strokes.json"))] = path;
        }
        QCOMPARE(run(arguments), int(code));
        QVERIFY2(m_errors.contains(text), m_errors.constData());
        QCOMPARE(visibleOutputs(folder.filePath("out")), QStringList());
    }

    void leavesNothingWhenInterruptedOrKilled()
    {
        const QTemporaryDir folder;
        const QStringList arguments = cutout({"--json", "-o", folder.filePath("out.webm")});
        QProcess program;
#ifdef Q_OS_UNIX
        program.start(QStringLiteral(ZKSTUDIO_PROGRAM), arguments);
        QVERIFY(waitForExport(&program));
        ::kill(pid_t(program.processId()), SIGINT);
        QVERIFY(program.waitForFinished(timeoutMs));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), int(ExitCode::Interrupted));
        QCOMPARE(everythingIn(folder.path()), QStringList());
#endif
        program.start(QStringLiteral(ZKSTUDIO_PROGRAM), arguments);
        QVERIFY(waitForExport(&program));
        program.kill();
        QVERIFY(program.waitForFinished(timeoutMs));
        QCOMPARE(visibleOutputs(folder.path()), QStringList());
        QCOMPARE(run(arguments), 0); // cleans up
        QCOMPARE(everythingIn(folder.path()), QStringList {QStringLiteral("out.webm")});
    }

    void reportsAFolderThatCannotBeWritten()
    {
#ifdef Q_OS_UNIX
        const QTemporaryDir folder;
        const QString closed = folder.filePath("closed");
        const QString library = folder.filePath("library");
        QVERIFY(QDir().mkdir(closed) && QDir().mkdir(library));
        for (const QString &path : {m_folder.path(), folder.path()})
            ::chmod(QFile::encodeName(path).constData(), 0755);
        ::chmod(QFile::encodeName(closed).constData(), 0555);
        ::chmod(QFile::encodeName(library).constData(), 0777);
        QStringList arguments = cutout({"-o", closed + QStringLiteral("/out.mkv")});
        arguments[arguments.indexOf(file("library"))] = library;
        ProgramOfNobody program;
        program.start(QStringLiteral(ZKSTUDIO_PROGRAM), arguments);
        QVERIFY(program.waitForFinished(timeoutMs));
        const QByteArray errors = program.readAllStandardError();
        if (program.exitCode() == 99 || errors.contains("error while loading shared libraries"))
            QSKIP("the program cannot be run as another user here");
        QCOMPARE(program.exitCode(), int(ExitCode::BadOutput));
        QVERIFY2(errors.contains(closed.toUtf8()), errors.constData());
        QCOMPARE(visibleOutputs(closed), QStringList());
#endif
    }

    void reportsAFullDisk()
    {
        const QTemporaryDir folder;
        if (QProcess::execute(QStringLiteral("mount"),
                              {"-t", "tmpfs", "-o", "size=64k", "tmpfs", folder.path()})
            != 0)
            QSKIP("no file system can be mounted here");
        const int code = run(cutout({"-o", folder.filePath("out.mkv")}));
        const QStringList left = visibleOutputs(folder.path());
        QProcess::execute(QStringLiteral("umount"), {folder.path()});
        QCOMPARE(code, int(ExitCode::BadOutput));
        QVERIFY2(m_errors.contains("out.mkv"), m_errors.constData());
        QCOMPARE(left, QStringList());
    }

private:
    QStringList cutout(const QStringList &more) const
    {
        return QStringList {QStringLiteral("cutout"),
                            file("sample.mkv"),
                            QStringLiteral("--library"),
                            file("library"),
                            QStringLiteral("--strokes"),
                            file("strokes.json")}
        + more;
    }
    // Waits until the program exports, so that an output is being written.
    bool waitForExport(QProcess *program)
    {
        QByteArray seen;
        while (!seen.contains("\"export\"") || !seen.contains("\"percent\":1")) {
            if (!program->waitForReadyRead(timeoutMs))
                return false;
            seen += program->readAllStandardOutput();
            seen = seen.mid(qMax(0, seen.indexOf("\"export\"") - 100));
        }
        return true;
    }

    QStringList visibleOutputs(const QString &folder) const
    {
        return QDir(folder).entryList({QStringLiteral("*")},
                                      QDir::AllEntries | QDir::NoDotAndDotDot);
    }
};

ZK_TEST_MAIN(TestCutoutCommand)
#include "tst_cutout_command.moc"
