#include "ZkTaskStrip.h"

#include "ZkEraseTasks.h"
#include "ZkTaskCard.h"

#include "ZkWidgets.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QScrollArea>

namespace zk::app {

namespace {

constexpr int stripHeight = 68; // widget pixels
constexpr int spacing = 8;

} // namespace

TaskStrip::TaskStrip(EraseTasks *tasks, QWidget *parent)
    : QWidget(parent)
    , m_tasks(tasks)
    , m_area(new QScrollArea(this))
{
    setObjectName(QStringLiteral("TaskStrip"));
    setAttribute(Qt::WA_StyledBackground);
    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Erasing/TaskStrip"));
    auto *const content = new QWidget;
    content->setObjectName(QStringLiteral("TaskStrip_Content"));
    m_row = new QHBoxLayout(content);
    m_row->setContentsMargins(spacing, spacing / 2, spacing, spacing / 2);
    m_row->setSpacing(spacing);
    m_row->addStretch(1);
    m_area->setObjectName(QStringLiteral("TaskStrip_Area"));
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setWidgetResizable(true);
    m_area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_area->setFocusPolicy(Qt::NoFocus);
    m_area->setWidget(content);
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_area);
    setMinimumHeight(stripHeight);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(tasks, &EraseTasks::added, this, &TaskStrip::add);
    connect(tasks, &EraseTasks::changed, this, &TaskStrip::refresh);
    connect(tasks, &EraseTasks::removed, this, &TaskStrip::remove);
    setAccessibleName(tr("Erasing"));
    hide();
}

void TaskStrip::setResultsEnabled(bool enabled)
{
    m_canOpen = enabled;
    refreshAll();
}

void TaskStrip::add(int id)
{
    auto *const card = new TaskCard(id, m_area->widget());
    m_cards.insert(id, card);
    m_row->insertWidget(m_row->count() - 1, card);
    connect(card, &TaskCard::cancelClicked, m_tasks, &EraseTasks::cancel);
    connect(card, &TaskCard::dismissClicked, m_tasks, &EraseTasks::dismiss);
    connect(card, &TaskCard::resultClicked, this, &TaskStrip::resultRequested);
    connect(card, &TaskCard::reasonClicked, this, &TaskStrip::reasonRequested);
    refresh(id);
    card->QWidget::show();
    QWidget::show();
}

void TaskStrip::refresh(int id)
{
    TaskCard *const card = m_cards.value(id);
    const EraseTasks::Item *const item = m_tasks->find(id);
    if (card && item)
        card->show(*item, m_canOpen);
}

void TaskStrip::refreshAll()
{
    for (auto card = m_cards.constBegin(); card != m_cards.constEnd(); ++card)
        refresh(card.key());
}

// Its own button may have asked for it.
void TaskStrip::remove(int id)
{
    TaskCard *const card = m_cards.take(id);
    if (!card)
        return;
    card->hide();
    card->deleteLater();
    setVisible(!m_cards.isEmpty());
}

void TaskStrip::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    setAccessibleName(tr("Erasing"));
    refreshAll();
}

} // namespace zk::app
