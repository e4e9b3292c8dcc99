#include "ZkCommandOptions.h"

#include <QCommandLineParser>
#include <QRegularExpression>

namespace zk::app {

void CommandOptions::addOption(QCommandLineParser *parser,
                               const char *name,
                               const char *description,
                               const char *value)
{
    parser->addOption(
        {QString::fromLatin1(name), QString::fromLatin1(description), QString::fromLatin1(value)});
}

void CommandOptions::addFlag(QCommandLineParser *parser, const char *name, const char *description)
{
    parser->addOption({QString::fromLatin1(name), QString::fromLatin1(description)});
}

void CommandOptions::addOutput(QCommandLineParser *parser, const QString &description)
{
    parser->addOption(
        {{QStringLiteral("o"), QStringLiteral("output")}, description, QStringLiteral("OUT")});
}

void CommandOptions::addPictureOptions(QCommandLineParser *parser, const char *onOutputs)
{
    addOption(parser,
              "background",
              "Under the cutout in an .mp4: a colour (#rrggbb or a name) or a picture.",
              "COLOUR|PICTURE");
    addFlag(parser, "matte", "Write the matte instead of the cutout.");
    addOutput(parser,
              QStringLiteral("Output; may be given several times. The suffix picks the format: "
                             ".mov ProRes 4444, .webm VP9, .mkv FFV1, .mp4 H.264, "
                             "DIR/%05d.png a picture sequence.")
                  + QLatin1String(onOutputs));
}

QString CommandOptions::helpText(const QCommandLineParser &parser) const
{
    // Qt names the program by its path and knows no commands.
    static const QRegularExpression usage(QStringLiteral("^Usage: .*\\[options\\]"));
    return parser.helpText().replace(
               usage,
               QStringLiteral("Usage: zkstudio %1 [options]").arg(QLatin1String(command().name)))
        + QStringLiteral("\nExamples:\n") + QString::fromLatin1(command().examples)
        + QStringLiteral("\nCtrl+C stops; no half-written file is left behind.\n");
}

ExitCode CommandOptions::parse(const QStringList &arguments, QString *message)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromLatin1(command().purpose));
    addOptions(&parser);
    addFlag(&parser, "json", "Print one JSON object per line.");
    parser.addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("This text.")});
    const bool isParsed = parser.parse(QStringList(QStringLiteral("zkstudio")) + arguments);
    json = parser.isSet(QStringLiteral("json"));
    isHelp = parser.isSet(QStringLiteral("help"));
    matteOnly = parser.optionNames().contains(QStringLiteral("matte"));
    outputs = parser.values(QStringLiteral("output"));
    if (isHelp)
        *message = helpText(parser);
    else if (!isParsed)
        *message = parser.errorText();
    else if (parser.positionalArguments().size() != 1)
        *message = QStringLiteral("give exactly %1, see zkstudio %2 --help")
                       .arg(QLatin1String(command().subject), QLatin1String(command().name));
    else if (read(parser, message))
        message->clear();
    return isHelp || message->isEmpty() ? ExitCode::Success : ExitCode::Usage;
}

bool CommandOptions::readBackground(const QCommandLineParser &parser, QString *message)
{
    const QString name = QStringLiteral("background");
    *message =
        QStringLiteral("--background must be a colour (#rrggbb or a name) or a picture file");
    return !parser.isSet(name) || setBackground(parser.value(name));
}

bool CommandOptions::checkOutputs(QString *message)
{
    *message = QStringLiteral("say where the result goes, with -o OUT");
    if (outputs.isEmpty())
        return false;
    *message = QStringLiteral("the same output is given twice");
    return outputs.removeDuplicates() == 0;
}

} // namespace zk::app
