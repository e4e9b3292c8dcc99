#include "ZkWidgets.h"

#include "ZkSkin_p.h"

#include <QFile>

namespace {

const ZkSkin &skin()
{
    static const ZkSkin loaded(QStringLiteral(":/ZkSkin"));
    return loaded;
}

// Adding a file that is not there would hide the look that stands in for it.
void addLook(QIcon &icon, const QString &path, QIcon::Mode mode, QIcon::State state)
{
    if (QFile::exists(path))
        icon.addFile(path, QSize(), mode, state);
}

} // namespace

ZkSkinManager::ZkSkinManager() = default;

ZkSkinManager::~ZkSkinManager() = default;

ZkSkinManager *ZkSkinManager::instance()
{
    static ZkSkinManager manager;
    return &manager;
}

QColor ZkSkinManager::color(int type) const
{
    return skin().color(type);
}

QColor ZkSkinManager::color(const QString &key) const
{
    const QColor named = skin().color(key);
    const bool isHex = key.size() == 6;
    return named.isValid() || !isHex ? named : QColor(QLatin1Char('#') + key);
}

bool ZkSkinManager::applyStyleSheet(QWidget *widget, const QString &key) const
{
    const QString styleSheet = skin().styleSheet(key);
    if (!widget || styleSheet.isNull())
        return false;
    // Setting even the same style sheet polishes the whole tree of widgets again.
    if (widget->styleSheet() != styleSheet)
        widget->setStyleSheet(styleSheet);
    return true;
}

QIcon ZkSkinManager::icon(const QString &name) const
{
    const QString base = QStringLiteral(":/ZkSkin/icons/icon24_") + name;
    const QString normal = base + QLatin1String(".png");
    QString disabled = base + QLatin1String("_disabled.png");
    if (!QFile::exists(disabled))
        disabled = normal; // some signs say the same in every state
    QIcon icon;
    addLook(icon, normal, QIcon::Normal, QIcon::Off);
    addLook(icon, base + QLatin1String("_checked.png"), QIcon::Normal, QIcon::On);
    addLook(icon, disabled, QIcon::Disabled, QIcon::Off);
    addLook(icon, disabled, QIcon::Disabled, QIcon::On);
    return icon;
}
