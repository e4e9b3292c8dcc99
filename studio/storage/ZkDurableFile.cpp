#include "ZkDurableFile.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <filesystem>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace zk::storage {

namespace {

bool fail(QString *error, const QString &path, const QString &reason)
{
    if (error)
        *error = QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(path), reason);
    return false;
}

std::filesystem::path nativePath(const QString &path)
{
    return std::filesystem::path(path.toStdU16String());
}

// A new name is only safe once its folder is on disk too. Windows keeps folders in its own journal.
void flushFolder(const QString &path)
{
#ifdef _WIN32
    Q_UNUSED(path)
#else
    const int folder = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (folder < 0)
        return;
    ::fsync(folder);
    ::close(folder);
#endif
}

} // namespace

bool flushToDisk(QFileDevice &file, QString *error)
{
#ifdef _WIN32
    const bool isDone = file.flush() && ::_commit(file.handle()) == 0;
#else
    const bool isDone = file.flush() && ::fsync(file.handle()) == 0;
#endif
    return isDone || fail(error, file.fileName(), file.errorString());
}

bool moveIntoPlace(const QString &from, const QString &to, QString *error)
{
    QFile file(from);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
        return fail(error, from, file.errorString());
    if (!flushToDisk(file, error))
        return false;
    file.close();

    const QString folder = QFileInfo(to).absolutePath();
    if (!QDir().mkpath(folder))
        return fail(error, folder, QStringLiteral("the folder cannot be made"));
    std::error_code code;
    std::filesystem::rename(nativePath(from), nativePath(to), code);
    if (code)
        return fail(error, to, QString::fromStdString(code.message()));
    flushFolder(folder);
    return true;
}

bool writeDurably(const QString &path, const QByteArray &bytes, QString *error)
{
    const QString part = path + QStringLiteral(".%1.part").arg(QCoreApplication::applicationPid());
    QFile file(part);
    if (!QDir().mkpath(QFileInfo(path).absolutePath()) || !file.open(QIODevice::WriteOnly))
        return fail(error, part, file.errorString());
    const bool isWritten = file.write(bytes) == bytes.size() && file.flush();
    const QString reason = file.errorString();
    file.close();
    if (isWritten && moveIntoPlace(part, path, error))
        return true;
    QFile::remove(part);
    return isWritten ? false : fail(error, part, reason);
}

QByteArray sha256OfFile(const QString &path)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return QByteArray();
    return hash.result().toHex();
}

QByteArray sha256Of(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

} // namespace zk::storage
