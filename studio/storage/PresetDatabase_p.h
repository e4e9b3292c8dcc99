// The database file of the preset library: its connection, its tables, its transactions.
// Not public.
#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>

namespace zk::storage {

// Committed means on disk: a rollback journal and full synchronisation. The library is written to a
// few times per session, so the speed of a write-ahead log would buy nothing, and one plain file is
// easier to copy, and safe on network drives.
class PresetDatabase
{
public:
    enum class State {
        Good,
        Empty, // opened, without tables
        Damaged, // not a database, broken, or one of something else
        Newer, // written by a newer program
        Failed, // cannot be opened or is in use for too long
    };

    PresetDatabase();
    ~PresetDatabase();

    // Anything but Good and Empty leaves it closed.
    State open(const QString &path);
    void close();
    bool isOpen() const { return m_database.isOpen(); }
    bool createTables();

    bool
    run(const QString &statement, const QVariantList &values = {}, QSqlQuery *result = nullptr);
    // Like run(), but a statement that meets no row has failed.
    bool change(const QString &statement, const QVariantList &values);
    // Of a statement that yields one number; -1 when it yields nothing.
    qint64 number(const QString &statement, const QVariantList &values = {});

    // May nest. After a rollback inside, what was outside can still be committed.
    bool begin();
    bool commit();
    void rollback();
    int depth() const { return m_depth; }

    QString errorText() const { return m_errorText; }

private:
    Q_DISABLE_COPY(PresetDatabase)
    bool connect(const QString &path);
    State examine();
    State stateOfError() const;

    QString m_connection;
    QSqlDatabase m_database;
    QString m_errorText;
    QString m_errorCode; // SQLite's number of it
    int m_depth = 0;
};

} // namespace zk::storage
