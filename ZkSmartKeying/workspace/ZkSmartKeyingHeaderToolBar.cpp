#include "ZkSmartKeyingHeaderToolBar.h"

#include "ZkSmartKeyingShortcuts.h"
#include "ZkZoomLevelBox.h"

#include "datamodel/ZkSmartKeyingEditing.h"
#include "datamodel/ZkUndoRedo.h"

#include <QAbstractButton>
#include <QEvent>
#include <QPointer>

namespace {

const int BarHeight = 40; // widget pixels
const QSize SplitLineSize(1, 16);

const struct
{
    const char *objectName;
    const char *area; // of the style key
    const char *text;
    int shortcut;
    bool checkable;
    const char *usageKey; // null: clicks are not counted
} Buttons[] = {
    // by id
    {"ZTimelineToolbar_Undo",
     "Timeline/",
     QT_TRANSLATE_NOOP("ZkSmartKeyingHeaderToolBar", "Undo"),
     ZKSHORTCUT::Undo,
     false,
     "undo"},
    {"ZTimelineToolbar_Redo",
     "Timeline/",
     QT_TRANSLATE_NOOP("ZkSmartKeyingHeaderToolBar", "Redo"),
     ZKSHORTCUT::Redo,
     false,
     "redo"},
    {"ZkSmartKeyingHeaderToolBar_PositiveMask_Btn",
     "BasicWidget/",
     QT_TRANSLATE_NOOP("ZkSmartKeyingHeaderToolBar", "Mask Areas to Keep"),
     ZKSHORTCUT::KeepMask,
     true,
     "cutout_mask"},
    {"ZkSmartKeyingHeaderToolBar_NegativeMask_Btn",
     "BasicWidget/",
     QT_TRANSLATE_NOOP("ZkSmartKeyingHeaderToolBar", "Mask Areas to Remove"),
     ZKSHORTCUT::RemoveMask,
     true,
     "remove_pen"},
    {"ZkSmartKeyingHeaderToolBar_EraseMask_Btn",
     "BasicWidget/",
     QT_TRANSLATE_NOOP("ZkSmartKeyingHeaderToolBar", "Eraser"),
     ZKSHORTCUT::EraseMask,
     true,
     "eraser"},
    {"ZkSmartKeyingHeaderToolBar_DragFrame_Btn",
     "BasicWidget/",
     QT_TRANSLATE_NOOP("ZkSmartKeyingHeaderToolBar", "Pan"),
     ZKSHORTCUT::PanFrame,
     true,
     "drag"},
    {"ZkSmartKeyingHeaderToolBar_RegionInvert_Btn",
     "BasicWidget/",
     QT_TRANSLATE_NOOP("ZkSmartKeyingHeaderToolBar", "Invert Mask"),
     ZKSHORTCUT::NoShortcut,
     true,
     "invert_mask"},
    {"ZkSmartKeyingHeaderToolBar_PreviewType_Interactive_Btn",
     "BasicWidget/",
     QT_TRANSLATE_NOOP("ZkSmartKeyingHeaderToolBar", "Preview Mode"),
     ZKSHORTCUT::NoShortcut,
     false,
     nullptr},
    {"ZkSmartKeyingHeaderToolBar_RegionColor_Btn",
     "BasicWidget/",
     QT_TRANSLATE_NOOP("ZkSmartKeyingHeaderToolBar", "Overlay Color"),
     ZKSHORTCUT::NoShortcut,
     true,
     nullptr},
};

const struct
{
    ZKSMARTKEYING::ZkPreviewType type;
    const char *text;
    const char *icon;
    const char *usageKey;
    const char *buttonName; // of the preview button while the type is on
} Previews[] = {
    // in the menu's order
    {ZKSMARTKEYING::InteractivePreview,
     QT_TRANSLATE_NOOP("ZkSmartKeyingHeaderToolBar", "Toggle Alpha Overlay"),
     ":/Resource/icon24_constituencycolor-normal.png",
     "toggle_alpha_overlay",
     "ZkSmartKeyingHeaderToolBar_PreviewType_Interactive_Btn"},
    {ZKSMARTKEYING::GridPreview,
     QT_TRANSLATE_NOOP("ZkSmartKeyingHeaderToolBar", "Toggle Transparency Grid"),
     ":/Resource/icon24_gridtransparent-normal.png",
     "toggle_transparency_grid",
     "ZkSmartKeyingHeaderToolBar_PreviewType_Square_Btn"},
    {ZKSMARTKEYING::ResultPreview,
     QT_TRANSLATE_NOOP("ZkSmartKeyingHeaderToolBar", "Toggle Transparency Black"),
     ":/Resource/icon24_blacktransparent-hover.png",
     "toggle_transparency_black",
     "ZkSmartKeyingHeaderToolBar_PreviewType_Result_Btn"},
    {ZKSMARTKEYING::AlphaPreview,
     QT_TRANSLATE_NOOP("ZkSmartKeyingHeaderToolBar", "Toggle Alpha"),
     ":/Resource/icon24_Alphapreview-normal.png",
     "toggle_alpha",
     "ZkSmartKeyingHeaderToolBar_PreviewType_Alpha_Btn"},
};

QString styleKey(int id, const QString &objectName)
{
    return QLatin1String(Buttons[id].area) + objectName;
}

} // namespace

