// zkstudio: the reference editor. With a command it does its work without windows.
#include "ZkCutoutJob.h"
#include "ZkEditor.h"
#include "ZkEraseWorkerCommand.h"
#include "ZkErasingJob.h"
#include "ZkExportCommand.h"
#include "ZkPresetsCommand.h"
#include "ZkRunCommand.h"
#include "ZkSampleCommand.h"

#include <QApplication>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <cstdio>

namespace {

using zk::app::ExitCode;

const char usage[] =
    "zkstudio: cuts objects out of videos, or takes them away\n"
    "\n"
    "  zkstudio [FILE...|PROJECT]                      open the editor\n"
    "  zkstudio cutout IN --strokes FILE.json -o OUT   cut out what is painted\n"
    "  zkstudio erase IN --boxes FILE.json -o OUT      erase what is in the boxes\n"
    "  zkstudio export PROJECT -o OUT                  write the clips of a project\n"
    "  zkstudio sample DIR                             draw the sample clip\n"
    "  zkstudio presets                                list the looks\n"
    "  zkstudio COMMAND --help                         more about a command\n"
    "  zkstudio --version\n";

ExitCode runCommand(const QStringList &arguments)
{
    const QString command = arguments.value(1);
    if (command == QLatin1String("cutout"))
        return zk::app::runCommand<zk::app::CutoutOptions, zk::app::CutoutJob>(arguments.mid(2));
    if (command == QLatin1String("erase"))
        return zk::app::runCommand<zk::app::EraseOptions, zk::app::ErasingJob>(arguments.mid(2));
    if (command == QLatin1String("export"))
        return zk::app::runExportCommand(arguments.mid(2));
    if (command == QLatin1String("erase-worker"))
        return ExitCode(zk::app::runEraseWorkerCommand(arguments.mid(2)));
    if (command == QLatin1String("sample"))
        return zk::app::runSampleCommand(arguments.mid(2));
    if (command == QLatin1String("presets"))
        return zk::app::runPresetsCommand(arguments.mid(2));
    if (command == QLatin1String("--version")) {
        std::printf("zkstudio %s\n", qPrintable(QCoreApplication::applicationVersion()));
        return ExitCode::Success;
    }
    const bool isHelp = command == QLatin1String("--help") || command == QLatin1String("-h");
    if (!isHelp)
        std::fprintf(
            stderr, "zkstudio: %s is neither a command nor a file\n\n", qPrintable(command));
    std::fputs(usage, isHelp ? stdout : stderr);
    return isHelp ? ExitCode::Success : ExitCode::Usage;
}

} // namespace

int main(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const bool isEditor = zk::app::isEditorStart(arguments);
    QString error;
    if (isEditor && !zk::app::prepareEditor(&error)) {
        std::fprintf(stderr, "zkstudio: %s\n\n%s", qPrintable(error), usage);
        return int(ExitCode::Usage);
    }
    // No command opens a window: pictures, cursors and fonts need no display.
    if (!isEditor && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Outside a login session there is no runtime directory, which Qt would warn about.
    const QTemporaryDir runtimeDir;
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtimeDir.path()));
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false\n*.info=false"));
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("ZkStudio"));
    QCoreApplication::setOrganizationName(QStringLiteral("ZkStudio"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ZK_VERSION));
    return isEditor ? zk::app::runEditor(application, QCoreApplication::arguments())
                    : int(runCommand(QCoreApplication::arguments()));
}
