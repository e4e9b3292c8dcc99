// What "zkstudio cutout" was asked to do.
#pragma once

#include "ZkObjectOptions.h"

namespace zk::app {

struct CutoutOptions : ObjectOptions
{
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
};

} // namespace zk::app
