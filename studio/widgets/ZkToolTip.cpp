#include "ZkToolTip_p.h"

#include "ZkWidgets.h"

#include <QHelpEvent>
#include <QToolTip>

ZkToolTipParts zkToolTipParts(const QWidget *widget)
{
    const QString toolTip = widget->toolTip();
    const int bracket = toolTip.lastIndexOf(QLatin1String(" ("));
    const bool hasKey = widget->property("WITH_SHORTCUT").toBool() && bracket > 0
        && toolTip.endsWith(QLatin1Char(')'));
    if (!hasKey)
        return {toolTip, QString()};
    return {toolTip.left(bracket), toolTip.mid(bracket + 2).chopped(1)};
}

bool zkShowShortcutToolTip(QWidget *widget, const QHelpEvent *event)
{
    const ZkToolTipParts parts = zkToolTipParts(widget);
    if (parts.key.isEmpty())
        return false;
    const QString dim = ZkSkinManager::instance()->color(ZKSKIN::DimText).name();
    const QString text = QStringLiteral("<p style='white-space:pre'>%1&nbsp;&nbsp;&nbsp;<span "
                                        "style='color:%2'>%3</span></p>")
                             .arg(parts.text.toHtmlEscaped(), dim, parts.key.toHtmlEscaped());
    QToolTip::showText(event->globalPos(), text, widget);
    return true;
}
