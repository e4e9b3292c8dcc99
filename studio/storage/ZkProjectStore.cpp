#include "ZkProjectStore.h"

#include "ProjectRows_p.h"
#include "ZkDurableFile.h"
#include "ZkFileLock.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

namespace zk::storage {

namespace {

constexpr int lockWaitMs = 10000;

// Offsets in the first bytes of an SQLite file, whose numbers are big-endian.
constexpr int headerSize = 100;
constexpr char headerText[] = "SQLite format 3"; // with its terminating 0
constexpr int userVersionOffset = 60;
constexpr int applicationIdOffset = 68;

class Texts
{
    Q_DECLARE_TR_FUNCTIONS(ProjectStore)

public:
    static QString cannotWrite(const QString &path, const QString &reason)
    {
        return tr("%1 cannot be saved: %2. What was saved there before is unchanged.")
            .arg(QDir::toNativeSeparators(path), reason);
    }
    static QString noFolder(const QString &folder)
    {
        return tr("the folder %1 does not exist any more; choose another one")
            .arg(QDir::toNativeSeparators(folder));
    }
    static QString noPermission(const QString &folder)
    {
        return tr("nothing can be written to the folder %1; choose another one")
            .arg(QDir::toNativeSeparators(folder));
    }
    static QString isLocked() { return tr("another program is saving it just now; try again"); }
    static QString isDiskFull()
    {
        return tr("the disk is full; free some space or choose another");
    }
    static QString isNotGood() { return tr("what was written is not what was to be written"); }

