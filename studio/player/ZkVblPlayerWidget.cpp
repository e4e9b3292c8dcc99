#include "player/ZkMediaPlayerWidget.h"

#include "ZkMediaPlayerPresenter_p.h"
#include "ZkMediaPlayerZoomerPresenter_p.h"
#include "widgets/ZkSkin.h"

#include <QGestureEvent>
#include <QPaintEvent>
#include <QPinchGesture>
#include <QPointer>
#include <QWheelEvent>

#include <cmath>
#include <initializer_list>
#include <utility>

namespace {

// In device pixels for a pixel of the picture: from here on the pixels themselves are what one wants to see.
constexpr double pixelsShownAbove = 2;

// Levels are no further apart from one that they stick to than this share of it.
constexpr float stickiness = 0.05F;

constexpr int wheelStep = 120; // of the wheel's angle, as QWheelEvent counts it

const QSize smallestSize(160, 90);

} // namespace

class ZkVblPlayerWidget::Private
{
public:
    explicit Private(ZkVblPlayerWidget *widget)
        : q(widget)
    { }

    void retranslate();
    void attach(ZkMediaPlayerPresenter *player);
    void detach();
    void updateViewport();
    void updatePicture();
    QImage picture() const;
    QRect frameRect() const;
    void paint(QPainter &painter, const QRect &frame, const QRect &damaged);

    void turnWheel(int angle, const QPointF &anchor);
    void pinch(const QPinchGesture &gesture);
    void zoom(float level, const QPointF &anchor);
    float adsorbed(float level) const;

    ZkVblPlayerWidget *q;
    QPointer<ZkMediaPlayerPresenter> presenter;
    bool isZoomAdsorbEnabled = true;

private:
    const QImage &reduced(const QImage &picture, const QSize &size);
    ZkMediaPlayerZoomerPresenterPrivate *zoomerPrivate() const
    {
        return ZkMediaPlayerZoomerPresenterPrivate::get(presenter->zoomerPresenter());
    }

    QString m_name; // for screen readers
    QSizeF m_viewport; // as the player knows it
    qreal m_devicePixelRatio = 0;
    QImage m_reduced; // of the picture with that key
    qint64 m_reducedKey = 0;
    int m_wheelAngle = 0; // too little for a step so far
    float m_pinchStart = 1; // level
};

// A name that somebody else has given stays.
void ZkVblPlayerWidget::Private::retranslate()
{
    const QString before = std::exchange(m_name, ZkVblPlayerWidget::tr("Picture"));
    if (q->accessibleName() == before)
        q->setAccessibleName(m_name);
}

void ZkVblPlayerWidget::Private::attach(ZkMediaPlayerPresenter *player)
{
    using PlayerPrivate = ZkMediaPlayerPresenterPrivate;
    presenter = player;
    m_viewport = QSizeF();
    if (presenter) {
        connect(presenter, &QObject::destroyed, q, [this] { q->update(); });
        connect(presenter, &ZkMediaPlayerPresenter::sigPropertyChanged, q, [this] { q->update(); });
        connect(PlayerPrivate::get(presenter), &PlayerPrivate::pictureChanged, q, [this] {
            updatePicture();
        });
        updateViewport();
    }
    q->update();
}

void ZkVblPlayerWidget::Private::detach()
{
    if (!presenter)
        return;
    disconnect(presenter, nullptr, q, nullptr);
    disconnect(ZkMediaPlayerPresenterPrivate::get(presenter), nullptr, q, nullptr);
    ZkMediaPlayerPresenterPrivate::get(presenter)->setViewport(QSizeF(), 1);
    presenter.clear();
}

void ZkVblPlayerWidget::Private::updateViewport()
{
    const QSizeF size = q->size();
    const qreal ratio = q->devicePixelRatioF();
    if (!presenter || (size == m_viewport && qFuzzyCompare(ratio, m_devicePixelRatio)))
        return;
    m_viewport = size;
    m_devicePixelRatio = ratio;
    ZkMediaPlayerPresenterPrivate::get(presenter)->setViewport(size, ratio);
}

// Zooming and opening repaint everything.
void ZkVblPlayerWidget::Private::updatePicture()
{
    const QRect frame = frameRect();
    q->update(frame.isEmpty() ? q->rect() : frame & q->rect());
}

QImage ZkVblPlayerWidget::Private::picture() const
{
    return presenter ? ZkMediaPlayerPresenterPrivate::get(presenter)->picture() : QImage();
}

QRect ZkVblPlayerWidget::Private::frameRect() const
{
    return presenter ? presenter->zoomer()->frameRect().toRect() : QRect();
}

// Pictures come reduced to what is on screen, unless the zoom has changed since.
const QImage &ZkVblPlayerWidget::Private::reduced(const QImage &picture, const QSize &size)
{
    if (m_reducedKey != picture.cacheKey() || m_reduced.size() != size) {
        const QImage &made = ZkMediaPlayerPresenterPrivate::get(presenter)->reducedPicture();
        m_reduced = made.size() == size
            ? made
            : picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        m_reducedKey = picture.cacheKey();
    }
    return m_reduced;
}

