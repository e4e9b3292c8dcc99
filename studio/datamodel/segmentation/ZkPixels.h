// Private to the data model: pictures of Qt as matrices of OpenCV, without copying pixels. A matrix is
// valid while its picture lives and is not changed.
#pragma once

#include <QImage>

#include <opencv2/core.hpp>

namespace zk::datamodel {

inline int matrixType(const QImage &image)
{
    return CV_8UC(image.depth() / 8);
}

inline cv::Rect rectOf(const QRect &rect)
{
    return rect.isEmpty() ? cv::Rect() : cv::Rect(rect.x(), rect.y(), rect.width(), rect.height());
}

// To be read only.
inline cv::Mat pixelsOf(const QImage &image)
{
    if (image.isNull())
        return {};
    return cv::Mat(image.height(),
                   image.width(),
                   matrixType(image),
                   const_cast<uchar *>(image.constBits()),
                   size_t(image.bytesPerLine()));
}

inline cv::Mat writablePixelsOf(QImage &image)
{
    return cv::Mat(image.height(),
                   image.width(),
                   matrixType(image),
                   image.bits(),
                   size_t(image.bytesPerLine()));
}

// A Format_Grayscale8 copy of a CV_8UC1 matrix; null for an empty one.
inline QImage greyImage(const cv::Mat &pixels)
{
    if (pixels.empty())
        return {};
    QImage image(pixels.cols, pixels.rows, QImage::Format_Grayscale8);
    pixels.copyTo(writablePixelsOf(image));
    return image;
}

} // namespace zk::datamodel
