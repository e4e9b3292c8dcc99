#include "ZkAIErasingSettingView.h"

#include "ZkAIErasingListWidget.h"
#include "ZkErasingStyle.h"

#include "../ZkCallLater.h"
#include "../presenters/ZkAIErasingPresenter.h"

#include <QEvent>
#include <QStackedWidget>

namespace {

const int TipDelay = 1000; // ms, until the user has seen the panel

using Presenter = ZkAIErasingPresenter;

Presenter::PlayerEditMode modeOf(int tool)
{
    switch (tool) {
    case ZkAIErasingSettingView::SmartBrushTool:
        return Presenter::KeepMode;
    case ZkAIErasingSettingView::EraserTool:
        return Presenter::EraseMode;
    case ZkAIErasingSettingView::MoveFrameTool:
        return Presenter::HandMode;
    default:
        return Presenter::SelectRectMode;
    }
}

int toolOf(Presenter::PlayerEditMode mode)
{
    for (int tool = ZkAIErasingSettingView::SmartBrushTool;
         tool <= ZkAIErasingSettingView::MoveFrameTool;
         ++tool) {
        if (modeOf(tool) == mode)
            return tool;
    }
    return ZkAIErasingSettingView::MagicBoxTool;
}

} // namespace

ZkAIErasingSettingView::ZkAIErasingSettingView(ZkAIErasingPresenter *presenter, ZkUIView *parent)
    : ZkRoundRadiusWidgetView(parent)
    , m_presenter(presenter)
{
    zkApplyStyle(this, QStringLiteral("SmartKeying/ZkAIErasingSettingView"));
    buildToolBar();
    buildBrushSize();
    buildEmptyPage();
    buildContentPage();
    layOut();
    translate();
    connectBrushSize();
    connectPresenter();
    presenter->setPlayerEditMode(Presenter::SelectRectMode);
    syncToolFromMode();
    updateEraserEnabled();
}

ZkAIErasingSettingView::~ZkAIErasingSettingView() = default;

void ZkAIErasingSettingView::connectPresenter()
{
    using View = ZkAIErasingSettingView;
    connect(m_presenter, &Presenter::sigPenPixelWidthChanged, this, [this](int width) {
        m_brushSizeSlider->setValue(width);
    });
    connect(m_presenter, &Presenter::sigFrameZoomed, this, [this] {
        const ZkRange<int> range = m_presenter->penPixelWidthRange();
        m_brushSizeSlider->setRange(range.minimum, range.maximum);
    });
    connect(m_presenter, &Presenter::sigSmartKeyingSegmentChanged, this, &View::followSegment);
    connect(m_presenter, &Presenter::sigPlayerEditModeChanged, this, &View::syncToolFromMode);
    connect(m_presenter, &Presenter::sigFrameChanged, this, &View::updateEraserEnabled);
}

void ZkAIErasingSettingView::connectBrushSize()
{
    connect(m_brushSizeSlider, &ZkSpinBoxSlider::sigValueChangedBegin, m_presenter, [this] {
        m_presenter->setPenPixelWidthChanging(true);
    });
    connect(m_brushSizeSlider, &ZkSpinBoxSlider::sigValueChangedEnd, m_presenter, [this] {
        m_presenter->setPenPixelWidthChanging(false);
    });
    connect(m_brushSizeSlider,
            &ZkSpinBoxSlider::sigValueChanged,
            this,
            &ZkAIErasingSettingView::followBrushSize);
    connect(m_brushResetButton,
            &QAbstractButton::clicked,
            m_brushSizeSlider,
            &ZkSpinBoxSlider::restoreDefaultValue);
}

void ZkAIErasingSettingView::followBrushSize(double size)
{
    if (m_presenter)
        m_presenter->setPenPixelWidth(static_cast<int>(size));
    m_brushResetButton->setVisible(!m_brushSizeSlider->isDefaultValue());
}

bool ZkAIErasingSettingView::hasSegment() const
{
    return m_presenter && m_presenter->hasErasingSegment();
}

void ZkAIErasingSettingView::setTool(int tool)
{
    if (tool == EraserTool && m_presenter && !m_presenter->isEraseMaskEnable())
        tool = MagicBoxTool;
    m_currentTool = tool;
    toggleButtons();
    if (m_presenter) {
        m_presenter->setPlayerEditMode(modeOf(tool));
        updateBrushEnabled();
        updateToolPage();
        if (hasSegment())
            emit m_presenter->sigNeedReloadAllData();
        if (tool == SmartBrushTool)
            emit m_presenter->sigNeedReloadAllData();
    }
    emit sigToolChanged(tool);
}

void ZkAIErasingSettingView::toggleButtons()
{
    for (int tool = 0; tool < m_toolButtons.size(); ++tool)
        m_toolButtons.at(tool)->setChecked(tool == m_currentTool);
}

void ZkAIErasingSettingView::syncToolFromMode()
{
    m_currentTool = toolOf(m_presenter->playerEditMode());
    toggleButtons();
    updateBrushEnabled();
    updateToolPage();
}

void ZkAIErasingSettingView::updateBrushEnabled()
{
    const int mode = m_presenter->playerEditMode();
    const bool paints = mode == Presenter::KeepMode || mode == Presenter::EraseMode;
    for (QWidget *const widget : {m_brushSizeRow,
                                  static_cast<QWidget *>(m_brushSizeSlider),
                                  static_cast<QWidget *>(m_brushResetButton),
                                  static_cast<QWidget *>(m_brushSizeLabel)})
        widget->setEnabled(paints);
}

void ZkAIErasingSettingView::updateToolPage()
{
    const bool isBlank =
        m_presenter->playerEditMode() == Presenter::SelectRectMode && !hasSegment();
    m_toolStack->setCurrentWidget(isBlank ? m_blankPage : m_contentPage);
}

void ZkAIErasingSettingView::updateEraserEnabled()
{
    const bool isEnabled = m_presenter->isEraseMaskEnable();
    m_toolButtons.at(EraserTool)->setEnabled(isEnabled);
    if (!isEnabled && m_currentTool == EraserTool)
        setTool(MagicBoxTool);
}

void ZkAIErasingSettingView::followSegment()
{
    m_objectsStack->setCurrentWidget(hasSegment() ? static_cast<QWidget *>(m_objectList)
                                                  : m_emptyPage);
    updateEraserEnabled();
    updateToolPage();
}

void ZkAIErasingSettingView::showEvent(QShowEvent *event)
{
    ZkRoundRadiusWidgetView::showEvent(event);
    zkCallLater(TipDelay, this, &ZkAIErasingSettingView::showTip);
}

void ZkAIErasingSettingView::hideEvent(QHideEvent *event)
{
    ZkFunctionTips::hideVisibleTip(ZkFunctionTips::EraseByBox);
    ZkRoundRadiusWidgetView::hideEvent(event);
}

void ZkAIErasingSettingView::showTip()
{
    // A panel that was hidden meanwhile has nothing to point at.
    if (!isVisible() || m_currentTool != MagicBoxTool || !m_presenter || hasSegment()
        || !ZkFunctionTips::canShowTip(ZkFunctionTips::EraseByBox))
        return;
    const ZkButton *const box = m_toolButtons.at(MagicBoxTool);
    const QPoint bottomCentre =
        box->mapToGlobal(QPoint(0, 0)) + QPoint(box->width() / 2, box->height());
    ZkFunctionTips::showTip(ZkFunctionTips::EraseByBox, bottomCentre, this);
}

void ZkAIErasingSettingView::changeEvent(QEvent *event)
{
    ZkRoundRadiusWidgetView::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        translate();
}
