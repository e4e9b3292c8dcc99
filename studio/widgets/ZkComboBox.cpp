#include "ZkToolTip_p.h"
#include "ZkWidgets.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QListView>
#include <QStandardItemModel>
#include <QStyledItemDelegate>

namespace {

// Null when somebody gave the box a view of another kind.
QListView *listOf(const ZkComboBox *box)
{
    return qobject_cast<QListView *>(box->view());
}

} // namespace

ZkComboBox::ZkComboBox(QWidget *parent)
    : QComboBox(parent)
{
    // The view and the delegate that a combo box makes by itself ignore most of the style sheet.
    setView(new QListView(this));
    setItemDelegate(new QStyledItemDelegate(this));
    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Widgets/ComboBox"));
}

ZkComboBox::~ZkComboBox() = default;

// What is disabled is passed over by keys and wheel, too.
void ZkComboBox::setRowHidden(int row, bool hidden)
{
    const auto *items = qobject_cast<QStandardItemModel *>(model());
    QStandardItem *item = items ? items->item(row, modelColumn()) : nullptr;
    if (!item)
        return;
    item->setEnabled(!hidden);
    if (QListView *list = listOf(this))
        list->setRowHidden(row, hidden);
}

bool ZkComboBox::isRowHidden(int row) const
{
    const QListView *list = listOf(this);
    return list && row >= 0 && row < count() && list->isRowHidden(row);
}

bool ZkComboBox::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip
        && zkShowShortcutToolTip(this, static_cast<QHelpEvent *>(event)))
        return true;
    return QComboBox::event(event);
}

// A hidden row has no neighbours that one could step to.
void ZkComboBox::wheelEvent(QWheelEvent *event)
{
    if (isRowHidden(currentIndex()))
        event->accept();
    else
        QComboBox::wheelEvent(event);
}

void ZkComboBox::keyPressEvent(QKeyEvent *event)
{
    const bool steps = event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown
        || ((event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)
            && !(event->modifiers() & Qt::AltModifier));
    if (steps && isRowHidden(currentIndex()))
        event->accept();
    else
        QComboBox::keyPressEvent(event);
}
