#include "ZkExportOptions.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace zk::app {

namespace {

const QRegularExpression &numberPattern()
{
    static const QRegularExpression pattern(QStringLiteral("%0\\dd"));
    return pattern;
}

bool isFolder(const QString &path)
{
    return path.endsWith(QLatin1Char('/')) || QFileInfo(path).isDir();
}

// In a picture sequence the last number is that of the frame.
bool hasClipNumber(const QString &path)
{
    const bool isSequence = path.endsWith(QLatin1String(".png"), Qt::CaseInsensitive);
    return path.count(numberPattern()) > (isSequence ? 1 : 0);
}

QString withClipNumber(const QString &path, int number)
{
    const QRegularExpressionMatch match = numberPattern().match(path);
    const int width = match.captured().midRef(2, 1).toInt();
    return QString(path).replace(match.capturedStart(),
                                 match.capturedLength(),
                                 QStringLiteral("%1").arg(number, width, 10, QLatin1Char('0')));
}

} // namespace

const CommandOptions::Command &ExportOptions::command() const
{
    static constexpr Command exporting {
        "export",
        "Writes the clips of a project as they were saved, with their cutouts.",
        "one project",
        "  zkstudio export film.zkproj --clip 1 -o cutout.mov\n"
        "  zkstudio export film.zkproj -o 'clips/scene-%02d.webm'\n"
        "  zkstudio export film.zkproj --format png -o clips/\n"
        "  zkstudio export film.zkproj --matte -o 'mattes/%02d/%05d.png'\n"};
    return exporting;
}

void ExportOptions::addOptions(QCommandLineParser *parser) const
{
    addOption(parser, "clip", "Only the clip of that number, from 1; otherwise all.", "N");
    addOption(parser,
              "format",
              "Of outputs that are folders: mov (default), webm, mkv, mp4 or png.",
              "SUFFIX");
    addPictureOptions(
        parser, " Several clips need a folder, or %02d in the name for the number of the clip.");
    parser->addPositionalArgument(QStringLiteral("PROJECT"),
                                  QStringLiteral("Project file of ZkStudio."));
}

bool ExportOptions::read(const QCommandLineParser &parser, QString *message)
{
    project = parser.positionalArguments().constFirst();
    bool isNumber = true;
    if (parser.isSet(QStringLiteral("clip")))
        clip = parser.value(QStringLiteral("clip")).toInt(&isNumber);
    *message = QStringLiteral("--clip needs the number of a clip, from 1");
    if (!isNumber || (parser.isSet(QStringLiteral("clip")) && clip < 1))
        return false;
    *message = QStringLiteral("--format must be mov, webm, mkv, mp4 or png");
    const bool hasFormat = parser.isSet(QStringLiteral("format"));
    if (!readFormat(hasFormat ? parser.value(QStringLiteral("format")) : QStringLiteral("mov")))
        return false;
    return readBackground(parser, message) && check(message);
}

bool ExportOptions::readFormat(const QString &text)
{
    const QVector<ExportFormat> formats = exportFormats();
    for (const ExportFormat &known : formats) {
        if (known.suffix.endsWith(QLatin1Char('.') + text))
            format = known.suffix;
    }
    return !format.isEmpty();
}

bool ExportOptions::check(QString *message)
{
    return checkOutputs(message)
        && std::all_of(outputs.cbegin(), outputs.cend(), [=](const QString &path) {
               media::OutputFormat ignored;
               return isFolder(path) || media::formatFor(path, &ignored, message);
           });
}

bool ExportOptions::outputsFor(
    int number, const QString &clipName, int count, QStringList *paths, QString *error) const
{
    for (const QString &output : outputs) {
        const QString name = count > 1
            ? QStringLiteral("%1-%2").arg(clipName).arg(number, 2, 10, QLatin1Char('0'))
            : clipName;
        QString path = output;
        if (isFolder(output))
            path = QDir(output).filePath(name + format);
        else if (hasClipNumber(output))
            path = withClipNumber(output, number);
        else if (count > 1)
            *error = QStringLiteral("the project has %1 clips: choose one with --clip N, or give a "
                                    "folder or a name with %2 instead of %3")
                         .arg(QString::number(count), QStringLiteral("%02d"), output);
        paths->append(path);
    }
    return error->isEmpty();
}

} // namespace zk::app
