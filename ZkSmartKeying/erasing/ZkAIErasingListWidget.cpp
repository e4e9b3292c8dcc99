#include "ZkAIErasingListWidget.h"

#include "ZkAIErasingItemWidget.h"
#include "ZkErasingStyle.h"

#include "../presenters/ZkAIErasingPresenter.h"

#include "ZkMediaPlayer.h"
#include "datamodel/ZkSmartKeyingEditing.h"

#include <QEvent>
#include <QPointer>

namespace {

// Widget pixels.
const int RowSpacing = 4;
const QSize RowSize(326, 78);

} // namespace

ZkAIErasingListWidget::ZkAIErasingListWidget(ZkAIErasingPresenter *presenter, QWidget *settingView)
    : ZkListWidget(settingView)
    , m_presenter(presenter)
{
    zkApplyStyle(this, QStringLiteral("SmartKeying/ZkAIErasingListWidget"));
    setItemSpacing(RowSpacing);
    setDragEnabled(false);
    setMouseTracking(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    connectPresenter();
    // What a press on the row does by mouse.
    connect(this, &QListWidget::itemActivated, this, [this](QListWidgetItem *item) {
        rowWidget(row(item))->select();
    });
    translate();
}

ZkAIErasingListWidget::~ZkAIErasingListWidget() = default;

// Queued: a row may be the sender of what it is removed by.
void ZkAIErasingListWidget::connectPresenter()
{
    using List = ZkAIErasingListWidget;
    using Presenter = ZkAIErasingPresenter;
    const auto queued = Qt::QueuedConnection;
    connect(m_presenter, &Presenter::sigNodeChanged, this, &List::updateNode, queued);
    connect(m_presenter, &Presenter::sigNodeChangedSync, this, &List::updateNode, queued);
    connect(m_presenter, &Presenter::sigResetAllData, this, &List::reload, queued);
    connect(m_presenter, &Presenter::sigNeedReloadAllData, this, &List::reload, queued);
}

void ZkAIErasingListWidget::translate()
{
    setAccessibleName(tr("Selected Objects"));
}

void ZkAIErasingListWidget::changeEvent(QEvent *event)
{
    ZkListWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        translate();
}

ZkAIErasingItemWidget *ZkAIErasingListWidget::rowWidget(int row) const
{
    return qobject_cast<ZkAIErasingItemWidget *>(itemWidget(item(row)));
}

void ZkAIErasingListWidget::reload()
{
    const IZkSmartKeyingService *const service = m_presenter->smartKeyingService();
    if (!service || !m_presenter->playerPresenter()
        || !m_presenter->playerPresenter()->mediaPlayer())
        return;
    clear();
    for (int index = 0; index < service->segmentCount(); ++index) {
        insertRow(index);
        fillRow(index, index, service->segmentNodeAt(index));
    }
}

void ZkAIErasingListWidget::updateNode(qint64 frame)
{
    if (m_isUpdating)
        return;
    m_isUpdating = true;
    // Showing the frame may process events.
    const QPointer<ZkAIErasingListWidget> alive(this);
    showNode(frame);
    if (alive)
        m_isUpdating = false;
}

void ZkAIErasingListWidget::showNode(qint64 frame)
{
    const IZkSmartKeyingService *const service = m_presenter->smartKeyingService();
    if (!service || !m_presenter->playerPresenter()->mediaPlayer())
        return;
    const QPointer<ZkAIErasingListWidget> alive(this);
    goToFrame(frame);
    if (!alive)
        return;
    const int index = service->segmentIndexAt(frame);
    int row = rowOf(frame);
    if (index < 0) {
        delete takeItem(row);
        return;
    }
    if (row < 0) {
        row = qMin(index, count());
        insertRow(row);
    }
    fillRow(row, index, frame);
}

void ZkAIErasingListWidget::goToFrame(qint64 frame)
{
    ZkMediaPlayerPresenter *const player = m_presenter->playerPresenter();
    if (player->currentFrame() != frame)
        player->seek(static_cast<int>(frame));
    player->update();
}

int ZkAIErasingListWidget::rowOf(qint64 frame) const
{
    for (int row = 0; row < count(); ++row) {
        if (rowWidget(row)->frame() == frame)
            return row;
    }
    return -1;
}

void ZkAIErasingListWidget::insertRow(int row)
{
    auto *const item = new QListWidgetItem;
    item->setSizeHint(RowSize);
    insertItem(row, item);
    setItemWidget(item, new ZkAIErasingItemWidget(m_presenter, this));
}

void ZkAIErasingListWidget::fillRow(int row, int index, qint64 frame)
{
    ZkAIErasingItemWidget *const widget = rowWidget(row);
    widget->setFrame(frame);
    widget->setThumbnail(m_presenter->editController()->segmentThumbnail(index));
    item(row)->setData(Qt::AccessibleTextRole, widget->timeText());
}
