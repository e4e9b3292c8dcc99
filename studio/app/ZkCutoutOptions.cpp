#include "ZkCutoutOptions.h"

#include "ZkMediaWriter.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace zk::app {

const CommandOptions::Command CutoutOptions::command {
    "cutout",
    "Cuts the painted object out of a clip, through the whole clip.",
    "one video or picture to cut from",
    "  zkstudio cutout clip.mp4 --strokes strokes.json -o cutout.mov\n"
    "  zkstudio cutout clip.mp4 --strokes strokes.json --preset neon "
    "--background '#203040' -o out.mp4\n"
    "  zkstudio cutout clip.mp4 --mask 24:matte.png --direction backward "
    "--matte -o 'mattes/%05d.png'\n"};

void CutoutOptions::addOptions(QCommandLineParser *parser)
{
    const auto add = [parser](const char *name, const char *description, const char *value) {
        addOption(parser, name, description, value);
    };
    add("strokes", "What to keep and remove (JSON, see docs/cli.md).", "FILE.json");
    add("mask", "Start from a given matte of one frame.", "FRAME:FILE.png");
    add("direction", "forward, backward or both (default) from the painted frame.", "DIR");
    add("preset", "Look of the cutout, a slug of \"zkstudio presets\".", "SLUG");
    add("contact-sheet", "Also write a PNG with source, overlay, matte and result.", "FILE.png");
    add("truth", "Compare with true mattes, one %05d.png per frame.", "DIR");
    add("library", "Folder of the preset library.", "DIR");
    add("preset-server", "Address that the preset catalogue is fetched from.", "URL");
    addFlag(parser, "centre", "Keep what is in the middle of the first frame.");
    addCommonOptions(parser);
    parser->addPositionalArgument(QStringLiteral("IN"),
                                  QStringLiteral("Video or picture to cut from."));
}

QString CutoutOptions::help()
{
    QCommandLineParser parser;
    addOptions(&parser);
    return helpText(&parser, command);
}

ExitCode CutoutOptions::parse(const QStringList &arguments, QString *message)
{
    QCommandLineParser parser;
    addOptions(&parser);
    ExitCode code = ExitCode::Usage;
    if (!readCommon(&parser, command, arguments, message, &code))
        return code;
    input = parser.positionalArguments().constFirst();
    strokesFile = parser.value(QStringLiteral("strokes"));
    centred = parser.isSet(QStringLiteral("centre"));
    preset = parser.value(QStringLiteral("preset"));
    contactSheet = parser.value(QStringLiteral("contact-sheet"));
    truthFolder = parser.value(QStringLiteral("truth"));
    libraryFolder = parser.value(QStringLiteral("library"));
    presetServer = parser.value(QStringLiteral("preset-server"));

    *message = QStringLiteral("--mask needs a frame number and a file, for example 0:matte.png");
    if (parser.isSet(QStringLiteral("mask")) && !readMatte(parser.value(QStringLiteral("mask"))))
        return ExitCode::Usage;
    *message = QStringLiteral("--direction must be forward, backward or both");
    if (parser.isSet(QStringLiteral("direction"))
        && !readDirection(parser.value(QStringLiteral("direction"))))
        return ExitCode::Usage;
    if (!readBackground(parser, message))
        return ExitCode::Usage;
    return check(message);
}

ExitCode CutoutOptions::check(QString *message)
{
    *message =
        QStringLiteral("give one of --strokes FILE.json, --mask FRAME:FILE.png and --centre");
    if (int(!strokesFile.isEmpty()) + int(!matteFile.isEmpty()) + int(centred) != 1)
        return ExitCode::Usage;
    if (!checkOutputs(message))
        return ExitCode::Usage;
    for (const QString &path : qAsConst(outputs)) {
        media::OutputFormat format;
        if (!media::formatFor(path, &format, message))
            return ExitCode::Usage;
        if (QFileInfo(path).absoluteFilePath() == QFileInfo(input).absoluteFilePath()) {
            *message =
                QStringLiteral("the output %1 would overwrite the input, choose another name")
                    .arg(path);
            return ExitCode::Usage;
        }
    }
    message->clear();
    return ExitCode::Success;
}

bool CutoutOptions::readMatte(const QString &text)
{
    const int colon = text.indexOf(QLatin1Char(':'));
    bool ok = false;
    matteFrame = text.left(colon).toLongLong(&ok);
    matteFile = text.mid(colon + 1);
    return colon > 0 && ok && matteFrame >= 0 && !matteFile.isEmpty();
}

bool CutoutOptions::readDirection(const QString &text)
{
    if (text == QLatin1String("forward"))
        direction = Direction::Forward;
    else if (text == QLatin1String("backward"))
        direction = Direction::Backward;
    else
        return text == QLatin1String("both");
    return true;
}

} // namespace zk::app
