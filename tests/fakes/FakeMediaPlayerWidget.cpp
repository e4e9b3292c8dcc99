// Notes what is asked of it, and shows nothing.
#include "Journal.h"

#include "player/ZkMediaPlayerWidget.h"

#include <QResizeEvent>

using zk::fake::note;

class ZkVblPlayerWidget::Private
{
public:
    bool isZoomAdsorbEnabled = true;
};

ZkVblPlayerWidget::ZkVblPlayerWidget(QWidget *parent)
    : ZkWidget(parent)
    , d(std::make_unique<Private>())
{ }
ZkVblPlayerWidget::~ZkVblPlayerWidget() = default;
void ZkVblPlayerWidget::setPresenter(ZkMediaPlayerPresenter *) { }
void ZkVblPlayerWidget::setZoomAdsorbEnabled(bool enabled)
{
    note("surface.setZoomAdsorbEnabled", enabled);
    d->isZoomAdsorbEnabled = enabled;
}
bool ZkVblPlayerWidget::isZoomAdsorbEnabled() const
{
    return d->isZoomAdsorbEnabled;
}
void ZkVblPlayerWidget::dealGestureEvent(QEvent *)
{
    note("surface.dealGestureEvent");
}
bool ZkVblPlayerWidget::event(QEvent *event)
{
    return ZkWidget::event(event);
}
void ZkVblPlayerWidget::paintEvent(QPaintEvent *) { }
void ZkVblPlayerWidget::resizeEvent(QResizeEvent *) { }
void ZkVblPlayerWidget::wheelEvent(QWheelEvent *event)
{
    note("surface.wheel", event->angleDelta().y());
    event->accept();
}

class ZkMediaPlayerWidget::Private
{
public:
    ZkMediaPlayerPresenter *presenter = nullptr;
    ZkVblPlayerWidget *surface = nullptr;
};

ZkMediaPlayerWidget::ZkMediaPlayerWidget(QWidget *parent)
    : ZkWidget(parent)
    , d(std::make_unique<Private>())
{
    d->surface = new ZkVblPlayerWidget(this);
}
ZkMediaPlayerWidget::~ZkMediaPlayerWidget() = default;
void ZkMediaPlayerWidget::setPresenter(ZkMediaPlayerPresenter *presenter)
{
    note("playerWidget.setPresenter");
    d->presenter = presenter;
}
ZkMediaPlayerPresenter *ZkMediaPlayerWidget::playerPresenter() const
{
    return d->presenter;
}
ZkVblPlayerWidget *ZkMediaPlayerWidget::vblPlayerWidget() const
{
    return d->surface;
}
void ZkMediaPlayerWidget::childEvent(QChildEvent *event)
{
    ZkWidget::childEvent(event);
}
