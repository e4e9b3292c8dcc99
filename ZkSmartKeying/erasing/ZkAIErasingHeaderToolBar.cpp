#include "ZkAIErasingHeaderToolBar.h"

#include "../presenters/ZkAIErasingPresenter.h"
#include "../workspace/ZkSmartKeyingShortcuts.h"
#include "../workspace/ZkZoomLevelBox.h"

#include "datamodel/ZkUndoRedo.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QSignalBlocker>

namespace {

// Widget pixels.
const int BarHeight = 40;
const int Spacing = 16;
const QMargins Margins(16, 0, 16, 0);

} // namespace

ZkAIErasingHeaderToolBar::ZkAIErasingHeaderToolBar(ZkAIErasingPresenter *presenter,
                                                   ZkUIView *parentView)
    : ZkToolButtonBar(parentView->widget())
    , ZkUIView(parentView)
    , m_presenter(presenter)
{
    setObjectName(QStringLiteral("ZkAIErasingHeaderToolBar"));
    setFixedHeight(BarHeight);
    mainLayout()->setSpacing(Spacing);
    mainLayout()->setContentsMargins(Margins);
    buildButtons();
    buildZoomBox();
    mainLayout()->addStretch();
    connectPresenter();
    addShortcuts();
    ZkAIErasingHeaderToolBar::RetranslateUi();
    followHistory();
    followEditMode();
    followZoom();
}

ZkAIErasingHeaderToolBar::~ZkAIErasingHeaderToolBar() = default;

void ZkAIErasingHeaderToolBar::buildButtons()
{
    addButton(UndoButton,
              QStringLiteral("ZTimelineToolbar_Undo"),
              QStringLiteral("Timeline/ZTimelineToolbar_Undo"),
              false);
    addButton(RedoButton,
              QStringLiteral("ZTimelineToolbar_Redo"),
              QStringLiteral("Timeline/ZTimelineToolbar_Redo"),
              false);
    addButton(MoveFrameButton,
              QStringLiteral("ZkSmartKeyingHeaderToolBar_DragFrame_Btn"),
              QStringLiteral("BasicWidget/ZkSmartKeyingHeaderToolBar_DragFrame_Btn"),
              true);
    connect(this, &ZkToolButtonBar::sigButtonClick, this, &ZkAIErasingHeaderToolBar::handleClick);
}

void ZkAIErasingHeaderToolBar::buildZoomBox()
{
    m_zoomBox = new ZkZoomLevelBox({10, 50, 100, 200, 400, 800}, this);
    m_zoomBox->setObjectName(QStringLiteral("ZkAIErasingHeaderToolBar_ZoomBox"));
    addWidget(m_zoomBox);
    connect(m_zoomBox, &ZkZoomLevelBox::sigLevelChosen, this, [this](int percent) {
        m_presenter->zoomFrame(float(percent / 100.0), QPointF(0, 0));
    });
}

void ZkAIErasingHeaderToolBar::connectPresenter()
{
    using Bar = ZkAIErasingHeaderToolBar;
    using Presenter = ZkAIErasingPresenter;
    connect(m_presenter, &Presenter::sigPlayerEditModeChanged, this, &Bar::followEditMode);
    connect(m_presenter, &Presenter::sigFrameZoomed, this, &Bar::followZoom);
    connect(m_presenter, &Presenter::sigSmartKeyingSegmentChanged, this, &Bar::followHistory);
    connect(m_presenter, &Presenter::sigUndoRedoChanged, this, &Bar::followHistory);
}

void ZkAIErasingHeaderToolBar::addShortcuts()
{
    zkAddShortcut(this, ZKSHORTCUT::Undo, this, [this] { undo(); });
    zkAddShortcut(this, ZKSHORTCUT::Redo, this, [this] { redo(); });
    zkAddShortcut(this, ZKSHORTCUT::PanFrame, this, [this] {
        m_presenter->setPlayerEditMode(ZkAIErasingPresenter::HandMode);
    });
    zkAddShortcut(
        this, ZKSHORTCUT::FitFrame, this, [this] { m_presenter->zoomFrame(0.0, QPointF(0, 0)); });
}

void ZkAIErasingHeaderToolBar::RetranslateUi()
{
    ZkToolButtonBar::RetranslateUi();
    zkSetToolTip(button(UndoButton), tr("Undo"), ZKSHORTCUT::Undo);
    zkSetToolTip(button(RedoButton), tr("Redo"), ZKSHORTCUT::Redo);
    zkSetToolTip(button(MoveFrameButton), tr("Pan"), ZKSHORTCUT::PanFrame);
    zkSetToolTip(m_zoomBox, tr("Zoom Level - Fit:"), ZKSHORTCUT::FitFrame);
}

void ZkAIErasingHeaderToolBar::handleClick(int id)
{
    if (id == UndoButton && undo())
        m_presenter->trackClickEvent(QStringLiteral("undo"));
    if (id == RedoButton && redo())
        m_presenter->trackClickEvent(QStringLiteral("redo"));
    if (id != MoveFrameButton)
        return;
    toggleMoveFrame();
    m_presenter->trackClickEvent(QStringLiteral("move_frame"));
}

bool ZkAIErasingHeaderToolBar::undo()
{
    IZkUndoRedoService *const service = undoRedoService();
    if (!service || !service->canUndo())
        return false;
    commitFocusedEditor();
    service->undo();
    return true;
}

bool ZkAIErasingHeaderToolBar::redo()
{
    IZkUndoRedoService *const service = undoRedoService();
    if (!service || !service->canRedo())
        return false;
    commitFocusedEditor();
    service->redo();
    return true;
}

void ZkAIErasingHeaderToolBar::commitFocusedEditor()
{
    ZkMessage message(ZKMESSAGE::CommitFocusedEditor);
    sendSceneMessage(&message);
}

// The tool before is not gone back to: from the hand one goes on with a new area.
void ZkAIErasingHeaderToolBar::toggleMoveFrame()
{
    using Presenter = ZkAIErasingPresenter;
    const bool isOn = m_presenter->playerEditMode() == Presenter::HandMode;
    m_presenter->setPlayerEditMode(isOn ? Presenter::SelectRectMode : Presenter::HandMode);
    // The click has toggled the button even when tracking hides the mode.
    followEditMode();
}

void ZkAIErasingHeaderToolBar::followHistory()
{
    const IZkUndoRedoService *const service =
        m_presenter->smartKeyingService() ? undoRedoService() : nullptr;
    button(UndoButton)->setEnabled(service && service->canUndo());
    button(RedoButton)->setEnabled(service && service->canRedo());
}

void ZkAIErasingHeaderToolBar::followEditMode()
{
    QAbstractButton *const moveFrame = button(MoveFrameButton);
    const QSignalBlocker notAClick(moveFrame);
    moveFrame->setChecked(m_presenter->playerEditMode() == ZkAIErasingPresenter::HandMode);
}

void ZkAIErasingHeaderToolBar::followZoom()
{
    m_zoomBox->showLevel(int(m_presenter->zoomLevel(false) * 100));
}
