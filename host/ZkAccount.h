// The user's account. Needs Qt Core alone.
#pragma once

#include "ZkGlobal.h"

#include <QObject>
#include <QString>

// Keeps who is logged in from one start of the program to the next. GUI thread only.
class ZK_INTERFACE IZkAccountMemory
{
public:
    virtual ~IZkAccountMemory() = default;
    // Empty: nobody.
    virtual QString rememberedName() const = 0;
    virtual void rememberName(const QString &name) = 0;
};

// Who is logged in. One per program, GUI thread only.
class ZKACCOUNT_EXPORT ZkAccount : public QObject
{
    Q_OBJECT

public:
    static ZkAccount *instance();

    bool isLoggedIn() const { return !m_userName.isEmpty(); }
    // Empty while nobody is logged in.
    QString userName() const { return m_userName; }
    // Spaces around the name do not count. False, and nothing changes, when nothing else is left of it.
    bool logIn(const QString &name);
    void logOut();

    // Takes over who is remembered there, and keeps it there from now on. Not owned, must outlive the
    // account's use or be taken away. Null, which it is at first: nothing is remembered.
    void setMemory(IZkAccountMemory *memory);

Q_SIGNALS:
    // Another user, or none any more. Not when the one who is logged in logs in again.
    void sigAccountChanged();

private:
    ZkAccount();
    ~ZkAccount() override;
    void setUserName(const QString &name);

    QString m_userName;
    IZkAccountMemory *m_memory = nullptr;
};
