#include "ZkFilmstrip.h"

#include "ZkTimelineScale.h"
#include "timeline/ZkStudioClip.h"

#include <QPainter>

#include <cmath>

namespace zk::timeline {

namespace {

// Some thousand thumbnails, some hundred at twice the size.
constexpr qint64 cacheBytes = Q_INT64_C(48) * 1024 * 1024;
constexpr int narrowest = 24; // of a thumbnail, in widget pixels
constexpr double aheadPart = 0.5; // of the width, on either side, is decoded in advance
// A strip that is being resized does not need other pictures for every pixel.
constexpr int heightStep = 32;

QSize scaledTo(const QSize &size, int height)
{
    return QSize(qMax(1, int(qint64(size.width()) * height / qMax(1, size.height()))), height);
}

} // namespace

Filmstrip::Filmstrip(QObject *parent)
    : QObject(parent)
    , m_cache(cacheBytes)
{
    connect(&m_loader, &ThumbnailLoader::sigLoaded, this, &Filmstrip::onLoaded);
}

void Filmstrip::setClip(const ZkStudioClip *clip)
{
    m_media = clip ? clip->media() : zk::media::MediaInfo();
    m_inFrame = clip ? clip->inFrame() : 0;
    m_height = 0;
    m_cache.clear();
    m_loader.setSource({}, {});
}

void Filmstrip::setHeight(int pixels)
{
    pixels = (pixels + heightStep - 1) / heightStep * heightStep;
    if (pixels == m_height)
        return;
    m_height = pixels;
    m_key = QString::number(pixels);
    m_unreadable.clear();
    m_loader.setSource(m_media, scaledTo(m_media.size, pixels));
}

// As many frames as a thumbnail's width, rounded down: thumbnails are rather cut than spaced out.
qint64 Filmstrip::step(const TimelineScale &scale, double height) const
{
    const double width = std::max<double>(narrowest, scaledTo(m_media.size, int(height)).width());
    qint64 step = 1;
    while (double(step * 2) * scale.pixelsPerFrame() <= width)
        step *= 2;
    return step;
}

void Filmstrip::prepare(const TimelineScale &scale, double height, double devicePixelRatio)
{
    if (m_media.path.isEmpty() || scale.frameCount() == 0 || height < 1)
        return;
    setHeight(int(std::ceil(height * devicePixelRatio)));
    const qint64 step = this->step(scale, height);
    QVector<qint64> wanted;
    const auto want = [&](double left, double right) {
        for (qint64 frame = scale.frameAt(left) / step * step; frame <= scale.frameAt(right);
             frame += step) {
            const qint64 fileFrame = m_inFrame + frame;
            if (!m_unreadable.contains(frame) && !wanted.contains(fileFrame)
                && m_cache.find(m_key, frame).isNull())
                wanted.append(fileFrame);
        }
    };
    const double ahead = scale.width() * aheadPart;
    want(0, scale.width());
    want(scale.width(), scale.width() + ahead);
    want(-ahead, 0);
    m_loader.request(wanted);
}

void Filmstrip::onLoaded(qint64 fileFrame, const QImage &picture)
{
    const qint64 frame = fileFrame - m_inFrame;
    if (picture.isNull()) {
        m_unreadable.insert(frame);
        return;
    }
    m_cache.insert(m_key, frame, picture);
    Q_EMIT sigLoaded(frame);
}

QImage Filmstrip::pictureFor(qint64 frame, qint64 step) const
{
    for (qint64 earlier = frame;; step *= 2) {
        QImage picture = m_cache.find(m_key, earlier);
        if (!picture.isNull() || earlier == 0)
            return picture;
        earlier = earlier / (step * 2) * (step * 2);
    }
}

void Filmstrip::paint(QPainter *painter,
                      const QRectF &strip,
                      const TimelineScale &scale,
                      double left,
                      double right) const
{
    if (m_media.path.isEmpty() || scale.frameCount() == 0)
        return;
    const qint64 step = this->step(scale, strip.height());
    const qint64 last = scale.frameAt(right);
    const double clipEnd = scale.leftOf(scale.frameCount());
    for (qint64 frame = scale.frameAt(left) / step * step; frame <= last; frame += step) {
        const double cellLeft = scale.leftOf(frame);
        const double cellRight = std::min(scale.leftOf(frame + step), clipEnd);
        const QRectF cell(cellLeft, strip.top(), cellRight - cellLeft, strip.height());
        paintCell(painter, cell, pictureFor(frame, step));
    }
}

// The picture covers the cell; what does not fit is cut off at both sides.
void Filmstrip::paintCell(QPainter *painter, const QRectF &cell, const QImage &picture) const
{
    if (picture.isNull())
        return;
    const QSizeF part = cell.size().scaled(picture.size(), Qt::KeepAspectRatio);
    QRectF source(QPointF(), part);
    source.moveCenter(QRectF(picture.rect()).center());
    painter->drawImage(cell, picture, source);
}

} // namespace zk::timeline
