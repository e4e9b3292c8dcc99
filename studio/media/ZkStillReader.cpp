#include "ZkStillReader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

namespace zk::media {

namespace {

// Qt fills what is missing of a JPEG with grey. A complete one has its end marker after the last start
// of picture data; in between, the marker's bytes cannot occur.
bool isTruncatedJpeg(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return true;
    const QByteArray data = file.readAll();
    return data.lastIndexOf("\xff\xd9") < data.lastIndexOf("\xff\xda");
}

int clockwiseDegrees(QImageIOHandler::Transformations transformation)
{
    switch (transformation & QImageIOHandler::TransformationRotate270) {
    case QImageIOHandler::TransformationRotate90:
        return 90;
    case QImageIOHandler::TransformationRotate180:
        return 180;
    case QImageIOHandler::TransformationRotate270:
        return 270;
    default:
        return 0;
    }
}

} // namespace

StillReader::StillReader(MediaInfo info, QImage image)
    : MediaReader(std::move(info))
    , m_image(std::move(image))
{ }

std::unique_ptr<MediaReader>
StillReader::open(const QString &path, const StillOptions &still, QString *error)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    if (!reader.canRead() || (reader.supportsAnimation() && reader.imageCount() != 1))
        return nullptr;
    const bool isComplete = reader.format() != "jpeg" || !isTruncatedJpeg(path);
    MediaInfo info;
    info.path = path;
    info.formatSuffix = QFileInfo(path).suffix().toLower();
    info.rotation = clockwiseDegrees(reader.transformation());
    return create(std::move(info), isComplete ? reader.read() : QImage(), still, error);
}

std::unique_ptr<MediaReader>
StillReader::create(MediaInfo info, const QImage &image, const StillOptions &still, QString *error)
{
    if (image.isNull()) {
        *error = QCoreApplication::translate("zk::media",
                                             "The picture %1 is damaged; copy or export it again.")
                     .arg(QDir::toNativeSeparators(info.path));
        return nullptr;
    }
    info.isStill = true;
    info.hasAlpha = image.hasAlphaChannel();
    info.size = image.size();
    info.frameCount = still.frameCount;
    info.frameRateNum = still.frameRateNum;
    info.frameRateDen = still.frameRateDen;
    return std::unique_ptr<MediaReader>(
        new StillReader(std::move(info), image.convertToFormat(QImage::Format_RGBA8888)));
}

QImage StillReader::decode(qint64)
{
    return m_image;
}

} // namespace zk::media
