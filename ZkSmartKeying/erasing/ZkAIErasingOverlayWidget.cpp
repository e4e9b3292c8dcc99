#include "ZkAIErasingOverlayWidget.h"

#include "ZkAIErasingPreviewEffectWidget.h"
#include "ZkAIErasingProgressWidget.h"
#include "ZkErasingStyle.h"

#include "../presenters/ZkAIErasingPresenter.h"

#include "datamodel/ZkSmartKeyingEditing.h"
#include "datamodel/ZkSmartMaskEvents.h"

#include <QHBoxLayout>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

// Widget pixels.
const int BarHeight = 32;
const int ButtonHeight = 24;
const int ButtonPadding = 32; // both sides together
const int ButtonSpacing = 8;
const QSize ProgressPageSize(275, 24);
const int AboveBottom = 24;

ZkToolButton *createTextButton(const QString &styleKey, QWidget *parent)
{
    auto *const button = new ZkToolButton(parent);
    zkApplyStyle(button, styleKey);
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    button->setFixedHeight(ButtonHeight);
    return button;
}

} // namespace

ZkAIErasingOverlayWidget::ZkAIErasingOverlayWidget(ZkAIErasingPresenter *presenter,
                                                   QWidget *playerWidget,
                                                   QWidget *parent)
    : ZkPlayerOverlayWidget(playerWidget, parent)
    , m_presenter(presenter)
{
    setFixedHeight(BarHeight);
    m_stack = new QStackedWidget(this);
    m_progressPage = new ZkAIErasingProgressWidget(m_stack);
    m_progressPage->setFixedSize(ProgressPageSize);
    m_previewPage = new ZkAIErasingPreviewEffectWidget(m_stack);
    m_buttonPage = createButtonBar();
    layOut();
    ZkAIErasingOverlayWidget::RetranslateUi();
    connectPages();
    connectPresenter();
}

ZkAIErasingOverlayWidget::~ZkAIErasingOverlayWidget() = default;

QWidget *ZkAIErasingOverlayWidget::createButtonBar()
{
    auto *const bar = new QWidget(m_stack);
    bar->setFixedHeight(BarHeight);
    m_discardButton = createTextButton(QStringLiteral("SmartKeying/ZkAIErasingPrimaryBtn"), bar);
    m_saveButton = createTextButton(QStringLiteral("SmartKeying/ZkAIErasingSecondBtn"), bar);
    auto *const row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(ButtonSpacing);
    row->addWidget(m_discardButton);
    row->addWidget(m_saveButton);
    return bar;
}

void ZkAIErasingOverlayWidget::layOut()
{
    for (QWidget *const widget : {static_cast<QWidget *>(m_progressPage),
                                  static_cast<QWidget *>(m_previewPage),
                                  m_buttonPage})
        m_stack->addWidget(widget);
    m_stack->setCurrentWidget(m_previewPage);
    auto *const inner = new QHBoxLayout;
    inner->setContentsMargins(0, 0, 0, 0);
    inner->setSpacing(0);
    inner->addWidget(m_stack);
    auto *const outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);
    outer->addLayout(inner);
}

// Both buttons are as wide as the wider one.
void ZkAIErasingOverlayWidget::RetranslateUi()
{
    ZkPlayerOverlayWidget::RetranslateUi();
    m_discardButton->setText(tr("Discard"));
    m_saveButton->setText(tr("Save"));
    int width = 0;
    for (ZkToolButton *const button : {m_discardButton, m_saveButton}) {
        button->setAccessibleName(button->text());
        width = qMax(width, zkTextWidth(button, button->text()) + ButtonPadding);
    }
    m_discardButton->setFixedWidth(width);
    m_saveButton->setFixedWidth(width);
    m_buttonPage->setFixedSize(m_buttonPage->layout()->sizeHint().width(), BarHeight);
}

