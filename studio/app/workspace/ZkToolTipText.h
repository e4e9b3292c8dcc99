// Tooltips that name a key.
#pragma once

#include <QKeySequence>
#include <QString>
#include <QVariant>
#include <QWidget>

namespace zk::app {

// "text (key)"; the skin shows the key apart from the text.
inline void setToolTipWithKey(QWidget *widget, const QString &text, const QString &key)
{
    const QString shown = QKeySequence(key).toString(QKeySequence::NativeText);
    widget->setProperty("WITH_SHORTCUT", !key.isEmpty());
    widget->setToolTip(key.isEmpty() ? text : QStringLiteral("%1 (%2)").arg(text, shown));
    widget->setAccessibleName(text);
}

} // namespace zk::app
