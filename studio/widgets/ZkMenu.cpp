#include "ZkWidgets.h"

#include <QApplication>
#include <QPointer>
#include <QProxyStyle>
#include <QScreen>

namespace {

constexpr int iconSide = 24; // widget pixels; the icons are drawn for that size

// A style sheet cannot set the size of a menu's icons.
class MenuStyle : public QProxyStyle
{
public:
    int pixelMetric(PixelMetric metric,
                    const QStyleOption *option,
                    const QWidget *widget) const override
    {
        if (metric == PM_SmallIconSize)
            return iconSide;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
};

// One for all menus: a widget does not own its style.
QStyle *menuStyle()
{
    static QPointer<QStyle> style;
    if (!style) {
        style = new MenuStyle;
        style->setParent(qApp);
    }
    return style;
}

// Of the screen that the widget's middle is on.
QRect screenArea(const QWidget *widget)
{
    const QScreen *screen = QGuiApplication::screenAt(widget->mapToGlobal(widget->rect().center()));
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}

QPoint placeBelow(const QWidget *widget, const QSize &size)
{
    const QRect area = screenArea(widget);
    const QRect anchor(widget->mapToGlobal(QPoint(0, 0)), widget->size());
    const int x = qMax(area.left(), qMin(anchor.left(), area.right() + 1 - size.width()));
    const int below = anchor.bottom() + 1;
    if (below + size.height() <= area.bottom() + 1)
        return {x, below};
    return {x, qMax(area.top(), anchor.top() - size.height())};
}

} // namespace

ZkMenu::ZkMenu(QWidget *parent)
    : QMenu(parent)
{
    setStyle(menuStyle());
    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Widgets/Menu"));
}

ZkMenu::~ZkMenu() = default;

QAction *ZkMenu::addItem(int id, const QIcon &icon, const QString &text)
{
    QAction *action = addAction(icon, text);
    action->setData(id);
    connect(action, &QAction::triggered, this, [this, id] { emit sigItemClicked(id); });
    return action;
}

QAction *ZkMenu::item(int id) const
{
    const QList<QAction *> all = actions();
    for (QAction *action : all) {
        if (action->data() == QVariant(id))
            return action;
    }
    return nullptr;
}

void ZkMenu::popupBelow(QWidget *widget)
{
    ensurePolished();
    popup(placeBelow(widget, sizeHint()));
}
