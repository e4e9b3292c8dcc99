// The database of a project file: its connection and its tables. Not public.
#pragma once

#include <QCryptographicHash>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>

#include <functional>

namespace zk::storage {

// Marks the file as a project ("ZkPj").
constexpr int projectApplicationId = 0x5A6B506A;

// In the order in which they are written and read.
enum class ProjectTable {
    Matte,
    Media,
    Clip,
    Effect,
    Segmentation,
    Node,
    Tracked,
    Applied,
    Project, // one row
    // These are in files with drafts alone; older programs pass over them.
    DraftEffect,
    DraftSegmentation,
    DraftNode,
    DraftTracked,
    DraftSeal, // one row
    // And these in files with areas or saved selections.
    Erasing,
    ErasingSeal, // one row
};

// Belongs to the thread that made it. A call that is false has left its reason in errorText().
class ProjectDatabase
{
public:
    ProjectDatabase();
    ~ProjectDatabase();

    // A new file that is thrown away when anything fails: nothing is journalled or synchronised.
    bool create(const QString &path);
    // Neither locks the file nor looks for a journal beside it, so nothing on disk is touched.
    bool openReadOnly(const QString &path);
    void close();

    bool run(const QString &statement, QSqlQuery *result = nullptr);
    // Whether the structure of the file is sound.
    bool check();

    // Rows go to the table that was begun last.
    bool beginTable(ProjectTable table);
    bool addRow(const QVariantList &row);
    // The row that ends the project, its drafts or what is erased, with the fingerprint of everything so far after it.
    bool addLastRow(const QVariantList &row);
    // False as soon as take() is.
    bool readTable(ProjectTable table, const std::function<bool(const QVariantList &)> &take);

    // Fingerprint of what was written or read so far, itself left out: SQLite finds a broken
    // structure, but not a flipped bit in a value.
    QByteArray digest() const { return m_digest.result().toHex(); }

    QString errorText() const { return m_errorText; }
    bool isDiskFull() const { return m_isDiskFull; }

private:
    Q_DISABLE_COPY(ProjectDatabase)
    bool connect(const QString &name, const QString &options);
    void addToDigest(const QVariantList &row);
    bool insert(const QVariantList &row);
    bool note(const QSqlQuery &failed);

    const QString m_connection;
    QSqlDatabase m_database;
    QSqlQuery m_insert;
    QCryptographicHash m_digest {QCryptographicHash::Sha1};
    QString m_errorText;
    bool m_isDiskFull = false;
};

} // namespace zk::storage
