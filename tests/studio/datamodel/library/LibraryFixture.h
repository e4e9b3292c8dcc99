// A media library in a directory of its own with everything that it says written down.
#pragma once

#include "ZkLook.h"
#include "ZkStudioMediaLibrary.h"

#include <QStringList>
#include <QTemporaryDir>

#include <functional>

// Writes notices down as "added glow", "finished glow 2 0", "loaded subject_smart_cutout_preset"...
class NoticeLog : public IZkMediaItemManagerEventObserver, public IZkCategoryTreeEventObserver
{
    using Folder = IZkFolderMedia;
    using Media = IZkAbstractMedia;
    using Type = ZKVBLMODEL::ZkMediaDownloadType;

public:
    QStringList entries;
    QVector<int> percents; // of the progress notices, which are not among the entries
    std::function<void(const QString &)> onEntry; // called after it was written down

    int count(const QString &prefix) const;
    QString text() const { return entries.join(QLatin1Char(',')); }

    void onBeforeAddItemEvent(Folder *, Media *media) override { note("adding", media); }
    void onAfterAddItemEvent(Folder *folder, Media *media) override
    {
        note(folder->medias(false).last() == media ? "added" : "added wrongly", media);
    }
    void onBeforeRemoveItemEvent(Folder *, Media *media) override { note("removing", media); }
    void onAfterRemoveItemEvent(Folder *folder, Media *media) override
    {
        note(folder->medias(false).contains(media) ? "removed wrongly" : "removed", media);
    }
    void onBeforeClearItemsEvent(Folder *) override { }
    void onAfterClearItemsEvent(Folder *) override { }
    void onBeforeMoveItemEvent(Folder *, Folder *, Media *) override { }
    void onAfterMoveItemEvent(Folder *, Folder *, Media *) override { }
    void onAllMediaChangedFinishEvent(Folder *folder) override
    {
        note(QStringLiteral("loaded ") + folder->name());
    }
    void onDownloadFinishedEvent(Media *media, Type type, int error) override;
    void onDownloadProgressEvent(Media *, Type, int percent) override { percents.append(percent); }
    void onFetchMoreStateChangedEvent(Folder *folder, int state) override
    {
        note(QStringLiteral("state %1 %2").arg(folder->name()).arg(state));
    }
    void onItemDataChangedEvent(Media *media) override { note("changed", media); }
    void onMediaInfoChangedEvent(Media *) override { }
    void onMediaStateChangedEvent(Media *media) override { note("on disk", media); }
    void onRemoveItemResultEvent(Media *, bool) override { }
    void onRenameFolderEvent(Folder *) override { }
    void onRenameItemEvent(Media *) override { }
    void beforeCategoryTreeReload() override { note(QStringLiteral("before reload")); }
    void afterCategoryTreeReload() override { note(QStringLiteral("after reload")); }

private:
    void note(const QString &entry);
    void note(const char *what, Media *media);
};

class LibraryFixture
{
public:
    explicit LibraryFixture(const QUrl &server = QUrl());
    ~LibraryFixture() { close(); }

    zk::datamodel::LibrarySettings settings;
    QTemporaryDir directory;
    NoticeLog log;

    // Opens a new library on the same directory.
    bool open(QString *error = nullptr);
    void close() { m_library.reset(); }
    ZkStudioMediaLibrary &library() { return *m_library; }
    IZkMediaItemManager *manager() const { return m_library->mediaItemManager(); }

    // The program's own presets are those slugs from now on.
    bool import(const QString &slugs);
    IZkFolderMedia *root() const;
    // Null when it is not there. Found anew on every call.
    IZkFolderMedia *folder(const QString &name) const;
    IZkFolderMedia *presets() const;
    QVector<IZkEffectMediaItem *> items() const; // in the order of the library
    IZkEffectMediaItem *item(const QString &slug) const;
    QString slugs() const; // of all items, with blanks between
    // downloadItem; when it starts, waits for its end. The entry of its end, or the refusal.
    QString download(const QString &slug,
                     ZKVBLMODEL::ZkMediaDownloadType type = ZKVBLMODEL::DownloadPreset);
    // Waits for a refresh; its error, or -1 when it did not start.
    int refresh();
    // Paths below the directory of everything but the database and the lock.
    QStringList files() const;

private:
    std::unique_ptr<ZkStudioMediaLibrary> m_library;
};

// A look with that slug; its package is about 400 bytes for every layer.
zk::effects::Look makeLook(const QString &slug, int version = 1, int layers = 1);
QVector<zk::effects::Look> looks(const QString &slugs);
void expectWarning(const QString &pattern);
