// Fetches every preset of a server into a library, and says how far it is.
//   zk_library_downloader DIRECTORY SERVER
#include "LibraryFixture.h"

#include <QGuiApplication>

#include <cstdio>

namespace {

class Talker : public NoticeLog
{
public:
    void onDownloadProgressEvent(IZkAbstractMedia *media,
                                 ZKVBLMODEL::ZkMediaDownloadType,
                                 int percent) override
    {
        std::printf("%s %d\n", qPrintable(media->name()), percent);
        std::fflush(stdout);
    }
};

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    zk::datamodel::LibrarySettings settings;
    settings.directory = application.arguments().value(1);
    settings.server = QUrl(application.arguments().value(2));
    ZkStudioMediaLibrary library(settings);
    Talker talker;
    library.mediaItemManager()->addObserver(&talker);
    if (!library.open())
        return 1;
    QObject::connect(&library, &ZkStudioMediaLibrary::sigRefreshFinished, &library, [&library] {
        const auto medias =
            library.module(ZKVBLMODEL::SmartCutoutCategory)->rootFolder()->medias(true);
        for (IZkAbstractMedia *media : medias)
            library.mediaItemManager()->downloadItem(media->mediaItem(),
                                                     ZKVBLMODEL::DownloadPreset);
    });
    library.refreshCatalogue();
    return application.exec();
}
