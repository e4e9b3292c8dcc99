#include "ZkEncodedMatte.h"

#include "ZkPixels.h"

#include <QDataStream>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include <vector>

namespace zk::datamodel {

namespace {

// A mask's worth of memory that no honest file asks for.
constexpr int maxEdge = 1 << 15;

QByteArray compressed(const cv::Mat &pixels)
{
    std::vector<uchar> png;
    // Fast rather than small: mattes are flat, the level hardly changes their size.
    if (!cv::imencode(".png", pixels, png, {cv::IMWRITE_PNG_COMPRESSION, 1}))
        return {};
    return QByteArray(reinterpret_cast<const char *>(png.data()), int(png.size()));
}

cv::Mat uncompressed(const QByteArray &png)
{
    const cv::Mat bytes(1, png.size(), CV_8UC1, const_cast<char *>(png.constData()));
    return cv::imdecode(bytes, cv::IMREAD_GRAYSCALE);
}

} // namespace

EncodedMatte::EncodedMatte(const QImage &mask)
{
    if (mask.isNull())
        return;
    const QImage grey = mask.convertToFormat(QImage::Format_Grayscale8);
    const cv::Mat pixels = pixelsOf(grey);
    const cv::Rect box = cv::boundingRect(pixels);
    m_size = grey.size();
    if (box.empty())
        return;
    m_box = QRect(box.x, box.y, box.width, box.height);
    m_objectPixels = cv::countNonZero(pixels(box) >= 128);
    m_png = compressed(pixels(box));
}

QImage EncodedMatte::decoded() const
{
    if (isNull())
        return {};
    QImage image(m_size, QImage::Format_Grayscale8);
    image.fill(0);
    if (isEmpty())
        return image;
    const cv::Mat box = uncompressed(m_png);
    if (box.cols != m_box.width() || box.rows != m_box.height())
        return {};
    box.copyTo(
        writablePixelsOf(image)(cv::Rect(m_box.x(), m_box.y(), m_box.width(), m_box.height())));
    return image;
}

QDataStream &operator<<(QDataStream &stream, const EncodedMatte &matte)
{
    return stream << matte.m_size << matte.m_box << qint32(matte.m_objectPixels) << matte.m_png;
}

QDataStream &operator>>(QDataStream &stream, EncodedMatte &matte)
{
    EncodedMatte read;
    qint32 objectPixels = 0;
    stream >> read.m_size >> read.m_box >> objectPixels >> read.m_png;
    read.m_objectPixels = objectPixels;
    const bool isSane = read.m_size.width() <= maxEdge && read.m_size.height() <= maxEdge
        && (read.isEmpty() || QRect(QPoint(), read.m_size).contains(read.m_box))
        && read.isEmpty() == read.m_png.isEmpty();
    if (stream.status() == QDataStream::Ok && !isSane)
        stream.setStatus(QDataStream::ReadCorruptData);
    matte = stream.status() == QDataStream::Ok ? read : EncodedMatte();
    return stream;
}

} // namespace zk::datamodel
