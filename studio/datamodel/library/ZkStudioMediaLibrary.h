// The media library of ZkStudio: cutout presets of the program and of a resource server.
#pragma once

#include "ZkLibrarySettings.h"

#include <QObject>

#include <memory>

namespace zk::effects {
struct Look;
}

// Holds one module, SmartCutoutCategory, whose root holds the folder "Cutout" and that the folder
// "subject_smart_cutout_preset". What is known stands on disk, so everything but refreshCatalogue()
// and the download of a server's item works without a network.
//
// Its items live as long as the library, also those that a refresh removes; media and folders live
// as IZkMediaLibrary says. GUI thread only; no notice comes from inside a call to the item manager.
class ZKDATAMODEL_EXPORT ZkStudioMediaLibrary : public QObject, public IZkMediaLibrary
{
    Q_OBJECT

public:
    explicit ZkStudioMediaLibrary(const zk::datamodel::LibrarySettings &settings,
                                  QObject *parent = nullptr);
    // Downloads under way end without a notice; nothing half-made stays.
    ~ZkStudioMediaLibrary() override;

    // Reads the library, repairing what a kill or a damaged disk has left. False, with the reason
    // in *error (may be null): it cannot be read, or is a newer program's; the module then has an
    // empty root.
    bool open(QString *error = nullptr);

    // Makes these the program's own presets: new and changed ones are written to disk, ones that
    // the program no longer has are removed. An item of the server with a higher version stays.
    bool importLooks(const QVector<zk::effects::Look> &looks);

    // Fetches catalogue.json from the server. sigRefreshFinished follows, never from inside the
    // call. Afterwards newer versions of what is on disk are fetched by themselves; until one is
    // complete, the old one stays in use. False: there is no server, or a refresh is under way.
    bool refreshCatalogue();

    // onDownloadFinishedEvent follows with DownloadError::Cancelled. False when that download is
    // not under way. Too late, and without effect, once everything has arrived.
    bool cancelDownload(IZkAbstractMediaItem *item, ZKVBLMODEL::ZkMediaDownloadType type);

    IZkMediaLibraryModule *module(int category) const override;
    IZkMediaItemManager *mediaItemManager() const override;
    IZkFolderMediaManager *folderMediaManager() const override;
    void addCategoryTreeObserver(IZkCategoryTreeEventObserver *observer) override;
    void removeCategoryTreeObserver(IZkCategoryTreeEventObserver *observer) override;

Q_SIGNALS:
    // error is a zk::datamodel::DownloadError; text says in English what went wrong, or is empty.
    void sigRefreshFinished(int error, const QString &text);

private:
    class Private;
    std::unique_ptr<Private> d;
};
