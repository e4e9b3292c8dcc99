#include "ZkErasedFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace zk::app {

namespace {

QString folderFor(const QFileInfo &media)
{
    const QFileInfo beside(media.absolutePath());
    if (beside.isWritable())
        return beside.filePath();
    const QString own = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
        + QStringLiteral("/erased");
    QDir().mkpath(own);
    return own;
}

} // namespace

QString withoutSuffix(const QString &path)
{
    const QFileInfo file(path);
    return QDir(file.absolutePath()).filePath(file.completeBaseName());
}

QString erasedFileFor(const QString &mediaPath, const QSet<QString> &reserved)
{
    const QFileInfo media(mediaPath);
    const QDir folder(folderFor(media));
    const QString first = media.completeBaseName() + QStringLiteral("-erased");
    QString name = first;
    const auto isTaken = [&] {
        return reserved.contains(folder.filePath(name))
            || !folder.entryList({name + QStringLiteral(".*")}, QDir::Files).isEmpty();
    };
    for (int number = 2; isTaken(); ++number)
        name = QStringLiteral("%1-%2").arg(first).arg(number);
    return folder.filePath(name);
}

} // namespace zk::app
