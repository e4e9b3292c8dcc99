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

    virtual ~CommandOptions() = default;
    // Success, and *this is complete, or the code to leave with; message then holds the help or what is
    // wrong. The arguments come without the program's and the command's name.
    ExitCode parse(const QStringList &arguments, QString *message);

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
    static void addOutput(QCommandLineParser *parser, const QString &description);
    // --background, --matte and --output.
    static void addPictureOptions(QCommandLineParser *parser, const char *onOutputs = "");
    bool readBackground(const QCommandLineParser &parser, QString *message);
    // False: there is no output, or one of them twice.
    bool checkOutputs(QString *message);

private:
    virtual const Command &command() const = 0;
    // All but --json and --help.
    virtual void addOptions(QCommandLineParser *parser) const = 0;
    // Takes over what is the command's own; the outputs are there. False when something is wrong or
    // missing; the message, which means nothing otherwise, then says what.
    virtual bool read(const QCommandLineParser &parser, QString *message) = 0;
    QString helpText(const QCommandLineParser &parser) const;
};

} // namespace zk::app
