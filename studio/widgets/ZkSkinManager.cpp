#include "ZkWidgets.h"

#include "ZkSkin_p.h"

namespace {

const ZkSkin &skin()
{
    static const ZkSkin loaded(QStringLiteral(":/ZkSkin"));
    return loaded;
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
