// A media library in a directory of its own with everything that it says written down.
#pragma once

#include "ZkLook.h"
#include "ZkStudioMediaLibrary.h"

#include <QObject>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

// Writes notices down as "added glow", "finished glow 2 0", "loaded subject_smart_cutout_preset"...
class NoticeLog : public IZkMediaItemManagerEventObserver, public IZkCategoryTreeEventObserver
{
public:
    QStringList entries;
    QVector<int> percents; // of the progress notices, which are not among the entries
    std::function<void(const QString &)> onEntry; // called after it was written down

    int count(const QString &prefix) const;

    void onBeforeAddItemEvent(IZkFolderMedia *folder, IZkAbstractMedia *media) override;
    void onAfterAddItemEvent(IZkFolderMedia *folder, IZkAbstractMedia *media) override;
    void onBeforeRemoveItemEvent(IZkFolderMedia *folder, IZkAbstractMedia *media) override;
    void onAfterRemoveItemEvent(IZkFolderMedia *folder, IZkAbstractMedia *media) override;
    void onBeforeClearItemsEvent(IZkFolderMedia *) override { }
    void onAfterClearItemsEvent(IZkFolderMedia *) override { }
    void onBeforeMoveItemEvent(IZkFolderMedia *, IZkFolderMedia *, IZkAbstractMedia *) override { }
    void onAfterMoveItemEvent(IZkFolderMedia *, IZkFolderMedia *, IZkAbstractMedia *) override { }
    void onAllMediaChangedFinishEvent(IZkFolderMedia *folder) override;
    void onDownloadFinishedEvent(IZkAbstractMedia *media,
                                 ZKVBLMODEL::ZkMediaDownloadType type,
                                 int error) override;
    void onDownloadProgressEvent(IZkAbstractMedia *media,
                                 ZKVBLMODEL::ZkMediaDownloadType type,
                                 int percent) override;
    void onFetchMoreStateChangedEvent(IZkFolderMedia *folder, int state) override;
    void onItemDataChangedEvent(IZkAbstractMedia *media) override;
    void onMediaInfoChangedEvent(IZkAbstractMedia *) override { }
    void onMediaStateChangedEvent(IZkAbstractMedia *media) override;
    void onRemoveItemResultEvent(IZkAbstractMedia *, bool) override { }
    void onRenameFolderEvent(IZkFolderMedia *) override { }
    void onRenameItemEvent(IZkAbstractMedia *) override { }
    void beforeCategoryTreeReload() override;
    void afterCategoryTreeReload() override;

private:
    void note(const QString &entry);
};

class LibraryFixture
{
public:
    explicit LibraryFixture(const QUrl &server = QUrl());
    ~LibraryFixture();

    zk::datamodel::LibrarySettings settings;
    QTemporaryDir directory;
    NoticeLog log;

    // Opens a new library on the same directory.
    bool open(QString *error = nullptr);
    void close();
    ZkStudioMediaLibrary &library() { return *m_library; }

    IZkFolderMedia *root() const;
    // Null when it is not there. Found anew on every call.
    IZkFolderMedia *folder(const QString &name) const;
    IZkFolderMedia *presets() const;
    IZkEffectMediaItem *item(const QString &slug) const;
    QStringList slugs() const; // of the preset folder, in its order
    // downloadItem; when it starts, waits for its end. The entry of its end, or the refusal.
    QString download(const QString &slug, ZKVBLMODEL::ZkMediaDownloadType type);
    // Waits for a refresh; its error, or -1 when it did not start.
    int refresh();
    // Paths below the directory of everything but the database and the lock.
    QStringList files() const;

private:
    std::unique_ptr<ZkStudioMediaLibrary> m_library;
};

// A look with that slug; its package is about 400 bytes for every layer.
zk::effects::Look makeLook(const QString &slug, int version = 1, int layers = 1);
