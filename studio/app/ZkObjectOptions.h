// Which object of which clip a command is about.
#pragma once

#include "ZkCommandOptions.h"

namespace zk::app {

struct ObjectOptions : CommandOptions
{
    enum class Direction { Forward, Backward, Both };

    QString input;
    QString strokesFile;
    QString matteFile;
    bool centred = false; // what is in the middle of the first frame
    qint64 matteFrame = 0;
    Direction direction = Direction::Both;
    QString contactSheet;
    QString truthFolder; // to compare with
    QStringList models; // networks in place of the built-in engine

protected:
    // What the options mean to the command.
    struct Texts
    {
        const char *strokes;
        const char *contactSheet;
        const char *truth;
        const char *input;
    };

    // --strokes, --mask, --direction, --model, --contact-sheet, --truth and the positional IN.
    static void addObjectOptions(QCommandLineParser *parser, const Texts &texts);
    // False, with a message, when one of them is wrong.
    bool readObject(const QCommandLineParser &parser, QString *message);
    // False when the output's format is not known or it would overwrite the input.
    bool checkOutput(const QString &path, QString *message) const;
    bool refuseInputAsOutput(const QString &path, QString *message) const;

private:
    bool readMatte(const QString &text);
    bool readDirection(const QString &text);
};

} // namespace zk::app
