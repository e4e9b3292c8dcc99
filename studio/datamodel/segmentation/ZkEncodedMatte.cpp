#include "ZkEncodedMatte.h"

#include "ZkPixels.h"

#include <QtEndian>

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace zk::datamodel {

namespace {

// A mask's worth of memory that no honest file asks for.
constexpr int maxEdge = 1 << 15;

// Plain zlib beats PNG here: a third of the time both ways for nearly the same size, and higher levels
// save a tenth for twice the time.
constexpr int compressionLevel = 3;

QByteArray compressed(const cv::Mat &pixels)
{
    const cv::Mat box = pixels.clone(); // without the gaps between its lines
    const QByteArray roomy = qCompress(box.data, int(box.total()), compressionLevel);
    // Not shrunk where it was compressed: every mask of a clip would leave a gap as large as its box
    // behind it, too small for the next one, and memory would grow by the masks' uncompressed size.
    return QByteArray(roomy.constData(), roomy.size());
}

// Whether the data says of itself that it holds that many bytes (big-endian, in its first four): it
// makes room for as many.
bool holds(const QByteArray &data, qint64 bytes)
{
    return data.size() > 4 && qFromBigEndian<quint32>(data.constData()) == bytes;
}

} // namespace

EncodedMatte::EncodedMatte(const QImage &mask)
{
    if (mask.isNull())
        return;
    *this = ofPart(mask.size(), QPoint(), mask);
}

EncodedMatte EncodedMatte::ofPart(const QSize &size, const QPoint &at, const QImage &part)
{
    EncodedMatte matte;
    matte.m_size = size;
    const QImage grey = part.convertToFormat(QImage::Format_Grayscale8);
    const cv::Mat pixels = pixelsOf(grey);
    const cv::Rect box = pixels.empty() ? cv::Rect() : cv::boundingRect(pixels);
    if (box.empty())
        return matte;
    matte.m_box = QRect(box.x, box.y, box.width, box.height).translated(at);
    matte.m_objectPixels = cv::countNonZero(pixels(box) >= 128);
    matte.m_data = compressed(pixels(box));
    return matte;
}

bool EncodedMatte::fromParts(const QSize &size,
                             const QRect &box,
                             int objectPixels,
                             const QByteArray &data,
                             EncodedMatte *matte)
{
    EncodedMatte read;
    read.m_size = size;
    read.m_box = box;
    read.m_objectPixels = objectPixels;
    read.m_data = data;
    const bool isSane = size.width() <= maxEdge && size.height() <= maxEdge
        && (read.isEmpty() || QRect(QPoint(), size).contains(box))
        && read.isEmpty() == data.isEmpty();
    *matte = isSane ? read : EncodedMatte();
    return isSane;
}

QImage EncodedMatte::decodedBox() const
{
    const qint64 bytes = qint64(m_box.width()) * m_box.height();
    const QByteArray pixels =
        !isEmpty() && holds(m_data, bytes) ? qUncompress(m_data) : QByteArray();
    if (isEmpty() || pixels.size() != bytes)
        return {};
    QImage image(m_box.size(), QImage::Format_Grayscale8);
    for (int y = 0; y < m_box.height(); ++y)
        std::copy_n(
            pixels.constData() + qint64(y) * m_box.width(), m_box.width(), image.scanLine(y));
    return image;
}

QImage EncodedMatte::decoded() const
{
    if (isNull())
        return {};
    QImage image(m_size, QImage::Format_Grayscale8);
    image.fill(0);
    if (isEmpty())
        return image;
    const QImage box = decodedBox();
    if (box.isNull())
        return {};
    for (int y = 0; y < m_box.height(); ++y)
        std::copy_n(box.constScanLine(y), m_box.width(), image.scanLine(m_box.y() + y) + m_box.x());
    return image;
}

} // namespace zk::datamodel
