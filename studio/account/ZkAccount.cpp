#include "ZkAccount.h"

ZkAccount::ZkAccount() = default;

ZkAccount::~ZkAccount() = default;

ZkAccount *ZkAccount::instance()
{
    static ZkAccount account;
    return &account;
}

bool ZkAccount::logIn(const QString &name)
{
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty())
        return false;
    if (m_memory)
        m_memory->rememberName(trimmed);
    setUserName(trimmed);
    return true;
}

void ZkAccount::logOut()
{
    if (m_memory)
        m_memory->rememberName(QString());
    setUserName(QString());
}

void ZkAccount::setMemory(IZkAccountMemory *memory)
{
    m_memory = memory;
    if (memory)
        setUserName(memory->rememberedName().trimmed());
}

void ZkAccount::setUserName(const QString &name)
{
    if (name == m_userName)
        return;
    m_userName = name;
    emit sigAccountChanged();
}
