#include "ZkUserMemory.h"

#include <QSettings>

namespace zk::app {

namespace {

QString nameKey()
{
    return QStringLiteral("account/name");
}

QString tipKey(int tip)
{
    return QStringLiteral("tips/%1").arg(tip);
}

} // namespace

UserMemory::UserMemory()
{
    ZkAccount::instance()->setMemory(this);
    ZkFunctionTips::setCounts(this);
}

UserMemory::~UserMemory()
{
    ZkFunctionTips::setCounts(nullptr);
    ZkAccount::instance()->setMemory(nullptr);
}

QString UserMemory::rememberedName() const
{
    return QSettings().value(nameKey()).toString();
}

void UserMemory::rememberName(const QString &name)
{
    if (name.isEmpty())
        QSettings().remove(nameKey());
    else
        QSettings().setValue(nameKey(), name);
}

int UserMemory::shownTimes(int tip) const
{
    return QSettings().value(tipKey(tip), 0).toInt();
}

void UserMemory::setShownTimes(int tip, int times)
{
    QSettings().setValue(tipKey(tip), times);
}

} // namespace zk::app
