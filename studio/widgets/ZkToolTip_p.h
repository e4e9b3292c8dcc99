// Not public: tooltips that name a shortcut.
#pragma once

#include <QString>
#include <QWidget>

class QHelpEvent;

// A tooltip "text (key)" in two parts. The key is empty unless the widget has the property
// "WITH_SHORTCUT".
struct ZkToolTipParts
{
    QString text;
    QString key;
};

ZkToolTipParts zkToolTipParts(const QWidget *widget);
// Shows text and key apart. False when the tooltip names no key: the widget's own handling will do.
bool zkShowShortcutToolTip(QWidget *widget, const QHelpEvent *event);
