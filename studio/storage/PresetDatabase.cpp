#include "PresetDatabase_p.h"

#include "ZkPresetStore.h"

#include <QSqlError>
#include <QUuid>

namespace zk::storage {

namespace {

// Marks the file as a preset library ("ZkPl").
constexpr int applicationId = 0x5A6B506C;

constexpr const char *tables[] = {
    "CREATE TABLE category ("
    " id INTEGER PRIMARY KEY,"
    " name TEXT NOT NULL)",

    "CREATE TABLE folder ("
    " id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " category INTEGER NOT NULL REFERENCES category (id) ON DELETE CASCADE,"
    " parent INTEGER REFERENCES folder (id) ON DELETE CASCADE,"
    " name TEXT NOT NULL CHECK (name <> ''),"
    " position INTEGER NOT NULL)",

    // NULLs differ from each other in an index, so top folders are indexed under 0.
    "CREATE UNIQUE INDEX folder_path ON folder (category, ifnull(parent, 0), name)",

    "CREATE TABLE item ("
    " id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " slug TEXT NOT NULL UNIQUE CHECK (slug <> ''),"
    " name TEXT NOT NULL,"
    " kind INTEGER NOT NULL,"
    " folder INTEGER NOT NULL REFERENCES folder (id) ON DELETE RESTRICT,"
    " version INTEGER NOT NULL,"
    " position INTEGER NOT NULL,"
    " origin INTEGER NOT NULL CHECK (origin IN (0, 1)))",

    "CREATE INDEX item_folder ON item (folder, position)",

    // A file that is not there has neither a name nor a content.
    "CREATE TABLE resource ("
    " item INTEGER NOT NULL REFERENCES item (id) ON DELETE CASCADE,"
    " kind INTEGER NOT NULL CHECK (kind IN (0, 2)),"
    " url TEXT NOT NULL,"
    " sha256 TEXT NOT NULL,"
    " size INTEGER NOT NULL,"
    " file TEXT UNIQUE CHECK (file <> ''),"
    " file_sha256 TEXT,"
    " file_size INTEGER,"
    " PRIMARY KEY (item, kind),"
    " CHECK ((file IS NULL) = (file_sha256 IS NULL)),"
    " CHECK ((file IS NULL) = (file_size IS NULL))) WITHOUT ROWID",
};

} // namespace

PresetDatabase::PresetDatabase()
    : m_connection(QUuid::createUuid().toString())
{ }

PresetDatabase::~PresetDatabase()
{
    close();
}

PresetDatabase::State PresetDatabase::open(const QString &path)
{
    const State state = connect(path) ? examine() : stateOfError();
    if (state != State::Good && state != State::Empty)
        close();
    return state;
}

bool PresetDatabase::connect(const QString &path)
{
    m_database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    m_database.setDatabaseName(path);
    m_database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
    if (!m_database.open()) {
        m_errorText = m_database.lastError().text();
        return false;
    }
    return run(QStringLiteral("PRAGMA foreign_keys = ON"))
        && run(QStringLiteral("PRAGMA journal_mode = DELETE"))
        && run(QStringLiteral("PRAGMA synchronous = EXTRA"));
}

void PresetDatabase::close()
{
    if (!m_database.isValid())
        return;
    m_database.close();
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_connection);
    m_depth = 0;
}

PresetDatabase::State PresetDatabase::examine()
{
    const qint64 version = number(QStringLiteral("PRAGMA user_version"));
    const qint64 tableCount = number(QStringLiteral("SELECT count(*) FROM sqlite_master"));
    if (version < 0 || tableCount < 0)
        return stateOfError();
    if (version == 0 && tableCount == 0)
        return State::Empty;
    if (number(QStringLiteral("PRAGMA application_id")) != applicationId) {
        m_errorText = QStringLiteral("the file is not a preset library");
        return State::Damaged;
    }
    if (version > PresetStore::schemaVersion) {
        m_errorText = QStringLiteral("it was written by a newer version of the program "
                                     "(tables of version %1, this program knows %2)")
                          .arg(version)
                          .arg(PresetStore::schemaVersion);
        return State::Newer;
    }
    QSqlQuery check;
    if (!run(QStringLiteral("PRAGMA quick_check(1)"), {}, &check) || !check.next())
        return stateOfError();
    if (check.value(0).toString() != QLatin1String("ok")) {
        m_errorText = check.value(0).toString();
        return State::Damaged;
    }
    return State::Good;
}

PresetDatabase::State PresetDatabase::stateOfError() const
{
    // SQLITE_CORRUPT and SQLITE_NOTADB; everything else may be well again next time.
    const bool isDamaged = m_errorCode == QLatin1String("11") || m_errorCode == QLatin1String("26");
    return isDamaged ? State::Damaged : State::Failed;
}

bool PresetDatabase::createTables()
{
    if (!begin())
        return false;
    bool isGood = true;
    for (const char *table : tables)
        isGood = isGood && run(QLatin1String(table));
    isGood = isGood
        && run(QStringLiteral("PRAGMA user_version = %1").arg(PresetStore::schemaVersion))
        && run(QStringLiteral("PRAGMA application_id = %1").arg(applicationId));
    if (isGood && commit())
        return true;
    if (!isGood)
        rollback();
    return false;
}

bool PresetDatabase::run(const QString &statement, const QVariantList &values, QSqlQuery *result)
{
    QSqlQuery query(m_database);
    bool isGood = query.prepare(statement);
    for (const QVariant &value : values) {
        // A null string would be stored as NULL, but here it is an empty text like any other.
        const bool isText = value.userType() == QMetaType::QString;
        query.addBindValue(isText && value.isNull() ? QVariant(QLatin1String("")) : value);
    }
    isGood = isGood && query.exec();
    if (!isGood) {
        m_errorText = query.lastError().text();
        m_errorCode = query.lastError().nativeErrorCode();
    } else if (result) {
        *result = query;
    }
    return isGood;
}

bool PresetDatabase::change(const QString &statement, const QVariantList &values)
{
    QSqlQuery query;
    if (!run(statement, values, &query))
        return false;
    if (query.numRowsAffected() > 0)
        return true;
    m_errorText = QStringLiteral("there is no such row");
    return false;
}

qint64 PresetDatabase::number(const QString &statement, const QVariantList &values)
{
    QSqlQuery query;
    if (!run(statement, values, &query) || !query.next())
        return -1;
    return query.value(0).toLongLong();
}

bool PresetDatabase::begin()
{
    // IMMEDIATE: a second program waits here, not in the middle of its work, where it would have to
    // give up.
    const QString statement = m_depth == 0 ? QStringLiteral("BEGIN IMMEDIATE")
                                           : QStringLiteral("SAVEPOINT zk%1").arg(m_depth);
    if (!run(statement))
        return false;
    ++m_depth;
    return true;
}

bool PresetDatabase::commit()
{
    const int level = m_depth - 1;
    const QString statement =
        level == 0 ? QStringLiteral("COMMIT") : QStringLiteral("RELEASE zk%1").arg(level);
    if (!run(statement)) {
        const QString reason = m_errorText;
        rollback();
        m_errorText = reason;
        return false;
    }
    --m_depth;
    return true;
}

void PresetDatabase::rollback()
{
    const int level = --m_depth;
    if (level == 0) {
        run(QStringLiteral("ROLLBACK"));
        return;
    }
    run(QStringLiteral("ROLLBACK TO zk%1").arg(level));
    run(QStringLiteral("RELEASE zk%1").arg(level));
}

} // namespace zk::storage
