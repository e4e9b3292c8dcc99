#include "ZkEraseOptions.h"

#include <QCommandLineParser>

namespace zk::app {

const CommandOptions::Command EraseOptions::command {
    "erase",
    "Takes the marked objects out of a clip, through the whole clip.",
    "one video or picture to erase from",
    "  zkstudio erase clip.mp4 --boxes boxes.json -o clean.mp4\n"
    "  zkstudio erase clip.mp4 --strokes strokes.json --preview -o selection.mp4\n"
    "  zkstudio erase clip.mov --mask 24:matte.png --direction backward -o clean.mkv\n"
    "  zkstudio erase photo.jpg --boxes boxes.json -o clean.png\n"};

void EraseOptions::addOptions(QCommandLineParser *parser)
{
    addOption(parser, "boxes", "Boxes around the objects (JSON, see docs/cli.md).", "FILE.json");
    addObjectOptions(parser,
                     "The objects painted over: keep strokes (JSON, see docs/cli.md).",
                     "Video or picture to erase from.");
    addFlag(parser, "preview", "Write the clip with the selection over it, and erase nothing.");
    addOption(
        parser, "contact-sheet", "Also write a PNG with before, selection and after.", "FILE.png");
    addOption(parser,
              "truth",
              "Compare with what is behind the object: DIR/backgrounds/%05d.png, where "
              "DIR/mattes/%05d.png has the object.",
              "DIR");
    addFlag(parser, "json", "Print one JSON object per line.");
    parser->addOption(
        {{QStringLiteral("o"), QStringLiteral("output")},
         QStringLiteral(
             "Output. The suffix picks the format: .mp4 H.264, .mkv FFV1, .mov ProRes "
             "4444, .webm VP9, DIR/%05d.png a picture sequence; of a picture .png or .jpg."),
         QStringLiteral("OUT")});
    parser->addOption(
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("This text.")});
}

ExitCode EraseOptions::parse(const QStringList &arguments, QString *message)
{
    QCommandLineParser parser;
    addOptions(&parser);
    ExitCode code = ExitCode::Usage;
    if (!readCommon(&parser, command, arguments, message, &code))
        return code;
    boxesFile = parser.value(QStringLiteral("boxes"));
    isPreview = parser.isSet(QStringLiteral("preview"));
    contactSheet = parser.value(QStringLiteral("contact-sheet"));
    truthFolder = parser.value(QStringLiteral("truth"));
    return readObject(parser, message) ? check(message) : ExitCode::Usage;
}

ExitCode EraseOptions::check(QString *message)
{
    *message = QStringLiteral(
        "give one of --boxes FILE.json, --strokes FILE.json and --mask FRAME:FILE.png");
    if (int(!boxesFile.isEmpty()) + int(!strokesFile.isEmpty()) + int(!matteFile.isEmpty()) != 1)
        return ExitCode::Usage;
    *message = QStringLiteral("say where the result goes, with one -o OUT");
    if (outputs.size() != 1)
        return ExitCode::Usage;
    *message =
        QStringLiteral("--truth and --contact-sheet look at what was erased, leave --preview out");
    if (isPreview && !(truthFolder.isEmpty() && contactSheet.isEmpty()))
        return ExitCode::Usage;
    erasing::EraseOutput result;
    if (!resultFor(1, &result, message) || !refuseInputAsOutput(output(), message))
        return ExitCode::Usage;
    message->clear();
    return ExitCode::Success;
}

bool EraseOptions::resultFor(qint64 frameCount,
                             erasing::EraseOutput *result,
                             QString *message) const
{
    return erasing::EraseOutput::forPath(output(), frameCount, result, message);
}

} // namespace zk::app
