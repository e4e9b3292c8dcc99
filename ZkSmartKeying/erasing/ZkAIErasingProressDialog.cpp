#include "ZkAIErasingProressDialog.h"

#include "ZkAIErasingProgressPanel.h"

#include "../presenters/ZkAIErasingPresenter.h"

#include "datamodel/ZkSmartKeyingEditing.h"
#include "datamodel/ZkSmartMaskEvents.h"

#include <QEvent>

namespace {

// Widget pixels.
const QSize DialogSize(480, 188);
const int TitleBarHeight = 28;
const int ButtonBarHeight = 48;
const QMargins ButtonBarMargins(0, 0, 24, 24);

const int SecondMs = 1000;

} // namespace

ZkAIErasingProressDialog::ZkAIErasingProressDialog(ZkAIErasingPresenter *presenter, QWidget *parent)
    : ZkFramelessDialog(parent)
    , m_presenter(presenter)
    , m_panel(new ZkAIErasingProgressPanel(presenter, this))
{
    setObjectName(QStringLiteral("ZkAIErasingProressDialog"));
    setFixedSize(DialogSize);
    setUpBars();
    setWorkAreaMargins(QMargins());
    setContentWidget(m_panel);
    connect(m_cancelButton, &QAbstractButton::clicked, this, &ZkAIErasingProressDialog::reject);
    connect(presenter,
            &ZkSmartKeyingPresenter::sigTrackingModeChanged,
            this,
            &ZkAIErasingProressDialog::followTracking);
    if (presenter->isTrackingMode())
        m_elapsed.start();
}

ZkAIErasingProressDialog::~ZkAIErasingProressDialog() = default;

// The close button of the title bar rejects by itself.
void ZkAIErasingProressDialog::setUpBars()
{
    setTitle(QString());
    setTitleButtons(CloseButton);
    setTitleBarHeight(TitleBarHeight);
    setButtonBarMargins(ButtonBarMargins);
    setButtonBarHeight(ButtonBarHeight);
    m_cancelButton = addPushButton(tr("Cancel"));
}

void ZkAIErasingProressDialog::changeEvent(QEvent *event)
{
    ZkFramelessDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        m_cancelButton->setText(tr("Cancel"));
}

void ZkAIErasingProressDialog::followTracking(bool tracking)
{
    if (tracking) {
        m_elapsed.start();
        return;
    }
    if (!m_elapsed.isValid())
        return;
    m_presenter->setTrackingDuration(m_elapsed.elapsed());
    if (!m_isCancelling)
        accept();
}

void ZkAIErasingProressDialog::sendCancelEvent() const
{
    const IZkSmartKeyingService *const service = m_presenter->smartKeyingService();
    ZkSmartMaskRemoveRecord record;
    record.result = QStringLiteral("cancel");
    record.maskCount = service ? service->segmentCount() : 0;
    if (m_elapsed.isValid())
        record.duration = static_cast<int>(m_elapsed.elapsed() / SecondMs);
    ZkSmartMaskRemoveEvent(record).sendEvent();
}

void ZkAIErasingProressDialog::reject()
{
    if (m_isCancelling)
        return;
    m_isCancelling = true;
    sendCancelEvent();
    m_presenter->stopTrackingMode();
    ZkFramelessDialog::reject();
}
