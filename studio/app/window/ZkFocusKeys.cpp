#include "ZkFocusKeys.h"

#include "ZkWidgets.h"

#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QComboBox>
#include <QKeyEvent>

namespace zk::app {

namespace {

bool movesByArrows(const QWidget *widget)
{
    return qobject_cast<const QAbstractItemView *>(widget)
        || qobject_cast<const QAbstractSlider *>(widget) || qobject_cast<const QComboBox *>(widget);
}

bool isPressedBySpace(const QWidget *widget)
{
    // Enter presses the skin's icon buttons.
    return (qobject_cast<const QAbstractButton *>(widget)
            && !qobject_cast<const ZkToolButton *>(widget))
        || qobject_cast<const QComboBox *>(widget);
}

} // namespace

bool belongsToFocus(const QKeyEvent &event, const QWidget *focus)
{
    if (!focus || event.modifiers() & ~Qt::KeypadModifier)
        return false;
    switch (event.key()) {
    case Qt::Key_Space:
        return isPressedBySpace(focus);
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
        return movesByArrows(focus);
    default:
        return false;
    }
}

} // namespace zk::app
