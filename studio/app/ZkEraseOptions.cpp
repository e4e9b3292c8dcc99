#include "ZkEraseOptions.h"

#include <QCommandLineParser>

namespace zk::app {

const CommandOptions::Command &EraseOptions::command() const
{
    static constexpr Command erase {
        "erase",
        "Takes the marked objects out of a clip, through the whole clip.",
        "one video or picture to erase from",
        "  zkstudio erase clip.mp4 --boxes boxes.json -o clean.mp4\n"
        "  zkstudio erase clip.mp4 --strokes strokes.json --preview -o selection.mp4\n"
        "  zkstudio erase clip.mov --mask 24:matte.png --direction backward -o clean.mkv\n"
        "  zkstudio erase photo.jpg --boxes boxes.json -o clean.png\n"};
    return erase;
}

void EraseOptions::addOptions(QCommandLineParser *parser) const
{
    addOption(parser, "boxes", "Boxes around the objects (JSON, see docs/cli.md).", "FILE.json");
    addObjectOptions(parser,
                     {"The objects painted over: keep strokes (JSON, see docs/cli.md).",
                      "Also write a PNG with before, selection and after.",
                      "Compare with what is behind the object: DIR/backgrounds/%05d.png, where "
                      "DIR/mattes/%05d.png has the object.",
                      "Video or picture to erase from."});
    addFlag(parser, "preview", "Write the clip with the selection over it, and erase nothing.");
    addOutput(parser,
              QStringLiteral(
                  "Output. The suffix picks the format: .mp4 H.264, .mkv FFV1, .mov ProRes "
                  "4444, .webm VP9, DIR/%05d.png a picture sequence; of a picture .png or .jpg."));
}

bool EraseOptions::read(const QCommandLineParser &parser, QString *message)
{
    boxesFile = parser.value(QStringLiteral("boxes"));
    isPreview = parser.isSet(QStringLiteral("preview"));
    return readObject(parser, message) && check(message);
}

bool EraseOptions::check(QString *message)
{
    *message = QStringLiteral(
        "give one of --boxes FILE.json, --strokes FILE.json and --mask FRAME:FILE.png");
    if (int(!boxesFile.isEmpty()) + int(!strokesFile.isEmpty()) + int(!matteFile.isEmpty()) != 1)
        return false;
    *message = QStringLiteral("say where the result goes, with one -o OUT");
    if (outputs.size() != 1)
        return false;
    *message =
        QStringLiteral("--truth and --contact-sheet look at what was erased, leave --preview out");
    if (isPreview && !(truthFolder.isEmpty() && contactSheet.isEmpty()))
        return false;
    erasing::EraseOutput result;
    return resultFor(1, &result, message) && refuseInputAsOutput(output(), message);
}

bool EraseOptions::resultFor(qint64 frameCount,
                             erasing::EraseOutput *result,
                             QString *message) const
{
    return erasing::EraseOutput::forPath(output(), frameCount, result, message);
}

} // namespace zk::app
