#include "ZkPresetsCommand.h"

#include "ZkProgressReport.h"
#include "ZkStudioSession.h"

#include "library/ZkStudioProjectManager.h"

#include <QCommandLineParser>

#include <cstdio>

namespace zk::app {

namespace {

void printItems(const IZkMediaLibrary *library)
{
    const IZkMediaLibraryModule *module = library->module(ZKVBLMODEL::SmartCutoutCategory);
    const QVector<IZkAbstractMedia *> medias = module->rootFolder()->medias(true);
    for (const IZkAbstractMedia *media : medias) {
        const IZkAbstractMediaItem *item = media->mediaItem();
        std::printf("%-20s %-24s %s\n",
                    qPrintable(item->slug()),
                    qPrintable(item->name()),
                    item->needsDownload() ? "to download" : "on disk");
    }
}

} // namespace

ExitCode runPresetsCommand(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Lists the looks that a cutout can have."));
    const QCommandLineOption library(QStringLiteral("library"),
                                     QStringLiteral("Folder of the preset library."),
                                     QStringLiteral("DIR"));
    const QCommandLineOption server(QStringLiteral("preset-server"),
                                    QStringLiteral("Refresh the catalogue from there first."),
                                    QStringLiteral("URL"));
    parser.addOptions({library, server});
    parser.addHelpOption();
    ProgressReport report(false);
    if (!parser.parse(QStringList(QStringLiteral("zkstudio presets")) + arguments)) {
        report.error(ExitCode::Usage, parser.errorText());
        return ExitCode::Usage;
    }
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp(0);
    StudioSession session;
    QString error;
    if (!session.openLibrary(parser.value(library), parser.value(server), &error)) {
        report.error(ExitCode::BadPreset, error);
        return ExitCode::BadPreset;
    }
    printItems(session.projectManager()->mediaLibrary());
    return ExitCode::Success;
}

} // namespace zk::app
