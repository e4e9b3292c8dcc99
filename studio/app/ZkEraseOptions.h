// What "zkstudio erase" was asked to do.
#pragma once

#include "ZkObjectOptions.h"

#include "ZkEraseJob.h"

namespace zk::app {

struct EraseOptions : ObjectOptions
{
    // One of this, strokesFile and matteFile says what the objects are.
    QString boxesFile;
    bool isPreview = false; // show what would be erased instead
    QString contactSheet;
    QString truthFolder; // backgrounds/%05d.png and mattes/%05d.png to compare with

    // Success, and *this is complete, or the code to leave with; message then holds the
    // help or what is wrong. The arguments come without the program's and the command's name.
    ExitCode parse(const QStringList &arguments, QString *message);

    QString output() const { return outputs.value(0); }
    // Only now it is known what suits: a single frame may become a picture. False, with what is wrong.
    bool resultFor(qint64 frameCount, erasing::EraseOutput *result, QString *message) const;

private:
    static const Command command;
    static void addOptions(QCommandLineParser *parser);
    ExitCode check(QString *message);
};

} // namespace zk::app
