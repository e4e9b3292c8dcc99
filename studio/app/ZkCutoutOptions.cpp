#include "ZkCutoutOptions.h"

#include <QCommandLineParser>

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
    addObjectOptions(parser,
                     "What to keep and remove (JSON, see docs/cli.md).",
                     "Video or picture to cut from.");
    add("preset", "Look of the cutout, a slug of \"zkstudio presets\".", "SLUG");
    add("contact-sheet", "Also write a PNG with source, overlay, matte and result.", "FILE.png");
    add("truth", "Compare with true mattes, one %05d.png per frame.", "DIR");
    add("library", "Folder of the preset library.", "DIR");
    add("preset-server", "Address that the preset catalogue is fetched from.", "URL");
    addFlag(parser, "centre", "Keep what is in the middle of the first frame.");
    addCommonOptions(parser);
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
    centred = parser.isSet(QStringLiteral("centre"));
    preset = parser.value(QStringLiteral("preset"));
    contactSheet = parser.value(QStringLiteral("contact-sheet"));
    truthFolder = parser.value(QStringLiteral("truth"));
    libraryFolder = parser.value(QStringLiteral("library"));
    presetServer = parser.value(QStringLiteral("preset-server"));

    if (!readObject(parser, message) || !readBackground(parser, message))
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
        if (!checkOutput(path, message))
            return ExitCode::Usage;
    }
    message->clear();
    return ExitCode::Success;
}

} // namespace zk::app
