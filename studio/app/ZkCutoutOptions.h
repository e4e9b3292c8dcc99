// What "zkstudio cutout" was asked to do.
#pragma once

#include "ZkCommandOptions.h"

namespace zk::app {

struct CutoutOptions : CommandOptions
{
    enum class Direction { Forward, Backward, Both };

    QString input;
    // Exactly one of these three says what the object is.
    QString strokesFile;
    QString matteFile;
    bool centred = false; // what is in the middle of the first frame
    qint64 matteFrame = 0;
    Direction direction = Direction::Both;
    QString preset; // slug; empty: the plain cutout
    QString contactSheet;
    QString truthFolder; // %05d.png true mattes to compare with
    QString libraryFolder; // empty: the user's
    QString presetServer;

    // Success, and *this is complete, or the code to leave with; message then holds the
    // help or what is wrong. The arguments come without the program's and the command's name.
    ExitCode parse(const QStringList &arguments, QString *message);
    static QString help();

private:
    static const Command command;
    static void addOptions(QCommandLineParser *parser);
    ExitCode check(QString *message);
    bool readMatte(const QString &text);
    bool readDirection(const QString &text);
};

} // namespace zk::app
