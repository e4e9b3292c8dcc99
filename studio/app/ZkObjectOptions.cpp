#include "ZkObjectOptions.h"

#include "ZkMediaWriter.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace zk::app {

void ObjectOptions::addObjectOptions(QCommandLineParser *parser, const Texts &texts)
{
    addOption(parser, "strokes", texts.strokes, "FILE.json");
    addOption(parser, "mask", "Start from a given matte of one frame.", "FRAME:FILE.png");
    addOption(
        parser, "direction", "forward, backward or both (default) from the painted frame.", "DIR");
    addOption(
        parser,
        "model",
        "A network in place of the built-in engine (see docs/network.md); one for each purpose.",
        "FILE.onnx");
    addOption(parser, "contact-sheet", texts.contactSheet, "FILE.png");
    addOption(parser, "truth", texts.truth, "DIR");
    parser->addPositionalArgument(QStringLiteral("IN"), QString::fromLatin1(texts.input));
}

bool ObjectOptions::readObject(const QCommandLineParser &parser, QString *message)
{
    const QString mask = QStringLiteral("mask");
    const QString directionName = QStringLiteral("direction");
    input = parser.positionalArguments().constFirst();
    strokesFile = parser.value(QStringLiteral("strokes"));
    contactSheet = parser.value(QStringLiteral("contact-sheet"));
    truthFolder = parser.value(QStringLiteral("truth"));
    models = parser.values(QStringLiteral("model"));
    *message = QStringLiteral("--mask needs a frame number and a file, for example 0:matte.png");
    if (parser.isSet(mask) && !readMatte(parser.value(mask)))
        return false;
    *message = QStringLiteral("--direction must be forward, backward or both");
    return !parser.isSet(directionName) || readDirection(parser.value(directionName));
}

bool ObjectOptions::checkOutput(const QString &path, QString *message) const
{
    media::OutputFormat format;
    return media::formatFor(path, &format, message) && refuseInputAsOutput(path, message);
}

bool ObjectOptions::refuseInputAsOutput(const QString &path, QString *message) const
{
    *message =
        QStringLiteral("the output %1 would overwrite the input, choose another name").arg(path);
    return QFileInfo(path).absoluteFilePath() != QFileInfo(input).absoluteFilePath();
}

bool ObjectOptions::readMatte(const QString &text)
{
    const int colon = text.indexOf(QLatin1Char(':'));
    bool ok = false;
    matteFrame = text.left(colon).toLongLong(&ok);
    matteFile = text.mid(colon + 1);
    return colon > 0 && ok && matteFrame >= 0 && !matteFile.isEmpty();
}

bool ObjectOptions::readDirection(const QString &text)
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
