#include "ZkAIErasingView.h"

#include "ZkAIErasingPlayerView.h"
#include "ZkAIErasingProressDialog.h"
#include "ZkAIErasingSettingView.h"

#include "../ZkSmartKeyingLog.h"
#include "../presenters/ZkAIErasingCropSelectorPresenter.h"
#include "../presenters/ZkAIErasingPresenter.h"

#include "ZkAccount.h"
#include "ZkWidgets.h"
#include "datamodel/ZkSmartKeyingEditing.h"
#include "datamodel/ZkSmartMaskEvents.h"

#include <QHBoxLayout>
#include <QPointer>
#include <QVBoxLayout>

namespace {

// Widget pixels.
const int SettingWidth = 378;
const QMargins TopMargins(12, 10, 12, 0);
const QMargins BottomMargins(12, 14, 12, 14);
const int Spacing = 12;

const struct
{
    ZkSmartKeyingPresenter::PlayerEditMode mode;
    const char *usageKey;
} Tools[] = {
    // by tool
    {ZkSmartKeyingPresenter::SelectRectMode, "frame"},
    {ZkSmartKeyingPresenter::KeepMode, "brush"},
    {ZkSmartKeyingPresenter::EraseMode, "eraser"},
};

} // namespace

ZkAIErasingView::ZkAIErasingView(ZkAIErasingPresenter *presenter, ZkUIView *parent)
    : ZkWidgetView(parent)
    , m_presenter(presenter)
{
    setObjectName(QStringLiteral("ZkAIErasingView"));
    setPresenter(presenter);
    presenter->setView(this);
    setUndoRedoService(presenter->undoRedoService());
    initUI();
    connectSignals();
    presenter->switchWorkMode(ZKSMARTKEYING::EditingMode);
    presenter->initMaskRegionColor();
    updateCreateButtonState();
    open();
}

ZkAIErasingView::~ZkAIErasingView() = default;

void ZkAIErasingView::open()
{
    m_presenter->init();
    if (!m_presenter->isInitSuccessful())
        return;
    m_presenter->openEditTimeline();
    if (ZkAIErasingCropSelectorPresenter *const crops = m_presenter->cropSelectorPresenter())
        crops->triggerInitialCanvasRectSync();
}

void ZkAIErasingView::initUI()
{
    m_settingView = new ZkAIErasingSettingView(m_presenter, this);
    m_settingView->setFixedWidth(SettingWidth);
    m_playerView = new ZkAIErasingPlayerView(m_presenter, this);
    m_createButton = new ZAIGCCreateButton(this);
    m_resetButton =
        ZkPushButton::CreateButton(this, ZkPushButton::SecondaryType, ZkPushButton::Size24);
    m_createButton->setEnabled(false);
    auto *const top = new QHBoxLayout;
    top->setContentsMargins(TopMargins);
    top->setSpacing(Spacing);
    top->addWidget(m_playerView);
    top->addWidget(m_settingView);
    auto *const bottom = new QHBoxLayout;
    bottom->setContentsMargins(BottomMargins);
    bottom->setSpacing(Spacing);
    bottom->addWidget(m_resetButton);
    bottom->addStretch();
    bottom->addWidget(m_createButton);
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(top);
    column->addLayout(bottom);
    RetranslateUi();
}

void ZkAIErasingView::RetranslateUi()
{
    ZkWidgetView::RetranslateUi();
    m_resetButton->setText(tr("Reset"));
}

void ZkAIErasingView::connectSignals()
{
    using View = ZkAIErasingView;
    using Presenter = ZkAIErasingPresenter;
    const auto update = &View::updateCreateButtonState;
    connect(m_createButton, &QAbstractButton::clicked, this, &View::onCreateButtonClicked);
    connect(m_resetButton, &QAbstractButton::clicked, this, &View::onResetButtonClicked);
    connect(m_settingView, &ZkAIErasingSettingView::sigToolChanged, this, &View::onToolChanged);
    connect(m_presenter, &Presenter::sigSmartKeyingSegmentChanged, this, update);
    connect(m_presenter, &Presenter::sigResetAllData, this, update, Qt::QueuedConnection);
    using Crops = ZkAIErasingCropSelectorPresenter;
    const Crops *const crops = m_presenter->cropSelectorPresenter();
    if (!crops)
        return;
    connect(crops, &Crops::sigCropRectAdded, this, update);
    connect(crops, &Crops::sigCropRectRemoved, this, update);
    connect(crops, &Crops::sigAllCropRectsCleared, this, update);
}

int ZkAIErasingView::segmentCount() const
{
    const IZkSmartKeyingService *const service = m_presenter->smartKeyingService();
    return service ? service->segmentCount() : 0;
}

void ZkAIErasingView::updateCreateButtonState()
{
    const ZkAIErasingCropSelectorPresenter *const crops = m_presenter->cropSelectorPresenter();
    m_createButton->setEnabled(segmentCount() > 0 || (crops && crops->getCropCount() > 0));
}

void ZkAIErasingView::onResetButtonClicked()
{
    m_presenter->reset();
    m_presenter->trackClickEvent(QStringLiteral("reset"));
}

void ZkAIErasingView::onToolChanged(int toolType)
{
    if (toolType < 0 || toolType > 2)
        return;
    m_presenter->setPlayerEditMode(Tools[toolType].mode);
    m_presenter->trackClickEvent(QString::fromLatin1(Tools[toolType].usageKey));
    updateUIForTool(toolType);
}

void ZkAIErasingView::updateUIForTool(int) { }

void ZkAIErasingView::onCreateButtonClicked()
{
    ZkSmartMaskBarBtnClickEvent(QStringLiteral("remove"), m_presenter->getFileType()).sendEvent();
    if (!checkLogin() || !checkNetwork())
        return;
    // The host may close the workspace on it.
    const QPointer<ZkAIErasingView> alive(this);
    emit sigStartTask();
    if (alive && m_presenter->isTrackingMode())
        showTrackingProgress();
}

bool ZkAIErasingView::checkLogin()
{
    if (ZkAccount::instance()->isLoggedIn())
        return true;
    ZkCustomEventManager::instance()->postEvent(QStringLiteral("NotifyLogin"));
    ZK_LOG(ZKLOG::Info,
           "ZkAIErasingView",
           "onCreateButtonClicked",
           QStringLiteral("AI Erasing: User not logged in"));
    return false;
}

bool ZkAIErasingView::checkNetwork()
{
    if (m_presenter->checkNetworkConnection())
        return true;
    ZK_LOG(ZKLOG::Warning,
           "ZkAIErasingView",
           "onCreateButtonClicked",
           QStringLiteral("AI Erasing: Network connection check failed"));
    ZkSmartMaskRemoveRecord record;
    record.result = QStringLiteral("fail");
    record.maskCount = segmentCount();
    record.reason = QStringLiteral("network_unavailable");
    record.errorCode = QStringLiteral("1013");
    ZkSmartMaskRemoveEvent(record).sendEvent();
    ZOldMessageDialog::Infomation(tr("Network error. Please try again later."),
                                  this,
                                  ZOldMessageDialog::OkButton,
                                  QString(),
                                  QString(),
                                  false);
    return false;
}

void ZkAIErasingView::showTrackingProgress()
{
    // The workspace may be closed meanwhile, and the dialog with it.
    const QPointer<ZkAIErasingProressDialog> dialog =
        new ZkAIErasingProressDialog(m_presenter, this);
    dialog->exec();
    delete dialog;
}
