#include "ProjectDatabase_p.h"

#include <QSqlError>
#include <QSqlRecord>
#include <QUrl>
#include <QUuid>

namespace zk::storage {

namespace {

struct TableInfo
{
    const char *name;
    const char *columns;
    int columnCount;
};

// Of what a clip carries and of its draft.
constexpr char effectColumns[] = "clip INTEGER REFERENCES clip (id),"
                                 " type INTEGER, slug TEXT, settings BLOB, is_enabled INTEGER";

constexpr char segmentationColumns[] =
    "clip INTEGER REFERENCES clip (id), business_type INTEGER,"
    " preview_type INTEGER, overlay_colour TEXT, overlay_alpha INTEGER, is_inverted INTEGER";

constexpr char nodeColumns[] =
    "clip INTEGER REFERENCES clip (id), business_type INTEGER, frame INTEGER, revision INTEGER,"
    " keep INTEGER REFERENCES matte (id), remove INTEGER REFERENCES matte (id),"
    " erase INTEGER REFERENCES matte (id), given INTEGER REFERENCES matte (id),"
    " result INTEGER REFERENCES matte (id)";

constexpr char trackedColumns[] =
    "clip INTEGER REFERENCES clip (id), business_type INTEGER, frame INTEGER,"
    " is_forward INTEGER, matte INTEGER REFERENCES matte (id), confidence REAL,"
    " seed INTEGER, seed_revision INTEGER, serial INTEGER";

constexpr TableInfo tables[] = {
    {"matte",
     "id INTEGER PRIMARY KEY,"
     " width INTEGER, height INTEGER," // of the frame
     " box_x INTEGER, box_y INTEGER, box_width INTEGER, box_height INTEGER,"
     " object_pixels INTEGER,"
     " pixels BLOB", // of the box, zlib
     9},

    {"media",
     "position INTEGER PRIMARY KEY, id INTEGER UNIQUE,"
     " path TEXT, relative_path TEXT,"
     " file_size INTEGER, modified INTEGER," // bytes; ms since 1970
     " width INTEGER, height INTEGER,"
     " rate_num INTEGER, rate_den INTEGER, frame_count INTEGER,"
     " has_audio INTEGER, is_still INTEGER, is_gif INTEGER, has_alpha INTEGER,"
     " is_variable_rate INTEGER, rotation INTEGER, format_suffix TEXT",
     18},

    {"clip",
     "position INTEGER PRIMARY KEY, id INTEGER UNIQUE,"
     " media INTEGER REFERENCES media (id),"
     " in_frame INTEGER, frame_count INTEGER, playhead INTEGER",
     6},

    {"effect", effectColumns, 5},
    {"segmentation", segmentationColumns, 6},
    {"node", nodeColumns, 9},
    {"tracked", trackedColumns, 9},

    {"applied",
     "clip INTEGER REFERENCES clip (id), frame INTEGER, matte INTEGER REFERENCES matte (id)",
     3},

    {"project",
     "id TEXT, application TEXT, saved INTEGER, origin TEXT, current_clip INTEGER, digest TEXT",
     6},

    {"draft_effect", effectColumns, 5},
    {"draft_segmentation", segmentationColumns, 6},
    {"draft_node", nodeColumns, 9},
    {"draft_tracked", trackedColumns, 9},
    {"draft_seal", "digest TEXT", 1},

    {"erasing",
     "clip INTEGER REFERENCES clip (id), business_type INTEGER, is_draft INTEGER,"
     " selection INTEGER, frame INTEGER, area INTEGER,"
     " x REAL, y REAL, width REAL, height REAL," // fractions of the frame
     " matte INTEGER REFERENCES matte (id)",
     11},
    {"erasing_seal", "digest TEXT", 1},
};

const TableInfo &infoOf(ProjectTable table)
{
    return tables[int(table)];
}

QString insertStatement(const TableInfo &info)
{
    QStringList marks;
    for (int i = 0; i < info.columnCount; ++i)
        marks.append(QStringLiteral("?"));
    return QStringLiteral("INSERT INTO %1 VALUES (%2)")
        .arg(QLatin1String(info.name), marks.join(QLatin1Char(',')));
}

} // namespace

ProjectDatabase::ProjectDatabase()
    : m_connection(QUuid::createUuid().toString())
{ }

ProjectDatabase::~ProjectDatabase()
{
    close();
}

bool ProjectDatabase::connect(const QString &name, const QString &options)
{
    m_database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    m_database.setDatabaseName(name);
    m_database.setConnectOptions(options);
    if (m_database.open())
        return true;
    m_errorText = m_database.lastError().databaseText();
    return false;
}

bool ProjectDatabase::create(const QString &path)
{
    return connect(path, QString()) && run(QStringLiteral("PRAGMA journal_mode = OFF"))
        && run(QStringLiteral("PRAGMA synchronous = OFF"))
        && run(QStringLiteral("PRAGMA locking_mode = EXCLUSIVE"));
}

bool ProjectDatabase::openReadOnly(const QString &path)
{
    const QString url = QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded());
    return connect(url + QStringLiteral("?immutable=1"),
                   QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_OPEN_URI"));
}

void ProjectDatabase::close()
{
    if (!m_database.isValid())
        return;
    m_insert = QSqlQuery();
    m_database.close();
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_connection);
}

