#include "ZkMediaPlayerZoomerPresenter_p.h"

ZkMediaPlayerZoomerPresenterPrivate::ZkMediaPlayerZoomerPresenterPrivate(
    ZkMediaPlayerZoomerPresenter *zoomer)
    : q_ptr(zoomer)
{ }

ZkMediaPlayerZoomerPresenterPrivate *
ZkMediaPlayerZoomerPresenterPrivate::get(ZkMediaPlayerZoomerPresenter *zoomer)
{
    return zoomer->d_func();
}

void ZkMediaPlayerZoomerPresenterPrivate::setSourceSize(const QSize &size, bool keepZoom)
{
    m_geometry.setSourceSize(size);
    if (!keepZoom)
        m_geometry.setLevel(0, QPointF());
    carryPanOn();
}

void ZkMediaPlayerZoomerPresenterPrivate::setViewport(const QSizeF &size, qreal devicePixelRatio)
{
    m_geometry.setViewport(size);
    m_devicePixelRatio = devicePixelRatio;
    carryPanOn();
    reportZoom();
}

void ZkMediaPlayerZoomerPresenterPrivate::reportZoom()
{
    Q_Q(ZkMediaPlayerZoomerPresenter);
    Q_EMIT q->sigPropertyChanged(ZKPLAYER::ZoomProperty);
}

void ZkMediaPlayerZoomerPresenterPrivate::zoom(float level, const QPointF &anchor)
{
    // Written so that it refuses what is not a number, too.
    if (!m_isZoomEnabled || !(level >= 0))
        return;
    const float levelBefore = m_geometry.level();
    const QRectF rectBefore = m_geometry.frameRect();
    m_geometry.setLevel(level, anchor);
    carryPanOn();
    if (m_geometry.level() != levelBefore || m_geometry.frameRect() != rectBefore)
        reportZoom();
}

void ZkMediaPlayerZoomerPresenterPrivate::beginPan()
{
    m_isPanning = true;
    m_panOffset = QPointF();
    m_panOrigin = m_geometry.topLeft();
}

void ZkMediaPlayerZoomerPresenterPrivate::panBy(const QPointF &offset)
{
    Q_Q(ZkMediaPlayerZoomerPresenter);
    if (!m_isPanning || !m_geometry.canPan())
        return;
    const QRectF before = m_geometry.frameRect();
    m_panOffset = offset;
    m_geometry.moveTo(m_panOrigin + offset);
    if (m_geometry.frameRect() != before)
        Q_EMIT q->sigPropertyChanged(ZKPLAYER::PanProperty);
}

// The wheel can turn while the button is held. The frame then goes on from where zooming has put it
// instead of jumping back.
void ZkMediaPlayerZoomerPresenterPrivate::carryPanOn()
{
    if (m_isPanning)
        m_panOrigin = m_geometry.topLeft() - m_panOffset;
}

ZkMediaPlayerZoomerPresenter::ZkMediaPlayerZoomerPresenter(QObject *parent)
    : ZkPresenter(parent)
    , d_ptr(std::make_unique<ZkMediaPlayerZoomerPresenterPrivate>(this))
{ }

ZkMediaPlayerZoomerPresenter::~ZkMediaPlayerZoomerPresenter() = default;

float ZkMediaPlayerZoomerPresenter::getNextZoomLevel(int step) const
{
    Q_D(const ZkMediaPlayerZoomerPresenter);
    return d->m_geometry.nextLevel(step);
}

void ZkMediaPlayerZoomerPresenter::zoom(float level, const QPointF &anchor)
{
    Q_D(ZkMediaPlayerZoomerPresenter);
    d->zoom(level, anchor);
}

float ZkMediaPlayerZoomerPresenter::zoomLevel(bool effective) const
{
    Q_D(const ZkMediaPlayerZoomerPresenter);
    return effective ? d->m_geometry.effectiveLevel() : d->m_geometry.level();
}

QRectF ZkMediaPlayerZoomerPresenter::frameRect() const
{
    Q_D(const ZkMediaPlayerZoomerPresenter);
    return d->m_geometry.frameRect();
}

void ZkMediaPlayerZoomerPresenter::beginPan()
{
    Q_D(ZkMediaPlayerZoomerPresenter);
    d->beginPan();
}

void ZkMediaPlayerZoomerPresenter::panBy(const QPointF &offset)
{
    Q_D(ZkMediaPlayerZoomerPresenter);
    d->panBy(offset);
}

void ZkMediaPlayerZoomerPresenter::endPan()
{
    Q_D(ZkMediaPlayerZoomerPresenter);
    d->m_isPanning = false;
}

bool ZkMediaPlayerZoomerPresenter::canPan() const
{
    Q_D(const ZkMediaPlayerZoomerPresenter);
    return d->m_geometry.canPan();
}
