#include "ZkFrameCache.h"

#include <QMutexLocker>

namespace zk::media {

namespace {

// QCache counts in int: KiB reach far enough.
constexpr qint64 Unit = 1024;

int limitOf(qint64 bytes)
{
    return int(qBound<qint64>(0, bytes / Unit, std::numeric_limits<int>::max()));
}

int costOf(const QImage &image)
{
    return int((image.sizeInBytes() + Unit - 1) / Unit);
}

} // namespace

FrameCache::FrameCache(qint64 maxBytes)
    : m_images(limitOf(maxBytes))
{ }

QImage FrameCache::find(const QString &key, qint64 frame)
{
    QMutexLocker lock(&m_mutex);
    const QImage *image = m_images.object({key, frame});
    return image ? *image : QImage();
}

void FrameCache::insert(const QString &key, qint64 frame, const QImage &image)
{
    if (image.isNull())
        return;
    QMutexLocker lock(&m_mutex);
    m_images.insert({key, frame}, new QImage(image), costOf(image));
}

void FrameCache::remove(const QString &key)
{
    QMutexLocker lock(&m_mutex);
    const QList<QPair<QString, qint64>> held = m_images.keys();
    for (const QPair<QString, qint64> &entry : held) {
        if (entry.first == key)
            m_images.remove(entry);
    }
}

void FrameCache::clear()
{
    QMutexLocker lock(&m_mutex);
    m_images.clear();
}

qint64 FrameCache::maxBytes() const
{
    QMutexLocker lock(&m_mutex);
    return m_images.maxCost() * Unit;
}

void FrameCache::setMaxBytes(qint64 bytes)
{
    QMutexLocker lock(&m_mutex);
    m_images.setMaxCost(limitOf(bytes));
}

qint64 FrameCache::bytes() const
{
    QMutexLocker lock(&m_mutex);
    return m_images.totalCost() * Unit;
}

} // namespace zk::media