    static QString isMissing(const QString &path)
    {
        return tr("%1 does not exist.").arg(QDir::toNativeSeparators(path));
    }
    static QString cannotRead(const QString &path, const QString &reason)
    {
        return tr("%1 cannot be read: %2.").arg(QDir::toNativeSeparators(path), reason);
    }
    static QString isForeign(const QString &path)
    {
        return tr("%1 is not a project of ZkStudio.").arg(QDir::toNativeSeparators(path));
    }
    static QString isDamaged(const QString &path)
    {
        return tr("%1 is damaged and cannot be opened. The file was not changed; if there is a "
                  "backup of it, open that.")
            .arg(QDir::toNativeSeparators(path));
    }
    static QString isNewer(const QString &path, const QString &version, int format)
    {
        const QString writer = version.isEmpty() ? tr("a newer version") : version;
        return tr("%1 was saved by ZkStudio %2 (project format %3). This is ZkStudio %4, which "
                  "opens formats up to %5. Install ZkStudio %2 or later to open it; the file was "
                  "not changed.")
            .arg(QDir::toNativeSeparators(path), writer)
            .arg(format)
            .arg(QCoreApplication::applicationVersion())
            .arg(ProjectStore::formatVersion);
    }
};

bool fail(QString *error, const QString &text)
{
    if (error)
        *error = text;
    return false;
}

ProjectStore::OpenResult fail(QString *error, ProjectStore::OpenResult result, const QString &text)
{
    fail(error, text);
    return result;
}

// The name beside the file, hidden, that the new one grows under.
QString besides(const QString &path, const char *suffix)
{
    const QFileInfo info(path);
    return info.dir().filePath(QLatin1Char('.') + info.fileName() + QLatin1String(suffix));
}

// False, with the reason, unless `path` is a complete project now.
bool writeDatabase(const QString &path, const ProjectRecord &project, QString *reason)
{
    ProjectDatabase database;
    const bool isWritten = database.create(path)
        && database.run(QStringLiteral("PRAGMA application_id = %1").arg(projectApplicationId))
        && database.run(QStringLiteral("PRAGMA user_version = %1").arg(ProjectStore::formatVersion))
        && ProjectWriter(database).write(project);
    if (!isWritten) {
        *reason = database.isDiskFull() ? Texts::isDiskFull() : database.errorText();
        return false;
    }
    return database.check() || fail(reason, Texts::isNotGood());
}

bool replaceFile(const QString &part, const QString &target, QString *reason)
{
    if (QFile::exists(target))
        QFile::setPermissions(part, QFile::permissions(target));
    return moveIntoPlace(part, target, reason);
}

bool saveTo(const QString &target, const ProjectRecord &project, QString *reason)
{
    const QString folder = QFileInfo(target).absolutePath();
    if (!QFileInfo(folder).isDir())
        return fail(reason, Texts::noFolder(folder));
    QLockFile::LockError problem;
    const auto lock = takeFileLock(besides(target, ".lock"), lockWaitMs, &problem);
    if (!lock)
        return fail(reason,
                    problem == QLockFile::LockFailedError ? Texts::isLocked()
                                                          : Texts::noPermission(folder));
    const QString part = besides(target, ".part");
    QFile::remove(part); // of a program that was killed
    if (writeDatabase(part, project, reason) && replaceFile(part, target, reason))
        return true;
    QFile::remove(part);
    return false;
}

} // namespace

QString ProjectStore::fileSuffix()
{
    return QStringLiteral(".zkproj");
}

bool ProjectStore::save(const QString &path, const ProjectRecord &project, QString *error)
{
    // A link stays one: the file that it leads to is replaced.
    const QFileInfo info(path);
    const QString target =
        info.isSymLink() && info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
    QString reason;
    return saveTo(target, project, &reason) || fail(error, Texts::cannotWrite(path, reason));
}

namespace {

// The numbers in the header, read without SQLite, which has its own view of what it could be.
struct Header
{
    ProjectStore::OpenResult result = ProjectStore::OpenResult::Opened;
    QString text;
    int format = 0;
};

Header refused(ProjectStore::OpenResult result, const QString &text)
{
    Header header;
    header.result = result;
    header.text = text;
    return header;
}

Header readHeader(const QString &path)
{
    using Result = ProjectStore::OpenResult;
    if (!QFileInfo::exists(path))
        return refused(Result::Missing, Texts::isMissing(path));
    QFile file(path);
    if (QFileInfo(path).isDir() || !file.open(QIODevice::ReadOnly))
        return refused(Result::Unreadable, Texts::cannotRead(path, file.errorString()));
    const QByteArray bytes = file.read(headerSize);
    const QByteArray expected(headerText, sizeof headerText);
    if (!bytes.startsWith(expected.left(bytes.size())))
        return refused(Result::Foreign, Texts::isForeign(path));
    if (bytes.size() < headerSize)
        return refused(Result::Damaged, Texts::isDamaged(path));
    const auto numberAt = [&bytes](int offset) {
        return int(qFromBigEndian<qint32>(bytes.constData() + offset));
    };
    if (numberAt(applicationIdOffset) != projectApplicationId)
        return refused(Result::Foreign, Texts::isForeign(path));
    Header header;
    header.format = numberAt(userVersionOffset);
    return header;
}

QString writerOf(ProjectDatabase &database)
{
    QSqlQuery query;
    const bool isThere =
        database.run(QStringLiteral("SELECT application FROM project"), &query) && query.next();
    return isThere ? query.value(0).toString() : QString();
}

template<typename Read>
ProjectStore::OpenResult loadWith(const QString &path, QString *error, Read read)
{
    using Result = ProjectStore::OpenResult;
    const Header header = readHeader(path);
    if (header.result != Result::Opened)
        return fail(error, header.result, header.text);
    ProjectDatabase database;
    const bool isOpen = database.openReadOnly(QFileInfo(path).absoluteFilePath());
    if (header.format > ProjectStore::formatVersion)
        return fail(error, Result::Newer, Texts::isNewer(path, writerOf(database), header.format));
    if (!isOpen || header.format < 1 || !read(database))
        return fail(error, Result::Damaged, Texts::isDamaged(path));
    return Result::Opened;
}

} // namespace

ProjectStore::OpenResult
ProjectStore::load(const QString &path, ProjectRecord *project, QString *error)
{
    return loadWith(path, error, [project](ProjectDatabase &database) {
        return database.check() && ProjectReader(database).read(project);
    });
}

ProjectStore::OpenResult
ProjectStore::loadSummary(const QString &path, ProjectRecord *project, QString *error)
{
    return loadWith(path, error, [project](ProjectDatabase &database) {
        return ProjectReader(database).readSummary(project);
    });
}

} // namespace zk::storage
