#include "ZkInputShield.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <iterator>

namespace zk::app {

namespace {

bool isInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::Shortcut:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::DragEnter:
        return true;
    default:
        return false;
    }
}

} // namespace

InputShield::InputShield(const QVector<QWidget *> &widgets, QObject *parent)
    : QObject(parent)
{
    std::copy(widgets.begin(), widgets.end(), std::back_inserter(m_widgets));
}

void InputShield::setRaised(bool raised)
{
    if (raised == m_isRaised)
        return;
    m_isRaised = raised;
    if (raised)
        QCoreApplication::instance()->installEventFilter(this);
    else
        QCoreApplication::instance()->removeEventFilter(this);
}

bool InputShield::eventFilter(QObject *watched, QEvent *event)
{
    return isInput(event->type()) && covers(watched);
}

// Shortcuts are children of the widgets that they belong to.
bool InputShield::covers(const QObject *object) const
{
    for (; object; object = object->parent()) {
        const bool isCovered = std::any_of(m_widgets.begin(),
                                           m_widgets.end(),
                                           [=](const QWidget *widget) { return widget == object; });
        if (isCovered)
            return true;
    }
    return false;
}

} // namespace zk::app
