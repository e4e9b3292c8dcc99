#pragma once

#include "ZkThumbnailLoader.h"

#include "ZkFrameCache.h"

#include <QRectF>
#include <QSet>

class QPainter;
class ZkStudioClip;

namespace zk::timeline {

class TimelineScale;

// The row of thumbnails of a clip. A thumbnail stands for a power of two of frames and begins at a
// multiple of it, so that zooming meets again what is there already. Until a thumbnail is decoded, one of
// a frame before it stands in. GUI thread only.
class ZKTIMELINEVIEW_EXPORT Filmstrip : public QObject
{
    Q_OBJECT

public:
    explicit Filmstrip(QObject *parent = nullptr);

    // A null clip has no pictures.
    void setClip(const ZkStudioClip *clip);
    // Asks for the pictures that this part of the clip needs, and gives up those that were asked for
    // before. The height is that of the strip in widget pixels.
    void prepare(const TimelineScale &scale, double height, double devicePixelRatio);
    // Paints what is there into the part of the strip between two x.
    void paint(QPainter *painter,
               const QRectF &strip,
               const TimelineScale &scale,
               double left,
               double right) const;

    qint64 cachedBytes() const { return m_cache.bytes(); }

Q_SIGNALS:
    // There is a picture more, which begins at that frame of the clip.
    void sigLoaded(qint64 frame);

private:
    void onLoaded(qint64 fileFrame, const QImage &picture);
    void setHeight(int pixels);
    qint64 step(const TimelineScale &scale, double height) const;
    QImage pictureFor(qint64 frame, qint64 step) const;
    void paintCell(QPainter *painter, const QRectF &cell, const QImage &picture) const;

    ThumbnailLoader m_loader;
    mutable zk::media::FrameCache m_cache; // finding moves to the front
    zk::media::MediaInfo m_media; // an empty path: no clip
    qint64 m_inFrame = 0;
    int m_height = 0; // of the pictures, in pixels
    QString m_key; // of them in the cache
    QSet<qint64> m_unreadable; // frames of the clip
};

} // namespace zk::timeline