// Far enlarged frames are larger than painters can count, so only the part that is seen is handed over.
void ZkVblPlayerWidget::Private::paint(QPainter &painter, const QRect &frame, const QRect &damaged)
{
    const QImage shown = picture();
    const double ratio = q->devicePixelRatioF();
    const double devicePixels = frame.width() * ratio / shown.width();
    // Pictures are opaque.
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (devicePixels < 1) {
        painter.drawImage(frame, reduced(shown, (QSizeF(frame.size()) * ratio).toSize()));
        return;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform, devicePixels <= pixelsShownAbove);
    const QTransform toWidget = QTransform::fromScale(double(frame.width()) / shown.width(),
                                                      double(frame.height()) / shown.height())
        * QTransform::fromTranslate(frame.x(), frame.y());
    // Two more pixels around it, of which the interpolation takes its share.
    const QRect seen =
        toWidget.inverted().mapRect(QRectF(damaged & frame)).toAlignedRect().adjusted(-2, -2, 2, 2)
        & shown.rect();
    painter.setTransform(toWidget, true);
    painter.drawImage(seen.topLeft(), shown, seen);
}

void ZkVblPlayerWidget::Private::turnWheel(int angle, const QPointF &anchor)
{
    if ((angle < 0) != (m_wheelAngle < 0))
        m_wheelAngle = 0;
    m_wheelAngle += angle;
    const int steps = m_wheelAngle / wheelStep;
    m_wheelAngle -= steps * wheelStep;
    if (presenter && steps != 0)
        zoom(presenter->zoomerPresenter()->getNextZoomLevel(steps), anchor);
}

void ZkVblPlayerWidget::Private::pinch(const QPinchGesture &gesture)
{
    if (!presenter)
        return;
    if (gesture.state() == Qt::GestureStarted)
        m_pinchStart = presenter->zoomer()->zoomLevel(true);
    // From where it began, so that a view that sticks can be torn away.
    zoom(m_pinchStart * float(gesture.totalScaleFactor()),
         q->mapFromGlobal(gesture.centerPoint().toPoint()));
}

void ZkVblPlayerWidget::Private::zoom(float level, const QPointF &anchor)
{
    if (frameRect().isEmpty())
        return;
    constexpr double besideTheCorner = 0.01; // a null anchor would mean the middle
    presenter->zoomer()->zoom(isZoomAdsorbEnabled ? adsorbed(level) : level,
                              anchor.isNull() ? QPointF(besideTheCorner, besideTheCorner) : anchor);
}

// The level that one comes by or near, on the way to the level that was asked for.
float ZkVblPlayerWidget::Private::adsorbed(float level) const
{
    const float from = presenter->zoomer()->zoomLevel(true);
    const float fitted = zoomerPrivate()->fittedLevel();
    const auto sticks = [&](float stop) {
        const bool isNear = std::abs(level - stop) <= stop * stickiness;
        const bool isOnTheWay = (stop - from) * (stop - level) < 0;
        return isNear || (isOnTheWay && std::abs(from - stop) > stop * stickiness);
    };
    if (sticks(fitted))
        return 0;
    return sticks(1) ? 1 : level;
}

ZkVblPlayerWidget::ZkVblPlayerWidget(QWidget *parent)
    : ZkWidget(parent)
    , d(std::make_unique<Private>(this))
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setMinimumSize(smallestSize);
    d->retranslate();
    grabGesture(Qt::PinchGesture);
}

ZkVblPlayerWidget::~ZkVblPlayerWidget()
{
    d->detach();
}

void ZkVblPlayerWidget::setPresenter(ZkMediaPlayerPresenter *presenter)
{
    if (d->presenter == presenter)
        return;
    d->detach();
    d->attach(presenter);
}

void ZkVblPlayerWidget::setZoomAdsorbEnabled(bool enabled)
{
    d->isZoomAdsorbEnabled = enabled;
}

bool ZkVblPlayerWidget::isZoomAdsorbEnabled() const
{
    return d->isZoomAdsorbEnabled;
}

void ZkVblPlayerWidget::dealGestureEvent(QEvent *event)
{
    if (event->type() != QEvent::Gesture)
        return;
    auto *gestures = static_cast<QGestureEvent *>(event);
    if (auto *pinch = static_cast<QPinchGesture *>(gestures->gesture(Qt::PinchGesture))) {
        gestures->accept(pinch);
        d->pinch(*pinch);
    }
}

bool ZkVblPlayerWidget::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::Gesture:
        dealGestureEvent(event);
        return true;
    case QEvent::Show:
    case QEvent::ScreenChangeInternal: // maybe to one with another pixel ratio
        d->updateViewport();
        break;
    case QEvent::LanguageChange:
        d->retranslate();
        break;
    default:
        break;
    }
    return ZkWidget::event(event);
}

void ZkVblPlayerWidget::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    const QRect frame = d->picture().isNull() ? QRect() : d->frameRect();
    const QColor canvas = ZkSkinManager::instance()->color(ZKSKIN::Canvas);
    for (const QRect &rect : event->region() - frame)
        painter.fillRect(rect, canvas);
    if (event->rect().intersects(frame))
        d->paint(painter, frame, event->rect());
}

void ZkVblPlayerWidget::resizeEvent(QResizeEvent *event)
{
    ZkWidget::resizeEvent(event);
    d->updateViewport();
}

// Always taken: who hands it on to this widget must not get it back.
void ZkVblPlayerWidget::wheelEvent(QWheelEvent *event)
{
    event->accept();
    d->turnWheel(event->angleDelta().y(), event->position());
}
