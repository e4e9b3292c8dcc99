#include "ZkSampleCommand.h"

#include "ZkProgressReport.h"
#include "ZkSampleClip.h"

#include <QCommandLineParser>
#include <QDir>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSaveFile>

namespace zk::app {

namespace {

constexpr int maxFrames = 100000;
constexpr int maxEdge = 8192;

bool readSize(const QString &text, QSize *size)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{2,4})x(\\d{2,4})$"));
    const QRegularExpressionMatch match = pattern.match(text);
    *size = QSize(match.captured(1).toInt(), match.captured(2).toInt());
    return match.hasMatch() && size->width() <= maxEdge && size->height() <= maxEdge;
}

bool writeJson(const QJsonObject &object, const QString &path, QString *error)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(object).toJson()) > 0
        && file.commit())
        return true;
    *error = QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString());
    return false;
}

ExitCode writeSample(const media::SampleOptions &options, const QString &folder)
{
    ProgressReport report(false);
    const QDir dir(folder);
    QString error = QStringLiteral("the folder %1 cannot be made").arg(folder);
    const QString clip = dir.filePath(QStringLiteral("sample.mkv"));
    const QString strokes = dir.filePath(QStringLiteral("strokes.json"));
    const QString boxes = dir.filePath(QStringLiteral("boxes.json"));
    const QString backgrounds = dir.filePath(QStringLiteral("backgrounds"));
    const QString mattes = dir.filePath(QStringLiteral("mattes"));
    const media::SampleClip sample(options);
    if (!QDir().mkpath(folder) || !sample.write(clip, mattes, &error, true)
        || !sample.writeBackgrounds(backgrounds, &error)
        || !writeJson(sample.strokes(), strokes, &error)
        || !writeJson(sample.boxes(), boxes, &error)) {
        report.error(ExitCode::BadOutput, error);
        return ExitCode::BadOutput;
    }
    for (const QString &path : {clip, strokes, boxes, mattes, backgrounds})
        report.output(path);
    return ExitCode::Success;
}

} // namespace

ExitCode runSampleCommand(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Draws the sample clip, its true mattes and what is behind its object."));
    parser.addPositionalArgument(QStringLiteral("DIR"), QStringLiteral("Folder to write to."));
    const QCommandLineOption frames(
        QStringLiteral("frames"), QStringLiteral("Length, default 72."), QStringLiteral("N"));
    const QCommandLineOption size(QStringLiteral("size"),
                                  QStringLiteral("Frame size, default 640x360."),
                                  QStringLiteral("WxH"));
    parser.addOptions({frames, size});
    parser.addHelpOption();

    media::SampleOptions options;
    QString problem;
    if (!parser.parse(QStringList(QStringLiteral("zkstudio sample")) + arguments))
        problem = parser.errorText();
    else if (parser.isSet(QStringLiteral("help")))
        parser.showHelp(0);
    else if (parser.positionalArguments().size() != 1)
        problem = QStringLiteral("give one folder to write to");
    if (parser.isSet(frames))
        options.frames = parser.value(frames).toInt();
    if (options.frames < 1 || options.frames > maxFrames)
        problem = QStringLiteral("--frames must be a number from 1 to %1").arg(maxFrames);
    if (parser.isSet(size) && !readSize(parser.value(size), &options.size))
        problem = QStringLiteral("--size must be like 640x360");
    if (!problem.isEmpty()) {
        ProgressReport(false).error(ExitCode::Usage, problem);
        return ExitCode::Usage;
    }
    return writeSample(options, parser.positionalArguments().constFirst());
}

} // namespace zk::app
