#include "ZkMultiCropWidget_p.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <utility>

using namespace zk::widgets;

ZkMultiCropWidget::ZkMultiCropWidget(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    QEvent language(QEvent::LanguageChange);
    changeEvent(&language);
}

ZkMultiCropWidget::~ZkMultiCropWidget() = default;

QList<QRect> ZkMultiCropWidget::getCropRects() const
{
    QList<QRect> rects;
    for (const Private::Crop &crop : std::as_const(d->crops))
        rects.append(crop.rect);
    return rects;
}

void ZkMultiCropWidget::setCropRects(const QList<QRect> &rects)
{
    QVector<Private::Crop> crops;
    for (const QRect &rect : rects)
        crops.append({rect, -1});
    d->replace(crops, -1);
}

void ZkMultiCropWidget::setCropRectsWithIds(const QList<QRect> &rects,
                                            const QList<int> &ids,
                                            int activeId)
{
    if (rects.size() != ids.size())
        return;
    QVector<Private::Crop> crops;
    for (int index = 0; index < rects.size(); ++index)
        crops.append({rects.at(index), ids.at(index)});
    d->replace(crops, activeId < 0 ? -1 : ids.indexOf(activeId));
}

void ZkMultiCropWidget::clearCropRects()
{
    d->replace({}, -1);
}

void ZkMultiCropWidget::setCanvasRect(const QRect &rect)
{
    d->canvas = rect;
    update();
}

QRect ZkMultiCropWidget::canvasRect() const
{
    return d->canvas;
}

void ZkMultiCropWidget::setBackgroundOnlyMode(bool on)
{
    if (d->isBackgroundOnly == on)
        return;
    d->isBackgroundOnly = on;
    d->hovered = -1;
    d->isCloseHovered = d->isClosePressed = false;
    unsetCursor();
    update();
    if (d->drag.isOn)
        d->cancelDrag();
}

bool ZkMultiCropWidget::isBackgroundOnlyMode() const
{
    return d->isBackgroundOnly;
}

int ZkMultiCropWidget::activeCrop() const
{
    return d->active;
}

int ZkMultiCropWidget::hoveredCrop() const
{
    return d->hovered;
}

bool ZkMultiCropWidget::isDragging() const
{
    return d->drag.isOn;
}

ZkMultiCropStyle ZkMultiCropWidget::getStyle() const
{
    return d->style;
}

void ZkMultiCropWidget::setStyle(const ZkMultiCropStyle &style)
{
    d->style = style;
    update();
}

void ZkMultiCropWidget::setKeySource(QWidget *source)
{
    if (d->keySource)
        d->keySource->removeEventFilter(this);
    d->keySource = source;
    if (source)
        source->installEventFilter(this);
}

QRect ZkMultiCropWidget::handleRect(OperationType handle) const
{
    const bool isShown = d->active >= 0 && d->canEdit() && handle != MoveOperation;
    return isShown ? cropHandle(d->crops.at(d->active).rect, handle) : QRect();
}

QRect ZkMultiCropWidget::closeButtonRect() const
{
    const bool isShown = d->active >= 0 && d->canEdit();
    return isShown ? cropCloseButton(d->crops.at(d->active).rect, rect()) : QRect();
}

bool ZkMultiCropWidget::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride && d->ownsKey(static_cast<QKeyEvent *>(event))) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

// Sees the whole application during a drag, and the source of the keys always.
bool ZkMultiCropWidget::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (watched == d->keySource && (type == QEvent::FocusIn || type == QEvent::FocusOut))
        update();
    if (type != QEvent::ShortcutOverride && type != QEvent::KeyPress)
        return false;
    auto *key = static_cast<QKeyEvent *>(event);
    const bool isOurs = watched == d->keySource || key->key() == Qt::Key_Escape;
    if (!isOurs || !d->ownsKey(key))
        return false;
    event->accept();
    return type == QEvent::ShortcutOverride || d->takeKey(key);
}

// What is ignored goes to the parent widget.
void ZkMultiCropWidget::mousePressEvent(QMouseEvent *event)
{
    event->setAccepted(event->button() == Qt::LeftButton && d->canEdit());
    if (event->isAccepted())
        d->press(event->pos());
}

void ZkMultiCropWidget::mouseMoveEvent(QMouseEvent *event)
{
    const bool isLeftHeld = event->buttons().testFlag(Qt::LeftButton);
    if (d->drag.isOn && !isLeftHeld)
        d->endDrag(); // its release has got lost
    if (d->drag.isOn)
        d->continueDrag(event->pos());
    else if (!event->buttons())
        d->hover(event->pos());
    else if (!isLeftHeld || !d->canEdit())
        event->ignore();
    if (d->isBackgroundOnly)
        event->ignore();
}

void ZkMultiCropWidget::mouseReleaseEvent(QMouseEvent *event)
{
    const bool isClosePressed = std::exchange(d->isClosePressed, false);
    event->setAccepted(event->button() == Qt::LeftButton && d->canEdit());
    if (!event->isAccepted())
        return;
    update();
    if (isClosePressed && closeButtonRect().contains(event->pos()))
        d->remove(d->active);
    else if (d->drag.isOn)
        d->endDrag();
}

// The second press of a double click is a press like another.
void ZkMultiCropWidget::mouseDoubleClickEvent(QMouseEvent *event)
{
    mousePressEvent(event);
}

void ZkMultiCropWidget::leaveEvent(QEvent *event)
{
    if (!d->drag.isOn)
        d->hover({-1, -1});
    QWidget::leaveEvent(event);
}

void ZkMultiCropWidget::keyPressEvent(QKeyEvent *event)
{
    if (!d->takeKey(event))
        QWidget::keyPressEvent(event);
}

void ZkMultiCropWidget::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    if (d->drag.isOn)
        d->cancelDrag();
}

void ZkMultiCropWidget::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange && !isEnabled() && d->drag.isOn)
        d->cancelDrag();
    if (event->type() != QEvent::LanguageChange)
        return;
    // A name that somebody else has given stays.
    const QString before = std::exchange(d->name, tr("Areas to erase"));
    if (accessibleName() == before)
        setAccessibleName(d->name);
}

void ZkMultiCropWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    d->paint(painter);
}
