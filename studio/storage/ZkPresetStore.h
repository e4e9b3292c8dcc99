// The preset library on disk: one directory with a database and the files that its rows name.
#pragma once

#include "ZkPresetRecords.h"
#include "ZkStorageGlobal.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

namespace zk::storage {

// The directory holds
//   library.db      SQLite, the only word on what there is
//   packages/ and thumbnails/   finished files; a row names each of them
//   incoming/       files that are being written; never named by a row
// A row names a file only after that file is complete under its name, so the library can be killed
// at any moment. open() then clears away what no row names and takes back rows whose file is gone.
//
// Several programs may use one directory. Only the first of them clears it, or replaces a damaged
// database.
//
// Every mutator is all or nothing: false (or 0) means that nothing has changed and errorText() says
// why. Belongs to the thread that made it.
class ZKSTORAGE_EXPORT PresetStore
{
public:
    enum class OpenResult {
        Opened, // what was there
        Created, // there was none
        Rebuilt, // a damaged one was moved aside as library.db.damaged-<time>; the library is empty
        NewerVersion, // written by a newer program; not touched and not open
        Failed, // not open
    };

    // Version of the tables that this program writes.
    static constexpr int schemaVersion = 1;

    explicit PresetStore(const QString &directory);
    ~PresetStore();

    OpenResult open();
    bool isOpen() const;
    // Why the last call failed, for people.
    QString errorText() const;

    QString directory() const;
    QString databasePath() const;
    // Of a file that a row names, or that one will name.
    QString absolutePath(const QString &file) const;
    // Where that resource's offered file belongs, relative: its name says which content it has, so
    // that a new version never overwrites the old one.
    static QString fileFor(const PresetItem &item, ResourceKind kind);
    // A fresh absolute path in incoming/ for writing that file; no other program has it.
    QString incomingPath(const QString &file) const;

    QVector<PresetCategory> categories() const;
    // Parents come before their children, siblings in their order.
    QVector<PresetFolder> folders(int category) const;
    // By folder; those of the program first, then in their order.
    QVector<PresetItem> items() const;
    // False when there is no such item.
    bool findItem(const QString &slug, PresetItem *item) const;
    bool findItem(qint64 id, PresetItem *item) const;

    bool saveCategory(const PresetCategory &category);
    // The folder at that path below the category, made with those above it where they are missing
    // (at the end of their siblings). 0 on failure.
    qint64 ensureFolder(int category, const QStringList &path);
    // Folders of the category that hold neither items nor folders, except those of `keep`.
    bool removeEmptyFolders(int category, const QVector<qint64> &keep);

    // Everything of the item but what its resources have on disk. An item of id 0 is inserted and
    // gets its id.
    bool saveItem(PresetItem *item);
    // With its files.
    bool removeItem(qint64 id);
    // The file is complete at `file` with that content. The file that it replaces is deleted.
    bool setFile(qint64 id, ResourceKind kind, const QString &file);
    // The resource has to be fetched again; a file that is still there is deleted.
    bool clearFile(qint64 id, ResourceKind kind);

    // Joins the calls of its life to one: all of them happen, or, without commit(), none. May nest.
    class ZKSTORAGE_EXPORT Transaction
    {
    public:
        explicit Transaction(PresetStore &store);
        ~Transaction();
        // False: nothing has happened.
        bool commit();

    private:
        Q_DISABLE_COPY(Transaction)
        void undo();

        PresetStore &m_store;
        bool m_isOpen;
        const int m_droppedBefore; // how many files were to be deleted when it began
    };

private:
    Q_DISABLE_COPY(PresetStore)
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace zk::storage
