#pragma once

#include "ZkMediaGlobal.h"

#include <QCache>
#include <QImage>
#include <QMutex>
#include <QPair>
#include <QString>

namespace zk::media {

// Pictures by (key, frame), least recently used out first. The pixels held never exceed the limit in
// bytes; a picture that is larger than the limit is not kept at all. Thread-safe.
class ZKMEDIA_EXPORT FrameCache
{
public:
    explicit FrameCache(qint64 maxBytes);

    // Null when it is not held.
    QImage find(const QString &key, qint64 frame);
    void insert(const QString &key, qint64 frame, const QImage &image);
    // Forgets every frame of the key.
    void remove(const QString &key);
    void clear();

    qint64 maxBytes() const;
    void setMaxBytes(qint64 bytes);
    // What the pictures held count for: their bytes, each rounded up to a whole KiB.
    qint64 bytes() const;

private:
    mutable QMutex m_mutex;
    QCache<QPair<QString, qint64>, QImage> m_images;
};

} // namespace zk::media
