#include "ZkEraseFrames.h"

#include "ZkEraseTexts.h"
#include "ZkResultWriter.h"

#include <opencv2/imgproc.hpp>
#include <opencv2/photo.hpp>

#include <cmath>

namespace zk::erasing {

namespace {

// Less of the object than an eighth leaves no trace that would be seen.
constexpr int leastOpacity = 32; // of 255
constexpr int opaque = 255;
constexpr int alphaChannel = 3;
constexpr double alphaRadius = 3; // pixels around that the transparency is taken from

cv::Mat matOver(const QImage &image, int type)
{
    return cv::Mat(image.height(),
                   image.width(),
                   type,
                   const_cast<uchar *>(image.constBits()),
                   size_t(image.bytesPerLine()));
}

// The area that the eraser fills, and a pixel more.
cv::Mat grown(const cv::Mat &mask)
{
    const int reach = int(std::ceil(engine::EraserOptions().grow * mask.rows)) + 1;
    const cv::Size kernel(2 * reach + 1, 2 * reach + 1);
    cv::Mat result;
    cv::dilate(mask, result, cv::getStructuringElement(cv::MORPH_ELLIPSE, kernel));
    return result;
}

} // namespace

std::unique_ptr<FrameSource>
FrameSource::open(const EraseJob &job, const QString &maskFile, QString *error)
{
    std::unique_ptr<FrameSource> source(new FrameSource);
    source->m_path = job.mediaPath;
    source->m_inFrame = job.inFrame;
    if (!source->m_masks.open(maskFile)) {
        *error = EraseTexts::damagedJob();
        return nullptr;
    }
    media::StillOptions still;
    still.frameCount = source->m_masks.count();
    source->m_reader = media::MediaReader::open(job.mediaPath, error, still);
    if (!source->m_reader)
        return nullptr;
    if (job.inFrame < 0 || source->frameCount() < 1
        || job.inFrame + source->frameCount() > source->info().frameCount) {
        *error = EraseTexts::isTooShort(job.mediaPath);
        return nullptr;
    }
    return source;
}

QImage FrameSource::frame(int index)
{
    const QImage image = m_reader->frameAt(m_inFrame + index);
    if (image.isNull())
        m_error = EraseTexts::cannotReadFrame(m_path, m_inFrame + index);
    return image;
}

bool FrameSource::readMask(int index, cv::Mat *mask)
{
    QImage image;
    if (!m_masks.read(index, &image) || (!image.isNull() && image.size() != info().size)) {
        m_error = EraseTexts::damagedJob();
        return false;
    }
    *mask = cv::Mat();
    if (!image.isNull())
        cv::threshold(matOver(image, CV_8UC1), *mask, leastOpacity - 1, opaque, cv::THRESH_BINARY);
    return true;
}

bool FrameSource::read(int index, cv::Mat *picture, cv::Mat *mask)
{
    const QImage image = frame(index);
    if (image.isNull() || !readMask(index, mask))
        return false;
    cv::cvtColor(matOver(image, CV_8UC4), *picture, cv::COLOR_RGBA2RGB);
    return true;
}

FrameSink::FrameSink(ResultWriter *writer, FrameSource *transparency)
    : m_writer(writer)
    , m_transparency(transparency)
{ }

bool FrameSink::write(int index, const cv::Mat &picture)
{
    QImage image(picture.cols, picture.rows, QImage::Format_RGBA8888);
    cv::Mat rgba = matOver(image, CV_8UC4);
    cv::cvtColor(picture, rgba, cv::COLOR_RGB2RGBA);
    return addTransparency(index, &rgba) && m_writer->write(image, &m_error);
}

bool FrameSink::addTransparency(int index, cv::Mat *rgba)
{
    if (!m_transparency)
        return true;
    const QImage source = m_transparency->frame(index);
    cv::Mat mask;
    if (source.isNull() || !m_transparency->readMask(index, &mask)) {
        m_error = m_transparency->errorString();
        return false;
    }
    cv::Mat alpha;
    cv::extractChannel(matOver(source, CV_8UC4), alpha, alphaChannel);
    if (!mask.empty() && cv::countNonZero(alpha != opaque) > 0)
        cv::inpaint(alpha, grown(mask), alpha, alphaRadius, cv::INPAINT_TELEA);
    cv::insertChannel(alpha, *rgba, alphaChannel);
    return true;
}

} // namespace zk::erasing
