#include "ZkTimelinePanel.h"

#include "ZkWindowActions.h"

#include "ZkStudioTimelineView.h"
#include "ZkWidgets.h"
#include "project/ZkProjectClip.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>

namespace zk::app {

TimelinePanel::TimelinePanel(const WindowActions &actions, ZkUIView *scene, QWidget *parent)
    : QWidget(parent)
    , m_view(new ZkStudioTimelineView(&m_presenter, scene))
    , m_title(new QLabel(this))
    , m_zoom(ZkZoomSlider::CreateZoomSlider(this))
{
    setObjectName(QStringLiteral("TimelinePanel"));
    m_title->setObjectName(QStringLiteral("PanelTitle"));
    m_zoom->setObjectName(QStringLiteral("TimelinePanel_Zoom"));
    auto *fit = new ZkToolButton(this);
    fit->setObjectName(QStringLiteral("TimelinePanel_Fit"));
    fit->setDefaultAction(actions.action(ActionId::FitTimeline));
    auto *head = new QHBoxLayout;
    head->addWidget(m_title, 1);
    head->addWidget(fit);
    head->addWidget(m_zoom);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(8, 2, 8, 4);
    column->setSpacing(2);
    column->addLayout(head);
    column->addWidget(m_view->widget(), 1);
    m_presenter.setZoomSlider(m_zoom);
    retranslate();
}

TimelinePanel::~TimelinePanel()
{
    m_presenter.setTimeline(nullptr);
    delete m_view;
}

void TimelinePanel::setClip(const datamodel::ProjectClip *clip)
{
    const bool isShown = clip && !clip->isOffline();
    m_presenter.setTimeline(isShown ? clip->timeline() : nullptr);
    m_zoom->setEnabled(isShown);
    m_clipName = clip ? clip->name() : QString();
    retranslate();
}

void TimelinePanel::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}

void TimelinePanel::retranslate()
{
    m_title->setText(m_clipName.isEmpty() ? tr("Timeline") : tr("Timeline – %1").arg(m_clipName));
}

} // namespace zk::app
