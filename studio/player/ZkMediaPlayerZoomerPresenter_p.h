// Not public. What the player and its widget tell the zoomer.
#pragma once

#include "ZkMediaPlayer.h"
#include "ZkZoomGeometry_p.h"

// Owned by the zoomer presenter. GUI thread only.
class ZKMEDIAPLAYER_EXPORT ZkMediaPlayerZoomerPresenterPrivate
{
    Q_DECLARE_PUBLIC(ZkMediaPlayerZoomerPresenter)

public:
    explicit ZkMediaPlayerZoomerPresenterPrivate(ZkMediaPlayerZoomerPresenter *zoomer);

    static ZkMediaPlayerZoomerPresenterPrivate *get(ZkMediaPlayerZoomerPresenter *zoomer);

    // Reports nothing: the player does, when it has opened the source as a whole. An empty size: there
    // is no frame.
    void setSourceSize(const QSize &size, bool keepZoom);
    // In widget pixels, with the device pixels of one widget pixel. Always reports zoom, since views
    // that lie over the player have to follow even when the frame stays where it is.
    void setViewport(const QSizeF &size, qreal devicePixelRatio);
    qreal devicePixelRatio() const { return m_devicePixelRatio; }
    void reportZoom();
    // Empty while there is no frame.
    QSize sourceSize() const { return m_geometry.sourceSize(); }
    float fittedLevel() const { return m_geometry.fittedLevel(); }

    // While off, zoom() is ignored. Panning stays possible.
    void setZoomEnabled(bool enabled) { m_isZoomEnabled = enabled; }
    bool isZoomEnabled() const { return m_isZoomEnabled; }

private:
    void zoom(float level, const QPointF &anchor);
    void beginPan();
    void panBy(const QPointF &offset);
    void carryPanOn();

    ZkMediaPlayerZoomerPresenter *q_ptr;
    zk::player::ZoomGeometry m_geometry;
    qreal m_devicePixelRatio = 1;
    bool m_isZoomEnabled = true;
    bool m_isPanning = false;
    QPointF m_panOrigin; // top left of the frame when the pan began
    QPointF m_panOffset; // as it was given last
};
