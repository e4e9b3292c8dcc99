#include "ZkStudioTimelineView.h"

#include "ZkTimelineCanvas.h"
#include "ZkWidgets.h"

#include <QEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <cmath>

using zk::timeline::TimelineCanvas;
using zk::timeline::TimelineScale;

namespace {

constexpr int lineStep = 40; // widget pixels

} // namespace

ZkStudioTimelineView::ZkStudioTimelineView(ZkStudioTimelinePresenter *presenter,
                                           ZkUIView *parentView)
    : QWidget(parentView ? parentView->widget() : nullptr)
    , ZkUIView(parentView)
    , m_presenter(presenter)
    , m_canvas(new TimelineCanvas(presenter, this))
    , m_scrollBar(new QScrollBar(Qt::Horizontal, this))
{
    setObjectName(QStringLiteral("ZkTimelineView"));
    setAttribute(Qt::WA_StyledBackground);
    setFocusProxy(m_canvas);
    m_scrollBar->setObjectName(QStringLiteral("ZkTimelineScrollBar"));
    m_scrollBar->setSingleStep(lineStep);
    // The rows above must not jump when it comes and goes.
    QSizePolicy policy = m_scrollBar->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_scrollBar->setSizePolicy(policy);
    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Timeline/ZkTimelineView"));

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_canvas, 1);
    column->addWidget(m_scrollBar);

    connect(m_scrollBar, &QScrollBar::valueChanged, presenter, [presenter](int value) {
        presenter->scrollTo(value);
    });
    connect(presenter,
            &ZkStudioTimelinePresenter::sigScaleChanged,
            this,
            &ZkStudioTimelineView::updateScrollBar);
    retranslate();
    updateScrollBar();
    setViewPresenter(presenter);
    presenter->setView(this);
    presenter->init();
}

ZkStudioTimelineView::~ZkStudioTimelineView()
{
    if (m_presenter->view() == this)
        m_presenter->clearView();
}

void ZkStudioTimelineView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

void ZkStudioTimelineView::retranslate()
{
    m_scrollBar->setAccessibleName(tr("Scroll the timeline"));
}

void ZkStudioTimelineView::updateScrollBar()
{
    const TimelineScale &scale = m_presenter->scale();
    const QSignalBlocker silence(m_scrollBar);
    m_scrollBar->setRange(0, int(std::ceil(scale.maximumOffset())));
    m_scrollBar->setPageStep(qMax(1, int(scale.width())));
    m_scrollBar->setValue(int(std::lround(scale.offset())));
    m_scrollBar->setVisible(scale.maximumOffset() > 0);
}
