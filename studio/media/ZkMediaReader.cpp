#include "ZkMediaReader.h"

#include "ZkStillReader.h"
#include "ZkVideoReader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace zk::media {

namespace {

// What can be said about a file without knowing any format; empty when nothing is wrong.
QString obstacle(const QString &path)
{
    const QFileInfo file(path);
    const QString name = QDir::toNativeSeparators(path);
    if (!file.exists())
        return QCoreApplication::translate("zk::media", "%1 does not exist; check the path.")
            .arg(name);
    if (file.isDir())
        return QCoreApplication::translate("zk::media", "%1 is a folder; choose a file in it.")
            .arg(name);
    if (!file.isReadable())
        return QCoreApplication::translate("zk::media",
                                           "%1 cannot be read; ask its owner for permission.")
            .arg(name);
    if (file.size() == 0)
        return QCoreApplication::translate("zk::media", "%1 is empty; copy or download it again.")
            .arg(name);
    return {};
}

} // namespace

MediaReader::MediaReader(MediaInfo info)
    : m_info(std::move(info))
{ }

MediaReader::~MediaReader() = default;

std::unique_ptr<MediaReader>
MediaReader::open(const QString &path, QString *error, const StillOptions &still)
{
    QString reason = obstacle(path);
    std::unique_ptr<MediaReader> reader;
    if (reason.isEmpty())
        reader = StillReader::open(path, still, &reason);
    if (!reader && reason.isEmpty())
        reader = VideoReader::open(path, still, &reason);
    if (!reader && error)
        *error = reason;
    return reader;
}

QImage MediaReader::frameAt(qint64 frame)
{
    return frame >= 0 && frame < m_info.frameCount ? decode(frame) : QImage();
}

} // namespace zk::media