ZkSmartKeyingHeaderToolBar::ZkSmartKeyingHeaderToolBar(ZkSmartKeyingPresenter *presenter,
                                                       ZkUIView *parentView)
    : ZkToolButtonBar(parentView->widget())
    , ZkUIView(parentView)
    , m_presenter(presenter)
{
    const QString name = QStringLiteral("smartKeying_ZkSmartKeyingHeaderToolBar");
    setObjectName(name);
    ZkSkinManager::instance()->applyStyleSheet(this, QLatin1String("SmartKeying/") + name);
    buildRow();
    buildPreviewMenu();
    setFixedHeight(BarHeight);
    connectPresenter();
    addShortcuts();
    translate();
    presenter->setPlayerEditMode(ZkSmartKeyingPresenter::KeepMode);
    followSegment();
    followUndoRedo();
}

ZkSmartKeyingHeaderToolBar::~ZkSmartKeyingHeaderToolBar() = default;

void ZkSmartKeyingHeaderToolBar::buildRow()
{
    addToolButtons(UndoButton, PanButton);
    // Keep and erase say all that the user needs; removing stays within reach of the host.
    button(RemoveButton)->setVisible(false);
    buildZoomBox();
    buildSplitLine();
    addToolButtons(InvertButton, ColorButton);
}

void ZkSmartKeyingHeaderToolBar::addToolButtons(int first, int last)
{
    for (int id = first; id <= last; ++id) {
        const QString name = QString::fromLatin1(Buttons[id].objectName);
        addButton(id, name, styleKey(id, name), Buttons[id].checkable);
    }
}

QAbstractButton *ZkSmartKeyingHeaderToolBar::createButton(int id)
{
    if (id == ColorButton)
        return new ZkColorToolButton(QColor(QStringLiteral("#c9727b")), this);
    return ZkToolButtonBar::createButton(id);
}

void ZkSmartKeyingHeaderToolBar::buildZoomBox()
{
    m_zoomBox = new ZkZoomLevelBox({10, 50, 100, 200, 400, 800}, this);
    m_zoomBox->setObjectName(QStringLiteral("ZkSmartKeyingHeaderToolBar_ZoomBox"));
    addWidget(m_zoomBox);
    connect(m_zoomBox, &ZkZoomLevelBox::sigLevelChosen, this, [this](int percent) {
        m_presenter->zoomFrame(float(percent / 100.0), QPointF());
    });
}

void ZkSmartKeyingHeaderToolBar::buildSplitLine()
{
    const QString name = QStringLiteral("ZkSmartKeyingHeaderToolBar_SplitLine");
    m_splitLine = new ZkLineWidget(this);
    m_splitLine->setObjectName(name);
    ZkSkinManager::instance()->applyStyleSheet(m_splitLine, QLatin1String("SmartKeying/") + name);
    m_splitLine->setFixedSize(SplitLineSize);
    addWidget(m_splitLine);
}

void ZkSmartKeyingHeaderToolBar::buildPreviewMenu()
{
    m_previewMenu = new ZkMenu(this);
    m_previewMenu->setProperty("SizeKind", int(ZKWIDGET::MenuSize));
    for (const auto &preview : Previews) {
        const QIcon icon(QString::fromLatin1(preview.icon));
        m_previewMenu->addItem(preview.type, icon, tr(preview.text));
    }
    connect(
        m_previewMenu, &ZkMenu::sigItemClicked, this, &ZkSmartKeyingHeaderToolBar::choosePreview);
}

