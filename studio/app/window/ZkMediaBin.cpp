#include "ZkMediaBin.h"

#include "ZkCardDelegate.h"
#include "ZkMediaBinModel.h"
#include "ZkWindowActions.h"

#include "ZkWidgets.h"
#include "project/ZkProject.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QMenu>

namespace zk::app {

MediaBin::MediaBin(datamodel::Project *project, const WindowActions &actions, QWidget *parent)
    : QWidget(parent)
    , m_project(project)
    , m_actions(actions)
    , m_model(new MediaBinModel(project, this))
    , m_list(new QListView(this))
    , m_title(new QLabel(this))
    , m_hint(new QLabel(m_list))
{
    setObjectName(QStringLiteral("MediaBin"));
    m_title->setObjectName(QStringLiteral("PanelTitle"));
    auto *import = new ZkToolButton(this);
    import->setObjectName(QStringLiteral("MediaBin_Import"));
    import->setDefaultAction(actions.action(ActionId::ImportMedia));
    import->setToolButtonStyle(Qt::ToolButtonIconOnly);
    auto *head = new QHBoxLayout;
    head->addWidget(m_title, 1);
    head->addWidget(import);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(8, 6, 4, 8);
    column->setSpacing(4);
    column->addLayout(head);
    column->addWidget(m_list, 1);
    setUpList(actions);
    retranslate();
}

void MediaBin::setUpList(const WindowActions &actions)
{
    m_list->setObjectName(QStringLiteral("MediaBin_List"));
    m_list->setModel(m_model);
    m_list->setItemDelegate(new CardDelegate(CardDelegate::Shape::Line, m_list));
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setDragEnabled(true);
    m_list->setDragDropMode(QAbstractItemView::DragOnly);
    m_list->setUniformItemSizes(true);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setMouseTracking(true);
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    m_list->addAction(actions.action(ActionId::RemoveMedia));
    connect(m_list, &QWidget::customContextMenuRequested, this, &MediaBin::openMenu);
    connect(m_list, &QListView::activated, this, [this](const QModelIndex &index) {
        Q_EMIT activated(m_model->idAt(index));
    });
    connect(m_list->selectionModel(),
            &QItemSelectionModel::currentChanged,
            this,
            &MediaBin::currentChanged);

    m_hint->setObjectName(QStringLiteral("Hint"));
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setWordWrap(true);
    auto *layout = new QVBoxLayout(m_list->viewport());
    layout->addWidget(m_hint);
    m_hint->setAttribute(Qt::WA_TransparentForMouseEvents);
    connect(m_model, &QAbstractItemModel::rowsInserted, this, &MediaBin::showHint);
    connect(m_model, &QAbstractItemModel::rowsRemoved, this, &MediaBin::showHint);
    showHint();
}

qint64 MediaBin::currentMedia() const
{
    return m_model->idAt(m_list->currentIndex());
}

void MediaBin::showHint()
{
    m_hint->setVisible(m_model->rowCount() == 0);
    Q_EMIT currentChanged();
}

void MediaBin::openMenu(const QPoint &position)
{
    if (!m_list->indexAt(position).isValid() && m_list->hasFocus() && !currentMedia())
        return;
    ZkMenu menu;
    menu.setObjectName(QStringLiteral("MediaBin_Menu"));
    menu.addAction(m_actions.action(ActionId::AddToClips));
    menu.addAction(m_actions.action(ActionId::RelinkMedia));
    menu.addSeparator();
    menu.addAction(m_actions.action(ActionId::RemoveMedia));
    menu.exec(m_list->viewport()->mapToGlobal(position));
}

void MediaBin::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}

void MediaBin::retranslate()
{
    m_title->setText(tr("Media"));
    m_list->setAccessibleName(tr("Media"));
    m_hint->setText(tr("Imported videos and pictures appear here."));
}

} // namespace zk::app
