#include "ZkPreviewPanel.h"

#include "ZkActionButton.h"
#include "ZkPreviewBar.h"
#include "ZkWindowActions.h"

#include "player/ZkMediaPlayerWidget.h"
#include "project/ZkProjectClip.h"
#include "timeline/ZkStudioTimeline.h"

#include <QEvent>
#include <QLabel>
#include <QStackedLayout>
#include <QVBoxLayout>

namespace zk::app {

PreviewPanel::PreviewPanel(const WindowActions &actions, QWidget *parent)
    : QWidget(parent)
    , m_pages(new QStackedLayout)
    , m_picture(new ZkMediaPlayerWidget(this))
    , m_bar(new PreviewBar(m_player.zoomerPresenter(), this))
{
    setObjectName(QStringLiteral("PreviewPanel"));
    m_picture->setObjectName(QStringLiteral("PreviewPanel_Picture"));
    m_picture->setFocusPolicy(Qt::StrongFocus);
    m_picture->setPresenter(&m_player);
    m_pages->addWidget(m_picture);
    m_pages->addWidget(createHint(
        QStringLiteral("PreviewPanel_Empty"), &m_emptyText, actions.action(ActionId::ImportMedia)));
    m_pages->addWidget(createHint(QStringLiteral("PreviewPanel_Offline"),
                                  &m_offlineText,
                                  actions.action(ActionId::RelinkClip)));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(m_pages, 1);
    column->addWidget(m_bar);
    m_bar->setPlayerPresenter(&m_player);
    setClip(nullptr);
    retranslate();
}

PreviewPanel::~PreviewPanel()
{
    m_bar->setPlayerPresenter(nullptr);
    close();
    m_picture->setPresenter(nullptr);
}

QWidget *PreviewPanel::createHint(const QString &name, QLabel **text, QAction *action)
{
    auto *page = new ZkWidget(this);
    page->setObjectName(name);
    *text = new QLabel(page);
    (*text)->setObjectName(QStringLiteral("BigHint"));
    (*text)->setAlignment(Qt::AlignCenter);
    (*text)->setWordWrap(true);
    auto *button = new ActionButton(action, page);
    button->setObjectName(name + QStringLiteral("_Button"));
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(32, 16, 32, 16);
    column->addStretch();
    column->addWidget(*text);
    column->addSpacing(12);
    column->addWidget(button, 0, Qt::AlignCenter);
    column->addStretch();
    return page;
}

void PreviewPanel::close()
{
    m_playheads.clear();
    m_player.mediaPlayer()->stop();
    m_player.mediaPlayer()->detachSource();
}

void PreviewPanel::setClip(const datamodel::ProjectClip *clip)
{
    close();
    m_clipName = clip ? clip->name() : QString();
    const Page page = !clip ? EmptyPage : clip->isOffline() ? OfflinePage : PlayerPage;
    m_pages->setCurrentIndex(page);
    retranslate();
    if (page != PlayerPage)
        return;
    ZkStudioTimeline *timeline = clip->timeline();
    // The connector moves the second playhead to the first one's place: the clip remembers it.
    const qint64 position = timeline->playhead()->position();
    ZkMediaPlayerOpenParam param;
    param.handle = timeline->handle();
    param.keepZoom = false;
    m_player.mediaPlayer()->open(param);
    timeline->playhead()->setPosition(position);
    m_playheads.addPlayhead(timeline->playhead(), ZkPlayheadConnector::EditTimelineRole);
    m_playheads.addPlayhead(m_player.playhead(), ZkPlayheadConnector::PlayerRole);
}

void PreviewPanel::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}

void PreviewPanel::retranslate()
{
    m_picture->setAccessibleName(tr("Preview"));
    m_emptyText->setText(tr("Drop a clip here or press Import"));
    m_offlineText->setText(
        tr("The file of \"%1\" is missing. Show where it is now to go on.").arg(m_clipName));
}

} // namespace zk::app
