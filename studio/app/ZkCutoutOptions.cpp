#include "ZkCutoutOptions.h"

#include "ZkMediaWriter.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QRegularExpression>

namespace zk::app {

namespace {

void addOptions(QCommandLineParser *parser)
{
    const auto add = [parser](const char *name, const char *description, const char *value) {
        parser->addOption({QString::fromLatin1(name),
                           QString::fromLatin1(description),
                           QString::fromLatin1(value)});
    };
    add("strokes", "What to keep and remove (JSON, see docs/cli.md).", "FILE.json");
    add("mask", "Start from a given matte of one frame.", "FRAME:FILE.png");
    add("direction", "forward, backward or both (default) from the painted frame.", "DIR");
    add("preset", "Look of the cutout, a slug of \"zkstudio presets\".", "SLUG");
    add("background",
        "Under the cutout in an .mp4: a colour (#rrggbb or a name) or a picture.",
        "COLOUR|PICTURE");
    add("contact-sheet", "Also write a PNG with source, overlay, matte and result.", "FILE.png");
    add("truth", "Compare with true mattes, one %05d.png per frame.", "DIR");
    add("library", "Folder of the preset library.", "DIR");
    add("preset-server", "Address that the preset catalogue is fetched from.", "URL");
    parser->addOption({QStringLiteral("centre"),
                       QStringLiteral("Keep what is in the middle of the first frame.")});
    parser->addOption(
        {QStringLiteral("matte"), QStringLiteral("Write the matte instead of the cutout.")});
    parser->addOption({QStringLiteral("json"), QStringLiteral("Print one JSON object per line.")});
    parser->addOption(
        {{QStringLiteral("o"), QStringLiteral("output")},
         QStringLiteral("Output; may be given several times. The suffix picks the format: "
                        ".mov ProRes 4444, .webm VP9, .mkv FFV1, .mp4 H.264, "
                        "DIR/%05d.png a picture sequence."),
         QStringLiteral("OUT")});
    parser->addOption(
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("This text.")});
    parser->addPositionalArgument(QStringLiteral("IN"),
                                  QStringLiteral("Video or picture to cut from."));
}

QString examples()
{
    return QStringLiteral("\nExamples:\n"
                          "  zkstudio cutout clip.mp4 --strokes strokes.json -o cutout.mov\n"
                          "  zkstudio cutout clip.mp4 --strokes strokes.json --preset neon "
                          "--background '#203040' -o out.mp4\n"
                          "  zkstudio cutout clip.mp4 --mask 24:matte.png --direction backward "
                          "--matte -o 'mattes/%05d.png'\n"
                          "\nCtrl+C stops; no half-written file is left behind.\n");
}

} // namespace

QString CutoutOptions::help()
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Cuts the painted object out of a clip, through the whole clip."));
    addOptions(&parser);
    // Qt names the program by its path and knows no commands.
    static const QRegularExpression usage(QStringLiteral("^Usage: .*\\[options\\]"));
    return parser.helpText().replace(usage, QStringLiteral("Usage: zkstudio cutout [options]"))
        + examples();
}

ExitCode CutoutOptions::parse(const QStringList &arguments, QString *message)
{
    QCommandLineParser parser;
    addOptions(&parser);
    const bool parsed = parser.parse(QStringList(QStringLiteral("zkstudio")) + arguments);
    json = parser.isSet(QStringLiteral("json"));
    if (parser.isSet(QStringLiteral("help"))) {
        isHelp = true;
        *message = help();
        return ExitCode::Success;
    }
    *message = parser.errorText();
    if (!parsed)
        return ExitCode::Usage;
    *message =
        QStringLiteral("give exactly one video or picture to cut from, see zkstudio cutout --help");
    if (parser.positionalArguments().size() != 1)
        return ExitCode::Usage;
    input = parser.positionalArguments().constFirst();
    strokesFile = parser.value(QStringLiteral("strokes"));
    centred = parser.isSet(QStringLiteral("centre"));
    preset = parser.value(QStringLiteral("preset"));
    matteOnly = parser.isSet(QStringLiteral("matte"));
    outputs = parser.values(QStringLiteral("output"));
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
    *message =
        QStringLiteral("--background must be a colour (#rrggbb or a name) or a picture file");
    if (parser.isSet(QStringLiteral("background"))
        && !setBackground(parser.value(QStringLiteral("background"))))
        return ExitCode::Usage;
    return check(message);
}

ExitCode CutoutOptions::check(QString *message)
{
    *message =
        QStringLiteral("give one of --strokes FILE.json, --mask FRAME:FILE.png and --centre");
    if (int(!strokesFile.isEmpty()) + int(!matteFile.isEmpty()) + int(centred) != 1)
        return ExitCode::Usage;
    *message = QStringLiteral("say where the result goes, with -o OUT");
    if (outputs.isEmpty())
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
    if (outputs.removeDuplicates() > 0) {
        *message = QStringLiteral("the same output is given twice");
        return ExitCode::Usage;
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
