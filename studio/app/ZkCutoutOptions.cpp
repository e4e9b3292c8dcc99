#include "ZkCutoutOptions.h"

#include <QCommandLineParser>

#include <algorithm>

namespace zk::app {

const CommandOptions::Command &CutoutOptions::command() const
{
    static constexpr Command cutout {
        "cutout",
        "Cuts the painted object out of a clip, through the whole clip.",
        "one video or picture to cut from",
        "  zkstudio cutout clip.mp4 --strokes strokes.json -o cutout.mov\n"
        "  zkstudio cutout clip.mp4 --strokes strokes.json --preset neon "
        "--background '#203040' -o out.mp4\n"
        "  zkstudio cutout clip.mp4 --mask 24:matte.png --direction backward "
        "--matte -o 'mattes/%05d.png'\n"};
    return cutout;
}

void CutoutOptions::addOptions(QCommandLineParser *parser) const
{
    addObjectOptions(parser,
                     {"What to keep and remove (JSON, see docs/cli.md).",
                      "Also write a PNG with source, overlay, matte and result.",
                      "Compare with true mattes, one %05d.png per frame.",
                      "Video or picture to cut from."});
    addOption(parser, "preset", "Look of the cutout, a slug of \"zkstudio presets\".", "SLUG");
    addOption(parser, "library", "Folder of the preset library.", "DIR");
    addOption(parser, "preset-server", "Address that the preset catalogue is fetched from.", "URL");
    addFlag(parser, "centre", "Keep what is in the middle of the first frame.");
    addPictureOptions(parser);
}

bool CutoutOptions::read(const QCommandLineParser &parser, QString *message)
{
    centred = parser.isSet(QStringLiteral("centre"));
    preset = parser.value(QStringLiteral("preset"));
    libraryFolder = parser.value(QStringLiteral("library"));
    presetServer = parser.value(QStringLiteral("preset-server"));
    return readObject(parser, message) && readBackground(parser, message) && check(message);
}

bool CutoutOptions::check(QString *message)
{
    *message =
        QStringLiteral("give one of --strokes FILE.json, --mask FRAME:FILE.png and --centre");
    if (int(!strokesFile.isEmpty()) + int(!matteFile.isEmpty()) + int(centred) != 1)
        return false;
    return checkOutputs(message)
        && std::all_of(outputs.cbegin(), outputs.cend(), [=](const QString &path) {
               return checkOutput(path, message);
           });
}

} // namespace zk::app