void ZkSmartKeyingHeaderToolBar::connectPresenter()
{
    using Bar = ZkSmartKeyingHeaderToolBar;
    using Presenter = ZkSmartKeyingPresenter;
    connect(m_presenter, &Presenter::sigPlayerEditModeChanged, this, &Bar::followEditMode);
    connect(m_presenter, &Presenter::sigUndoRedoChanged, this, &Bar::followUndoRedo);
    connect(m_presenter, &Presenter::sigSmartKeyingSegmentChanged, this, &Bar::followSegment);
    connect(m_presenter, &Presenter::sigFrameZoomed, this, &Bar::followZoom);
    connect(m_presenter, &Presenter::sigTrackingModeChanged, this, &Bar::followTracking);
    connect(m_presenter, &Presenter::sigFrameChanged, this, &Bar::followFrame);
    connect(this, &ZkToolButtonBar::sigButtonClick, this, &Bar::handleClick);
}

// Removing has no key, as its button is hidden.
void ZkSmartKeyingHeaderToolBar::addShortcuts()
{
    QWidget *const owner = parentView()->widget();
    zkAddShortcut(owner, ZKSHORTCUT::Undo, this, [this] {
        if (m_presenter->undoRedoService() && m_presenter->undoRedoService()->canUndo())
            undo();
    });
    zkAddShortcut(owner, ZKSHORTCUT::Redo, this, [this] {
        if (m_presenter->undoRedoService() && m_presenter->undoRedoService()->canRedo())
            redo();
    });
    zkAddShortcut(owner, ZKSHORTCUT::KeepMask, this, [this] {
        m_presenter->setPlayerEditMode(ZkSmartKeyingPresenter::KeepMode);
    });
    zkAddShortcut(owner, ZKSHORTCUT::EraseMask, this, [this] {
        m_presenter->setPlayerEditMode(ZkSmartKeyingPresenter::EraseMode);
    });
    zkAddShortcut(owner, ZKSHORTCUT::PanFrame, this, [this] {
        m_presenter->setPlayerEditMode(ZkSmartKeyingPresenter::HandMode);
    });
    zkAddShortcut(
        owner, ZKSHORTCUT::FitFrame, this, [this] { m_presenter->zoomFrame(0, QPointF()); });
}

void ZkSmartKeyingHeaderToolBar::translate()
{
    for (int id = UndoButton; id <= ColorButton; ++id)
        zkSetToolTip(button(id), tr(Buttons[id].text), Buttons[id].shortcut);
    zkSetToolTip(m_zoomBox, tr("Zoom Level - Fit:"), ZKSHORTCUT::FitFrame);
    for (const auto &preview : Previews)
        m_previewMenu->item(preview.type)->setText(tr(preview.text));
}

void ZkSmartKeyingHeaderToolBar::changeEvent(QEvent *event)
{
    ZkToolButtonBar::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        translate();
}

void ZkSmartKeyingHeaderToolBar::handleClick(int id)
{
    // A dialog that the click opens may outlive the workspace.
    const QPointer<ZkSmartKeyingHeaderToolBar> alive(this);
    act(id);
    if (alive && Buttons[id].usageKey && m_presenter->isSmartCutout())
        ZkSmartKeyingPresenter::trackSmartCutoutClickEvent(
            QString::fromLatin1(Buttons[id].usageKey), m_presenter->sourceFormat());
}

void ZkSmartKeyingHeaderToolBar::act(int id)
{
    switch (id) {
    case UndoButton:
        undo();
        break;
    case RedoButton:
        redo();
        break;
    case KeepButton:
    case RemoveButton:
    case EraseButton:
    case PanButton:
        chooseEditMode(static_cast<ZkSmartKeyingPresenter::PlayerEditMode>(id - KeepButton + 1));
        break;
    case InvertButton:
        invertMask(button(id)->isChecked());
        break;
    case PreviewButton:
        m_previewMenu->popupBelow(button(id));
        break;
    case ColorButton:
        chooseOverlayColor();
        break;
    }
}

void ZkSmartKeyingHeaderToolBar::commitFocusedEditor()
{
    ZkMessage message(ZKMESSAGE::CommitFocusedEditor);
    sendSceneMessage(&message);
}

void ZkSmartKeyingHeaderToolBar::undo()
{
    commitFocusedEditor();
    if (IZkUndoRedoService *const service = m_presenter->undoRedoService())
        service->undo();
}

void ZkSmartKeyingHeaderToolBar::redo()
{
    commitFocusedEditor();
    if (IZkUndoRedoService *const service = m_presenter->undoRedoService())
        service->redo();
}

