// Names and looks of the AI erasing widgets; not public.
#pragma once

#include "ZkWidgets.h"

// The skin's key is an area, a slash and the widget's object name.
inline void zkApplyStyle(QWidget *widget, const QString &key)
{
    widget->setObjectName(key.section(QLatin1Char('/'), 1));
    ZkSkinManager::instance()->applyStyleSheet(widget, key);
}

// In widget pixels, in the font that the widget's style sheet gives it.
inline int zkTextWidth(const QWidget *widget, const QString &text)
{
    widget->ensurePolished();
    return widget->fontMetrics().horizontalAdvance(text);
}
