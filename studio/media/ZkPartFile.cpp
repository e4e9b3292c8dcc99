#include "ZkPartFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QRegularExpression>
#include <QSet>

#include <filesystem>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#endif

namespace zk::media {

namespace {

QMutex livePartsMutex;
// Parts of this process, so that one left by an earlier process of the same number is told apart.
QSet<QString> liveParts;
int nextNumber = 0;

bool isAlive(qint64 process)
{
#ifdef Q_OS_UNIX
    return ::kill(pid_t(process), 0) == 0 || errno == EPERM;
#else
    // A file that another process holds open cannot be removed on Windows.
    Q_UNUSED(process)
    return false;
#endif
}

QString claimPartPath(const QString &target)
{
    const QFileInfo info(target);
    QMutexLocker lock(&livePartsMutex);
    const QString suffix = info.suffix().isEmpty() ? QString() : QLatin1Char('.') + info.suffix();
    const QString path = QStringLiteral("%1/.%2.part-%3-%4%5")
                             .arg(info.absolutePath(), info.fileName())
                             .arg(QCoreApplication::applicationPid())
                             .arg(++nextNumber)
                             .arg(suffix);
    liveParts.insert(path);
    return path;
}

void removeAny(const QString &path)
{
    if (QFileInfo(path).isDir())
        QDir(path).removeRecursively();
    else
        QFile::remove(path);
}

bool isStale(const QString &path, qint64 process)
{
    if (process != QCoreApplication::applicationPid())
        return !isAlive(process);
    QMutexLocker lock(&livePartsMutex);
    return !liveParts.contains(path);
}

QString cannotWrite(const QString &target)
{
    const QFileInfo folder(QFileInfo(target).absolutePath());
    const QString name = QDir::toNativeSeparators(folder.filePath());
    if (!folder.isDir())
        return QCoreApplication::translate(
                   "zk::media", "The folder %1 does not exist; create it or choose another one.")
            .arg(name);
    return QCoreApplication::translate(
               "zk::media", "Nothing can be written to the folder %1; choose another one.")
        .arg(name);
}

bool createEmpty(const QString &path, bool isFolder)
{
    if (isFolder)
        return QDir().mkdir(path);
    QFile file(path);
    return file.open(QIODevice::WriteOnly);
}

} // namespace

void PartFile::removeStale(const QString &targetPath)
{
    const QFileInfo target(targetPath);
    const QRegularExpression pattern(QStringLiteral("^\\.%1\\.part-(\\d+)-\\d+(\\.[^.]*)?$")
                                         .arg(QRegularExpression::escape(target.fileName())));
    const QFileInfoList entries =
        QDir(target.absolutePath())
            .entryInfoList(QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries) {
        const QRegularExpressionMatch match = pattern.match(entry.fileName());
        if (match.hasMatch() && isStale(entry.absoluteFilePath(), match.captured(1).toLongLong()))
            removeAny(entry.absoluteFilePath());
    }
}

bool moveIntoPlace(const QString &from, const QString &to, QString *error)
{
    std::error_code code;
    std::filesystem::rename(std::filesystem::u8path(from.toStdString()),
                            std::filesystem::u8path(to.toStdString()),
                            code);
    if (!code)
        return true;
    *error = QCoreApplication::translate("zk::media",
                                         "The finished output cannot be put in place as %1 (%2); "
                                         "choose another name.")
                 .arg(QDir::toNativeSeparators(to), QString::fromStdString(code.message()));
    return false;
}

PartFile::PartFile(const QString &target)
    : m_target(target)
    , m_path(claimPartPath(target))
{ }

std::unique_ptr<PartFile> PartFile::createFile(const QString &target, QString *error)
{
    return create(target, false, error);
}

std::unique_ptr<PartFile> PartFile::createFolder(const QString &target, QString *error)
{
    return create(target, true, error);
}

std::unique_ptr<PartFile> PartFile::create(const QString &target, bool isFolder, QString *error)
{
    if (QFileInfo(target).isDir()) {
        *error = QCoreApplication::translate("zk::media", "%1 is a folder; choose a file name.")
                     .arg(QDir::toNativeSeparators(target));
        return nullptr;
    }
    std::unique_ptr<PartFile> part(new PartFile(target));
    if (!createEmpty(part->path(), isFolder)) {
        *error = cannotWrite(target);
        return nullptr;
    }
    return part;
}

PartFile::~PartFile()
{
    removeAny(m_path);
    QMutexLocker lock(&livePartsMutex);
    liveParts.remove(m_path);
}

bool PartFile::commit(QString *error)
{
    return moveIntoPlace(m_path, m_target, error);
}

} // namespace zk::media
