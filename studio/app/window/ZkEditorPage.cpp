#include "ZkEditorPage.h"

#include "ZkClipList.h"
#include "ZkClipProperties.h"
#include "ZkMediaBin.h"
#include "ZkPreviewPanel.h"
#include "ZkTimelinePanel.h"
#include "ZkWindowActions.h"

#include "ZkWidgets.h"
#include "project/ZkProject.h"
#include "timeline/ZkStudioClip.h"

#include <QAction>
#include <QDataStream>
#include <QIODevice>
#include <QScrollArea>
#include <QSplitter>
#include <QVBoxLayout>

namespace zk::app {

using datamodel::Project;

namespace {

// Widget pixels, in a window of the usual size.
const QList<int> standardColumns {260, 900, 280};
const QList<int> standardRows {560, 320};
constexpr int handleWidth = 4;

// Those that can be hidden.
constexpr ActionId panels[] = {
    ActionId::ShowMedia, ActionId::ShowProperties, ActionId::ShowTimeline};

} // namespace

EditorPage::EditorPage(Project *project,
                       const WindowActions &actions,
                       ZkUIView *scene,
                       QWidget *parent)
    : QWidget(parent)
    , m_project(project)
    , m_actions(actions)
    , m_rows(new QSplitter(Qt::Vertical, this))
    , m_columns(new QSplitter(Qt::Horizontal, m_rows))
    , m_media(new MediaBin(project, actions))
    , m_preview(new PreviewPanel(actions))
    , m_properties(new ClipProperties(project, actions))
    , m_clips(new ClipList(project, actions))
    , m_timeline(new TimelinePanel(actions, scene))
{
    setObjectName(QStringLiteral("EditorPage"));
    setUpSplitters();
    connectViews();
    connectPlayback();
    connect(project, &Project::aboutToReset, this, &EditorPage::letGo);
    connect(project, &Project::reset, this, &EditorPage::showCurrent);
    connect(project, &Project::currentClipChanged, this, &EditorPage::showCurrent);
    // What erasing made of its file.
    connect(project, &Project::clipChanged, this, [this](const datamodel::ProjectClip *clip) {
        if (clip == m_project->currentClip() && clip->clip()->media().path != m_shownFile)
            showCurrent();
    });
    connect(project, &Project::mediaChanged, this, [this](qint64 media) {
        const datamodel::ProjectClip *clip = m_project->currentClip();
        if (clip && clip->mediaId() == media)
            showCurrent();
    });
    resetLayout();
    showCurrent();
}

EditorPage::~EditorPage()
{
    letGo();
}

void EditorPage::setUpSplitters()
{
    auto *bottom = new QWidget(m_rows);
    auto *bottomColumn = new QVBoxLayout(bottom);
    bottomColumn->setContentsMargins(0, 0, 0, 0);
    bottomColumn->setSpacing(0);
    bottomColumn->addWidget(m_clips);
    bottomColumn->addWidget(m_timeline, 1);
    auto *properties = new QScrollArea(m_columns);
    properties->setObjectName(QStringLiteral("PropertyArea"));
    properties->setFrameShape(QFrame::NoFrame);
    properties->setWidgetResizable(true);
    properties->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    properties->setWidget(m_properties);
    properties->setFocusPolicy(Qt::NoFocus);
    m_columns->addWidget(m_media);
    m_columns->addWidget(m_preview);
    m_columns->addWidget(properties);
    m_rows->addWidget(m_columns);
    m_rows->addWidget(bottom);
    m_rows->setObjectName(QStringLiteral("EditorPage_Rows"));
    m_columns->setObjectName(QStringLiteral("EditorPage_Columns"));
    m_media->setMinimumWidth(150);
    m_preview->setMinimumSize(380, 150);
    properties->setMinimumWidth(180);
    for (QSplitter *splitter : {m_rows, m_columns}) {
        splitter->setHandleWidth(handleWidth);
        splitter->setChildrenCollapsible(false);
    }
    m_columns->setStretchFactor(1, 1);
    m_rows->setStretchFactor(0, 1);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_rows);
}

void EditorPage::connectViews()
{
    const auto bind = [this](ActionId id, QWidget *panel) {
        QAction *action = m_actions.action(id);
        action->setChecked(true);
        connect(action, &QAction::toggled, panel, &QWidget::setVisible);
    };
    bind(ActionId::ShowMedia, m_media);
    bind(ActionId::ShowProperties, m_columns->widget(2));
    bind(ActionId::ShowTimeline, m_timeline);
    connect(m_actions.action(ActionId::ResetLayout),
            &QAction::triggered,
            this,
            &EditorPage::resetLayout);
}

void EditorPage::connectPlayback()
{
    ZkMediaPlayerPresenter *player = m_preview->player();
    ZkStudioTimelinePresenter *timeline = m_timeline->presenter();
    const auto on = [this](ActionId id, auto function) {
        connect(m_actions.action(id), &QAction::triggered, this, function);
    };
    on(ActionId::PlayPause, [player] { player->playOrPause(); });
    on(ActionId::Stop, [player] { player->stopAndReturn(); });
    on(ActionId::PreviousFrame, [player] { player->step(-1); });
    on(ActionId::NextFrame, [player] { player->step(1); });
    on(ActionId::FirstFrame, [player] { player->seek(0); });
    on(ActionId::LastFrame, [player] { player->seek(qMax(0, player->duration() - 1)); });
    on(ActionId::FitPicture, [player] { player->zoomer()->zoom(0, QPointF()); });
    on(ActionId::FitTimeline, [timeline] { timeline->fitTimeline(); });
    on(ActionId::ZoomInTimeline, [this] { m_timeline->zoomSlider()->Add(); });
    on(ActionId::ZoomOutTimeline, [this] { m_timeline->zoomSlider()->Sub(); });
}

void EditorPage::showCurrent()
{
    const datamodel::ProjectClip *clip = m_project->currentClip();
    m_shownFile = clip ? clip->clip()->media().path : QString();
    m_preview->setClip(clip);
    m_timeline->setClip(clip);
}

void EditorPage::letGo()
{
    m_preview->setClip(nullptr);
    m_timeline->setClip(nullptr);
}

QByteArray EditorPage::saveLayout() const
{
    QByteArray layout;
    QDataStream stream(&layout, QIODevice::WriteOnly);
    stream << m_rows->saveState() << m_columns->saveState();
    for (const ActionId panel : panels)
        stream << m_actions.action(panel)->isChecked();
    return layout;
}

void EditorPage::restoreLayout(const QByteArray &layout)
{
    QByteArray rows;
    QByteArray columns;
    QDataStream stream(layout);
    stream >> rows >> columns;
    for (const ActionId panel : panels) {
        bool isShown = true;
        stream >> isShown;
        m_actions.action(panel)->setChecked(isShown);
    }
    m_rows->restoreState(rows);
    m_columns->restoreState(columns);
}

void EditorPage::resetLayout()
{
    for (const ActionId panel : panels)
        m_actions.action(panel)->setChecked(true);
    m_rows->setSizes(standardRows);
    m_columns->setSizes(standardColumns);
}

} // namespace zk::app