void ZkAIErasingOverlayWidget::connectPages()
{
    using Overlay = ZkAIErasingOverlayWidget;
    connect(m_previewPage,
            &ZkAIErasingPreviewEffectWidget::sigPreviewEffectBtnClicked,
            this,
            &Overlay::beginTracking);
    connect(m_progressPage,
            &ZkAIErasingProgressWidget::sigCancelBtnClicked,
            this,
            &Overlay::cancelTracking);
    connect(m_discardButton, &QAbstractButton::clicked, this, &Overlay::slotBtnDiscardClicked);
    connect(m_saveButton, &QAbstractButton::clicked, this, &Overlay::slotBtnSaveClicked);
}

void ZkAIErasingOverlayWidget::connectPresenter()
{
    using Overlay = ZkAIErasingOverlayWidget;
    using Presenter = ZkAIErasingPresenter;
    connect(m_presenter, &Presenter::sigBeginTracking, this, [this] {
        setType(TrackingProgressWidget);
    });
    connect(m_presenter,
            &Presenter::sigTrackingProgress,
            m_progressPage,
            &ZkAIErasingProgressWidget::setProgress);
    connect(m_presenter, &Presenter::sigTrackingModeChanged, this, &Overlay::followTracking);
    // The canvas of the new tool has come to the front.
    connect(m_presenter, &Presenter::sigPlayerEditModeChanged, this, &QWidget::raise);
}

void ZkAIErasingOverlayWidget::setType(WidgetType type)
{
    if (m_presenter->isImageClip())
        return;
    m_type = type;
    setVisible(type != NoWidget);
    if (type != NoWidget) {
        m_stack->currentWidget()->hide();
        m_stack->setCurrentWidget(page());
        // The layout knows the new page's size only then.
        QMetaObject::invokeMethod(
            this, [this] { reposition(); }, Qt::QueuedConnection);
    }
    emit sigTypeChanged(type);
}

QWidget *ZkAIErasingOverlayWidget::page() const
{
    switch (m_type) {
    case PreviewEffectWidget:
        return m_previewPage;
    case SaveOrDiscardWidget:
        return m_buttonPage;
    default:
        return m_progressPage;
    }
}

// What lies beside the page stays free for the mouse.
void ZkAIErasingOverlayWidget::reposition()
{
    updatePosition();
    m_stack->currentWidget()->show();
    setMask(QRect(QPoint(0, 0), page()->size()));
}

QPoint ZkAIErasingOverlayWidget::overlayPosition() const
{
    const QWidget *const player = playerWidget();
    if (!player || m_type == NoWidget)
        return pos();
    const QPoint bottomLeft = player->mapToGlobal(player->rect().bottomLeft());
    const QPoint centre = player->mapToGlobal(player->rect().center());
    const QSize size = page()->size();
    return QPoint(centre.x() - size.width() / 2, bottomLeft.y() - size.height() - AboveBottom);
}

void ZkAIErasingOverlayWidget::beginTracking()
{
    const IZkSmartKeyingService *const service = m_presenter->smartKeyingService();
    const uint count = service ? static_cast<uint>(service->segmentCount()) : 0;
    ZkSmartMaskBarBtnClickEvent(QStringLiteral("track"), count, m_presenter->getFileType())
        .sendEvent();
    m_presenter->beginTracking();
}

void ZkAIErasingOverlayWidget::cancelTracking()
{
    setType(PreviewEffectWidget);
    m_presenter->setRemoveType(ZkAIErasingPresenter::StoppedRemoveType);
    m_presenter->stopTrackingMode();
}

void ZkAIErasingOverlayWidget::followTracking(bool tracking)
{
    if (tracking) {
        m_presenter->setHasTracked(false);
        return;
    }
    if (m_type == TrackingProgressWidget)
        setType(SaveOrDiscardWidget);
    m_presenter->setHasTracked(m_type != NoWidget);
}

void ZkAIErasingOverlayWidget::slotBtnSaveClicked()
{
    setType(NoWidget);
    m_presenter->save();
}

void ZkAIErasingOverlayWidget::slotBtnDiscardClicked()
{
    setType(NoWidget);
    m_presenter->discard();
}