void ZkSmartKeyingHeaderToolBar::chooseEditMode(ZkSmartKeyingPresenter::PlayerEditMode mode)
{
    m_presenter->setPlayerEditMode(mode);
    // The click has checked the button even when the presenter refused.
    followEditMode();
}

void ZkSmartKeyingHeaderToolBar::invertMask(bool inverted)
{
    IZkSmartKeyingService *const service = m_presenter->smartKeyingService();
    if (!service)
        return;
    service->setMaskInverted(inverted);
    // The click has checked the button even when the service refused.
    button(InvertButton)->setChecked(service->isMaskInverted());
}

void ZkSmartKeyingHeaderToolBar::choosePreview(int type)
{
    if (IZkSmartKeyingService *const service = m_presenter->smartKeyingService())
        service->setPreviewType(static_cast<ZKSMARTKEYING::ZkPreviewType>(type));
    for (const auto &preview : Previews) {
        if (preview.type == type)
            ZkSmartKeyingPresenter::trackSmartCutoutClickEvent(
                QString::fromLatin1(preview.usageKey), m_presenter->sourceFormat());
    }
}

void ZkSmartKeyingHeaderToolBar::chooseOverlayColor()
{
    IZkSmartKeyingService *const service = m_presenter->smartKeyingService();
    if (!service)
        return;
    QAbstractButton *const colorButton = button(ColorButton);
    const QPointer<ZkColorSelecter> dialog = new ZkColorSelecter(this);
    placeUnderButton(dialog, colorButton);
    dialog->setCurrentColor(service->maskRegionColor());
    colorButton->setChecked(true);
    dialog->exec();
    // The workspace may have been closed meanwhile, and the dialog with it.
    if (!dialog)
        return;
    colorButton->setChecked(false);
    service->setMaskRegionColor(dialog->currentColor());
    delete dialog;
}

// The dialog's right edge is the button's, its top edge one pixel below.
void ZkSmartKeyingHeaderToolBar::placeUnderButton(QWidget *dialog, const QWidget *button) const
{
    dialog->adjustSize();
    const QRect rect = button->rect();
    dialog->move(button->mapToGlobal(QPoint(rect.right() - dialog->width(), rect.bottom() + 1)));
}

void ZkSmartKeyingHeaderToolBar::followEditMode()
{
    const int mode = m_presenter->playerEditMode();
    for (int id = KeepButton; id <= PanButton; ++id)
        button(id)->setChecked(mode == id - KeepButton + 1);
}

void ZkSmartKeyingHeaderToolBar::followUndoRedo()
{
    const IZkUndoRedoService *const service = m_presenter->undoRedoService();
    button(UndoButton)->setEnabled(service && service->canUndo());
    button(RedoButton)->setEnabled(service && service->canRedo());
}

void ZkSmartKeyingHeaderToolBar::followZoom()
{
    m_zoomBox->showLevel(int(m_presenter->zoomLevel(false) * 100));
}

void ZkSmartKeyingHeaderToolBar::followTracking(bool tracking)
{
    if (!m_presenter->isSmartCutout())
        return;
    setEnabled(!tracking);
    if (tracking)
        return;
    followSegment();
    // A tool that was chosen meanwhile could not be shown before.
    followEditMode();
}

void ZkSmartKeyingHeaderToolBar::followFrame()
{
    if (m_presenter->playerEditMode() == ZkSmartKeyingPresenter::EraseMode)
        m_presenter->setEraseMaskDisable();
    button(EraseButton)->setEnabled(m_presenter->isEraseMaskEnable());
}

void ZkSmartKeyingHeaderToolBar::followSegment()
{
    const IZkSmartKeyingService *const service = m_presenter->smartKeyingService();
    if (!service)
        return;
    followPreviewType(service->previewType());
    static_cast<ZkColorToolButton *>(button(ColorButton))->setColor(service->maskRegionColor());
    button(InvertButton)->setChecked(service->isMaskInverted());
    button(InvertButton)->setEnabled(m_presenter->isUsed());
    button(EraseButton)->setEnabled(m_presenter->isEraseMaskEnable());
}

// The skin gives the button the icon of the type by its name.
void ZkSmartKeyingHeaderToolBar::followPreviewType(ZKSMARTKEYING::ZkPreviewType type)
{
    for (const auto &preview : Previews) {
        if (preview.type != type)
            continue;
        const QString name = QString::fromLatin1(preview.buttonName);
        button(PreviewButton)->setObjectName(name);
        ZkSkinManager::instance()->applyStyleSheet(button(PreviewButton),
                                                   styleKey(PreviewButton, name));
    }
}
