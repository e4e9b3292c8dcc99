#include "ZkOwnKeys.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QWidget>

namespace zk::app {

OwnKeys::OwnKeys(QWidget *widget, const QVector<int> &keys)
    : QObject(widget)
    , m_keys(keys)
{
    widget->installEventFilter(this);
}

QVector<int> OwnKeys::navigation()
{
    return {Qt::Key_Left,
            Qt::Key_Right,
            Qt::Key_Up,
            Qt::Key_Down,
            Qt::Key_Home,
            Qt::Key_End,
            Qt::Key_PageUp,
            Qt::Key_PageDown};
}

bool OwnKeys::eventFilter(QObject *, QEvent *event)
{
    if (event->type() != QEvent::ShortcutOverride)
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    const Qt::KeyboardModifiers modifiers = key->modifiers() & ~Qt::KeypadModifier;
    if (modifiers != Qt::NoModifier || !m_keys.contains(key->key()))
        return false;
    event->accept();
    return true;
}

EnterClicks::EnterClicks(QAbstractButton *button)
    : QObject(button)
{
    button->installEventFilter(this);
}

bool EnterClicks::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    static_cast<QAbstractButton *>(watched)->click();
    return true;
}

} // namespace zk::app