bool ProjectDatabase::note(const QSqlQuery &failed)
{
    m_errorText = failed.lastError().databaseText();
    m_isDiskFull = failed.lastError().nativeErrorCode() == QLatin1String("13"); // SQLITE_FULL
    return false;
}

bool ProjectDatabase::run(const QString &statement, QSqlQuery *result)
{
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!query.exec(statement))
        return note(query);
    if (result)
        *result = query;
    return true;
}

bool ProjectDatabase::check()
{
    QSqlQuery query;
    if (!run(QStringLiteral("PRAGMA quick_check(1)"), &query))
        return false;
    if (!query.next())
        return note(query);
    m_errorText = query.value(0).toString();
    return m_errorText == QLatin1String("ok");
}

bool ProjectDatabase::beginTable(ProjectTable table)
{
    const TableInfo &info = infoOf(table);
    if (!run(QStringLiteral("CREATE TABLE %1 (%2)")
                 .arg(QLatin1String(info.name), QLatin1String(info.columns))))
        return false;
    m_insert = QSqlQuery(m_database);
    return m_insert.prepare(insertStatement(info)) || note(m_insert);
}

bool ProjectDatabase::addRow(const QVariantList &row)
{
    addToDigest(row);
    return insert(row);
}

bool ProjectDatabase::addLastRow(const QVariantList &row)
{
    addToDigest(row);
    return insert(row + QVariantList {QString::fromLatin1(digest())});
}

bool ProjectDatabase::insert(const QVariantList &row)
{
    for (int i = 0; i < row.size(); ++i)
        m_insert.bindValue(i, row.at(i));
    return m_insert.exec() || note(m_insert);
}

bool ProjectDatabase::readTable(ProjectTable table,
                                const std::function<bool(const QVariantList &)> &take)
{
    const TableInfo &info = infoOf(table);
    const bool hasDigest = table == ProjectTable::Project || table == ProjectTable::DraftSeal
        || table == ProjectTable::ErasingSeal;
    QSqlQuery query;
    if (!run(QStringLiteral("SELECT * FROM %1 ORDER BY rowid").arg(QLatin1String(info.name)),
             &query))
        return false;
    m_errorText =
        QStringLiteral("the table %1 is not as it should be").arg(QLatin1String(info.name));
    if (query.record().count() != info.columnCount)
        return false;
    while (query.next()) {
        QVariantList row;
        for (int i = 0; i < info.columnCount; ++i)
            row.append(query.value(i));
        addToDigest(hasDigest ? row.mid(0, row.size() - 1) : row);
        if (!take(row))
            return false;
    }
    return !query.lastError().isValid() || note(query);
}

// By what SQLite makes of the values: truth values come back as numbers, null texts as empty ones.
void ProjectDatabase::addToDigest(const QVariantList &row)
{
    for (const QVariant &value : row) {
        const bool isBytes = value.userType() == QMetaType::QByteArray;
        const QByteArray bytes = isBytes             ? value.toByteArray()
            : value.userType() == QMetaType::QString ? value.toString().toUtf8()
            : value.userType() == QMetaType::Double  ? QByteArray::number(value.toDouble(), 'g', 17)
            : value.isNull()                         ? QByteArray()
                                                     : QByteArray::number(value.toLongLong());
        m_digest.addData(QByteArray::number(bytes.size()) + ':');
        m_digest.addData(bytes);
    }
}

} // namespace zk::storage
