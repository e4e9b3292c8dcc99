#include "ZkClipList.h"

#include "ZkCardDelegate.h"
#include "ZkClipListModel.h"
#include "ZkWindowActions.h"

#include "ZkWidgets.h"
#include "project/ZkProject.h"

#include <QEvent>
#include <QLabel>
#include <QListView>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace zk::app {

using datamodel::Project;

namespace {

constexpr int scrollBarHeight = 12; // widget pixels, as the skin has it

} // namespace

ClipList::ClipList(Project *project, const WindowActions &actions, QWidget *parent)
    : QWidget(parent)
    , m_project(project)
    , m_actions(actions)
    , m_model(new ClipListModel(project, this))
    , m_list(new QListView(this))
    , m_title(new QLabel(this))
    , m_hint(new QLabel(m_list))
{
    setObjectName(QStringLiteral("ClipList"));
    m_title->setObjectName(QStringLiteral("PanelTitle"));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(8, 4, 8, 4);
    column->setSpacing(2);
    column->addWidget(m_title);
    column->addWidget(m_list, 1);
    setUpList(actions);
    setUpHint();
    connect(project, &Project::currentClipChanged, this, &ClipList::showCurrent);
    connect(project, &Project::reset, this, &ClipList::showCurrent);
    connect(m_model, &ClipListModel::filesDropped, this, &ClipList::filesDropped);
    retranslate();
    showCurrent();
}

void ClipList::setUpList(const WindowActions &actions)
{
    m_list->setObjectName(QStringLiteral("ClipList_List"));
    m_list->setModel(m_model);
    auto *delegate = new CardDelegate(CardDelegate::Shape::Card, m_list);
    m_list->setItemDelegate(delegate);
    m_list->setFlow(QListView::LeftToRight);
    m_list->setWrapping(false);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setDragDropMode(QAbstractItemView::DragDrop);
    m_list->setUniformItemSizes(true);
    m_list->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setMouseTracking(true);
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    QStyleOptionViewItem option;
    option.fontMetrics = m_list->fontMetrics();
    m_list->setFixedHeight(delegate->sizeHint(option, QModelIndex()).height() + scrollBarHeight);
    for (const ActionId id : {ActionId::RemoveClip, ActionId::MoveEarlier, ActionId::MoveLater})
        m_list->addAction(actions.action(id));
    connect(m_list, &QWidget::customContextMenuRequested, this, &ClipList::openMenu);
    connect(m_list, &QListView::activated, this, &ClipList::activated);
    connect(m_list->selectionModel(),
            &QItemSelectionModel::currentChanged,
            this,
            &ClipList::takeCurrent);
}

void ClipList::setUpHint()
{
    m_hint->setObjectName(QStringLiteral("Hint"));
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setWordWrap(true);
    m_hint->setAttribute(Qt::WA_TransparentForMouseEvents);
    (new QVBoxLayout(m_list->viewport()))->addWidget(m_hint);
    connect(m_model, &QAbstractItemModel::rowsInserted, this, &ClipList::showHint);
    connect(m_model, &QAbstractItemModel::rowsRemoved, this, &ClipList::showHint);
    connect(m_model, &QAbstractItemModel::rowsInserted, this, &ClipList::showCurrent);
    connect(m_model, &QAbstractItemModel::rowsMoved, this, &ClipList::showCurrent);
    showHint();
}

void ClipList::showHint()
{
    m_hint->setVisible(m_model->rowCount() == 0);
}

void ClipList::showCurrent()
{
    const QScopedValueRollback<bool> following(m_isFollowing, true);
    const QModelIndex index = m_model->indexOfClip(m_project->currentClip());
    m_list->setCurrentIndex(index);
    if (index.isValid())
        m_list->scrollTo(index);
}

void ClipList::takeCurrent(const QModelIndex &index)
{
    // A row that goes away makes another one current before the project has chosen.
    const datamodel::ProjectClip *clip = m_model->clipAt(index);
    if (!m_isFollowing && clip)
        m_project->setCurrentClip(clip);
}

void ClipList::openMenu(const QPoint &position)
{
    if (!m_list->indexAt(position).isValid() && !m_project->currentClip())
        return;
    ZkMenu menu;
    menu.setObjectName(QStringLiteral("ClipList_Menu"));
    menu.addAction(m_actions.action(ActionId::SmartCutout));
    menu.addAction(m_actions.action(ActionId::RemoveCutout));
    menu.addAction(m_actions.action(ActionId::AIErase));
    menu.addSeparator();
    menu.addAction(m_actions.action(ActionId::ExportVideo));
    menu.addAction(m_actions.action(ActionId::RelinkClip));
    menu.addSeparator();
    menu.addAction(m_actions.action(ActionId::MoveEarlier));
    menu.addAction(m_actions.action(ActionId::MoveLater));
    menu.addAction(m_actions.action(ActionId::RemoveClip));
    menu.exec(m_list->viewport()->mapToGlobal(position));
}

void ClipList::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}

void ClipList::retranslate()
{
    m_title->setText(tr("Clips"));
    m_list->setAccessibleName(tr("Clips"));
    m_hint->setText(tr("Drop videos here, or double-click one in the media list."));
}

} // namespace zk::app
