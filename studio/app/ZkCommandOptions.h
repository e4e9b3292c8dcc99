// What the commands that write videos have in common on the command line.
#pragma once

#include "ZkExitCode.h"
#include "ZkExportSettings.h"

class QCommandLineParser;

namespace zk::app {

struct CommandOptions : ExportSettings
{
    bool json = false;
    bool isHelp = false; // nothing but the help was asked for

protected:
    struct Command
    {
        const char *name;
        const char *purpose;
        const char *subject; // "one ...", for who gives none or two
        const char *examples; // a line each
    };

    static void addOption(QCommandLineParser *parser,
                          const char *name,
                          const char *description,
                          const char *value);
    static void addFlag(QCommandLineParser *parser, const char *name, const char *description);
    // --background, --matte, --json, --output and --help.
    static void addCommonOptions(QCommandLineParser *parser, const char *onOutputs = "");
    static QString helpText(QCommandLineParser *parser, const Command &command);
    // Takes the common options over. False: leave with the code, after the message, which is the help or
    // says what is wrong; the caller's own options are in the parser otherwise.
    bool readCommon(QCommandLineParser *parser,
                    const Command &command,
                    const QStringList &arguments,
                    QString *message,
                    ExitCode *code);
    bool readBackground(const QCommandLineParser &parser, QString *message);
    // False: there is no output, or one of them twice.
    bool checkOutputs(QString *message);
};

} // namespace zk::app
