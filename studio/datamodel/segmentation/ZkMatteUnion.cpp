#include "ZkMatteUnion.h"

#include "ZkPixels.h"

namespace zk::datamodel {

namespace {

// Raises the pixels to those of the matte, within that rectangle.
void raise(cv::Mat pixels, const EncodedMatte &matte, const QRect &within)
{
    const QRect common = matte.box() & within;
    const QImage box = common.isEmpty() ? QImage() : matte.decodedBox();
    if (box.isNull())
        return;
    cv::Mat place = pixels(rectOf(common));
    cv::max(place, pixelsOf(box)(rectOf(common.translated(-matte.box().topLeft()))), place);
}

QImage blank(const QSize &size)
{
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(0);
    return image;
}

} // namespace

QImage unionOf(const QVector<EncodedMatte> &mattes)
{
    QImage all;
    for (const EncodedMatte &matte : mattes) {
        if (matte.isNull())
            continue;
        if (all.isNull())
            all = blank(matte.size());
        if (matte.size() == all.size())
            raise(writablePixelsOf(all), matte, all.rect());
    }
    return all;
}

EncodedMatte reunited(const EncodedMatte &before,
                      const EncodedMatte &base,
                      const QVector<EncodedMatte> &parts,
                      const QSize &frameSize,
                      const QRect &changed)
{
    QImage image = before.isNull() ? blank(frameSize) : before.decoded();
    if (image.isNull())
        return {};
    const QRect within = before.isNull() ? image.rect() : changed & image.rect();
    cv::Mat pixels = writablePixelsOf(image);
    pixels(rectOf(within)) = 0;
    raise(pixels, base, within);
    for (const EncodedMatte &part : parts)
        raise(pixels, part, within);
    return EncodedMatte(image);
}

} // namespace zk::datamodel
