#include "player/ZkMediaPlayerWidget.h"

#include "ZkMediaPlayerZoomerPresenter_p.h"
#include "widgets/ZkDrawing.h"

#include <QChildEvent>
#include <QPointer>
#include <QVBoxLayout>

class ZkMediaPlayerWidget::Private
{
public:
    explicit Private(ZkMediaPlayerWidget *widget)
        : q(widget)
        , surface(new ZkVblPlayerWidget(widget))
    { }

    QSize sourceSize() const;
    void tellSourceSize();

    ZkMediaPlayerWidget *q;
    QPointer<ZkMediaPlayerPresenter> presenter;
    ZkVblPlayerWidget *surface;
};

QSize ZkMediaPlayerWidget::Private::sourceSize() const
{
    if (!presenter)
        return {};
    return ZkMediaPlayerZoomerPresenterPrivate::get(presenter->zoomerPresenter())->sourceSize();
}

void ZkMediaPlayerWidget::Private::tellSourceSize()
{
    const QSize size = sourceSize();
    const auto canvases = q->findChildren<ZkDrawingWidget *>();
    for (ZkDrawingWidget *canvas : canvases)
        canvas->setMaximumImageSize(size);
}

ZkMediaPlayerWidget::ZkMediaPlayerWidget(QWidget *parent)
    : ZkWidget(parent)
    , d(std::make_unique<Private>(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(d->surface);
}

// The surface reports that it goes, which must not come back here any more.
ZkMediaPlayerWidget::~ZkMediaPlayerWidget()
{
    setPresenter(nullptr);
}

void ZkMediaPlayerWidget::setPresenter(ZkMediaPlayerPresenter *presenter)
{
    if (d->presenter == presenter)
        return;
    if (d->presenter)
        disconnect(d->presenter, nullptr, this, nullptr);
    d->presenter = presenter;
    if (presenter)
        connect(presenter, &ZkMediaPlayerPresenter::sigPropertyChanged, this, [this] {
            d->tellSourceSize();
        });
    d->surface->setPresenter(presenter);
    d->tellSourceSize();
}

ZkMediaPlayerPresenter *ZkMediaPlayerWidget::playerPresenter() const
{
    return d->presenter;
}

ZkVblPlayerWidget *ZkMediaPlayerWidget::vblPlayerWidget() const
{
    return d->surface;
}

// A child that is polished is whole, and has not been drawn on yet.
void ZkMediaPlayerWidget::childEvent(QChildEvent *event)
{
    ZkWidget::childEvent(event);
    if (event->polished())
        d->tellSourceSize();
}
